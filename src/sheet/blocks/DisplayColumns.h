#pragma once
// What the display columns show and where they stand.
namespace synthara::sheet {

class Sheet;

// Shows the display columns that the index display mode and the StdErr and
// Variance switches call for, and hides the rest.
void ShowIndices(Sheet& sheet);

// Makes the index of display column `col` the primary one. True when it did,
// which changes the project: the caller marks it dirty.
bool SetPrimaryIndex(Sheet& sheet, int col);

// Paints the data rows of the display columns in the display colour.
void ColorDisplayCols(Sheet& sheet);

// Blanks every display cell of `row`.
void BlankDisplayCols(Sheet& sheet, int row);

// Brings the columns of index `index` (1 to 100) together right after the
// last data-entry column: Point, StdErr, Variance, Valid, then Formula.
void RepositionDisplayCols(Sheet& sheet, int index);

// Brings all display columns, in their present order, right after the last
// data-entry column (or the identifying columns when there is no block).
void GatherDisplayCols(Sheet& sheet);

}  // namespace synthara::sheet
