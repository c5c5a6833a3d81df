#include "sheet/rows/SheetCheck.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "SampleProject.h"
#include "support/ScriptedPrompter.h"

namespace synthara::sheet {
namespace {

using Lines = std::vector<std::string>;

const std::string kDuplicate =
    "Duplicate row found|The following row appears more than once                   |";

class SheetCheckTest : public ::testing::Test {
  protected:
    SheetCheckTest() : sheet(prompter) { sheet.InitializeGrid(); }

    // Study name and subgroup columns, one block and a categorical and a
    // numeric moderator.
    void Furnish() {
        study = sheet.MakePop(1);
        subgroup = sheet.MakePop(2);
        entry = sample::AddBlock(sheet, sample::kEvents);
        region = sample::AddModerator(sheet, "Region", "Categorical");
        year = sample::AddModerator(sheet, "Year", "Integer");
    }
    void Row(int i, const std::string& name, const std::string& sub, const std::string& events) {
        sheet.SetText(FixedRowCount + i, study, name);
        sheet.SetText(FixedRowCount + i, subgroup, sub);
        sheet.SetText(FixedRowCount + i, entry, events);
    }
    bool Check(const std::string& title, const Lines& lines) {
        prompter.shown.clear();
        const bool passed = CheckData(sheet);
        EXPECT_EQ(prompter.Only(), prompter.Text({title, lines}));
        return passed;
    }

    testing::ScriptedPrompter prompter;
    Sheet sheet;
    int study = -1, subgroup = -1, entry = -1, region = -1, year = -1;
};

TEST_F(SheetCheckTest, MissingColumnsAreReportedInOrder) {
    // No column at all: the study column is asked for first.
    EXPECT_FALSE(Check("Column for study names missing",
                       {"The program requires a 'Study names' column.      ",
                        "If this column exists, double-click that column heading.      ",
                        "Otherwise, select 'Insert ... Column for... Study names'.     "}));
    EXPECT_EQ(prompter.shown[0].box.icon, ports::Icon::Information);
    study = sheet.MakePop(1);
    EXPECT_FALSE(
        Check("Columns for effect size missing",
              {"The program requires a set of columns for the effect size data.      ",
               "If these columns exist select 'Identify ... Columns with effect size data'     ",
               "Otherwise, select 'Insert ... Column for... Effect size data'.     "}));
}

TEST_F(SheetCheckTest, OnlyEmptyRowsFailAtNoData) {
    Furnish();
    EXPECT_FALSE(Check("No data found",
                       {"Please enter data before proceeding to analysis                "}));
}

TEST_F(SheetCheckTest, MissingStudyNamesAreCountedAndPaintedRed) {
    Furnish();
    Row(0, "Smith", "", "4");
    Row(1, "", "", "5");
    Row(3, " ", "Men", "6");  // one blank is a name
    EXPECT_FALSE(
        Check("Study name missing", {"One row is missing the study name.    ",
                                     "Please enter the name and re-run the analysis.    ",
                                     "To remove the red background use the 'Tools' menu.    "}));
    EXPECT_EQ(sheet.Flex().CellBackColor(FixedRowCount + 1, study), kRed);
    EXPECT_EQ(sheet.Flex().CellBackColor(FixedRowCount + 3, study), kNoBackColor);
    EXPECT_EQ(sheet.Flex().CellBackColor(FixedRowCount + 2, study), kNoBackColor);  // empty row

    Row(2, "", "", "7");
    EXPECT_FALSE(
        Check("Study name missing", {"2 rows are missing the study name.    ",
                                     "Please enter the names and re-run the analysis.    ",
                                     "To remove the red background use the 'Tools' menu.    "}));
    // The sheet wasn't touched beyond the red: no "Blank" before the names are there.
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount, subgroup), "");

    RemoveRedBackColor(sheet);
    EXPECT_EQ(sheet.Flex().CellBackColor(FixedRowCount + 1, study), kNoBackColor);
    EXPECT_EQ(sheet.Flex().CellBackColor(FixedRowCount + 2, study), kNoBackColor);
}

TEST_F(SheetCheckTest, BlankCellsTakeTheWordBlankAndMakeDuplicates) {
    Furnish();
    Row(0, "Smith", "", "4");
    Row(1, "Jones", "Women", "5");
    Row(2, "Smith", "Blank", "6");
    prompter.shown.clear();
    EXPECT_FALSE(CheckData(sheet));
    EXPECT_EQ(prompter.Only(), kDuplicate + "Smith, Blank, , , ");
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount, subgroup), "Blank");
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount, region), "Blank");
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount, year), "");          // only categorical moderators
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount + 3, subgroup), "");  // nor empty rows
}

TEST_F(SheetCheckTest, DuplicatesAreFoundWhereverTheRowsStand) {
    struct Case {
        const char* name;
        std::vector<std::pair<std::string, std::string>> rows;  // study, subgroup
        std::string duplicate;                                  // "" when the check passes
    };
    const Case cases[] = {
        {"distinct", {{"A", "1"}, {"A", "2"}, {"B", "1"}}, ""},
        {"case differs", {{"Smith", "x"}, {"smith", "x"}}, ""},
        {"case between", {{"A", "x"}, {"a", "x"}, {"A", "x"}}, "A, x, , , "},
        {"numbers", {{"10", "x"}, {"9", "x"}, {"10", "x"}}, "10, x, , , "},
        {"one blank name", {{" ", "x"}, {"B", "x"}}, ""},
        {"first of two pairs", {{"Z", "1"}, {"C", "1"}, {"Z", "1"}, {"C", "1"}}, "C, 1, , , "},
        // Rows are told apart by their joined keys, not cell by cell.
        {"same key from other cells", {{"A, B", "C"}, {"A", "B, C"}}, "A, B, C, , , "},
    };
    Furnish();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        for (int r = FixedRowCount; r < sheet.Flex().Rows(); ++r)
            for (int col = 0; col < sheet.Flex().Cols(); ++col)
                sheet.ClearCell(r, col);
        int i = 0;
        for (const auto& [name, sub] : c.rows)
            Row(i++, name, sub, "1");
        prompter.shown.clear();
        EXPECT_EQ(CheckData(sheet), c.duplicate.empty());
        EXPECT_EQ(prompter.Only(), c.duplicate.empty() ? "<0 boxes>" : kDuplicate + c.duplicate);
    }
}

TEST_F(SheetCheckTest, CheckCommandSaysSoOnSuccess) {
    Furnish();
    Row(0, "Smith", "", "4");
    EXPECT_TRUE(CheckDataCommand(sheet));
    EXPECT_EQ(prompter.Only(),
              "Check complete|The spreadsheet format is correct.|Select 'Analyses ... Run "
              "analyses' to proceed.      ");
}

}  // namespace
}  // namespace synthara::sheet
