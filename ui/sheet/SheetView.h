#pragma once
// The grid on screen: a table view over the sheet model with the sheet's
// fixed columns frozen at the left in an overlay view that shares the model
// and the selection (the cursor never hides under it), rows of one height,
// column widths and visibility from the grid, and column moves by dragging
// handed to whoever owns the sheet instead of done by the header; rows are
// dragged by their numbers and handed on the same way.
#include <QTableView>

namespace synthara::ui {

class SheetModel;

class SheetView final : public QTableView {
    Q_OBJECT
  public:
    explicit SheetView(SheetModel& model, QWidget* parent = nullptr);

    // Enter moves the cursor right instead of down.
    void SetEnterMovesRight(bool right) { enterMovesRight_ = right; }
    bool EnterMovesRight() const { return enterMovesRight_; }
    // Moves the cursor on from the current cell, as Enter does.
    void MoveAfterEntry();
    // The overlay with the frozen columns.
    QTableView& Frozen() { return *frozen_; }
    int FrozenWidth() const;
    // Scrolls a cell into view beside the frozen columns, never under them.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    // Scrolls so that column `col` stands first beside the frozen columns.
    void ScrollToColumn(int col);

  signals:
    // The user dragged column `from` to position `to`; the header has been
    // put back as it was, and the sheet decides.
    void ColumnDragged(int from, int to);
    // The user dragged the number of model row `from` onto model row `to`.
    void RowDragged(int from, int to);
    // Delete was pressed over the selection.
    void ClearRequested();
    // The user double-clicked the header of column `col` to edit its title.
    void TitleEditRequested(int col);

  protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void updateGeometries() override;
    // Row drags on the row numbers, which stand in the frozen overlay.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // Widths, visibility and the frozen count from the grid.
    void LayOut();
    int AutoWidth(int col) const;
    void PlaceFrozen();
    void HeaderMoved(int logical, int oldVisual, int newVisual);
    // Keeps a cell right of the frozen columns out from under them.
    void UncoverFromFrozen(const QModelIndex& index);

    SheetModel& model_;
    QTableView* frozen_;
    int frozenCount_ = 0;
    bool enterMovesRight_ = false;
    int rowDragFrom_ = -1;  // the model row whose number is being dragged
};

}  // namespace synthara::ui
