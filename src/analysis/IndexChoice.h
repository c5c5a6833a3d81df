#pragma once
// Which index the analysis computes on for the index the user sees, and how
// its results are taken back to the display scale.
#include <optional>
#include <string_view>

#include "analysis/DisplayVals.h"

namespace synthara::analysis {

struct IndexMapping {
    std::string_view computation;  // the index whose columns feed the passes
    Transform transform = Transform::None;
    bool useMH = false;  // a Mantel-Haenszel index
};

// The mapping of a display index; nullopt for a name the analysis does not know.
std::optional<IndexMapping> MapIndex(std::string_view displayIndex);

}  // namespace synthara::analysis
