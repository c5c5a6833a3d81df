#pragma once
// What a save records in the sheet and every load rebuilds: the widths, the
// fixed rows and their looks, and the computation's numbers kept in the
// Settings column.
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

// The computation's four numbers kept in the Settings column (rows 80 to 83);
// the caller hands them on to the computation's options.
struct StoredNumbers {
    double ImputedR = 0.5;
    double FudgeFactor = 1.1;
    int PoolVarianceMethod = 1;
    int GVarianceMethod = 1;
};
// A cell that isn't a number leaves its default.
StoredNumbers ReadStoredNumbers(const Sheet& sheet);
// Keeps the four numbers in the Settings column, where a save takes them.
void WriteStoredNumbers(Sheet& sheet, const StoredNumbers& numbers);

// Records each column's width into SavedWidth, just before the grid is written.
void PreSave(Sheet& sheet);
// Rebuilds what the file doesn't hold after any load: fixed rows, hidden
// metadata rows, default widths and heights, the saved widths, the grey of
// other blocks' entry cells, and the titles from the project's words.
void RestoreFormat(Sheet& sheet);

}  // namespace synthara::sheet
