// The sheet's clipboard: the text spreadsheets exchange, and copy, paste,
// cut and delete on the open project with their refusals.
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sheet/grid/MetaRows.h"
#include "shell/ClipboardText.h"
#include "shell/Document.h"
#include "support/ScriptedPrompter.h"

namespace synthara::shell {
namespace {

using sheet::FixedRowCount;
using sheet::MetaRow;

TEST(ClipboardTextTest, QuotedCellsLineBreaksAndShortRowsReadBack) {
    ClipboardWriter writer;
    writer.AddCell("plain");
    writer.AddCell("tab\there");
    writer.AddCell("say \"hi\"");
    writer.EndRow();
    writer.AddCell("two\nlines");
    writer.EndRow();
    EXPECT_EQ(writer.Text(), "plain\t\"tab\there\"\t\"say \"\"hi\"\"\"\n\"two\nlines\"\n");

    ClipboardTable table;
    ASSERT_TRUE(table.Parse(writer.Text()));
    ASSERT_EQ(table.Rows(), 2);
    ASSERT_EQ(table.Cols(), 3);
    EXPECT_EQ(table.At(0, 1), "tab\there");
    EXPECT_EQ(table.At(0, 2), "say \"hi\"");
    EXPECT_EQ(table.At(1, 0), "two\nlines");
    EXPECT_EQ(table.At(1, 2), "");  // a short row is filled out

    // Windows line ends, a blank line, a tab at the very end, no final break.
    ASSERT_TRUE(table.Parse("a\tb\r\n\r\nc\t"));
    EXPECT_EQ(table.Rows(), 3);
    EXPECT_EQ(table.Cols(), 2);
    EXPECT_EQ(table.At(1, 0), "");
    EXPECT_EQ(table.At(2, 0), "c");
    // One empty cell is a row; no text is none.
    ASSERT_TRUE(table.Parse("\n"));
    EXPECT_EQ(table.Rows(), 1);
    ASSERT_TRUE(table.Parse(""));
    EXPECT_TRUE(table.Empty());
    // A quote inside an unquoted cell is text.
    ASSERT_TRUE(table.Parse("5\" disk\tx\n"));
    EXPECT_EQ(table.At(0, 0), "5\" disk");
    // More cells than a table takes are refused, not read.
    EXPECT_FALSE(table.Parse(std::string(ClipboardTable::kMaxCells, '\t')));
}

class Recorder final : public DocumentListener {
  public:
    void SheetChanged(const SheetChange& change) override { changes.push_back(change); }
    std::vector<SheetChange> changes;
};

constexpr const char* kEventsFormat = "Events and sample size in each group";

class ClipboardTest : public ::testing::Test {
  protected:
    void SetUp() override {
        // A file of each test's own: ctest runs the tests side by side.
        const std::string path = ::testing::TempDir() + "ClipboardTest." +
                                 ::testing::UnitTest::GetInstance()->current_test_info()->name() +
                                 ".csv";
        std::ofstream(path) << "Study name,Group-A Events,Group-A Total N,Group-B Events,"
                               "Group-B Total N\n"
                               "Aronson,4,123,11,139\n"
                               "Ferguson,6,306,29,303\n";
        ASSERT_TRUE(document.Open(path, OpenSettings::ForFormat(kEventsFormat)).ok());
        document.AddListener(recorder);
        study = Col("Study name");
        eventsA = Col("Group-A Events");
        totalB = Col("Group-B Total N");
        oddsRatio = document.Sheet().DisplayColTable()[2][sheet::AttrPoint];
        ASSERT_GT(oddsRatio, 0);
    }
    int Col(const std::string& title) const {
        for (int c = 0; c < flex().Cols(); ++c)
            if (flex().Text(0, c) == title) return c;
        ADD_FAILURE() << title;
        return -1;
    }
    const sheet::Grid& flex() const { return document.Sheet().Flex(); }
    static SheetSelection Cells(int r1, int r2, int c1, int c2) { return {{r1, r2, c1, c2}}; }
    std::string Box() const {
        return prompter.shown.empty() ? ""
                                      : testing::ScriptedPrompter::Text(prompter.shown.back().box);
    }

    testing::ScriptedPrompter prompter;
    Document document{prompter};
    Recorder recorder;
    ports::MemoryClipboard clipboard;
    int study = -1, eventsA = -1, totalB = -1, oddsRatio = -1;
    const int row0 = FixedRowCount;
};

TEST_F(ClipboardTest, CopyGivesTheShownCellsWithOrWithoutTitles) {
    const auto entries = Cells(row0, row0 + 1, eventsA, eventsA + 1);
    ASSERT_TRUE(document.Copy(entries, CopyMode::Selection, clipboard));
    EXPECT_EQ(clipboard.Text(), "4\t123\n6\t306\n");
    ASSERT_TRUE(
        document.Copy(Cells(row0, row0, eventsA, eventsA + 1), CopyMode::WithHeader, clipboard));
    EXPECT_EQ(clipboard.Text(), "Group-A Events\tGroup-A Total N\n4\t123\n");
    // Computed cells as the screen shows them.
    ASSERT_TRUE(
        document.Copy(Cells(row0, row0, oddsRatio, oddsRatio), CopyMode::Selection, clipboard));
    EXPECT_EQ(clipboard.Text(), document.DisplayText(row0, oddsRatio) + "\n");
    // The entire grid: titles, then every row in use, of the shown columns.
    document.CopyAll(clipboard);
    EXPECT_EQ(clipboard.Text().substr(0, 11), "Study name\t");
    ClipboardTable grid;
    ASSERT_TRUE(grid.Parse(clipboard.Text()));
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.At(2, 0), "Ferguson");

    clipboard.SetText("kept");
    EXPECT_FALSE(document.Copy(std::nullopt, CopyMode::Selection, clipboard));
    EXPECT_EQ(prompter.Only(), "No cell selected|Please click on cell, then try again    ");
    EXPECT_EQ(clipboard.Text(), "kept");
}

TEST_F(ClipboardTest, PastedRowsAreComputedOnceAndListenersToldOnce) {
    ASSERT_TRUE(
        document.Copy(Cells(row0, row0 + 1, study, totalB), CopyMode::Selection, clipboard));
    recorder.changes.clear();
    EXPECT_EQ(document.Paste(Cells(row0 + 5, row0 + 5, study, study), clipboard),
              PasteCase::BlockToOneCell);
    ASSERT_EQ(recorder.changes.size(), 1u);
    EXPECT_EQ(recorder.changes[0].kind, ChangeKind::Cells);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(flex().Text(row0 + 5 + i, study), flex().Text(row0 + i, study));
        ASSERT_TRUE(flex().At(row0 + 5 + i, oddsRatio).IsNumber());
        EXPECT_EQ(flex().At(row0 + 5 + i, oddsRatio).Number(),
                  flex().At(row0 + i, oddsRatio).Number());
        EXPECT_EQ(flex().Text(row0 + 5 + i, document.Sheet().FormatCol()), kEventsFormat);
    }
    EXPECT_EQ(document.DataRows(), 7);
    EXPECT_TRUE(prompter.shown.empty());

    // The same block onto the same size; one cell over a selection.
    EXPECT_EQ(document.Paste(Cells(row0 + 2, row0 + 3, study, totalB), clipboard),
              PasteCase::SameSizeBlock);
    EXPECT_EQ(flex().Text(row0 + 3, eventsA), "6");
    clipboard.SetText("9\n");
    EXPECT_EQ(document.Paste(Cells(row0, row0 + 1, eventsA, eventsA), clipboard),
              PasteCase::FromOneCell);
    EXPECT_EQ(flex().Text(row0 + 1, eventsA), "9");
    EXPECT_NE(flex().At(row0 + 1, oddsRatio).Number(), flex().At(row0 + 3, oddsRatio).Number());
}

TEST_F(ClipboardTest, WholeColumnsAndRowsTakeTheirOwnShapes) {
    clipboard.SetText("x\ny\n");
    SheetSelection column = Cells(row0, row0 + 1, study, study);
    column.wholeColumns = true;
    EXPECT_EQ(document.Paste(column, clipboard), PasteCase::CopyColumn);
    EXPECT_EQ(flex().Text(row0 + 1, study), "y");

    // A whole row copied onto another whole row lands column for column.
    SheetSelection row = Cells(row0 + 1, row0 + 1, study, study);
    row.wholeRows = true;
    ASSERT_TRUE(document.Copy(row, CopyMode::Selection, clipboard));
    row.cells = {row0 + 4, row0 + 4, 0, 0};
    EXPECT_EQ(document.Paste(row, clipboard), PasteCase::CopyRow);
    EXPECT_EQ(flex().Text(row0 + 4, study), "y");
    EXPECT_EQ(flex().Text(row0 + 4, totalB), "303");
    EXPECT_EQ(flex().At(row0 + 4, oddsRatio).Number(), flex().At(row0 + 1, oddsRatio).Number());
}

TEST_F(ClipboardTest, RefusalsSayWhyAndLeaveTheSheetAsItWas) {
    const std::uint64_t revision = flex().Revision();
    clipboard.SetText("1\t2\n3\t4\n");
    EXPECT_EQ(document.Paste(std::nullopt, clipboard), PasteCase::Refused);
    EXPECT_EQ(Box(), "No cell selected|Please click on cell, then try again    ");
    EXPECT_EQ(document.Paste(Cells(row0, row0 + 2, eventsA, eventsA + 2), clipboard),
              PasteCase::Refused);
    EXPECT_EQ(Box(),
              "  Copy not performed |To copy a block of cells, click on the first cell of the "
              "target and click CTRL-V    ");
    // Past the sheet's last column.
    EXPECT_EQ(document.Paste(Cells(row0, row0, flex().Cols() - 1, flex().Cols() - 1), clipboard),
              PasteCase::Refused);

    // Another block's entry cells are grey on a row of this block.
    ASSERT_TRUE(document.AddBlock("Events and non-events in each group"));
    const int otherBlock = Col("Group-A Non-events");
    ASSERT_NE(flex().CellShade(row0, otherBlock), 0);
    const std::uint64_t withBlock = flex().Revision();
    EXPECT_EQ(document.Paste(Cells(row0, row0, otherBlock, otherBlock), clipboard),
              PasteCase::Refused);
    EXPECT_EQ(Box(),
              "  Copy not performed |The program cannot paste data into grayed-out cells         ");
    EXPECT_EQ(flex().Revision(), withBlock);
    EXPECT_EQ(prompter.shown.size(), 4u);
    EXPECT_NE(revision, withBlock);
}

TEST_F(ClipboardTest, ARowWithoutEntriesMovesToTheBlockPastedInto) {
    ASSERT_TRUE(document.AddBlock("Events and non-events in each group"));
    const int nonEvents = Col("Group-A Non-events");
    // Delete leaves the row its format; its cells of the other block stay grey
    // but take a paste, as they take typing, while the row holds no entries.
    ASSERT_TRUE(document.ClearCells(Cells(row0 + 1, row0 + 1, eventsA, totalB)));
    ASSERT_NE(flex().CellShade(row0 + 1, nonEvents), 0);
    clipboard.SetText("5\t100\n");
    prompter.shown.clear();
    EXPECT_EQ(document.Paste(Cells(row0 + 1, row0 + 1, nonEvents, nonEvents), clipboard),
              PasteCase::BlockToOneCell);
    EXPECT_EQ(prompter.Only(),
              " Data entry format|The data entry format for this row has been changed to "
              "Events and non-events in each group   ");
    EXPECT_EQ(flex().CellShade(row0 + 1, nonEvents), 0);
    EXPECT_NE(flex().CellShade(row0 + 1, eventsA), 0);
    EXPECT_NE(flex().CellShade(row0, nonEvents), 0);  // the other row keeps its block
}

TEST_F(ClipboardTest, PasteFollowsTypingsRulesForFreeColumns) {
    int free = -1;
    for (int c = flex().FixedCols(); c < flex().Cols() && free < 0; ++c)
        if (document.Sheet().MetaIs(c, MetaRow::Function, "Empty") && !flex().Col(c).hidden)
            free = c;
    ASSERT_GE(free, 0);
    clipboard.SetText("North\nSouth\n");
    EXPECT_EQ(document.Paste(Cells(row0, row0, free, free), clipboard), PasteCase::BlockToOneCell);
    EXPECT_EQ(document.Sheet().Meta(free, MetaRow::Function), "Unknown");
    EXPECT_EQ(document.Sheet().Meta(free, MetaRow::DataType), "Categorical");
    EXPECT_EQ(flex().Text(row0 + 1, free), "South");

    // A study name holding a tab, a line break and quotes comes back whole.
    clipboard.SetText("\"Smith \"\"A\"\"\tet al\r\n1999\"\r\n");
    EXPECT_EQ(document.Paste(Cells(row0, row0, study, study), clipboard), PasteCase::SameSizeBlock);
    EXPECT_EQ(flex().Text(row0, study), "Smith \"A\"\tet al\n1999");
    ASSERT_TRUE(document.Copy(Cells(row0, row0, study, study), CopyMode::Selection, clipboard));
    EXPECT_EQ(document.Paste(Cells(row0 + 1, row0 + 1, study, study), clipboard),
              PasteCase::SameSizeBlock);
    EXPECT_EQ(flex().Text(row0 + 1, study), flex().Text(row0, study));
}

TEST_F(ClipboardTest, PastingPastTheLastRowGrowsTheSheet) {
    const int rows = flex().Rows();
    std::string text;
    for (int i = 0; i < 5; ++i)
        text += std::to_string(i + 1) + "\t50\t4\t60\n";
    clipboard.SetText(text);
    recorder.changes.clear();
    EXPECT_EQ(document.Paste(Cells(rows - 2, rows - 2, eventsA, eventsA), clipboard),
              PasteCase::BlockToOneCell);
    EXPECT_EQ(flex().Rows(), rows + 3);
    ASSERT_EQ(recorder.changes.size(), 1u);
    EXPECT_EQ(recorder.changes[0].kind, ChangeKind::Structure);
    EXPECT_TRUE(flex().At(rows + 2, oddsRatio).IsNumber());
    EXPECT_EQ(document.DataRows(), rows + 3 - FixedRowCount);
}

TEST_F(ClipboardTest, CutBlanksTheEntriesTheirResultsAndAnEmptiedRowsFormat) {
    const int formatCol = document.Sheet().FormatCol();
    // Part of a row's entries: the row keeps its format and computes again.
    ASSERT_TRUE(document.Cut(Cells(row0, row0, eventsA, eventsA), clipboard));
    EXPECT_EQ(clipboard.Text(), "4\n");
    EXPECT_TRUE(flex().IsBlank(row0, eventsA));
    EXPECT_FALSE(flex().At(row0, oddsRatio).IsNumber());
    EXPECT_EQ(flex().Text(row0, formatCol), kEventsFormat);
    // Every entry of the last row: its format goes too, and the row is no longer in use.
    ASSERT_TRUE(document.Cut(Cells(row0 + 1, row0 + 1, study, totalB), clipboard));
    ClipboardTable cut;
    ASSERT_TRUE(cut.Parse(clipboard.Text()));
    EXPECT_EQ(cut.At(0, 0), "Ferguson");
    EXPECT_EQ(cut.At(0, cut.Cols() - 1), "303");
    EXPECT_TRUE(flex().IsBlank(row0 + 1, oddsRatio));
    EXPECT_TRUE(flex().IsBlank(row0 + 1, formatCol));
    EXPECT_EQ(document.DataRows(), 1);
    // Display cells are never cut.
    EXPECT_EQ(document.Paste(Cells(row0 + 1, row0 + 1, study, study), clipboard),
              PasteCase::BlockToOneCell);
    ASSERT_TRUE(flex().At(row0 + 1, oddsRatio).IsNumber());
    const double shown = flex().At(row0 + 1, oddsRatio).Number();
    ASSERT_TRUE(document.Cut(Cells(row0 + 1, row0 + 1, oddsRatio, oddsRatio), clipboard));
    EXPECT_EQ(flex().At(row0 + 1, oddsRatio).Number(), shown);

    EXPECT_FALSE(document.Cut(std::nullopt, clipboard));
    EXPECT_EQ(prompter.Only(), "No cell selected|Please click on cell, then try again    ");
}

TEST_F(ClipboardTest, DeleteClearsTheCellsThatTakeTyping) {
    ASSERT_TRUE(document.ClearCells(Cells(row0, row0, eventsA, oddsRatio)));
    EXPECT_TRUE(flex().IsBlank(row0, eventsA));
    EXPECT_TRUE(flex().IsBlank(row0, totalB));
    EXPECT_FALSE(flex().At(row0, oddsRatio).IsNumber());  // computed again, not typed over
    EXPECT_FALSE(document.ClearCells(Cells(row0, row0, eventsA, eventsA)));
}

}  // namespace
}  // namespace synthara::shell
