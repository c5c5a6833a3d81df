#include "sheet/SheetView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "sheet/SheetDelegate.h"
#include "sheet/SheetModel.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::ui {

namespace {

constexpr double kTwipsPerInch = 1440.0;
// A column sized "Auto" is as wide as its title's longest word and the
// widest of its first rows, within these bounds; the rows below are never
// measured.
constexpr int kMeasuredRows = 100;
constexpr int kMaxAutoWidth = 240;
constexpr int kCellPadding = 10;
// Room for titles of up to three lines ("Group-A / Non- / events").
constexpr int kHeaderLines = 3;

void ShareLooks(QTableView& view, QAbstractItemDelegate& delegate, int rowHeight) {
    view.setItemDelegate(&delegate);
    view.setShowGrid(false);
    view.setWordWrap(false);
    view.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.verticalHeader()->hide();
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.verticalHeader()->setDefaultSectionSize(rowHeight);
    view.verticalHeader()->setMinimumSectionSize(rowHeight);
    QHeaderView& header = *view.horizontalHeader();
    header.setDefaultAlignment(Qt::Alignment(Qt::AlignCenter) | Qt::Alignment(Qt::TextWordWrap));
    header.setHighlightSections(false);
    header.setFixedHeight(view.fontMetrics().lineSpacing() * kHeaderLines + 8);
}

}  // namespace

SheetView::SheetView(SheetModel& model, QWidget* parent)
    : QTableView(parent), model_(model), frozen_(new QTableView(this)) {
    auto* delegate = new SheetDelegate(this);
    const int rowHeight = fontMetrics().height() + 6;
    setModel(&model_);
    ShareLooks(*this, *delegate, rowHeight);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    horizontalHeader()->setSectionsMovable(true);
    connect(horizontalHeader(), &QHeaderView::sectionMoved, this, &SheetView::HeaderMoved);
    connect(horizontalHeader(), &QHeaderView::sectionDoubleClicked, this,
            &SheetView::TitleEditRequested);
    connect(delegate, &SheetDelegate::EntryFinished, this, &SheetView::MoveAfterEntry);

    frozen_->setModel(&model_);
    frozen_->setSelectionModel(selectionModel());
    // A delegate of its own: an editor belongs to one view.
    ShareLooks(*frozen_, *new SheetDelegate(frozen_), rowHeight);
    frozen_->setFocusPolicy(Qt::NoFocus);
    frozen_->setEditTriggers(NoEditTriggers);
    frozen_->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    frozen_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frozen_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frozen_->setFrameShape(QFrame::NoFrame);
    frozen_->setStyleSheet(QStringLiteral("QTableView { border-right: 1px solid #8c96a8; }"));
    viewport()->stackUnder(frozen_);
    connect(frozen_->verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(),
            &QScrollBar::setValue);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, frozen_->verticalScrollBar(),
            &QScrollBar::setValue);
    frozen_->viewport()->installEventFilter(this);
    connect(&model_, &SheetModel::StructureChanged, this, &SheetView::LayOut);
    LayOut();
}

bool SheetView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != frozen_->viewport()) return QTableView::eventFilter(watched, event);
    QWidget& viewport = *frozen_->viewport();
    switch (event->type()) {
        case QEvent::MouseButtonPress: {
            const auto* mouse = static_cast<QMouseEvent*>(event);
            const QModelIndex at = frozen_->indexAt(mouse->position().toPoint());
            rowDragFrom_ = mouse->button() == Qt::LeftButton && at.isValid() && at.column() == 0
                               ? at.row()
                               : -1;
            break;
        }
        case QEvent::MouseMove:
            if (rowDragFrom_ >= 0) viewport.setCursor(Qt::ClosedHandCursor);
            break;
        case QEvent::MouseButtonRelease:
            if (rowDragFrom_ >= 0) {
                const int from = std::exchange(rowDragFrom_, -1);
                viewport.unsetCursor();
                const int to =
                    frozen_->rowAt(static_cast<QMouseEvent*>(event)->position().toPoint().y());
                if (to >= 0 && to != from) emit RowDragged(from, to);
            }
            break;
        default:
            break;
    }
    return QTableView::eventFilter(watched, event);
}

int SheetView::AutoWidth(int col) const {
    const QFontMetrics metrics = fontMetrics();
    int widest = 0;
    const QString title = model_.headerData(col, Qt::Horizontal, Qt::DisplayRole).toString();
    for (const QString& word : title.split(QRegularExpression(QStringLiteral("\\s+"))))
        widest = std::max(widest, metrics.horizontalAdvance(word));
    const int rows = std::min(model_.rowCount(), kMeasuredRows);
    for (int r = 0; r < rows; ++r)
        widest =
            std::max(widest, metrics.horizontalAdvance(
                                 model_.data(model_.index(r, col), Qt::DisplayRole).toString()));
    return std::min(widest + kCellPadding, kMaxAutoWidth);
}

void SheetView::LayOut() {
    const sheet::Sheet& sheet = model_.Document().Sheet();
    const sheet::Grid& flex = sheet.Flex();
    const double pixelsPerTwip = logicalDpiX() / kTwipsPerInch;
    frozenCount_ = std::min(flex.FixedCols(), model_.columnCount());
    for (int c = 0; c < model_.columnCount(); ++c) {
        const sheet::Column& column = flex.Col(c);
        int width = std::max(8, static_cast<int>(column.width * pixelsPerTwip + 0.5));
        if (!column.hidden && c >= frozenCount_ &&
            sheet.MetaIs(c, sheet::MetaRow::ColWidth, "Auto"))
            width = std::max(width, AutoWidth(c));
        setColumnHidden(c, column.hidden);
        setColumnWidth(c, width);
        frozen_->setColumnHidden(c, column.hidden || c >= frozenCount_);
        frozen_->setColumnWidth(c, width);
    }
    PlaceFrozen();
}

int SheetView::FrozenWidth() const {
    int width = 0;
    for (int c = 0; c < frozenCount_; ++c)
        if (!isColumnHidden(c)) width += columnWidth(c);
    return width;
}

void SheetView::PlaceFrozen() {
    const int width = FrozenWidth();
    frozen_->setVisible(width > 0);
    frozen_->setGeometry(viewport()->x(), horizontalHeader()->y(), width + 1,
                         viewport()->height() + horizontalHeader()->height());
}

void SheetView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    PlaceFrozen();
}

void SheetView::updateGeometries() {
    QTableView::updateGeometries();
    PlaceFrozen();
}

void SheetView::UncoverFromFrozen(const QModelIndex& index) {
    if (!index.isValid() || index.column() < frozenCount_) return;
    const int left = visualRect(index).left();
    const int covered = FrozenWidth() - left;
    if (covered > 0) horizontalScrollBar()->setValue(horizontalScrollBar()->value() - covered);
}

void SheetView::ScrollToColumn(int col) {
    if (col < frozenCount_) return;
    horizontalScrollBar()->setValue(horizontalHeader()->sectionPosition(col) - FrozenWidth());
}

QModelIndex SheetView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex next = QTableView::moveCursor(action, modifiers);
    // The frozen columns are labels, not cells to walk into.
    if (next.isValid() && next.column() < frozenCount_ && currentIndex().isValid() &&
        currentIndex().column() >= frozenCount_)
        return currentIndex();
    UncoverFromFrozen(next);
    return next;
}

void SheetView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    // A frozen cell is always in view; scrolling to it would only jump.
    if (index.column() < frozenCount_) {
        const int column = horizontalScrollBar()->value();
        QTableView::scrollTo(index, hint);
        horizontalScrollBar()->setValue(column);
        return;
    }
    QTableView::scrollTo(index, hint);
    UncoverFromFrozen(index);
}

void SheetView::MoveAfterEntry() {
    const QModelIndex current = currentIndex();
    if (!current.isValid()) return;
    QModelIndex next;
    if (enterMovesRight_) {
        for (int c = current.column() + 1; c < model_.columnCount() && !next.isValid(); ++c)
            if (!isColumnHidden(c)) next = model_.index(current.row(), c);
    } else {
        next = model_.index(current.row() + 1, current.column());
    }
    if (next.isValid()) setCurrentIndex(next);
}

void SheetView::keyPressEvent(QKeyEvent* event) {
    if (state() != EditingState) {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            MoveAfterEntry();
            return;
        }
        if (event->key() == Qt::Key_Delete) {
            emit ClearRequested();
            return;
        }
    }
    QTableView::keyPressEvent(event);
}

void SheetView::HeaderMoved(int logical, int oldVisual, int newVisual) {
    // The header keeps the grid's order; the sheet moves its own columns and
    // tells the model.
    QHeaderView& header = *horizontalHeader();
    const QSignalBlocker blocker(header);
    header.moveSection(newVisual, oldVisual);
    emit ColumnDragged(logical, newVisual);
}

}  // namespace synthara::ui
