#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sheet/BlockTestSheet.h"
#include "sheet/blocks/BlockTable.h"
#include "sheet/blocks/CellBorders.h"
#include "sheet/blocks/DisplayColumns.h"

namespace synthara::sheet {
namespace {

constexpr std::string_view kMeansBlock = "Independent groups (means, SD's)";

class BlockTableTest : public BlockTestSheet {
  protected:
    int ShownOf(const std::vector<int>& cols) const {
        int n = 0;
        for (int c : cols)
            n += Shown(c) ? 1 : 0;
        return n;
    }
    // Visible columns of the scrolling area with that Function.
    int ShownWith(std::string_view function) const {
        int n = 0;
        for (int c = sheet.Flex().FixedCols(); c < sheet.Flex().Cols(); ++c)
            n += Shown(c) && sheet.MetaIs(c, MetaRow::Function, function) ? 1 : 0;
        return n;
    }
};

TEST_F(BlockTableTest, OneBlockKeepsTheNicknameHiddenAtTheLeft) {
    const int end = sheet.Flex().Cols();
    AddBlock(kCohort);
    EXPECT_EQ(sheet.View.Tabs, std::vector<std::string>{std::string(kCohortBlock)});
    EXPECT_FALSE(sheet.View.TabsVisible);
    EXPECT_EQ(sheet.NickNameCol(), 1);
    EXPECT_FALSE(Shown(1));
    EXPECT_EQ(sheet.Flex().FixedCols(), 10);
    // The new columns went in at the right end, the free columns stay before
    // them, and the results follow the block.
    const std::vector<int> cols = BlockCols(kCohortBlock);
    EXPECT_EQ(cols, (std::vector<int>{end, end + 1, end + 2, end + 3}));
    EXPECT_EQ(sheet.GetCol(0, 1), 10);
    EXPECT_TRUE(sheet.MetaIs(11, MetaRow::Function, "Empty"));
    EXPECT_EQ(DisplayCol("Odds ratio", AttrPoint), end + 4);
}

TEST_F(BlockTableTest, SecondBlockShowsTabsAndFreezesTheNickname) {
    AddBlock(kCohort);
    AddBlock(kMeans);
    EXPECT_EQ(sheet.View.Tabs,
              (std::vector<std::string>{std::string(kCohortBlock), std::string(kMeansBlock)}));
    EXPECT_TRUE(sheet.View.TabsVisible);
    EXPECT_EQ(sheet.View.CurrentTab, 1);
    // The format name is frozen, last in the fixed area but for EntrySeq; no
    // system column left the fixed area, and the user's columns follow it.
    const int nick = sheet.NickNameCol();
    EXPECT_TRUE(Shown(nick));
    EXPECT_EQ(nick, 8);
    EXPECT_EQ(sheet.EntrySeqCol(), 9);
    EXPECT_EQ(sheet.Flex().FixedCols(), 10);
    for (int col : {sheet.FormatCol(), sheet.MergeTypeCol(), sheet.TempSeqCol(),
                    sheet.SettingsCol(), sheet.ErrorCol()}) {
        EXPECT_LT(col, sheet.Flex().FixedCols()) << col;
        EXPECT_FALSE(Shown(col)) << col;
    }
    EXPECT_EQ(sheet.GetCol(0, 1), 10);
    EXPECT_EQ(BlockCols(kMeansBlock).front(), BlockCols(kCohortBlock).back() + 1);
    // A row holding only a study name is not empty.
    sheet.SetText(FixedRowCount, sheet.GetCol(0, 1), "Smith");
    EXPECT_EQ(sheet.GetLastRow(), FixedRowCount);
    EXPECT_FALSE(sheet.isRowEmpty(FixedRowCount));

    // Laying out again changes nothing, as when a saved sheet is opened.
    AdjustBlocks(sheet);
    EXPECT_EQ(sheet.NickNameCol(), nick);
    EXPECT_EQ(sheet.Flex().FixedCols(), 10);

    // A sheet laid out with the nickname column among the user's columns
    // (before the entries, the fixed area one short) is brought back.
    sheet.MoveColumn(nick, BlockCols(kCohortBlock).front() - 1);
    sheet.SetFixedCols(9);
    AdjustBlocks(sheet);
    EXPECT_EQ(sheet.NickNameCol(), nick);
    EXPECT_EQ(sheet.EntrySeqCol(), 9);
    EXPECT_EQ(sheet.Flex().FixedCols(), 10);

    EXPECT_EQ(SynchTabs(sheet, BlockCols(kCohortBlock)[2]), 0);
    EXPECT_EQ(SynchTabs(sheet, sheet.GetCol(0, 1)), 0);  // not an entry column
}

TEST_F(BlockTableTest, NicknameStaysFrozenWithoutIdentifyingColumns) {
    sheet.InitializeGrid();
    AddBlock(kCohort);
    AddBlock(kMeans);
    EXPECT_TRUE(Shown(sheet.NickNameCol()));
    EXPECT_LT(sheet.NickNameCol(), sheet.Flex().FixedCols());
    EXPECT_EQ(sheet.Flex().FixedCols(), 10);
    EXPECT_EQ(sheet.EntrySeqCol(), 9);
}

TEST_F(BlockTableTest, DisplayModes) {
    AddBlock(kCohort);
    AddBlock(kMeans);  // current; moved the primary index to "Std diff in means"
    struct Case {
        int blockMode;
        int indexMode;
        bool stdErr;
        int cohortShown;
        int meansShown;
        bool nickShown;
        int displayShown;
    };
    const Case cases[] = {
        // Only identifying and free columns remain.
        {HideAllBlocks, ShowNoIndices, true, 0, 0, false, 0},
        {ShowCurrentBlock, ShowPrimaryIndex, false, 0, 7, true, 1},
        // The odds ratios stay selected; the primary's StdErr is "Show" only.
        {ShowAllBlocks, ShowSelectedIndices, false, 4, 7, true, 3},
        {ShowAllBlocks, ShowSelectedIndices, true, 4, 7, true, 6},
    };
    for (const Case& c : cases) {
        sheet.View.BlockDisplay = c.blockMode;
        sheet.View.IndexDisplay = c.indexMode;
        sheet.View.ShowStdErr = c.stdErr;
        ShowBlocks(sheet, sheet.View.CurrentBlock());
        ShowIndices(sheet);
        EXPECT_EQ(ShownOf(BlockCols(kCohortBlock)), c.cohortShown) << c.blockMode;
        EXPECT_EQ(ShownOf(BlockCols(kMeansBlock)), c.meansShown) << c.blockMode;
        EXPECT_EQ(Shown(sheet.NickNameCol()), c.nickShown) << c.blockMode;
        EXPECT_EQ(ShownWith("Display"), c.displayShown) << c.blockMode << c.stdErr;
        EXPECT_EQ(ShownWith("Populations"), 1);
        if (c.stdErr) {
            EXPECT_EQ(Shown(DisplayCol("Odds ratio", AttrStdErr)), c.indexMode == 2);
        }
    }
}

TEST_F(BlockTableTest, SetPrimaryIndex) {
    AddBlock(kCohort);
    EXPECT_FALSE(SetPrimaryIndex(sheet, BlockCols(kCohortBlock).front()));
    ASSERT_TRUE(SetPrimaryIndex(sheet, DisplayCol("Risk ratio", AttrVariance)));
    EXPECT_EQ(sheet.View.PrimaryIndex, "Risk ratio");
    for (int attr = AttrPoint; attr <= AttrFormula; ++attr)
        EXPECT_EQ(sheet.Meta(DisplayCol("Risk ratio", attr), MetaRow::DisplayClass), "Primary");
    EXPECT_EQ(sheet.Meta(DisplayCol("Odds ratio", AttrPoint), MetaRow::DisplayClass), "Show");
    sheet.View.IndexDisplay = ShowPrimaryIndex;
    ShowIndices(sheet);
    EXPECT_TRUE(Shown(DisplayCol("Risk ratio", AttrPoint)));
    EXPECT_FALSE(Shown(DisplayCol("Odds ratio", AttrPoint)));

    // An index brought forward stands after the block, Point first.
    RepositionDisplayCols(sheet, IndexNumber("Risk ratio"));
    const int last = BlockCols(kCohortBlock).back();
    for (int attr = AttrPoint; attr <= AttrFormula; ++attr)
        EXPECT_EQ(DisplayCol("Risk ratio", attr), last + attr) << attr;
}

TEST_F(BlockTableTest, DeleteTabRefusesDataThenAsks) {
    AddBlock(kCohort);
    AddBlock(kMeans);
    const int row = FixedRowCount + 2;
    sheet.SetText(row, sheet.GetCol(0, 1), "Smith");
    sheet.SetText(row, BlockCols(kMeansBlock)[0], "4.5");
    sheet.FindFormats();
    sheet.SetText(row, DisplayCol("Odds ratio", AttrPoint), "1.2");

    EXPECT_FALSE(DeleteTab(sheet, kMeansBlock));
    EXPECT_EQ(LastBox(),
              " Delete data entry block|You need to erase all data in this block before "
              "removing the block   ");

    sheet.ClearCell(row, BlockCols(kMeansBlock)[0]);
    prompter.answers = {ports::Answer::No, ports::Answer::Yes};
    EXPECT_FALSE(DeleteTab(sheet, kMeansBlock));
    EXPECT_TRUE(prompter.shown.back().question);
    EXPECT_EQ(LastBox(),
              " Delete data entry block|Delete Independent groups (means, SD's)|Note that all "
              "computed values will be deleted as well.   ");
    EXPECT_EQ(BlockCols(kMeansBlock).size(), 7u);

    EXPECT_TRUE(DeleteTab(sheet, kMeansBlock));
    EXPECT_TRUE(BlockCols(kMeansBlock).empty());
    for (int col : {sheet.FormatCol(), sheet.NickNameCol(), sheet.MergeTypeCol(),
                    DisplayCol("Odds ratio", AttrPoint)})
        EXPECT_TRUE(sheet.Flex().IsBlank(row, col)) << col;
    EXPECT_EQ(sheet.Flex().Text(row, sheet.GetCol(0, 1)), "Smith");
    // One block again: laid out as one block is.
    EXPECT_FALSE(sheet.View.TabsVisible);
    EXPECT_EQ(sheet.NickNameCol(), 1);
    EXPECT_EQ(sheet.Flex().FixedCols(), 10);
    EXPECT_EQ(sheet.EntrySeqCol(), 9);
}

TEST_F(BlockTableTest, BordersOutlineWhatIsShown) {
    AddBlock(kCohort);
    AddBlock(kMeans);
    const int study = sheet.GetCol(0, 1);
    const std::vector<int> a = BlockCols(kCohortBlock);
    const std::vector<int> b = BlockCols(kMeansBlock);
    const int last = sheet.Flex().Rows() - 1;
    std::vector<CellBorder> expected = {
        {CellBorder::Kind::Populations, study, study, 0, last, ""},
        {CellBorder::Kind::Block, a.front(), a.back(), 0, last, std::string(kCohortBlock)},
        {CellBorder::Kind::Block, b.front(), b.back(), 0, last, std::string(kMeansBlock)},
    };
    EXPECT_EQ(sheet.View.Borders, expected);

    sheet.View.BlockDisplay = ShowCurrentBlock;
    ShowBlocks(sheet, kCohortBlock);
    expected.pop_back();
    EXPECT_EQ(sheet.View.Borders, expected);
}

}  // namespace
}  // namespace synthara::sheet
