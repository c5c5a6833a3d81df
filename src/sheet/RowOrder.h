#pragma once
// Putting data rows in a new order: the orders the sheet's commands sort by,
// and moving whole rows, with everything a row carries, into that order.
#include <string_view>
#include <vector>

#include "sheet/Grid.h"
#include "sheet/Sheet.h"

namespace synthara::sheet {

// A cell reduced to what sorting needs, made once per cell rather than at
// every comparison (typed text would otherwise be parsed again each time).
// The text is a view into the cell: the cell must outlive the key.
struct SortKey {
    enum Rank : unsigned char { Empty, Number, Text };
    Rank rank = Empty;
    double number = 0;
    std::string_view text;
};
SortKey MakeSortKey(const Cell& cell);

// The grid's own ascending order: empty cells first, then numbers by value
// (typed text that reads as a number counts as one), then text without
// regard to case. Negative, zero or positive.
int CompareSortKeys(const SortKey& a, const SortKey& b);
// Text order without regard to case.
int CompareFolded(std::string_view a, std::string_view b);

// Puts rows first..first+order.size()-1 in the order given: the row at
// first + order[i] ends at first + i.
void ReorderRows(Grid& grid, int first, const std::vector<int>& order);

// Moves every empty data row (isRowEmpty) below the rows with data, keeping
// the order of both.
void MoveEmptyRowsToEnd(Sheet& sheet);

}  // namespace synthara::sheet
