#pragma once
// The program's session: the stored settings, the recent lists, the open
// project and its main window, from the start (settings read, a new sheet,
// the splash, the start dialog) to the close (the save question, the
// settings written, the temporary files deleted).
#include <QObject>
#include <filesystem>
#include <memory>

#include "app/MainWindow.h"
#include "ports/FileChooser.h"
#include "ports/Prompter.h"
#include "ports/SettingsStore.h"
#include "shell/Document.h"
#include "shell/Settings.h"

namespace synthara::ui {

class StartDialog;

class Program final : public QObject {
    Q_OBJECT
  public:
    Program(ports::SettingsStore& store, ports::Prompter& prompter, ports::FileChooser& chooser,
            std::filesystem::path tempFolder = ".");
    ~Program() override;

    // Shows the window. With a file named on the command line that file is
    // opened and the start dialog skipped; otherwise the start dialog opens
    // when ShowWizard01 is 1. The splash comes first when asked for.
    void Start(const std::string& path, bool splash);
    // The start dialog's Ok.
    void ApplyStart(const StartDialog& dialog);
    // Opens the start dialog now (through the window's execDialog).
    void ShowStartDialog();

    MainWindow& Window() { return *window_; }
    shell::Document& Document() { return document_; }
    shell::StoredSettings& Settings() { return settings_; }
    sheet::RecentFiles& Recent() { return recent_; }

  private:
    // Opens the file named on the command line: a project or template, or a
    // table of rows.
    void OpenGiven(const std::string& path);
    // Writes every stored setting, the computation's fudge factor first.
    void SaveSettings();

    ports::SettingsStore& store_;
    shell::StoredSettings settings_;
    sheet::RecentFiles recent_;
    shell::Document document_;
    shell::FileServices files_;
    std::unique_ptr<MainWindow> window_;
};

}  // namespace synthara::ui
