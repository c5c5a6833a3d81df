// The random model's choices inside a run: which blocks take the chosen
// estimator, what a failure leaves, the adjusted limits and the prediction
// interval at small k, and the choices the sheet keeps.
#include "analysis/RandomModel.h"

#include <gtest/gtest.h>
#include <cmath>
#include <string>
#include <vector>

#include "AnalysisFixture.h"
#include "sheet/grid/MetaRows.h"
#include "stats/Distributions.h"
#include "support/Tolerance.h"

namespace synthara::analysis {
namespace {

using testing::AnalysisFixture;
using testing::ArmsFixture;
using testing::FindSummary;
using testing::IsNear;
using testing::RowValues;

void Choose(Analysis& a, Tau2Method method, bool hksj = false, int maxIterations = 100) {
    a.AdjustRandomModel = [=](RandomModelOptions& o) {
        o.tau2 = method;
        o.hksj = hksj;
        o.control.maxIterations = maxIterations;
    };
}

// Model 2 weighs every row with the total's estimate and shows each group's
// own; model 4 keeps the classic estimate of its group.
TEST(RandomModel, TheEstimatorServesModelTwoAndNoOther) {
    ArmsFixture f;
    Choose(f.analysis, Tau2Method::REML);
    const AnalysisResult r = f.Run();
    ASSERT_EQ(f.status, ComputeStatus::Done);
    std::vector<double> y, v;
    for (const RowValues& row : testing::ThreeArms()) {
        y.push_back(*row.point);
        v.push_back(*row.variance);
    }
    const double total = EstimateTau2(Tau2Method::REML, y, v).tau2;
    const double groupA =
        EstimateTau2(Tau2Method::REML, std::vector<double>(y.begin(), y.begin() + 3),
                     std::vector<double>(v.begin(), v.begin() + 3))
            .tau2;
    EXPECT_TRUE(IsNear(*FindSummary(r, "Random")->tau2, total));
    EXPECT_TRUE(IsNear(*FindSummary(r, "Random", "a")->tau2, groupA));
    EXPECT_EQ(FindSummary(r, "Random", "a")->tau2Method, "REML");
    double sw = 0, swy = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        sw += 1 / (v[i] + total);
        swy += y[i] / (v[i] + total);
    }
    EXPECT_TRUE(IsNear(*FindSummary(r, "Random", "a")->estimate.point, swy / sw));
    EXPECT_EQ(*FindSummary(r, "Separate tau", "a")->tau2, *FindSummary(r, "Fixed", "a")->tau2);
    EXPECT_FALSE(FindSummary(r, "Separate tau", "a")->piLower.has_value());
}

TEST(RandomModel, AnEstimatorThatDoesNotConvergeLeavesTheClassicValue) {
    ArmsFixture f(false);
    Choose(f.analysis, Tau2Method::REML, false, 1);
    const AnalysisResult r = f.Run();
    const SummaryResult* random = FindSummary(r, "Random");
    ASSERT_NE(random, nullptr);
    EXPECT_EQ(random->tau2Method, "DL");
    EXPECT_EQ(*random->tau2, *FindSummary(r, "Fixed")->tau2);
    EXPECT_EQ(f.analysis.Tau2NotConverged, std::vector<int>{random->row});
    EXPECT_EQ(r.tau2Method, Tau2Method::REML);
}

// The prediction interval needs three studies (t on k - 2 df), the adjusted
// limits two (t on k - 1 df); below that the normal limits stand.
TEST(RandomModel, SmallBlocksGetWhatTheirDfAllow) {
    const struct {
        std::vector<RowValues> rows;
        bool pi;
        bool adjusted;
    } cases[] = {
        {{{"A", 0.1, 0.04}}, false, false},
        {{{"A", 0.1, 0.04}, {"B", 0.6, 0.09}}, false, true},
        {{{"A", 0.1, 0.04}, {"B", 0.6, 0.09}, {"C", 0.3, 0.05}}, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.rows.size());
        AnalysisFixture plain(c.rows), adjusted(c.rows);
        const SummaryResult normal = *FindSummary(plain.Run(), "Random");
        Choose(adjusted.analysis, Tau2Method::DL, true);
        const SummaryResult hksj = *FindSummary(adjusted.Run(), "Random");
        EXPECT_EQ(normal.piLower.has_value(), c.pi);
        EXPECT_EQ(hksj.estimate.point, normal.estimate.point);
        if (!c.adjusted) {
            EXPECT_EQ(hksj.estimate.lower, normal.estimate.lower);
            continue;
        }
        const double df = static_cast<double>(c.rows.size()) - 1;
        const double se = std::sqrt(*normal.q / df * *normal.estimate.variance);
        EXPECT_TRUE(IsNear(*hksj.estimate.se, se));
        EXPECT_TRUE(
            IsNear(*hksj.estimate.upper, *normal.estimate.point + stats::VBDTIN(0.975, df) * se));
        EXPECT_TRUE(IsNear(*hksj.estimate.p,
                           2 * stats::VBDTDF(-std::fabs(*normal.estimate.point / se), df)));
    }
}

// Each pass of the omit-one and cumulative runs is the analysis of its rows
// with the chosen estimator.
TEST(RandomModel, TheSensitivityRunsUseTheEstimator) {
    const std::vector<RowValues> rows = {
        {"A", 0.1, 0.04}, {"B", 0.9, 0.09}, {"C", -0.2, 0.05}, {"D", 0.8, 0.10}, {"E", 0.3, 0.02}};
    for (int run : {2, 3}) {
        SCOPED_TRACE(run);
        AnalysisFixture f(rows);
        Choose(f.analysis, Tau2Method::REML);
        f.analysis.RunOptions = {false, run == 2, run == 3};
        f.Run();
        std::vector<double> points;
        ForEachPass(f.analysis, run, [&](const PassResult& p) {
            if (p.model == 2) points.push_back(*p.estimate.point);
        });
        ASSERT_EQ(points.size(), rows.size());
        // The pass that leaves out B, or that takes A to D.
        std::vector<RowValues> kept = rows;
        kept.erase(run == 2 ? kept.begin() + 1 : kept.begin() + 4);
        AnalysisFixture alone(kept);
        Choose(alone.analysis, Tau2Method::REML);
        const double expected = *FindSummary(alone.Run(), "Random")->estimate.point;
        EXPECT_TRUE(IsNear(points[run == 2 ? 1 : 3], expected, 1e-12));
    }
}

// A run takes the choices the sheet keeps; the classic ones leave the cells
// blank, as an older file has them.
TEST(RandomModel, ARunTakesTheChoicesTheSheetKeeps) {
    ArmsFixture f(false);
    EXPECT_EQ(ReadRandomModel(f.sheet.Flex()).tau2, Tau2Method::DL);
    WriteRandomModel(f.sheet, {Tau2Method::PM, true, {}});
    const AnalysisResult r = f.Run();
    ASSERT_EQ(f.status, ComputeStatus::Done);
    EXPECT_EQ(FindSummary(r, "Random")->tau2Method, "PM");
    EXPECT_TRUE(r.hksj);

    WriteRandomModel(f.sheet, {});
    const int col = f.sheet.SettingsCol();
    EXPECT_TRUE(f.sheet.Flex().IsBlank(sheet::SettingsRow::Tau2Method, col));
    EXPECT_TRUE(f.sheet.Flex().IsBlank(sheet::SettingsRow::Hksj, col));
}

}  // namespace
}  // namespace synthara::analysis
