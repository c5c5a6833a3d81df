// The sheet model over the open project: what it shows of the grid, which
// cells take typing, their colours, and the signals a change gives.
#include <QColor>
#include <QSignalSpy>

#include "sheet/grid/SheetColors.h"
#include "support/SheetFixture.h"

namespace synthara::ui {
namespace {

using sheet::FixedRowCount;

TEST_F(SheetFixture, ShowsTheDataRowsUnderTheTitles) {
    const sheet::Grid& flex = Sheet().Flex();
    EXPECT_EQ(Model().rowCount(), flex.Rows() - FixedRowCount);
    EXPECT_EQ(Model().columnCount(), flex.Cols());
    const int study = ColumnTitled("Study name");
    ASSERT_GE(study, 0);
    EXPECT_EQ(Model().headerData(study, Qt::Horizontal, Qt::DisplayRole).toString(), "Study name");
    // The first model row is the first data row; no record row shows.
    EXPECT_EQ(Model().GridRow(0), FixedRowCount);
    EXPECT_EQ(Model().GridRow(Model().rowCount() - 1), flex.Rows() - 1);
    EXPECT_EQ(Model().GridRow(Model().rowCount()), -1);
    EXPECT_EQ(Model().ModelRow(FixedRowCount - 1), -1);
    EXPECT_EQ(Shown(FixedRowCount, study), "Aronson 1948");
    EXPECT_EQ(Shown(FixedRowCount, ColumnTitled("Group-A Events")), "4");
    // Computed numbers in the column's number format: ln(4 x 128 / (119 x 11)).
    EXPECT_EQ(Shown(FixedRowCount, DisplayCol(1, sheet::AttrPoint)), "-0.939");
    EXPECT_EQ(Model()
                  .data(At(FixedRowCount, DisplayCol(1, sheet::AttrPoint)), Qt::TextAlignmentRole)
                  .value<Qt::Alignment>(),
              Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(Model().data(At(FixedRowCount, study), Qt::TextAlignmentRole).value<Qt::Alignment>(),
              Qt::AlignLeft | Qt::AlignVCenter);
}

TEST_F(SheetFixture, OnlyEntryAndUserCellsTakeTyping) {
    const int row = FixedRowCount;
    const auto editable = [&](int col) {
        return Model().flags(At(row, col)).testFlag(Qt::ItemIsEditable);
    };
    EXPECT_TRUE(editable(ColumnTitled("Group-A Events")));
    EXPECT_TRUE(editable(ColumnTitled("Study name")));
    EXPECT_TRUE(editable(ColumnTitled("Latitude")));
    EXPECT_FALSE(editable(DisplayCol(1, sheet::AttrPoint)));
    EXPECT_FALSE(editable(0));  // row numbers
    EXPECT_FALSE(editable(Sheet().FormatCol()));
    EXPECT_TRUE(
        Model().flags(At(row, DisplayCol(1, sheet::AttrPoint))).testFlag(Qt::ItemIsSelectable));
}

TEST_F(SheetFixture, ColoursComputedFaultyAndOtherBlocksCells) {
    const int row = FixedRowCount;
    const auto back = [&](int gridRow, int col) {
        return Model().data(At(gridRow, col), Qt::BackgroundRole);
    };
    EXPECT_EQ(back(row, DisplayCol(1, sheet::AttrPoint)).value<QColor>(),
              QColor::fromRgba(sheet::kDisplayBackColor));
    const int eventsA = ColumnTitled("Group-A Events");
    EXPECT_FALSE(back(row, eventsA).isValid());

    // More events than patients: the entry turns red.
    ASSERT_TRUE(document.EditCell(row, eventsA, "500"));
    EXPECT_EQ(back(row, eventsA).value<QColor>(), QColor(Qt::red));

    // A second block: its cells on rows of the first are grey and refuse typing.
    ASSERT_TRUE(document.AddBlock("Events and non-events in each group"));
    const int nonEventsA = ColumnTitled("Group-A Non-events");
    ASSERT_GE(nonEventsA, 0);
    const QColor grey = back(row + 1, nonEventsA).value<QColor>();
    EXPECT_TRUE(grey.isValid());
    EXPECT_EQ(grey.red(), grey.green());
    EXPECT_FALSE(Model().flags(At(row + 1, nonEventsA)).testFlag(Qt::ItemIsEditable));
}

TEST_F(SheetFixture, AnEditSignalsTheCellsItTouched) {
    QSignalSpy changed(&Model(), &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&Model(), &QAbstractItemModel::modelReset);
    const int row = FixedRowCount + 2;
    const int eventsA = ColumnTitled("Group-A Events");
    ASSERT_TRUE(document.EditCell(row, eventsA, "7"));
    ASSERT_FALSE(changed.isEmpty());
    // First the cell typed into, then the row's computed cells; no other row.
    const auto topLeft = changed.front().at(0).toModelIndex();
    const auto bottomRight = changed.front().at(1).toModelIndex();
    EXPECT_EQ(topLeft, At(row, eventsA));
    EXPECT_EQ(bottomRight, At(row, eventsA));
    bool point = false;
    for (const QList<QVariant>& signal : changed) {
        const QModelIndex from = signal.at(0).toModelIndex();
        const QModelIndex to = signal.at(1).toModelIndex();
        EXPECT_EQ(from.row(), Model().ModelRow(row));
        EXPECT_EQ(to.row(), Model().ModelRow(row));
        const int col = DisplayCol(1, sheet::AttrPoint);
        point = point || (from.column() <= col && col <= to.column());
    }
    EXPECT_TRUE(point);
    EXPECT_TRUE(reset.isEmpty());
}

TEST_F(SheetFixture, ABlockInsertAddsColumnsWithoutAReset) {
    QSignalSpy inserted(&Model(), &QAbstractItemModel::columnsInserted);
    QSignalSpy reset(&Model(), &QAbstractItemModel::modelReset);
    QSignalSpy laidOut(&Model(), &SheetModel::StructureChanged);
    const int before = Model().columnCount();
    ASSERT_TRUE(document.AddBlock("Events and non-events in each group"));
    ASSERT_EQ(inserted.size(), 1);
    EXPECT_EQ(inserted.front().at(1).toInt(), before);
    EXPECT_EQ(inserted.front().at(2).toInt(), Sheet().Flex().Cols() - 1);
    EXPECT_EQ(Model().columnCount(), Sheet().Flex().Cols());
    EXPECT_TRUE(reset.isEmpty());
    EXPECT_EQ(laidOut.size(), 1);
    // The view follows: the new block's columns show, the hidden ones don't.
    const int nonEventsA = ColumnTitled("Group-A Non-events");
    EXPECT_FALSE(widget->View().isColumnHidden(nonEventsA));
    EXPECT_TRUE(widget->View().isColumnHidden(Sheet().FormatCol()));
}

}  // namespace
}  // namespace synthara::ui
