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

void SetDecs(Sheet& sheet) {
    const Grid& flex = sheet.Flex();
    for (int c = flex.FixedCols(); c < flex.Cols(); ++c) {
        const std::string decs = sheet.Meta(c, MetaRow::NumDecs);
        if (sheet.MetaIs(c, MetaRow::DataType, "Integer"))
            sheet.SetColNumberFormat(c, DecimalsFormat(0));
        else if (decs.size() == 1 && decs[0] >= '0' && decs[0] <= '9')
            sheet.SetColNumberFormat(c, DecimalsFormat(decs[0] - '0'));
        else
            sheet.SetColNumberFormat(c, DecimalsFormat(sheet.Decimals));
        sheet.SetColAlignment(c, ColumnAlignment(sheet, c));
    }
}

}  // namespace synthara::sheet
