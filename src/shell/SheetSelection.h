#pragma once
// What the user has selected on the sheet, in the sheet's own rows and
// columns: the rectangle around it, and whether it is made of whole rows or
// whole columns (their headers were clicked).
#include "shell/SheetChange.h"

namespace synthara::shell {

struct SheetSelection {
    CellRange cells;
    bool wholeRows = false;
    bool wholeColumns = false;

    int Rows() const { return cells.lastRow - cells.firstRow + 1; }
    int Cols() const { return cells.lastCol - cells.firstCol + 1; }
    bool OneCell() const { return Rows() == 1 && Cols() == 1; }
};

}  // namespace synthara::shell
