#include "sheet/SheetWidget.h"

#include <QTableView>
#include <QVBoxLayout>

#include "sheet/SheetModel.h"

namespace synthara::ui {

SheetWidget::SheetWidget(shell::Document& document, QUndoStack& undo, QWidget* parent)
    : QWidget(parent),
      document_(document),
      undo_(undo),
      model_(new SheetModel(document, this)),
      view_(new QTableView(this)) {
    view_->setModel(model_);
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current, const QModelIndex&) {
                emit CurrentCellChanged(current.row(), current.column());
            });
    connect(view_, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        const QModelIndex at = view_->indexAt(pos);
        if (at.isValid())
            emit ContextMenuAt(at.row(), at.column(), view_->viewport()->mapToGlobal(pos));
    });
}

int SheetWidget::CurrentRow() const {
    return view_->currentIndex().isValid() ? view_->currentIndex().row() : -1;
}

int SheetWidget::CurrentColumn() const {
    return view_->currentIndex().isValid() ? view_->currentIndex().column() : -1;
}

void SheetWidget::SetCurrentCell(int row, int col) {
    view_->setCurrentIndex(model_->index(row, col));
}

}  // namespace synthara::ui
