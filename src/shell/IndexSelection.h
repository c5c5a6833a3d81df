#pragma once
// The "Effect size indices" dialog's fields: which indices the display
// columns show, the primary one, the two switches and the display mode,
// read from the sheet and put back into it.
#include <optional>
#include <string>
#include <vector>

#include "ports/Prompter.h"
#include "sheet/grid/Sheet.h"

namespace synthara::shell {

// Whether an index is an effect size the user may pick and read, not one of
// the numbers (cells, group counts, Peto's and Mantel-Haenszel's terms) that
// the computation keeps in display columns of their own.
bool IsEffectSizeIndex(int index);

struct IndexChoice {
    std::string name;
    bool shown = false;
    friend bool operator==(const IndexChoice&, const IndexChoice&) = default;
};

struct IndexSelection {
    // The indices the user may pick, in the order of their columns: every
    // effect size index with display columns, and any other whose columns
    // are shown now. The columns that only hold working numbers are left out.
    std::vector<IndexChoice> indices;
    std::string primary;  // "" when the sheet has no display columns
    bool showStdErr = false;
    bool showVariance = false;
    int mode = sheet::ShowSelectedIndices;  // or sheet::ShowPrimaryIndex

    // The user ticks or clears index `position`. Clearing the primary index
    // is refused with the box this gives, and the tick stays.
    std::optional<ports::Box> SetShown(std::size_t position, bool shown);
    // The user picks another primary index; it is ticked as well.
    void SetPrimary(const std::string& name);
};

// The dialog's fields as the sheet stands.
IndexSelection ReadIndexSelection(const sheet::Sheet& sheet);

// The dialog's Ok: every display column hidden, then the ticked indices'
// columns shown and the primary index's marked primary; the switches and
// the mode taken; the display columns and the outlines laid out again.
void ApplyIndexSelection(sheet::Sheet& sheet, const IndexSelection& selection);

}  // namespace synthara::shell
