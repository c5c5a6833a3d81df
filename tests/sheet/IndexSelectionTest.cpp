#include "sheet/blocks/IndexSelection.h"

#include <gtest/gtest.h>

#include "BlockTestSheet.h"

namespace synthara::sheet {
namespace {

class IndexSelectionTest : public BlockTestSheet {
  protected:
    void SetUp() override { sheet.CreateDisplayCols("Events and sample size in each group"); }

    std::string ClassOf(std::string_view index) const {
        const int col =
            sheet.DisplayColTable()[static_cast<std::size_t>(IndexNumber(index))][AttrPoint];
        return sheet.Meta(col, MetaRow::DisplayClass);
    }
    bool Hidden(std::string_view index, int attr) const {
        const int col = sheet.DisplayColTable()[static_cast<std::size_t>(IndexNumber(index))]
                                               [static_cast<std::size_t>(attr)];
        return sheet.Flex().Col(col).hidden;
    }
};

TEST_F(IndexSelectionTest, ApplyShowsTheCheckedIndicesAndThePrimary) {
    IndexSelection selection = InitializeIndexSelection(sheet);
    EXPECT_EQ(selection.primary, "Odds ratio");
    ASSERT_TRUE(SetIndexChecked(selection, "Risk ratio", true, prompter));
    ASSERT_TRUE(SetIndexChecked(selection, "Log odds ratio", false, prompter));
    selection.primary = "Risk ratio";
    selection.showStdErr = true;
    ApplyIndexSelection(sheet, selection);

    EXPECT_EQ(ClassOf("Risk ratio"), "Primary");
    EXPECT_EQ(ClassOf("Odds ratio"), "Show");
    EXPECT_EQ(ClassOf("Log odds ratio"), "Hide");
    EXPECT_EQ(ClassOf("Risk difference"), "Hide");
    EXPECT_EQ(sheet.View.PrimaryIndex, "Risk ratio");
    EXPECT_FALSE(Hidden("Risk ratio", AttrPoint));
    EXPECT_FALSE(Hidden("Risk ratio", AttrStdErr));
    EXPECT_TRUE(Hidden("Log odds ratio", AttrPoint));
    EXPECT_TRUE(Hidden("Odds ratio", AttrVariance));

    // Read back, the dialog shows what was applied.
    const IndexSelection again = InitializeIndexSelection(sheet);
    EXPECT_EQ(again.primary, "Risk ratio");
    EXPECT_TRUE(again.showStdErr);
    EXPECT_FALSE(again.showVariance);

    selection.onlyPrimary = true;
    ApplyIndexSelection(sheet, selection);
    EXPECT_TRUE(Hidden("Odds ratio", AttrPoint));
    EXPECT_FALSE(Hidden("Risk ratio", AttrPoint));
}

TEST_F(IndexSelectionTest, ThePrimaryIndexCannotBeUnchecked) {
    IndexSelection selection = InitializeIndexSelection(sheet);
    EXPECT_FALSE(SetIndexChecked(selection, "Odds ratio", false, prompter));
    EXPECT_EQ(prompter.Only(),
              "Effect size indices|Please change the primary index in the drop-down box|"
              "Otherwise, this index will continue to display");
    for (const IndexSelection::Row& row : selection.rows) {
        if (row.index == "Odds ratio") {
            EXPECT_TRUE(row.checked);
        }
    }
}

}  // namespace
}  // namespace synthara::sheet
