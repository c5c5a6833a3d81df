#include <cmath>

#include <gtest/gtest.h>

#include "pubbias/Datasets.h"
#include "pubbias/Report.h"
#include "pubbias/Tables.h"

namespace synthara::pubbias {
namespace {

// ES = 0.5 SE + 0.2 puts every standardised effect on one line: the
// intercept's standard error is (near) zero and no t or p can be had.
TEST(Tables, InterceptWithoutStandardError) {
    const InterceptResult r = RunIntercept(testdata::Make({0.25, 0.3, 0.4}, {0.1, 0.2, 0.4}));
    ASSERT_TRUE(r.valid);
    EXPECT_FALSE(r.t);
    const std::vector<TableRow> rows = InterceptTable(r);
    EXPECT_EQ(rows[0].value, "0.50000");
    EXPECT_EQ(rows[4].label, "t-value cannot be computed because standard error is zero");
    EXPECT_EQ(rows[4].value, "");
    EXPECT_EQ(rows[6].value, "");
    EXPECT_TRUE(EggerReport(r).text.ends_with(
        "), Since the standard error is zero, the t-value and p-value cannot be computed."));
}

TEST(Tables, FailSafeRowsOnTheDisplayScale) {
    FailSafeSettings s;
    s.orwinObservedMean = std::log(2.0);
    s.orwinCriterion = std::log(1.5);
    s.orwinMeanNew = 0;
    const FailSafeResult r = RunFailSafe(testdata::Make({0.2, 0.3, 0.5}, {0.1, 0.2, 0.25}), s);
    const std::vector<TableRow> rows = FailSafeTable(r, "Risk ratio", analysis::Transform::Log);
    ASSERT_EQ(rows.size(), 11u);
    EXPECT_EQ(rows[5].value, "3.00000");
    EXPECT_EQ(rows[7].label, "Risk ratio in observed studies");
    EXPECT_EQ(rows[7].value, "2.00000");
    EXPECT_EQ(rows[8].label, "Criterion for a 'trivial' risk ratio");
    EXPECT_EQ(rows[9].value, "1.00000");
    // (log 2 - log 1.5) * 3 / log 1.5 = 2.13, up to 3.
    EXPECT_EQ(rows[10].label, "Number missing studies needed to bring risk ratio under 1.50000");
    EXPECT_EQ(rows[10].value, "3.00000");

    s.orwinCriterion = s.orwinObservedMean;
    const std::vector<TableRow> refused =
        FailSafeTable(RunFailSafe(testdata::Make({0.2, 0.3, 0.5}, {0.1, 0.2, 0.25}), s),
                      "Risk ratio", analysis::Transform::Log);
    EXPECT_EQ(refused.back().label, "Criterion must fall between other values");
    EXPECT_TRUE(refused.back().red);
}

TEST(Tables, TrimRowsShowTheStoredValues) {
    const TrimFillResult r =
        RunTrimFill(testdata::Make({0.57, -0.12, 0.36, -0.2, -0.22, 1.67, 0.29, 0.99},
                                   {0.8, 0.12, 0.8, 0.8, 0.07, 0.46, 0.28, 0.98}),
                    TrimSide::Left, TrimModel::Fixed);
    const std::vector<TrimTableRow> rows = TrimTable(r, analysis::Transform::Log);
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_TRUE(rows[0].hidden);
    EXPECT_EQ(rows[2].label, "Observed values");
    EXPECT_EQ(rows[2].cells[0], "");
    EXPECT_EQ(rows[3].cells[0], "4");
    // exp(-0.1330093) as the report has it; Q is not transformed.
    EXPECT_EQ(rows[2].cells[1], "0.87546");
    EXPECT_EQ(rows[2].cells[7], rows[0].cells[7]);
}

}  // namespace
}  // namespace synthara::pubbias
