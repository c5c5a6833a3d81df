#include "stats/Formulas.h"

#include <cmath>

#include <gtest/gtest.h>

#include "support/Tolerance.h"

namespace synthara::stats {
namespace {

using synthara::testing::IsNear;

TEST(FormulasTest, FisherZClipsPerfectCorrelations) {
    EXPECT_EQ(FisherZ(1), FisherZ(0.99999999));
    EXPECT_EQ(FisherZ(-1), FisherZ(-0.99999999));
    EXPECT_NEAR(FisherZ(1), 9.55, 0.01);
    EXPECT_EQ(FisherZ(0), 0);
    EXPECT_TRUE(IsNear(InverseFisher(FisherZ(0.3)), 0.3));
}

TEST(FormulasTest, CorrectionJUsesIntegerDf) {
    EXPECT_EQ(CorrectionJ(2), 1 - 3.0 / 7);
    EXPECT_EQ(CorrectionJ(0), 4);
    EXPECT_TRUE(IsNear(DToG(0.5, 20), 0.5 * (1 - 3.0 / 79)));
    EXPECT_TRUE(IsNear(GToD(DToG(0.5, 20), 20), 0.5));
}

TEST(FormulasTest, ZFromPKeepsItsOneTailedRule) {
    EXPECT_EQ(ZFromP(0.6, 1), 0);
    EXPECT_EQ(ZFromP(0.99, 1), 0);
    EXPECT_TRUE(IsNear(ZFromP(0.05, 2), 1.959963984540054));
    EXPECT_TRUE(IsNear(ZFromP(0.05, 1), 1.6448536269514722));
    EXPECT_TRUE(IsNear(ZFromP(0.5, 1), 0, 0, 1e-12));
    EXPECT_TRUE(IsNear(NormalQuantile(0.05, 2), -1.959963984540054));
    EXPECT_TRUE(IsNear(NormalQuantile(0.05, 1), -1.6448536269514722));
}

TEST(FormulasTest, ChiSquareP) {
    EXPECT_EQ(ChiSquareP(5, 0), 0);
    EXPECT_TRUE(IsNear(ChiSquareP(2, 2), std::exp(-1.0), 1e-12));
    EXPECT_EQ(ChiSquareP(0, 4), 1);
}

TEST(FormulasTest, ConversionsRoundTrip) {
    for (double d : {-1.2, -0.1, 0.0, 0.4, 2.5}) {
        SCOPED_TRACE(d);
        EXPECT_TRUE(IsNear(LogOddsToD(DToLogOdds(d)), d, 1e-12, 1e-15));
        EXPECT_TRUE(IsNear(RToD(DToR(d, 10, 10)), d, 1e-12, 1e-15));
        EXPECT_TRUE(IsNear(Logit(InverseLogit(d)), d, 1e-12, 1e-15));
    }
    EXPECT_TRUE(IsNear(LogOddsSEToD(DSEToLogOddsSE(0.3)), 0.3));
    // With equal groups d = 2r/sqrt(1-r^2), so the SE transforms are inverses.
    const double d = 0.8;
    const double r = DToR(d, 20, 20);
    EXPECT_TRUE(IsNear(RSEToDSE(r, DSEToRSE(0.25, d, 20, 20)), 0.25));
    EXPECT_TRUE(IsNear(DToLogOdds(1), PI / std::sqrt(3.0)));
    EXPECT_EQ(HarmonicN(10, 30), 7.5);
}

TEST(FormulasTest, GAndDStandardErrors) {
    const int df = 18;
    const double d = 0.6;
    const double g = DToG(d, df);
    const double se = 0.33;

    EXPECT_TRUE(IsNear(GSEFromD(d, se, df, true, 1), se * CorrectionJ(df)));
    EXPECT_TRUE(IsNear(DSEFromG(g, GSEFromD(d, se, df, false, 1), df, 1), se));

    const double n = df + 2.0;
    const double want = std::sqrt(se * se - d * d / (2 * n) + g * g / (2 * (n - 3.94)));
    EXPECT_TRUE(IsNear(GSEFromD(d, se, df, true, 2), want));
    // Method 2 inverts exactly for independent groups only: the inverse always
    // takes N = df + 2.
    EXPECT_TRUE(IsNear(DSEFromG(g, GSEFromD(d, se, df, true, 2), df, 2), se));
    EXPECT_FALSE(IsNear(DSEFromG(g, GSEFromD(d, se, df, false, 2), df, 2), se, 1e-6));

    EXPECT_EQ(GSEFromD(d, se, df, true, 0), 0);
    EXPECT_EQ(DSEFromG(g, se, df, 3), 0);
}

}  // namespace
}  // namespace synthara::stats
