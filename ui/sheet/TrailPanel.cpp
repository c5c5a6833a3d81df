#include "sheet/TrailPanel.h"

#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "shell/Document.h"

namespace synthara::ui {

TrailPanel::TrailPanel(const shell::Document& document, QWidget* parent)
    : QWidget(parent),
      document_(document),
      caption_(new QLabel(this)),
      text_(new QPlainTextEdit(this)) {
    caption_->setContentsMargins(6, 3, 6, 3);
    QFont bold = caption_->font();
    bold.setBold(true);
    caption_->setFont(bold);
    text_->setReadOnly(true);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text_->setPlaceholderText(tr("The computation of the current row is shown here."));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(caption_);
    layout->addWidget(text_);
    caption_->hide();
}

void TrailPanel::ShowCell(int row, int col) {
    const std::string trail = row >= 0 ? document_.RowTrail(row, col) : std::string();
    QString caption;
    if (!trail.empty()) {
        const sheet::Sheet& sheet = document_.Sheet();
        const int index = document_.TrailIndex(col);
        caption =
            tr("%1, row %2")
                .arg(QString::fromStdString(sheet.IndexNames()[static_cast<std::size_t>(index)]))
                .arg(row - sheet.Flex().FixedRows() + 1);
        if (const int study = sheet.GetCol(0, 1); study >= 0 && !sheet.Flex().IsBlank(row, study))
            caption += QStringLiteral(": ") + QString::fromStdString(sheet.Flex().Text(row, study));
    }
    caption_->setText(caption);
    caption_->setVisible(!caption.isEmpty());
    const QString text = QString::fromStdString(trail);
    if (text != text_->toPlainText()) text_->setPlainText(text);
}

QSize TrailPanel::sizeHint() const {
    constexpr int kLines = 7;
    return {QWidget::sizeHint().width(),
            text_->fontMetrics().lineSpacing() * kLines + caption_->sizeHint().height()};
}

QString TrailPanel::Caption() const {
    return caption_->text();
}

QString TrailPanel::Trail() const {
    return text_->toPlainText();
}

}  // namespace synthara::ui
