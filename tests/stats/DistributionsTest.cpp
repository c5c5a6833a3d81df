#include "stats/Distributions.h"

#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "support/Tolerance.h"

namespace synthara::stats {
namespace {

using synthara::testing::IsNear;

TEST(DistributionsTest, KnownValues) {
    EXPECT_TRUE(IsNear(VBDNORDF(0), 0.5));
    EXPECT_TRUE(IsNear(VBDNORDF(1.959963984540054), 0.975));
    EXPECT_TRUE(IsNear(VBDNORIN(0.975), 1.959963984540054));
    EXPECT_TRUE(IsNear(VBDNORIN(0.025), -1.959963984540054));

    EXPECT_TRUE(IsNear(VBDTIN(0.975, 10), 2.228138851986, 1e-11));
    EXPECT_TRUE(IsNear(VBDTDF(2.228138851986, 10), 0.975, 1e-11));
    // One degree of freedom is the Cauchy distribution: 1/2 + atan(t)/pi.
    EXPECT_TRUE(IsNear(VBDTDF(3, 1), 0.5 + std::atan(3.0) / std::numbers::pi));
    // Fractional degrees of freedom are allowed and lie between their neighbours.
    const double t = VBDTIN(0.025, 7.5);
    EXPECT_LT(t, VBDTIN(0.025, 8));
    EXPECT_GT(t, VBDTIN(0.025, 7));

    // Two degrees of freedom: 1 - exp(-x/2) exactly.
    EXPECT_TRUE(IsNear(VBDCHIDF(2, 2), 1 - std::exp(-1.0)));
    EXPECT_TRUE(IsNear(VBDCHIDF(3.841458820694124, 1), 0.95));
    EXPECT_TRUE(IsNear(VBDCHIDF(18.307038053275146, 10), 0.95));
    EXPECT_EQ(VBDCHIDF(0, 3), 0);
    EXPECT_EQ(VBDCHIDF(-1, 3), 0);
}

TEST(DistributionsTest, BadArgumentsGiveNaNNotExceptions) {
    EXPECT_TRUE(std::isnan(VBDTDF(1, 0)));
    EXPECT_TRUE(std::isnan(VBDTIN(0.5, -2)));
    EXPECT_TRUE(std::isnan(VBDCHIDF(1, -1)));
    EXPECT_TRUE(std::isnan(VBDNORIN(1.5)));
    EXPECT_TRUE(std::isnan(VBDNORDF(std::nan(""))));
    EXPECT_TRUE(std::isinf(VBDNORIN(0)));
}

TEST(DistributionsTest, RegressionLineOfSmallDataset) {
    // Worked by hand: xbar 3, ybar 4, Sxx 10, Sxy 6, Syy 6, SSE 2.4.
    const RegressionLine line = VBDRLINE({1, 2, 3, 4, 5}, {2, 4, 5, 4, 5});
    ASSERT_TRUE(line.valid);
    EXPECT_EQ(line.n, 5);
    EXPECT_EQ(line.df, 3);
    EXPECT_TRUE(IsNear(line.slope, 0.6));
    EXPECT_TRUE(IsNear(line.intercept, 2.2));
    EXPECT_TRUE(IsNear(line.residualVariance, 0.8));
    EXPECT_TRUE(IsNear(line.slopeSE, std::sqrt(0.08)));
    EXPECT_TRUE(IsNear(line.interceptSE, std::sqrt(0.88)));
    EXPECT_TRUE(IsNear(line.r, 6 / std::sqrt(60.0)));
}

TEST(DistributionsTest, RegressionLineRefusesDegenerateData) {
    EXPECT_FALSE(VBDRLINE({}, {}).valid);
    EXPECT_FALSE(VBDRLINE({1, 2}, {3, 5}).valid);
    EXPECT_FALSE(VBDRLINE({2, 2, 2, 2}, {1, 2, 3, 4}).valid);
    // A perfect fit is valid with zero standard errors.
    const RegressionLine exact = VBDRLINE({0, 1, 2}, {1, 3, 5});
    ASSERT_TRUE(exact.valid);
    EXPECT_TRUE(IsNear(exact.slope, 2));
    EXPECT_TRUE(IsNear(exact.slopeSE, 0));
    EXPECT_TRUE(IsNear(exact.r, 1));
}

}  // namespace
}  // namespace synthara::stats
