#pragma once
// How each column shows its numbers: the number format and the alignment
// that its metadata asks for.
#include <string>

#include "sheet/grid/Grid.h"

namespace synthara::sheet {

class Sheet;

// The format with `decimals` digits after the point: "0", "0.0", up to
// "0.000000000" for 9; "0.000" for any other count.
std::string DecimalsFormat(int decimals);

// The alignment the column's Align record asks for: "Left", "Center" or
// "Right"; anything else is the generic alignment.
Alignment ColumnAlignment(const Sheet& sheet, int col);

// The number format column `col` shows its numbers in, by the rules of SetDecs.
std::string ColumnNumberFormat(const Sheet& sheet, int col);

// Sets the number format and alignment of every column from the fixed-column
// count on. An "Integer" column shows whole numbers; otherwise NumDecs "Auto"
// (or anything but a digit) takes the program-wide decimals, and a digit its
// own count. Align "Left", "Center" or "Right" aligns so; "Auto" leaves the
// generic alignment.
void SetDecs(Sheet& sheet);

}  // namespace synthara::sheet
