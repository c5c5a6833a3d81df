#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sheet/BlockTestSheet.h"
#include "sheet/blocks/BlockTable.h"
#include "sheet/blocks/BlockWizard.h"

namespace synthara::sheet {
namespace {

const std::string kCreatedBox =
    "  Data-entry block created|The data-entry block has been created successfully        |Click "
    "'Finish' to close the wizard and return to the spreadsheet.";

class BlockWizardTest : public BlockTestSheet {
  protected:
    // Everything a user could tell apart: columns, keys, visibility, fixed
    // rows and the first data rows.
    std::vector<std::string> Snapshot() const {
        std::vector<std::string> out{std::to_string(sheet.Flex().FixedCols())};
        for (int c = 0; c < sheet.Flex().Cols(); ++c) {
            std::string column = sheet.Flex().Col(c).key + (Shown(c) ? "+" : "-");
            for (int r = 0; r < FixedRowCount + 3; ++r)
                column += "|" + sheet.Flex().Text(r, c);
            out.push_back(std::move(column));
        }
        return out;
    }
    int UserColumn(std::string title, std::string firstValue) {
        const int col = sheet.GetCol(0, 1) + 2;
        sheet.SetMeta(col, MetaRow::ColumnHeader, std::move(title));
        sheet.SetMeta(col, MetaRow::Renamed, "Manual");
        sheet.SetMeta(col, MetaRow::Function, "Moderator");
        sheet.SetText(FixedRowCount, col, std::move(firstValue));
        return col;
    }
};

TEST_F(BlockWizardTest, OnlyFormatsOfTheTreeCanBeChosen) {
    BlockWizard wizard(sheet);
    const std::string_view allOnly = "Matched 2x2 table";
    EXPECT_FALSE(wizard.ChooseFormat(allOnly));
    EXPECT_FALSE(wizard.ChooseFormat("Events and sample size"));  // another study type
    wizard.commonOnly = false;
    EXPECT_TRUE(wizard.ChooseFormat(allOnly));
}

TEST_F(BlockWizardTest, CreatesABlockEndToEnd) {
    const int study = sheet.GetCol(0, 1);
    BlockWizard wizard(sheet);
    ASSERT_TRUE(wizard.ChooseFormat(kCohort));
    ASSERT_EQ(wizard.Combos().size(), 4u);
    const RoleCombo& first = wizard.Combos()[0];
    EXPECT_EQ(first.role, "Group-A Events");
    EXPECT_EQ(first.entries[0].text, "Not specified");
    EXPECT_EQ(first.entries[1].text, "Create new column");
    EXPECT_EQ(first.selected, 0);
    // Free lettered columns are offered; the study names are not.
    for (const ComboEntry& e : first.entries)
        EXPECT_NE(e.col, study);
    EXPECT_GT(first.entries.size(), 20u);

    wizard.Combos()[2].selected = 1;  // "Create new column" creates too
    ASSERT_TRUE(wizard.CreateBlock());
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_FALSE(prompter.shown[0].question);
    EXPECT_EQ(LastBox(), kCreatedBox);
    // The combos now name the block's own columns.
    const std::vector<int> cols = BlockCols(kCohortBlock);
    ASSERT_EQ(cols.size(), 4u);
    for (std::size_t i = 0; i < cols.size(); ++i)
        EXPECT_EQ(wizard.Combos()[i].ChosenCol(), cols[i]);

    // The layout of the finished block is BlockTableTest's subject.
    ASSERT_TRUE(wizard.Finish());
    EXPECT_TRUE(wizard.Leave());  // done: no question
    sheet.FindESCols(kCohort);    // would complain of a role without exactly one column
    EXPECT_EQ(prompter.shown.size(), 1u);
}

TEST_F(BlockWizardTest, RolesTakeOverExistingColumnsAndAreNotOfferedTwice) {
    const int deaths = UserColumn("Deaths A", "7");
    BlockWizard wizard(sheet);
    ASSERT_TRUE(wizard.ChooseFormat(kCohort));
    ASSERT_TRUE(wizard.ComboOf("Group-A Events")->SelectCol(deaths));
    ASSERT_TRUE(wizard.Finish());

    const std::vector<int> cols = BlockCols(kCohortBlock);
    ASSERT_EQ(cols.size(), 4u);
    EXPECT_EQ(cols[0], deaths);
    EXPECT_EQ(sheet.ColumnLabel(deaths), "Deaths A");
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount, deaths), "7");
    EXPECT_EQ(sheet.Meta(deaths, MetaRow::Attribute), "Group-A Events");
    EXPECT_EQ(sheet.Meta(deaths, MetaRow::NumDecs), "0");
    EXPECT_EQ(sheet.Meta(cols[3], MetaRow::BlockSeq), "4");

    // The same format again: the combos refer to the block on the sheet, and
    // finishing adds no second block.
    const int count = sheet.Flex().Cols();
    BlockWizard again(sheet);
    ASSERT_TRUE(again.ChooseFormat(kCohort));
    for (std::size_t i = 0; i < cols.size(); ++i)
        EXPECT_EQ(again.Combos()[i].ChosenCol(), cols[i]);
    ASSERT_TRUE(again.Finish());
    EXPECT_EQ(sheet.Flex().Cols(), count);
    EXPECT_EQ(BlockCols(kCohortBlock), cols);
    EXPECT_EQ(sheet.View.Tabs.size(), 1u);
}

TEST_F(BlockWizardTest, OneColumnForTwoRolesIsRefused) {
    const int deaths = UserColumn("Deaths A", "7");
    BlockWizard wizard(sheet);
    ASSERT_TRUE(wizard.ChooseFormat(kCohort));
    wizard.Combos()[0].SelectCol(deaths);
    wizard.Combos()[2].SelectCol(deaths);
    const int count = sheet.Flex().Cols();
    EXPECT_FALSE(wizard.Finish());
    EXPECT_EQ(LastBox(),
              " Assign columns|The column Deaths A is selected for more than one role     |Please "
              "select a different column for each role");
    EXPECT_EQ(sheet.Flex().Cols(), count);
    EXPECT_EQ(sheet.Meta(deaths, MetaRow::Function), "Moderator");
}

TEST_F(BlockWizardTest, AbandonPutsTheSheetBack) {
    AddBlock(kCohort);
    const std::vector<std::string> before = Snapshot();
    const BlockView view = sheet.View;

    BlockWizard wizard(sheet);
    ASSERT_TRUE(wizard.ChooseFormat(kMeans));
    ASSERT_TRUE(wizard.CreateBlock());
    ASSERT_NE(Snapshot(), before);

    prompter.answers = {ports::Answer::No, ports::Answer::Yes};
    EXPECT_FALSE(wizard.Leave());
    EXPECT_EQ(LastBox(), " Confirm exit |Abandon any changes and return to spreadsheet?     ");
    EXPECT_TRUE(prompter.shown.back().question);
    EXPECT_FALSE(BlockCols("Independent groups (means, SD's)").empty());

    EXPECT_TRUE(wizard.Leave());
    EXPECT_EQ(Snapshot(), before);
    EXPECT_EQ(sheet.View.Tabs, view.Tabs);
    EXPECT_EQ(sheet.View.PrimaryIndex, view.PrimaryIndex);
    EXPECT_EQ(sheet.View.Borders, view.Borders);
    EXPECT_EQ(DisplayCol("Odds ratio", AttrPoint), BlockCols(kCohortBlock).back() + 1);
}

}  // namespace
}  // namespace synthara::sheet
