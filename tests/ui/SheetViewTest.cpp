// The grid's view: the frozen columns, column moves by dragging with their
// refusals, the block tabs and merged identifying cells.
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>

#include "support/SheetFixture.h"

namespace synthara::ui {
namespace {

using sheet::FixedRowCount;

class SheetViewTest : public SheetFixture {
  protected:
    // The user drags the header of column `from` to position `to`.
    void Drag(int from, int to) {
        prompter.shown.clear();
        widget->View().horizontalHeader()->moveSection(from, to);
    }
};

TEST_F(SheetViewTest, TheFixedColumnsStayInViewAndNeverHideTheCursor) {
    widget->show();
    QApplication::processEvents();
    SheetView& view = widget->View();
    QTableView& frozen = view.Frozen();
    EXPECT_TRUE(frozen.isVisible());
    EXPECT_FALSE(frozen.isColumnHidden(0));
    EXPECT_TRUE(frozen.isColumnHidden(ColumnTitled("Study name")));
    EXPECT_EQ(view.FrozenWidth(), view.columnWidth(0));

    // Far right, then back to the first column after the frozen ones: it
    // stands clear of the overlay.
    const int study = ColumnTitled("Study name");
    widget->SetCurrentCell(FixedRowCount, DisplayCol(1, sheet::AttrPoint));
    EXPECT_GT(view.horizontalScrollBar()->value(), 0);
    widget->SetCurrentCell(FixedRowCount, study);
    EXPECT_GE(view.visualRect(At(FixedRowCount, study)).left(), view.FrozenWidth());
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Left);
    EXPECT_EQ(widget->CurrentColumn(), study);
}

TEST_F(SheetViewTest, DraggingAColumnAsksTheSheet) {
    const int latitude = ColumnTitled("Latitude");
    const int allocation = ColumnTitled("Allocation");
    ASSERT_EQ(allocation, latitude + 1);
    Drag(latitude, allocation);
    EXPECT_TRUE(prompter.shown.empty());
    EXPECT_EQ(ColumnTitled("Latitude"), allocation);
    EXPECT_EQ(Model().headerData(allocation, Qt::Horizontal, Qt::DisplayRole).toString(),
              "Latitude");
    EXPECT_EQ(Shown(FixedRowCount, allocation), "44");
    // The header itself keeps the sheet's order.
    EXPECT_EQ(widget->View().horizontalHeader()->visualIndex(allocation), allocation);

    struct Refusal {
        const char* column;
        int to;
        const char* box;
    };
    const int eventsA = ColumnTitled("Group-A Events");
    const Refusal refusals[] = {
        {"Study name", latitude,
         "  Cannot move column|Columns used to identify study cannot be moved    "},
        {"Log odds ratio", latitude,
         "  Cannot move column|Display of computed effects cannot be moved    |Right-click to "
         "modify the display"},
        {"Group-A Events", eventsA - 1,
         "  Cannot move column|Effect size column cannot be moved outside its own block     "},
        {"Group-A Events", latitude,
         "  Cannot move column|Column may only be moved within its own block   "},
    };
    for (const Refusal& refusal : refusals) {
        const int from = ColumnTitled(refusal.column);
        Drag(from, refusal.to);
        EXPECT_EQ(prompter.Only(), refusal.box) << refusal.column;
        EXPECT_EQ(ColumnTitled(refusal.column), from) << refusal.column;
        EXPECT_EQ(widget->View().horizontalHeader()->visualIndex(from), from);
    }
    // Within its block an entry column moves, and its results stay.
    Drag(eventsA, eventsA + 1);
    EXPECT_TRUE(prompter.shown.empty());
    EXPECT_EQ(ColumnTitled("Group-A Events"), eventsA + 1);
    EXPECT_EQ(Shown(FixedRowCount, DisplayCol(1, sheet::AttrPoint)), "-0.939");
}

TEST_F(SheetViewTest, BlockTabsFollowTheBlocksAndTheCursor) {
    auto* tabs = widget->findChild<QTabBar*>();
    ASSERT_NE(tabs, nullptr);
    EXPECT_TRUE(tabs->isHidden());
    ASSERT_TRUE(document.AddBlock("Events and non-events in each group"));
    ASSERT_EQ(tabs->count(), 2);
    EXPECT_FALSE(tabs->isHidden());
    EXPECT_EQ(tabs->tabText(0).toStdString(), Sheet().View.Tabs[0]);
    EXPECT_EQ(tabs->tabText(1).toStdString(), Sheet().View.Tabs[1]);

    // The new block's tab is current; moving into the first block's cells
    // brings its tab back.
    widget->SetCurrentCell(FixedRowCount + 1, ColumnTitled("Group-A Events"));
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(Sheet().View.CurrentTab, 0);
    // Picking a tab puts the cursor in its block.
    tabs->setCurrentIndex(1);
    EXPECT_EQ(Sheet().View.CurrentTab, 1);
    EXPECT_EQ(widget->CurrentColumn(), ColumnTitled("Group-A Events", 1));
}

TEST_F(SheetViewTest, MergedRowsDrawEqualStudyCellsOnce) {
    const int study = ColumnTitled("Study name");
    ASSERT_TRUE(document.EditCell(FixedRowCount + 1, study, "Aronson 1948"));
    document.SetMergeRows(true);
    const auto joined = [&](int row, int role) {
        return Model().data(At(row, study), role).toBool();
    };
    EXPECT_FALSE(joined(FixedRowCount, SheetModel::JoinAboveRole));
    EXPECT_TRUE(joined(FixedRowCount, SheetModel::JoinBelowRole));
    EXPECT_TRUE(joined(FixedRowCount + 1, SheetModel::JoinAboveRole));
    EXPECT_FALSE(joined(FixedRowCount + 1, SheetModel::JoinBelowRole));
    // Other columns never join, equal or not.
    EXPECT_FALSE(
        Model()
            .data(At(FixedRowCount + 5, ColumnTitled("Allocation")), SheetModel::JoinAboveRole)
            .toBool());
    document.SetMergeRows(false);
    EXPECT_FALSE(joined(FixedRowCount + 1, SheetModel::JoinAboveRole));
}

}  // namespace
}  // namespace synthara::ui
