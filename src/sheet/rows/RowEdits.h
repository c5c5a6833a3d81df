#pragma once
// Whole data rows of the sheet: deleting, inserting, copying and dragging
// them, each row taking everything it carries (its system cells, colours and
// greys) with it, and the row numbers written again afterwards. Every refusal
// is a box that leaves the sheet as it was.
#include <string>

namespace synthara::sheet {

class Sheet;

// The title of the refusals of "Delete row" and "Delete column".
inline constexpr const char* CannotDeleteTitle = "  Cannot delete columns";

// Asks whether to delete `count` rows or columns (`noun` "row" or
// "column"): "Ok to delete one row?" under " Confirm delete row", and so on.
bool ConfirmDelete(Sheet& sheet, int count, const std::string& noun);

// The last row that holds anything other than its row numbers (system cells
// included); the first data row when none does.
int LastRowInUse(const Sheet& sheet);

// "Delete row": rows first..last, after the refusals (the title row, hidden
// rows) and the question. False when nothing was deleted. Blank rows take
// their place at the end, so the sheet keeps its number of rows.
bool DeleteRows(Sheet& sheet, int first, int last);

// "Insert row": `count` blank rows above row `first`. False, changing
// nothing, for a row that is not a data row.
bool InsertRows(Sheet& sheet, int first, int count);

// "Copy row": a copy of row `row` inserted under it. Gives the copy's row,
// or -1 after the box that asks for a row.
int CopyRow(Sheet& sheet, int row);

// The user drags row `from` to row `to`. The rows are put in their new order
// by a key of five digits in the TempSeq column. A row may not land between
// two rows of another study: a box says so and nothing moves.
bool MoveRow(Sheet& sheet, int from, int to);

}  // namespace synthara::sheet
