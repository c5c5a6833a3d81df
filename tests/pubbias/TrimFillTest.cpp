#include <cmath>

#include <gtest/gtest.h>

#include "pubbias/Datasets.h"
#include "pubbias/TrimFill.h"
#include "support/Tolerance.h"

namespace synthara::pubbias {
namespace {

using synthara::testing::IsNear;

TEST(TrimFill, L0IsRoundedHalfToEven) {
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(3.5), 4);
    EXPECT_EQ(RoundHalfEven(-2.5), -2);
    EXPECT_EQ(RoundHalfEven(2.4999), 2);
    // (4T - N(N+1)) / (2N - 1): N = 8, T = 22 gives 16 / 15, T = 33 gives 60 / 15.
    EXPECT_EQ(EstimateL0(22, 8), 1);
    EXPECT_EQ(EstimateL0(33, 8), 4);
    EXPECT_EQ(EstimateL0(0, 8), -5);  // 72 / 15 = 4.8 below zero
}

TEST(TrimFill, SymmetricDataImputesNothing) {
    const TrimFillResult r =
        RunTrimFill(testdata::Make({-0.35, -0.1, 0.12, 0.3}, {0.3, 0.1, 0.1, 0.3}), TrimSide::Left,
                    TrimModel::Fixed);
    ASSERT_EQ(r.iterations.size(), 1u);
    EXPECT_EQ(r.k, 0);
    EXPECT_TRUE(r.imputed.empty());
    // Centre 0.0065: ranks 2 and 3 lie right of it, L0 = (4 * 5 - 20) / 7 = 0.
    EXPECT_EQ(r.iterations[0].sumRanks, 5);
    EXPECT_EQ(r.observed.fixedMean, r.adjusted.fixedMean);
    EXPECT_EQ(r.observed.randomSE, r.adjusted.randomSE);
}

// L0 of 1, 3, 4, then 3: the run ends with the lower k, mirrored about the
// centre of the fourth iteration (four studies trimmed). Worked in plain
// double arithmetic by the method's steps.
TEST(TrimFill, EndsWithTheLowerEstimateAndTheLastCentre) {
    const TrimFillResult r =
        RunTrimFill(testdata::Make({0.57, -0.12, 0.36, -0.2, -0.22, 1.67, 0.29, 0.99},
                                   {0.8, 0.12, 0.8, 0.8, 0.07, 0.46, 0.28, 0.98}),
                    TrimSide::Left, TrimModel::Random);
    ASSERT_EQ(r.iterations.size(), 4u);
    const int l0[] = {1, 3, 4, 3};
    const std::int64_t sums[] = {22, 31, 33, 31};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(r.iterations[i].L0, l0[i]);
        EXPECT_EQ(r.iterations[i].sumRanks, sums[i]);
    }
    EXPECT_EQ(r.k, 3);
    EXPECT_TRUE(IsNear(r.centre, -0.15902100893726265));
    ASSERT_EQ(r.imputed.size(), 3u);
    const double points[] = {-1.9880420178745253, -1.3080420178745253, -0.8880420178745252};
    const double ses[] = {0.46, 0.98, 0.8};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(IsNear(r.imputed[i].point, points[i]));
        EXPECT_EQ(r.imputed[i].se, ses[i]);
    }
    EXPECT_TRUE(IsNear(r.filled.fixedMean, -0.16974452397823442));
    EXPECT_TRUE(IsNear(r.filled.fixedSE, 0.0573477613113151));
    EXPECT_TRUE(IsNear(r.filled.Q, 39.8543384005154));
    EXPECT_TRUE(IsNear(r.filled.randomMean, -0.07466020572538973));
    EXPECT_TRUE(IsNear(r.filled.randomSE, 0.20158154284348515));
    // The stored values are the single-precision ones.
    EXPECT_EQ(r.adjusted.fixedMean, static_cast<float>(r.filled.fixedMean));
}

// A steep funnel near the point where trimming runs away: the estimate is
// still rising when the cap stops the run.
TEST(TrimFill, StopsAtFortyIterations) {
    std::vector<double> points;
    std::vector<double> ses;
    for (int i = 1; i <= 800; ++i) {
        points.push_back(std::exp(13.8662109375 * i / 800));
        ses.push_back(0.1 + 0.001 * (i - 1));
    }
    const TrimFillResult r =
        RunTrimFill(testdata::Make(points, ses), TrimSide::Left, TrimModel::Fixed);
    ASSERT_EQ(r.iterations.size(), static_cast<std::size_t>(kTrimIterationCap));
    EXPECT_EQ(r.iterations[38].L0, 210);
    EXPECT_EQ(r.iterations[39].L0, 211);
    EXPECT_EQ(r.k, 211);
    EXPECT_EQ(r.imputed.size(), 211u);
}

TEST(TrimFill, UnsetOptionsTrimNothing) {
    const BiasDataset data = testdata::Make({0.1, 0.5, 0.9, 1.4}, {0.1, 0.2, 0.3, 0.4});
    for (const auto& [side, model] : {std::pair{TrimSide::NotSpecified, TrimModel::Fixed},
                                      std::pair{TrimSide::Left, TrimModel::NotSpecified}}) {
        const TrimFillResult r = RunTrimFill(data, side, model);
        EXPECT_FALSE(r.OptionsSet());
        EXPECT_EQ(r.iterations.size(), 1u);
        EXPECT_EQ(r.iterations[0].sumRanks, 0);
        EXPECT_EQ(r.k, 0);
    }
}

// The same data looked at from the other side: the sort and the test turn round.
TEST(TrimFill, SideDecidesWhatCounts) {
    const BiasDataset data = testdata::Make({0.57, -0.12, 0.36, -0.2, -0.22, 1.67, 0.29, 0.99},
                                            {0.8, 0.12, 0.8, 0.8, 0.07, 0.46, 0.28, 0.98});
    const TrimFillResult left = RunTrimFill(data, TrimSide::Left, TrimModel::Fixed);
    const TrimFillResult right = RunTrimFill(data, TrimSide::Right, TrimModel::Fixed);
    EXPECT_EQ(left.iterations[0].sumRanks + right.iterations[0].sumRanks, 8 * 9 / 2);
    EXPECT_GT(left.k, 0);
    EXPECT_EQ(right.k, 0);
}

}  // namespace
}  // namespace synthara::pubbias

namespace synthara::pubbias {
namespace {

// The middle study lies on the centre (0, exactly): were it counted, T would
// be 4 and L0 = (16 - 12) / 5 would round to 1.
TEST(TrimFill, AStudyOnTheCentreCountsNowhere) {
    const TrimFillResult r = RunTrimFill(testdata::Make({-0.2, 0, 0.2}, {0.1, 0.1, 0.1}),
                                         TrimSide::Left, TrimModel::Fixed);
    EXPECT_EQ(r.centre, 0);
    EXPECT_EQ(r.iterations[0].sumRanks, 3);
    EXPECT_EQ(r.k, 0);
}

}  // namespace
}  // namespace synthara::pubbias
