#include "sheet/blocks/CellBorders.h"

#include <string>
#include <vector>

#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

void AddCellBorders(Sheet& sheet) {
    std::vector<CellBorder>& borders = sheet.View.Borders;
    borders.clear();
    const Grid& flex = sheet.Flex();
    const int lastRow = flex.Rows() - 1;
    // Hidden columns neither open nor close an outline: the screen draws
    // around what it shows.
    // The outline still open: the last one, while the run goes on.
    bool open = false;
    for (int c = flex.FixedCols(); c < flex.Cols(); ++c) {
        if (flex.Col(c).hidden) continue;
        CellBorder border;
        border.firstCol = border.lastCol = c;
        border.lastRow = lastRow;
        if (sheet.MetaIs(c, MetaRow::Function, "Data Entry")) {
            border.kind = CellBorder::Kind::Block;
            border.blockName = sheet.Meta(c, MetaRow::BlockName);
        } else if (sheet.MetaIs(c, MetaRow::Function, "Populations")) {
            border.kind = CellBorder::Kind::Populations;
        } else {
            open = false;
            continue;
        }
        if (open && borders.back().kind == border.kind &&
            borders.back().blockName == border.blockName) {
            borders.back().lastCol = c;
            continue;
        }
        borders.push_back(std::move(border));
        open = true;
    }
}

}  // namespace synthara::sheet
