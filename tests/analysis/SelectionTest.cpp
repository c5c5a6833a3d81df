#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "AnalysisFixture.h"
#include "analysis/Selection.h"
#include "sheet/files/ProjectFile.h"

namespace synthara::testing {
namespace {

using analysis::LevelUse;
using analysis::Selection;

// Study name and outcome of each row that takes part.
std::vector<std::string> ValidRows(analysis::Analysis& a) {
    std::vector<std::string> rows;
    for (const auto& s : analysis::CollectResult(a).studies)
        if (s.valid) rows.push_back(s.identity[0] + " " + s.identity[3]);
    return rows;
}

// Choices saved in a project and opened again select the same rows.
TEST(Selection, TravelsWithTheProjectFile) {
    const std::vector<RowValues> rows = {
        {"S", 0.1, 0.04, "Drug", std::nullopt, {"", "", "Pain", ""}},
        {"S", 0.3, 0.01, "Drug", std::nullopt, {"", "", "Function", ""}},
        {"T", 0.5, 0.02, "", std::nullopt, {"", "", "Pain", ""}},
        {"U", 0.7, 0.03, "Diet", std::nullopt, {"", "", "Mood", ""}},
        {"U", 0.2, 0.03, "Diet", std::nullopt, {"", "", "Pain", ""}}};
    AnalysisFixture saved(rows);
    Selection chosen;
    chosen.Level(4).use = LevelUse::One;
    chosen.Level(4).sequence = {"Function", "Pain", "Mood"};
    chosen.Level(1).excluded = {"U"};
    // The check has written "Blank" into T's empty cell; an empty value may be left out too.
    chosen.moderators.push_back({"Arm", {"Blank", ""}});
    analysis::WriteSelection(saved.sheet, chosen);
    EXPECT_EQ(analysis::ReadSelection(saved.sheet.Flex()), chosen);

    const std::string path = ::testing::TempDir() + "SelectionTest-saved.syn";
    ASSERT_TRUE(sheet::SaveProjectFile(saved.sheet, path).ok);
    AnalysisFixture reopened({});
    ASSERT_TRUE(sheet::LoadProjectFile(reopened.sheet, path).ok);
    EXPECT_EQ(analysis::ReadSelection(reopened.sheet.Flex()), chosen);

    saved.Run();
    reopened.Run();
    ASSERT_EQ(saved.status, analysis::ComputeStatus::Done);
    ASSERT_EQ(reopened.status, analysis::ComputeStatus::Done);
    const std::vector<std::string> expected = {"S Function"};
    EXPECT_EQ(ValidRows(saved.analysis), expected);
    EXPECT_EQ(ValidRows(reopened.analysis), expected);
}

TEST(Selection, OptionWordsAndTheWarningOfIndependence) {
    Selection s;
    s.studyIsUnit = true;
    s.Level(3).use = LevelUse::Mean;
    EXPECT_EQ(analysis::OptionWord(s, 1), "None");
    EXPECT_EQ(analysis::OptionWord(s, 2), "Study");
    EXPECT_EQ(analysis::OptionWord(s, 3), "Mean");
    EXPECT_EQ(analysis::OptionWord(s, 4), "All");
    EXPECT_TRUE(s.AnyMean());

    const ports::Box box = analysis::CaveatBox(5);
    EXPECT_TRUE(box.lines.front().starts_with(
        "You are selecting an option to treat each time point as independent of the other "
        "time points. When the data for the various"));
    EXPECT_NE(box.Text().find("especially when the time points are close"), std::string::npos);
    EXPECT_EQ(analysis::CaveatTreatCaption(3), "Treat comparisons as independent");
    EXPECT_EQ(analysis::CaveatAgainCaption(4), "Show this warning again for outcomes as needed");
}

}  // namespace
}  // namespace synthara::testing
