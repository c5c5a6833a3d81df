#pragma once
// Under the grid: the trail of the current row's computation for the index
// of the current display column, or the primary index, in a fixed font under
// a caption that names the index and the row.
#include <QWidget>

class QLabel;
class QPlainTextEdit;

namespace synthara::shell {
class Document;
}

namespace synthara::ui {

class TrailPanel final : public QWidget {
    Q_OBJECT
  public:
    explicit TrailPanel(const shell::Document& document, QWidget* parent = nullptr);

    // Shows the trail of sheet cell (row, col); -1 for none.
    void ShowCell(int row, int col);
    QString Caption() const;
    QString Trail() const;
    // A few lines high: the grid takes most of the height, the trail scrolls.
    QSize sizeHint() const override;

  private:
    const shell::Document& document_;
    QLabel* caption_;
    QPlainTextEdit* text_;
};

}  // namespace synthara::ui
