// Every command that changes the sheet is one step of undo, typing included,
// and steps of either kind undo and redo in turn.
#include <QUndoStack>

#include "ProgramFixture.h"
#include "app/MainWindow.h"
#include "sheet/CellEditCommand.h"
#include "sheet/SheetWidget.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::ui {
namespace {

class CommandUndoTest : public ProgramFixture {
  protected:
    void SetUp() override {
        Make();
        OpenExample();
    }
    MainWindow& Window() { return program->Window(); }
    shell::Document& Doc() { return program->Document(); }
    std::string Text(int row, int col) { return Doc().Sheet().Flex().Text(row, col); }
    int StudyCol() { return Doc().Sheet().GetCol(0, 1); }
    int EventsCol() {
        for (int c = 0; c < Cols(); ++c)
            if (Doc().Sheet().ColumnLabel(c) == "Group-A Events") return c;
        return -1;
    }
    int Cols() { return Doc().Sheet().Flex().Cols(); }
};

TEST_F(CommandUndoTest, ACommandIsOneStepThatUndoesAndRedoes) {
    const int first = sheet::FixedRowCount;
    const std::string firstStudy = Text(first, StudyCol());
    Window().Sheet().SetCurrentCell(first, StudyCol());
    ASSERT_TRUE(Window().Run("Sort ZA"));
    const std::string sorted = Text(first, StudyCol());
    ASSERT_NE(sorted, firstStudy);
    ASSERT_EQ(Window().Undo().count(), 1);
    EXPECT_EQ(Window().Undo().text(0), "Sort descending");

    Window().Undo().undo();
    EXPECT_EQ(Text(first, StudyCol()), firstStudy);
    Window().Undo().redo();
    EXPECT_EQ(Text(first, StudyCol()), sorted);
    // A command that changes nothing leaves no step.
    ASSERT_TRUE(Window().Run("Sort ZA"));
    EXPECT_EQ(Window().Undo().count(), 1);
}

// Typing and commands share one stack: undone in turn, each finds the
// sheet as it left it, and the sheet's lookups follow the columns back, so
// the rows compute where they stand.
TEST_F(CommandUndoTest, TypingAndCommandsUndoInTurn) {
    const int row = sheet::FixedRowCount;
    const int cols = Cols();
    const int events = EventsCol();
    const std::string typed = Text(row, events);
    const int logOdds = Doc().Sheet().DisplayColTable()[1][sheet::AttrPoint];
    const std::string computed = Text(row, logOdds);
    Window().Undo().push(new CellEditCommand(Doc(), Doc().FinishEdit(row, events, "40"), "Typing"));
    const std::string recomputed = Text(row, logOdds);
    ASSERT_NE(recomputed, computed);
    ASSERT_TRUE(Window().Run("Insert column for the outcome name"));
    ASSERT_EQ(Cols(), cols + 1);
    ASSERT_EQ(EventsCol(), events + 1);

    Window().Undo().undo();
    ASSERT_EQ(Cols(), cols);
    EXPECT_EQ(Doc().Sheet().DisplayColTable()[1][sheet::AttrPoint], logOdds);
    EXPECT_EQ(Text(row, events), "40");
    Window().Undo().undo();
    EXPECT_EQ(Text(row, events), typed);
    EXPECT_EQ(Text(row, logOdds), computed);

    Window().Undo().redo();
    Window().Undo().redo();
    EXPECT_EQ(Text(row, events + 1), "40");
    EXPECT_EQ(Text(row, logOdds + 1), recomputed);
    // After the redo the lookups know the moved columns: typing computes.
    Doc().FinishEdit(row, events + 1, "4");
    EXPECT_EQ(Text(row, logOdds + 1), computed);
}

TEST_F(CommandUndoTest, OpeningAnotherSheetClearsTheSteps) {
    ASSERT_TRUE(Window().Run("Insert column for the outcome name"));
    ASSERT_EQ(Window().Undo().count(), 1);
    OpenExample();
    EXPECT_EQ(Window().Undo().count(), 0);
}

}  // namespace
}  // namespace synthara::ui
