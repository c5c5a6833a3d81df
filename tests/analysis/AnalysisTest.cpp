#include "analysis/Analysis.h"

#include <gtest/gtest.h>

#include "AnalysisFixture.h"
#include "analysis/ColumnKeys.h"
#include "analysis/IndexChoice.h"
#include "analysis/Result.h"
#include "support/ScriptedPrompter.h"
#include "support/Tolerance.h"

namespace synthara::analysis {
namespace {

using testing::IsNear;
using testing::RowValues;

using Fixture = testing::AnalysisFixture;

const SummaryResult* Find(const AnalysisResult& r, std::string_view model) {
    return testing::FindSummary(r, model);
}

TEST(FindIndex, KeysTheSourceColumnsOrSaysOops) {
    Fixture f({{"A", 0.1, 0.04}});
    f.analysis.FillFromSheet(f.sheet);
    ASSERT_EQ(f.analysis.FindIndex(), ComputeStatus::Done);
    const sheet::Grid& g = f.sheet.Flex();
    const auto& cols = f.analysis.SourceColumns();
    for (auto [col, attr] :
         {std::pair{cols.point, "Point"}, {cols.se, "StdErr"}, {cols.variance, "Variance"}}) {
        ASSERT_GE(col, 0) << attr;
        EXPECT_EQ(g.Text(sheet::MetaRow::IndexName, col), "Log odds ratio");
        EXPECT_EQ(g.Text(sheet::MetaRow::Attribute, col), attr);
    }
    // Another index moves the keys: no column keeps an earlier one.
    f.analysis.DisplayIndex = "Risk ratio";
    ASSERT_EQ(f.analysis.FindIndex(), ComputeStatus::Done);
    EXPECT_EQ(g.Text(sheet::MetaRow::IndexName, f.analysis.SourceColumns().point),
              "Log risk ratio");
    EXPECT_EQ(f.analysis.DisplayTransform, Transform::Log);

    EXPECT_FALSE(MapIndex("risk ratio").has_value());  // names compare exactly
    EXPECT_FALSE(MapIndex("Peto O-E").has_value());
    f.analysis.DisplayIndex = "Fold change";
    EXPECT_EQ(f.analysis.FindIndex(), ComputeStatus::UnknownIndex);
    ASSERT_EQ(f.prompter.shown.size(), 1u);
    EXPECT_EQ(f.prompter.shown[0].box.title, "Oops!");
    f.analysis.DisplayIndex = "Point estimate";  // known, but no columns on this sheet
    EXPECT_EQ(f.analysis.FindIndex(), ComputeStatus::NoIndexColumns);
}

TEST(WorkingTable, KeysAreFoundWithoutRegardToCase) {
    WorkingTable vs;
    vs.SetRows(1);
    const Column<double>* col = &vs.Ensure(Stat::IVWeight, 1, 2);
    EXPECT_EQ(vs.Find("IV-WEIGHT(1,2)"), col);
    EXPECT_EQ(vs.Find("iv-weight(1,2)"), col);
    EXPECT_EQ(&vs.Ensure(Stat::IVWeight, 1, 2), col);
    EXPECT_EQ(vs.Find("IV-Weight(1,3)"), nullptr);
}

TEST(SetValidLines, NumbersVisibleRowsWithPointAndStandardError) {
    Fixture f({{"A", 0.1, 0.04},
               {"B no point", std::nullopt, 0.04},
               {"C", 0.2, 0.09},
               {"D hidden", 0.3, 0.01},
               {"E no variance", 0.4, std::nullopt},
               {"F", 0.5, 0.16}});
    const AnalysisResult r = f.Run();
    ASSERT_EQ(f.status, ComputeStatus::Done);
    ASSERT_EQ(r.studies.size(), 6u);
    EXPECT_EQ(f.analysis.ValidCount, 4);
    EXPECT_EQ(r.studies[1].hideReason, "Missing Data");
    EXPECT_FALSE(r.studies[4].valid);

    // Numbering alone: every study row shown but one.
    WorkingTable& vs = f.analysis.vs;
    for (const auto& s : r.studies)
        vs.hidden[s.row] = s.identity[0] == "D hidden" ? 1 : 0;
    EXPECT_EQ(f.analysis.SetValidLines(0, vs.LastRow()), 3);
    const int expected[] = {1, 0, 2, 0, 0, 3};
    for (std::size_t i = 0; i < r.studies.size(); ++i)
        EXPECT_EQ(vs.validRow[r.studies[i].row], expected[i]) << r.studies[i].identity[0];
    // Summary rows are hidden while rows are numbered: none gets a number.
    for (int calc : f.analysis.CalculationRows())
        EXPECT_EQ(vs.validRow[calc], 0);
}

TEST(Analysis, FixedAndRandomSummariesByTheMethodOfMoments) {
    // Worked by hand: weights 1/v, then 1/(v + T2) with T2 of the fixed pass.
    Fixture f({{"A", 0.1, 0.04}, {"B", 0.5, 0.09}, {"C", 1.2, 0.16}}, "Log odds ratio");
    const AnalysisResult r = f.Run();
    ASSERT_EQ(f.status, ComputeStatus::Done);
    ASSERT_EQ(r.summaries.size(), 2u);
    const SummaryResult* fixed = Find(r, "Fixed");
    const SummaryResult* random = Find(r, "Random");
    ASSERT_TRUE(fixed && random);

    // The fixed pass is ComputeMetaVals of these rows, checked on its own.
    const double tau2 = 0.18155172413793108;
    EXPECT_EQ(fixed->k, 3);
    EXPECT_TRUE(IsNear(*fixed->estimate.point, 0.36721311475409835));
    EXPECT_TRUE(IsNear(*fixed->q, 6.315573770491805));
    EXPECT_TRUE(IsNear(*fixed->tau, std::sqrt(tau2)));

    EXPECT_TRUE(IsNear(*random->estimate.point, 0.5219366320590256));
    EXPECT_TRUE(IsNear(*random->estimate.variance, 0.08989594243210483));
    // Q and I2 of the random row are those of its own weights; its
    // tau-squared is the one it used, the fixed pass's.
    EXPECT_TRUE(IsNear(*random->q, 2.151454931930213));
    EXPECT_TRUE(IsNear(*random->i2, 7.039651618188112));
    EXPECT_TRUE(IsNear(*random->tau2, tau2));
    EXPECT_TRUE(IsNear(*random->tau2Variance, 0.07486299299712562));

    // Each study row carries its block's results.
    const Column<double>& summary = *f.analysis.vs.Find("Summary Point(1,2)");
    for (const auto& s : r.studies)
        EXPECT_EQ(summary[s.row], *random->estimate.point);
}

TEST(Analysis, OneStudyHasNoHeterogeneityAndAllTheWeight) {
    Fixture f({{"Only", -0.9386941408703922, 0.3571249522536287}});
    const AnalysisResult r = f.Run();
    ASSERT_EQ(f.status, ComputeStatus::Done);
    for (const char* model : {"Fixed", "Random"}) {
        SCOPED_TRACE(model);
        const SummaryResult* s = Find(r, model);
        ASSERT_NE(s, nullptr);
        EXPECT_EQ(s->k, 1);
        EXPECT_TRUE(IsNear(*s->estimate.point, -0.9386941408703922));
        EXPECT_TRUE(IsNear(*s->estimate.variance, 0.3571249522536287));
        EXPECT_TRUE(IsNear(*s->estimate.displayPoint, std::exp(-0.9386941408703922)));
        EXPECT_EQ(*s->q, 0);
        EXPECT_EQ(*s->df, 0);
        EXPECT_EQ(*s->i2, 0);
        EXPECT_EQ(*s->tau2, 0);
    }
    EXPECT_EQ(*r.studies[0].weightFixed, 100);
    EXPECT_EQ(*r.studies[0].weightRandom, 100);
}

TEST(Analysis, ComputeAgainRebuildsTheSameBlocks) {
    Fixture f({{"A", 0.1, 0.04}, {"B", std::nullopt, std::nullopt}, {"C", 1.2, 0.16}});
    const AnalysisResult first = f.Run();
    const int rows = f.analysis.vs.Rows();

    // A narrower level and no random row: limits move, the table keeps its shape.
    f.analysis.CILevel = 0.90;
    f.analysis.RunWhich[2] = false;
    ASSERT_EQ(f.analysis.Compute(), ComputeStatus::Done);
    const AnalysisResult again = CollectResult(f.analysis);
    EXPECT_EQ(f.analysis.vs.Rows(), rows);
    EXPECT_EQ(f.analysis.CalculationRows().size(), 1u);
    ASSERT_EQ(again.summaries.size(), 1u);
    EXPECT_EQ(again.summaries[0].modelWord, "Fixed");
    EXPECT_EQ(*again.summaries[0].estimate.point, *first.summaries[0].estimate.point);
    EXPECT_GT(*again.summaries[0].estimate.lower, *first.summaries[0].estimate.lower);
    ASSERT_EQ(again.studies.size(), 3u);
    EXPECT_FALSE(again.studies[1].estimate.point.has_value());
    EXPECT_FALSE(again.studies[1].weightFixed.has_value());
}

TEST(Analysis, AnotherIndexReadsItsOwnColumnsOfTheSheet) {
    Fixture f({{"A", 0.1, 0.04}, {"B", 0.5, 0.09}});
    ASSERT_EQ(f.Run().summaries[0].k, 2);
    // The sheet's risk-ratio columns are empty: no row has data for it.
    f.analysis.DisplayIndex = "Risk ratio";
    ASSERT_EQ(f.analysis.Compute(), ComputeStatus::Done);
    AnalysisResult r = CollectResult(f.analysis);
    EXPECT_EQ(r.summaries[0].k, 0);
    EXPECT_EQ(r.studies[0].hideReason, "Missing Data");
    f.analysis.DisplayIndex = "Log odds ratio";
    ASSERT_EQ(f.analysis.Compute(), ComputeStatus::Done);
    r = CollectResult(f.analysis);
    EXPECT_EQ(r.summaries[0].k, 2);
    EXPECT_EQ(*r.studies[1].estimate.point, 0.5);
}

TEST(Analysis, RowsStandByStudyNameAndEmptyRowsGo) {
    Fixture f({{"Beta", 0.5, 0.09}, {"", std::nullopt, std::nullopt}, {"alpha", 0.1, 0.04}},
              "Log odds ratio");
    const AnalysisResult r = f.Run();
    ASSERT_EQ(r.studies.size(), 2u);
    EXPECT_EQ(r.studies[0].identity[0], "alpha");
    EXPECT_EQ(*r.studies[0].estimate.point, 0.1);
    EXPECT_EQ(r.studies[1].identity[0], "Beta");
    EXPECT_EQ(*r.studies[1].estimate.point, 0.5);
    // The empty row went to the end before the rows were numbered; the entry
    // order stays with the rows; the block names the last study.
    const WorkingTable& vs = f.analysis.vs;
    EXPECT_EQ(EntrySeqText(vs.entrySeq[r.studies[0].row]), "00002");
    const int total = f.analysis.CalculationRows().back();
    EXPECT_EQ(vs.PopulationText(0, total), "Beta");
}

TEST(Analysis, NoValidRowLeavesTheBlockEmpty) {
    Fixture f({{"A", std::nullopt, 0.04}});
    const AnalysisResult r = f.Run();
    ASSERT_EQ(f.status, ComputeStatus::Done);
    ASSERT_EQ(r.summaries.size(), 2u);
    EXPECT_EQ(r.summaries[0].k, 0);
    EXPECT_FALSE(r.summaries[0].estimate.point.has_value());
    EXPECT_FALSE(r.summaries[0].q.has_value());
}

}  // namespace
}  // namespace synthara::analysis
