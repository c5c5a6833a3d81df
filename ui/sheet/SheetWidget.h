#pragma once
// The sheet as the main window shows it: the block tabs over the grid of the
// open project, and the trail of the current row's computation under it.
// Rows and columns in its interface are the sheet's own (grid rows from the
// first data row on, grid columns).
#include <QPoint>
#include <QWidget>
#include <memory>
#include <optional>

#include "shell/Document.h"
#include "shell/SheetSelection.h"

class QAction;
class QTabBar;
class QUndoStack;

namespace synthara::ui {

class SheetEditor;
class SheetModel;
class SheetView;
class TrailPanel;

class SheetWidget final : public QWidget {
    Q_OBJECT
  public:
    // Every edit made in the grid is pushed onto `undo` as one command.
    SheetWidget(shell::Document& document, QUndoStack& undo, QWidget* parent = nullptr);
    ~SheetWidget() override;

    // The sheet cell under the cursor; -1 when there is none.
    int CurrentRow() const;
    int CurrentColumn() const;
    void SetCurrentCell(int row, int col);
    // The rectangle around what is selected, in sheet rows and columns: whole
    // rows when it spans every column the user may select, whole columns
    // when it spans every row; nothing when nothing is selected. Rows hidden
    // inside the rectangle are in it.
    std::optional<shell::SheetSelection> Selection() const;
    // Selects a rectangle of sheet cells (whole rows or columns when the
    // range spans the sheet), and makes its first cell the current one.
    void Select(const shell::CellRange& range);

    // Enter moves right instead of down ("Data entered to right").
    void SetEnterMovesRight(bool right);
    // Undo and redo of the grid's edits on the stack given, with their
    // shortcuts (Ctrl+Z, Ctrl+Y) while the sheet has the focus. A menu
    // shows these actions rather than making its own with the same keys.
    QAction* UndoAction() const { return undoAction_; }
    QAction* RedoAction() const { return redoAction_; }
    // Clears the selected cells that take typing, as one undoable edit.
    void ClearSelection();
    // Opens the line that edits column `col`'s title over its header (a
    // double-click on the header does); a system column's title stays.
    void EditTitle(int col);

    SheetModel& Model() { return *model_; }
    SheetView& View() { return *view_; }

  signals:
    void CurrentCellChanged(int row, int col);
    // The user asked for the context menu over a sheet cell.
    void ContextMenuAt(int row, int col, const QPoint& globalPos);

  private:
    void RebuildTabs();
    void TabChosen(int tab);
    void CurrentChanged(const QModelIndex& current);
    void ShowTrail();
    void GoToFirstBlock();

    shell::Document& document_;
    QUndoStack& undo_;
    std::unique_ptr<SheetEditor> editor_;
    SheetModel* model_;
    QTabBar* tabs_;
    SheetView* view_;
    TrailPanel* trail_;
    QAction* undoAction_;
    QAction* redoAction_;
};

}  // namespace synthara::ui
