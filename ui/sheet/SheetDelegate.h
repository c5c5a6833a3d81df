#pragma once
// Paints a sheet cell: its background and text as usual, then its own grid
// lines (so a merged column can leave out the line between equal cells) and
// the sides of block and identifying-column outlines. Enter in an editor
// commits it and says so, so the view can move on.
#include <QStyledItemDelegate>

namespace synthara::ui {

class SheetDelegate final : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    // A drop-down column's cell is edited in a box of its values, in which
    // the user may still type another.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;

  signals:
    // The user pressed Enter in a cell's editor, which has been committed and closed.
    void EntryFinished();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace synthara::ui
