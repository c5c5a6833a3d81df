#pragma once
// Putting data rows in a new order: the orders the sheet's commands sort by,
// and moving whole rows, with everything a row carries, into that order.
#include <string_view>
#include <vector>

#include "sheet/grid/Grid.h"
#include "sheet/grid/Sheet.h"
#include "sheet/grid/SortKey.h"

namespace synthara::sheet {

// Puts rows first..first+order.size()-1 in the order given: the row at
// first + order[i] ends at first + i.
void ReorderRows(Grid& grid, int first, const std::vector<int>& order);

// Moves every empty data row (isRowEmpty) below the rows with data, keeping
// the order of both.
void MoveEmptyRowsToEnd(Sheet& sheet);

}  // namespace synthara::sheet
