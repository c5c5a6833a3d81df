#pragma once
// Moving columns: the rules that keep identifying, entry and display columns
// in their places, gathering a block, and where each group ends.
#include <string>
#include <vector>

namespace synthara::sheet {

class Grid;
class Sheet;

// Asked before the user drags column `from` to position `to`. Says why in a
// box and gives false when the move is not allowed.
bool CanMoveColumn(Sheet& sheet, int from, int to);

// After column `from` has been moved to `to`: a data-entry column whose new
// neighbours both belong to other blocks is moved back, with a box, and false
// is given; otherwise its block is renumbered from the left.
bool RepositionEntryCols(Sheet& sheet, int from, int to);

// Gathers the block of (formatName, blockName) at the place of its first
// column by BlockSeq, the others following in BlockSeq order, so the block is
// contiguous.
void MoveEntryCols(Sheet& sheet, const std::string& formatName, const std::string& blockName);

// Sets the columns `cols` (positions, in the order wanted) side by side, the
// first just before the column now at `before` (Cols() for the right end);
// every other column keeps its order.
void PlaceColumns(Grid& flex, const std::vector<int>& cols, int before);

// The position just right of the identifying columns (EntrySeq and the
// population columns), never inside the fixed area.
int EndOfIdentifyingCols(const Sheet& sheet);
// The position just right of the last data-entry column; without a block,
// EndOfIdentifyingCols.
int EndOfEntryCols(const Sheet& sheet);

}  // namespace synthara::sheet
