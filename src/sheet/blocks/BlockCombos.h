#pragma once
// The combo boxes of the wizard's column panel: one per role of the format in
// hand, each offering to create the column or to use a column already on the
// sheet.
#include <string>
#include <string_view>
#include <vector>

#include "sheet/catalogue/FormatCatalogue.h"

namespace synthara::sheet {

class Sheet;

inline constexpr std::string_view kNotSpecified = "Not specified";
inline constexpr std::string_view kCreateNewColumn = "Create new column";

struct ComboEntry {
    std::string text;
    int col = -1;  // the sheet column; -1 for the two entries that create one
};

struct RoleCombo {
    std::string role;
    int roleIndex = 0;  // 0 to 12, the role's place in the format
    std::vector<ComboEntry> entries;
    int selected = 0;

    // The column chosen; -1 when the role gets a new column.
    int ChosenCol() const {
        return selected >= 0 && selected < static_cast<int>(entries.size())
                   ? entries[static_cast<std::size_t>(selected)].col
                   : -1;
    }
    // Selects the entry of that column; false when the combo does not offer it.
    bool SelectCol(int col);
};

// One combo per named role of `format`: "Not specified", "Create new column",
// then each visible titled column free for data (or already in this format's
// block), by its title; "Not specified" selected.
std::vector<RoleCombo> LoadCombos(const Sheet& sheet, const DefinedFormat& format);

// Selects, in each combo, the column that already holds the role in this
// format's block on the sheet.
void InitExisting(const Sheet& sheet, const DefinedFormat& format, std::vector<RoleCombo>& combos);

}  // namespace synthara::sheet
