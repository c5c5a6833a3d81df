#include "sheet/blocks/BlockCombos.h"

#include <algorithm>

#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

namespace {

// Columns whose cells the system writes, and the system's own columns: no
// role may take them over.
constexpr std::string_view kNotOffered[] = {
    "Display",       "Computed",    "Influence", "Calc",      "Diagnostics",
    "Populations",   "Data Format", "NickName",  "MergeType", "EntrySeq",
    "Temp Sequence", "Settings",    "Row Errors"};

bool Offered(const Sheet& sheet, int col, const DefinedFormat& format) {
    if (sheet.ColumnLabel(col).empty()) return false;
    // The format's own block is offered even while the block display hides
    // it, so that its roles keep their columns.
    if (sheet.MetaIs(col, MetaRow::Function, "Data Entry"))
        return sheet.MetaIs(col, MetaRow::FormatName, format.CurrentFormatLong);
    if (sheet.Flex().Col(col).hidden) return false;
    for (std::string_view function : kNotOffered) {
        if (sheet.MetaIs(col, MetaRow::Function, function)) return false;
    }
    return true;
}

}  // namespace

bool RoleCombo::SelectCol(int col) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].col == col) {
            selected = static_cast<int>(i);
            return true;
        }
    }
    return false;
}

std::vector<RoleCombo> LoadCombos(const Sheet& sheet, const DefinedFormat& format) {
    std::vector<ComboEntry> entries = {{std::string(kNotSpecified), -1},
                                       {std::string(kCreateNewColumn), -1}};
    for (int c = sheet.Flex().FixedCols(); c < sheet.Flex().Cols(); ++c) {
        if (Offered(sheet, c, format)) entries.push_back({sheet.ColumnLabel(c), c});
    }
    std::vector<RoleCombo> combos;
    for (std::size_t r = 0; r < MaxRoles; ++r) {
        if (format.EntryColNames[r].empty()) continue;
        combos.push_back({format.EntryColNames[r], static_cast<int>(r), entries, 0});
    }
    return combos;
}

void InitExisting(const Sheet& sheet, const DefinedFormat& format, std::vector<RoleCombo>& combos) {
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (!sheet.MetaIs(c, MetaRow::Function, "Data Entry") ||
            !sheet.MetaIs(c, MetaRow::FormatName, format.CurrentFormatLong))
            continue;
        for (RoleCombo& combo : combos) {
            if (sheet.MetaIs(c, MetaRow::Attribute, combo.role)) combo.SelectCol(c);
        }
    }
}

}  // namespace synthara::sheet
