#pragma once
// The open project: one sheet with its file state and computation options,
// owned here and shared by every face of the program. The desktop's views and
// the command line read the sheet through it and change it only through its
// operations, each of which computes what the change calls for and tells the
// listeners what it touched.
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/Analysis.h"
#include "effectsize/Options.h"
#include "effectsize/RowResult.h"
#include "effectsize/WorkingSet.h"
#include "ports/FileChooser.h"
#include "ports/Prompter.h"
#include "sheet/blocks/BlockWizard.h"
#include "sheet/blocks/Populations.h"
#include "sheet/files/Project.h"
#include "sheet/files/ProjectFile.h"
#include "sheet/files/RecentFiles.h"
#include "sheet/grid/Sheet.h"
#include "sheet/import/TableFile.h"
#include "sheet/rows/StudyRows.h"
#include "shell/CellEdits.h"
#include "shell/IndexSelection.h"
#include "shell/SheetChange.h"

namespace synthara::shell {

// How a file is read into the project.
struct OpenSettings {
    // The format (long or short name) of text rows that name none; "" for none.
    std::string defaultFormat;
    // How numbers typed into cells are read: the user's locale's separators.
    sheet::NumberSeparators separators;
    // Computation options for this opening in place of those the file stores.
    effectsize::OptionOverrides options;
    // For a table of rows: the sheet of a workbook, and whether the first row
    // titles the columns.
    sheet::TableOptions table;

    // The defaults, with `format` for rows that name none.
    static OpenSettings ForFormat(std::string format) {
        OpenSettings settings;
        settings.defaultFormat = std::move(format);
        return settings;
    }
};

enum class OpenStatus {
    Opened,
    UnknownFormat,  // the default format names no format
    NoFormat,       // a text row has no format and no default was given
    Refused,        // the file can't be read; `message` says why
};

// What the file menu's commands need besides the project: the recent lists,
// the file dialogs, and the folder of the bookmark and the undo copy.
struct FileServices {
    sheet::RecentFiles& recent;
    ports::FileChooser& chooser;
    std::filesystem::path tempFolder = ".";
};

struct OpenOutcome {
    OpenStatus status = OpenStatus::Refused;
    std::string message;
    bool ok() const { return status == OpenStatus::Opened; }
};

class Document {
  public:
    explicit Document(ports::Prompter& prompter);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    const sheet::Sheet& Sheet() const { return sheet_; }
    const sheet::OpenProject& Project() const { return project_; }
    const effectsize::ComputeOptions& Options() const { return options_; }
    ports::Prompter& Prompts() { return prompter_; }

    // Reads a delimited text file (.csv, .tsv, .txt) or a project or template
    // into a new sheet, takes the computation options it stores and computes
    // every row. On failure (a folder, a file that does not fit in memory
    // included) the open project is exactly as it was.
    OpenOutcome Open(const std::filesystem::path& path, const OpenSettings& settings = {});

    // The data rows from the first to the last one that holds anything; a
    // text file's blank lines are no rows.
    int DataRows() const { return dataRows_; }

    // Every data row in order as the sheet shows it, `i` counting from 0 for
    // the first: its format, its errors and the indices it has display
    // columns for, each with its trail when asked for.
    void ForEachRowResult(const std::function<void(int i, const effectsize::RowResult&)>& visit,
                          effectsize::Trails trails = effectsize::Trails::Off) const;
    // The text a cell shows, the trail of a "Formula" cell included: what the
    // screen, the clipboard and exported files read.
    std::string CellText(int row, int col) const;
    // The study name and the format of data row `i`; "" where it has none.
    std::string StudyName(int i) const;
    std::string RowFormat(int i) const;

    // Computes every data row with the project's options.
    void ComputeAll();

    // The options dialog's Ok: options outside their range are refused with
    // CheckVals's box and change nothing (false). Otherwise they are kept in
    // the Settings column and every row is computed with them.
    bool SetOptions(const effectsize::ComputeOptions& options);
    // The random model's estimator of tau-squared and its limits, kept in the
    // Settings column beside the computation options; the next run takes them.
    void SetRandomModel(const analysis::RandomModelOptions& options);
    // Undo and redo of the options dialog: options that were accepted once,
    // kept and computed again without boxes.
    void RestoreOptions(const effectsize::ComputeOptions& options);

    // The user types `text` into a data cell, as FinishEdit does it. False,
    // and nothing said, when the cell is not one the user may type into or
    // already reads so.
    bool EditCell(int row, int col, std::string text);

    // Editing in the grid, as the desktop's sheet does it.
    //
    // The user's texts for cells (FinishEdit), in order: a title in row 0
    // makes the column's title manual; a data cell is written ("" clears
    // it), a free column becomes one with data, an entry cell gives its row
    // the block's format (or moves a row that holds nothing else from
    // another block's format, with a box) and computes the row. Cells the
    // user may not type into are left alone. Gives what was written; empty
    // when nothing changed. Listeners are told once, at the end.
    EditDelta FinishEdits(const std::vector<CellEdit>& edits);
    EditDelta FinishEdit(int row, int col, std::string text);
    // Writes one side of an edit's delta back (Before undoes it, After does
    // it again) and computes the rows it touched, without boxes.
    void ApplyDelta(const EditDelta& delta, DeltaSide side);
    // Whether the user may type into the cell: data rows of the user's own
    // columns and of entry columns, not computed or system cells, and not
    // another block's grey cell while the row holds entries.
    bool CellEditable(int row, int col) const;
    // The text the screen shows: computed numbers in the column's number
    // format, everything else as CellText gives it.
    std::string DisplayText(int row, int col) const;
    // The trail the screen shows under the grid for a data row: of the index
    // of display column `col`, else of the primary index; "" when the row
    // has none.
    std::string RowTrail(int row, int col) const;
    // The index whose trail RowTrail gives for column `col`; 0 for none.
    int TrailIndex(int col) const;
    // The user drags column `from` to position `to`. A move the sheet's rules
    // refuse says why in a box and changes nothing. True when it moved.
    bool MoveColumn(int from, int to);
    // The user picks the tab of a block: the current tab, and the columns
    // shown when only the current block is shown. True when it changed.
    bool SelectBlockTab(int tab);

    // A data-entry block of the format (long or short name), with its display
    // columns, as the wizard makes it. False for an unknown name.
    bool AddBlock(std::string_view format);

    // "Run analyses": the sheet check, then the analysis. The check may write
    // "Blank" into empty identifying cells and paint faults red.
    analysis::ComputeStatus RunAnalyses(analysis::Analysis& analysis);

    // Writes the project (.syn) or template (.syt); a success makes the
    // project clean under that name.
    sheet::FileResult Save(const std::filesystem::path& path);

    bool Dirty() const { return project_.SheetDirty; }

    // ---- The sheet's menu commands. Each asks what it must through the
    // prompter, changes the project through the engine's operation of that
    // name, and tells the listeners once at its end.

    // Files. FileNew and FileOpen ask about unsaved changes first (FileOpen
    // not when `ask` is false); FileOpen opens `path` or, when it is empty,
    // the file the user chooses. FileSave: mode 0 saves, 1 saves as.
    bool FileNew(FileServices& files);
    bool FileOpen(FileServices& files, sheet::OpenKind kind, const std::string& path = {},
                  bool ask = true);
    bool FileSave(FileServices& files, int mode);
    // A table of rows (delimited text or a workbook's sheet) opened from the
    // desktop with the import's choices: asks about unsaved changes, then
    // opens it; a file that can't be read is refused with a box giving the
    // reason, and the open project stays as it was.
    bool ImportFile(FileServices& files, const std::filesystem::path& path,
                    const OpenSettings& settings);
    // Closing: the question about unsaved changes, then the bookmark and the
    // undo copy go. False cancels the close.
    bool Close(FileServices& files);
    // "Bookmark" and "Restore" (which asks first).
    bool Bookmark(const std::filesystem::path& folder);
    bool RestoreBookmark(const std::filesystem::path& folder);
    // The window's caption: "Data" or the file's title.
    std::string Caption() const { return sheet::ShowCaption(project_); }

    // Studies and rows.
    sheet::AddStudyOutcome AddStudy(const std::string& name, bool rectangle);
    std::string NewStudyName() const { return sheet::GetNewName(sheet_); }
    bool DeleteStudy(int row, const std::filesystem::path& backupFolder);
    void SortBy(int col, bool descending);
    // "Merge rows": the rows sorted by their identifying columns, whose equal
    // neighbouring cells are then drawn as one; off draws every cell.
    void SetMergeRows(bool on);
    bool CheckData();
    void RemoveRedBackColor();
    // "Compute effects": refused with a box when the sheet has no block.
    bool ComputeEffects();
    // "Edit group names": the words to offer (a box says so when none is
    // used), and the dialog's Ok.
    std::vector<sheet::GroupName> GroupNames();
    void SetGroupNames(const std::vector<sheet::GroupName>& names);

    // "Use first row as labels": the first data row titles its columns and
    // goes; refused with a box when it is empty.
    bool UseFirstRowAsLabels();

    // Columns and blocks. Populations count from 1 ("Study name") to 5.
    bool InsertPopulation(int populationIndex);
    bool IdentifyPopulation(int col, int populationIndex);
    bool IdentifyModerator(int col);
    bool InsertModerator(int col, const sheet::ColumnPropertiesDialog& properties);
    // "Delete this data entry block": the block of column `col`, or of the
    // current tab when `col` is in none.
    bool DeleteBlockAt(int col);
    void SetBlockDisplay(int mode);
    void SetIndexDisplay(int mode);
    bool SetPrimaryIndex(int col);
    // "Effect size indices": the dialog's fields as the sheet stands, and its
    // Ok, which lays out the display columns again.
    IndexSelection IndexChoices() const { return ReadIndexSelection(sheet_); }
    void SetIndexSelection(const IndexSelection& selection);
    // Columns left of `col` stay in view while the sheet scrolls; Unfreeze
    // puts the count back to what it was before the first freeze.
    void FreezeColumns(int col);
    void UnfreezeColumns();
    bool Frozen() const { return unfrozenCols_ >= 0; }
    // Whether the sheet has a column of that role.
    bool HasDataEntryColumns() const;

    // The block wizard works on the sheet while its window is open; EndWizard
    // (with whether it finished) computes the rows and tells the listeners.
    std::unique_ptr<sheet::BlockWizard> StartWizard();
    void EndWizard(bool finished);

    void AddListener(DocumentListener& listener);
    void RemoveListener(DocumentListener& listener);

  private:
    // Computes every data row; true when any cell changed.
    bool ComputeRows();
    bool ComputeRows(ports::Prompter& prompter);
    // Keeps options in range in the Settings column and computes every row.
    void KeepOptions(const effectsize::ComputeOptions& options, ports::Prompter& prompter);
    void Notify(const SheetChange& change);
    void NotifyCells(std::vector<CellRange> ranges);
    void SetDirty(bool dirty);
    // Tells the listeners whether the project has unsaved changes.
    void NotifyDirty();
    // The data rows in use, first to last; last < first when there are none.
    CellRange DataArea() const;
    // Editing in the grid: one edit's writes, and the ranges a row's
    // computation may have rewritten.
    void FinishOne(const CellEdit& edit, EditDelta& delta, std::vector<CellRange>& ranges);
    void WriteRecorded(int row, int col, const std::string& text, EditDelta& delta);
    void MoveRowToBlock(int row, int col, EditDelta& delta);
    void RefreshValueList(int col, EditDelta& delta);
    std::vector<CellRange> RowRanges(int row, int col, bool computed) const;
    bool RowHasOtherEntries(int row, int col) const;
    // After another sheet was loaded in place: the options it stores, its
    // rows computed, and the listeners told of a reset.
    void Reloaded();
    // After a command changed the sheet: recounts the rows, marks the project
    // dirty when the grid changed and tells the listeners. `revision` and
    // `wasDirty` are the grid's revision and the dirty flag before it.
    void Settle(std::uint64_t revision, bool wasDirty);
    template <typename Op>
    auto Settled(Op&& op);

    ports::Prompter& prompter_;
    sheet::Sheet sheet_;
    sheet::OpenProject project_;
    effectsize::ComputeOptions options_;
    int dataRows_ = 0;
    std::vector<DocumentListener*> listeners_;
    // The fixed-column count before the first freeze; -1 when not frozen.
    int unfrozenCols_ = -1;
};

}  // namespace synthara::shell
