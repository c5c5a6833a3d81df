#pragma once
// The proof that the rows are usable before anything leaves the sheet for
// analysis, and the command "Check data".
#include "ports/Prompter.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

// True when the sheet passed. The first failure ends the check with a box
// that says what is wrong; rows without a study name are painted red. On the
// way, empty identifying cells and empty cells of categorical moderators take
// the word "Blank", which the analysis groups by from then on.
bool CheckData(Sheet& sheet);

// The command "Check data": CheckData, and on success a box that says so.
bool CheckDataCommand(Sheet& sheet);

// Clears the background of the data rows of every identifying column.
void RemoveRedBackColor(Sheet& sheet);

// The box that asks for a study-name column, where a sheet without one is
// refused.
ports::Box StudyColumnMissing();

}  // namespace synthara::sheet
