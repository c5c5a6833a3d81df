#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "AnalysisFixture.h"
#include "analysis/Collapse.h"

namespace synthara::testing {
namespace {

using analysis::LevelUse;
using analysis::StudyResult;

// The rows of a result that take part, and the reason words of those that don't.
std::vector<const StudyResult*> Valid(const analysis::AnalysisResult& r) {
    std::vector<const StudyResult*> rows;
    for (const StudyResult& s : r.studies)
        if (s.valid) rows.push_back(&s);
    return rows;
}

std::vector<std::string> Reasons(const analysis::AnalysisResult& r) {
    std::vector<std::string> words;
    for (const StudyResult& s : r.studies)
        words.push_back(s.hideReason);
    return words;
}

RowValues Row(std::string study, double point, double variance, std::array<std::string, 4> levels,
              std::string group = {}) {
    return {std::move(study), point, variance, std::move(group), std::nullopt, std::move(levels)};
}

TEST(Merge, TheMeanOfTheVariancesNotTheVarianceOfTheMean) {
    AnalysisFixture f({Row("S", 0.2, 1, {"", "", "o1", ""}), Row("S", 0.6, 3, {"", "", "o2", ""})});
    f.analysis.AdjustSelection = [](analysis::Selection& s) { s.Level(4).use = LevelUse::Mean; };
    const auto r = f.Run();
    ASSERT_EQ(f.status, analysis::ComputeStatus::Done);
    const auto valid = Valid(r);
    ASSERT_EQ(valid.size(), 1u);
    EXPECT_DOUBLE_EQ(*valid[0]->estimate.point, 0.4);
    EXPECT_DOUBLE_EQ(*valid[0]->estimate.variance, 2.0);
    EXPECT_DOUBLE_EQ(*valid[0]->estimate.se, std::sqrt(2.0));
    EXPECT_EQ(valid[0]->identity[3], "Combined");
    EXPECT_EQ(Reasons(r), (std::vector<std::string>{"Combined", "Combined", ""}));
}

// Outcomes used on their own while comparisons are averaged: each
// comparison's outcomes first become one row by a fixed-effect meta-analysis,
// and only then are the comparisons averaged.
TEST(Merge, DeepestLevelFirst) {
    AnalysisFixture f(
        {Row("S", 0.1, 0.04, {"", "c1", "o1", ""}), Row("S", 0.3, 0.01, {"", "c1", "o2", ""}),
         Row("S", 0.5, 0.02, {"", "c2", "o3", ""}), Row("T", 0.7, 0.05, {"", "c1", "o1", ""})});
    f.analysis.AdjustSelection = [](analysis::Selection& s) {
        s.Level(3).use = LevelUse::Mean;
        s.Level(4).use = LevelUse::All;
    };
    const auto r = f.Run();
    const auto valid = Valid(r);
    ASSERT_EQ(valid.size(), 2u);
    EXPECT_NEAR(*valid[0]->estimate.point, 0.38, 1e-12);
    EXPECT_NEAR(*valid[0]->estimate.variance, 0.014, 1e-12);
    EXPECT_EQ(valid[0]->identity[2], "Combined");
    EXPECT_EQ(valid[0]->identity[3], "Combined");
    // A study of one row keeps its numbers and its identifying cells.
    EXPECT_DOUBLE_EQ(*valid[1]->estimate.point, 0.7);
    EXPECT_EQ(valid[1]->identity[2], "c1");
    EXPECT_EQ(valid[1]->identity[3], "o1");
}

TEST(Merge, TheSequenceChoosesOneRowPerStudy) {
    const std::vector<RowValues> rows = {
        Row("S", 0.1, 0.04, {"", "", "Pain", ""}), Row("S", 0.3, 0.01, {"", "", "Function", ""}),
        Row("T", 0.5, 0.02, {"", "", "Mood", ""}), Row("T", 0.9, 0.02, {"", "", "Sleep", ""})};
    AnalysisFixture f(rows);
    f.analysis.AdjustSelection = [](analysis::Selection& s) {
        s.Level(4).use = LevelUse::One;
        s.Level(4).sequence = {"Function", "Pain"};
    };
    const auto r = f.Run();
    // First in the user's order, not in the sheet's; a study with no value of
    // the sequence stays as it stood.
    EXPECT_EQ(Reasons(r), (std::vector<std::string>{"", "Excluded by sequence", "", ""}));
    EXPECT_EQ(r.studies[0].identity[3], "Function");
    EXPECT_EQ(Valid(r).size(), 3u);
}

TEST(Merge, SubgroupsAsTheUnitOrTheStudy) {
    const std::vector<RowValues> rows = {Row("S", 0.1, 0.04, {"a", "", "", ""}),
                                         Row("S", 0.3, 0.01, {"b", "", "", ""}),
                                         Row("T", 0.5, 0.02, {"a", "", "", ""})};
    AnalysisFixture bySubgroup(rows);
    EXPECT_EQ(Valid(bySubgroup.Run()).size(), 3u);

    // Rows whose format says nothing of how they merge stay apart.
    AnalysisFixture unknown(rows);
    unknown.analysis.AdjustSelection = [](analysis::Selection& s) { s.studyIsUnit = true; };
    EXPECT_EQ(Valid(unknown.Run()).size(), 3u);
    EXPECT_EQ(unknown.prompter.Last(), "|Could not merge subgroups");

    AnalysisFixture byStudy(rows);
    for (int r = 0; r < 3; ++r)
        byStudy.sheet.SetText(sheet::FixedRowCount + r, byStudy.sheet.MergeTypeCol(), "0");
    byStudy.analysis.AdjustSelection = [](analysis::Selection& s) { s.studyIsUnit = true; };
    const auto r = byStudy.Run();
    const auto valid = Valid(r);
    ASSERT_EQ(valid.size(), 2u);
    // Rows given by their point and variance alone are merged by a
    // fixed-effect meta-analysis.
    EXPECT_NEAR(*valid[0]->estimate.point, 0.26, 1e-12);
    EXPECT_NEAR(*valid[0]->estimate.variance, 0.008, 1e-12);
    EXPECT_EQ(valid[0]->identity[1], "Combined");
    EXPECT_EQ(byStudy.analysis.vs.merge[valid[0]->row], analysis::MergeKind::MiniMeta);
    // One subgroup passes as it is.
    EXPECT_EQ(valid[1]->identity[1], "a");
    EXPECT_EQ(byStudy.analysis.vs.merge[valid[1]->row], analysis::MergeKind::OneSubgroup);
}

// Under a Mantel-Haenszel index a study's subgroups count as one table, the
// sum of theirs.
TEST(Merge, MantelHaenszelTakesTheStudysSummedTable) {
    const auto row = [](std::string study, std::string subgroup, std::array<double, 4> c) {
        const double lor = std::log(c[0] * c[3] / (c[1] * c[2]));
        const double var = 1 / c[0] + 1 / c[1] + 1 / c[2] + 1 / c[3];
        return RowValues{std::move(study), lor, var, "", c, {std::move(subgroup), "", "", ""}};
    };
    AnalysisFixture f({row("S", "a", {10, 90, 20, 80}), row("S", "b", {5, 45, 8, 42}),
                       row("T", "a", {15, 85, 25, 75})},
                      "MH odds ratio");
    for (int r = 0; r < 3; ++r)
        f.sheet.SetText(sheet::FixedRowCount + r, f.sheet.MergeTypeCol(), "4");
    f.analysis.AdjustSelection = [](analysis::Selection& s) { s.studyIsUnit = true; };
    const auto r = f.Run();
    ASSERT_EQ(f.status, analysis::ComputeStatus::Done);
    ASSERT_EQ(Valid(r).size(), 2u);
    EXPECT_EQ(f.analysis.vs.merge[Valid(r)[0]->row], analysis::MergeKind::CollapseCells);
    const auto* fixed = FindSummary(r, "Fixed");
    ASSERT_NE(fixed, nullptr);
    EXPECT_NEAR(*fixed->estimate.point, -0.6835059703675593, 1e-12);
}

// A merged row's moderators are the value its rows share, else "Combined";
// its counts are the mean of the rows that have them (the rows describe the
// same people) or, for subgroups, their sum. Rows left out count for nothing.
TEST(Merge, ModeratorsAndCountsOfAMergedRow) {
    constexpr int kN1 = 0, kN2 = 1, kEvents1 = 3;
    const auto setCount = [](AnalysisFixture& f, int row, int ix, double value) {
        f.sheet.SetNumber(sheet::FixedRowCount + row,
                          f.sheet.DisplayColTable()[ix][sheet::AttrPoint], value);
    };
    AnalysisFixture f(
        {Row("S", 0.2, 1, {"", "", "o1", ""}, "Drug"), Row("S", 0.6, 3, {"", "", "o2", ""}, "Drug"),
         Row("S", 0.9, 3, {"", "", "o3", ""}, "Diet"), Row("T", 0.1, 1, {"", "", "o1", ""}, "Drug"),
         Row("T", 0.3, 1, {"", "", "o2", ""}, "Diet")});
    setCount(f, 0, effectsize::Ix::N1, 20);
    setCount(f, 1, effectsize::Ix::N1, 30);
    setCount(f, 1, effectsize::Ix::Events1, 4);
    setCount(f, 2, effectsize::Ix::N1, 1000);
    f.analysis.AdjustSelection = [](analysis::Selection& s) {
        s.Level(4).use = LevelUse::Mean;
        s.Level(4).excluded = {"o3"};
    };
    const auto r = f.Run();
    const auto valid = Valid(r);
    ASSERT_EQ(valid.size(), 2u);
    const analysis::WorkingTable& vs = f.analysis.vs;
    const int arm = vs.FindModerator("Arm");
    ASSERT_GE(arm, 0);
    EXPECT_EQ(vs.ModeratorText(arm, valid[0]->row), "Drug");
    EXPECT_EQ(vs.ModeratorText(arm, valid[1]->row), "Combined");
    ASSERT_NE(vs.Count(kN1), nullptr);
    EXPECT_DOUBLE_EQ((*vs.Count(kN1))[valid[0]->row], 25);
    EXPECT_DOUBLE_EQ((*vs.Count(kEvents1))[valid[0]->row], 4);
    EXPECT_TRUE(std::isnan((*vs.Count(kEvents1))[valid[1]->row]));
    EXPECT_EQ(vs.Count(kN2), nullptr);  // no row has one
    EXPECT_TRUE(std::isnan((*vs.Count(kN1))[valid[1]->row]));

    AnalysisFixture subgroups(
        {Row("S", 0.2, 1, {"a", "", "", ""}, "Drug"), Row("S", 0.6, 3, {"b", "", "", ""}, "Drug")});
    setCount(subgroups, 0, effectsize::Ix::N1, 20);
    setCount(subgroups, 1, effectsize::Ix::N1, 30);
    for (int row = 0; row < 2; ++row)
        subgroups.sheet.SetText(sheet::FixedRowCount + row, subgroups.sheet.MergeTypeCol(), "0");
    subgroups.analysis.AdjustSelection = [](analysis::Selection& s) { s.studyIsUnit = true; };
    const analysis::AnalysisResult result = subgroups.Run();
    const auto merged = Valid(result);
    ASSERT_EQ(merged.size(), 1u);
    EXPECT_DOUBLE_EQ((*subgroups.analysis.vs.Count(kN1))[merged[0]->row], 50);
}

TEST(Merge, ExclusionsOfLevelsAndModerators) {
    const std::vector<RowValues> rows = {
        Row("S", 0.1, 0.04, {"", "", "Pain", ""}, "Drug"),
        Row("T", 0.3, 0.01, {"", "", "Mood", ""}, "Placebo"),
        Row("U", 0.5, 0.02, {"", "", "Pain", ""}, "Drug"),
        {"V", std::nullopt, std::nullopt, "Drug", std::nullopt, {"", "", "Pain", ""}}};
    AnalysisFixture f(rows);
    f.analysis.AdjustSelection = [](analysis::Selection& s) {
        s.Level(1).excluded = {"U"};
        s.moderators.push_back({"Arm", {"Placebo"}});
    };
    const auto r = f.Run();
    EXPECT_EQ(Reasons(r), (std::vector<std::string>{"", "Excluded by user", "Excluded by user",
                                                    "Missing Data"}));
}

TEST(Merge, AGroupLeftWithoutRowsHasNoSummary) {
    AnalysisFixture f({Row("S", 0.1, 0.04, {}, "Drug"), Row("T", 0.3, 0.01, {}, "Placebo"),
                       Row("U", 0.5, 0.02, {}, "Drug")});
    f.analysis.GroupBy = "Arm";
    f.analysis.AdjustSelection = [](analysis::Selection& s) {
        s.moderators.push_back({"Arm", {"Placebo"}});
    };
    const auto r = f.Run();
    ASSERT_EQ(f.status, analysis::ComputeStatus::Done);
    EXPECT_EQ(FindSummary(r, "Fixed", "Placebo"), nullptr);
    ASSERT_NE(FindSummary(r, "Fixed", "Drug"), nullptr);
    EXPECT_EQ(FindSummary(r, "Fixed", "Drug")->k, 2);
    EXPECT_EQ(FindSummary(r, "Fixed")->k, 2);
    // "Show overall summary" off hides the total's rows without a Compute.
    f.analysis.ShowOverall = false;
    f.analysis.FilterRows();
    const auto shown = analysis::CollectSummaries(f.analysis);
    EXPECT_EQ(FindSummary(shown, "Fixed"), nullptr);
    EXPECT_NE(FindSummary(shown, "Fixed", "Drug"), nullptr);
}

TEST(Merge, MeanBesideMantelHaenszelIsRefused) {
    AnalysisFixture f({Row("S", 0.2, 1, {"", "", "o1", ""})}, "MH odds ratio");
    f.analysis.AdjustSelection = [](analysis::Selection& s) { s.Level(5).use = LevelUse::Mean; };
    f.Run();
    EXPECT_EQ(f.status, analysis::ComputeStatus::MeanRefused);
    EXPECT_EQ(f.prompter.Last(),
              "Invalid selection|Cannot combine a Mantel Haenszel effect measure       "
              "|with 'Use the mean' for comparisons, outcomes, or time points.     ");
}

TEST(Merge, ReverseAnovaRebuildsTheWholeSample) {
    const analysis::SampleStats groups[] = {{10, 5, 2}, {20, 8, 3}};
    const auto whole = analysis::ReverseAnova(groups);
    ASSERT_TRUE(whole);
    EXPECT_DOUBLE_EQ(whole->n, 30);
    EXPECT_DOUBLE_EQ(whole->mean, 7);
    EXPECT_NEAR(whole->sd, 3.0342868275303405, 1e-12);
    const analysis::SampleStats one[] = {{1, 5, 0}};
    EXPECT_FALSE(analysis::ReverseAnova(one));
}

}  // namespace
}  // namespace synthara::testing
