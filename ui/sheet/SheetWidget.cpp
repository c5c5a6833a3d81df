#include "sheet/SheetWidget.h"

#include <QAction>
#include <QHeaderView>
#include <QItemSelection>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTabBar>
#include <QUndoStack>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "sheet/SheetEditor.h"
#include "sheet/SheetModel.h"
#include "sheet/SheetView.h"
#include "sheet/SnapshotCommand.h"
#include "sheet/TitleEditor.h"
#include "sheet/TrailPanel.h"
#include "sheet/blocks/BlockTable.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::ui {

SheetWidget::SheetWidget(shell::Document& document, QUndoStack& undo, QWidget* parent)
    : QWidget(parent),
      document_(document),
      undo_(undo),
      editor_(std::make_unique<SheetEditor>(document, undo)),
      model_(new SheetModel(document, this)),
      tabs_(new QTabBar(this)),
      view_(new SheetView(*model_, this)),
      trail_(new TrailPanel(document, this)),
      undoAction_(undo.createUndoAction(this)),
      redoAction_(undo.createRedoAction(this)) {
    model_->SetEditor(editor_.get());
    tabs_->setDrawBase(false);
    tabs_->setExpanding(false);

    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(view_);
    splitter->addWidget(trail_);
    splitter->setStretchFactor(0, 4);
    splitter->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(tabs_);
    layout->addWidget(splitter);

    undoAction_->setShortcut(QKeySequence::Undo);
    // Ctrl+Y always, beside the platform's own redo keys.
    QList<QKeySequence> redoKeys = QKeySequence::keyBindings(QKeySequence::Redo);
    if (const QKeySequence ctrlY(Qt::CTRL | Qt::Key_Y); !redoKeys.contains(ctrlY))
        redoKeys.prepend(ctrlY);
    redoAction_->setShortcuts(redoKeys);
    for (QAction* action : {undoAction_, redoAction_}) {
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
    }

    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current, const QModelIndex&) { CurrentChanged(current); });
    // The frozen columns lie over the grid: their clicks reach the overlay.
    for (QTableView* view : {static_cast<QTableView*>(view_), &view_->Frozen()}) {
        view->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(view, &QWidget::customContextMenuRequested, this, [this, view](const QPoint& pos) {
            const QModelIndex at = view->indexAt(pos);
            if (at.isValid())
                emit ContextMenuAt(model_->GridRow(at.row()), at.column(),
                                   view->viewport()->mapToGlobal(pos));
        });
    }
    connect(view_, &SheetView::ColumnDragged, this, [this](int from, int to) {
        RunUndoable(document_, undo_, "Move column", [&] { document_.MoveColumn(from, to); });
    });
    connect(view_, &SheetView::RowDragged, this, [this](int from, int to) {
        RunUndoable(document_, undo_, "Move row",
                    [&] { document_.MoveRow(model_->GridRow(from), model_->GridRow(to)); });
    });
    connect(view_, &SheetView::ClearRequested, this, &SheetWidget::ClearSelection);
    connect(view_, &SheetView::TitleEditRequested, this, &SheetWidget::EditTitle);
    connect(tabs_, &QTabBar::currentChanged, this, &SheetWidget::TabChosen);
    connect(model_, &SheetModel::StructureChanged, this, &SheetWidget::RebuildTabs);
    // Typing's steps name cells by row and column; columns or rows that
    // moved outside an undoable command would make them write elsewhere.
    connect(model_, &SheetModel::StructureChanged, this, [this] {
        if (!UndoableChangeUnderway()) undo_.clear();
    });
    connect(model_, &SheetModel::dataChanged, this,
            [this](const QModelIndex& topLeft, const QModelIndex& bottomRight) {
                const int row = view_->currentIndex().row();
                if (row >= topLeft.row() && row <= bottomRight.row()) ShowTrail();
            });
    connect(model_, &SheetModel::modelReset, this, &SheetWidget::ShowTrail);
    // After the view has taken the new sheet's columns in.
    connect(model_, &SheetModel::modelReset, this, &SheetWidget::GoToFirstBlock,
            Qt::QueuedConnection);
    RebuildTabs();
    GoToFirstBlock();
}

// A sheet just opened shows its first data-entry block beside the frozen
// columns, with the cursor in its first cell, rather than the free columns
// the sheet keeps for identifying columns and moderators.
void SheetWidget::GoToFirstBlock() {
    int first = -1;
    for (const sheet::CellBorder& border : document_.Sheet().View.Borders)
        if (border.kind == sheet::CellBorder::Kind::Block &&
            !view_->isColumnHidden(border.firstCol) && (first < 0 || border.firstCol < first))
            first = border.firstCol;
    if (first < 0 || model_->rowCount() == 0) return;
    view_->setCurrentIndex(model_->index(0, first));
    view_->ScrollToColumn(first);
}

SheetWidget::~SheetWidget() {
    // The model outlives the editor by a moment, as a child of this widget.
    model_->SetEditor(nullptr);
}

int SheetWidget::CurrentRow() const {
    const QModelIndex current = view_->currentIndex();
    return current.isValid() ? model_->GridRow(current.row()) : -1;
}

int SheetWidget::CurrentColumn() const {
    return view_->currentIndex().isValid() ? view_->currentIndex().column() : -1;
}

void SheetWidget::SetCurrentCell(int row, int col) {
    view_->setCurrentIndex(model_->index(model_->ModelRow(row), col));
}

std::optional<shell::SheetSelection> SheetWidget::Selection() const {
    // By rectangles: a whole column of a long sheet is one, not a cell each.
    const QItemSelection selected = view_->selectionModel()->selection();
    if (selected.isEmpty()) return std::nullopt;
    int top = std::numeric_limits<int>::max(), left = top;
    int bottom = -1, right = -1;
    for (const QItemSelectionRange& range : selected) {
        top = std::min(top, range.top());
        bottom = std::max(bottom, range.bottom());
        left = std::min(left, range.left());
        right = std::max(right, range.right());
    }
    shell::SheetSelection selection;
    selection.cells = {model_->GridRow(top), model_->GridRow(bottom), left, right};
    selection.wholeRows =
        left <= document_.Sheet().Flex().FixedCols() && right == model_->columnCount() - 1;
    selection.wholeColumns = top == 0 && bottom == model_->rowCount() - 1;
    return selection;
}

void SheetWidget::Select(const shell::CellRange& range) {
    const QModelIndex first = model_->index(model_->ModelRow(range.firstRow), range.firstCol);
    const QModelIndex last = model_->index(model_->ModelRow(range.lastRow), range.lastCol);
    view_->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    view_->selectionModel()->select(QItemSelection(first, last),
                                    QItemSelectionModel::ClearAndSelect);
}

void SheetWidget::SetEnterMovesRight(bool right) {
    view_->SetEnterMovesRight(right);
}

void SheetWidget::ClearSelection() {
    RunUndoable(document_, undo_, "Delete", [this] { document_.ClearCells(Selection()); });
}

void SheetWidget::EditTitle(int col) {
    const sheet::Sheet& sheet = document_.Sheet();
    if (col < sheet.Flex().FixedCols() ||
        shell::KindOfColumn(sheet, col) == shell::ColumnKind::System)
        return;
    const QString title = QString::fromStdString(sheet.ColumnLabel(col)).simplified();
    new TitleEditor(
        *view_->horizontalHeader(), col, title, [this, col, title](const QString& text) {
            if (text.simplified() == title) return true;
            shell::ColumnProperties wanted = document_.PropertiesOf(col);
            wanted.title = text.simplified().toStdString();
            if (auto refusal = shell::CheckColumnProperties(document_.Sheet(), col, wanted)) {
                document_.Prompts().Message(*refusal);
                return false;
            }
            editor_->Commit({{sheet::MetaRow::ColumnHeader, col, wanted.title}});
            return true;
        });
}

void SheetWidget::RebuildTabs() {
    const sheet::BlockView& view = document_.Sheet().View;
    const QSignalBlocker blocker(tabs_);
    while (tabs_->count() > 0)
        tabs_->removeTab(0);
    for (const std::string& tab : view.Tabs)
        tabs_->addTab(QString::fromStdString(tab));
    tabs_->setCurrentIndex(view.CurrentTab);
    tabs_->setVisible(view.TabsVisible && !view.Tabs.empty());
}

void SheetWidget::TabChosen(int tab) {
    document_.SelectBlockTab(tab);
    // Bring the block's first column into view.
    const std::string block = document_.Sheet().View.CurrentBlock();
    const sheet::Sheet& sheet = document_.Sheet();
    for (int c = sheet.Flex().FixedCols(); c < sheet.Flex().Cols(); ++c) {
        if (sheet.MetaIs(c, sheet::MetaRow::Function, "Data Entry") &&
            sheet.MetaIs(c, sheet::MetaRow::BlockName, block) && !sheet.Flex().Col(c).hidden) {
            const int row = std::max(view_->currentIndex().row(), 0);
            view_->setCurrentIndex(model_->index(row, c));
            break;
        }
    }
}

void SheetWidget::CurrentChanged(const QModelIndex& current) {
    const int row = current.isValid() ? model_->GridRow(current.row()) : -1;
    const int col = current.isValid() ? current.column() : -1;
    const sheet::Sheet& sheet = document_.Sheet();
    if (col >= 0 && sheet.MetaIs(col, sheet::MetaRow::Function, "Data Entry")) {
        const int tab = sheet::TabOf(sheet, sheet.Meta(col, sheet::MetaRow::BlockName));
        if (tab >= 0 && tab != tabs_->currentIndex()) {
            const QSignalBlocker blocker(tabs_);
            tabs_->setCurrentIndex(tab);
            document_.SelectBlockTab(tab);
        }
    }
    ShowTrail();
    emit CurrentCellChanged(row, col);
}

void SheetWidget::ShowTrail() {
    trail_->ShowCell(CurrentRow(), CurrentColumn());
}

}  // namespace synthara::ui
