// The open project: what its listeners hear, when it is dirty, and that a
// failed open leaves it as it was.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "analysis/RandomModel.h"
#include "sheet/files/ProjectFile.h"
#include "sheet/grid/MetaRows.h"
#include "shell/CellDisplay.h"
#include "shell/Document.h"
#include "support/ScriptedPrompter.h"

namespace synthara::shell {
namespace {

using sheet::FixedRowCount;

class Recorder final : public DocumentListener {
  public:
    void SheetChanged(const SheetChange& change) override { changes.push_back(change); }
    void DirtyChanged(bool dirty) override { dirty_.push_back(dirty); }
    std::vector<SheetChange> changes;
    std::vector<bool> dirty_;
};

std::string TempFile(const std::string& name, const std::string& text = {}) {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    const std::string path = ::testing::TempDir() + "DocumentTest." + test->name() + "-" + name;
    if (!text.empty()) std::ofstream(path, std::ios::binary) << text;
    return path;
}

OpenSettings WithFormat(std::string format) {
    OpenSettings settings;
    settings.defaultFormat = std::move(format);
    return settings;
}

constexpr const char* kTwoTrials =
    "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n"
    "Aronson,4,123,11,139\n"
    "Ferguson,6,306,29,303\n";

class DocumentTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const OpenOutcome opened = document.Open(
            TempFile("trials.csv", kTwoTrials), WithFormat("Events and sample size in each group"));
        ASSERT_TRUE(opened.ok()) << opened.message;
        document.AddListener(recorder);
    }

    int ColumnTitled(const std::string& title) const {
        const sheet::Grid& flex = document.Sheet().Flex();
        for (int c = 0; c < flex.Cols(); ++c)
            if (flex.Text(0, c) == title) return c;
        return -1;
    }
    int DisplayCol(int index, int attr) const {
        return document.Sheet()
            .DisplayColTable()[static_cast<std::size_t>(index)][static_cast<std::size_t>(attr)];
    }

    testing::ScriptedPrompter prompter;
    Document document{prompter};
    Recorder recorder;
};

TEST_F(DocumentTest, EditOfAnEntryCellNotifiesTheCellAndItsRowsResults) {
    const int row = FixedRowCount;
    const int col = ColumnTitled("Group-A Events");
    ASSERT_GE(col, 0);
    const int oddsPoint = DisplayCol(2, sheet::AttrPoint);
    ASSERT_GT(oddsPoint, 0);
    const double before = document.Sheet().Flex().At(row, oddsPoint).Number();

    ASSERT_TRUE(document.EditCell(row, col, "8"));
    ASSERT_EQ(recorder.changes.size(), 1u);
    const SheetChange& change = recorder.changes.front();
    EXPECT_EQ(change.kind, ChangeKind::Cells);
    EXPECT_EQ(change.ranges.front(), (CellRange{row, row, col, col}));
    // Every display cell of the row is covered, and nothing of other rows.
    const auto covered = [&](int r, int c) {
        for (const CellRange& range : change.ranges)
            if (range.Contains(r, c)) return true;
        return false;
    };
    for (int attr = sheet::AttrPoint; attr <= sheet::AttrFormula; ++attr) {
        EXPECT_TRUE(covered(row, DisplayCol(1, attr))) << attr;
        EXPECT_FALSE(covered(row + 1, DisplayCol(1, attr))) << attr;
    }
    EXPECT_NE(document.Sheet().Flex().At(row, oddsPoint).Number(), before);
    EXPECT_TRUE(document.Dirty());

    // The same text again changes nothing and says nothing.
    EXPECT_FALSE(document.EditCell(row, col, "8"));
    EXPECT_EQ(recorder.changes.size(), 1u);
    // Metadata rows are not data cells.
    EXPECT_FALSE(document.EditCell(0, col, "New title"));
}

TEST_F(DocumentTest, AddingABlockIsAStructureChange) {
    const int colsBefore = document.Sheet().Flex().Cols();
    EXPECT_FALSE(document.AddBlock("No such format"));
    EXPECT_TRUE(recorder.changes.empty());

    ASSERT_TRUE(document.AddBlock("Events and non-events in each group"));
    ASSERT_EQ(recorder.changes.size(), 1u);
    EXPECT_EQ(recorder.changes.front().kind, ChangeKind::Structure);
    EXPECT_GT(document.Sheet().Flex().Cols(), colsBefore);
    EXPECT_GE(ColumnTitled("Group-A Non-events"), 0);
    EXPECT_TRUE(document.Dirty());
}

TEST_F(DocumentTest, SavingMakesItCleanAndReopeningGivesTheSameResults) {
    ASSERT_TRUE(document.Dirty());  // rows read from text are unsaved work
    const std::string path = TempFile("saved.syn");
    ASSERT_TRUE(document.Save(path).ok);
    EXPECT_FALSE(document.Dirty());
    EXPECT_EQ(recorder.dirty_, std::vector<bool>{false});
    EXPECT_EQ(document.Project().CurrentFilePath, path);

    Document reopened(prompter);
    ASSERT_TRUE(reopened.Open(path).ok());
    EXPECT_FALSE(reopened.Dirty());
    EXPECT_EQ(reopened.DataRows(), 2);
    const int point = DisplayCol(1, sheet::AttrPoint);
    const sheet::Grid& before = document.Sheet().Flex();
    const sheet::Grid& after = reopened.Sheet().Flex();
    for (int row = FixedRowCount; row < FixedRowCount + 2; ++row) {
        EXPECT_TRUE(before.At(row, point).IsNumber());
        for (int c = 0; c < before.Cols(); ++c)
            EXPECT_EQ(after.At(row, c), before.At(row, c)) << row << " " << c;
        const int formula = DisplayCol(1, sheet::AttrFormula);
        EXPECT_EQ(reopened.CellText(row, formula), document.CellText(row, formula));
        EXPECT_NE(document.CellText(row, formula), "");
    }

    // The file holds the entries; the computed cells are made on opening.
    sheet::Sheet stored(prompter);
    ASSERT_TRUE(sheet::LoadProjectFile(stored, path).ok);
    EXPECT_TRUE(stored.Flex().IsBlank(FixedRowCount, point));
    EXPECT_EQ(stored.Flex().Text(FixedRowCount, ColumnTitled("Group-A Events")), "4");
}

TEST_F(DocumentTest, AFailedOpenLeavesTheProjectAsItWas) {
    const int cols = document.Sheet().Flex().Cols();
    const std::string firstStudy =
        document.Sheet().Flex().Text(FixedRowCount, ColumnTitled("Study name"));

    EXPECT_EQ(document.Open(TempFile("missing.syn")).status, OpenStatus::Refused);
    EXPECT_EQ(document
                  .Open(TempFile("no-study.csv", "Group-A Events\n1\n"),
                        WithFormat("Events and sample size in each group"))
                  .status,
              OpenStatus::Refused);
    EXPECT_EQ(document.Open(TempFile("a.csv", kTwoTrials), WithFormat("No such format")).status,
              OpenStatus::UnknownFormat);
    EXPECT_EQ(document.Open(TempFile("b.csv", kTwoTrials)).status, OpenStatus::NoFormat);

    EXPECT_TRUE(recorder.changes.empty());
    EXPECT_EQ(document.Sheet().Flex().Cols(), cols);
    EXPECT_EQ(document.Sheet().Flex().Text(FixedRowCount, ColumnTitled("Study name")), firstStudy);
    EXPECT_EQ(document.DataRows(), 2);
}

TEST_F(DocumentTest, OpeningTellsListenersOfANewSheet) {
    ASSERT_TRUE(document
                    .Open(TempFile("again.csv", kTwoTrials),
                          WithFormat("Events and sample size in each group"))
                    .ok());
    ASSERT_EQ(recorder.changes.size(), 1u);
    EXPECT_EQ(recorder.changes.front().kind, ChangeKind::Reset);
    EXPECT_EQ(recorder.dirty_, std::vector<bool>{true});
}

TEST_F(DocumentTest, OptionsAreKeptWithTheProjectAndComputeEveryRow) {
    const int row = FixedRowCount + 1;
    const int paired = DisplayCol(14, sheet::AttrPoint), d = DisplayCol(12, sheet::AttrPoint);
    const sheet::Grid& flex = document.Sheet().Flex();
    ASSERT_DOUBLE_EQ(flex.At(row, paired).Number(), flex.At(row, d).Number());

    // Out of range: the dialog's box, and nothing changes.
    EXPECT_FALSE(document.SetOptions({0.5, 2.5, 1, 1}));
    EXPECT_EQ(prompter.Only(),
              "Option outside range|The allowed error must fall in range of 1 to 2    |"
              "(recommended range is 1.01 to 1.20)");
    EXPECT_TRUE(recorder.changes.empty());
    EXPECT_EQ(document.Options().FudgeFactor, 1.1);

    ASSERT_TRUE(document.SetOptions({0.3, 1.2, 2, 2}));
    EXPECT_DOUBLE_EQ(flex.At(row, paired).Number(), flex.At(row, d).Number() / std::sqrt(1.4));
    const int settings = document.Sheet().SettingsCol();
    EXPECT_EQ(flex.Text(sheet::SettingsRow::ImputedR, settings), "0.3");
    EXPECT_EQ(flex.Text(sheet::SettingsRow::FudgeFactor, settings), "1.2");
    EXPECT_EQ(flex.Text(sheet::SettingsRow::GVarianceMethod, settings), "2");
    EXPECT_TRUE(document.Dirty());
    ASSERT_EQ(recorder.changes.size(), 1u);

    // The random model's choices stand beside them.
    document.SetRandomModel({analysis::Tau2Method::REML, true, {}});

    // A saved project opens with its own options.
    const std::string path = TempFile("options.syn");
    ASSERT_TRUE(document.Save(path).ok);
    Document reopened(prompter);
    ASSERT_TRUE(reopened.Open(path).ok());
    EXPECT_EQ(reopened.Options().ImputedR, 0.3);
    EXPECT_EQ(reopened.Options().PoolVarianceMethod, 2);
    const analysis::RandomModelOptions random = analysis::ReadRandomModel(reopened.Sheet().Flex());
    EXPECT_EQ(random.tau2, analysis::Tau2Method::REML);
    EXPECT_TRUE(random.hksj);
}

// Typing in the grid: what each commit writes besides the cell, as the
// delta an undo needs, and the delta applied back and forth.
TEST_F(DocumentTest, TypingIntoAFreeColumnMakesItADataColumnAndUndoesWhole) {
    const sheet::Grid& flex = document.Sheet().Flex();
    int free = -1;
    for (int c = flex.FixedCols(); c < flex.Cols() && free < 0; ++c)
        if (document.Sheet().MetaIs(c, sheet::MetaRow::Function, "Empty")) free = c;
    ASSERT_GE(free, 0);
    const int row = FixedRowCount + 1;
    const EditDelta delta = document.FinishEdit(row, free, "trial");
    const std::vector<CellDelta> expected = {
        {row, free, "", "trial"},
        {sheet::MetaRow::Function, free, "Empty", "Unknown"},
        {sheet::MetaRow::DataType, free, "Not specified", "Categorical"},
        {sheet::MetaRow::Align, free, "Auto", "Left"},
    };
    EXPECT_EQ(delta.cells, expected);
    EXPECT_EQ(flex.Col(free).alignment, sheet::Alignment::Left);
    // The cell and the column's record, in one notice.
    ASSERT_EQ(recorder.changes.size(), 1u);
    const auto& ranges = recorder.changes.back().ranges;
    EXPECT_NE(std::find(ranges.begin(), ranges.end(), CellRange{row, row, free, free}),
              ranges.end());
    EXPECT_NE(std::find(ranges.begin(), ranges.end(),
                        CellRange{sheet::MetaRow::Align, sheet::MetaRow::Align, free, free}),
              ranges.end());

    document.ApplyDelta(delta, DeltaSide::Before);
    for (const CellDelta& cell : expected)
        EXPECT_EQ(flex.Text(cell.row, cell.col), cell.before) << cell.row;
    EXPECT_EQ(flex.Col(free).alignment, sheet::Alignment::General);
    document.ApplyDelta(delta, DeltaSide::After);
    for (const CellDelta& cell : expected)
        EXPECT_EQ(flex.Text(cell.row, cell.col), cell.after) << cell.row;
}

TEST_F(DocumentTest, ARowsFirstEntryRecordsTheFormatItGave) {
    const sheet::Sheet& sheet = document.Sheet();
    const int row = FixedRowCount + 2;
    const int eventsA = ColumnTitled("Group-A Events");
    const EditDelta delta = document.FinishEdit(row, eventsA, "3");
    ASSERT_EQ(delta.cells.size(), 4u);
    EXPECT_EQ(delta.cells[0], (CellDelta{row, eventsA, "", "3"}));
    EXPECT_EQ(delta.cells[1],
              (CellDelta{row, sheet.FormatCol(), "", "Events and sample size in each group"}));
    // A later entry of the row writes only itself.
    EXPECT_EQ(document.FinishEdit(row, eventsA + 1, "30").cells.size(), 1u);
    // Nothing to write, or nothing the user may write: no delta, no notice.
    const std::size_t notices = recorder.changes.size();
    EXPECT_TRUE(document.FinishEdit(row, eventsA, "3").Empty());
    EXPECT_TRUE(document.FinishEdit(row, DisplayCol(1, sheet::AttrPoint), "1").Empty());
    EXPECT_TRUE(document.FinishEdit(sheet::MetaRow::Function, eventsA, "Moderator").Empty());
    EXPECT_EQ(recorder.changes.size(), notices);
}

TEST_F(DocumentTest, ATitleTypedInIsKept) {
    const int eventsA = ColumnTitled("Group-A Events");
    const EditDelta delta = document.FinishEdit(0, eventsA, "Vaccinated TB cases");
    ASSERT_EQ(delta.cells.size(), 1u);  // the title of an entry column is manual already
    EXPECT_EQ(document.Sheet().Meta(eventsA, sheet::MetaRow::Renamed), "Manual");
    EXPECT_EQ(recorder.changes.back().ranges.front(), (CellRange{0, 0, eventsA, eventsA}));
    int letter = -1;
    for (int c = document.Sheet().Flex().FixedCols(); c < document.Sheet().Flex().Cols(); ++c)
        if (document.Sheet().MetaIs(c, sheet::MetaRow::Renamed, "Auto")) letter = c;
    ASSERT_GE(letter, 0);
    EXPECT_EQ(document.FinishEdit(0, letter, "Dose").cells.size(), 2u);
    EXPECT_EQ(document.Sheet().Meta(letter, sheet::MetaRow::Renamed), "Manual");
}

TEST(CellDisplayTest, NumbersReadInTheColumnsFormat) {
    struct Case {
        double value;
        const char* format;
        const char* shown;
    };
    const Case cases[] = {
        {-0.938686, "0.000", "-0.939"}, {12.0, "0.000", "12.000"}, {2.7, "0", "3"},
        {-0.0004, "0.000", "0.000"},    {0.1, "", "0.1"},          {1e300, "0.0", "1e+300"},
        {0.25, "#,##0.0", "0.25"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(FormatCellNumber(c.value, c.format), c.shown) << c.value << " " << c.format;
}

}  // namespace
}  // namespace synthara::shell
