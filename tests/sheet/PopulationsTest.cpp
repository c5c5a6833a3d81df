#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sheet/BlockTestSheet.h"
#include "sheet/blocks/Populations.h"

namespace synthara::sheet {
namespace {

class PopulationsTest : public BlockTestSheet {
  protected:
    // A free column titled by the user.
    int Titled(std::string title, int offset = 3) {
        const int col = sheet.GetCol(0, 1) + offset;
        sheet.SetMeta(col, MetaRow::ColumnHeader, std::move(title));
        sheet.SetMeta(col, MetaRow::Renamed, "Manual");
        return col;
    }
};

TEST_F(PopulationsTest, MakePopSaysWhyItMakesNoColumn) {
    const int study = sheet.GetCol(0, 1);
    sheet.SetMeta(study, MetaRow::ColumnHeader, "Author");
    const int cols = sheet.Flex().Cols();
    EXPECT_EQ(sheet.MakePop(1), study);
    EXPECT_EQ(LastBox(),
              " Column already exists|The column labeled 'Author' is now being used to identify "
              "study name");

    Titled("Outcome");
    EXPECT_EQ(sheet.MakePop(4), -1);
    EXPECT_EQ(LastBox(), " Name in use|The variable name already exists     ");
    EXPECT_EQ(sheet.Flex().Cols(), cols);

    // The outline of the identifying columns takes a new one in.
    const int time = sheet.MakePop(5);
    ASSERT_EQ(sheet.View.Borders.size(), 1u);
    EXPECT_EQ(sheet.View.Borders[0].lastCol, time);
}

TEST_F(PopulationsTest, IdentifyPop) {
    const int study = sheet.GetCol(0, 1);
    const int author = Titled("Author");
    EXPECT_EQ(IdentifyPop(sheet, author, 1), study);
    EXPECT_EQ(LastBox(),
              " Column already exists|The column labeled 'Study name' is now being used to "
              "identify study name");

    // A column the user titled keeps its title and joins the identifying columns.
    sheet.SetText(FixedRowCount, author, "Low dose");
    const int comparison = IdentifyPop(sheet, author, 3);
    EXPECT_EQ(comparison, study + 1);
    EXPECT_EQ(sheet.ColumnLabel(comparison), "Author");
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount, comparison), "Low dose");
    EXPECT_EQ(sheet.Meta(comparison, MetaRow::BlockSeq), "3");

    // A lettered column takes the population's name, unless that name is taken.
    const int lettered = comparison + 2;
    ASSERT_EQ(sheet.Meta(lettered, MetaRow::Renamed), "Auto");
    Titled("Outcome", 6);
    prompter.shown.clear();
    EXPECT_EQ(IdentifyPop(sheet, lettered, 4), -1);
    EXPECT_EQ(LastBox(), " Name in use|The variable name already exists     ");
    const int time = IdentifyPop(sheet, lettered, 5);
    EXPECT_EQ(sheet.ColumnLabel(time), "Time point");
}

TEST_F(PopulationsTest, ColumnsServingAnotherFunctionAreRefused) {
    AddBlock(kCohort);
    const int entry = BlockCols(kCohortBlock)[1];
    const std::string box =
        " Assign function to column|The column Group-A Total N is being used for another "
        "function          |Please click on the correct column and then try again";
    EXPECT_FALSE(IdentifyCols(sheet, entry));
    EXPECT_EQ(LastBox(), box);
    prompter.shown.clear();
    EXPECT_EQ(IdentifyPop(sheet, entry, 2), -1);
    EXPECT_EQ(LastBox(), box);
    EXPECT_EQ(sheet.Meta(entry, MetaRow::Function), "Data Entry");

    const int free = sheet.GetCol(0, 1) + 1;
    ASSERT_EQ(sheet.Meta(free, MetaRow::Function), "Empty");
    EXPECT_TRUE(IdentifyCols(sheet, free));
    EXPECT_EQ(sheet.Meta(free, MetaRow::Function), "Moderator");
}

TEST_F(PopulationsTest, InsertCols) {
    AddBlock(kCohort);
    const int cols = sheet.Flex().Cols();
    const int free = sheet.GetCol(0, 1) + 2;
    // The dialog sees the new column at the right end; cancelling removes it.
    const auto cancel = [&](Sheet& s, int col) {
        EXPECT_EQ(col, cols);
        EXPECT_EQ(s.Meta(col, MetaRow::Function), "Moderator");
        return std::string();
    };
    EXPECT_EQ(InsertCols(sheet, free, cancel), -1);
    EXPECT_EQ(sheet.Flex().Cols(), cols);

    const auto title = [](std::string t) { return [t](Sheet&, int) { return t; }; };
    // On a free column the new one takes its place...
    const int dose = InsertCols(sheet, free, title("Dose"));
    EXPECT_EQ(dose, free);
    EXPECT_EQ(sheet.ColumnLabel(free), "Dose");
    EXPECT_EQ(sheet.Meta(free + 1, MetaRow::Function), "Empty");
    // ...on a block or a moderator it goes after the last moderator.
    const int year = InsertCols(sheet, BlockCols(kCohortBlock)[0], title("Year"));
    EXPECT_EQ(year, dose + 1);
    EXPECT_EQ(InsertCols(sheet, dose, title("Country")), year + 1);
    EXPECT_EQ(sheet.Flex().Cols(), cols + 3);
}

}  // namespace
}  // namespace synthara::sheet
