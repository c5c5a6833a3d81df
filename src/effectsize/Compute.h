#pragma once
// Row computation: reads a row's entries by role, runs the format's
// procedure, and writes every index it yields into the display columns.
#include <array>
#include <string_view>

#include "effectsize/WorkingSet.h"
#include "sheet/grid/Sheet.h"

namespace synthara::effectsize {

// Computes rows firstRow..lastRow. Zero bounds are replaced, visibly to the
// caller: firstRow by the first data row, lastRow by the grid's last row.
void Compute(sheet::Sheet& sheet, int& firstRow, int& lastRow, ComputeContext& context);

// Runs the format's procedure on a prepared working set, then leaves no index
// valid whose numbers are not all finite. nullptr computes nothing.
void RunProcedure(const sheet::FormatDef* format, WorkingSet& ws, ComputeContext& context);

// RunProcedure for the format of that long name (legacy names included).
void Dispatch(std::string_view format, WorkingSet& ws, ComputeContext& context);

// Reads a row's entries by role into `ws` from the role columns (-1: none);
// true when at least one holds a number. Typed text is read with the
// separators of the user's locale.
bool ReadEntries(const sheet::Grid& flex, const sheet::NumberSeparators& separators, int row,
                 const std::array<int, MaxRoles>& roleCol, WorkingSet& ws);

// True when rows of `format` (legacy names included) are computed; rows of
// a name the program does not know are read and kept, and compute nothing.
bool ComputesFormat(std::string_view format);

// Gives a procedure its four working cells from the 3-by-3 table `cells`
// (1-based: cells[1][1] is A). With addFudge and a zero product, 0.5 is added
// to all four and `added` is set. `paired` changes nothing.
using Table2x2 = std::array<std::array<double, 4>, 4>;
void RestoreVals(double& A, double& B, double& C, double& D, const Table2x2& cells, bool addFudge,
                 bool& added, bool paired);

}  // namespace synthara::effectsize
