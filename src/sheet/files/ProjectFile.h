#pragma once
// Project (.syn) and template (.syt) files: the sheet written out whole and
// read back, and the menu operations around them (open, new, save, the
// question about unsaved changes, the caption and the recent lists).
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "ports/FileChooser.h"
#include "ports/Prompter.h"
#include "sheet/files/GridArchive.h"
#include "sheet/files/Project.h"
#include "sheet/files/RecentFiles.h"
#include "sheet/files/SheetFormat.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

// Loads a project or template file into `sheet`, ready for use: RestoreFormat,
// the lookup tables and the block table. On failure the sheet is exactly as
// it was and the message says why.
FileResult LoadProjectFile(Sheet& sheet, const std::filesystem::path& path);
// The same from the archive's bytes.
FileResult LoadProjectArchive(Sheet& sheet, std::span<const std::uint8_t> archive,
                              const ReadLimits& limits = {});
// Whether the program computes rows of a format (then its display cells are
// made again whenever the file is opened).
using ComputedFormat = std::function<bool(std::string_view format)>;

// Writes the sheet (PreSave, then the grid) to `path`; the previous file
// survives a failed write. With `computed`, the display cells of rows whose
// format it accepts are left out: opening the file computes them again.
FileResult SaveProjectFile(Sheet& sheet, const std::filesystem::path& path,
                           const ComputedFormat& computed = {});

// "Data" before the file has a name, otherwise the file's title.
std::string ShowCaption(const OpenProject& project);

enum class OpenKind { File, Template };

// The file menu's operations on the open project. Every question and refusal
// goes through the sheet's Prompter, every file choice through the chooser.
class ProjectFiles {
  public:
    ProjectFiles(Sheet& sheet, OpenProject& project, RecentFiles& recent,
                 ports::FileChooser& chooser);

    // Save (mode 0) or save as (mode 1). True when the sheet was written.
    bool FileSave(int mode);
    // Asks about unsaved changes, then opens a data file: `path` when given,
    // otherwise the one the user chooses. True when a file was loaded.
    bool FileOpen(const std::string& path = {});
    // Opens a data file or a template without asking about unsaved changes.
    bool OpenTable(OpenKind kind, const std::string& path = {});
    // Asks about unsaved changes, then starts a new sheet.
    bool FileNew();
    // Asks (in its own wording), then only clears the grid.
    bool OldFileNew();
    void OpenNew();
    // The question asked before the sheet is replaced or the program closes.
    // True when the operation may go ahead.
    bool ConfirmDiscard(bool oldWording = false);
    // Closing: the question, then the backup files go. False cancels the close.
    bool Close(const std::filesystem::path& backupFolder = ".");

    // The caption the window shows now.
    std::string Caption() const { return ShowCaption(project_); }
    // The computation's numbers as the last opened file had them.
    const StoredNumbers& Numbers() const { return numbers_; }

    // Commits an open cell edit before a question is asked; set by the window.
    std::function<void()> FinishEdit;

  private:
    Sheet& sheet_;
    OpenProject& project_;
    RecentFiles& recent_;
    ports::FileChooser& chooser_;
    StoredNumbers numbers_;
};

}  // namespace synthara::sheet
