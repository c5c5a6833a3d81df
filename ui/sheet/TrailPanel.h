#pragma once
// Under the grid: the trail of the current row's computation for the index
// of the current display column, or the primary index, in a fixed font.
#include <QPlainTextEdit>

namespace synthara::shell {
class Document;
}

namespace synthara::ui {

class TrailPanel final : public QPlainTextEdit {
    Q_OBJECT
  public:
    explicit TrailPanel(const shell::Document& document, QWidget* parent = nullptr);

    // Shows the trail of sheet cell (row, col); -1 for none.
    void ShowCell(int row, int col);
    int Row() const { return row_; }

  private:
    const shell::Document& document_;
    int row_ = -1;
};

}  // namespace synthara::ui
