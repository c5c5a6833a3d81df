#include "sheet/rows/RowEdits.h"

#include <gtest/gtest.h>

#include "sheet/grid/Sheet.h"
#include "support/ScriptedPrompter.h"

namespace synthara::sheet {
namespace {

TEST(RowEditsTest, HiddenRowsInTheRangeAreNotDeleted) {
    testing::ScriptedPrompter prompter;
    Sheet sheet(prompter);
    sheet.InitializeGrid();
    const int col = sheet.Flex().FixedCols();
    for (int r = FixedRowCount; r < FixedRowCount + 3; ++r)
        sheet.SetText(r, col, "row " + std::to_string(r));
    sheet.SetRowHidden(FixedRowCount + 1, true);
    const std::uint64_t revision = sheet.Flex().Revision();
    EXPECT_FALSE(DeleteRows(sheet, FixedRowCount, FixedRowCount + 2));
    EXPECT_EQ(prompter.Only(),
              "  Cannot delete columns|The range of rows includes hidden rows "
              "which cannot be deleted    ");
    EXPECT_EQ(sheet.Flex().Revision(), revision);
    // Below the hidden row, deleting closes the gap and the hidden row moves up.
    prompter.answers = {ports::Answer::Yes};
    EXPECT_TRUE(DeleteRows(sheet, FixedRowCount + 2, FixedRowCount + 2));
    EXPECT_EQ(LastRowInUse(sheet), FixedRowCount + 1);
    EXPECT_TRUE(sheet.Flex().RowHidden(FixedRowCount + 1));
    // Inserting above it moves it down with its text.
    EXPECT_TRUE(InsertRows(sheet, FixedRowCount, 1));
    EXPECT_TRUE(sheet.Flex().RowHidden(FixedRowCount + 2));
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount + 2, col), "row 151");
}

}  // namespace
}  // namespace synthara::sheet
