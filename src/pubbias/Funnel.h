#pragma once
// The funnel plot as a display list: standard error or precision against
// effect, with the guide funnel, centre lines, the studies (observed and
// imputed) and the summary diamonds. Drawing it is the painter's business.
#include <string>
#include <string_view>
#include <vector>

#include "plot/DisplayList.h"
#include "pubbias/BiasData.h"
#include "pubbias/TrimFill.h"

namespace synthara::pubbias {

enum class ColorScheme { Screen = 0, Slides = 1, BlackAndWhite = 2 };

// The plot's tool settings at start-up. Values outside their range are
// taken as the program takes them: an axis other than 1 or 2 is 1, a model
// other than 1 or 2 plots the fixed values with a note.
struct FunnelSettings {
    int plotModel = 1;         // 1 "Plot fixed effect", 2 "Plot random effects"
    int plotAxis = 1;          // 1 "Plot standard error", 2 "Plot precision"
    bool plotImputed = false;  // "Plot observed and imputed"
    int funnelKind = 0;        // 0 "Actual funnel", 1 "Adjusted funnel", 2 "No funnel"
    bool showGuides = true;
    bool showCentre = true;
    ColorScheme scheme = ColorScheme::Screen;
};

// A scale's bound, tick interval and the decimals of its labels.
struct AxisScale {
    double bound = 0;
    double tick = 0;
    int decimals = 0;
};

// -L to L on the ladder 1 to 10, 20, 50, 100, as far as the points reach.
AxisScale HorizontalScale(double smallestPoint, double largestPoint);
// 0 to B: the first bound above the largest standard error, or the bound of
// the largest precision.
AxisScale VerticalScale(int plotAxis, double smallestSE, double largestSE);

inline constexpr std::string_view kImputeNote =
    "Select 'Trim and Fill' on the 'View' menu to impute studies";
inline constexpr std::string_view kTrimModelNotSet = "The option for trim model is not set";

struct FunnelPlot {
    plot::DisplayList list;
    AxisScale horizontal, vertical;
    std::vector<std::string> messages;  // shown before drawing
};

FunnelPlot PlotFunnel(const BiasDataset& data, const TrimFillResult& trim,
                      std::string_view indexName, FunnelSettings settings);

}  // namespace synthara::pubbias
