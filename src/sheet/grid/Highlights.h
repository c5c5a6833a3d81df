#pragma once
// The user's highlights: whole columns or rows of data painted in a light
// colour, and taken off again, leaving the program's own colours (computed
// results, red marks of faults) as they were.
#include "sheet/grid/Grid.h"

namespace synthara::sheet {

class Sheet;

// The colour a column's data cells show without highlights: the display
// colour on display columns, else none.
BackColor PlainBackColor(const Sheet& sheet, int col);

// Paints (on) or clears the data rows of columns first..last.
void HighlightColumns(Sheet& sheet, int first, int last, bool on);
// Paints (on) or clears the cells of data rows first..last.
void HighlightRows(Sheet& sheet, int first, int last, bool on);

}  // namespace synthara::sheet
