// Editing in the grid: what committing a typed cell does to the sheet, what
// the edit changed (so it can be undone), and moving columns and picking
// block tabs from the screen.
#include <algorithm>
#include <limits>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "effectsize/Compute.h"
#include "sheet/blocks/BlockTable.h"
#include "sheet/blocks/CellBorders.h"
#include "sheet/blocks/ColumnMoves.h"
#include "sheet/grid/MetaRows.h"
#include "sheet/grid/NumberFormats.h"
#include "sheet/rows/StudyRows.h"
#include "shell/Document.h"

namespace synthara::shell {

namespace {

using sheet::MetaRow;

bool IsEntry(const sheet::Sheet& sheet, int col) {
    return sheet.MetaIs(col, MetaRow::Function, "Data Entry");
}

constexpr const char* kFormatChangedTitle = " Data entry format";

}  // namespace

std::vector<CellRange> Document::ColumnRuns(int firstRow, int lastRow, const std::set<int>& cols) {
    std::vector<CellRange> runs;
    for (int col : cols) {
        if (!runs.empty() && runs.back().lastCol + 1 == col)
            runs.back().lastCol = col;
        else
            runs.push_back({firstRow, lastRow, col, col});
    }
    return runs;
}

void Document::WriteRecorded(int row, int col, const std::string& text, EditDelta& delta) {
    const sheet::Grid& flex = sheet_.Flex();
    if (flex.TextIs(row, col, text)) return;
    delta.cells.push_back({row, col, flex.Text(row, col), text});
    if (text.empty())
        sheet_.ClearCell(row, col);
    else
        sheet_.SetText(row, col, text);
    if (row == MetaRow::Align) sheet_.SetColAlignment(col, sheet::ColumnAlignment(sheet_, col));
}

std::vector<CellRange> Document::RowRanges(int row, int col, bool computed) const {
    const sheet::Grid& flex = sheet_.Flex();
    // What the computation of the row may write: its system cells, its entry
    // cells (red marks and greys) and every display column.
    std::set<int> touched{col};
    if (computed) {
        for (int c = flex.FixedCols(); c < flex.Cols(); ++c)
            if (IsEntry(sheet_, c) || sheet_.MetaIs(c, MetaRow::Function, "Display"))
                touched.insert(c);
        for (int c :
             {sheet_.FormatCol(), sheet_.MergeTypeCol(), sheet_.NickNameCol(), sheet_.ErrorCol()})
            if (c >= 0) touched.insert(c);
    }
    std::vector<CellRange> ranges{{row, row, col, col}};
    for (const CellRange& run : ColumnRuns(row, row, touched))
        if (!(run.firstCol == col && run.lastCol == col)) ranges.push_back(run);
    return ranges;
}

// The row holds nothing but the cell typed into another block: it takes
// that block's format, as a row without one would.
void Document::MoveRowToBlock(int row, int col, EditDelta& delta) {
    const int formatCol = sheet_.FormatCol();
    const int nickCol = sheet_.NickNameCol();
    if (formatCol < 0 || sheet_.Flex().IsBlank(row, formatCol)) return;
    if (nickCol >= 0 && sheet_.Flex().TextIs(row, nickCol, sheet_.Meta(col, MetaRow::BlockName)))
        return;
    if (RowHasOtherEntries(row, col)) return;
    const std::string format = sheet_.Meta(col, MetaRow::FormatName);
    WriteRecorded(row, formatCol, format, delta);
    if (nickCol >= 0) WriteRecorded(row, nickCol, sheet_.Meta(col, MetaRow::BlockName), delta);
    if (const int mergeCol = sheet_.MergeTypeCol(); mergeCol >= 0)
        WriteRecorded(row, mergeCol, std::to_string(sheet::MergeType(format)), delta);
    sheet_.GrayBlocks(row, row);
    prompter_.Message({kFormatChangedTitle,
                       {"The data entry format for this row has been changed to " + format + "   "},
                       ports::Icon::Information});
}

// A drop-down column offers the values it holds, in order of first appearance.
void Document::RefreshValueList(int col, EditDelta& delta) {
    const std::vector<std::string> values =
        *DistinctValues(sheet_, col, std::numeric_limits<std::size_t>::max());
    WriteRecorded(MetaRow::ValueList, col, JoinValueList(values), delta);
    WriteRecorded(MetaRow::Numvals, col, std::to_string(values.size()), delta);
}

void Document::FinishOne(const CellEdit& edit, EditDelta& delta, std::vector<CellRange>& ranges) {
    const sheet::Grid& flex = sheet_.Flex();
    const int row = edit.row;
    const int col = edit.col;
    if (row == MetaRow::ColumnHeader) {
        if (col < flex.FixedCols() || col >= flex.Cols() || flex.TextIs(row, col, edit.text))
            return;
        WriteRecorded(row, col, edit.text, delta);
        WriteRecorded(MetaRow::Renamed, col, "Manual", delta);
        ranges.push_back({row, row, col, col});
        return;
    }
    if (!CellEditable(row, col) || flex.TextIs(row, col, edit.text)) return;
    const std::size_t first = delta.cells.size();
    WriteRecorded(row, col, edit.text, delta);
    dataRows_ = std::max(dataRows_, row - sheet::FixedRowCount + 1);

    const bool entry = IsEntry(sheet_, col);
    if (!edit.text.empty()) {
        if (sheet_.MetaIs(col, MetaRow::Function, "Empty"))
            WriteRecorded(MetaRow::Function, col, "Unknown", delta);
        if (sheet_.MetaIs(col, MetaRow::DataType, "Not specified")) {
            WriteRecorded(MetaRow::DataType, col, "Categorical", delta);
            WriteRecorded(MetaRow::Align, col, "Left", delta);
        }
        if (entry) MoveRowToBlock(row, col, delta);
    }
    if (sheet_.MetaIs(col, MetaRow::DataType, "Drop down box")) RefreshValueList(col, delta);
    if (entry) {
        // A row without a format takes the block's; FindFormats writes the
        // three cells, which the delta records for the undo.
        const int formatCols[] = {sheet_.FormatCol(), sheet_.NickNameCol(), sheet_.MergeTypeCol()};
        std::string before[3];
        for (int i = 0; i < 3; ++i)
            before[i] = formatCols[i] >= 0 ? flex.Text(row, formatCols[i]) : std::string();
        sheet_.FindFormats(row, row);
        for (int i = 0; i < 3; ++i)
            if (formatCols[i] >= 0 && !flex.TextIs(row, formatCols[i], before[i]))
                delta.cells.push_back(
                    {row, formatCols[i], before[i], flex.Text(row, formatCols[i])});
        effectsize::ComputeContext context{options_, prompter_};
        int firstRow = row;
        int lastRow = row;
        effectsize::Compute(sheet_, firstRow, lastRow, context);
    }
    // The column's record, where steps above changed it.
    for (std::size_t i = first; i < delta.cells.size(); ++i)
        if (delta.cells[i].row < flex.FixedRows())
            ranges.push_back({delta.cells[i].row, delta.cells[i].row, col, col});
    for (const CellRange& range : RowRanges(row, col, entry))
        ranges.push_back(range);
}

EditDelta Document::FinishEdits(const std::vector<CellEdit>& edits) {
    EditDelta delta;
    std::vector<CellRange> ranges;
    for (const CellEdit& edit : edits)
        FinishOne(edit, delta, ranges);
    if (delta.Empty()) return delta;
    SetDirty(true);
    NotifyCells(std::move(ranges));
    return delta;
}

EditDelta Document::FinishEdit(int row, int col, std::string text) {
    return FinishEdits({{row, col, std::move(text)}});
}

void Document::ApplyDelta(const EditDelta& delta, DeltaSide side) {
    if (delta.Empty()) return;
    const sheet::Grid& flex = sheet_.Flex();
    const bool undo = side == DeltaSide::Before;
    std::vector<CellRange> ranges;
    // Data rows with the entry column first typed into on each, to compute.
    std::vector<std::pair<int, int>> rows;
    const auto write = [&](const CellDelta& cell) {
        const std::string& text = undo ? cell.before : cell.after;
        if (text.empty())
            sheet_.ClearCell(cell.row, cell.col);
        else
            sheet_.SetText(cell.row, cell.col, text);
        if (cell.row == MetaRow::Align)
            sheet_.SetColAlignment(cell.col, sheet::ColumnAlignment(sheet_, cell.col));
        if (cell.row < flex.FixedRows()) {
            ranges.push_back({cell.row, cell.row, cell.col, cell.col});
            return;
        }
        dataRows_ = std::max(dataRows_, cell.row - sheet::FixedRowCount + 1);
        const auto known = std::find_if(rows.begin(), rows.end(),
                                        [&](const auto& r) { return r.first == cell.row; });
        if (known == rows.end())
            rows.emplace_back(cell.row, cell.col);
        else if (!IsEntry(sheet_, known->second))
            known->second = cell.col;
    };
    // Undone in the reverse order, so a cell written twice ends as it began.
    if (undo)
        std::for_each(delta.cells.rbegin(), delta.cells.rend(), write);
    else
        std::for_each(delta.cells.begin(), delta.cells.end(), write);

    // Computing the rows again showed their boxes the first time.
    ports::SilentPrompter silent;
    effectsize::ComputeContext context{options_, silent};
    for (const auto& [row, col] : rows) {
        sheet_.GrayBlocks(row, row);
        const bool entry = IsEntry(sheet_, col);
        if (entry) {
            int firstRow = row;
            int lastRow = row;
            effectsize::Compute(sheet_, firstRow, lastRow, context);
        }
        for (const CellRange& range : RowRanges(row, col, entry))
            ranges.push_back(range);
    }
    SetDirty(true);
    NotifyCells(std::move(ranges));
}

bool Document::MoveColumn(int from, int to) {
    if (from == to || !sheet::CanMoveColumn(sheet_, from, to)) return false;
    sheet_.MoveColumn(from, to);
    // An entry column that landed among another block's goes back, with a box.
    if (!sheet::RepositionEntryCols(sheet_, from, to)) return false;
    sheet_.FindCols();
    sheet_.AddLetters();
    SetDirty(true);
    Notify({ChangeKind::Structure, {}});
    return true;
}

bool Document::SelectBlockTab(int tab) {
    sheet::BlockView& view = sheet_.View;
    if (tab < 0 || tab >= static_cast<int>(view.Tabs.size()) || tab == view.CurrentTab)
        return false;
    view.CurrentTab = tab;
    if (view.BlockDisplay == sheet::ShowCurrentBlock) {
        sheet::ShowBlocks(sheet_, view.CurrentBlock());
        Notify({ChangeKind::Structure, {}});
    }
    return true;
}

}  // namespace synthara::shell
