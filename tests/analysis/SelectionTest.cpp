#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "AnalysisFixture.h"
#include "analysis/Selection.h"
#include "analysis/SelectionDialog.h"
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

TEST(Selection, TheDialogsStateAndRules) {
    using Dialog = analysis::SelectionDialog;
    AnalysisFixture f({{"S", 0.1, 0.04, "Drug", std::nullopt, {"", "", "Pain", ""}},
                       {"S", 0.3, 0.01, "Diet", std::nullopt, {"", "", "Function", ""}}},
                      "MH odds ratio");
    Selection stored;
    stored.Level(4).use = LevelUse::One;
    stored.Level(4).sequence = {"Function"};
    stored.moderators.push_back({"Arm", {"Diet"}});
    analysis::WriteSelection(f.sheet, stored);

    Dialog dialog(f.sheet, f.analysis, f.prompter);
    dialog.Load();
    ASSERT_NE(dialog.FindTab(4), nullptr);
    EXPECT_EQ(dialog.FindTab(2), nullptr);  // no subgroup column, no tab
    // The stored order first, then the values it does not name.
    EXPECT_EQ(dialog.FindTab(4)->sequence, (std::vector<std::string>{"Function", "Pain"}));
    ASSERT_NE(dialog.FindTab(6), nullptr);
    EXPECT_EQ(dialog.FindTab(6)->moderator, "Arm");
    EXPECT_TRUE(dialog.Marked(6));
    EXPECT_EQ(dialog.Current().moderators, stored.moderators);
    EXPECT_EQ(dialog.Current().Level(4).use, LevelUse::One);

    // Using all rows asks first; "No" keeps the option as it was.
    f.prompter.answers.push_back(ports::Answer::No);
    dialog.SetUse(4, LevelUse::All);
    EXPECT_EQ(dialog.FindTab(4)->use, LevelUse::One);
    EXPECT_TRUE(f.prompter.shown.back().question);

    dialog.MoveDown(4, 0);
    EXPECT_EQ(dialog.FindTab(4)->sequence, (std::vector<std::string>{"Pain", "Function"}));
    EXPECT_EQ(Dialog::UseCaption(3, LevelUse::One),
              "Use the first comparison, based on the following sequence");

    dialog.SetUse(4, LevelUse::Mean);
    EXPECT_FALSE(dialog.Click(Dialog::Button::Ok));
    EXPECT_EQ(f.prompter.Last(),
              "Invalid selection|Cannot select 'Use the mean' for comparisons, outcomes, or time "
              "points     |when using a Mantel Haenszel effect measure.     ");
    EXPECT_FALSE(dialog.Applying());
    EXPECT_EQ(analysis::ReadSelection(f.sheet.Flex()), stored);  // nothing was saved

    dialog.ResetPanel(4);
    dialog.SelectAll(6);
    EXPECT_TRUE(dialog.Click(Dialog::Button::Ok));
    const Selection saved = analysis::ReadSelection(f.sheet.Flex());
    EXPECT_TRUE(saved.moderators.empty());
    EXPECT_EQ(saved.Level(4).use, LevelUse::All);
    EXPECT_EQ(f.analysis.selection, saved);
}

}  // namespace
}  // namespace synthara::testing
