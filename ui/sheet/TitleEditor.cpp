#include "sheet/TitleEditor.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace synthara::ui {

TitleEditor::TitleEditor(QHeaderView& header, int section, const QString& title,
                         std::function<bool(const QString&)> commit)
    : QLineEdit(title, header.viewport()),
      commit_(std::move(commit)),
      view_(header.parentWidget()) {
    setObjectName("titleEditor");
    setAlignment(Qt::AlignCenter);
    setGeometry(header.sectionViewportPosition(section), 0, header.sectionSize(section),
                header.height());
    selectAll();
    show();
    setFocus();
}

void TitleEditor::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
            Close();
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Commit(false);
            return;
        default:
            QLineEdit::keyPressEvent(event);
    }
}

void TitleEditor::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // The box of a refused title takes the focus for a moment: not a leave.
    if (!busy_) Commit(true);
}

void TitleEditor::Commit(bool closeAnyway) {
    if (closed_ || busy_) return;
    busy_ = true;
    const bool taken = commit_(text());
    busy_ = false;
    if (taken || closeAnyway)
        Close();
    else
        selectAll();
}

void TitleEditor::Close() {
    if (closed_) return;
    closed_ = true;
    hide();
    if (view_ != nullptr) view_->setFocus();
    deleteLater();
}

}  // namespace synthara::ui
