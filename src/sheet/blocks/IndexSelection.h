#pragma once
// Which indices the display columns show: the choices of the "Effect size
// indices" dialog, and their application to the sheet.
#include <string>
#include <string_view>
#include <vector>

#include "ports/Prompter.h"

namespace synthara::sheet {

class Sheet;

struct IndexSelection {
    struct Row {
        std::string index;  // the index's name
        bool checked = false;
    };
    // One row per index that has a "Point" column, in the sheet's column order.
    std::vector<Row> rows;
    std::string primary;  // the index whose columns carry DisplayClass "Primary"
    bool showStdErr = false;
    bool showVariance = false;
    bool onlyPrimary = false;  // "Show only primary index" rather than "Show selected indices"
};

// The dialog's fields as the sheet stands: a row is checked when its index's
// columns are shown or primary.
IndexSelection InitializeIndexSelection(const Sheet& sheet);

// Checks or clears the row of `index`. Clearing the primary index is refused
// with a box, and the row stays checked; false then.
bool SetIndexChecked(IndexSelection& selection, std::string_view index, bool checked,
                     ports::Prompter& prompter);

// The Ok button: every display column hidden, the checked indices shown, the
// primary index's columns primary, the switches and the mode taken, and the
// columns shown and outlined anew.
void ApplyIndexSelection(Sheet& sheet, const IndexSelection& selection);

}  // namespace synthara::sheet
