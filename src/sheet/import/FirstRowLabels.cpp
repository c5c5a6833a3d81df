#include "sheet/import/FirstRowLabels.h"

#include <numeric>
#include <vector>

namespace synthara::sheet {

namespace {

bool MayRename(const Sheet& sheet, int col) {
    return col >= sheet.Flex().FixedCols() && !sheet.MetaIs(col, MetaRow::Function, "Display");
}

}  // namespace

bool UseFirstRowAsLabels(Sheet& sheet) {
    const Grid& grid = sheet.Flex();
    const int row = FixedRowCount;
    bool any = false;
    for (int c = 0; c < grid.Cols() && row < grid.Rows() && !any; ++c)
        any = MayRename(sheet, c) && !grid.IsBlank(row, c);
    if (!any) {
        sheet.Prompts().Message({" Use first row as labels",
                                 {"The first row of the sheet is empty, so there are no labels "
                                  "to take from it.       "},
                                 ports::Icon::Information});
        return false;
    }
    for (int c = 0; c < grid.Cols(); ++c) {
        if (!MayRename(sheet, c) || grid.IsBlank(row, c)) continue;
        sheet.SetMeta(c, MetaRow::ColumnHeader, grid.Text(row, c));
        sheet.SetMeta(c, MetaRow::Renamed, "Manual");
    }
    for (int c = 0; c < grid.Cols(); ++c) {
        sheet.ClearCell(row, c);
        sheet.SetCellBackColor(row, c, kNoBackColor);
        sheet.SetCellShade(row, c, 0);
    }
    // The emptied row goes to the end; the rows below move up one.
    std::vector<int> order(static_cast<std::size_t>(grid.Rows() - row));
    std::iota(order.begin(), order.end(), 1);
    order.back() = 0;
    sheet.ReorderRows(row, order);
    sheet.AddRowNumbers();
    return true;
}

}  // namespace synthara::sheet
