#include <cmath>

#include <gtest/gtest.h>

#include "Studies.h"
#include "regression/Regression.h"
#include "support/Tolerance.h"

namespace synthara::regression {
namespace {

using testing::IsNear;

// The BCG trials: log odds ratio and its variance from the 2x2 counts, on
// absolute latitude.
RegressionTable Bcg() {
    const double counts[13][4] = {
        {4, 119, 11, 128},       {6, 300, 29, 274},        {3, 228, 11, 209},
        {62, 13536, 248, 12619}, {33, 5036, 47, 5761},     {180, 1361, 372, 1079},
        {8, 2537, 10, 619},      {505, 87886, 499, 87892}, {29, 7470, 45, 7232},
        {17, 1699, 65, 1600},    {186, 50448, 141, 27197}, {5, 2493, 3, 2338},
        {27, 16886, 29, 17825}};
    const double latitude[13] = {44, 55, 42, 52, 13, 44, 19, 13, 27, 42, 18, 33, 33};
    std::vector<double> T, V, X;
    for (int i = 0; i < 13; ++i) {
        const auto& [a, b, c, d] = counts[i];
        T.push_back(std::log((a * d) / (b * c)));
        V.push_back(1 / a + 1 / b + 1 / c + 1 / d);
        X.push_back(latitude[i]);
    }
    return testdata::Make(T, V, X);
}

// Each method runs its steps under their names and reads its result from
// its own row; the tau-squared cell of a row is what the next step weighs by.
TEST(RunRegression, StepsOfEachMethod) {
    const RegressionResult fixed = RunRegression(Bcg(), Method::Fixed);
    const RegressionResult moments = RunRegression(Bcg(), Method::Moments);
    const RegressionResult ml = RunRegression(Bcg(), Method::MaximumLikelihood);
    for (const RegressionResult* r : {&fixed, &moments, &ml})
        ASSERT_FALSE(r->failed);

    // Method 1: one step with tau-squared 0, whose cell shows the moments
    // estimate the second step of method 2 weighs by.
    ASSERT_EQ(fixed.steps.size(), 1u);
    EXPECT_EQ(fixed.steps[0].Model, "Fixed");
    EXPECT_TRUE(IsNear(fixed.Row().beta.B1, -0.03309986210885717));
    EXPECT_TRUE(IsNear(fixed.Row().beta.tau2, 0.04798952020857181));
    RegressionTable weighted = Bcg();
    weighted.FillWeights(fixed.Row().beta.tau2);
    Beta byMoments;
    ASSERT_TRUE(weighted.GetBeta(byMoments));
    ASSERT_EQ(moments.steps.size(), 2u);
    EXPECT_EQ(moments.steps[1].Model, "Method of moments");
    EXPECT_EQ(moments.Row().beta.B1, byMoments.B1);
    EXPECT_EQ(moments.Row().beta.B0, byMoments.B0);
    EXPECT_EQ(&moments.Row(), &moments.steps[1]);

    // On these studies the ML iteration creeps and the cap of 40 steps ends it.
    ASSERT_EQ(ml.steps.size(), static_cast<std::size_t>(MaxSteps));
    EXPECT_EQ(ml.lastStep, MaxSteps);
    EXPECT_EQ(ml.steps[2].Model, "Unrestricted ML (1)");
    EXPECT_EQ(ml.Row().Model, "Unrestricted ML (38)");
    EXPECT_EQ(&ml.Row(), &ml.steps.back());
    for (std::size_t i = 3; i < ml.steps.size(); ++i)
        EXPECT_GE(std::fabs(ml.steps[i].beta.tau2 - ml.steps[i - 1].beta.tau2), Convergence) << i;
}

// With equal variances the weights are equal whatever tau-squared is, so the
// first ML update is final: tau-squared stops changing at step 3, and the
// loop runs step 4 before it stops.
TEST(RunRegression, OneMoreStepAfterTauSettles) {
    const RegressionResult r = RunRegression(
        testdata::Make({0.0, 1.5, 0.2, -1.2, 0.4}, {0.04, 0.04, 0.04, 0.04, 0.04}, {0, 1, 2, 3, 4}),
        Method::MaximumLikelihood);
    ASSERT_FALSE(r.failed);
    ASSERT_EQ(r.steps.size(), 4u);
    EXPECT_GT(r.steps[1].beta.tau2, 0);
    EXPECT_NE(r.steps[1].beta.tau2, r.steps[0].beta.tau2);
    EXPECT_TRUE(IsNear(r.steps[2].beta.tau2, r.steps[1].beta.tau2));
    EXPECT_EQ(r.Row().Model, "Unrestricted ML (2)");
}

// The moments estimate is above 0, but the sum of Dummy around its line is
// negative: the next step weighs by 0 and the fixed line comes back.
TEST(RunRegression, NegativeDummySumBringsBackTheFixedLine) {
    const RegressionResult r = RunRegression(
        testdata::Make({0.0, 1.5, 0.2, -1.2, 0.4}, {0.04, 1, 0.04, 1, 0.04}, {0, 1, 2, 3, 4}),
        Method::MaximumLikelihood);
    ASSERT_FALSE(r.failed);
    ASSERT_GE(r.steps.size(), 3u);
    EXPECT_GT(r.steps[0].beta.tau2, 0);
    EXPECT_EQ(r.steps[1].beta.tau2, 0);
    EXPECT_NE(r.steps[1].beta.B1, r.steps[0].beta.B1);
    EXPECT_EQ(r.steps[2].beta.B1, r.steps[0].beta.B1);
    EXPECT_EQ(r.steps[2].beta.B0, r.steps[0].beta.B0);
}

// A study alone at its predictor value carries the slope: its leverage is 1
// and it has no studentised residual.
TEST(RunRegression, LeverageOfOneHasNoStudentisedResidual) {
    const RegressionResult r = RunRegression(
        testdata::Make({0.1, 0.3, 0.2, 0.5}, {1, 1, 1, 1}, {0, 0, 0, 1}), Method::Fixed);
    ASSERT_FALSE(r.failed);
    const RegressionTable& t = r.table;
    EXPECT_TRUE(IsNear(r.Row().beta.B1, 0.3));
    EXPECT_TRUE(IsNear(r.Row().beta.B0, 0.2));
    EXPECT_EQ(t.Col(Key::h)[3], 1);
    EXPECT_TRUE(std::isnan(t.Col(Key::eStud)[3]));
    EXPECT_TRUE(std::isnan(t.Col(Key::pvalStud)[3]));
    EXPECT_TRUE(IsNear(t.Col(Key::h)[0], 1.0 / 3));
    EXPECT_TRUE(IsNear(t.Col(Key::e)[0], -0.1));
    EXPECT_TRUE(IsNear(t.Col(Key::eStud)[0], -0.1 / std::sqrt(2.0 / 3)));
    EXPECT_TRUE(IsNear(t.Col(Key::eStan)[1], 0.1));
    EXPECT_TRUE(IsNear(t.Col(Key::pvalStan)[1], 0.920344325445942));
    EXPECT_TRUE(IsNear(t.Total(Key::Numstudies), 4));
    EXPECT_TRUE(std::isnan(t.Total(Key::h)));  // not summed
}

// An arithmetic failure ends the loop with the steps before it kept.
TEST(RunRegression, ArithmeticFailures) {
    const struct {
        const char* name;
        RegressionTable table;
    } cases[] = {
        {"no variance: an infinite weight", testdata::Make({0.1, 0.2, 0.4}, {0, 0, 0}, {1, 2, 3})},
        {"one predictor value: a zero determinant",
         testdata::Make({0.1, 0.2, 0.4}, {0.1, 0.2, 0.1}, {2, 2, 2})},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        RegressionTable copy = c.table;
        const RegressionResult r = RunRegression(std::move(copy), Method::MaximumLikelihood);
        EXPECT_TRUE(r.failed);
        EXPECT_TRUE(r.steps.empty());
        EXPECT_EQ(r.lastStep, 0);
    }
    EXPECT_EQ(FailureLines(),
              (std::vector<std::string>{"Cannot run meta regression with this combination of      ",
                                        "effect measure, predictor and data set values.      "}));
}

// The tables of the result: limits by the computed critical z, p-values
// from the normal and chi-squared upper tails, the title of each method.
TEST(RunRegression, ResultTables) {
    EXPECT_TRUE(IsNear(CriticalZ(), 1.9599639845400536, 1e-15));
    const RegressionResult r = RunRegression(Bcg(), Method::Moments);
    const std::vector<CoefficientRow> c = Coefficients(r);
    ASSERT_EQ(c.size(), 3u);
    EXPECT_EQ(c[0].label, "Slope");
    EXPECT_TRUE(IsNear(*c[0].lower, -0.04367035237158633));
    EXPECT_TRUE(IsNear(*c[1].upper, 0.7163426460668791));
    EXPECT_TRUE(IsNear(*c[1].p, 0.15070806215603436));
    EXPECT_EQ(c[2].label, "Tau-squared");
    EXPECT_EQ(c[2].point, r.steps[1].beta.tau2);
    EXPECT_FALSE(c[2].se || c[2].p);
    const std::vector<QRow> q = QStatistics(r);
    ASSERT_EQ(q.size(), 3u);
    EXPECT_EQ(q[1].label, "Residual");
    EXPECT_EQ(q[1].df, 11);
    EXPECT_TRUE(IsNear(q[1].p, 0.14109403158668773, 1e-7));
    EXPECT_TRUE(IsNear(q[0].Q + q[1].Q, q[2].Q));

    EXPECT_EQ(Title(Method::Fixed), "Fixed effect regression");
    EXPECT_EQ(Title(Method::Moments), "Mixed effects regression (method of moments)");
    EXPECT_EQ(Title(Method::MaximumLikelihood),
              "Mixed effects regression (unrestricted maximum likelihood)");
}

}  // namespace
}  // namespace synthara::regression
