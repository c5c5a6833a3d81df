#pragma once
// Whole-sheet copies kept beside the program's work: the bookmark the user
// sets from the Edit menu, and the undo copy that operations which may have to
// be undone as a whole write before they start. Both live in a folder the
// caller names (the current folder by default) and go when the program closes.
#include <filesystem>
#include <string_view>

#include "ports/Prompter.h"
#include "sheet/files/Project.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

inline constexpr std::string_view BookmarkFileName = "SYNBookMark";
inline constexpr std::string_view SystemBackupFileName = "SYNSystemBackup";

// PreSave, then the whole grid to `folder`/`name`.
FileResult WriteBackup(Sheet& sheet, const std::filesystem::path& folder, std::string_view name);
// Loads `folder`/`name` with RestoreFormat. On failure the sheet is as it was.
FileResult LoadBackup(Sheet& sheet, const std::filesystem::path& folder, std::string_view name);

// "Bookmark": writes the bookmark and enables "Restore".
FileResult BackupFile(Sheet& sheet, OpenProject& project,
                      const std::filesystem::path& folder = ".");
// "Restore": with `ask`, asks first; then reloads the bookmark. True when the
// sheet was replaced by the bookmark.
bool RestoreFile(Sheet& sheet, OpenProject& project, bool ask,
                 const std::filesystem::path& folder = ".");

// Removes both files; a file that isn't there is no error.
void DeleteBackupFiles(const std::filesystem::path& folder = ".");

}  // namespace synthara::sheet
