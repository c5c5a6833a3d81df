#include "sheet/blocks/DisplayColumns.h"

#include <string>
#include <string_view>
#include <vector>

#include "sheet/blocks/ColumnMoves.h"
#include "sheet/grid/Sheet.h"
#include "sheet/grid/SheetColors.h"

namespace synthara::sheet {

namespace {

bool IsDisplay(const Sheet& sheet, int col) {
    return sheet.MetaIs(col, MetaRow::Function, "Display");
}

}  // namespace

void ShowIndices(Sheet& sheet) {
    // The two DisplayClass values that pass, by index display mode.
    struct Tests {
        std::string_view first;
        std::string_view second;
    };
    static constexpr Tests kTests[] = {{"None", "None"}, {"Primary", "None"}, {"Primary", "Show"}};
    const int mode = sheet.View.IndexDisplay;
    const Tests tests = kTests[mode >= 0 && mode <= 2 ? mode : ShowSelectedIndices];

    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (!IsDisplay(sheet, c)) continue;
        bool shown = false;
        if (sheet.MetaIs(c, MetaRow::DisplayClass, tests.first) ||
            sheet.MetaIs(c, MetaRow::DisplayClass, tests.second)) {
            if (sheet.MetaIs(c, MetaRow::Attribute, AttrNames[AttrPoint]))
                shown = true;
            else if (sheet.MetaIs(c, MetaRow::Attribute, AttrNames[AttrStdErr]))
                shown = sheet.View.ShowStdErr;
            else if (sheet.MetaIs(c, MetaRow::Attribute, AttrNames[AttrVariance]))
                shown = sheet.View.ShowVariance;
        }
        sheet.SetColHidden(c, !shown);
        sheet.SetMeta(c, MetaRow::Hidden, shown ? "Show" : "Hide");
    }
    sheet.FindCols();
    sheet.AddLetters();
}

bool SetPrimaryIndex(Sheet& sheet, int col) {
    if (col < 0 || col >= sheet.Flex().Cols() || !IsDisplay(sheet, col)) return false;
    const std::string index = sheet.Meta(col, MetaRow::IndexName);
    if (index.empty()) return false;
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (!IsDisplay(sheet, c)) continue;
        if (sheet.MetaIs(c, MetaRow::DisplayClass, "Primary"))
            sheet.SetMeta(c, MetaRow::DisplayClass, "Show");
        if (sheet.MetaIs(c, MetaRow::IndexName, index))
            sheet.SetMeta(c, MetaRow::DisplayClass, "Primary");
    }
    sheet.View.PrimaryIndex = index;
    ShowIndices(sheet);
    return true;
}

void ColorDisplayCols(Sheet& sheet) {
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (IsDisplay(sheet, c)) sheet.SetDataBackColor(c, kDisplayBackColor);
    }
}

void BlankDisplayCols(Sheet& sheet, int row) {
    if (row < FixedRowCount || row >= sheet.Flex().Rows()) return;
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (IsDisplay(sheet, c)) sheet.ClearCell(row, c);
    }
}

void RepositionDisplayCols(Sheet& sheet, int index) {
    if (index < 1 || index > IndexCount) return;
    sheet.FindCols();
    std::vector<int> cols;
    for (int a = AttrPoint; a <= AttrFormula; ++a) {
        const int c =
            sheet.DisplayColTable()[static_cast<std::size_t>(index)][static_cast<std::size_t>(a)];
        if (c > 0) cols.push_back(c);
    }
    if (cols.empty()) return;
    sheet.PlaceColumns(cols, EndOfEntryCols(sheet));
    sheet.FindCols();
}

void GatherDisplayCols(Sheet& sheet) {
    std::vector<int> cols;
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (IsDisplay(sheet, c)) cols.push_back(c);
    }
    if (cols.empty()) return;
    sheet.PlaceColumns(cols, EndOfEntryCols(sheet));
    sheet.FindCols();
}

}  // namespace synthara::sheet
