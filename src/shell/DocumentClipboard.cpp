// The sheet's clipboard: copying the selected cells as the screen shows them,
// pasting the clipboard's cells as typing would write them (in one batch,
// each touched row computed once), cutting, and clearing the selection.
#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "effectsize/Compute.h"
#include "sheet/files/GridArchive.h"
#include "sheet/grid/MetaRows.h"
#include "sheet/grid/NumberFormats.h"
#include "shell/ClipboardText.h"
#include "shell/Document.h"

namespace synthara::shell {

namespace {

using sheet::MetaRow;

ports::Box NoCellSelected() {
    return {
        "No cell selected", {"Please click on cell, then try again    "}, ports::Icon::Information};
}

ports::Box CopyNotPerformed(std::string line) {
    return {"  Copy not performed ", {std::move(line)}, ports::Icon::Information};
}

constexpr const char* kShapeRefused =
    "To copy a block of cells, click on the first cell of the target and click CTRL-V    ";
constexpr const char* kGreyRefused = "The program cannot paste data into grayed-out cells         ";
constexpr const char* kTooWide =
    "The cells on the clipboard reach past the last column of the sheet.    ";
constexpr const char* kTooMany = "The clipboard holds more cells than the sheet can take.    ";
constexpr const char* kFormatChangedTitle = " Data entry format";

// The shown rows and columns a selection covers, within the data rows in
// use (whole columns) and the user's columns (whole rows).
struct SelectedCells {
    std::vector<int> rows;
    std::vector<int> cols;
    bool Empty() const { return rows.empty() || cols.empty(); }
};

SelectedCells ShownCells(const sheet::Grid& flex, const SheetSelection& selection, int dataRows) {
    SelectedCells cells;
    const CellRange& range = selection.cells;
    int firstRow = std::max(range.firstRow, flex.FixedRows());
    int lastRow = std::min(range.lastRow, flex.Rows() - 1);
    if (selection.wholeColumns) {
        firstRow = flex.FixedRows();
        lastRow = std::min(flex.FixedRows() + std::max(dataRows, 1) - 1, flex.Rows() - 1);
    }
    int firstCol = std::max(range.firstCol, flex.FixedCols());
    int lastCol = std::min(range.lastCol, flex.Cols() - 1);
    if (selection.wholeRows) {
        firstCol = flex.FixedCols();
        lastCol = flex.Cols() - 1;
    }
    for (int r = firstRow; r <= lastRow; ++r)
        if (!flex.RowHidden(r)) cells.rows.push_back(r);
    for (int c = firstCol; c <= lastCol; ++c)
        if (!flex.Col(c).hidden) cells.cols.push_back(c);
    return cells;
}

// `count` shown rows from `first` down; rows past the sheet's end are new.
std::vector<int> RowsDown(const sheet::Grid& flex, int first, int count) {
    std::vector<int> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int r = first; static_cast<int>(rows.size()) < count; ++r)
        if (!flex.RowHidden(r)) rows.push_back(r);
    return rows;
}

// Up to `count` shown columns from `first` rightwards; fewer at the sheet's end.
std::vector<int> ColsRight(const sheet::Grid& flex, int first, int count) {
    std::vector<int> cols;
    for (int c = first; c < flex.Cols() && static_cast<int>(cols.size()) < count; ++c)
        if (!flex.Col(c).hidden) cols.push_back(c);
    return cols;
}

// Writes `rows` by `cols` of cells as the screen shows them, the columns'
// titles first when asked.
std::string CellsText(const Document& document, const std::vector<int>& rows,
                      const std::vector<int>& cols, bool titles) {
    const sheet::Grid& flex = document.Sheet().Flex();
    ClipboardWriter writer;
    if (titles) {
        for (int c : cols)
            writer.AddCell(flex.Text(MetaRow::ColumnHeader, c));
        writer.EndRow();
    }
    for (int r : rows) {
        for (int c : cols)
            writer.AddCell(document.DisplayText(r, c));
        writer.EndRow();
    }
    return writer.Text();
}

}  // namespace

bool Document::Copy(const std::optional<SheetSelection>& selection, CopyMode mode,
                    ports::Clipboard& clipboard) {
    if (mode == CopyMode::EntireGrid) {
        CopyAll(clipboard);
        return true;
    }
    const SelectedCells cells =
        selection ? ShownCells(sheet_.Flex(), *selection, dataRows_) : SelectedCells{};
    if (cells.Empty()) {
        prompter_.Message(NoCellSelected());
        return false;
    }
    clipboard.SetText(CellsText(*this, cells.rows, cells.cols, mode == CopyMode::WithHeader));
    return true;
}

void Document::CopyAll(ports::Clipboard& clipboard) {
    // Every shown column but the row numbers, with its title, over the rows in use.
    const sheet::Grid& flex = sheet_.Flex();
    const SelectedCells cells = ShownCells(
        flex, {{flex.FixedRows(), flex.FixedRows() + dataRows_ - 1, 0, 0}, true, false}, dataRows_);
    std::vector<int> cols;
    for (int c = 1; c < flex.FixedCols(); ++c)
        if (!flex.Col(c).hidden) cols.push_back(c);
    cols.insert(cols.end(), cells.cols.begin(), cells.cols.end());
    const std::vector<int> rows = dataRows_ > 0 ? cells.rows : std::vector<int>{};
    clipboard.SetText(CellsText(*this, rows, cols, true));
}

PasteCase Document::Paste(const std::optional<SheetSelection>& selection,
                          const ports::Clipboard& clipboard) {
    const sheet::Grid& flex = sheet_.Flex();
    const SelectedCells selected =
        selection ? ShownCells(flex, *selection, dataRows_) : SelectedCells{};
    if (selected.Empty()) {
        prompter_.Message(NoCellSelected());
        return PasteCase::Refused;
    }
    ClipboardTable table;
    if (!table.Parse(clipboard.Text())) {
        prompter_.Message(CopyNotPerformed(kTooMany));
        return PasteCase::Refused;
    }
    if (table.Empty()) return PasteCase::Refused;

    // Which cells take which of the clipboard's: the case by the shapes.
    const int rows = table.Rows();
    const int cols = table.Cols();
    const int selRows = static_cast<int>(selected.rows.size());
    const int selCols = static_cast<int>(selected.cols.size());
    PasteCase pasteCase = PasteCase::Refused;
    std::vector<int> targetRows;
    std::vector<int> targetCols;
    if (selection->wholeColumns && cols == selCols) {
        pasteCase = PasteCase::CopyColumn;
        targetRows = RowsDown(flex, flex.FixedRows(), rows);
        targetCols = selected.cols;
    } else if (selection->wholeRows && rows == selRows) {
        pasteCase = PasteCase::CopyRow;
        targetRows = selected.rows;
        targetCols = ColsRight(flex, flex.FixedCols(), cols);
    } else if (rows == selRows && cols == selCols) {
        pasteCase = PasteCase::SameSizeBlock;
        targetRows = selected.rows;
        targetCols = selected.cols;
    } else if (rows == 1 && cols == 1) {
        pasteCase = PasteCase::FromOneCell;
        targetRows = selected.rows;
        targetCols = selected.cols;
    } else if (selRows == 1 && selCols == 1) {
        pasteCase = PasteCase::BlockToOneCell;
        targetRows = RowsDown(flex, selected.rows.front(), rows);
        targetCols = ColsRight(flex, selected.cols.front(), cols);
    } else {
        prompter_.Message(CopyNotPerformed(kShapeRefused));
        return PasteCase::Refused;
    }
    const bool oneCell = pasteCase == PasteCase::FromOneCell;
    if (!oneCell && static_cast<int>(targetCols.size()) < cols) {
        prompter_.Message(CopyNotPerformed(kTooWide));
        return PasteCase::Refused;
    }
    if (targetRows.back() >= sheet::ReadLimits{}.maxRows) {
        prompter_.Message(CopyNotPerformed(kTooMany));
        return PasteCase::Refused;
    }

    // Another block's grey cell takes nothing while its row holds entries.
    std::vector<int> takes;
    for (int c : targetCols)
        if (ColumnTakesTyping(c)) takes.push_back(c);
    for (int r : targetRows) {
        if (r >= flex.Rows()) break;
        for (int c : takes)
            if (flex.CellShade(r, c) != 0 && RowHasOtherEntries(r, -1)) {
                prompter_.Message(CopyNotPerformed(kGreyRefused));
                return PasteCase::Refused;
            }
    }

    std::vector<CellEdit> edits;
    edits.reserve(targetRows.size() * takes.size());
    for (std::size_t i = 0; i < targetRows.size(); ++i)
        for (std::size_t j = 0; j < targetCols.size(); ++j) {
            const int col = targetCols[j];
            if (!ColumnTakesTyping(col)) continue;
            const std::string_view text =
                oneCell ? table.At(0, 0) : table.At(static_cast<int>(i), static_cast<int>(j));
            edits.push_back({targetRows[i], col, std::string(text)});
        }
    WriteBatch(edits, false);
    return pasteCase;
}

bool Document::Cut(const std::optional<SheetSelection>& selection, ports::Clipboard& clipboard) {
    if (!Copy(selection, CopyMode::Selection, clipboard)) return false;
    const SelectedCells cells = ShownCells(sheet_.Flex(), *selection, dataRows_);
    std::vector<CellEdit> edits;
    for (int r : cells.rows)
        for (int c : cells.cols)
            edits.push_back({r, c, {}});
    WriteBatch(edits, true);
    return true;
}

bool Document::ClearCells(const std::optional<SheetSelection>& selection) {
    if (!selection) return false;
    const sheet::Grid& flex = sheet_.Flex();
    const SelectedCells cells = ShownCells(flex, *selection, dataRows_);
    std::vector<CellEdit> edits;
    for (int r : cells.rows)
        for (int c : cells.cols)
            if (!flex.IsBlank(r, c) && CellEditable(r, c)) edits.push_back({r, c, {}});
    return WriteBatch(edits, false);
}

bool Document::WriteBatch(const std::vector<CellEdit>& edits, bool cut) {
    const sheet::Grid& flex = sheet_.Flex();
    const std::uint64_t revision = flex.Revision();
    int firstRow = flex.Rows();
    int lastRow = -1;
    for (const CellEdit& edit : edits)
        if (edit.row >= flex.FixedRows()) {
            firstRow = std::min(firstRow, edit.row);
            lastRow = std::max(lastRow, edit.row);
        }
    if (lastRow < 0) return false;
    const int oldRows = flex.Rows();
    if (lastRow >= oldRows) sheet_.SetRows(lastRow + 1);

    const int formatCol = sheet_.FormatCol();
    const int nickCol = sheet_.NickNameCol();
    const int mergeCol = sheet_.MergeTypeCol();
    // What each column is, looked up once for the whole batch.
    const auto colCount = static_cast<std::size_t>(flex.Cols());
    std::vector<signed char> takes(colCount, -1);
    std::vector<char> entry(colCount, 0);
    std::vector<char> written(colCount, 0);
    std::vector<char> writtenText(colCount, 0);
    std::vector<std::string> blockOf(colCount);
    for (std::size_t c = 0; c < colCount; ++c)
        if (sheet_.MetaIs(static_cast<int>(c), MetaRow::Function, "Data Entry")) {
            entry[c] = 1;
            blockOf[c] = sheet_.Meta(static_cast<int>(c), MetaRow::BlockName);
        }
    // Rows of the batch that wrote anything, and those whose new entries
    // belong to another block than their format's.
    std::vector<char> rowWritten(static_cast<std::size_t>(lastRow - firstRow + 1), 0);
    std::vector<char> rowToBlock(rowWritten.size(), 0);
    bool anyEntry = false;

    for (const CellEdit& edit : edits) {
        if (edit.row < flex.FixedRows() || edit.col < 0 || edit.col >= static_cast<int>(colCount))
            continue;
        const auto c = static_cast<std::size_t>(edit.col);
        if (takes[c] < 0) takes[c] = ColumnTakesTyping(edit.col) ? 1 : 0;
        if (takes[c] == 0 || flex.TextIs(edit.row, edit.col, edit.text)) continue;
        if (edit.text.empty())
            sheet_.ClearCell(edit.row, edit.col);
        else
            sheet_.SetText(edit.row, edit.col, edit.text);
        const auto i = static_cast<std::size_t>(edit.row - firstRow);
        rowWritten[i] = 1;
        written[c] = 1;
        if (edit.text.empty()) continue;
        writtenText[c] = 1;
        if (entry[c] != 0) {
            anyEntry = true;
            if (formatCol >= 0 && !flex.IsBlank(edit.row, formatCol) && nickCol >= 0 &&
                !flex.TextIs(edit.row, nickCol, blockOf[c]))
                rowToBlock[i] = 1;
        }
    }

    // The columns' records, once per column.
    EditDelta record;
    std::set<int> touchedCols;
    std::vector<CellRange> ranges;
    for (std::size_t c = 0; c < colCount; ++c) {
        if (written[c] == 0) continue;
        const int col = static_cast<int>(c);
        touchedCols.insert(col);
        anyEntry = anyEntry || entry[c] != 0;
        const std::size_t before = record.cells.size();
        if (writtenText[c] != 0) {
            if (sheet_.MetaIs(col, MetaRow::Function, "Empty"))
                WriteRecorded(MetaRow::Function, col, "Unknown", record);
            if (sheet_.MetaIs(col, MetaRow::DataType, "Not specified")) {
                WriteRecorded(MetaRow::DataType, col, "Categorical", record);
                WriteRecorded(MetaRow::Align, col, "Left", record);
            }
        }
        if (sheet_.MetaIs(col, MetaRow::DataType, "Drop down box")) RefreshValueList(col, record);
        if (record.cells.size() != before)
            ranges.push_back({MetaRow::DataType, MetaRow::Numvals, col, col});
    }

    // A row whose entries now lie only in another block moves to that block:
    // its format cells go, and FindFormats gives it the new block's.
    int movedRow = -1;
    for (std::size_t i = 0; i < rowToBlock.size(); ++i) {
        if (rowToBlock[i] == 0) continue;
        const int row = firstRow + static_cast<int>(i);
        bool keepsOld = false;
        for (std::size_t c = 0; c < colCount && !keepsOld; ++c)
            keepsOld = entry[c] != 0 && !flex.IsBlank(row, static_cast<int>(c)) &&
                       flex.TextIs(row, nickCol, blockOf[c]);
        if (keepsOld) continue;
        for (int col : {formatCol, nickCol, mergeCol})
            if (col >= 0) sheet_.ClearCell(row, col);
        movedRow = row;
    }

    // A cut takes the results of its rows with it, and the format of a row
    // left without entries.
    std::vector<int> resultCols;
    for (std::size_t c = 0; c < colCount; ++c)
        if (sheet_.MetaIs(static_cast<int>(c), MetaRow::Function, "Display"))
            resultCols.push_back(static_cast<int>(c));
    if (const int errorCol = sheet_.ErrorCol(); errorCol >= 0) resultCols.push_back(errorCol);
    if (cut) {
        for (std::size_t i = 0; i < rowWritten.size(); ++i) {
            if (rowWritten[i] == 0) continue;
            const int row = firstRow + static_cast<int>(i);
            for (int col : resultCols)
                if (!flex.IsBlank(row, col)) sheet_.ClearCell(row, col);
            bool holdsEntries = false;
            for (std::size_t c = 0; c < colCount && !holdsEntries; ++c)
                holdsEntries = entry[c] != 0 && !flex.IsBlank(row, static_cast<int>(c));
            if (!holdsEntries)
                for (int col : {formatCol, nickCol, mergeCol})
                    if (col >= 0 && !flex.IsBlank(row, col)) sheet_.ClearCell(row, col);
        }
    }

    // Each touched row computed once, the whole run of rows in one go.
    if (anyEntry || cut) {
        sheet_.FindFormats(firstRow, lastRow);
        effectsize::ComputeContext context{options_, prompter_};
        int first = firstRow;
        int last = lastRow;
        effectsize::Compute(sheet_, first, last, context);
        for (std::size_t c = 0; c < colCount; ++c)
            if (entry[c] != 0) touchedCols.insert(static_cast<int>(c));
        touchedCols.insert(resultCols.begin(), resultCols.end());
        for (int col : {formatCol, nickCol, mergeCol})
            if (col >= 0) touchedCols.insert(col);
    }
    if (flex.Revision() == revision) return false;
    if (movedRow >= 0)
        prompter_.Message({kFormatChangedTitle,
                           {"The data entry format for this row has been changed to " +
                            flex.Text(movedRow, formatCol) + "   "},
                           ports::Icon::Information});

    // A cut at the end of the rows in use may leave fewer of them.
    if (!cut) {
        dataRows_ = std::max(dataRows_, lastRow - sheet::FixedRowCount + 1);
    } else if (lastRow >= sheet::FixedRowCount + dataRows_ - 1) {
        const int last = sheet_.GetLastRow();
        dataRows_ = last == sheet::FixedRowCount && sheet_.isRowEmpty(last)
                        ? 0
                        : last - sheet::FixedRowCount + 1;
    }
    SetDirty(true);
    if (lastRow >= oldRows) {
        Notify({ChangeKind::Structure, {}});
        return true;
    }
    for (const CellRange& run : ColumnRuns(firstRow, lastRow, touchedCols))
        ranges.push_back(run);
    NotifyCells(std::move(ranges));
    return true;
}

}  // namespace synthara::shell
