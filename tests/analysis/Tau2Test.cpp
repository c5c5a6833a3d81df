// The estimators alone, on the properties that define them; the published
// values are the reference cases' subject.
#include "analysis/Tau2.h"

#include <gtest/gtest.h>

#include <vector>

#include "stats/Distributions.h"
#include "support/Tolerance.h"

namespace synthara::analysis {
namespace {

using testing::IsNear;

constexpr Tau2Method kAll[] = {Tau2Method::DL, Tau2Method::REML, Tau2Method::ML,
                               Tau2Method::PM, Tau2Method::HE,   Tau2Method::SJ};

const std::vector<double> kY = {0.1, 0.5, -0.2, 0.8, 0.3, -0.4, 0.2, 0.9, 0.0};
const std::vector<double> kV = {0.04, 0.09, 0.05, 0.10, 0.02, 0.07, 0.03, 0.2, 0.06};

// The generalised Q at tau2, worked out apart from the estimators.
double GeneralisedQ(const std::vector<double>& y, const std::vector<double>& v, double tau2) {
    double sw = 0, swy = 0;
    for (std::size_t i = 0; i < y.size(); ++i) {
        sw += 1 / (v[i] + tau2);
        swy += y[i] / (v[i] + tau2);
    }
    double q = 0;
    for (std::size_t i = 0; i < y.size(); ++i)
        q += (y[i] - swy / sw) * (y[i] - swy / sw) / (v[i] + tau2);
    return q;
}

TEST(Tau2, WordsReadBackInAnyCase) {
    for (Tau2Method m : kAll) {
        EXPECT_EQ(ParseTau2Method(Tau2MethodWord(m)), m);
        EXPECT_FALSE(Tau2MethodName(m).empty());
    }
    EXPECT_EQ(ParseTau2Method("reml"), Tau2Method::REML);
    EXPECT_EQ(ParseTau2Method("REMLX"), std::nullopt);
    EXPECT_EQ(ParseTau2Method(""), std::nullopt);
}

// One study has no heterogeneity to estimate; equal effects, or effects
// closer than their variances allow, put every estimator at zero, except
// that the Sidik-Jonkman estimate stays above zero while effects differ.
TEST(Tau2, NoHeterogeneityGivesZero) {
    const struct {
        const char* name;
        std::vector<double> y, v;
    } cases[] = {
        {"one study", {0.7}, {0.04}},
        {"two equal effects", {0.3, 0.3}, {0.04, 0.09}},
        {"spread below the variances", {0.1, 0.12, 0.09}, {0.5, 0.6, 0.4}},
    };
    for (const auto& c : cases) {
        for (Tau2Method m : kAll) {
            SCOPED_TRACE(std::string(c.name) + " " + std::string(Tau2MethodWord(m)));
            const Tau2Estimate e = EstimateTau2(m, c.y, c.v);
            if (m == Tau2Method::SJ && c.y.size() == 3)
                EXPECT_GT(e.tau2, 0);
            else
                EXPECT_EQ(e.tau2, 0);
            EXPECT_TRUE(e.converged);
        }
    }
}

TEST(Tau2, TwoStudiesAreEnoughForEveryEstimator) {
    const std::vector<double> y = {-0.5, 0.9}, v = {0.04, 0.09};
    for (Tau2Method m : kAll) {
        SCOPED_TRACE(Tau2MethodWord(m));
        const Tau2Estimate e = EstimateTau2(m, y, v);
        EXPECT_TRUE(e.converged);
        EXPECT_GT(e.tau2, 0.3);
        EXPECT_LT(e.tau2, 2);
    }
    // Unweighted: the variance of the two effects less the mean variance.
    EXPECT_TRUE(IsNear(EstimateTau2(Tau2Method::HE, y, v).tau2, 0.98 - 0.065));
}

TEST(Tau2, PauleMandelBringsTheGeneralisedQToItsDf) {
    const Tau2Estimate e = EstimateTau2(Tau2Method::PM, kY, kV);
    ASSERT_TRUE(e.converged);
    EXPECT_GT(e.tau2, 0);
    EXPECT_TRUE(IsNear(GeneralisedQ(kY, kV, e.tau2), 8, 1e-8));
    EXPECT_TRUE(std::isnan(e.variance));
}

// At the maximum the score of the (restricted) likelihood is zero.
TEST(Tau2, LikelihoodEstimatesSitWhereTheScoreIsZero) {
    for (bool restricted : {true, false}) {
        const Tau2Estimate e = EstimateTau2(restricted ? Tau2Method::REML : Tau2Method::ML, kY, kV);
        ASSERT_TRUE(e.converged);
        ASSERT_GT(e.tau2, 0);
        double sw = 0, sw2 = 0, swy = 0;
        for (std::size_t i = 0; i < kY.size(); ++i) {
            const double w = 1 / (kV[i] + e.tau2);
            sw += w;
            sw2 += w * w;
            swy += w * kY[i];
        }
        double r2 = 0;
        for (std::size_t i = 0; i < kY.size(); ++i) {
            const double w = 1 / (kV[i] + e.tau2);
            r2 += w * w * (kY[i] - swy / sw) * (kY[i] - swy / sw);
        }
        const double score = r2 - (restricted ? sw - sw2 / sw : sw);
        EXPECT_NEAR(score, 0, 1e-7) << (restricted ? "REML" : "ML");
        EXPECT_GT(e.variance, 0);
    }
}

TEST(Tau2, IterationsRunningOutSayNotConverged) {
    const Tau2Control once{1, 1e-10};
    for (Tau2Method m : {Tau2Method::REML, Tau2Method::ML, Tau2Method::PM}) {
        SCOPED_TRACE(Tau2MethodWord(m));
        EXPECT_FALSE(EstimateTau2(m, kY, kV, once).converged);
        EXPECT_TRUE(EstimateTau2(m, kY, kV).converged);
        EXPECT_FALSE(Tau2ConvergenceRule(m, {}).empty());
    }
    EXPECT_TRUE(EstimateTau2(Tau2Method::HE, kY, kV, once).converged);
}

TEST(Tau2, QProfileLimitsMeetTheChiSquaredQuantiles) {
    const Tau2Limits limits = QProfileLimits(kY, kV, 0.95);
    ASSERT_TRUE(limits.lower && limits.upper);
    EXPECT_LT(*limits.lower, EstimateTau2(Tau2Method::PM, kY, kV).tau2);
    EXPECT_TRUE(
        IsNear(GeneralisedQ(kY, kV, *limits.upper), stats::ChiSquareQuantile(0.025, 8), 1e-8));
    // Q at zero is below the upper quantile, so the lower limit is zero.
    EXPECT_LT(GeneralisedQ(kY, kV, 0), stats::ChiSquareQuantile(0.975, 8));
    EXPECT_EQ(*limits.lower, 0);

    // Effects that agree better than their variances say: both limits at zero.
    const Tau2Limits close = QProfileLimits(std::vector<double>{0.1, 0.1001, 0.0999},
                                            std::vector<double>{0.5, 0.6, 0.4}, 0.95);
    EXPECT_EQ(close.lower, 0.0);
    EXPECT_EQ(close.upper, 0.0);
    // One study has no limits.
    const Tau2Limits one = QProfileLimits(std::vector<double>{0.1}, std::vector<double>{0.5}, 0.95);
    EXPECT_FALSE(one.lower || one.upper);
}

}  // namespace
}  // namespace synthara::analysis
