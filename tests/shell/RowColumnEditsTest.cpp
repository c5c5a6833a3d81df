// Whole rows and columns on the open project: their refusals and questions,
// what a delete, copy, insert or drag leaves behind, and the highlights.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sheet/grid/MetaRows.h"
#include "sheet/grid/SheetColors.h"
#include "shell/Document.h"
#include "support/ScriptedPrompter.h"

namespace synthara::shell {
namespace {

namespace fs = std::filesystem;
using sheet::FixedRowCount;
using sheet::MetaRow;

class RowColumnEditsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const fs::path file =
            fs::path(::testing::TempDir()) /
            ("RowColumnEditsTest." +
             std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".csv");
        std::ofstream(file) << "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B "
                               "Total N\n"
                               "Aronson,4,123,11,139\n"
                               "Ferguson,6,306,29,303\n"
                               "Rosenthal,3,231,11,220\n";
        ASSERT_TRUE(
            document.Open(file, OpenSettings::ForFormat("Events and sample size in each group"))
                .ok());
        fs::remove(file);
        prompter.shown.clear();
    }
    const sheet::Sheet& Sheet() const { return document.Sheet(); }
    int StudyCol() const { return Sheet().GetCol(0, 1); }
    int FirstCol(const char* function) const {
        for (int c = 0; c < Sheet().Flex().Cols(); ++c)
            if (Sheet().MetaIs(c, MetaRow::Function, function)) return c;
        return -1;
    }
    // The primary index's point estimate.
    int PointCol() const {
        for (int c = 0; c < Sheet().Flex().Cols(); ++c)
            if (Sheet().MetaIs(c, MetaRow::DisplayClass, "Primary")) return c;
        return -1;
    }
    std::vector<std::string> Studies() const {
        std::vector<std::string> names;
        for (int i = 0; i < document.DataRows(); ++i)
            names.push_back(document.StudyName(i));
        return names;
    }
    std::string Point(int row) const { return document.DisplayText(row, PointCol()); }
    // A refusal shows one box and leaves the grid untouched.
    void ExpectRefused(bool done, const std::string& box) {
        EXPECT_FALSE(done);
        EXPECT_EQ(prompter.Only(), box);
        EXPECT_EQ(Sheet().Flex().Revision(), revision);
        prompter.shown.clear();
    }

    testing::ScriptedPrompter prompter;
    Document document{prompter};
    std::uint64_t revision = 0;
};

using Strings = std::vector<std::string>;

TEST_F(RowColumnEditsTest, RowCommandsRefuseWithTheirOwnWords) {
    revision = Sheet().Flex().Revision();
    ExpectRefused(document.CopyRow(-1), "Synthara|Please select the row to be copied       ");
    ExpectRefused(document.DeleteRows(0, 0),
                  "  Cannot delete columns|The title row cannot be deleted    ");
    prompter.answers = {ports::Answer::No};
    ExpectRefused(document.DeleteRows(FixedRowCount + 1, FixedRowCount),
                  " Confirm delete rows|Ok to delete 2 rows?                   ");
    prompter.answers = {ports::Answer::No};
    ExpectRefused(document.DeleteRows(FixedRowCount, FixedRowCount),
                  " Confirm delete row|Ok to delete one row?                   ");
    EXPECT_EQ(Studies(), (Strings{"Aronson", "Ferguson", "Rosenthal"}));
}

TEST_F(RowColumnEditsTest, DeletedRowsTakeTheirDataAndTheRestStaysComputed) {
    const std::string ferguson = Point(FixedRowCount + 1);
    const std::string rosenthal = Point(FixedRowCount + 2);
    ASSERT_FALSE(ferguson.empty());
    prompter.answers = {ports::Answer::Yes};
    EXPECT_TRUE(document.DeleteRows(FixedRowCount, FixedRowCount));
    EXPECT_EQ(Studies(), (Strings{"Ferguson", "Rosenthal"}));
    EXPECT_EQ(Point(FixedRowCount), ferguson);
    EXPECT_EQ(Point(FixedRowCount + 1), rosenthal);
    EXPECT_EQ(document.RowFormat(1), "Events and sample size in each group");
    // The row left at the end is blank to its system cells and results.
    const sheet::Grid& flex = Sheet().Flex();
    const int last = FixedRowCount + 2;
    for (int c = 1; c < flex.Cols(); ++c) {
        if (c == Sheet().EntrySeqCol()) continue;
        EXPECT_TRUE(flex.IsBlank(last, c)) << "column " << c;
    }
    EXPECT_EQ(flex.CellBackColor(last, PointCol()), sheet::kDisplayBackColor);
    EXPECT_EQ(flex.Text(FixedRowCount + 1, Sheet().EntrySeqCol()), "2");
    EXPECT_TRUE(document.Dirty());
}

TEST_F(RowColumnEditsTest, CopiedAndInsertedRowsPushTheRowsBelowDown) {
    const int rows = Sheet().Flex().Rows();
    EXPECT_TRUE(document.CopyRow(FixedRowCount + 1));
    EXPECT_EQ(Studies(), (Strings{"Aronson", "Ferguson", "Ferguson", "Rosenthal"}));
    EXPECT_EQ(Point(FixedRowCount + 2), Point(FixedRowCount + 1));
    EXPECT_EQ(document.RowFormat(2), "Events and sample size in each group");

    EXPECT_TRUE(document.InsertRows(FixedRowCount + 1, 2));
    EXPECT_EQ(Studies(), (Strings{"Aronson", "", "", "Ferguson", "Ferguson", "Rosenthal"}));
    EXPECT_TRUE(Point(FixedRowCount + 1).empty());
    EXPECT_EQ(Sheet().Flex().Text(FixedRowCount + 5, 0), "6");
    // Blank rows below the data made room; the sheet did not grow.
    EXPECT_EQ(Sheet().Flex().Rows(), rows);
    EXPECT_FALSE(document.InsertRows(0, 1));
}

TEST_F(RowColumnEditsTest, ARowDraggedMayNotSplitAnotherStudy) {
    ASSERT_TRUE(document.CopyRow(FixedRowCount));  // Aronson, Aronson, Ferguson, Rosenthal
    prompter.shown.clear();
    revision = Sheet().Flex().Revision();
    ExpectRefused(document.MoveRow(FixedRowCount + 3, FixedRowCount + 1),
                  "Synthara|A study cannot be moved into the middle of another study   ");

    const std::string rosenthal = Point(FixedRowCount + 3);
    EXPECT_TRUE(document.MoveRow(FixedRowCount + 3, FixedRowCount));
    EXPECT_EQ(Studies(), (Strings{"Rosenthal", "Aronson", "Aronson", "Ferguson"}));
    EXPECT_EQ(Point(FixedRowCount), rosenthal);
    EXPECT_EQ(Sheet().Flex().Text(FixedRowCount, Sheet().TempSeqCol()), "00000");
    EXPECT_EQ(Sheet().Flex().Text(FixedRowCount + 3, Sheet().TempSeqCol()), "00003");
    EXPECT_EQ(Sheet().Flex().Text(FixedRowCount + 3, 0), "4");
    // Down, between Ferguson and the blank rows.
    EXPECT_TRUE(document.MoveRow(FixedRowCount, FixedRowCount + 3));
    EXPECT_EQ(Studies(), (Strings{"Aronson", "Aronson", "Ferguson", "Rosenthal"}));
}

TEST_F(RowColumnEditsTest, OnlyTheUsersColumnsAreCopied) {
    revision = Sheet().Flex().Revision();
    const std::string title = "  Cannot copy this column|";
    ExpectRefused(document.CopyColumn(-1), title + "Please select the column to be copied.     ");
    ExpectRefused(document.CopyColumn(FirstCol("Data Entry")),
                  title +
                      "Column used for computing effect sizes cannot be copied automatically.     |"
                      "You may highlight all cells in the column and then Copy and Paste to new "
                      "column.    ");
    ExpectRefused(document.CopyColumn(PointCol()),
                  title + "Column of computed effect sizes cannot be copied.     ");
    ExpectRefused(document.CopyColumn(Sheet().NickNameCol()),
                  title + "Column of format names cannot be copied.     ");
    ExpectRefused(document.CopyColumn(0), title + "Please select the column to be copied.     ");
}

TEST_F(RowColumnEditsTest, ACopiedColumnIsPlainDataRightOfTheOriginal) {
    // A moderator typed into the first free column.
    const int study = StudyCol();
    const int free = study + 1;
    ASSERT_TRUE(document.EditCell(FixedRowCount, free, "Europe"));
    ASSERT_TRUE(document.CopyColumn(free));
    EXPECT_EQ(Sheet().Meta(free + 1, MetaRow::ColumnHeader), "Copy of " + Sheet().Meta(free, 0));
    EXPECT_EQ(Sheet().Meta(free + 1, MetaRow::Renamed), "Manual");
    EXPECT_EQ(Sheet().Flex().Text(FixedRowCount, free + 1), "Europe");

    // The copy of the study names is no second study column.
    ASSERT_TRUE(document.CopyColumn(study));
    EXPECT_EQ(StudyCol(), study);
    EXPECT_EQ(Sheet().Meta(study + 1, MetaRow::ColumnHeader), "Copy of Study name");
    EXPECT_EQ(Sheet().Meta(study + 1, MetaRow::Function), "Unknown");
    EXPECT_EQ(Sheet().Flex().Text(FixedRowCount + 2, study + 1), "Rosenthal");
    EXPECT_TRUE(Sheet().Flex().Col(study + 1).key.empty());
}

TEST_F(RowColumnEditsTest, ColumnDeletesRefuseTheProgramsColumns) {
    revision = Sheet().Flex().Revision();
    const std::string title = "  Cannot delete columns|";
    ExpectRefused(
        document.DeleteColumns(0, 2),
        title + "The range of columns includes hidden columns which cannot be deleted    ");
    ExpectRefused(document.DeleteColumns(0, 0),
                  title +
                      "The first column (containing row numbers) cannot be deleted.  Be sure "
                      "to highlight the correct column.    ");
    ExpectRefused(document.DeleteColumns(StudyCol(), FirstCol("Data Entry")),
                  title +
                      "To delete columns that are used for entering effect size data     |"
                      "Right-click on those columns and select 'Delete this data entry "
                      "block'.     ");
    ExpectRefused(document.DeleteColumns(PointCol(), PointCol()),
                  title +
                      "To hide column that displays effect size       |Right-click on the "
                      "column and select 'Customize display'.   ");
    // A second block brings the column of format names into view.
    ASSERT_TRUE(document.AddBlock("Events and non-events in each group"));
    revision = Sheet().Flex().Revision();
    ExpectRefused(document.DeleteColumns(Sheet().NickNameCol(), Sheet().NickNameCol()),
                  title + "This column cannot be deleted.             ");
}

TEST_F(RowColumnEditsTest, DeletingColumnsAsksFirst) {
    const int study = StudyCol();
    const int cols = Sheet().Flex().Cols();
    ASSERT_TRUE(document.EditCell(FixedRowCount, study + 2, "x"));
    revision = Sheet().Flex().Revision();
    prompter.answers = {ports::Answer::No};
    ExpectRefused(document.DeleteColumns(study + 1, study + 2),
                  " Confirm delete columns|Ok to delete 2 columns?                   ");
    prompter.answers = {ports::Answer::Yes};
    EXPECT_TRUE(document.DeleteColumns(study + 1, study + 2));
    EXPECT_EQ(Sheet().Flex().Cols(), cols - 2);
    EXPECT_EQ(prompter.Only(),
              " Confirm delete columns|Ok to delete 2 columns?                   ");
    EXPECT_EQ(StudyCol(), study);
    // The rows still compute from their entry columns, which moved left.
    prompter.shown.clear();
    EXPECT_FALSE(Point(FixedRowCount).empty());
}

TEST_F(RowColumnEditsTest, HighlightsComeOffLeavingTheProgramsColours) {
    const sheet::Grid& flex = Sheet().Flex();
    const int row = FixedRowCount + 1;
    document.HighlightRows(row, row, true);
    EXPECT_EQ(flex.CellBackColor(row, StudyCol()), sheet::kHighlightBackColor);
    EXPECT_EQ(flex.CellBackColor(row, PointCol()), sheet::kHighlightBackColor);
    EXPECT_EQ(flex.CellBackColor(row + 1, StudyCol()), sheet::kNoBackColor);
    document.HighlightRows(row, row, false);
    EXPECT_EQ(flex.CellBackColor(row, StudyCol()), sheet::kNoBackColor);
    EXPECT_EQ(flex.CellBackColor(row, PointCol()), sheet::kDisplayBackColor);

    document.HighlightColumns(PointCol(), PointCol(), true);
    document.HighlightRows(row, row, true);
    EXPECT_EQ(flex.CellBackColor(FixedRowCount, PointCol()), sheet::kHighlightBackColor);
    document.HighlightColumns(PointCol(), PointCol(), false);
    EXPECT_EQ(flex.CellBackColor(FixedRowCount, PointCol()), sheet::kDisplayBackColor);
    EXPECT_EQ(flex.CellBackColor(row, PointCol()), sheet::kDisplayBackColor);
    EXPECT_EQ(flex.CellBackColor(row, StudyCol()), sheet::kHighlightBackColor);
}

}  // namespace
}  // namespace synthara::shell
