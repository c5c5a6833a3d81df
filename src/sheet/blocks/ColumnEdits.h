#pragma once
// Copying and deleting whole columns of the sheet, with the refusals that
// keep the program's own columns (entry blocks, computed results, the format
// names, the row numbers and the system columns) whole.
namespace synthara::sheet {

class Sheet;

// "Copy column": a copy of column `col` (-1 when none is selected), its cells
// and record, titled "Copy of " and the old title. It stands right of the
// original; a copy of an identifying column is an ordinary column of data,
// right of the identifying columns. Gives the copy's column, or -1 after a
// box that says why not.
int CopyColumn(Sheet& sheet, int col);

// "Delete column": columns first..last, after the refusals and the question.
// False when nothing was deleted.
bool DeleteColumns(Sheet& sheet, int first, int last);

}  // namespace synthara::sheet
