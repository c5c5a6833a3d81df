#pragma once
// Colours the sheet gives its cells: the back colour of computed results and
// the greys of entry cells that belong to another block than the row's.
#include <array>
#include <cstdint>

#include "sheet/grid/Grid.h"

namespace synthara::sheet {

// Data rows of display columns: results are told apart from typed data.
inline constexpr BackColor kDisplayBackColor = RGB(255, 255, 225);

// Rows and columns the user highlights ("Row highlight", "Column highlight").
inline constexpr BackColor kHighlightBackColor = RGB(213, 240, 213);

// A grid cell's shade 1 to 8 (GrayBlocks) as a colour; 0 is no shade. Each
// block keeps its own grey, so neighbouring blocks stay distinguishable.
inline constexpr std::array<BackColor, 9> kBlockShades = {
    kNoBackColor,       RGB(192, 192, 192), RGB(208, 208, 208),
    RGB(176, 176, 176), RGB(200, 200, 216), RGB(216, 208, 200),
    RGB(184, 200, 184), RGB(224, 224, 224), RGB(168, 168, 184)};

inline constexpr BackColor BlockShadeColor(std::uint8_t shade) {
    return shade < kBlockShades.size() ? kBlockShades[shade] : kNoBackColor;
}

}  // namespace synthara::sheet
