#pragma once
// Which index the analysis computes on for the index the user sees, and how
// its results are taken back to the display scale.
#include <optional>
#include <string_view>

#include "analysis/DisplayVals.h"

namespace synthara::sheet {
class Grid;
}

namespace synthara::analysis {

struct IndexMapping {
    std::string_view computation;  // the index whose columns feed the passes
    Transform transform = Transform::None;
    bool useMH = false;  // a Mantel-Haenszel index
};

// The mapping of a display index; nullopt for a name the analysis does not know.
std::optional<IndexMapping> MapIndex(std::string_view displayIndex);

// The sheet's columns of a computation index (`colPointSource`,
// `colSeSource`, `colVarianceSource`): the first column marked "Display" with
// the index's name and "Point", "StdErr" or "Variance"; -1 where none.
struct IndexColumns {
    int point = -1;
    int se = -1;
    int variance = -1;
    friend bool operator==(const IndexColumns&, const IndexColumns&) = default;
};
IndexColumns FindIndexColumns(const sheet::Grid& grid, std::string_view computationIndex);

}  // namespace synthara::analysis
