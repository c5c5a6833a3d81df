#include "sheet/grid/Sheet.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "SampleProject.h"
#include "support/ScriptedPrompter.h"

namespace synthara::sheet {
namespace {

using sample::AddBlock;

class SheetTest : public ::testing::Test {
  protected:
    SheetTest() : sheet(prompter) { sheet.InitializeGrid(); }

    testing::ScriptedPrompter prompter;
    Sheet sheet;
};

// A new sheet: hidden metadata rows and system columns, 80 numbered rows.
TEST_F(SheetTest, NewSheetShape) {
    const Grid& g = sheet.Flex();
    ASSERT_EQ(g.Rows(), 230);
    ASSERT_EQ(g.Cols(), 40);
    for (int r : {0, 1, 149, 150})
        EXPECT_EQ(g.RowHidden(r), r >= 1 && r <= 149) << r;
    for (int c = 0; c < g.Cols(); ++c)
        EXPECT_EQ(g.Col(c).hidden, c >= 1 && c <= 9) << c;
    EXPECT_EQ(g.Col(0).numberFormat, "");
    EXPECT_EQ(g.Col(39).numberFormat, "0.000");
    EXPECT_EQ(g.Text(0, 0), "");
    EXPECT_EQ(g.Text(150, 0), "1");
    EXPECT_EQ(g.Text(229, 0), "80");
    EXPECT_EQ(g.Text(229, sheet.EntrySeqCol()), "80");
}

TEST_F(SheetTest, EmptySheetAndLastRows) {
    EXPECT_EQ(sheet.GetLastRow(), 150);
    EXPECT_EQ(sheet.FindLastRow(), 150);
    sheet.FindFormats();
    EXPECT_TRUE(sheet.isColEmpty(sheet.FormatCol()));

    // System columns don't make a row count; a lone blank counts only for GetLastRow.
    sheet.SetText(200, sheet.TempSeqCol(), "9");
    EXPECT_TRUE(sheet.isRowEmpty(200));
    sheet.SetText(180, 15, " ");
    EXPECT_EQ(sheet.GetLastRow(), 180);
    EXPECT_EQ(sheet.FindLastRow(), 150);
    sheet.SetText(170, 39, "x");
    EXPECT_EQ(sheet.FindLastRow(), 170);
    EXPECT_FALSE(sheet.isColEmpty(39));
}

TEST_F(SheetTest, AddLettersSkipsHiddenAndManualColumnsKeepTheirTitle) {
    // 30 visible columns: the 27th is "AA".
    EXPECT_EQ(sheet.Meta(10, 0), "A");
    EXPECT_EQ(sheet.Meta(35, 0), "Z");
    EXPECT_EQ(sheet.Meta(36, 0), "AA");

    sheet.SetColHidden(11, true);
    sheet.SetMeta(12, MetaRow::Renamed, "Manual");
    sheet.SetMeta(12, 0, "Dose");
    sheet.SetCols(10 + 60);
    for (int c = 40; c < 70; ++c)
        sheet.SetMeta(c, MetaRow::Renamed, "Auto");
    sheet.AddLetters();
    EXPECT_EQ(sheet.Meta(10, 0), "A");
    EXPECT_EQ(sheet.Meta(12, 0), "Dose");
    EXPECT_EQ(sheet.Meta(13, 0), "C");
    const std::vector<std::pair<int, std::string>> letters = {
        {36, "Z"}, {37, "AA"}, {62, "AZ"}, {63, "BA"}, {69, "BG"}};
    for (const auto& [col, title] : letters)
        EXPECT_EQ(sheet.Meta(col, 0), title) << col;
}

TEST_F(SheetTest, FindFormatsKeepsAFormatOnceGiven) {
    const int a = AddBlock(sheet, "Events and sample size in each group");
    const int b = AddBlock(sheet, "Mean, SD and sample size in each group");
    const int formatCol = sheet.FormatCol();

    sheet.SetText(150, a + 1, "20");
    sheet.SetText(151, b, "3.5");
    sheet.FindFormats();
    EXPECT_EQ(sheet.Flex().Text(150, formatCol), "Events and sample size in each group");
    EXPECT_EQ(sheet.Flex().Text(150, sheet.MergeTypeCol()), "4");
    EXPECT_EQ(sheet.Flex().Text(150, sheet.NickNameCol()), "Cohort 2x2 (Events)");
    EXPECT_EQ(sheet.Flex().Text(151, formatCol), "Mean, SD and sample size in each group");
    EXPECT_EQ(sheet.Flex().Text(151, sheet.MergeTypeCol()), "6");
    EXPECT_TRUE(sheet.Flex().IsBlank(152, formatCol));

    // Typing into the other block, then emptying the row's own cells.
    sheet.SetText(150, b, "1");
    sheet.ClearCell(150, a + 1);
    sheet.FindFormats();
    EXPECT_EQ(sheet.Flex().Text(150, formatCol), "Events and sample size in each group");
    sheet.ClearCell(150, b);
    sheet.FindFormats(150, 150);
    EXPECT_EQ(sheet.Flex().Text(150, formatCol), "Events and sample size in each group");

    // The other block's cells are shaded by its own block number; a row
    // without a format is clear.
    sheet.SetText(151, b, "3.5");
    sheet.FindFormats();
    EXPECT_EQ(sheet.Flex().CellShade(150, a), 0);
    EXPECT_EQ(sheet.Flex().CellShade(150, b + 2), 2);
    EXPECT_EQ(sheet.Flex().CellShade(151, a + 3), 1);
    EXPECT_EQ(sheet.Flex().CellShade(151, b), 0);
    sheet.ClearCell(151, formatCol);
    sheet.GrayBlocks(151, 151);
    EXPECT_EQ(sheet.Flex().CellShade(151, a + 3), 0);
}

TEST_F(SheetTest, FindColsPutsEntrySeqAndPopulationsFirst) {
    const int study = sheet.MakePop(1);
    const int outcome = sheet.MakePop(4);
    EXPECT_EQ(study, 10);
    EXPECT_EQ(outcome, 11);
    sheet.MakePop(3);
    EXPECT_EQ(sheet.GetCol(0, 3), 11);
    EXPECT_EQ(sheet.GetCol(0, 4), 12);

    sheet.MoveColumn(sheet.GetCol(0, 1), 30);
    sheet.MoveColumn(sheet.EntrySeqCol(), 2);
    sheet.MoveColumn(sheet.GetCol(0, 3), 1);
    sheet.FindCols();
    EXPECT_EQ(sheet.EntrySeqCol(), 9);
    EXPECT_EQ(sheet.GetCol(0, 1), 10);
    EXPECT_EQ(sheet.GetCol(0, 3), 11);
    EXPECT_EQ(sheet.GetCol(0, 4), 12);
    EXPECT_EQ(sheet.Flex().ColIndex("Study name"), 10);
    EXPECT_EQ(sheet.GetCol(0, 2), -1);
    EXPECT_EQ(sheet.GetCol(11, 1), -1);
}

TEST_F(SheetTest, SynchDataNumbersStudiesByFirstAppearanceAndSorts) {
    const int study = sheet.MakePop(1);
    const int comparison = sheet.MakePop(3);
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"Beta", "x"}, {"", ""}, {"Alpha", "y"}, {"Beta", "a"}, {"Alpha", "b"}};
    for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
        sheet.SetText(150 + i, study, rows[static_cast<std::size_t>(i)].first);
        sheet.SetText(150 + i, comparison, rows[static_cast<std::size_t>(i)].second);
    }
    sheet.SynchData();
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"Beta", "a"}, {"Beta", "x"}, {"Alpha", "b"}, {"Alpha", "y"}};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(sheet.Flex().Text(150 + i, sheet.GetCol(0, 1)),
                  expected[static_cast<std::size_t>(i)].first);
        EXPECT_EQ(sheet.Flex().Text(150 + i, sheet.GetCol(0, 3)),
                  expected[static_cast<std::size_t>(i)].second);
        EXPECT_EQ(sheet.Flex().Text(150 + i, sheet.EntrySeqCol()), std::to_string(i + 1));
    }
    EXPECT_EQ(sheet.GetLastRow(), 153);
}

TEST_F(SheetTest, FindESColsCountsRolesAndReportsProblems) {
    const int a = AddBlock(sheet, "Events and sample size in each group");
    sheet.FindESCols("Events and sample size in each group");
    EXPECT_EQ(sheet.EntryColIndex()[0], a);
    EXPECT_EQ(sheet.EntryColIndex()[3], a + 3);
    EXPECT_EQ(sheet.EntryColCount()[2], 1);
    EXPECT_TRUE(prompter.shown.empty());

    sheet.FindESCols("Mean, SD and sample size");
    EXPECT_EQ(prompter.Only(),
              "Problem locating columns|Problem locating columns|Mean, SD and sample size");
}

// Nobody refreshes the display-column table by hand: any change of the
// columns, or of what a metadata row says a column is, shows in it.
TEST_F(SheetTest, DisplayColumnTableFollowsTheColumns) {
    AddBlock(sheet, "Events and sample size in each group");
    sheet.CreateDisplayCols("Events and sample size in each group");
    const int point = sheet.DisplayColTable()[1][AttrPoint];
    ASSERT_GT(point, 0);

    sheet.InsertColumn(point);
    EXPECT_EQ(sheet.DisplayColTable()[1][AttrPoint], point + 1);
    sheet.RemoveColumn(point);
    EXPECT_EQ(sheet.DisplayColTable()[1][AttrPoint], point);

    sheet.SetMeta(point, MetaRow::IndexName, "Mean");
    EXPECT_EQ(sheet.DisplayColTable()[1][AttrPoint], 0);
    EXPECT_EQ(sheet.DisplayColTable()[19][AttrPoint], point);

    // Typing into data rows leaves what the columns are alone.
    const std::uint64_t structure = sheet.Flex().StructureRevision();
    sheet.SetText(FixedRowCount, point, "1.5");
    sheet.SetColWidth(point, 1200);
    EXPECT_EQ(sheet.Flex().StructureRevision(), structure);
}

TEST(SheetText, RemoveCRKeepsWordsApart) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"Group-A\r\nEvents", "Group-A Events"},
        {"Group-A \nEvents", "Group-A Events"},
        {"a\rb\nc", "a b c"},
        {"\r\nTitle\r\n", "Title"},
        {"a\r\n\r\nb", "a b"},
        {"plain", "plain"}};
    for (const auto& [in, out] : cases)
        EXPECT_EQ(RemoveCR(in), out);
}

}  // namespace
}  // namespace synthara::sheet
