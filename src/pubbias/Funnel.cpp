#include "pubbias/Funnel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "pubbias/Scale.h"

namespace synthara::pubbias {
namespace {

using plot::Color;
using plot::Point;

constexpr double kZ = 1.96;
constexpr double kPageWidth = 10000;
constexpr double kPageHeight = 7500;
constexpr double kLeft = 1500, kRight = 9500, kTop = 1000, kBottom = 6200;
constexpr double kTickLength = 50;
constexpr double kCurveStep = 0.002;  // half-width of a guide curve's segment, effect scale

// A text of the plot: labels at 9 points, titles bold and larger.
plot::Text Label(Point at, std::string text, plot::HAlign h, plot::VAlign v,
                 Color color = plot::Black, double size = 9, bool bold = false) {
    return plot::Text{at, std::move(text), size, bold, h, v, color};
}

struct Palette {
    Color observed, imputed, guide, frame;
};

Palette PaletteFor(ColorScheme scheme) {
    switch (scheme) {
        case ColorScheme::Slides:
            return {{0, 0, 160}, {200, 0, 0}, {0, 128, 0}, plot::Black};
        case ColorScheme::BlackAndWhite:
            return {plot::Black, {128, 128, 128}, plot::Black, plot::Black};
        case ColorScheme::Screen:
            break;
    }
    return {{0, 0, 255}, {255, 0, 0}, {0, 160, 0}, plot::Black};
}

// Page position of a point on the plot's scales (y grows downward on the page).
class Schematic {
  public:
    Schematic(double l, double b, bool precision) : l_(l), b_(b), precision_(precision) {}
    double X(double effect) const { return kLeft + (effect + l_) / (2 * l_) * (kRight - kLeft); }
    // `value` is a standard error; on the precision axis its inverse is plotted.
    double Y(double value) const { return Height(precision_ ? 1 / value : value); }
    // A height of the vertical scale itself: a standard error or a precision.
    double Height(double scale) const {
        const double share = scale / b_;
        return precision_ ? kBottom - share * (kBottom - kTop) : kTop + share * (kBottom - kTop);
    }
    Point At(double effect, double value) const { return {X(effect), Y(value)}; }

  private:
    double l_, b_;
    bool precision_;
};

void DrawScales(plot::DisplayList& list, const AxisScale& h, const AxisScale& v,
                const Schematic& at) {
    list.Add(plot::Line{{kLeft, kTop}, {kRight, kTop}});
    list.Add(plot::Line{{kLeft, kBottom}, {kRight, kBottom}});
    list.Add(plot::Line{{kLeft, kTop}, {kLeft, kBottom}});
    list.Add(plot::Line{{kRight, kTop}, {kRight, kBottom}});
    const int xTicks = static_cast<int>(std::lround(2 * h.bound / h.tick));
    for (int i = 0; i <= xTicks; ++i) {
        const double value = -h.bound + i * h.tick;
        const double x = at.X(value);
        list.Add(plot::Line{{x, kBottom}, {x, kBottom + kTickLength}});
        list.Add(Label(Point{x, kBottom + 2 * kTickLength}, Fixed(value, h.decimals),
                       plot::HAlign::Centre, plot::VAlign::Top));
    }
    const int yTicks = static_cast<int>(std::lround(v.bound / v.tick));
    for (int i = 0; i <= yTicks; ++i) {
        const double value = i * v.tick;
        const double y = at.Height(value);
        list.Add(plot::Line{{kLeft - kTickLength, y}, {kLeft, y}});
        list.Add(Label(Point{kLeft - 2 * kTickLength, y}, Fixed(value, v.decimals),
                       plot::HAlign::Right, plot::VAlign::Middle));
    }
}

// The two limits of a guide funnel around `mean`, kept inside the scales.
void DrawGuides(plot::DisplayList& list, double mean, double l, double b, bool precision,
                const Schematic& at, Color color) {
    for (const double side : {-1.0, 1.0}) {
        if (!precision) {
            double x = mean + side * kZ * b;
            double y = b;
            if (x > l) {
                x = l;
                y = (l - mean) / kZ;
            } else if (x < -l) {
                x = -l;
                y = (mean + l) / kZ;
            }
            list.Add(plot::Line{at.At(mean, 0), at.At(x, y), color});
            continue;
        }
        // Precision 1.96 / |x - mean| from the top of the scale down to 1 / B.
        plot::Polyline curve{{}, color};
        for (double d = kZ / b;; d += kCurveStep) {
            const double x = mean + side * d;
            const double prec = kZ / d;
            if (x < -l || x > l || prec < 1 / b) break;
            curve.points.push_back({at.X(x), at.Height(prec)});
        }
        if (curve.points.size() > 1) list.Add(std::move(curve));
    }
}

void DrawCentre(plot::DisplayList& list, double mean, const Schematic& at, Color color) {
    const double x = at.X(mean);
    list.Add(plot::Line{{x, kTop}, {x, kBottom}, color});
}

void DrawDiamond(plot::DisplayList& list, double mean, double se, const Schematic& at,
                 Color color) {
    list.Add(plot::Diamond{at.X(mean - kZ * se), at.X(mean), at.X(mean + kZ * se), kBottom - 120,
                           60, color});
}

}  // namespace

AxisScale HorizontalScale(double smallestPoint, double largestPoint) {
    constexpr std::array<double, 13> ladder = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 20, 50, 100};
    std::size_t step = 0;
    while (step + 1 < ladder.size() &&
           (smallestPoint < -ladder[step] || largestPoint > ladder[step]))
        ++step;
    const double l = ladder[step];
    if (l == 100) return {l, 20, 0};
    if (l == 50 || l == 20) return {l, 10, 0};
    if (l == 10) return {l, 5, 0};
    if (l == 2) return {l, 0.5, 1};
    return {l, 1, 0};
}

AxisScale VerticalScale(int plotAxis, double smallestSE, double largestSE) {
    double b = 500;
    if (plotAxis == 2) {
        constexpr std::array<std::pair<double, double>, 17> byPrecision = {{{500, 1000},
                                                                            {200, 500},
                                                                            {100, 200},
                                                                            {50, 100},
                                                                            {40, 50},
                                                                            {30, 40},
                                                                            {20, 30},
                                                                            {15, 20},
                                                                            {10, 15},
                                                                            {8, 10},
                                                                            {6, 8},
                                                                            {5, 6},
                                                                            {4, 5},
                                                                            {3, 4},
                                                                            {2, 3},
                                                                            {1, 2},
                                                                            {0, 1}}};
        const double p = 1 / smallestSE;
        for (const auto& [atLeast, bound] : byPrecision) {
            if (p >= atLeast) {
                b = bound;
                break;
            }
        }
    } else {
        constexpr std::array<double, 21> bounds = {0.2, 0.4, 0.5, 0.6, 0.8, 1,  2,  3,   4,   5,  6,
                                                   8,   10,  15,  20,  30,  40, 50, 100, 200, 500};
        for (const double bound : bounds) {
            if (bound > largestSE) {
                b = bound;
                break;
            }
        }
    }
    if (b >= 1000) return {b, 200, 0};
    if (b >= 500) return {b, 100, 0};
    if (b >= 100) return {b, 20, 0};
    if (b >= 30) return {b, 10, 0};
    if (b >= 20) return {b, 5, 0};
    if (b >= 10) return {b, 2, 0};
    if (b >= 3) return {b, 1, 0};
    if (b >= 2) return {b, 0.5, 1};
    if (b >= 0.8) return {b, 0.2, 1};
    if (b >= 0.4) return {b, 0.1, 1};
    return {b, 0.05, 2};
}

FunnelPlot PlotFunnel(const BiasDataset& data, const TrimFillResult& trim,
                      std::string_view indexName, FunnelSettings settings) {
    FunnelPlot plot;
    if (settings.plotAxis != 1 && settings.plotAxis != 2) settings.plotAxis = 1;
    if (settings.plotModel != 1 && settings.plotModel != 2)
        plot.messages.emplace_back(kTrimModelNotSet);
    const bool random = settings.plotModel == 2;
    const bool precision = settings.plotAxis == 2;
    const auto value = [random](float fixed, float randomValue) {
        return static_cast<double>(random ? randomValue : fixed);
    };
    const double mo = value(trim.observed.fixedMean, trim.observed.randomMean);
    const double seo = value(trim.observed.fixedSE, trim.observed.randomSE);
    const double ma = value(trim.adjusted.fixedMean, trim.adjusted.randomMean);
    const double sea = value(trim.adjusted.fixedSE, trim.adjusted.randomSE);

    double minPoint = 1000, maxPoint = -1000, minSE = 10000, maxSE = 0;
    const auto scan = [&](double point, double se) {
        minPoint = std::min(minPoint, point);
        maxPoint = std::max(maxPoint, point);
        minSE = std::min(minSE, se);
        maxSE = std::max(maxSE, se);
    };
    for (int i = 0; i < data.N(); ++i)
        scan(data.point[static_cast<std::size_t>(i)], data.se[static_cast<std::size_t>(i)]);
    for (const ImputedStudy& s : trim.imputed)
        scan(s.point, s.se);
    plot.horizontal = HorizontalScale(minPoint, maxPoint);
    plot.vertical = VerticalScale(settings.plotAxis, minSE, maxSE);
    const double l = plot.horizontal.bound;
    const double b = plot.vertical.bound;
    const Schematic at(l, b, precision);
    const Palette palette = PaletteFor(settings.scheme);
    plot::DisplayList& list = plot.list;
    list.width = kPageWidth;
    list.height = kPageHeight;

    DrawScales(list, plot.horizontal, plot.vertical, at);
    const double funnelMean = settings.funnelKind == 1 ? ma : mo;
    if (settings.funnelKind != 2 && settings.showGuides)
        DrawGuides(list, funnelMean, l, b, precision, at, palette.guide);
    if (settings.showCentre) {
        DrawCentre(list, funnelMean, at, palette.frame);
        if (settings.plotImputed) {
            DrawCentre(list, mo, at, palette.observed);
            DrawCentre(list, ma, at, palette.imputed);
        }
    }
    constexpr double radius = 45;
    for (int i = 0; i < data.N(); ++i) {
        const auto u = static_cast<std::size_t>(i);
        list.Add(plot::Circle{at.At(data.point[u], data.se[u]), radius, palette.observed, false});
    }
    DrawDiamond(list, mo, seo, at, palette.observed);
    if (settings.plotImputed) {
        for (const ImputedStudy& s : trim.imputed)
            list.Add(plot::Circle{at.At(s.point, s.se), radius, palette.imputed, true});
        DrawDiamond(list, ma, sea, at, palette.imputed);
        if (trim.imputed.empty())
            list.Add(Label(Point{(kLeft + kRight) / 2, kPageHeight - 300}, std::string(kImputeNote),
                           plot::HAlign::Centre, plot::VAlign::Bottom));
        list.Add(Label(Point{kRight, kTop - 150}, "Imputed", plot::HAlign::Right,
                       plot::VAlign::Bottom, palette.imputed));
    }
    list.Add(Label(Point{kLeft, kTop - 150}, "Observed", plot::HAlign::Left, plot::VAlign::Bottom,
                   palette.observed));
    const char* axisTitle = precision ? "Precision (1/Std Err)" : "Standard Error";
    plot::Text vertical = Label(Point{kLeft - 700, (kTop + kBottom) / 2}, axisTitle,
                                plot::HAlign::Centre, plot::VAlign::Middle, plot::Black, 10, true);
    vertical.angle = 90;
    list.Add(std::move(vertical));
    list.Add(Label(Point{(kLeft + kRight) / 2, kBottom + 400}, std::string(indexName),
                   plot::HAlign::Centre, plot::VAlign::Top, plot::Black, 10, true));
    const std::string title = std::string(precision ? "Funnel Plot of Precision by "
                                                    : "Funnel Plot of Standard Error by ") +
                              std::string(indexName);
    list.Add(Label(Point{kPageWidth / 2, 300}, title, plot::HAlign::Centre, plot::VAlign::Top,
                   plot::Black, 12, true));
    return plot;
}

}  // namespace synthara::pubbias
