#include "sheet/grid/NumberFormats.h"

#include <string>

#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

Alignment ColumnAlignment(const Sheet& sheet, int col) {
    if (sheet.MetaIs(col, MetaRow::Align, "Left")) return Alignment::Left;
    if (sheet.MetaIs(col, MetaRow::Align, "Center")) return Alignment::Center;
    if (sheet.MetaIs(col, MetaRow::Align, "Right")) return Alignment::Right;
    return Alignment::General;
}

std::string DecimalsFormat(int decimals) {
    if (decimals == 0) return "0";
    if (decimals >= 1 && decimals <= 9)
        return "0." + std::string(static_cast<std::size_t>(decimals), '0');
    return "0.000";
}

std::string ColumnNumberFormat(const Sheet& sheet, int col) {
    if (sheet.MetaIs(col, MetaRow::DataType, "Integer")) return DecimalsFormat(0);
    const std::string decs = sheet.Meta(col, MetaRow::NumDecs);
    if (decs.size() == 1 && decs[0] >= '0' && decs[0] <= '9') return DecimalsFormat(decs[0] - '0');
    return DecimalsFormat(sheet.Decimals);
}

void SetDecs(Sheet& sheet) {
    const Grid& flex = sheet.Flex();
    for (int c = flex.FixedCols(); c < flex.Cols(); ++c) {
        sheet.SetColNumberFormat(c, ColumnNumberFormat(sheet, c));
        sheet.SetColAlignment(c, ColumnAlignment(sheet, c));
    }
}

}  // namespace synthara::sheet
