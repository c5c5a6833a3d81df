#pragma once
// The cells the user selected on the sheet, in sheet rows and columns.
#include "shell/SheetChange.h"

namespace synthara::shell {

struct SheetSelection {
    CellRange cells;
    // Whole rows (their headers were clicked) or whole columns.
    bool wholeRows = false;
    bool wholeColumns = false;
};

}  // namespace synthara::shell
