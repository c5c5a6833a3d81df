#include "sheet/files/ProjectFile.h"

#include <cmath>

#include "sheet/blocks/BlockTable.h"
#include "sheet/blocks/DisplayColumns.h"
#include "sheet/files/Backup.h"
#include "sheet/files/SheetFormat.h"
#include "sheet/grid/NumberFormats.h"
#include "sheet/rows/StudyRows.h"

namespace synthara::sheet {

namespace {

const ports::FileFilter kDataFilter{"(*.syn)", "*.syn"};
const ports::FileFilter kTemplateFilter{"(*.syt)", "*.syt"};

std::string FileTitle(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

}  // namespace

namespace {

// What every load does once the grid is in place.
void Ready(Sheet& sheet) {
    RestoreFormat(sheet);
    sheet.FindCols();
    AdjustBlocks(sheet);
}

}  // namespace

FileResult LoadProjectFile(Sheet& sheet, const std::filesystem::path& path) {
    Grid loaded;
    FileResult result = ReadGridFile(path, loaded);
    if (!result.ok) return result;
    sheet.ReplaceGrid(std::move(loaded));
    Ready(sheet);
    return result;
}

FileResult LoadProjectArchive(Sheet& sheet, std::span<const std::uint8_t> archive,
                              const ReadLimits& limits) {
    Grid loaded;
    FileResult result = UnpackGrid(archive, loaded, limits);
    if (!result.ok) return result;
    sheet.ReplaceGrid(std::move(loaded));
    Ready(sheet);
    return result;
}

FileResult SaveProjectFile(Sheet& sheet, const std::filesystem::path& path,
                           const ComputedFormat& computed) {
    PreSave(sheet);
    DerivedCells derived;
    const Grid& grid = sheet.Flex();
    const int formatCol = sheet.FormatCol();
    if (computed && formatCol >= 0) {
        derived.cols.resize(static_cast<std::size_t>(grid.Cols()));
        for (int c = 0; c < grid.Cols(); ++c)
            derived.cols[static_cast<std::size_t>(c)] =
                sheet.MetaIs(c, MetaRow::Function, "Display");
        derived.rows.resize(static_cast<std::size_t>(grid.Rows()));
        for (int r = grid.FixedRows(); r < grid.Rows(); ++r) {
            const std::string_view format = grid.At(r, formatCol).TextView();
            derived.rows[static_cast<std::size_t>(r)] = !format.empty() && computed(format);
        }
    }
    return WriteGridFile(grid, path, derived);
}

std::string ShowCaption(const OpenProject& project) {
    return project.CurrentFileTitle.empty() ? "Data" : project.CurrentFileTitle;
}

ProjectFiles::ProjectFiles(Sheet& sheet, OpenProject& project, RecentFiles& recent,
                           ports::FileChooser& chooser)
    : sheet_(sheet), project_(project), recent_(recent), chooser_(chooser) {}

bool ProjectFiles::FileSave(int mode) {
    std::string target = project_.CurrentFilePath;
    if (mode == 1 || target.empty()) {
        target = chooser_.ChooseSave("Save file", kDataFilter, project_.CurrentFileTitle);
        if (target.empty()) return false;
        if (!std::filesystem::path(target).has_extension()) target += ".syn";
    }
    const FileResult result = SaveProjectFile(sheet_, target);
    if (!result.ok) {
        sheet_.Prompts().Message({" File not saved ",
                                  {"Sorry, that file could not be saved         ", result.message},
                                  ports::Icon::Warning});
        return false;
    }
    project_.CurrentFilePath = target;
    project_.CurrentFileTitle = FileTitle(target);
    project_.SheetDirty = false;
    recent_.SetFlex(target);
    recent_.SaveFiles();
    return true;
}

bool ProjectFiles::OpenTable(OpenKind kind, const std::string& path) {
    // A bookmark of another file must not be restored over this one.
    project_.RestoreEnabled = false;
    const bool isTemplate = kind == OpenKind::Template;
    std::string chosen = path;
    if (chosen.empty()) {
        chosen = chooser_.ChooseOpen(isTemplate ? "Open template" : "Open database",
                                     isTemplate ? kTemplateFilter : kDataFilter, "");
        if (chosen.empty()) return false;
    }

    const FileResult result = LoadProjectFile(sheet_, chosen);
    if (!result.ok) {
        sheet_.Prompts().Message({" File not opened ",
                                  {"Sorry, that file could not be opened         "},
                                  ports::Icon::Warning});
        return false;
    }

    MergeRows(sheet_, project_.MergeRowsOn);
    SetDecs(sheet_);
    // A file never opens with all its blocks or all its results out of sight.
    BlockView& view = sheet_.View;
    if (view.BlockDisplay == HideAllBlocks) view.BlockDisplay = ShowCurrentBlock;
    if (view.IndexDisplay == ShowNoIndices) view.IndexDisplay = ShowPrimaryIndex;
    AdjustBlocks(sheet_);
    view.CurrentTab = 0;

    project_.CurrentFileTitle.clear();
    numbers_ = ReadStoredNumbers(sheet_);
    if (isTemplate) {
        // The next save asks for a new name, so the template itself is never overwritten.
        project_.CurrentTemplatePath = chosen;
        recent_.SetTemplates(chosen);
        recent_.SaveTemplates();
        project_.CurrentFilePath.clear();
    } else {
        // CurrentTemplatePath stays: it names the last template used.
        project_.CurrentFilePath = chosen;
        recent_.SetFlex(chosen);
        recent_.SaveFiles();
        project_.CurrentFileTitle = FileTitle(chosen);
    }
    project_.SheetDirty = false;
    return true;
}

bool ProjectFiles::ConfirmDiscard(bool oldWording) {
    if (FinishEdit) FinishEdit();
    if (!project_.SheetDirty) return true;
    const std::string ending = oldWording ? "?      " : "?       ";
    const std::string text =
        project_.CurrentFilePath.empty()
            ? "Do you want to save the changes you made to the spreadsheet" + ending
            : "Do you want to save the changes you made to " + project_.CurrentFilePath + ending;
    switch (sheet_.Prompts().Ask({ProgramName, {text}, ports::Icon::Question},
                                 ports::Buttons::YesNoCancel, ports::Answer::Yes)) {
        case ports::Answer::Yes:
            return FileSave(0);
        case ports::Answer::No:
            return true;
        case ports::Answer::Ok:
        case ports::Answer::Cancel:
            break;
    }
    return false;
}

bool ProjectFiles::FileOpen(const std::string& path) {
    if (!ConfirmDiscard()) return false;
    return OpenTable(OpenKind::File, path);
}

bool ProjectFiles::FileNew() {
    if (!ConfirmDiscard()) return false;
    OpenNew();
    return true;
}

bool ProjectFiles::OldFileNew() {
    if (!ConfirmDiscard(true)) return false;
    sheet_.InitializeGrid();
    return true;
}

void ProjectFiles::OpenNew() {
    sheet_.InitializeGrid();
    project_.CurrentFilePath.clear();
    project_.CurrentFileTitle.clear();
    project_.CurrentTemplatePath.clear();
    project_.SheetDirty = false;
}

bool ProjectFiles::Close(const std::filesystem::path& backupFolder) {
    if (!ConfirmDiscard()) return false;
    DeleteBackupFiles(backupFolder);
    return true;
}

}  // namespace synthara::sheet
