#include "sheet/rows/RowOrder.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>

namespace synthara::sheet {

void ReorderRows(Grid& grid, int first, const std::vector<int>& order) {
    const int count = static_cast<int>(order.size());
    if (count < 2 || first < 0 || first + count > grid.Rows()) return;
    bool identity = true;
    for (int i = 0; i < count && identity; ++i)
        identity = order[static_cast<std::size_t>(i)] == i;
    if (identity) return;
    // The grid sorts rows with everything they carry; a scratch column of
    // unique ranks makes its stable sort produce exactly this order.
    const int scratch = grid.Cols();
    grid.InsertColumn(scratch);
    for (int i = 0; i < count; ++i)
        grid.SetNumber(first + order[static_cast<std::size_t>(i)], scratch, static_cast<double>(i));
    grid.SortRows(first, first + count - 1, scratch, scratch);
    grid.RemoveColumn(scratch);
}

void Sheet::ReorderRows(int first, const std::vector<int>& order) {
    sheet::ReorderRows(flex_, first, order);
}

void MoveEmptyRowsToEnd(Sheet& sheet) {
    const int first = FixedRowCount;
    const int count = sheet.Flex().Rows() - first;
    if (count < 2) return;
    std::vector<int> order;
    std::vector<int> empty;
    order.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        (sheet.isRowEmpty(first + i) ? empty : order).push_back(i);
    order.insert(order.end(), empty.begin(), empty.end());
    sheet.ReorderRows(first, order);
}

}  // namespace synthara::sheet
