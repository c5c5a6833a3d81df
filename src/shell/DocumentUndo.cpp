// Whole-sheet snapshots for the undo of commands.
#include "shell/Document.h"

namespace synthara::shell {

SheetSnapshot Document::Snapshot() const {
    return {sheet_.Flex(), sheet_.View,          sheet_.Decimals,
            options_,      project_.MergeRowsOn, unfrozenCols_};
}

void Document::Restore(const SheetSnapshot& snapshot) {
    const std::uint64_t revision = sheet_.Flex().Revision();
    const bool wasDirty = project_.SheetDirty;
    sheet::Grid grid = snapshot.grid;
    // The snapshot's own counts may equal those of a state since left behind;
    // counting on from here keeps every table built on the sheet honest.
    grid.ContinueRevisions(sheet_.Flex());
    sheet_.ReplaceGrid(std::move(grid));
    sheet_.View = snapshot.view;
    sheet_.Decimals = snapshot.decimals;
    options_ = snapshot.options;
    project_.MergeRowsOn = snapshot.mergeRowsOn;
    unfrozenCols_ = snapshot.unfrozenCols;
    Settle(revision, wasDirty);
}

}  // namespace synthara::shell
