#include "app/FormulasDialog.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace synthara::ui {

FormulasDialog::FormulasDialog(shell::RowFormulas formulas, ports::Clipboard& clipboard,
                               QWidget* parent)
    : QDialog(parent),
      formulas_(std::move(formulas)),
      clipboard_(clipboard),
      indices_(new QListWidget(this)),
      trail_(new QPlainTextEdit(this)) {
    setObjectName("frmStudyDetails");
    setWindowTitle("Formulas");
    QString heading = QString("Format: %1").arg(QString::fromStdString(formulas_.format));
    if (!formulas_.study.empty())
        heading = QString("Study: %1\n").arg(QString::fromStdString(formulas_.study)) + heading;
    auto* title = new QLabel(heading, this);
    title->setTextInteractionFlags(Qt::TextSelectableByMouse);

    for (const shell::IndexFormula& formula : formulas_.indices) {
        auto* item = new QListWidgetItem(QString::fromStdString(formula.name), indices_);
        // An index the row could not give stays listed, for its explanation.
        if (!formula.valid)
            item->setForeground(palette().color(QPalette::Disabled, QPalette::Text));
    }
    indices_->setMaximumWidth(220);
    trail_->setReadOnly(true);
    trail_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    trail_->setLineWrapMode(QPlainTextEdit::NoWrap);
    connect(indices_, &QListWidget::currentRowChanged, this, &FormulasDialog::ShowIndex);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* copy = buttons->addButton("Copy", QDialogButtonBox::ActionRole);
    connect(copy, &QPushButton::clicked, this, &FormulasDialog::Copy);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* panes = new QHBoxLayout;
    panes->addWidget(indices_);
    panes->addWidget(trail_, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    if (!formulas_.errors.empty()) {
        auto* errors = new QLabel(QString::fromStdString(formulas_.errors).remove('\r'), this);
        errors->setWordWrap(true);
        errors->setStyleSheet("color: #b00000");
        layout->addWidget(errors);
    }
    layout->addLayout(panes, 1);
    layout->addWidget(buttons);
    resize(760, 420);
    if (!formulas_.indices.empty()) indices_->setCurrentRow(formulas_.current);
}

void FormulasDialog::ShowIndex(int position) {
    if (position < 0 || position >= static_cast<int>(formulas_.indices.size())) return;
    trail_->setPlainText(
        QString::fromStdString(formulas_.indices[static_cast<std::size_t>(position)].trail));
}

void FormulasDialog::Copy() {
    clipboard_.SetText(formulas_.Text());
}

}  // namespace synthara::ui
