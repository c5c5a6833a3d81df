#pragma once
// The regression scattergram as a display list: each study's effect against
// its predictor, a circle by weight, with the result's line across the frame.
// Drawing it is the painter's business.
#include <optional>
#include <string_view>

#include "plot/DisplayList.h"
#include "regression/Regression.h"

namespace synthara::regression {

// The plot's scales in the data's units: the predictor's range widened by a
// tenth on each side, the effect's rounded outward to the nearest steps.
struct ScatterScales {
    double xMin = 0, xMax = 0;
    double yMin = 0, yMax = 0;
};
ScatterScales ScalesFor(const RegressionTable& table);
// The step of -10, ..., -0.1, 0 below the smallest effect; beyond the steps,
// the multiple of 10 below it.
double LowerStep(double smallest);
// The step of 0.1, ..., 10, 20 above the largest effect; beyond the steps,
// the multiple of 10 above it.
double UpperStep(double largest);

// The part of T = B0 + B1 * X inside the scales, as two (X, T) points;
// nothing when the line misses the frame.
struct Segment {
    plot::Point from, to;
};
std::optional<Segment> ClipLine(double B0, double B1, const ScatterScales& scales);

// `effectName` is the computation index's name, `predictorName` the
// predictor's title.
plot::DisplayList PlotScattergram(const RegressionResult& result, std::string_view effectName,
                                  std::string_view predictorName);

}  // namespace synthara::regression
