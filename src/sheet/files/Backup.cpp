#include "sheet/files/Backup.h"

#include <system_error>

#include "sheet/blocks/BlockTable.h"
#include "sheet/files/GridArchive.h"
#include "sheet/files/SheetFormat.h"

namespace synthara::sheet {

namespace {

std::filesystem::path BackupPath(const std::filesystem::path& folder, std::string_view name) {
    return (folder.empty() ? std::filesystem::path(".") : folder) / std::string(name);
}

}  // namespace

FileResult WriteBackup(Sheet& sheet, const std::filesystem::path& folder, std::string_view name) {
    PreSave(sheet);
    return WriteGridFile(sheet.Flex(), BackupPath(folder, name));
}

FileResult LoadBackup(Sheet& sheet, const std::filesystem::path& folder, std::string_view name) {
    Grid loaded;
    FileResult result = ReadGridFile(BackupPath(folder, name), loaded);
    if (!result.ok) return result;
    sheet.ReplaceGrid(std::move(loaded));
    RestoreFormat(sheet);
    sheet.FindCols();
    return result;
}

FileResult BackupFile(Sheet& sheet, OpenProject& project, const std::filesystem::path& folder) {
    FileResult result = WriteBackup(sheet, folder, BookmarkFileName);
    if (result.ok) project.RestoreEnabled = true;
    return result;
}

bool RestoreFile(Sheet& sheet, OpenProject& project, bool ask,
                 const std::filesystem::path& folder) {
    if (ask) {
        const ports::Box box{"Confirm selection ",
                             {"Any changes made since the last bookmark will be lost.  ",
                              "Click 'Ok' to proceed, and abandon those changes.   "},
                             ports::Icon::Warning};
        if (sheet.Prompts().Ask(box, ports::Buttons::OkCancel, ports::Answer::Cancel) !=
            ports::Answer::Ok)
            return false;
    }
    if (!LoadBackup(sheet, folder, BookmarkFileName).ok) return false;
    AdjustBlocks(sheet);
    // The sheet is now the bookmark, which the file on disk may not be.
    project.SheetDirty = true;
    return true;
}

void DeleteBackupFiles(const std::filesystem::path& folder) {
    std::error_code ignored;
    std::filesystem::remove(BackupPath(folder, BookmarkFileName), ignored);
    std::filesystem::remove(BackupPath(folder, SystemBackupFileName), ignored);
}

}  // namespace synthara::sheet
