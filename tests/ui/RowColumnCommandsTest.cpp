// The row and column commands from the main window: they act on the
// selection, ask through the prompter, and a row is dragged by its number.
#include <QApplication>
#include <QTest>

#include <QUndoStack>

#include "ProgramFixture.h"
#include "sheet/SheetModel.h"
#include "sheet/SheetView.h"
#include "sheet/SheetWidget.h"
#include "sheet/grid/Sheet.h"
#include "sheet/grid/SheetColors.h"
#include "support/Screenshot.h"

namespace synthara::ui {
namespace {

using sheet::FixedRowCount;

class RowColumnCommandsTest : public ProgramFixture {
  protected:
    void SetUp() override {
        Make();
        OpenExample();
        prompter.shown.clear();
    }
    MainWindow& Window() { return program->Window(); }
    const sheet::Sheet& Sheet() { return program->Document().Sheet(); }
    int ColumnTitled(const std::string& title) {
        for (int c = 0; c < Sheet().Flex().Cols(); ++c)
            if (Sheet().Meta(c, sheet::MetaRow::ColumnHeader) == title) return c;
        return -1;
    }
    // Selects rows first..last of the sheet in column `col`.
    void SelectRows(int first, int last, int col) {
        SheetWidget& widget = Window().Sheet();
        widget.SetCurrentCell(first, col);
        SheetModel& model = widget.Model();
        widget.View().selectionModel()->select(
            QItemSelection(model.index(model.ModelRow(first), col),
                           model.index(model.ModelRow(last), col)),
            QItemSelectionModel::ClearAndSelect);
    }
    // Drags the number of row `from` onto row `to`.
    void DragRow(int from, int to) {
        SheetView& view = Window().Sheet().View();
        QWidget* numbers = view.Frozen().viewport();
        const auto at = [&](int row) {
            return view.Frozen().visualRect(view.model()->index(row - FixedRowCount, 0)).center();
        };
        QTest::mousePress(numbers, Qt::LeftButton, {}, at(from));
        QTest::mouseMove(numbers, at(to));
        QTest::mouseRelease(numbers, Qt::LeftButton, {}, at(to));
    }
    std::string Study(int i) { return program->Document().StudyName(i); }
};

TEST_F(RowColumnCommandsTest, DeletingSelectedRowsAsksHowMany) {
    const std::string third = Study(2);
    const int study = Sheet().GetCol(0, 1);
    SelectRows(FixedRowCount, FixedRowCount + 1, study);
    prompter.answers = {ports::Answer::No};
    ASSERT_TRUE(Window().Run("Delete row"));
    EXPECT_EQ(prompter.Only(), " Confirm delete rows|Ok to delete 2 rows?                   ");
    EXPECT_EQ(Study(0), "Aronson 1948");
    prompter.answers = {ports::Answer::Yes};
    Window().Run("Delete row");
    EXPECT_EQ(Study(0), third);

    // Blank rows go in above the selection, as many as it covers.
    SelectRows(FixedRowCount, FixedRowCount + 2, study);
    Window().Run("Insert row");
    EXPECT_EQ(Study(0), "");
    EXPECT_EQ(Study(3), third);
}

// A column delete and a row delete are a step each of the window's undo;
// undone, the sheet is as it was, its rows still computing.
TEST_F(RowColumnCommandsTest, DeletesUndoAndRedo) {
    const int latitude = ColumnTitled("Latitude");
    ASSERT_GE(latitude, 0);
    const int cols = Sheet().Flex().Cols();
    const std::string value = Sheet().Flex().Text(FixedRowCount, latitude);
    Window().Sheet().SetCurrentCell(FixedRowCount, latitude);
    prompter.answers = {ports::Answer::Yes, ports::Answer::Yes};
    ASSERT_TRUE(Window().Run("Delete column"));
    ASSERT_EQ(Sheet().Flex().Cols(), cols - 1);
    SelectRows(FixedRowCount, FixedRowCount, Sheet().GetCol(0, 1));
    ASSERT_TRUE(Window().Run("Delete row"));
    ASSERT_NE(Study(0), "Aronson 1948");
    QUndoStack& undo = Window().Undo();
    ASSERT_EQ(undo.count(), 2);

    undo.undo();
    EXPECT_EQ(Study(0), "Aronson 1948");
    undo.undo();
    EXPECT_EQ(Sheet().Flex().Cols(), cols);
    EXPECT_EQ(ColumnTitled("Latitude"), latitude);
    EXPECT_EQ(Sheet().Flex().Text(FixedRowCount, latitude), value);
    undo.redo();
    EXPECT_EQ(ColumnTitled("Latitude"), -1);
    undo.redo();
    EXPECT_NE(Study(0), "Aronson 1948");
    // The rows left still compute where their columns now stand.
    const int logOdds = Sheet().DisplayColTable()[1][sheet::AttrPoint];
    EXPECT_TRUE(Sheet().Flex().At(FixedRowCount, logOdds).IsNumber());
}

TEST_F(RowColumnCommandsTest, ProgramsColumnsAreRefusedAndHighlightsPaintTheSelection) {
    const int events = ColumnTitled("Group-A Events");
    Window().Sheet().SetCurrentCell(FixedRowCount, events);
    Window().Run("Copy column");
    EXPECT_EQ(prompter.Only(),
              "  Cannot copy this column|Column used for computing effect sizes cannot be copied "
              "automatically.     |You may highlight all cells in the column and then Copy and "
              "Paste to new column.    ");

    const int latitude = ColumnTitled("Latitude");
    SelectRows(FixedRowCount + 1, FixedRowCount + 2, latitude);
    Window().Run("Row highlight");
    Window().Sheet().SetCurrentCell(FixedRowCount, latitude);
    Window().Run("Column highlight");
    const sheet::Grid& flex = Sheet().Flex();
    EXPECT_EQ(flex.CellBackColor(FixedRowCount + 2, events), sheet::kHighlightBackColor);
    EXPECT_EQ(flex.CellBackColor(FixedRowCount + 5, latitude), sheet::kHighlightBackColor);
    EXPECT_EQ(flex.CellBackColor(FixedRowCount + 5, events), sheet::kNoBackColor);
    Window().show();
    QApplication::processEvents();
    Window().Sheet().View().ScrollToColumn(latitude - 1);
    QApplication::processEvents();
    EXPECT_TRUE(SaveScreenshot(Window(), "sheet-highlights.png"));
    SelectRows(FixedRowCount + 1, FixedRowCount + 2, latitude);
    Window().Run("Row remove highlight");
    EXPECT_EQ(flex.CellBackColor(FixedRowCount + 2, events), sheet::kNoBackColor);
}

TEST_F(RowColumnCommandsTest, TheEnterDirectionIsKeptForTheNextSession) {
    EXPECT_FALSE(Window().Sheet().View().EnterMovesRight());
    Window().Run("Data entered to right");
    EXPECT_TRUE(Window().Sheet().View().EnterMovesRight());
    EXPECT_EQ(program->Settings().Integer("EnterMovesRight"), 1);
    program->Settings().Save(store);
    Make();
    EXPECT_TRUE(Window().Sheet().View().EnterMovesRight());
    Window().Run("Data entered down");
    EXPECT_FALSE(Window().Sheet().View().EnterMovesRight());
}

TEST_F(RowColumnCommandsTest, ARowIsDraggedByItsNumberButNotIntoAnotherStudy) {
    Window().show();
    QApplication::processEvents();
    const std::string second = Study(1);
    DragRow(FixedRowCount + 1, FixedRowCount);
    EXPECT_EQ(Study(0), second);
    EXPECT_EQ(Study(1), "Aronson 1948");

    // Two rows of one study, and the third row dropped between them.
    Window().Sheet().SetCurrentCell(FixedRowCount, Sheet().GetCol(0, 1));
    Window().Run("Copy row");
    EXPECT_EQ(Study(1), second);
    prompter.shown.clear();
    DragRow(FixedRowCount + 2, FixedRowCount + 1);
    EXPECT_EQ(prompter.Only(),
              "Synthara|A study cannot be moved into the middle of another "
              "study   ");
    EXPECT_EQ(Study(2), "Aronson 1948");
}

}  // namespace
}  // namespace synthara::ui
