#include "sheet/grid/Highlights.h"

#include <algorithm>
#include <utility>

#include "sheet/grid/MetaRows.h"
#include "sheet/grid/Sheet.h"
#include "sheet/grid/SheetColors.h"

namespace synthara::sheet {

namespace {

// Paints one cell, or takes the highlight off it; a red mark of a fault
// keeps showing.
void Highlight(Sheet& sheet, int row, int col, bool on) {
    const BackColor color = sheet.Flex().CellBackColor(row, col);
    if (on && color != kRed)
        sheet.SetCellBackColor(row, col, kHighlightBackColor);
    else if (!on && color == kHighlightBackColor)
        sheet.SetCellBackColor(row, col, PlainBackColor(sheet, col));
}

// Puts first..last in order and within 0..count-1; false when nothing is left.
bool Clamp(int& first, int& last, int low, int count) {
    if (first > last) std::swap(first, last);
    first = std::max(first, low);
    last = std::min(last, count - 1);
    return first <= last;
}

}  // namespace

BackColor PlainBackColor(const Sheet& sheet, int col) {
    return sheet.MetaIs(col, MetaRow::Function, "Display") ? kDisplayBackColor : kNoBackColor;
}

void HighlightColumns(Sheet& sheet, int first, int last, bool on) {
    const Grid& flex = sheet.Flex();
    if (!Clamp(first, last, 0, flex.Cols())) return;
    for (int c = first; c <= last; ++c)
        for (int r = flex.FixedRows(); r < flex.Rows(); ++r)
            Highlight(sheet, r, c, on);
}

void HighlightRows(Sheet& sheet, int first, int last, bool on) {
    const Grid& flex = sheet.Flex();
    if (!Clamp(first, last, flex.FixedRows(), flex.Rows())) return;
    for (int r = first; r <= last; ++r)
        for (int c = flex.FixedCols(); c < flex.Cols(); ++c)
            Highlight(sheet, r, c, on);
}

}  // namespace synthara::sheet
