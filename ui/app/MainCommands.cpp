// The command keys of the sheet's menus and what each one does.
#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QStatusBar>

#include "analysis/Result.h"
#include "app/AddStudyDialog.h"
#include "app/AnalysisResultsDialog.h"
#include "app/DataEntryDialog.h"
#include "app/FormulasDialog.h"
#include "app/GroupNamesDialog.h"
#include "app/IndicesDialog.h"
#include "app/MainWindow.h"
#include "app/OptionsDialog.h"
#include "app/QtClipboard.h"
#include "app/WizardWindow.h"
#include "sheet/SheetModel.h"
#include "sheet/SheetView.h"
#include "sheet/SheetWidget.h"
#include "sheet/grid/MetaRows.h"
#include "sheet/grid/Sheet.h"
#include "sheet/rows/SheetCheck.h"

namespace synthara::ui {

namespace {

// The identifying columns' commands, in the order of their populations.
constexpr std::array<const char*, 5> kPopulationWords = {"study names", "subgroup within study",
                                                         "the comparison name", "the outcome name",
                                                         "the timepoint name"};

}  // namespace

bool MainWindow::NeedsDataEntryColumns(const QString& key) {
    static const QStringList keys = {"Compute effects",
                                     "Check data",
                                     "View Analysis",
                                     "Data entry assistant",
                                     "Formulas",
                                     "Delete this data entry block",
                                     "Edit group names",
                                     "Set primary index",
                                     "Effect size index",
                                     "Customize display",
                                     "Show selected indices",
                                     "Show only primary index",
                                     "Merge rows"};
    return keys.contains(key);
}

void MainWindow::RegisterCommands() {
    auto& h = handlers_;
    const auto current = [this] { return sheet_->CurrentColumn(); };
    h["New"] = [this] { document_.FileNew(files_); };
    h["Close"] = h["New"];
    h["Open"] = [this] { document_.FileOpen(files_, sheet::OpenKind::File); };
    h["File"] = h["Open"];
    h["From template"] = [this] { document_.FileOpen(files_, sheet::OpenKind::Template); };
    h["Template"] = h["From template"];
    h["Save"] = [this] { document_.FileSave(files_, 0); };
    h["SaveAs"] = [this] { document_.FileSave(files_, 1); };
    h["Exit"] = [this] { close(); };
    h["Bookmark"] = [this] {
        document_.Bookmark(files_.tempFolder);
        SyncChecks();
    };
    h["Restore"] = [this] { document_.RestoreBookmark(files_.tempFolder); };

    for (int p = 1; p <= 5; ++p) {
        const QString words = kPopulationWords[static_cast<std::size_t>(p - 1)];
        h["Insert column for " + words] = [this, p] { document_.InsertPopulation(p); };
        h["Identify column for " + words] = [this, p, current] {
            document_.IdentifyPopulation(current(), p);
        };
    }
    h["Insert columns for effect size data"] = [this] { OpenWizard(false); };
    h["Create new block"] = h["Wiz"] = h["Insert columns for effect size data"];
    h["Identify columns with effect size data"] = [this] { OpenWizard(true); };
    h["Identify columns for effect size data"] = h["Wiz2"] =
        h["Identify columns with effect size data"];
    h["Insert column for moderator variable"] = [this] { InsertModerator(); };
    h["Identify column for moderator variable"] = [this, current] {
        document_.IdentifyModerator(current());
    };

    h["Insert study"] = [this] { InsertStudy(); };
    h["Delete study"] = [this] { document_.DeleteStudy(sheet_->CurrentRow(), files_.tempFolder); };
    h["Delete this data entry block"] = [this, current] { document_.DeleteBlockAt(current()); };
    h["Edit group names"] = [this] { EditGroupNames(); };
    // A repeat of the last sort by auto sort names its column in resortCol_.
    const auto sortColumn = [this, current] { return resortCol_ >= 0 ? resortCol_ : current(); };
    h["Sort AZ"] = [this, sortColumn] { SortRows(sortColumn(), false); };
    h["Sort ZA"] = [this, sortColumn] { SortRows(sortColumn(), true); };
    h["Auto sort on"] = [this] { SetAutoSort(true); };
    h["Auto sort off"] = [this] { SetAutoSort(false); };
    h["Merge rows"] = [this] {
        SetRowSelection(false);
        document_.SetMergeRows(true);
    };
    h["Show each row"] = [this] {
        SetRowSelection(false);
        document_.SetMergeRows(false);
    };
    h["Select multiple rows"] = [this] {
        SetRowSelection(true);
        document_.SetMergeRows(false);
    };
    for (const auto& [dataType, values] : DropDownValues())
        for (const QString& value : values)
            h[value] = [this, value] { WriteCellValue(value); };
    h["Compute effects"] = [this] { document_.ComputeEffects(); };
    h["Check data"] = [this] { document_.CheckData(); };
    h["Remove red backcolor"] = [this] { document_.RemoveRedBackColor(); };

    h["Show all blocks"] = [this] { document_.SetBlockDisplay(sheet::ShowAllBlocks); };
    h["Show only current block"] = [this] { document_.SetBlockDisplay(sheet::ShowCurrentBlock); };
    h["Hide all blocks"] = [this] { document_.SetBlockDisplay(sheet::HideAllBlocks); };
    h["Show selected indices"] = [this] { document_.SetIndexDisplay(sheet::ShowSelectedIndices); };
    h["Show only primary index"] = [this] { document_.SetIndexDisplay(sheet::ShowPrimaryIndex); };
    h["Customize display"] = [this] {
        IndicesDialog dialog(document_, this);
        execDialog(dialog);
    };
    h["Set primary index"] = [this, current] { document_.SetPrimaryIndex(current()); };
    h["Effect size index"] = h["Set primary index"];
    h["Freeze columns"] = [this, current] { document_.FreezeColumns(current()); };
    h["Unfreeze columns"] = [this] { document_.UnfreezeColumns(); };

    for (const QString& key : OptionsDialog::MenuEntries())
        h[key] = [this, key] { EditOptions(key); };

    h["Formulas"] = [this] { ShowFormulas(); };
    h["Data entry assistant"] = [this] { ShowDataEntry(); };
    h["View Analysis"] = [this] { ViewAnalysis(); };

    h["Opening wizard"] = [this] {
        settings_.SetInteger("ShowWizard01", Command("Opening wizard")->isChecked() ? 1 : 0);
    };
    h["About"] = [this] { About(); };
    h["Technical support"] = h["About"];
    RegisterColumnCommands();
    RegisterRowColumnCommands();
    RegisterClipboardCommands();
    RegisterImportCommands();
    RegisterPrintCommands();
}

void MainWindow::OpenWizard(bool identify) {
    WizardWindow wizard(document_, identify, this);
    execDialog(wizard);
}

void MainWindow::InsertStudy() {
    if (document_.Sheet().GetCol(0, 1) < 0) {
        document_.Prompts().Message(sheet::StudyColumnMissing());
        return;
    }
    AddStudyDialog dialog(document_, this);
    execDialog(dialog);
}

void MainWindow::EditGroupNames() {
    std::vector<sheet::GroupName> names = document_.GroupNames();
    if (names.empty()) return;
    GroupNamesDialog dialog(std::move(names), this);
    if (execDialog(dialog) == QDialog::Accepted) document_.SetGroupNames(dialog.Names());
}

void MainWindow::EditOptions(const QString& menuEntry) {
    OptionsDialog dialog(document_, undo_, this);
    dialog.FocusOn(menuEntry);
    execDialog(dialog);
}

void MainWindow::ShowFormulas() {
    const auto formulas =
        shell::ReadRowFormulas(document_, sheet_->CurrentRow(), sheet_->CurrentColumn());
    if (!formulas) {
        document_.Prompts().Message(shell::CannotOpenForEmptyRow());
        return;
    }
    QtClipboard clipboard;
    FormulasDialog dialog(*formulas, clipboard, this);
    execDialog(dialog);
}

void MainWindow::ShowDataEntry() {
    const auto entries = shell::ReadRowEntries(document_, sheet_->CurrentRow());
    if (!entries) {
        document_.Prompts().Message(shell::CannotOpenForEmptyRow());
        return;
    }
    DataEntryDialog dialog(*entries, this);
    execDialog(dialog);
}

void MainWindow::ViewAnalysis() {
    statusBar()->showMessage("Loading analysis module ...");
    analysis::Analysis analysis(document_.Prompts());
    analysis.RowOptions = document_.Options();
    // The sheet check and the synchronising of the rows come first; a
    // refusal has shown its own box.
    const analysis::ComputeStatus status = document_.RunAnalyses(analysis);
    statusBar()->clearMessage();
    if (status == analysis::ComputeStatus::NoIndexColumns) {
        document_.Prompts().Message(
            {"View Analysis",
             {"The sheet has no columns for the index \"" + analysis.DisplayIndex + "\"."}});
        return;
    }
    if (status != analysis::ComputeStatus::Done) return;
    if (!analysis::AnyValidStudy(analysis)) {
        document_.Prompts().Message(
            {"View Analysis",
             {"No study has a valid \"" + analysis.DisplayIndex + "\".",
              "Use 'Data entry assistant' on a row to see what it lacks."}});
        return;
    }
    AnalysisResultsDialog dialog(analysis::CollectSummaries(analysis), this);
    execDialog(dialog);
}

void MainWindow::SortRows(int col, bool descending) {
    const sheet::Grid& flex = document_.Sheet().Flex();
    if (col < flex.FixedCols() || col >= flex.Cols()) return;
    lastSort_ = {flex.Col(col).key, col, descending};
    document_.SortBy(col, descending);
}

void MainWindow::SetAutoSort(bool on) {
    autoSort_ = on;
    SyncChecks();
    if (!on) return;
    // With no sort yet, auto sort takes the current column, ascending.
    if (lastSort_.col < 0) lastSort_.col = sheet_->CurrentColumn();
    SortAgain();
}

void MainWindow::SortAgain() {
    const sheet::Grid& flex = document_.Sheet().Flex();
    const int col = lastSort_.key.empty() ? lastSort_.col : flex.ColIndex(lastSort_.key);
    if (col < flex.FixedCols() || col >= flex.Cols()) return;
    resortCol_ = col;
    Run(lastSort_.descending ? "Sort ZA" : "Sort AZ");
    resortCol_ = -1;
}

void MainWindow::SetRowSelection(bool wholeRows) {
    wholeRows_ = wholeRows;
    const auto behavior =
        wholeRows ? QAbstractItemView::SelectRows : QAbstractItemView::SelectItems;
    for (QAbstractItemView* view : {static_cast<QAbstractItemView*>(&sheet_->View()),
                                    static_cast<QAbstractItemView*>(&sheet_->View().Frozen())}) {
        view->setSelectionBehavior(behavior);
        view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    }
    SyncChecks();
}

void MainWindow::WriteCellValue(const QString& value) {
    const int row = sheet_->CurrentRow();
    const int col = sheet_->CurrentColumn();
    if (row < sheet::FixedRowCount || col < 0 || !CellValues(col).contains(value)) return;
    // As if typed: one edit of the grid on the undo stack.
    SheetModel& model = sheet_->Model();
    const int shown = model.ModelRow(row);
    if (shown >= 0) model.setData(model.index(shown, col), value, Qt::EditRole);
}

void MainWindow::InsertModerator() {
    document_.InsertModerator(sheet_->CurrentColumn(), [this](sheet::Sheet&, int) {
        QInputDialog dialog(this);
        dialog.setWindowTitle("Column properties");
        dialog.setLabelText("Name of the new column:");
        return execDialog(dialog) == QDialog::Accepted ? dialog.textValue().trimmed().toStdString()
                                                       : std::string();
    });
}

void MainWindow::About() {
    QMessageBox::about(this, "About Synthara",
                       "<h3>Synthara " SYNTHARA_VERSION
                       "</h3>"
                       "<p>Meta-analysis on the desktop: a sheet of studies, the effect size of "
                       "every row in any of its data-entry formats, and the analyses that "
                       "combine them.</p>");
}

}  // namespace synthara::ui
