#include <algorithm>
#include <cmath>
#include <variant>

#include <gtest/gtest.h>

#include "Studies.h"
#include "regression/Scattergram.h"
#include "support/Tolerance.h"

namespace synthara::regression {
namespace {

using testing::IsNear;

TEST(Scattergram, EffectScaleRoundsOutward) {
    const struct {
        double smallest, largest, lower, upper;
    } cases[] = {
        {0.3, 0.35, 0, 0.4},   {-0.05, 0.05, -0.1, 0.1}, {-0.1, 0.1, -0.2, 0.2},
        {-0.75, 0.9, -0.8, 1}, {-1.5, 2.5, -2, 3},       {-9.5, 15, -10, 20},
        {-10, 20, -20, 30},    {-23, 47, -30, 50},       {-2, -1.5, -3, 0.1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.smallest);
        EXPECT_EQ(LowerStep(c.smallest), c.lower);
        EXPECT_EQ(UpperStep(c.largest), c.upper);
    }
}

TEST(Scattergram, LineStopsAtTheFrame) {
    const ScatterScales s{0, 10, -1, 1};
    const struct {
        const char* name;
        double B0, B1;
        bool drawn;
        Segment want;
    } cases[] = {
        {"inside", 0, 0.1, true, {{0, 0}, {10, 1}}},
        {"leaves through the top", 0, 0.2, true, {{0, 0}, {5, 1}}},
        {"crosses top and bottom", 3, -0.5, true, {{4, 1}, {8, -1}}},
        {"flat inside", 0.5, 0, true, {{0, 0.5}, {10, 0.5}}},
        {"flat above", 1.5, 0, false, {}},
        {"misses the frame", 2, 0.1, false, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto got = ClipLine(c.B0, c.B1, s);
        ASSERT_EQ(got.has_value(), c.drawn);
        if (!got) continue;
        EXPECT_TRUE(IsNear(got->from.x, c.want.from.x));
        EXPECT_TRUE(IsNear(got->from.y, c.want.from.y));
        EXPECT_TRUE(IsNear(got->to.x, c.want.to.x));
        EXPECT_TRUE(IsNear(got->to.y, c.want.to.y));
    }
}

// Circles by weight, the line inside the frame, the titles by the names.
TEST(Scattergram, DisplayList) {
    const RegressionResult r = RunRegression(
        testdata::Make({0.1, -0.4, 0.3, 0.9}, {0.04, 0.16, 0.04, 0.01}, {10, 20, 30, 40}),
        Method::Fixed);
    ASSERT_FALSE(r.failed);
    const ScatterScales s = ScalesFor(r.table);
    EXPECT_TRUE(IsNear(s.xMin, 7));
    EXPECT_TRUE(IsNear(s.xMax, 43));
    EXPECT_EQ(s.yMin, -0.6);
    EXPECT_EQ(s.yMax, 1);

    const plot::DisplayList list = PlotScattergram(r, "Log odds ratio", "Latitude");
    std::vector<double> radii;
    std::vector<std::string> texts;
    std::vector<plot::Line> lines;
    for (const plot::Item& item : list.items) {
        if (const auto* c = std::get_if<plot::Circle>(&item)) radii.push_back(c->radius);
        if (const auto* t = std::get_if<plot::Text>(&item)) texts.push_back(t->text);
        if (const auto* l = std::get_if<plot::Line>(&item)) lines.push_back(*l);
    }
    // Weights 25, 6.25, 25, 100: areas in that proportion.
    ASSERT_EQ(radii.size(), 4u);
    EXPECT_TRUE(IsNear(radii[0] / radii[3], 0.5));
    EXPECT_TRUE(IsNear(radii[1] / radii[3], 0.25));
    for (const char* text : {"Regression of Log odds ratio on Latitude", "Latitude",
                             "Log odds ratio", "-0.60", "1.00", "7.00", "43.00"})
        EXPECT_NE(std::find(texts.begin(), texts.end(), text), texts.end()) << text;
    // The regression line is the last line drawn, within the frame's corners.
    const plot::Line& line = lines.back();
    const plot::Line& top = lines.front();
    for (const plot::Point& p : {line.from, line.to}) {
        EXPECT_GE(p.x, top.from.x);
        EXPECT_LE(p.x, top.to.x);
        EXPECT_GE(p.y, top.from.y);
    }
}

}  // namespace
}  // namespace synthara::regression
