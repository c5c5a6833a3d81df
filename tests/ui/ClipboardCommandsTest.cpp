// The clipboard's command keys on the main window: copying and pasting
// rows through the system clipboard, and a copy with nothing selected.
#include <QApplication>
#include <QClipboard>
#include <QItemSelectionModel>

#include "ProgramFixture.h"
#include "sheet/SheetModel.h"
#include "sheet/SheetView.h"
#include "sheet/SheetWidget.h"
#include "sheet/grid/MetaRows.h"
#include "support/Screenshot.h"

namespace synthara::ui {
namespace {

using sheet::FixedRowCount;

class ClipboardCommandsTest : public ProgramFixture {
  protected:
    void SetUp() override {
        Make();
        OpenExample();
        window().show();
        QApplication::processEvents();
    }
    MainWindow& window() { return program->Window(); }
    const sheet::Grid& flex() { return program->Document().Sheet().Flex(); }
    int Col(const std::string& title) {
        for (int c = 0; c < flex().Cols(); ++c)
            if (flex().Text(0, c) == title) return c;
        ADD_FAILURE() << title;
        return -1;
    }
    // Selects the sheet's cells rows r1..r2 (from the first data row) by columns c1..c2.
    void Select(int r1, int r2, int c1, int c2) {
        window().Sheet().Select({FixedRowCount + r1, FixedRowCount + r2, c1, c2});
    }
};

TEST_F(ClipboardCommandsTest, RowsCopiedAndPastedAreComputed) {
    const int rows = program->Document().DataRows();
    const int eventsA = Col("Group-A Events");
    const int totalB = Col("Group-B Total N");
    const int point = program->Document().Sheet().DisplayColTable()[2][sheet::AttrPoint];
    ASSERT_GT(point, 0);
    Select(0, 3, eventsA, totalB);
    ASSERT_TRUE(window().Run("Copy selection"));
    EXPECT_EQ(QGuiApplication::clipboard()->text().count('\n'), 4);

    Select(rows, rows, eventsA, eventsA);
    ASSERT_TRUE(window().Run("Paste"));
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(flex().Text(FixedRowCount + rows + i, totalB),
                  flex().Text(FixedRowCount + i, totalB));
        ASSERT_TRUE(flex().At(FixedRowCount + rows + i, point).IsNumber());
        EXPECT_EQ(flex().At(FixedRowCount + rows + i, point).Number(),
                  flex().At(FixedRowCount + i, point).Number());
    }
    EXPECT_EQ(program->Document().DataRows(), rows + 4);
    EXPECT_TRUE(prompter.shown.empty());
    Select(rows, rows + 3, eventsA, totalB);
    QApplication::processEvents();
    EXPECT_TRUE(SaveScreenshot(window(), "sheet-after-paste.png"));

    // The paste is one step of undo, and comes back with redo.
    window().Undo().undo();
    EXPECT_EQ(program->Document().DataRows(), rows);
    EXPECT_EQ(flex().Text(FixedRowCount + rows, totalB), "");
    window().Undo().redo();
    EXPECT_EQ(program->Document().DataRows(), rows + 4);
    EXPECT_EQ(flex().Text(FixedRowCount + rows, totalB), flex().Text(FixedRowCount, totalB));
}

TEST_F(ClipboardCommandsTest, CopyWithNothingSelectedSaysSo) {
    window().Sheet().View().selectionModel()->clearSelection();
    QGuiApplication::clipboard()->setText("kept");
    ASSERT_TRUE(window().Run("Copy with header"));
    EXPECT_EQ(prompter.Only(), "No cell selected|Please click on cell, then try again    ");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "kept");
}

}  // namespace
}  // namespace synthara::ui
