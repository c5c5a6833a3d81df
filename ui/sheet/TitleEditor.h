#pragma once
// The line in which the user edits a column's title, over its header
// section after a double-click. Enter commits, Escape cancels, and leaving
// the line commits too; the editor deletes itself when done.
#include <QLineEdit>
#include <QPointer>
#include <functional>

class QHeaderView;

namespace synthara::ui {

class TitleEditor final : public QLineEdit {
  public:
    // `commit` takes the text typed and says whether it was taken; when it
    // was not (it said why), Enter leaves the line open to correct.
    TitleEditor(QHeaderView& header, int section, const QString& title,
                std::function<bool(const QString&)> commit);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void Commit(bool closeAnyway);
    void Close();

    std::function<bool(const QString&)> commit_;
    // The grid, which has the focus back when the line closes.
    QPointer<QWidget> view_;
    bool busy_ = false;
    bool closed_ = false;
};

}  // namespace synthara::ui
