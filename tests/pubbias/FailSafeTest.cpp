#include <cmath>

#include <gtest/gtest.h>

#include "pubbias/Datasets.h"
#include "pubbias/FailSafe.h"
#include "support/Tolerance.h"

namespace synthara::pubbias {
namespace {

using synthara::testing::IsNear;

// Worked by hand: sum of ES/SE = 2 + 1.5 + 2 = 5.5, Zc = 5.5 / sqrt(3);
// F = 3 (Zc^2 - 1.959964^2) / 1.959964^2 = 4.8746..., rounded up to 5.
TEST(FailSafe, ClassicNumberOfThreeStudies) {
    const FailSafeResult r = RunFailSafe(testdata::Make({0.2, 0.3, 0.5}, {0.1, 0.2, 0.25}), {});
    EXPECT_TRUE(IsNear(r.zc, 3.1754264805429417));
    EXPECT_TRUE(IsNear(r.p, 0.001496164289745553, 1e-7));
    EXPECT_TRUE(IsNear(r.zAlpha, 1.959963984540054, 1e-9));
    EXPECT_EQ(r.failSafeN, 5);
    EXPECT_EQ(r.n, 3);
}

// With one tail and alpha just under .5, z for alpha is near 0 and F is huge.
TEST(FailSafe, OneTailAtTheTopOfAlphasRange) {
    FailSafeSettings s;
    s.tails = 1;
    s.alpha = 0.4999999;
    const FailSafeResult r = RunFailSafe(testdata::Make({0.2, 0.3, 0.5}, {0.1, 0.2, 0.25}), s);
    EXPECT_TRUE(IsNear(r.zAlpha, 2.5066282760945654e-07, 1e-6));
    EXPECT_TRUE(IsNear(r.failSafeN, 481443702290771.8, 1e-5));
}

// Zc equal to Za: F is 0 or a rounding speck, which the rounding takes to 0.
TEST(FailSafe, CombinedZAtTheCriticalValueGivesNoNumber) {
    const double za = 1.959963984540054;
    const FailSafeResult r =
        RunFailSafe(testdata::Make({2 * za - 1.5, 0.5, 0.5, 0.5}, {1, 1, 1, 1}), {});
    EXPECT_TRUE(IsNear(r.zc, za));
    EXPECT_EQ(r.failSafeN, 0);
}

TEST(FailSafe, RoundingUpLeavesOnlyTinyFractions) {
    const struct {
        double f, rounded;
    } cases[] = {{3.00005, 3}, {3.0002, 4}, {3, 3}, {0, 0}, {0.00005, 0}, {0.0002, 1}, {2.5, 3}};
    for (const auto& c : cases)
        EXPECT_EQ(RoundUpFailSafe(c.f), c.rounded) << c.f;
}

TEST(FailSafe, OrwinNeedsTheCriterionStrictlyBetween) {
    const BiasDataset data = testdata::Make({0.2, 0.3, 0.5}, {0.1, 0.2, 0.25});
    const struct {
        double m, c, d;
        OrwinCase want;
        std::optional<std::int32_t> n;
    } cases[] = {
        {0.3, 0.1, 0.0, OrwinCase::Under, 6},  // (0.3 - 0.1) * 3 / 0.1 = 6, no fraction to round
        {0.3, 0.5, 1.0, OrwinCase::Over, 2},   // (0.5 - 0.3) * 3 / 0.5 = 1.2
        {0.3, 0.3, 0.0, OrwinCase::NotBetween, std::nullopt},  // C equal to M
        {0.3, 0.0, 0.0, OrwinCase::NotBetween, std::nullopt},  // C equal to D: the start values
        {0.3, 0.5, 0.4, OrwinCase::NotBetween, std::nullopt},
    };
    for (const auto& c : cases) {
        FailSafeSettings s;
        s.orwinObservedMean = c.m;
        s.orwinCriterion = c.c;
        s.orwinMeanNew = c.d;
        const FailSafeResult r = RunFailSafe(data, s);
        EXPECT_EQ(r.orwin, c.want) << c.c;
        EXPECT_EQ(r.orwinN, c.n) << c.c;
    }
}

TEST(FailSafe, AlphaAndTailsRefusals) {
    EXPECT_FALSE(CheckAlpha(0.000001, 0.05));
    EXPECT_FALSE(CheckAlpha(0.4999999, 0.05));
    EXPECT_EQ(CheckAlpha(0.5, 0.05).value_or(""),
              "Alpha must fall in the range of 0.000001 to .4999999      \n"
              "Value will be reset to 0.05000    ");
    EXPECT_TRUE(CheckAlpha(0.0000009, 0.05));
    EXPECT_FALSE(CheckTails(1, 2));
    EXPECT_EQ(CheckTails(3, 2).value_or(""),
              "Tails must be either 1 or 2      \nValue will be reset to 2");
    EXPECT_TRUE(CheckTails(1.5, 2));
}

TEST(FailSafe, OrwinValuesComeInOnTheDisplayScale) {
    using analysis::Transform;
    EXPECT_EQ(OrwinValue(-7, Transform::None), -7);
    EXPECT_TRUE(IsNear(*OrwinValue(2, Transform::Log), std::log(2.0)));
    EXPECT_FALSE(OrwinValue(500.01, Transform::Log));
    EXPECT_FALSE(OrwinValue(-0.1, Transform::Log));
    EXPECT_TRUE(IsNear(*OrwinValue(0.5, Transform::Fisher), 0.5493061443340549));
    EXPECT_FALSE(OrwinValue(0.99995, Transform::Fisher));
    EXPECT_TRUE(IsNear(*OrwinValue(0.25, Transform::Logit), std::log(1.0 / 3)));
    EXPECT_FALSE(OrwinValue(1.01, Transform::Logit));
}

}  // namespace
}  // namespace synthara::pubbias
