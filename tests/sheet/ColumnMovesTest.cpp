#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sheet/BlockTestSheet.h"
#include "sheet/blocks/ColumnMoves.h"

namespace synthara::sheet {
namespace {

constexpr std::string_view kMeansBlock = "Independent groups (means, SD's)";

class ColumnMovesTest : public BlockTestSheet {
  protected:
    ColumnMovesTest() {
        sheet.MakePop(4);
        AddBlock(kCohort);
        AddBlock(kMeans);
        a = BlockCols(kCohortBlock);
        m = BlockCols(kMeansBlock);
    }
    int FirstFree() const {
        for (int c = sheet.Flex().FixedCols(); c < sheet.Flex().Cols(); ++c) {
            if (sheet.MetaIs(c, MetaRow::Function, "Empty") && Shown(c)) return c;
        }
        return -1;
    }
    std::vector<std::string> Roles(std::string_view block) const {
        std::vector<std::string> roles;
        for (int c : BlockCols(block))
            roles.push_back(sheet.Meta(c, MetaRow::Attribute) + "#" +
                            sheet.Meta(c, MetaRow::BlockSeq));
        return roles;
    }
    std::vector<int> a;
    std::vector<int> m;
};

TEST_F(ColumnMovesTest, DragRefusals) {
    const int study = sheet.GetCol(0, 1);
    const int outcome = sheet.GetCol(0, 4);
    ASSERT_EQ(outcome, study + 1);
    const int odds = DisplayCol("Odds ratio", AttrPoint);
    // The free columns of a new sheet stand between the identifying columns
    // and the blocks.
    const int free = FirstFree();
    ASSERT_EQ(free, outcome + 1);
    const std::string title = "  Cannot move column|";
    struct Case {
        const char* what;
        int from;
        int to;
        std::string box;  // "" when allowed
    };
    const Case cases[] = {
        {"study name", study, free, title + "Columns used to identify study cannot be moved    "},
        {"format name", sheet.NickNameCol(), free, title + "This column cannot be moved    "},
        {"inside its block", a[0], a[3], ""},
        {"just past the block's edge", a[3], m[0],
         title + "Effect size column cannot be moved outside its own block     "},
        {"just before the block", a[1], a[0] - 1,
         title + "Effect size column cannot be moved outside its own block     "},
        {"into another block", a[0], m[3],
         title + "Column may only be moved within its own block   "},
        {"display", odds, free,
         title +
             "Display of computed effects cannot be moved    |Right-click to modify the display"},
        {"free column into a block", free, a[2],
         title + "Column cannot be moved to this position    "},
        {"free column among identifiers", free, outcome,
         title + "Column cannot be moved to this position    "},
        {"free column among results", free, odds + 1,
         title + "Column cannot be moved to this position    "},
        {"free column into the fixed area", free, 3,
         title + "Column cannot be moved to this position    "},
        {"free column among free columns", free, free + 2, ""},
    };
    for (const Case& c : cases) {
        prompter.shown.clear();
        EXPECT_EQ(CanMoveColumn(sheet, c.from, c.to), c.box.empty()) << c.what;
        EXPECT_EQ(prompter.shown.empty() ? "" : LastBox(), c.box) << c.what;
    }
}

TEST_F(ColumnMovesTest, EntryColumnMovedOutOfItsBlockGoesBack) {
    const auto cohortRoles = Roles(kCohortBlock);
    const auto meansRoles = Roles(kMeansBlock);
    const std::string box =
        "Move data entry column |Sorry, data entry column cannot be moved outside its own block   "
        " ";
    // To the first place of the other block, from either side.
    const std::pair<int, int> moves[] = {{a[0], m[0]}, {m[0], a[0]}, {a[3], m[2]}};
    for (const auto& [from, to] : moves) {
        prompter.shown.clear();
        sheet.MoveColumn(from, to);
        EXPECT_FALSE(RepositionEntryCols(sheet, from, to)) << from << "->" << to;
        EXPECT_EQ(LastBox(), box);
        EXPECT_EQ(BlockCols(kCohortBlock), a);
        EXPECT_EQ(Roles(kCohortBlock), cohortRoles);
        EXPECT_EQ(Roles(kMeansBlock), meansRoles);
    }
}

TEST_F(ColumnMovesTest, MoveWithinTheBlockRenumbersIt) {
    sheet.MoveColumn(a[0], a[2]);
    EXPECT_TRUE(RepositionEntryCols(sheet, a[0], a[2]));
    EXPECT_TRUE(prompter.shown.empty());
    const std::vector<std::string> expected = {"Group-A Total N#1", "Group-B Events#2",
                                               "Group-A Events#3", "Group-B Total N#4"};
    EXPECT_EQ(Roles(kCohortBlock), expected);

    // Gathering keeps the user's order; a column pulled away comes back.
    sheet.MoveColumn(a[1], sheet.Flex().Cols() - 1);
    MoveEntryCols(sheet, std::string(kCohort), std::string(kCohortBlock));
    EXPECT_EQ(BlockCols(kCohortBlock), a);
    EXPECT_EQ(Roles(kCohortBlock), expected);

    // The block gathers where its first column by BlockSeq stands.
    sheet.MoveColumn(a[0], sheet.Flex().Cols() - 1);
    MoveEntryCols(sheet, std::string(kCohort), std::string(kCohortBlock));
    const int n = sheet.Flex().Cols();
    EXPECT_EQ(BlockCols(kCohortBlock), (std::vector<int>{n - 4, n - 3, n - 2, n - 1}));
    EXPECT_EQ(Roles(kCohortBlock), expected);
}

TEST(PlaceColumnsTest, SetsColumnsSideBySideKeepingTheRest) {
    struct Case {
        std::vector<int> cols;
        int before;
        std::string order;
    };
    const Case cases[] = {
        {{5, 1, 3}, 2, "0513246"}, {{5, 1, 3}, 7, "0246513"},
        {{5, 1, 3}, 0, "5130246"}, {{1, 2}, 1, "0123456"},  // already in place
        {{4, 2}, 4, "0134256"},                             // `before` is itself one of them
        {{6, 6, 9}, 0, "6012345"},                          // repeats and strays are ignored
    };
    for (const Case& c : cases) {
        Grid grid;
        grid.SetRows(1);
        grid.SetCols(7);
        for (int i = 0; i < 7; ++i)
            grid.SetColKey(i, std::to_string(i));
        PlaceColumns(grid, c.cols, c.before);
        std::string order;
        for (int i = 0; i < grid.Cols(); ++i)
            order += grid.Col(i).key;
        EXPECT_EQ(order, c.order) << c.before;
    }
}

}  // namespace
}  // namespace synthara::sheet
