#include "regression/Scattergram.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "effectsize/Trail.h"

namespace synthara::regression {
namespace {

using plot::Point;

constexpr double kPageWidth = 10000;
constexpr double kPageHeight = 7500;
constexpr double kLeft = 1500, kRight = 9500, kTop = 1000, kBottom = 6200;
constexpr double kTickLength = 50;
constexpr int kTickSteps = 5;  // equal steps of each axis between its ends
constexpr double kFullRadius = 250;
constexpr plot::Color kStudyColor{0, 0, 255};
constexpr plot::Color kLineColor{255, 0, 0};

plot::Text Label(Point at, std::string text, plot::HAlign h, plot::VAlign v, double size = 9,
                 bool bold = false) {
    return plot::Text{at, std::move(text), size, bold, h, v, plot::Black};
}

class Frame {
  public:
    explicit Frame(const ScatterScales& s) : s_(s) {}
    double X(double x) const {
        return kLeft + (x - s_.xMin) / (s_.xMax - s_.xMin) * (kRight - kLeft);
    }
    double Y(double t) const {
        return kBottom - (t - s_.yMin) / (s_.yMax - s_.yMin) * (kBottom - kTop);
    }
    Point At(double x, double t) const { return {X(x), Y(t)}; }

  private:
    ScatterScales s_;
};

void DrawScales(plot::DisplayList& list, const ScatterScales& s, const Frame& at) {
    list.Add(plot::Line{{kLeft, kTop}, {kRight, kTop}});
    list.Add(plot::Line{{kLeft, kBottom}, {kRight, kBottom}});
    list.Add(plot::Line{{kLeft, kTop}, {kLeft, kBottom}});
    list.Add(plot::Line{{kRight, kTop}, {kRight, kBottom}});
    for (int i = 0; i <= kTickSteps; ++i) {
        const double x = s.xMin + (s.xMax - s.xMin) * i / kTickSteps;
        const double px = at.X(x);
        list.Add(plot::Line{{px, kBottom}, {px, kBottom + kTickLength}});
        list.Add(Label({px, kBottom + 2 * kTickLength}, effectsize::FormatDecimals(x, 2),
                       plot::HAlign::Centre, plot::VAlign::Top));
        const double t = s.yMin + (s.yMax - s.yMin) * i / kTickSteps;
        const double py = at.Y(t);
        list.Add(plot::Line{{kLeft - kTickLength, py}, {kLeft, py}});
        list.Add(Label({kLeft - 2 * kTickLength, py}, effectsize::FormatDecimals(t, 2),
                       plot::HAlign::Right, plot::VAlign::Middle));
    }
}

}  // namespace

double LowerStep(double smallest) {
    constexpr std::array<double, 13> steps = {0,  -0.1, -0.2, -0.4, -0.6, -0.8, -1,
                                              -2, -3,   -4,   -6,   -8,   -10};
    for (const double step : steps)
        if (smallest > step) return step;
    return -10 * (std::floor(-smallest / 10) + 1);
}

double UpperStep(double largest) {
    constexpr std::array<double, 13> steps = {0.1, 0.2, 0.4, 0.6, 0.8, 1, 2, 3, 4, 6, 8, 10, 20};
    for (const double step : steps)
        if (largest < step) return step;
    return 10 * (std::floor(largest / 10) + 1);
}

ScatterScales ScalesFor(const RegressionTable& table) {
    double xLow = 10000000, xHigh = -10000000, tLow = 1000000, tHigh = -1000000;
    const std::vector<double>& X = table.Col(Key::X);
    const std::vector<double>& T = table.Col(Key::T);
    for (std::size_t i = 0; i < X.size(); ++i) {
        xLow = std::min(xLow, X[i]);
        xHigh = std::max(xHigh, X[i]);
        tLow = std::min(tLow, T[i]);
        tHigh = std::max(tHigh, T[i]);
    }
    const double range = xHigh - xLow;
    return {xLow - 0.1 * range, xHigh + 0.1 * range, LowerStep(tLow), UpperStep(tHigh)};
}

std::optional<Segment> ClipLine(double B0, double B1, const ScatterScales& s) {
    double from = s.xMin, to = s.xMax;
    if (B1 == 0) {
        if (B0 < s.yMin || B0 > s.yMax) return std::nullopt;
    } else {
        const double atLow = (s.yMin - B0) / B1;
        const double atHigh = (s.yMax - B0) / B1;
        from = std::max(from, std::min(atLow, atHigh));
        to = std::min(to, std::max(atLow, atHigh));
        if (from > to) return std::nullopt;
    }
    // The ends on the frame's edges are taken at the edge, so that rounding
    // never puts them a hair outside it.
    const auto t = [&](double x) { return std::clamp(B0 + B1 * x, s.yMin, s.yMax); };
    return Segment{{from, t(from)}, {to, t(to)}};
}

plot::DisplayList PlotScattergram(const RegressionResult& result, std::string_view effectName,
                                  std::string_view predictorName) {
    plot::DisplayList list;
    list.width = kPageWidth;
    list.height = kPageHeight;
    const RegressionTable& table = result.table;
    const ScatterScales scales = ScalesFor(table);
    const Frame at(scales);
    DrawScales(list, scales, at);

    const std::vector<double>& X = table.Col(Key::X);
    const std::vector<double>& T = table.Col(Key::T);
    const std::vector<double>& w = table.Col(Key::w);
    const double largest = w.empty() ? 0 : *std::max_element(w.begin(), w.end());
    for (std::size_t i = 0; i < X.size(); ++i) {
        const double radius = kFullRadius * std::sqrt(w[i] / largest);
        list.Add(plot::Circle{at.At(X[i], T[i]), radius, kStudyColor, false});
    }
    const Beta& line = result.Row().beta;
    if (const auto segment = ClipLine(line.B0, line.B1, scales))
        list.Add(plot::Line{at.At(segment->from.x, segment->from.y),
                            at.At(segment->to.x, segment->to.y), kLineColor, 2});

    const std::string effect(effectName);
    const std::string predictor(predictorName);
    list.Add(Label({kPageWidth / 2, 300}, "Regression of " + effect + " on " + predictor,
                   plot::HAlign::Centre, plot::VAlign::Top, 12, true));
    list.Add(Label({(kLeft + kRight) / 2, kBottom + 400}, predictor, plot::HAlign::Centre,
                   plot::VAlign::Top, 10, true));
    plot::Text vertical = Label({kLeft - 700, (kTop + kBottom) / 2}, effect, plot::HAlign::Centre,
                                plot::VAlign::Middle, 10, true);
    vertical.angle = 90;
    list.Add(std::move(vertical));
    return list;
}

}  // namespace synthara::regression
