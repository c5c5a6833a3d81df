// What the command line says about inputs that are not what they seem: a
// folder, and a file of mostly blank lines.
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "CliRun.h"
#include "cli/App.h"

namespace synthara::cli {
namespace {

using clitest::RunCli;
using clitest::WriteFile;

constexpr const char* kFormat = "Events and sample size in each group";

TEST(InputFile, AFolderIsRefusedInTheProgramsWords) {
    const std::string folder = ::testing::TempDir() + "InputFile-folder.csv";
    std::filesystem::create_directories(folder);
    for (const char* command : {"compute", "analyze"}) {
        const auto ran = RunCli({command, folder, "--format", kFormat});
        EXPECT_EQ(ran.status, ExitRefused) << command;
        EXPECT_EQ(ran.err, folder + " is a folder, not a file.\n") << command;
    }
    const std::string project = ::testing::TempDir() + "InputFile-folder.syn";
    std::filesystem::create_directories(project);
    const auto ran = RunCli({"compute", project});
    EXPECT_EQ(ran.status, ExitRefused);
    EXPECT_EQ(ran.err, project + " is a folder, not a file.\n");
}

TEST(InputFile, BlankLinesMakeNoRows) {
    const std::string titles =
        "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n";
    // Only blank lines under the titles: the file has no study rows.
    const auto none =
        RunCli({"analyze", WriteFile("blank.csv", titles + std::string(200'000, '\n')), "--format",
                kFormat});
    EXPECT_EQ(none.status, ExitRefused);
    EXPECT_NE(none.err.find("the file has no study rows to analyse"), std::string::npos)
        << none.err;

    // Rows among blank lines are numbered as the sheet shows them.
    const std::string path =
        WriteFile("rows.csv", titles + "\n\nA,4,123,11,139\n,,,,\n\nB,6,306,29,303\n\n");
    const auto ran = RunCli({"compute", path, "--format", kFormat, "--json"});
    ASSERT_EQ(ran.status, ExitDone) << ran.err;
    const auto rows = nlohmann::json::parse(ran.out).at("rows");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].at("row"), 1);
    EXPECT_EQ(rows[1].at("row"), 2);
    EXPECT_EQ(rows[1].at("study"), "B");
}

}  // namespace
}  // namespace synthara::cli
