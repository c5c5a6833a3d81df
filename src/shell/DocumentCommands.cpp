// The sheet's menu commands on the open project: each runs the engine's
// operation and then tells the listeners once what changed.
#include <utility>

#include "sheet/blocks/BlockTable.h"
#include "sheet/blocks/DisplayColumns.h"
#include "sheet/files/Backup.h"
#include "sheet/grid/MetaRows.h"
#include "sheet/import/FirstRowLabels.h"
#include "sheet/rows/SheetCheck.h"
#include "shell/Document.h"

namespace synthara::shell {

ports::Box Document::EffectSizeColumnsMissing() {
    return {"Columns for effect size missing",
            {"Please identify the columns with effect size data.      ",
             "If these columns exist, select 'Identify ... Column for ... Effect size data'.     ",
             "Otherwise, select 'Insert ... Column for... Effect size data'.     "},
            ports::Icon::Information};
}

bool Document::FileNew(FileServices& files) {
    sheet::ProjectFiles menu(sheet_, project_, files.recent, files.chooser);
    if (!menu.FileNew()) return false;
    Reloaded();
    return true;
}

bool Document::FileOpen(FileServices& files, sheet::OpenKind kind, const std::string& path,
                        bool ask) {
    sheet::ProjectFiles menu(sheet_, project_, files.recent, files.chooser);
    if (ask && !menu.ConfirmDiscard()) return false;
    if (!menu.OpenTable(kind, path)) return false;
    Reloaded();
    return true;
}

bool Document::ImportFile(FileServices& files, const std::filesystem::path& path,
                          const OpenSettings& settings) {
    sheet::ProjectFiles menu(sheet_, project_, files.recent, files.chooser);
    if (!menu.ConfirmDiscard()) return false;
    const OpenOutcome opened = Open(path, settings);
    if (!opened.ok())
        prompter_.Message({" File not opened ",
                           {"Sorry, that file could not be opened         ", opened.message},
                           ports::Icon::Warning});
    return opened.ok();
}

bool Document::UseFirstRowAsLabels() {
    return Settled([&] {
        const bool taken = sheet::UseFirstRowAsLabels(sheet_);
        // Trails quote the columns' titles.
        if (taken) ComputeRows();
        return taken;
    });
}

bool Document::FileSave(FileServices& files, int mode) {
    sheet::ProjectFiles menu(sheet_, project_, files.recent, files.chooser);
    const bool wasDirty = project_.SheetDirty;
    const bool saved = menu.FileSave(mode);
    if (project_.SheetDirty != wasDirty) NotifyDirty();
    return saved;
}

bool Document::Close(FileServices& files) {
    sheet::ProjectFiles menu(sheet_, project_, files.recent, files.chooser);
    const bool wasDirty = project_.SheetDirty;
    const bool closing = menu.Close(files.tempFolder);
    if (project_.SheetDirty != wasDirty) NotifyDirty();
    return closing;
}

bool Document::Bookmark(const std::filesystem::path& folder) {
    const sheet::FileResult written = sheet::BackupFile(sheet_, project_, folder);
    if (!written.ok)
        prompter_.Message({" Bookmark not written ",
                           {"Sorry, the bookmark could not be written         ", written.message},
                           ports::Icon::Warning});
    return written.ok;
}

bool Document::RestoreBookmark(const std::filesystem::path& folder) {
    if (!sheet::RestoreFile(sheet_, project_, true, folder)) return false;
    project_.SheetDirty = true;
    Reloaded();
    return true;
}

sheet::AddStudyOutcome Document::AddStudy(const std::string& name, bool rectangle) {
    return Settled([&] { return sheet::AddStudy(sheet_, project_, name, rectangle); });
}

bool Document::DeleteStudy(int row, const std::filesystem::path& backupFolder) {
    return Settled([&] { return sheet::DeleteStudy(sheet_, project_, row, backupFolder); });
}

void Document::SortBy(int col, bool descending) {
    if (col < sheet_.Flex().FixedCols() || col >= sheet_.Flex().Cols()) return;
    Settled([&] { sheet::ForceSort(sheet_, project_, col, descending); });
}

void Document::SetMergeRows(bool on) {
    project_.MergeRowsOn = on;
    Settled([&] { sheet::MergeRows(sheet_, on); });
}

bool Document::CheckData() {
    return Settled([&] { return sheet::CheckDataCommand(sheet_); });
}

void Document::RemoveRedBackColor() {
    Settled([&] { sheet::RemoveRedBackColor(sheet_); });
}

bool Document::HasDataEntryColumns() const {
    const sheet::Grid& flex = sheet_.Flex();
    for (int c = flex.FixedCols(); c < flex.Cols(); ++c)
        if (sheet_.MetaIs(c, sheet::MetaRow::Function, "Data Entry")) return true;
    return false;
}

bool Document::ComputeEffects() {
    if (!HasDataEntryColumns()) {
        prompter_.Message(EffectSizeColumnsMissing());
        return false;
    }
    ComputeAll();
    return true;
}

std::vector<sheet::GroupName> Document::GroupNames() {
    return sheet::EditGroupNames(sheet_);
}

void Document::SetGroupNames(const std::vector<sheet::GroupName>& names) {
    Settled([&] { sheet::SetGroupNames(sheet_, project_, names); });
}

bool Document::InsertPopulation(int populationIndex) {
    const int before = sheet_.GetCol(0, populationIndex);
    const int made = Settled([&] { return sheet_.MakePop(populationIndex); });
    return made >= 0 && before < 0;
}

bool Document::IdentifyPopulation(int col, int populationIndex) {
    return Settled([&] { return sheet::IdentifyPop(sheet_, col, populationIndex); }) >= 0;
}

bool Document::IdentifyModerator(int col) {
    return Settled([&] { return sheet::IdentifyCols(sheet_, col); });
}

bool Document::InsertModerator(int col, const sheet::ColumnPropertiesDialog& properties) {
    return Settled([&] { return sheet::InsertCols(sheet_, col, properties); }) >= 0;
}

bool Document::DeleteBlockAt(int col) {
    if (!HasDataEntryColumns()) {
        prompter_.Message(EffectSizeColumnsMissing());
        return false;
    }
    sheet::SynchTabs(sheet_, col);
    const std::string block = sheet_.View.CurrentBlock();
    const bool deleted = Settled([&] { return sheet::DeleteTab(sheet_, block); });
    if (deleted) ComputeAll();
    return deleted;
}

void Document::SetBlockDisplay(int mode) {
    // What the sheet shows is no change of the project.
    sheet_.View.BlockDisplay = mode;
    sheet::ShowBlocks(sheet_, sheet_.View.CurrentBlock());
    Notify({ChangeKind::Structure, {}});
}

void Document::SetIndexDisplay(int mode) {
    sheet_.View.IndexDisplay = mode;
    sheet::ShowIndices(sheet_);
    Notify({ChangeKind::Structure, {}});
}

void Document::SetIndexSelection(const IndexSelection& selection) {
    ApplyIndexSelection(sheet_, selection);
    SetDirty(true);
    Notify({ChangeKind::Structure, {}});
}

bool Document::SetPrimaryIndex(int col) {
    return Settled([&] { return sheet::SetPrimaryIndex(sheet_, col); });
}

void Document::FreezeColumns(int col) {
    const sheet::Grid& flex = sheet_.Flex();
    if (col <= 0 || col >= flex.Cols()) return;
    if (unfrozenCols_ < 0) unfrozenCols_ = flex.FixedCols();
    sheet_.SetFixedCols(col);
    Notify({ChangeKind::Structure, {}});
}

void Document::UnfreezeColumns() {
    if (unfrozenCols_ < 0) return;
    sheet_.SetFixedCols(unfrozenCols_);
    unfrozenCols_ = -1;
    Notify({ChangeKind::Structure, {}});
}

std::unique_ptr<sheet::BlockWizard> Document::StartWizard() {
    return std::make_unique<sheet::BlockWizard>(sheet_);
}

void Document::EndWizard(bool finished) {
    // Leaving without finishing put the sheet back as it was, but the
    // views still need to show it again.
    if (finished) {
        sheet_.FindFormats();
        ComputeRows();
        SetDirty(true);
    }
    Notify({ChangeKind::Structure, {}});
}

}  // namespace synthara::shell
