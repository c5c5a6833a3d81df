#include "app/AddStudyDialog.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "app/OkCancel.h"

namespace synthara::ui {

AddStudyDialog::AddStudyDialog(shell::Document& document, QWidget* parent)
    : QDialog(parent),
      document_(document),
      name_(new QLineEdit(QString::fromStdString(document.NewStudyName()), this)),
      rectangle_(
          new QCheckBox("One row for each subgroup, comparison, outcome and time point", this)) {
    setObjectName("frmAddStudy");
    setWindowTitle("Insert study");
    auto* note = new QLabel(
        "To insert multi-row studies close this panel and then use the 'Insert' menu.", this);
    note->setWordWrap(true);
    auto* form = new QFormLayout;
    form->addRow("Study name:", name_);
    form->addRow(QString(), rectangle_);
    QDialogButtonBox* buttons = OkCancel(*this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(note);
    layout->addLayout(form);
    layout->addWidget(buttons);
    name_->selectAll();
    setMinimumWidth(460);
}

void AddStudyDialog::accept() {
    const sheet::AddStudyOutcome outcome =
        document_.AddStudy(name_->text().toStdString(), rectangle_->isChecked());
    name_->setText(QString::fromStdString(outcome.nextName));
    name_->selectAll();
    if (outcome.inserted) QDialog::accept();
}

}  // namespace synthara::ui
