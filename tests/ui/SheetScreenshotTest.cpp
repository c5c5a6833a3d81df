// The sheet as a person sees it, saved as a picture to look at: the example
// trials with their computed columns, the cursor on a study and its trail.
#include <QApplication>
#include <QDir>
#include <QScrollBar>

#include "sheet/TrailPanel.h"
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
    QApplication::processEvents();
    // The first block at the left beside the frozen columns.
    SheetView& view = widget->View();
    view.horizontalScrollBar()->setValue(
        view.horizontalScrollBar()->value() +
        view.columnViewportPosition(ColumnTitled("Group-A Events")) - view.FrozenWidth());
    QApplication::processEvents();
    const auto* trail = widget->findChild<TrailPanel*>();
    ASSERT_NE(trail, nullptr);
    EXPECT_EQ(trail->Caption(), "Odds ratio, row 2: Ferguson & Simes 1949");
    EXPECT_TRUE(trail->Trail().contains("LogOddsRatio = Log((6 * 274) / (300 * 29)) = -1.666"));
    QDir().mkpath(SYNTHARA_SCREENSHOTS);
    EXPECT_TRUE(widget->grab().save(SYNTHARA_SCREENSHOTS "/sheet.png"));
}

}  // namespace
}  // namespace synthara::ui
