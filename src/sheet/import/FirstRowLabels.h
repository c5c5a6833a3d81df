#pragma once
// "Use first row as labels" on the open sheet: the texts of the first data row
// become the titles of their columns, and the row goes.
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

// Each column the user may rename (the user's own and the data-entry columns;
// not the system or display columns) whose cell in the first data row holds
// text takes that text as its title, marked as the user's own ("Manual").
// The row is then taken out and the rows below move up. With the first row
// empty nothing changes and a box says so; false then.
bool UseFirstRowAsLabels(Sheet& sheet);

}  // namespace synthara::sheet
