#pragma once
// What the sheet shows of its blocks and display columns: the tabs of the
// blocks, the two display modes and their switches, the primary index, and
// the outlines the screen draws around blocks and identifying columns. Only
// plain values live here, so the sheet can hold them and a copy can be kept.
#include <string>
#include <vector>

namespace synthara::sheet {

// Block display mode, set from the "popBlocks" menu.
enum BlockMode : int { HideAllBlocks = 0, ShowCurrentBlock = 1, ShowAllBlocks = 2 };
// Index display mode, set from the "popDisplay" menu.
enum IndexMode : int { ShowNoIndices = 0, ShowPrimaryIndex = 1, ShowSelectedIndices = 2 };

inline constexpr int MaxBlocks = 51;

// An outline around a run of adjacent columns, from the header row to the
// last row of the grid.
struct CellBorder {
    enum class Kind { Block, Populations };
    Kind kind = Kind::Block;
    int firstCol = 0;
    int lastCol = 0;
    int firstRow = 0;
    int lastRow = 0;
    std::string blockName;  // "" for the identifying columns
    bool operator==(const CellBorder&) const = default;
};

struct BlockView {
    // The block table: one tab per block, labelled with its short name, in
    // order of first appearance from the left; tab 0 is the first block.
    std::vector<std::string> Tabs;
    bool TabsVisible = false;
    int CurrentTab = 0;

    int BlockDisplay = ShowAllBlocks;
    int IndexDisplay = ShowSelectedIndices;
    // Program-wide switches: also show the standard error / the variance.
    bool ShowStdErr = false;
    bool ShowVariance = false;

    // The primary index of the project, as last chosen.
    std::string PrimaryIndex;

    std::vector<CellBorder> Borders;

    // The block of the current tab; "" when the sheet has no block.
    std::string CurrentBlock() const {
        return CurrentTab >= 0 && CurrentTab < static_cast<int>(Tabs.size())
                   ? Tabs[static_cast<std::size_t>(CurrentTab)]
                   : std::string();
    }
};

}  // namespace synthara::sheet
