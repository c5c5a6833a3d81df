#pragma once
// The block table and the tabs: which blocks the sheet holds, which of them
// are shown, and removing a block.
#include <string>
#include <string_view>

namespace synthara::sheet {

class Sheet;

// Rebuilds the block table from the columns (up to MaxBlocks, in order of
// first appearance from the left), sets the tabs, places and shows or hides
// the nickname column, keeps the fixed-column count, and redraws the outlines.
void AdjustBlocks(Sheet& sheet);

// Shows the data-entry columns by the block display mode: none, only those of
// `blockName`, or all.
void ShowBlocks(Sheet& sheet, std::string_view blockName);

// Puts the current tab on the block of column `col` when it is a data-entry
// column; gives the current tab.
int SynchTabs(Sheet& sheet, int col);

// The tab of a block; -1 when the block has no tab.
int TabOf(const Sheet& sheet, std::string_view blockName);

// "Delete this data entry block": refused while any of the block's cells holds
// data; otherwise asks, and on Yes removes the block's columns and takes the
// format off its rows. True when the block went (the sheet has changed).
bool DeleteTab(Sheet& sheet, std::string_view blockName);

}  // namespace synthara::sheet
