#pragma once
// What the program knows about the open project besides the sheet itself:
// where it came from, whether it has unsaved changes, and the menu switches
// that loading consults.
#include <string>

namespace synthara::sheet {

// Title of the boxes that carry no title of their own.
inline constexpr const char* ProgramName = "Synthara";

// What every reader says when a file does not fit in memory.
inline constexpr const char* NotEnoughMemoryToRead = "There is not enough memory to read the file.";

// The outcome of a file operation; `message` says why when it failed.
struct FileResult {
    bool ok = false;
    std::string message;
};

enum class ProjectState {
    New,           // no path, no title, not dirty
    NamedClean,    // saved or opened, unchanged since
    NamedDirty,    // saved or opened, changed since
    UnnamedDirty,  // never saved, changed
    FromTemplate,  // made from a template: no path, clean
};

struct OpenProject {
    std::string CurrentFilePath;      // "" for a new sheet or one made from a template
    std::string CurrentFileTitle;     // the file's name for the caption; "" until it has one
    std::string CurrentTemplatePath;  // the last template used; "" otherwise
    bool SheetDirty = false;

    // The "Restore" entry of the Edit menu: on once a bookmark was written
    // for this file, off again when another file is opened.
    bool RestoreEnabled = false;
    // The row display toggle: "Merge rows" on, "Show each row" off.
    bool MergeRowsOn = false;

    ProjectState State() const {
        if (!CurrentFilePath.empty())
            return SheetDirty ? ProjectState::NamedDirty : ProjectState::NamedClean;
        if (SheetDirty) return ProjectState::UnnamedDirty;
        return CurrentTemplatePath.empty() ? ProjectState::New : ProjectState::FromTemplate;
    }
};

}  // namespace synthara::sheet
