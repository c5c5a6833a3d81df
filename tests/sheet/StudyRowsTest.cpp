#include "sheet/rows/StudyRows.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "SampleProject.h"
#include "sheet/files/Backup.h"
#include "sheet/files/ProjectFile.h"
#include "sheet/rows/SheetCheck.h"
#include "support/ScriptedPrompter.h"

namespace synthara::sheet {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;
using ports::Answer;

class StudyRowsTest : public ::testing::Test {
  protected:
    StudyRowsTest()
        : folder(fs::temp_directory_path() /
                 ("synthara-rows-" + std::to_string(::getpid()) + "-" +
                  ::testing::UnitTest::GetInstance()->current_test_info()->name())),
          sheet(prompter) {
        fs::remove_all(folder);
        fs::create_directories(folder);
        sheet.InitializeGrid();
    }
    ~StudyRowsTest() override { fs::remove_all(folder); }

    void Furnish() {
        study = sheet.MakePop(1);
        subgroup = sheet.MakePop(2);
        entry = sample::AddBlock(sheet, sample::kEvents);
    }
    // Rows from the first data row; a row of "" is left empty.
    void Rows(const std::vector<std::pair<std::string, std::string>>& rows) {
        int r = FixedRowCount;
        for (const auto& [name, sub] : rows) {
            if (!name.empty() || !sub.empty()) {
                sheet.SetText(r, study, name);
                sheet.SetText(r, subgroup, sub);
                sheet.SetText(r, entry, std::to_string(r));
            }
            ++r;
        }
        sheet.AddRowNumbers();
    }
    std::vector<std::string> Column(int col, int count) const {
        std::vector<std::string> out;
        for (int r = FixedRowCount; r < FixedRowCount + count; ++r)
            out.push_back(sheet.Flex().Text(r, col));
        return out;
    }

    fs::path folder;
    testing::ScriptedPrompter prompter;
    Sheet sheet;
    OpenProject project;
    int study = -1, subgroup = -1, entry = -1;
};

TEST_F(StudyRowsTest, MergeRowsSortsByIdentifiersThenEntryOrder) {
    Furnish();
    Rows({{"B", "2"}, {"", ""}, {"A", "z"}, {"B", "10"}, {"A", "z"}, {"a", "y"}});
    const std::string firstAz = sheet.Flex().Text(FixedRowCount + 2, entry);
    MergeRows(sheet, true);
    EXPECT_EQ(Column(study, 6), (Lines{"a", "A", "A", "B", "B", ""}));
    EXPECT_EQ(Column(subgroup, 6), (Lines{"y", "z", "z", "2", "10", ""}));
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount + 1, entry), firstAz);  // ties keep entry order
    EXPECT_EQ(Column(0, 3), (Lines{"1", "2", "3"}));
    EXPECT_EQ(Column(sheet.EntrySeqCol(), 3), (Lines{"1", "2", "3"}));
    EXPECT_TRUE(sheet.Flex().Col(study).merged);
    EXPECT_TRUE(sheet.Flex().Col(subgroup).merged);
    EXPECT_FALSE(sheet.Flex().Col(entry).merged);
    MergeRows(sheet, false);
    EXPECT_FALSE(sheet.Flex().Col(study).merged);
}

TEST_F(StudyRowsTest, NewIdentifyingColumnJoinsTheRowDisplay) {
    Furnish();
    Rows({{"B", "1"}, {"A", "1"}});
    // Rows shown each on its own: a new column leaves them where they are.
    const int comparison = sheet.MakePop(3);
    EXPECT_EQ(Column(study, 2), (Lines{"B", "A"}));
    EXPECT_FALSE(sheet.Flex().Col(comparison).merged);

    MergeRows(sheet, true);
    sheet.SetText(FixedRowCount, study, "C");
    // Merged: the new column is merged too and the rows are sorted again.
    const int outcome = sheet.MakePop(4);
    EXPECT_EQ(Column(study, 2), (Lines{"B", "C"}));
    EXPECT_TRUE(sheet.Flex().Col(outcome).merged);
    EXPECT_TRUE(sheet.Flex().Col(study).merged);
}

TEST_F(StudyRowsTest, ForceSortFollowsTheColumnsDataType) {
    Furnish();
    const int moderator = sample::AddModerator(sheet, "Code", "Categorical");
    const Lines codes = {"10", "9", "b", "A"};
    for (int i = 0; i < 4; ++i) {
        sheet.SetText(FixedRowCount + i, study, "S" + std::to_string(i));
        sheet.SetText(FixedRowCount + i, moderator, codes[static_cast<std::size_t>(i)]);
        sheet.SetText(FixedRowCount + i, entry, codes[static_cast<std::size_t>(i)]);
    }
    ForceSort(sheet, project, moderator);
    EXPECT_EQ(Column(moderator, 4), (Lines{"10", "9", "A", "b"}));  // as text
    EXPECT_TRUE(project.SheetDirty);
    ForceSort(sheet, project, entry);  // "Decimal": as numbers, text after them
    EXPECT_EQ(Column(entry, 4), (Lines{"9", "10", "A", "b"}));
    ForceSort(sheet, project, entry, true);
    EXPECT_EQ(Column(entry, 4), (Lines{"b", "A", "10", "9"}));
    EXPECT_EQ(Column(study, 4), (Lines{"S2", "S3", "S0", "S1"}));  // rows move whole
    EXPECT_EQ(Column(0, 4), (Lines{"1", "2", "3", "4"}));
}

TEST_F(StudyRowsTest, DeleteStudyRefusals) {
    struct Case {
        const char* name;
        bool furnish;
        int row;
        std::string title;
        std::string text;
    };
    const Case cases[] = {
        {"no row", true, -1, "  No study selected ", "Please select a study to delete         "},
        {"no study column", false, FixedRowCount, "  Cannot delete study",
         "The column for study names has not been created yet       "},
        {"unnamed", true, FixedRowCount + 1, " Study name is missing",
         "The study on this line has not been identified.  To delete the row use 'Delete "
         "row'.       "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        sheet.InitializeGrid();
        if (c.furnish) {
            Furnish();
            Rows({{"A", "1"}, {"", "2"}});
        }
        prompter.shown.clear();
        EXPECT_FALSE(DeleteStudy(sheet, project, c.row, folder));
        ASSERT_EQ(prompter.Only(), c.title + "|" + c.text);
        EXPECT_FALSE(prompter.shown[0].question);
        EXPECT_FALSE(fs::exists(folder / "SYNSystemBackup"));
    }
}

TEST_F(StudyRowsTest, DeleteStudyBlanksItsRowsOrRestoresTheBackup) {
    Furnish();
    Rows({{"A", "1"}, {"B", "1"}, {"A", "2"}, {"C", "1"}});
    PreSave(sheet);  // the backup records the widths
    const Grid before = sheet.Flex();

    prompter.answers = {Answer::No};
    EXPECT_FALSE(DeleteStudy(sheet, project, FixedRowCount + 2, folder));
    EXPECT_TRUE(fs::exists(folder / "SYNSystemBackup"));
    EXPECT_EQ(prompter.Only(),
              "  Delete study|Do you want to delete the A study? |Any subgroups and outcomes for "
              "this study will be deleted as well.  ");
    sample::ExpectSameCells(before, sheet.Flex());
    EXPECT_TRUE(project.SheetDirty);

    prompter.answers = {Answer::Yes};
    EXPECT_TRUE(DeleteStudy(sheet, project, FixedRowCount, folder));
    EXPECT_EQ(Column(study, 4), (Lines{"B", "C", "", ""}));
    EXPECT_EQ(Column(0, 4), (Lines{"1", "2", "3", "4"}));
    EXPECT_TRUE(sheet.isRowEmpty(FixedRowCount + 2));
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount + 2, sheet.FormatCol()), "");
}

TEST_F(StudyRowsTest, AddStudyDialog) {
    Furnish();
    const int outcome = sheet.MakePop(4);
    EXPECT_EQ(GetNewName(sheet), "Study001");  // a first study is number 1
    Rows({{"Study002", "x"}, {"Other", "y"}});
    EXPECT_EQ(GetNewName(sheet), "Study003");  // from the count of rows, past the taken names
    sheet.SetText(FixedRowCount + 2, study, "Study003");
    EXPECT_EQ(GetNewName(sheet), "Study004");

    for (const auto& [name, text] :
         {std::pair{"", "Synthara|Please enter a name for the new study    "},
          std::pair{"Other", "Synthara|You already have a study with this name.  "}}) {
        prompter.shown.clear();
        EXPECT_FALSE(AddStudy(sheet, project, name, false).inserted);
        EXPECT_EQ(prompter.Only(), text);
    }
    EXPECT_FALSE(project.SheetDirty);

    sheet.SetMeta(subgroup, MetaRow::ValueList, "Men|Women");
    sheet.SetMeta(outcome, MetaRow::ValueList, "Death|Stroke|");
    sheet.SetText(FixedRowCount, study, "");  // a gap the new rows fill first
    sheet.SetText(FixedRowCount, subgroup, "");
    sheet.SetText(FixedRowCount, entry, "");
    const AddStudyOutcome added = AddStudy(sheet, project, "New", true);
    EXPECT_TRUE(added.inserted);
    EXPECT_TRUE(project.SheetDirty);
    EXPECT_EQ(Column(study, 6), (Lines{"New", "Other", "Study003", "New", "New", "New"}));
    EXPECT_EQ(Column(subgroup, 6), (Lines{"Men", "y", "", "Men", "Women", "Women"}));
    EXPECT_EQ(Column(outcome, 6), (Lines{"Death", "", "", "Stroke", "Death", "Stroke"}));
    EXPECT_EQ(added.nextName, "Study006");

    EXPECT_TRUE(AddStudy(sheet, project, "Single", false).inserted);
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount + 6, study), "Single");
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount + 6, subgroup), "");
}

TEST_F(StudyRowsTest, AddStudyNeedsAStudyColumn) {
    subgroup = sheet.MakePop(2);
    const int columns = sheet.Flex().Cols();
    EXPECT_FALSE(AddStudy(sheet, project, "New", false).inserted);
    EXPECT_EQ(prompter.Only(), prompter.Text(StudyColumnMissing()));  // the check's own box
    EXPECT_EQ(sheet.Flex().Cols(), columns);
    EXPECT_TRUE(sheet.isRowEmpty(FixedRowCount));
    EXPECT_FALSE(project.SheetDirty);
}

TEST_F(StudyRowsTest, GroupNamesInUse) {
    EXPECT_TRUE(EditGroupNames(sheet).empty());
    EXPECT_EQ(prompter.Only(),
              "Edit group names|The current effect size columns do not require group names    "
              "      ");

    const int first = sample::AddBlock(sheet, "Events and person years in each group");
    std::vector<GroupName> names = AssessGroupNames(sheet);
    std::vector<std::string> words;
    for (const GroupName& n : names)
        words.push_back(n.word);
    EXPECT_EQ(words, (Lines{"Group-A", "Group-B", "Events", "Person years"}));
    EXPECT_EQ(names[3].value, "Person Years");

    names[0].value = "Treated";
    names[3].value = "Patient years";
    SetGroupNames(sheet, project, names);
    EXPECT_TRUE(project.SheetDirty);
    EXPECT_EQ(sheet.Meta(first, MetaRow::ColumnHeader), "Treated Events");
    EXPECT_EQ(sheet.Meta(first + 1, MetaRow::ColumnHeader), "Treated Patient years");
    EXPECT_EQ(sheet.Meta(first + 3, MetaRow::ColumnHeader), "Group-B Patient years");
}

}  // namespace
}  // namespace synthara::sheet
