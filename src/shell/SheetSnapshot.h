#pragma once
// The open project's sheet at one moment, as undo keeps it before and after a
// command. Its grid shares its pages with the live sheet until one of them
// writes to a page, so a snapshot of a large sheet costs a pointer per page
// and grows only by what the command changed.
#include "effectsize/Options.h"
#include "sheet/blocks/BlockView.h"
#include "sheet/grid/Grid.h"

namespace synthara::shell {

struct SheetSnapshot {
    sheet::Grid grid;
    sheet::BlockView view;
    int decimals = 3;
    effectsize::ComputeOptions options;
    bool mergeRowsOn = false;
    int unfrozenCols = -1;
};

}  // namespace synthara::shell
