#pragma once
// A cell reduced to what sorting needs, made once per cell rather than at
// every comparison (typed text would otherwise be parsed again each time).
#include <string_view>

#include "sheet/grid/Cell.h"

namespace synthara::sheet {

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
// Text order without regard to case (ASCII letters).
int CompareFolded(std::string_view a, std::string_view b);

}  // namespace synthara::sheet
