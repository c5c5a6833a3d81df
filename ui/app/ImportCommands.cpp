// Bringing data in from other programs: opening a table of rows through the
// import preview, the "Import" note, and "Use first row as labels".
#include <filesystem>

#include "app/ImportDialog.h"
#include "app/MainWindow.h"
#include "shell/FileKinds.h"

namespace synthara::ui {

namespace {

const ports::FileFilter kOpenFilter{"Data files (*.syn *.csv *.tsv *.txt *.xls *.xlsx)",
                                    "*.syn *.csv *.tsv *.txt *.xls *.xlsx"};

}  // namespace

void MainWindow::RegisterImportCommands() {
    auto& h = handlers_;
    // File > Open takes tables of rows as well as projects.
    h["Open"] = [this] {
        const std::string path = files_.chooser.ChooseOpen("Open database", kOpenFilter, "");
        if (path.empty()) return;
        if (shell::IsProjectFile(path))
            document_.FileOpen(files_, sheet::OpenKind::File, path);
        else
            ImportTableFile(path);
    };
    h["File"] = h["Open"];
    h["Import"] = [this] { ShowImportNote(); };
    h["Use first row as labels"] = [this] { document_.UseFirstRowAsLabels(); };
}

void MainWindow::ShowImportNote() {
    const ports::Box note{
        "Import data",
        {"To bring data in from another program:",
         "- open its file here: a text file of rows (.csv, .tsv or .txt) or a workbook (.xls or "
         ".xlsx), or",
         "- copy the cells in the other program (CTRL-C) and paste them into this sheet "
         "(CTRL-V).",
         "", "Do you want to open a file now?"},
        ports::Icon::Information};
    if (document_.Prompts().Ask(note, ports::Buttons::YesNo, ports::Answer::Yes) !=
        ports::Answer::Yes)
        return;
    const std::string path = files_.chooser.ChooseOpen(
        "Import data",
        {"Tables (*.csv *.tsv *.txt *.xls *.xlsx)", "*.csv *.tsv *.txt *.xls *.xlsx"}, "");
    if (!path.empty()) ImportTableFile(path);
}

bool MainWindow::ImportTableFile(const std::string& path) {
    ImportDialog dialog(path, this);
    if (execDialog(dialog) != QDialog::Accepted) return false;
    shell::OpenSettings settings;
    settings.table = dialog.Options();
    settings.defaultFormat = dialog.DefaultFormat();
    if (!document_.ImportFile(files_, path, settings)) return false;
    if (document_.HasDataEntryColumns()) return true;
    // The columns came in without a block: the wizard's identify path says
    // which of them hold the effect size data.
    const ports::Box offer{"Identify columns",
                           {"The sheet has no columns for effect size data yet.      ",
                            "Do you want to identify the columns that hold it now?     "},
                           ports::Icon::Question};
    if (document_.Prompts().Ask(offer, ports::Buttons::YesNo, ports::Answer::Yes) ==
        ports::Answer::Yes)
        OpenWizard(true);
    return true;
}

}  // namespace synthara::ui
