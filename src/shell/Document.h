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
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "analysis/Analysis.h"
#include "effectsize/Options.h"
#include "effectsize/RowResult.h"
#include "effectsize/WorkingSet.h"
#include "ports/Clipboard.h"
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
#include "shell/ColumnProperties.h"
#include "shell/IndexSelection.h"
#include "shell/SheetChange.h"
#include "shell/SheetSelection.h"
#include "shell/SheetSnapshot.h"

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

// What "Copy selection", "Copy with header" and "Copy entire grid" copy.
enum class CopyMode { Selection, WithHeader, EntireGrid };

// How a paste laid the clipboard's cells onto the selection, or that it was
// refused (with a box) or had nothing to paste.
enum class PasteCase { FromOneCell, BlockToOneCell, SameSizeBlock, CopyColumn, CopyRow, Refused };

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

    // Undo of whole commands. Snapshot is the sheet as it stands, cheap to
    // take however large the sheet; Restore puts one back in its place,
    // tells the views and marks the project changed. Revision moves with
    // every change of a cell, a column or a row.
    SheetSnapshot Snapshot() const;
    void Restore(const SheetSnapshot& snapshot);
    std::uint64_t Revision() const { return sheet_.Flex().Revision(); }
    // Counts the sheets put in place of the one before (files opened, a new
    // sheet, a bookmark restored): a snapshot from before such a change
    // belongs to another sheet.
    std::uint64_t SheetsLoaded() const { return sheetsLoaded_; }

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

    // Whole rows and columns, as the sheet numbers them; -1 where nothing
    // is selected. Each refuses with a box where the sheet's rules say no.
    // "Copy row": a copy of the row under it, computed. "Insert row":
    // `count` blank rows above row `first`.
    bool CopyRow(int row);
    bool InsertRows(int first, int count);
    bool DeleteRows(int first, int last);
    // The user drags row `from` to row `to`.
    bool MoveRow(int from, int to);
    bool CopyColumn(int col);
    bool DeleteColumns(int first, int last);
    // "Column highlight", "Row highlight" (on) and their removal.
    void HighlightColumns(int first, int last, bool on);
    void HighlightRows(int first, int last, bool on);
    // The clipboard. Cells go out as the screen shows them, tab-separated
    // rows; without a selection each refuses with a box. Paste writes each
    // cell as typing would, then computes the rows it touched once; a
    // refusal leaves the sheet as it was. Cut copies, then blanks the
    // selected cells of the user's columns, the results of their rows, and
    // the format of a row left without entries. ClearCells ("Delete")
    // blanks the selected cells that take typing.
    bool Copy(const std::optional<SheetSelection>& selection, CopyMode mode,
              ports::Clipboard& clipboard);
    void CopyAll(ports::Clipboard& clipboard);
    PasteCase Paste(const std::optional<SheetSelection>& selection,
                    const ports::Clipboard& clipboard);
    bool Cut(const std::optional<SheetSelection>& selection, ports::Clipboard& clipboard);
    bool ClearCells(const std::optional<SheetSelection>& selection);
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
    // The answer of the commands that need data-entry columns on a sheet
    // without any.
    static ports::Box EffectSizeColumnsMissing();

    // Column properties. A refusal is a box that leaves the sheet as it was
    // (false); `cols` are the columns of the user's selection.
    ColumnProperties PropertiesOf(int col) const { return ReadColumnProperties(sheet_, col); }
    bool SetColumnProperties(int col, const ColumnProperties& properties);
    bool ShowColumns(const std::vector<std::pair<int, bool>>& shown);
    bool DropDown(int col);
    void SetDecimals(const std::vector<int>& cols, int decimals);
    void StepDecimals(const std::vector<int>& cols, int step);
    void AutoFormat();
    // Widths to fit what the columns show, measured in the screen's `font`.
    void AutoSize(const std::vector<int>& cols, const ports::TextMeasurer& measurer,
                  const ports::FontSpec& font);

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
    // Runs of neighbouring columns over rows first..last, as ranges.
    static std::vector<CellRange> ColumnRuns(int firstRow, int lastRow, const std::set<int>& cols);
    bool RowHasOtherEntries(int row, int col) const;
    // A column of the user's or an entry column: not one the program fills.
    bool ColumnTakesTyping(int col) const;
    // The clipboard's writes, as typing does them but in one batch; `cut`
    // also blanks the results and format of each row it touches (WriteBatch
    // in DocumentClipboard.cpp). True when anything changed.
    bool WriteBatch(const std::vector<CellEdit>& edits, bool cut);

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
    std::uint64_t sheetsLoaded_ = 0;
};

// Runs `op`, an engine operation on the sheet, then settles what it changed.
template <typename Op>
auto Document::Settled(Op&& op) {
    const std::uint64_t revision = sheet_.Flex().Revision();
    const bool wasDirty = project_.SheetDirty;
    if constexpr (std::is_void_v<decltype(op())>) {
        op();
        Settle(revision, wasDirty);
    } else {
        auto result = op();
        Settle(revision, wasDirty);
        return result;
    }
}

}  // namespace synthara::shell
