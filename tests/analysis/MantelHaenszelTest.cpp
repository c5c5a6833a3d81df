// The Mantel-Haenszel terms of one table with a zero cell, against the
// study's own ratio and variance after the 0.5 rule, worked by hand.
#include "analysis/MantelHaenszel.h"

#include <cmath>

#include <gtest/gtest.h>

#include "support/Tolerance.h"

namespace synthara::analysis {
namespace {

using testing::IsNear;

MHSums Terms(MHIndex index, double a, double b, double c, double d) {
    return GetMHVals(index, a, b, c, d).terms;
}

TEST(MantelHaenszel, OneTableWithAZeroCellIsItsOwnAdjustedRatio) {
    // a = 0: every cell grows by 0.5 (0.5, 10.5, 5.5, 5.5).
    const struct {
        MHIndex index;
        double mean;  // the weighted mean of the ratio (or difference) for one table
        double point, variance;
    } cases[] = {
        {MHIndex::LogOddsRatio, 0.047619047619047616, -3.044522437723423, 2.4588744588744587},
        {MHIndex::LogRiskRatio, 0.090909090909090912, std::log(0.090909090909090912), 2},
        {MHIndex::RiskDifference, -0.5, -0.5, 0.032272727272727272},
    };
    for (const auto& c : cases) {
        double mean = c.mean, variance = 0;
        ConvertPointAndVariance(c.index, Terms(c.index, 0, 10, 5, 5), mean, variance);
        EXPECT_TRUE(IsNear(mean, c.point));
        EXPECT_TRUE(IsNear(variance, c.variance));
    }
}

TEST(MantelHaenszel, TheRiskDifferenceWeighsTheCellsAsGiven) {
    const MHRow row = GetMHVals(MHIndex::RiskDifference, 0, 10, 5, 5);
    EXPECT_EQ(row.weight, 5);
    EXPECT_EQ(row.terms[MHTerm::K], 5);
    // The odds ratio's weight is b x c / N of the adjusted cells.
    EXPECT_TRUE(IsNear(GetMHVals(MHIndex::LogOddsRatio, 0, 10, 5, 5).weight, 10.5 * 5.5 / 22));
    // Cells without a zero are not adjusted.
    EXPECT_TRUE(IsNear(GetMHVals(MHIndex::LogOddsRatio, 1, 10, 5, 5).weight, 50.0 / 21));
}

TEST(MantelHaenszel, OnlyTheThreeIndicesAreMantelHaenszel) {
    EXPECT_EQ(MHIndexOf("MH log odds ratio"), MHIndex::LogOddsRatio);
    EXPECT_EQ(MHIndexOf("MH risk difference"), MHIndex::RiskDifference);
    EXPECT_EQ(MHIndexOf("Log odds ratio"), MHIndex::None);
    double mean = 2, variance = 3;
    ConvertPointAndVariance(MHIndex::None, MHSums{}, mean, variance);
    EXPECT_EQ(mean, 2);
    EXPECT_EQ(variance, 3);
}

}  // namespace
}  // namespace synthara::analysis
