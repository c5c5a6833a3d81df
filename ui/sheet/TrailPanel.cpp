#include "sheet/TrailPanel.h"

#include <QFontDatabase>

#include "shell/Document.h"

namespace synthara::ui {

TrailPanel::TrailPanel(const shell::Document& document, QWidget* parent)
    : QPlainTextEdit(parent), document_(document) {
    setReadOnly(true);
    setLineWrapMode(NoWrap);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setPlaceholderText(tr("The computation of the current row is shown here."));
}

void TrailPanel::ShowCell(int row, int col) {
    row_ = row;
    const std::string trail = row >= 0 ? document_.RowTrail(row, col) : std::string();
    const QString text = QString::fromStdString(trail);
    if (text != toPlainText()) setPlainText(text);
}

}  // namespace synthara::ui
