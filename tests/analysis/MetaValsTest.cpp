#include "analysis/MetaVals.h"

#include <gtest/gtest.h>

#include "support/Tolerance.h"

namespace synthara::analysis {
namespace {

using testing::IsNear;

// Sums of rows with effects t and within-study variances v under weights 1/v.
MetaSums SumsOf(std::initializer_list<std::pair<double, double>> rows) {
    MetaSums s;
    for (auto [t, v] : rows) {
        const double w = 1 / v;
        s.W += w;
        s.Wsq += w * w;
        s.Wcu += w * w * w;
        s.K += 1;
        s.TW += t * w;
        s.T2W += t * t * w;
    }
    return s;
}

TEST(ComputeMetaVals, HeterogeneousRowsGiveTheMomentEstimate) {
    // Effects 0.1, 0.5, 1.2 with variances 0.04, 0.09, 0.16, worked by hand.
    const MetaVals v = ComputeMetaVals(SumsOf({{0.1, 0.04}, {0.5, 0.09}, {1.2, 0.16}}));
    EXPECT_TRUE(IsNear(v.mean, 0.36721311475409835));
    EXPECT_TRUE(IsNear(v.variance, 0.023606557377049177));
    EXPECT_TRUE(IsNear(v.Q, 6.315573770491805));
    EXPECT_EQ(v.df, 2);
    EXPECT_TRUE(IsNear(v.C, 23.77049180327869));
    EXPECT_TRUE(IsNear(v.T2, 0.18155172413793108));
    EXPECT_TRUE(IsNear(v.B, 21.150153557707156));
    EXPECT_TRUE(IsNear(v.varT2, 0.07486299299712562));
    EXPECT_TRUE(IsNear(v.seT2, std::sqrt(0.07486299299712562)));
    EXPECT_TRUE(IsNear(v.I2, 68.3322517845555));
}

TEST(ComputeMetaVals, NoHeterogeneityWhereThereIsNoSpread) {
    struct Case {
        const char* what;
        MetaSums sums;
        double mean;
    } cases[] = {
        {"one study", SumsOf({{0.7, 0.25}}), 0.7},
        {"two equal effects", SumsOf({{0.3, 0.1}, {0.3, 0.4}}), 0.3},
        {"Q below df", SumsOf({{0.0, 1}, {0.1, 1}, {0.2, 1}}), 0.1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const MetaVals v = ComputeMetaVals(c.sums);
        EXPECT_TRUE(IsNear(v.mean, c.mean));
        EXPECT_TRUE(IsNear(v.variance, 1 / c.sums.W));
        EXPECT_EQ(v.T2, 0);
        EXPECT_EQ(v.I2, 0);
        EXPECT_GE(v.varT2, 0);
    }
    const MetaVals one = ComputeMetaVals(SumsOf({{0.7, 0.25}}));
    EXPECT_EQ(one.Q, 0);
    EXPECT_EQ(one.df, 0);
    EXPECT_EQ(one.B, 0);
    EXPECT_EQ(one.varT2, 0);
    // Q of 0.02 on two df: the estimate would be negative, it is floored.
    EXPECT_LT(ComputeMetaVals(SumsOf({{0.0, 1}, {0.1, 1}, {0.2, 1}})).Q, 2);
}

TEST(ComputeMetaVals, NonPositiveCGivesNoTauSquared) {
    // Sums no real rows give (Wsq above W^2), as the test on C allows for.
    const MetaSums s{.W = 2, .Wsq = 5, .Wcu = 9, .K = 3, .TW = 1, .T2W = 10};
    const MetaVals v = ComputeMetaVals(s);
    EXPECT_LT(v.C, 0);
    EXPECT_EQ(v.T2, 0);
    EXPECT_EQ(v.B, 0);
    EXPECT_EQ(v.varT2, 0);
    EXPECT_EQ(v.seT2, 0);
    EXPECT_TRUE(IsNear(v.I2, 100 * (9.5 - 2) / 9.5));
}

TEST(ComputeMetaVals2, DiffersWhereDocumented) {
    const MetaVals previous{.T2 = 7, .varT2 = 8, .seT2 = 9, .B = 6, .I2 = 55};

    // A negative C leaves the tau-squared figures as they were.
    const MetaSums negativeC{.W = 2, .Wsq = 5, .Wcu = 9, .K = 3, .TW = 1, .T2W = 10};
    MetaVals v = ComputeMetaVals2(negativeC, 4, previous);
    EXPECT_EQ(v.T2, 7);
    EXPECT_EQ(v.B, 6);
    EXPECT_EQ(v.varT2, 8);
    EXPECT_EQ(v.seT2, 9);
    EXPECT_EQ(v.Q, 4);
    EXPECT_TRUE(IsNear(v.I2, 50));

    // C of exactly 0 clears them.
    const MetaSums zeroC{.W = 2, .Wsq = 4, .Wcu = 8, .K = 2, .TW = 1, .T2W = 1};
    v = ComputeMetaVals2(zeroC, 4, previous);
    EXPECT_EQ(v.T2, 0);
    EXPECT_EQ(v.varT2, 0);

    // df of 0 clears nothing: the given Q still makes a tau-squared.
    const MetaSums oneRow{.W = 2, .Wsq = 1, .Wcu = 2, .K = 1, .TW = 1, .T2W = 1};  // C = 1.5
    v = ComputeMetaVals2(oneRow, 3, previous);
    EXPECT_EQ(v.df, 0);
    EXPECT_TRUE(IsNear(v.T2, 2));
    EXPECT_EQ(v.I2, 100);
    EXPECT_EQ(ComputeMetaVals(oneRow).T2, 0);

    // A negative Q is floored at 0, and I2 with it.
    v = ComputeMetaVals2(SumsOf({{0.1, 1}, {0.5, 1}}), -2, previous);
    EXPECT_EQ(v.Q, 0);
    EXPECT_EQ(v.I2, 0);
}

}  // namespace
}  // namespace synthara::analysis
