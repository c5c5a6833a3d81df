#include "app/Program.h"

#include <QPointer>
#include <QTimer>

#include "app/Splash.h"
#include "app/StartDialog.h"
#include "shell/FileKinds.h"

namespace synthara::ui {

Program::Program(ports::SettingsStore& store, ports::Prompter& prompter,
                 ports::FileChooser& chooser, std::filesystem::path tempFolder)
    : store_(store),
      recent_(store),
      document_(prompter),
      files_{recent_, chooser, std::move(tempFolder)} {
    // The defaults are in place; the recent lists come next, then the new
    // sheet (made by the document) and the stored settings.
    recent_.GetFiles();
    recent_.GetTemplates();
    const std::vector<std::string> unreadable = settings_.Load(store_);
    if (!unreadable.empty()) {
        std::string names;
        for (const std::string& name : unreadable)
            names += (names.empty() ? "" : ", ") + name;
        prompter.Message(
            {"Settings",
             {"These stored settings could not be read and take their defaults:", names},
             ports::Icon::Warning});
    }
    window_ = std::make_unique<MainWindow>(document_, files_, settings_);
    connect(window_.get(), &MainWindow::Closed, this, &Program::SaveSettings);
}

Program::~Program() = default;

void Program::Start(const std::string& path, bool splash) {
    window_->show();
    const auto next = [this, path] {
        if (!path.empty()) {
            OpenGiven(path);
        } else if (settings_.Integer("ShowWizard01") == 1) {
            ShowStartDialog();
        }
    };
    if (!splash) {
        next();
        return;
    }
    // A click closes the splash early, and it deletes itself when closed.
    QPointer<Splash> screen = new Splash;
    screen->show();
    QTimer::singleShot(1500, this, [screen, next] {
        if (screen) screen->close();
        next();
    });
}

void Program::OpenGiven(const std::string& path) {
    if (shell::IsProjectFile(path)) {
        document_.FileOpen(
            files_, shell::IsTemplateFile(path) ? sheet::OpenKind::Template : sheet::OpenKind::File,
            path, false);
        return;
    }
    // A table of rows, read as the command line reads it.
    const shell::OpenOutcome opened = document_.Open(path);
    if (!opened.ok())
        document_.Prompts().Message(
            {" File not opened ",
             {"Sorry, that file could not be opened         ",
              opened.message.empty() ? "Its rows name no data-entry format." : opened.message},
             ports::Icon::Warning});
}

void Program::ShowStartDialog() {
    StartDialog dialog(settings_, recent_, window_.get());
    if (window_->execDialog(dialog) == QDialog::Accepted) ApplyStart(dialog);
}

void Program::ApplyStart(const StartDialog& dialog) {
    const shell::StartOption option = dialog.Option();
    settings_.SetInteger("OptCurrentNameSelection", static_cast<int>(option));
    settings_.SetInteger("ShowWizard01", dialog.ShowNextTime() ? 1 : 0);
    window_->Command("Opening wizard")->setChecked(dialog.ShowNextTime());
    switch (option) {
        case shell::StartOption::Blank:
            document_.FileNew(files_);
            break;
        case shell::StartOption::Template:
            document_.FileOpen(files_, sheet::OpenKind::Template, dialog.ChosenPath(), false);
            break;
        case shell::StartOption::File:
            document_.FileOpen(files_, sheet::OpenKind::File, dialog.ChosenPath(), false);
            break;
        case shell::StartOption::Tutorial:
            break;
    }
}

void Program::SaveSettings() {
    settings_.Set("FudgeFactor", std::to_string(document_.Options().FudgeFactor));
    settings_.Save(store_);
    recent_.SaveFiles();
    recent_.SaveTemplates();
}

}  // namespace synthara::ui
