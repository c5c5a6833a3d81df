#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "SampleProject.h"
#include "support/ScriptedPrompter.h"

namespace synthara::sheet {
namespace {

using sample::AddBlock;

class BlocksTest : public ::testing::Test {
  protected:
    BlocksTest() : sheet(prompter) { sheet.InitializeGrid(); }

    std::string Class(std::string_view index, int attr) {
        const int col = sheet.DisplayColTable()[static_cast<std::size_t>(IndexNumber(index))]
                                               [static_cast<std::size_t>(attr)];
        return col > 0 ? sheet.Meta(col, MetaRow::DisplayClass) : "<none>";
    }

    testing::ScriptedPrompter prompter;
    Sheet sheet;
};

TEST_F(BlocksTest, CreateAllWritesTheBlockRecord) {
    const int a = AddBlock(sheet, "Events and sample size in each group");
    ASSERT_EQ(sheet.Flex().Cols(), a + 4);
    const std::string roles[] = {"Group-A Events", "Group-A Total N", "Group-B Events",
                                 "Group-B Total N"};
    for (int i = 0; i < 4; ++i) {
        const int c = a + i;
        EXPECT_EQ(sheet.Meta(c, MetaRow::Attribute), roles[i]);
        EXPECT_EQ(sheet.Meta(c, 0), roles[i]);
        EXPECT_EQ(sheet.Meta(c, MetaRow::BlockSeq), std::to_string(i + 1));
        EXPECT_FALSE(sheet.Flex().Col(c).hidden);
    }
    EXPECT_EQ(sheet.Meta(a, MetaRow::LabelPart1), "Group-A");
    EXPECT_EQ(sheet.Meta(a, MetaRow::LabelPart2), "Events");

    // Project words replace the group words of the pieces.
    sheet.SetText(SettingsRow::GroupA, sheet.SettingsCol(), "Treated");
    sheet.SetText(SettingsRow::Events, sheet.SettingsCol(), "Deaths");
    sheet.ApplyGroupNames();
    EXPECT_EQ(sheet.Meta(a, 0), "Treated Deaths");
    EXPECT_EQ(sheet.Meta(a + 1, 0), "Treated Total N");
    EXPECT_EQ(sheet.ColumnLabel(a + 2), "Group-B Deaths");
}

TEST_F(BlocksTest, CodedRolesAreTitledByTheirNames) {
    const int a = AddBlock(sheet, "Means, SD pre and post, N, in each group, Pre/Post Corr");
    const int direction = a + 11;
    const int standardize = a + 12;
    ASSERT_EQ(sheet.Meta(direction, MetaRow::Attribute), "Effect direction");
    ASSERT_EQ(sheet.Meta(standardize, MetaRow::Attribute), "Standardize by");
    // A role that the project's words would otherwise reach.
    sheet.SetMeta(standardize, MetaRow::LabelPart1, "Group-A");
    // A column of the third coded role, as an older file may hold it, untitled.
    const int design = sample::AddModerator(sheet, "", "Study design");
    sheet.SetMeta(design, MetaRow::Function, "Data Entry");
    sheet.SetMeta(design, MetaRow::Attribute, "Study design");

    sheet.SetText(SettingsRow::GroupA, sheet.SettingsCol(), "Treated");
    sheet.ApplyGroupNames();
    const std::pair<int, std::string> titles[] = {
        {direction, "Effect direction"}, {standardize, "Standardize by"}, {design, "Study design"}};
    for (const auto& [col, title] : titles)
        EXPECT_EQ(sheet.Meta(col, 0), title);

    // A title the user gave one of them is not rewritten.
    sheet.SetMeta(direction, MetaRow::ColumnHeader, "Direction");
    sheet.ApplyGroupNames();
    EXPECT_EQ(sheet.Meta(direction, 0), "Direction");
}

TEST_F(BlocksTest, GroupWordsReachOnlyLabelPieces) {
    const int a = AddBlock(sheet, "Events and sample size in each group");
    sheet.CreateDisplayCols("Events and sample size in each group");
    const int odds = sheet.DisplayColTable()[2][AttrPoint];
    const int oddsErr = sheet.DisplayColTable()[2][AttrStdErr];
    sheet.SetMeta(odds, MetaRow::ColumnHeader, "OR (Group-A vs B)");
    sheet.SetMeta(a, MetaRow::ColumnHeader, "Deaths among treated");
    sheet.SetText(SettingsRow::GroupA, sheet.SettingsCol(), "Treated");
    sheet.ApplyGroupNames();
    // Display columns carry no pieces: their titles stand, renamed or not.
    EXPECT_EQ(sheet.Meta(odds, 0), "OR (Group-A vs B)");
    EXPECT_EQ(sheet.Meta(oddsErr, 0), "Odds ratio StdErr");
    // An entry column's title is built from its pieces.
    EXPECT_EQ(sheet.Meta(a, 0), "Treated Events");
}

TEST_F(BlocksTest, DisplayColumnsClassesAndTable) {
    const int before = sheet.Flex().Cols();
    sheet.CreateDisplayCols("Events and sample size in each group");
    EXPECT_EQ(sheet.Flex().Cols(), before + 66 * 5);
    // The first index named for creation ends up rightmost.
    EXPECT_EQ(sheet.Meta(before, MetaRow::IndexName), "Odds ratio");
    EXPECT_EQ(sheet.Meta(before, 0), "Odds ratio");
    EXPECT_EQ(sheet.Meta(before + 1, 0), "Odds ratio StdErr");
    EXPECT_EQ(sheet.Meta(sheet.Flex().Cols() - 1, MetaRow::IndexName), "NPY(0)");
    EXPECT_EQ(sheet.Meta(sheet.Flex().Cols() - 1, MetaRow::Attribute), "Formula");

    EXPECT_EQ(Class("Odds ratio", AttrPoint), "Primary");
    EXPECT_EQ(Class("Odds ratio", AttrStdErr), "Show");
    EXPECT_EQ(Class("Log odds ratio", AttrPoint), "Show");
    EXPECT_EQ(Class("Risk ratio", AttrPoint), "Hide");
    EXPECT_EQ(Class("Event rate", AttrPoint), "<none>");
    const int orPoint = sheet.DisplayColTable()[2][AttrPoint];
    EXPECT_FALSE(sheet.Flex().Col(orPoint).hidden);
    EXPECT_TRUE(sheet.Flex().Col(orPoint + 1).hidden);
    EXPECT_TRUE(sheet.Flex().Col(sheet.DisplayColTable()[4][AttrPoint]).hidden);
    for (int i = 1; i <= IndexCount; ++i) {
        for (int attr = AttrPoint; attr <= AttrFormula; ++attr) {
            const int col =
                sheet
                    .DisplayColTable()[static_cast<std::size_t>(i)][static_cast<std::size_t>(attr)];
            if (col == 0) continue;
            EXPECT_EQ(sheet.Meta(col, MetaRow::IndexName),
                      sheet.IndexNames()[static_cast<std::size_t>(i)]);
            EXPECT_EQ(sheet.Meta(col, MetaRow::Attribute), AttrNames[attr]);
        }
    }

    // A second family: the primary moves, and indices without columns are added.
    const int count = sheet.Flex().Cols();
    sheet.CreateDisplayCols("Events and sample size");
    EXPECT_EQ(sheet.Flex().Cols(), count + 2 * 5);
    EXPECT_EQ(Class("Odds ratio", AttrPoint), "Show");
    EXPECT_EQ(Class("Event rate", AttrPoint), "Primary");
    EXPECT_EQ(Class("Logit event rate", AttrPoint), "Show");
    sheet.CreateDisplayCols("Mean, SD and sample size in each group");
    EXPECT_EQ(sheet.Flex().Cols(), count + 2 * 5);
    EXPECT_EQ(Class("Std diff in means", AttrPoint), "Primary");
    EXPECT_EQ(Class("Event rate", AttrPoint), "Show");
}

TEST_F(BlocksTest, OneGroupFormatShowsItsOwnIndicesPrimaryFirst) {
    const int before = sheet.Flex().Cols();
    sheet.CreateDisplayCols("Events and sample size");
    EXPECT_EQ(sheet.Flex().Cols(), before + 68 * 5);
    const int rate =
        sheet.DisplayColTable()[static_cast<std::size_t>(IndexNumber("Event rate"))][1];
    const int logit =
        sheet.DisplayColTable()[static_cast<std::size_t>(IndexNumber("Logit event rate"))][1];
    EXPECT_LT(rate, logit);
    EXPECT_EQ(sheet.Meta(rate, MetaRow::DisplayClass), "Primary");
    EXPECT_EQ(Class("Odds ratio", AttrPoint), "Hide");
}

TEST_F(BlocksTest, MakePopOncePerLevel) {
    const int study = sheet.MakePop(1);
    EXPECT_EQ(sheet.MakePop(1), study);
    EXPECT_EQ(sheet.MakePop(0), -1);
    EXPECT_EQ(sheet.MakePop(6), -1);
    EXPECT_EQ(sheet.Meta(study, 0), "Study name");

    // The letters step past the new column.
    EXPECT_EQ(sheet.Meta(study + 1, 0), "B");
    const int time = sheet.MakePop(5);
    EXPECT_EQ(time, study + 1);
    EXPECT_EQ(sheet.Meta(time, MetaRow::BlockSeq), "5");
}

}  // namespace
}  // namespace synthara::sheet
