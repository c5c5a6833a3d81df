#pragma once
// The sheet as the main window shows it: the grid of the open project.
#include <QPoint>
#include <QWidget>

#include "shell/Document.h"

class QTableView;
class QUndoStack;

namespace synthara::ui {

class SheetModel;

class SheetWidget final : public QWidget {
    Q_OBJECT
  public:
    // Every edit made in the grid is pushed onto `undo` as one command.
    SheetWidget(shell::Document& document, QUndoStack& undo, QWidget* parent = nullptr);

    // The sheet cell under the cursor; -1 when there is none.
    int CurrentRow() const;
    int CurrentColumn() const;
    void SetCurrentCell(int row, int col);

  signals:
    void CurrentCellChanged(int row, int col);
    // The user asked for the context menu over a sheet cell.
    void ContextMenuAt(int row, int col, const QPoint& globalPos);

  private:
    shell::Document& document_;
    QUndoStack& undo_;
    SheetModel* model_;
    QTableView* view_;
};

}  // namespace synthara::ui
