#include "shell/IndexSelection.h"

#include <algorithm>

#include "effectsize/WorkingSet.h"
#include "sheet/blocks/CellBorders.h"
#include "sheet/blocks/DisplayColumns.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::shell {

using sheet::MetaRow;

namespace {

bool IsDisplay(const sheet::Sheet& sheet, int col) {
    return sheet.MetaIs(col, MetaRow::Function, "Display");
}

}  // namespace

bool IsEffectSizeIndex(int index) {
    namespace Ix = effectsize::Ix;
    return (index >= 1 && index <= Ix::PetoOddsRatio) || index == Ix::Rate;
}

std::optional<ports::Box> IndexSelection::SetShown(std::size_t position, bool shown) {
    if (position >= indices.size()) return std::nullopt;
    IndexChoice& choice = indices[position];
    if (!shown && choice.name == primary)
        return ports::Box{"Effect size indices",
                          {"Please change the primary index in the drop-down box",
                           "Otherwise, this index will continue to display"},
                          ports::Icon::Information};
    choice.shown = shown;
    return std::nullopt;
}

void IndexSelection::SetPrimary(const std::string& name) {
    primary = name;
    for (IndexChoice& choice : indices)
        if (choice.name == name) choice.shown = true;
}

IndexSelection ReadIndexSelection(const sheet::Sheet& sheet) {
    IndexSelection selection;
    selection.showStdErr = sheet.View.ShowStdErr;
    selection.showVariance = sheet.View.ShowVariance;
    selection.mode = sheet.View.IndexDisplay == sheet::ShowPrimaryIndex
                         ? sheet::ShowPrimaryIndex
                         : sheet::ShowSelectedIndices;
    for (int col = 0; col < sheet.Flex().Cols(); ++col) {
        if (!IsDisplay(sheet, col) || !sheet.MetaIs(col, MetaRow::Attribute, "Point")) continue;
        const std::string name = sheet.Meta(col, MetaRow::IndexName);
        const std::string shownAs = sheet.Meta(col, MetaRow::DisplayClass);
        if (name.empty() || (shownAs == "Hide" && !IsEffectSizeIndex(sheet::IndexNumber(name))))
            continue;
        selection.indices.push_back({name, shownAs != "Hide"});
        if (shownAs == "Primary") selection.primary = name;
    }
    return selection;
}

void ApplyIndexSelection(sheet::Sheet& sheet, const IndexSelection& selection) {
    const auto classOf = [&](const std::string& name) -> const char* {
        if (name == selection.primary) return "Primary";
        const auto it = std::find_if(selection.indices.begin(), selection.indices.end(),
                                     [&](const IndexChoice& c) { return c.name == name; });
        return it != selection.indices.end() && it->shown ? "Show" : "Hide";
    };
    for (int col = 0; col < sheet.Flex().Cols(); ++col)
        if (IsDisplay(sheet, col))
            sheet.SetMeta(col, MetaRow::DisplayClass, classOf(sheet.Meta(col, MetaRow::IndexName)));
    if (!selection.primary.empty()) sheet.View.PrimaryIndex = selection.primary;
    sheet.View.ShowStdErr = selection.showStdErr;
    sheet.View.ShowVariance = selection.showVariance;
    sheet.View.IndexDisplay = selection.mode;
    sheet::ShowIndices(sheet);
    sheet::AddCellBorders(sheet);
}

}  // namespace synthara::shell
