#pragma once
// The outlines around each block and around the identifying columns.
namespace synthara::sheet {

class Sheet;

// Rebuilds sheet.View.Borders: one outline per run of visible adjacent
// columns of one block, and one around the visible identifying columns.
void AddCellBorders(Sheet& sheet);

}  // namespace synthara::sheet
