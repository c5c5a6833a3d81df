// What the row dialogs show of a row: the "Formulas" (its indices with their
// trails, where it opens, the rows it refuses) and the data entry
// assistant's roles, values and faults.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "shell/Document.h"
#include "shell/IndexSelection.h"
#include "shell/RowEntries.h"
#include "shell/RowFormulas.h"
#include "support/ScriptedPrompter.h"

namespace synthara::shell {
namespace {

using sheet::FixedRowCount;

class RowDialogContentTest : public ::testing::Test {
  protected:
    void SetUp() override {
        // A file of each test's own: ctest runs the tests side by side.
        const std::string path = ::testing::TempDir() + "RowDialogContentTest." +
                                 ::testing::UnitTest::GetInstance()->current_test_info()->name() +
                                 ".csv";
        std::ofstream(path, std::ios::binary)
            << "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n"
               "Aronson,4,123,11,139\n"
               "Nothing yet,,,,\n"
               "Too many,150,123,11,139\n";
        ASSERT_TRUE(
            document.Open(path, OpenSettings::ForFormat("Events and sample size in each group"))
                .ok());
        std::filesystem::remove(path);
    }
    int PointCol(int index) const {
        return document.Sheet()
            .DisplayColTable()[static_cast<std::size_t>(index)][sheet::AttrPoint];
    }

    testing::ScriptedPrompter prompter;
    Document document{prompter};
};

TEST_F(RowDialogContentTest, ListsEveryIndexWithItsTrailAndOpensOnTheCellsIndex) {
    const int riskRatio = 3;
    const auto formulas = ReadRowFormulas(document, FixedRowCount, PointCol(riskRatio));
    ASSERT_TRUE(formulas);
    EXPECT_EQ(formulas->study, "Aronson");
    EXPECT_EQ(formulas->format, "Events and sample size in each group");
    EXPECT_TRUE(formulas->errors.empty());
    ASSERT_GT(formulas->indices.size(), 3u);
    const IndexFormula& current = formulas->indices[static_cast<std::size_t>(formulas->current)];
    EXPECT_EQ(current.index, riskRatio);
    EXPECT_EQ(current.name, document.Sheet().IndexNames()[riskRatio]);
    // The trail is the one the sheet's formula cell holds, with line feeds.
    const int formulaCol = document.Sheet().DisplayColTable()[riskRatio][sheet::AttrFormula];
    std::string cell = document.CellText(FixedRowCount, formulaCol);
    std::erase(cell, '\r');
    EXPECT_EQ(current.trail, cell);
    EXPECT_EQ(current.trail.find('\r'), std::string::npos);

    // The numbers the computation keeps aside are not indices to read.
    for (const IndexFormula& formula : formulas->indices)
        EXPECT_TRUE(IsEffectSizeIndex(formula.index)) << formula.name;

    // The copy holds the row and every index's name and trail.
    const std::string text = formulas->Text();
    EXPECT_EQ(text.rfind("Study: Aronson\nFormat: Events and sample size in each group\n", 0), 0u);
    for (const IndexFormula& formula : formulas->indices) {
        EXPECT_NE(text.find("\n" + formula.name + "\n" + formula.trail), std::string::npos)
            << formula.name;
    }
    // Reading the formulas says nothing.
    EXPECT_TRUE(prompter.shown.empty());
}

TEST_F(RowDialogContentTest, RowsWithoutDataAreRefused) {
    EXPECT_FALSE(ReadRowFormulas(document, FixedRowCount + 1, 0));
    EXPECT_FALSE(ReadRowFormulas(document, FixedRowCount + 3, 0));
    EXPECT_FALSE(ReadRowFormulas(document, 0, 0));
    const ports::Box box = CannotOpenForEmptyRow();
    EXPECT_EQ(testing::ScriptedPrompter::Text(box),
              "Cannot open dialog box|Please enter data for this row and then try again      ");
}

TEST_F(RowDialogContentTest, ARowInErrorShowsItsErrors) {
    const auto formulas = ReadRowFormulas(document, FixedRowCount + 2, 0);
    ASSERT_TRUE(formulas);
    EXPECT_FALSE(formulas->errors.empty());
    const std::string firstLine =
        formulas->errors.substr(0, formulas->errors.find_first_of("\r\n"));
    EXPECT_NE(formulas->Text().find(firstLine), std::string::npos);
}

TEST_F(RowDialogContentTest, EntriesShowEachRoleWithItsValueAndFault) {
    const auto aronson = ReadRowEntries(document, FixedRowCount);
    ASSERT_TRUE(aronson);
    EXPECT_EQ(aronson->study, "Aronson");
    EXPECT_EQ(aronson->format, "Events and sample size in each group");
    ASSERT_EQ(aronson->roles.size(), 4u);
    EXPECT_EQ(aronson->Entered(), 4);
    const char* labels[] = {"Group-A Events", "Group-A Total N", "Group-B Events",
                            "Group-B Total N"};
    const char* values[] = {"4", "123", "11", "139"};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(aronson->roles[i].label, labels[i]);
        EXPECT_EQ(aronson->roles[i].value, values[i]);
        EXPECT_GE(aronson->roles[i].col, 0);
        EXPECT_TRUE(aronson->roles[i].fault.empty());
    }

    // A row of the block without numbers: every value missing, none refused.
    const auto empty = ReadRowEntries(document, FixedRowCount + 1);
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->Entered(), 0);
    EXPECT_TRUE(std::all_of(empty->roles.begin(), empty->roles.end(),
                            [](const EntryRole& r) { return r.missing && r.fault.empty(); }));

    // More events than people: the events' cell is refused, in the row's words.
    const auto tooMany = ReadRowEntries(document, FixedRowCount + 2);
    ASSERT_TRUE(tooMany);
    EXPECT_FALSE(tooMany->errors.empty());
    EXPECT_TRUE(std::any_of(tooMany->roles.begin(), tooMany->roles.end(),
                            [](const EntryRole& r) { return !r.fault.empty(); }));
    EXPECT_FALSE(ReadRowEntries(document, FixedRowCount + 3));
    EXPECT_TRUE(prompter.shown.empty());
}

}  // namespace
}  // namespace synthara::shell
