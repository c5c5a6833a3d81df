#pragma once
// A program as the desktop runs it, with the user's answers scripted: the
// settings in memory, questions answered from a list, file dialogs from
// another, temporary files in a folder of the test's own, and every modal
// dialog handed to `answer` instead of being shown.
#include <gtest/gtest.h>

#include <QDialog>
#include <filesystem>
#include <functional>

#include "app/Program.h"
#include "ports/SettingsStore.h"
#include "support/ScriptedFileChooser.h"
#include "support/ScriptedPrompter.h"

namespace synthara::ui {

class ProgramFixture : public ::testing::Test {
  protected:
    ProgramFixture() {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        folder = std::filesystem::path(::testing::TempDir()) /
                 (std::string(test->test_suite_name()) + "." + test->name());
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
    }
    ~ProgramFixture() override { std::filesystem::remove_all(folder); }

    // Makes the program; `answer` gets every dialog and gives its result.
    Program& Make(std::function<int(QDialog&)> answerDialogs = [](QDialog&) {
        return int(QDialog::Rejected);
    }) {
        program = std::make_unique<Program>(store, prompter, chooser, folder);
        program->Window().execDialog = std::move(answerDialogs);
        return *program;
    }
    // The bundled example, its rows computed.
    void OpenExample() {
        shell::OpenSettings settings;
        settings.defaultFormat = "Events and sample size in each group";
        ASSERT_TRUE(
            program->Document().Open(SYNTHARA_EXAMPLES "/bcg-vaccine-trials.csv", settings).ok());
    }

    // A program that saved the example as a project in the test's folder; the
    // project's path.
    std::string SaveExample() {
        const std::string path = (folder / "trials.syn").string();
        Make();
        OpenExample();
        chooser.answers = {path};
        EXPECT_TRUE(program->Document().FileSave(program->Window().Files(), 0));
        return path;
    }

    std::filesystem::path folder;
    ports::MemorySettingsStore store;
    testing::ScriptedPrompter prompter;
    testing::ScriptedFileChooser chooser;
    std::unique_ptr<Program> program;
};

}  // namespace synthara::ui
