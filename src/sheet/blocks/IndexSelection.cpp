#include "sheet/blocks/IndexSelection.h"

#include <algorithm>

#include "sheet/blocks/CellBorders.h"
#include "sheet/blocks/DisplayColumns.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

namespace {

bool IsDisplay(const Sheet& sheet, int col) {
    return sheet.MetaIs(col, MetaRow::Function, "Display");
}

// Gives every display column of `index` the class `displayClass`.
void SetClassOfIndex(Sheet& sheet, std::string_view index, const char* displayClass) {
    for (int c = 0; c < sheet.Flex().Cols(); ++c)
        if (IsDisplay(sheet, c) && sheet.MetaIs(c, MetaRow::IndexName, index))
            sheet.SetMeta(c, MetaRow::DisplayClass, displayClass);
}

}  // namespace

IndexSelection InitializeIndexSelection(const Sheet& sheet) {
    IndexSelection selection;
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (!IsDisplay(sheet, c) || !sheet.MetaIs(c, MetaRow::Attribute, AttrNames[AttrPoint]))
            continue;
        const bool primary = sheet.MetaIs(c, MetaRow::DisplayClass, "Primary");
        const bool shown = primary || sheet.MetaIs(c, MetaRow::DisplayClass, "Show");
        selection.rows.push_back({sheet.Meta(c, MetaRow::IndexName), shown});
        if (primary) selection.primary = selection.rows.back().index;
    }
    selection.showStdErr = sheet.View.ShowStdErr;
    selection.showVariance = sheet.View.ShowVariance;
    selection.onlyPrimary = sheet.View.IndexDisplay == ShowPrimaryIndex;
    return selection;
}

bool SetIndexChecked(IndexSelection& selection, std::string_view index, bool checked,
                     ports::Prompter& prompter) {
    auto row = std::find_if(selection.rows.begin(), selection.rows.end(),
                            [&](const IndexSelection::Row& r) { return r.index == index; });
    if (row == selection.rows.end()) return false;
    if (!checked && index == selection.primary) {
        prompter.Message(ports::Box{"Effect size indices",
                                    {"Please change the primary index in the drop-down box",
                                     "Otherwise, this index will continue to display"},
                                    ports::Icon::Information});
        return false;
    }
    row->checked = checked;
    return true;
}

void ApplyIndexSelection(Sheet& sheet, const IndexSelection& selection) {
    for (int c = 0; c < sheet.Flex().Cols(); ++c)
        if (IsDisplay(sheet, c)) sheet.SetMeta(c, MetaRow::DisplayClass, "Hide");
    for (const IndexSelection::Row& row : selection.rows)
        if (row.checked) SetClassOfIndex(sheet, row.index, "Show");
    if (!selection.primary.empty()) {
        SetClassOfIndex(sheet, selection.primary, "Primary");
        sheet.View.PrimaryIndex = selection.primary;
    }
    sheet.View.ShowStdErr = selection.showStdErr;
    sheet.View.ShowVariance = selection.showVariance;
    sheet.View.IndexDisplay = selection.onlyPrimary ? ShowPrimaryIndex : ShowSelectedIndices;
    ShowIndices(sheet);
    AddCellBorders(sheet);
}

}  // namespace synthara::sheet
