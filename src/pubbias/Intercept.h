#pragma once
// Egger's test: the intercept of the standardised effect regressed on
// precision.
#include <optional>

#include "pubbias/BiasData.h"

namespace synthara::pubbias {

struct InterceptResult {
    bool valid = false;  // false when the line has no fit (fewer than 3 studies, equal precisions)
    double intercept = 0, se = 0, lower = 0, upper = 0;
    double df = 0;
    // Nothing when the standard error is 1E-07 or less.
    std::optional<double> t, p1, p2;
};

// `tails` divides the 0.05 of the limits (2 at start).
InterceptResult RunIntercept(const BiasDataset& data, int tails = 2);

}  // namespace synthara::pubbias
