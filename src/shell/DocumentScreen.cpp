// What the screen reads of the open project: cells as they are shown, which
// cells take typing, and the trail under the grid.
#include <string>

#include "sheet/grid/MetaRows.h"
#include "shell/CellDisplay.h"
#include "shell/Document.h"

namespace synthara::shell {

namespace {

using sheet::MetaRow;

// Columns the program fills itself; nobody types into them.
bool IsComputedOrSystem(const sheet::Sheet& sheet, int col) {
    for (const char* function : {"Display", "Data Format", "NickName", "MergeType", "EntrySeq",
                                 "Temp Sequence", "Settings"})
        if (sheet.MetaIs(col, MetaRow::Function, function)) return true;
    return col == sheet.ErrorCol();
}

}  // namespace

bool Document::RowHasOtherEntries(int row, int col) const {
    const sheet::Grid& flex = sheet_.Flex();
    for (int c = flex.FixedCols(); c < flex.Cols(); ++c)
        if (c != col && !flex.IsBlank(row, c) && sheet_.MetaIs(c, MetaRow::Function, "Data Entry"))
            return true;
    return false;
}

bool Document::ColumnTakesTyping(int col) const {
    const sheet::Grid& flex = sheet_.Flex();
    return col >= flex.FixedCols() && col < flex.Cols() && !IsComputedOrSystem(sheet_, col);
}

bool Document::CellEditable(int row, int col) const {
    const sheet::Grid& flex = sheet_.Flex();
    if (row < flex.FixedRows() || row >= flex.Rows() || !ColumnTakesTyping(col)) return false;
    // Another block's cell is grey while the row holds its own entries; a
    // row with none may move to this block.
    return flex.CellShade(row, col) == 0 || !RowHasOtherEntries(row, -1);
}

std::string Document::DisplayText(int row, int col) const {
    const sheet::Grid& flex = sheet_.Flex();
    const sheet::Cell& cell = flex.At(row, col);
    if (cell.IsNumber() && row >= flex.FixedRows())
        return FormatCellNumber(cell.Number(), flex.Col(col).numberFormat);
    std::string text = CellText(row, col);
    // A number typed into the user's own column shows the decimals the user
    // gave the column; with "Auto" it shows as typed.
    double value = 0;
    const std::string decs = cell.IsText() && row >= flex.FixedRows()
                                 ? sheet_.Meta(col, MetaRow::NumDecs)
                                 : std::string();
    if (decs.size() == 1 && decs[0] >= '0' && decs[0] <= '9' &&
        KindOfColumn(sheet_, col) == ColumnKind::User &&
        sheet::ParseTypedNumber(text, sheet_.Separators, value)) {
        std::string shown = FormatCellNumber(value, flex.Col(col).numberFormat);
        if (const std::size_t point = shown.find('.'); point != std::string::npos)
            shown.replace(point, 1, sheet_.Separators.decimal);
        return shown;
    }
    return text;
}

int Document::TrailIndex(int col) const {
    const sheet::Grid& flex = sheet_.Flex();
    if (sheet_.MetaIs(col, MetaRow::Function, "Display")) {
        const int index = sheet::IndexNumber(sheet_.Meta(col, MetaRow::IndexName));
        if (index > 0) return index;
    }
    for (int c = flex.FixedCols(); c < flex.Cols(); ++c)
        if (sheet_.MetaIs(c, MetaRow::Function, "Display") &&
            sheet_.MetaIs(c, MetaRow::DisplayClass, "Primary"))
            return sheet::IndexNumber(sheet_.Meta(c, MetaRow::IndexName));
    return 0;
}

std::string Document::RowTrail(int row, int col) const {
    const sheet::Grid& flex = sheet_.Flex();
    const int index = TrailIndex(col);
    if (row < flex.FixedRows() || row >= flex.Rows() || index <= 0) return {};
    const int formula =
        sheet_.DisplayColTable()[static_cast<std::size_t>(index)][sheet::AttrFormula];
    return formula > 0 ? CellText(row, formula) : std::string();
}

}  // namespace synthara::shell
