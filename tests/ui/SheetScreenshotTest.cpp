// The sheet as a person sees it, saved as a picture to look at: the example
// trials with their computed columns, the cursor on a result and its trail.
#include <QApplication>
#include <QDir>
#include <QPlainTextEdit>

#include "support/SheetFixture.h"

namespace synthara::ui {
namespace {

TEST_F(SheetFixture, SavesAScreenshotOfTheExample) {
    // A faulty entry shows red, and a second block's tabs and greys show.
    ASSERT_TRUE(document.EditCell(sheet::FixedRowCount + 12, ColumnTitled("Group-A Total N"), "1"));
    ASSERT_TRUE(document.AddBlock("Events and non-events in each group"));
    widget->show();
    // On the study name, the trail shown is the primary index's.
    widget->SetCurrentCell(sheet::FixedRowCount + 1, ColumnTitled("Study name"));
    // The first block at the left, with the results beside it.
    widget->View().scrollTo(Model().index(0, DisplayCol(1, sheet::AttrPoint)));
    widget->View().scrollTo(Model().index(0, ColumnTitled("Group-A Events")));
    QApplication::processEvents();
    auto* trail = widget->findChild<QPlainTextEdit*>();
    ASSERT_NE(trail, nullptr);
    EXPECT_TRUE(
        trail->toPlainText().contains("LogOddsRatio = Log((6 * 274) / (300 * 29)) = -1.666"))
        << trail->toPlainText().toStdString();
    QDir().mkpath(SYNTHARA_SCREENSHOTS);
    EXPECT_TRUE(widget->grab().save(SYNTHARA_SCREENSHOTS "/sheet.png"));
}

}  // namespace
}  // namespace synthara::ui
