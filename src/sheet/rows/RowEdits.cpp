#include "sheet/rows/RowEdits.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "sheet/files/Project.h"
#include "sheet/grid/Highlights.h"
#include "sheet/grid/MetaRows.h"
#include "sheet/grid/Sheet.h"
#include "sheet/rows/RowOrder.h"

namespace synthara::sheet {

namespace {

void Say(Sheet& sheet, const char* title, std::string line) {
    sheet.Prompts().Message({title, {std::move(line)}, ports::Icon::Information});
}

// The colour a blank cell of the column shows: the column's own colour
// (display columns, a highlighted column), else none.
BackColor BlankCellColor(const Sheet& sheet, int col) {
    const Column& column = sheet.Flex().Col(col);
    return column.dataBack != kNoBackColor ? column.dataBack : PlainBackColor(sheet, col);
}

// Empties a row as a row never written to would be: no cells, colours,
// greys, and shown.
void BlankRow(Sheet& sheet, int row) {
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        sheet.ClearCell(row, c);
        sheet.SetCellShade(row, c, 0);
        sheet.SetCellBackColor(row, c, BlankCellColor(sheet, c));
    }
    sheet.SetRowHidden(row, false);
}

// The key that puts a row at place `place` when the rows are sorted by TempSeq.
std::string SequenceKey(int place) {
    char key[16];
    std::snprintf(key, sizeof key, "%05d", place);
    return key;
}

// True when a row of study `moving` would stand between `above` and `below`,
// two rows of one other study.
bool SplitsAnotherStudy(const Sheet& sheet, int moving, int above, int below) {
    const int studyCol = sheet.GetCol(0, 1);
    if (studyCol < 0 || above < FixedRowCount || below >= sheet.Flex().Rows()) return false;
    const std::string study = sheet.Flex().Text(above, studyCol);
    return !study.empty() && sheet.Flex().TextIs(below, studyCol, study) &&
           !sheet.Flex().TextIs(moving, studyCol, study);
}

}  // namespace

bool ConfirmDelete(Sheet& sheet, int count, const std::string& noun) {
    const std::string blanks = "                   ";
    const ports::Box question =
        count == 1
            ? ports::Box{" Confirm delete " + noun,
                         {"Ok to delete one " + noun + "?" + blanks},
                         ports::Icon::Question}
            : ports::Box{" Confirm delete " + noun + "s",
                         {"Ok to delete " + std::to_string(count) + " " + noun + "s?" + blanks},
                         ports::Icon::Question};
    return sheet.Prompts().Ask(question, ports::Buttons::YesNo, ports::Answer::Yes) ==
           ports::Answer::Yes;
}

int LastRowInUse(const Sheet& sheet) {
    const Grid& flex = sheet.Flex();
    int last = FixedRowCount;
    // Column 0 and EntrySeq number every row; they say nothing of its use.
    for (int c = 1; c < flex.Cols(); ++c) {
        if (c == sheet.EntrySeqCol() || flex.DataRowsBlank(c)) continue;
        for (int r = flex.Rows() - 1; r > last; --r) {
            if (!flex.IsBlank(r, c)) {
                last = r;
                break;
            }
        }
    }
    return last;
}

bool DeleteRows(Sheet& sheet, int first, int last) {
    const Grid& flex = sheet.Flex();
    if (first > last) std::swap(first, last);
    last = std::min(last, flex.Rows() - 1);
    if (first < 0 || first > last) {
        Say(sheet, " No row selected", "Please select the rows to be deleted       ");
        return false;
    }
    if (first < FixedRowCount) {
        Say(sheet, CannotDeleteTitle, "The title row cannot be deleted    ");
        return false;
    }
    for (int r = first; r <= last; ++r) {
        if (flex.RowHidden(r)) {
            Say(sheet, CannotDeleteTitle,
                "The range of rows includes hidden rows which cannot be deleted    ");
            return false;
        }
    }
    const int count = last - first + 1;
    if (!ConfirmDelete(sheet, count, "row")) return false;

    // The rows below close up; the deleted ones go to the end of the rows in
    // use and are emptied there.
    const int end = std::max(LastRowInUse(sheet), last);
    std::vector<int> order;
    order.reserve(static_cast<std::size_t>(end - first + 1));
    for (int r = last + 1; r <= end; ++r)
        order.push_back(r - first);
    for (int r = first; r <= last; ++r)
        order.push_back(r - first);
    sheet.ReorderRows(first, order);
    for (int r = end - count + 1; r <= end; ++r)
        BlankRow(sheet, r);
    sheet.AddRowNumbers();
    return true;
}

bool InsertRows(Sheet& sheet, int first, int count) {
    if (first < FixedRowCount || first >= sheet.Flex().Rows() || count < 1) return false;
    // Blank rows are taken from below the rows in use, the sheet growing
    // when it has too few.
    const int end = std::max(LastRowInUse(sheet), first - 1) + count;
    if (end >= sheet.Flex().Rows()) sheet.SetRows(end + 1);
    std::vector<int> order;
    order.reserve(static_cast<std::size_t>(end - first + 1));
    for (int r = end - count + 1; r <= end; ++r) {
        BlankRow(sheet, r);
        order.push_back(r - first);
    }
    for (int r = first; r <= end - count; ++r)
        order.push_back(r - first);
    sheet.ReorderRows(first, order);
    sheet.AddRowNumbers();
    return true;
}

int CopyRow(Sheet& sheet, int row) {
    if (row < FixedRowCount || row >= sheet.Flex().Rows()) {
        Say(sheet, ProgramName, "Please select the row to be copied       ");
        return -1;
    }
    const int copy = row + 1;
    // The sheet always has a row below the last one in use to insert at.
    if (copy >= sheet.Flex().Rows()) sheet.SetRows(copy + 1);
    InsertRows(sheet, copy, 1);
    const Grid& flex = sheet.Flex();
    for (int c = 0; c < flex.Cols(); ++c) {
        if (c == 0 || c == sheet.EntrySeqCol()) continue;
        sheet.Set(copy, c, flex.At(row, c));
        sheet.SetCellBackColor(copy, c, flex.CellBackColor(row, c));
        sheet.SetCellShade(copy, c, flex.CellShade(row, c));
    }
    return copy;
}

bool MoveRow(Sheet& sheet, int from, int to) {
    const int rows = sheet.Flex().Rows();
    if (from == to || from < FixedRowCount || to < FixedRowCount || from >= rows || to >= rows)
        return false;
    // The neighbours the row would have at its new place.
    const int above = from < to ? to : to - 1;
    const int below = from < to ? to + 1 : to;
    if (SplitsAnotherStudy(sheet, from, above, below)) {
        Say(sheet, ProgramName, "A study cannot be moved into the middle of another study   ");
        return false;
    }
    const int low = std::min(from, to);
    const int high = std::max(from, to);
    std::vector<int> order;
    order.reserve(static_cast<std::size_t>(high - low + 1));
    for (int r = low; r <= high; ++r)
        if (r != from) order.push_back(r - low);
    order.insert(order.begin() + (to - low), from - low);

    const int tempCol = sheet.TempSeqCol();
    if (tempCol < 0) {
        sheet.ReorderRows(low, order);
    } else {
        for (std::size_t place = 0; place < order.size(); ++place)
            sheet.SetText(low + order[place], tempCol, SequenceKey(static_cast<int>(place)));
        sheet.SortRows(low, high, tempCol, tempCol);
    }
    sheet.AddRowNumbers();
    return true;
}

}  // namespace synthara::sheet
