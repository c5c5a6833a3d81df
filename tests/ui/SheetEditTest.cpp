// Typing into the grid: what a commit computes, where Enter goes, the box a
// row's change of format shows, and undoing and redoing edits.
#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "support/SheetFixture.h"

namespace synthara::ui {
namespace {

using sheet::FixedRowCount;

class SheetEditTest : public SheetFixture {
  protected:
    // Types `text` into the cell's editor and presses Enter, as a user does.
    void Type(int gridRow, int col, const QString& text) {
        SheetView& view = widget->View();
        view.setCurrentIndex(At(gridRow, col));
        view.edit(At(gridRow, col));
        auto* editor = view.viewport()->findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->setText(text);
        QTest::keyClick(editor, Qt::Key_Return);
        // The closed editor goes, so the next one found is the next cell's.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QString Text(int gridRow, int col) { return Shown(gridRow, col); }
};

TEST_F(SheetEditTest, TypingATwoGroupRowFillsItsDisplayColumns) {
    widget->SetEnterMovesRight(true);
    const int row = FreeRow();
    const int eventsA = ColumnTitled("Group-A Events");
    const int logOdds = DisplayCol(1, sheet::AttrPoint);
    const char* const entries[] = {"4", "123", "11", "139"};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(Text(row, logOdds), "");
        Type(row, widget->CurrentRow() == row ? widget->CurrentColumn() : eventsA, entries[i]);
    }
    // Enter moved right after each cell.
    EXPECT_EQ(widget->CurrentColumn(), eventsA + 4);
    EXPECT_EQ(Text(row, eventsA + 3), "139");
    EXPECT_EQ(Sheet().Flex().Text(row, Sheet().FormatCol()), kTwoGroupEvents);
    // The same trial as the first row, so the same results.
    EXPECT_EQ(Text(row, logOdds), "-0.939");
    for (int attr = sheet::AttrPoint; attr <= sheet::AttrVariance; ++attr)
        EXPECT_EQ(Text(row, DisplayCol(2, attr)), Text(FixedRowCount, DisplayCol(2, attr)));
    EXPECT_EQ(undo.count(), 4);
}

TEST_F(SheetEditTest, EnterMovesDownByDefault) {
    const int col = ColumnTitled("Latitude");
    Type(FixedRowCount, col, "45");
    EXPECT_EQ(Text(FixedRowCount, col), "45");
    EXPECT_EQ(widget->CurrentRow(), FixedRowCount + 1);
    EXPECT_EQ(widget->CurrentColumn(), col);
}

TEST_F(SheetEditTest, ARowMovedToAnotherBlockSaysSo) {
    ASSERT_TRUE(document.AddBlock("Events and non-events in each group"));
    const int row = FreeRow();
    const int eventsA = ColumnTitled("Group-A Events");
    const int nonEventsA = ColumnTitled("Group-A Non-events");
    Type(row, eventsA, "5");
    // The row now has the first block's format: the other block is grey.
    EXPECT_FALSE(Model().flags(At(row, nonEventsA)).testFlag(Qt::ItemIsEditable));
    widget->SetCurrentCell(row, eventsA);
    widget->View().selectionModel()->select(At(row, eventsA), QItemSelectionModel::ClearAndSelect);
    QTest::keyClick(&widget->View(), Qt::Key_Delete);
    EXPECT_EQ(Text(row, eventsA), "");
    // Emptied, the row keeps its format but may move.
    EXPECT_EQ(Sheet().Flex().Text(row, Sheet().FormatCol()), kTwoGroupEvents);
    ASSERT_TRUE(Model().flags(At(row, nonEventsA)).testFlag(Qt::ItemIsEditable));
    prompter.shown.clear();
    Type(row, nonEventsA, "20");
    EXPECT_EQ(prompter.Only(),
              " Data entry format|The data entry format for this row has been "
              "changed to Events and non-events in each group   ");
    EXPECT_EQ(Sheet().Flex().Text(row, Sheet().FormatCol()), "Events and non-events in each group");
    EXPECT_FALSE(Model().flags(At(row, eventsA)).testFlag(Qt::ItemIsEditable));

    // Undone, the row is back in the first block, silently.
    prompter.shown.clear();
    undo.undo();
    EXPECT_EQ(Sheet().Flex().Text(row, Sheet().FormatCol()), kTwoGroupEvents);
    EXPECT_EQ(Text(row, nonEventsA), "");
    EXPECT_TRUE(prompter.shown.empty());
}

TEST_F(SheetEditTest, UndoAndRedoGiveBackEachSide) {
    const int row = FreeRow();
    const int eventsA = ColumnTitled("Group-A Events");
    const int logOdds = DisplayCol(1, sheet::AttrPoint);
    const char* const entries[] = {"4", "123", "11", "139"};
    for (int i = 0; i < 4; ++i)
        Type(row, eventsA + i, entries[i]);
    ASSERT_EQ(Text(row, logOdds), "-0.939");
    ASSERT_EQ(undo.count(), 4);
    // The same text again is no edit.
    Type(row, eventsA + 3, "139");
    EXPECT_EQ(undo.count(), 4);

    undo.undo();
    EXPECT_EQ(Text(row, eventsA + 3), "");
    EXPECT_EQ(Text(row, eventsA + 2), "11");
    EXPECT_EQ(Text(row, logOdds), "");
    for (int i = 0; i < 3; ++i)
        undo.undo();
    EXPECT_EQ(Text(row, eventsA), "");
    // The format the first entry gave the row goes with it.
    EXPECT_EQ(Sheet().Flex().Text(row, Sheet().FormatCol()), "");

    for (int i = 0; i < 4; ++i)
        undo.redo();
    EXPECT_EQ(Text(row, eventsA + 3), "139");
    EXPECT_EQ(Sheet().Flex().Text(row, Sheet().FormatCol()), kTwoGroupEvents);
    EXPECT_EQ(Text(row, logOdds), "-0.939");

    // Ctrl+Z and Ctrl+Y on the sheet act on the same stack.
    widget->show();
    widget->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(widget.get()));
    widget->View().setFocus();
    QTest::keyClick(&widget->View(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Text(row, eventsA + 3), "");
    QTest::keyClick(&widget->View(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Text(row, eventsA + 3), "139");

    // Columns that move outside an undoable command take the edits'
    // addresses with them: the stack goes.
    ASSERT_TRUE(document.AddBlock("Events and non-events in each group"));
    EXPECT_EQ(undo.count(), 0);
}

TEST_F(SheetEditTest, DeleteClearsTheSelectionAsOneEdit) {
    const int eventsA = ColumnTitled("Group-A Events");
    const int logOdds = DisplayCol(1, sheet::AttrPoint);
    const QString before = Text(FixedRowCount, eventsA);
    QItemSelection selection(At(FixedRowCount, eventsA), At(FixedRowCount + 1, logOdds));
    widget->View().selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    widget->ClearSelection();
    EXPECT_EQ(undo.count(), 1);
    EXPECT_EQ(Text(FixedRowCount, eventsA), "");
    EXPECT_EQ(Text(FixedRowCount + 1, eventsA + 3), "");
    EXPECT_EQ(Text(FixedRowCount, logOdds), "");
    undo.undo();
    EXPECT_EQ(Text(FixedRowCount, eventsA), before);
    EXPECT_EQ(Text(FixedRowCount, logOdds), "-0.939");
}

}  // namespace
}  // namespace synthara::ui
