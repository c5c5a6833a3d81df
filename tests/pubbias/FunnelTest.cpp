#include <gtest/gtest.h>

#include "pubbias/Datasets.h"
#include "pubbias/Funnel.h"

namespace synthara::pubbias {
namespace {

TEST(Funnel, HorizontalBoundsTicksAndFormats) {
    const struct {
        double smallest, largest;
        double bound, tick;
        int decimals;
    } cases[] = {
        {-0.5, 0.9, 1, 1, 0}, {-1.5, 0.2, 2, 0.5, 1}, {-0.1, 2.0, 2, 0.5, 1},
        {0.1, 2.01, 3, 1, 0}, {-9.5, 0, 10, 5, 0},    {0, 10.5, 20, 10, 0},
        {-45, 0, 50, 10, 0},  {0, 99, 100, 20, 0},    {-250, 0, 100, 20, 0},
    };
    for (const auto& c : cases) {
        const AxisScale s = HorizontalScale(c.smallest, c.largest);
        EXPECT_EQ(s.bound, c.bound) << c.smallest << " " << c.largest;
        EXPECT_EQ(s.tick, c.tick) << c.bound;
        EXPECT_EQ(s.decimals, c.decimals) << c.bound;
    }
}

TEST(Funnel, VerticalBoundsTicksAndFormats) {
    const struct {
        int axis;
        double smallestSE, largestSE;
        double bound, tick;
        int decimals;
    } cases[] = {
        {1, 0.05, 0.2, 0.4, 0.1, 1},  // a bound above the largest, not at it
        {1, 0.05, 0.19, 0.2, 0.05, 2}, {1, 0.1, 0.7, 0.8, 0.2, 1}, {1, 0.1, 1.5, 2, 0.5, 1},
        {1, 0.1, 12, 15, 2, 0},        {1, 0.1, 45, 50, 10, 0},    {1, 0.1, 600, 500, 100, 0},
        {2, 0.0015, 1, 1000, 200, 0},  // precision 666
        {2, 0.05, 1, 30, 10, 0},       // precision 20
        {2, 0.3, 1, 4, 1, 0},          // precision 3.33
        {2, 0.8, 1, 2, 0.5, 1},        // precision 1.25
        {2, 2, 3, 1, 0.2, 1},          // precision 0.5
    };
    for (const auto& c : cases) {
        const AxisScale s = VerticalScale(c.axis, c.smallestSE, c.largestSE);
        EXPECT_EQ(s.bound, c.bound) << c.axis << " " << c.largestSE;
        EXPECT_EQ(s.tick, c.tick) << c.bound;
        EXPECT_EQ(s.decimals, c.decimals) << c.bound;
    }
}

struct Counts {
    int circles = 0, filledCircles = 0, diamonds = 0, polylines = 0;
    std::vector<std::string> texts;
};

Counts Count(const plot::DisplayList& list) {
    Counts c;
    for (const plot::Item& item : list.items) {
        if (const auto* circle = std::get_if<plot::Circle>(&item)) {
            ++c.circles;
            c.filledCircles += circle->filled ? 1 : 0;
        }
        c.diamonds += std::holds_alternative<plot::Diamond>(item) ? 1 : 0;
        c.polylines += std::holds_alternative<plot::Polyline>(item) ? 1 : 0;
        if (const auto* text = std::get_if<plot::Text>(&item)) c.texts.push_back(text->text);
    }
    return c;
}

bool Has(const Counts& c, const std::string& text) {
    return std::find(c.texts.begin(), c.texts.end(), text) != c.texts.end();
}

TEST(Funnel, StudiesDiamondsAndTexts) {
    const BiasDataset data = testdata::Make({0.57, -0.12, 0.36, -0.2, -0.22, 1.67, 0.29, 0.99},
                                            {0.8, 0.12, 0.8, 0.8, 0.07, 0.46, 0.28, 0.98});
    const TrimFillResult trim = RunTrimFill(data, TrimSide::Left, TrimModel::Fixed);
    ASSERT_EQ(trim.k, 4);

    const FunnelPlot observed = PlotFunnel(data, trim, "Std diff in means", {});
    const Counts a = Count(observed.list);
    EXPECT_EQ(a.circles, 8);
    EXPECT_EQ(a.diamonds, 1);
    EXPECT_TRUE(Has(a, "Funnel Plot of Standard Error by Std diff in means"));
    EXPECT_TRUE(Has(a, "Standard Error"));
    EXPECT_FALSE(Has(a, "Imputed"));
    EXPECT_TRUE(observed.messages.empty());

    FunnelSettings s;
    s.plotImputed = true;
    s.plotAxis = 2;
    s.plotModel = 7;  // not set: the fixed values, with the note
    const FunnelPlot both = PlotFunnel(data, trim, "Std diff in means", s);
    const Counts b = Count(both.list);
    EXPECT_EQ(b.circles, 12);
    EXPECT_EQ(b.filledCircles, 4);
    EXPECT_EQ(b.diamonds, 2);
    EXPECT_EQ(b.polylines, 2);  // the guide curves
    EXPECT_TRUE(Has(b, "Funnel Plot of Precision by Std diff in means"));
    EXPECT_TRUE(Has(b, "Precision (1/Std Err)"));
    EXPECT_TRUE(Has(b, "Imputed"));
    EXPECT_FALSE(Has(b, std::string(kImputeNote)));
    EXPECT_EQ(both.messages, std::vector<std::string>{std::string(kTrimModelNotSet)});
}

TEST(Funnel, AskForTrimmingWhenImputedAreShownButNoneExist) {
    const BiasDataset data = testdata::Make({-0.35, -0.1, 0.12, 0.3}, {0.3, 0.1, 0.1, 0.3});
    const TrimFillResult trim = RunTrimFill(data, TrimSide::Left, TrimModel::Fixed);
    FunnelSettings s;
    s.plotImputed = true;
    const Counts c = Count(PlotFunnel(data, trim, "Risk ratio", s).list);
    EXPECT_TRUE(Has(c, std::string(kImputeNote)));
}

// Guide lines on the standard-error axis end at the scale's edge, at the
// height where they meet it.
TEST(Funnel, GuideLinesAreClippedToTheScale) {
    const BiasDataset data = testdata::Make({0.9, 0.5, 0.7}, {0.1, 0.3, 0.35});
    const TrimFillResult trim = RunTrimFill(data, TrimSide::Left, TrimModel::Fixed);
    const FunnelPlot plot = PlotFunnel(data, trim, "Risk difference", {});
    ASSERT_EQ(plot.horizontal.bound, 1);
    ASSERT_EQ(plot.vertical.bound, 0.4);
    double rightmost = 0;
    double leftmost = 1e9;
    for (const plot::Item& item : plot.list.items) {
        if (const auto* line = std::get_if<plot::Line>(&item)) {
            rightmost = std::max(rightmost, line->to.x);
            leftmost = std::min(leftmost, line->to.x);
        }
    }
    // Both edges of the frame are 1500 and 9500 units; no line goes past them.
    EXPECT_LE(rightmost, 9500);
    EXPECT_GE(leftmost, 1500 - 50);  // the tick marks stand 50 units outside the frame
}

}  // namespace
}  // namespace synthara::pubbias
