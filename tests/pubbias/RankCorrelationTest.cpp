#include <random>

#include <gtest/gtest.h>

#include "pubbias/Datasets.h"
#include "pubbias/RankCorrelation.h"
#include "support/Tolerance.h"

namespace synthara::pubbias {
namespace {

using synthara::testing::IsNear;

// Values worked by a plain double loop over the pairs of the V*-sorted rows.
TEST(RankCorrelation, SmallDatasets) {
    struct Pairs {
        double concordant, discordant;
        std::int64_t ties;
        double s, sCorrected;
    };
    struct Tests {
        double z, p1, p1Corrected;
    };
    const struct {
        std::vector<double> es, se;
        Pairs pairs;
        Tests tests;
    } cases[] = {
        // S of -1 and +1 both correct to 0: tau and z 0, p 0.5 and 1.
        {{0.5, 0.1, 0.3},
         {0.1, 0.2, 0.3},
         {1, 2, 0, -1, 0},
         {0.5222329678670934, 0.30075406722029496, 0.5}},
        {{-0.5, -0.1, -0.3},
         {0.1, 0.2, 0.3},
         {2, 1, 0, 1, 0},
         {0.5222329678670934, 0.30075406722029496, 0.5}},
        // S of 0 stays 0.
        {{0.1, 0.8, 0.4, 0.2}, {0.1, 0.2, 0.3, 0.4}, {3, 3, 0, 0, 0}, {0, 0.5, 0.5}},
        // Two studies of one standard error: their pair splits, half to each side.
        {{0.2, 0.6, 0.1, 0.4},
         {0.1, 0.2, 0.2, 0.3},
         {4.5, 1.5, 1, 3, 2},
         {1.019049330730136, 0.15408977373352706, 0.24845292378238404}},
        {{0.1, 0.5, 0.3, 0.9},
         {0.1, 0.3, 0.2, 0.25},
         {5, 1, 0, 4, 3},
         {1.3587324409735149, 0.08711569412401254, 0.15408977373352706}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.es[0]);
        const TauResult r = RunTau(testdata::Make(c.es, c.se));
        ASSERT_TRUE(r.ok);
        EXPECT_EQ(r.pairs.concordant, c.pairs.concordant);
        EXPECT_EQ(r.pairs.discordant, c.pairs.discordant);
        EXPECT_EQ(r.pairs.ties, c.pairs.ties);
        EXPECT_EQ(r.s, c.pairs.s);
        EXPECT_EQ(r.sCorrected, c.pairs.sCorrected);
        EXPECT_TRUE(IsNear(r.tau, c.pairs.s / (c.pairs.concordant + c.pairs.discordant)));
        EXPECT_TRUE(IsNear(r.z, c.tests.z));
        EXPECT_TRUE(IsNear(r.p1, c.tests.p1));
        EXPECT_TRUE(IsNear(r.p2, 2 * c.tests.p1));
        EXPECT_TRUE(IsNear(r.p1Corrected, c.tests.p1Corrected));
        EXPECT_TRUE(IsNear(r.p2Corrected, 2 * c.tests.p1Corrected));
    }
}

TEST(RankCorrelation, RunsThatCannotFinish) {
    // Equal T* (all effects equal): every pair is dropped and C + D is 0.
    const TauResult allTied = RunTau(testdata::Make({0, 0, 0}, {0.1, 0.2, 0.3}));
    EXPECT_FALSE(allTied.ok);
    EXPECT_EQ(allTied.message, kTauProblem);
    // V* of 0: the variance of the mean equals a study's own only when that
    // study is alone (with more, 1 / sum(1 / V) is below every V).
    const TauResult single = RunTau(testdata::Make({0.4}, {0.2}));
    EXPECT_FALSE(single.ok);
    EXPECT_EQ(single.message, kTauProblem);
}

// The counting in k log k against the pairs one by one, with ties in both
// V* and T* (within and just beyond 1E-08).
TEST(RankCorrelation, PairCountsAgreeWithThePairLoop) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> small(0, 5);
    for (int round = 0; round < 50; ++round) {
        const int n = 2 + round;
        std::vector<double> v(static_cast<std::size_t>(n));
        std::vector<double> t(v.size());
        for (std::size_t i = 0; i < v.size(); ++i) {
            v[i] = 0.1 * small(random);
            t[i] =
                small(random) + (small(random) == 0 ? 5e-9 : 0) + (small(random) == 1 ? 2e-8 : 0);
        }
        double concordant = 0;
        double discordant = 0;
        std::int64_t ties = 0;
        for (std::size_t i = 0; i < v.size(); ++i) {
            for (std::size_t j = i + 1; j < v.size(); ++j) {
                if (std::fabs(t[i] - t[j]) <= 1E-08) continue;
                const double r = (v[i] - v[j]) / (t[i] - t[j]);
                if (r > 0) {
                    concordant += 1;
                } else if (r < 0) {
                    discordant += 1;
                } else {
                    concordant += 0.5;
                    discordant += 0.5;
                    ++ties;
                }
            }
        }
        const PairCounts counts = CountPairs(v, t);
        EXPECT_EQ(counts.concordant, concordant) << n;
        EXPECT_EQ(counts.discordant, discordant) << n;
        EXPECT_EQ(counts.ties, ties) << n;
    }
}

}  // namespace
}  // namespace synthara::pubbias
