// The models of a grouping, checked against values worked by hand from the
// definitions (pooled method of moments with its G - 1 term, the groups'
// model 3 results combined with a between-groups df of 1).
#include <gtest/gtest.h>

#include "AnalysisFixture.h"
#include "analysis/ColumnKeys.h"
#include "support/Tolerance.h"

namespace synthara::analysis {
namespace {

using testing::AnalysisFixture;
using testing::ArmsFixture;
using testing::FindSummary;
using testing::IsNear;
using testing::ThreeArms;

TEST(Models, ThreeGroupsUnderTheFullyRandomModelKeepOneDfBetween) {
    ArmsFixture f;
    const AnalysisResult r = f.Run();
    ASSERT_EQ(f.status, ComputeStatus::Done);
    EXPECT_EQ(f.analysis.NumberOfModels, 5);

    const Analysis::PooledTau pooled = f.analysis.GetT2MP();
    EXPECT_TRUE(IsNear(pooled.T2, 0.069805568863312351));
    EXPECT_TRUE(IsNear(pooled.varT2, 0.005930136744396298));

    const SummaryResult* pooledTotal = FindSummary(r, "Pooled tau");
    ASSERT_NE(pooledTotal, nullptr);
    EXPECT_TRUE(IsNear(*pooledTotal->estimate.point, 0.18610506005247227));
    EXPECT_TRUE(IsNear(*pooledTotal->estimate.variance, 0.014426226251220815));

    const SummaryResult* fully = FindSummary(r, "Fully random");
    ASSERT_NE(fully, nullptr);
    EXPECT_TRUE(IsNear(*fully->estimate.point, 0.19533432582195168));
    EXPECT_TRUE(IsNear(*fully->estimate.variance, 0.020946823667234361));
    EXPECT_TRUE(IsNear(*fully->tau2, 0.018991697552107681));
    EXPECT_TRUE(IsNear(*fully->tau2Variance, 0.0030257295238189292));

    // A group's rows under model 5 are those of model 3.
    EXPECT_TRUE(IsNear(*FindSummary(r, "Fully random", "b")->estimate.point,
                       *FindSummary(r, "Pooled tau", "b")->estimate.point));

    ASSERT_EQ(r.between.size(), 5u);
    const BetweenResult& fixed = r.between.front();
    EXPECT_EQ(fixed.modelWord, "Fixed");
    EXPECT_TRUE(IsNear(fixed.qWithin, 12.857963889172423));
    EXPECT_TRUE(IsNear(fixed.qBetween, 3.8388397637956135));
    EXPECT_EQ(fixed.dfWithin, 6);
    EXPECT_EQ(fixed.dfBetween, 2);
}

TEST(Models, OneGroupPoolsItsOwnTauAndModelFiveIsModelThree) {
    std::vector<testing::RowValues> rows = ThreeArms();
    rows.resize(3);
    AnalysisFixture f(rows);
    f.analysis.GroupBy = "Arm";
    const AnalysisResult r = f.Run();
    ASSERT_EQ(f.status, ComputeStatus::Done);
    EXPECT_TRUE(f.analysis.FullyRandomOneGroup());
    // The group's model 1 tau-squared; its variance takes the total's row too.
    const Analysis::PooledTau pooled = f.analysis.GetT2MP();
    EXPECT_TRUE(IsNear(pooled.T2, 0.043055555555555541));
    EXPECT_TRUE(IsNear(pooled.varT2, 0.013611446902149054));
    const SummaryResult* three = FindSummary(r, "Pooled tau");
    const SummaryResult* five = FindSummary(r, "Fully random");
    ASSERT_TRUE(three != nullptr && five != nullptr);
    EXPECT_EQ(*five->estimate.point, *three->estimate.point);
    EXPECT_EQ(*five->estimate.variance, *three->estimate.variance);
    EXPECT_EQ(*five->tau2, *three->tau2);
}

TEST(Models, GroupsOfOneStudyPoolNoTau) {
    AnalysisFixture f({{"A1", 0.1, 0.04, "a"}, {"B1", 0.5, 0.09, "b"}});
    f.analysis.GroupBy = "Arm";
    const AnalysisResult r = f.Run();
    ASSERT_EQ(f.status, ComputeStatus::Done);
    const Analysis::PooledTau pooled = f.analysis.GetT2MP();
    EXPECT_EQ(pooled.T2, 0);
    EXPECT_EQ(pooled.varT2, 0);
    // Each group's mean is its study's.
    EXPECT_TRUE(IsNear(*FindSummary(r, "Pooled tau", "a")->estimate.point, 0.1));
}

TEST(Models, WithoutGroupingTwoModelsAndTheFlagsOfTheRunsShow) {
    ArmsFixture f(false);
    f.analysis.RunWhich[1] = false;
    const AnalysisResult r = f.Run();
    EXPECT_EQ(f.analysis.NumberOfModels, 2);
    ASSERT_EQ(r.summaries.size(), 1u);
    EXPECT_EQ(r.summaries.front().modelWord, "Random");
    EXPECT_TRUE(r.between.empty());
}

TEST(Models, TheFlagsDecideTheModelsRunAndTheRowsShown) {
    ArmsFixture f;
    for (auto& flags : f.analysis.CompModelA)
        flags.fill(false);
    // "Random, ignoring grouping" on the groups alone runs model 3 as well.
    f.analysis.CompModelA[1][2] = true;
    f.analysis.CompModelA[2][1] = true;
    const AnalysisResult r = f.Run();
    EXPECT_EQ(f.analysis.NumberOfModels, 3);
    ASSERT_EQ(r.summaries.size(), 4u);  // Random of the three groups, Fixed of the total
    EXPECT_EQ(FindSummary(r, "Random"), nullptr);
    EXPECT_NE(FindSummary(r, "Random", "c"), nullptr);
    EXPECT_NE(FindSummary(r, "Fixed"), nullptr);

    f.analysis.ShowOverall = false;
    ASSERT_EQ(f.analysis.Compute(), ComputeStatus::Done);
    EXPECT_EQ(FindSummary(CollectSummaries(f.analysis), "Fixed"), nullptr);

    f.analysis.GroupBy = "Dose";
    EXPECT_EQ(f.analysis.Compute(), ComputeStatus::NoGroupColumn);
}

TEST(Models, ModelsTwoAndFourTakeModelOnesTauOfTheTotalAndOfTheGroup) {
    ArmsFixture f;
    const AnalysisResult r = f.Run();
    const WorkingTable& vs = f.analysis.vs;
    const std::vector<int> calc = f.analysis.CalculationRows();
    const int groupA = calc.front(), total = calc.back();
    const auto value = [&](Stat stat, int model, int row) {
        return (*vs.Find(stat, 1, model))[row];
    };
    EXPECT_EQ(value(Stat::TauWithin, 2, 0), value(Stat::GroupT2, 1, total));
    EXPECT_EQ(value(Stat::TauWithin, 4, 0), value(Stat::GroupT2, 1, groupA));
    EXPECT_EQ(value(Stat::TauBetween, 5, total), 0);
    EXPECT_EQ(*FindSummary(r, "Separate tau", "a")->tau2, *FindSummary(r, "Fixed", "a")->tau2);
}

}  // namespace
}  // namespace synthara::analysis
