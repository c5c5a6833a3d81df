#include "app/GroupNamesDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

namespace synthara::ui {

GroupNamesDialog::GroupNamesDialog(std::vector<sheet::GroupName> names, QWidget* parent)
    : QDialog(parent), names_(std::move(names)) {
    setObjectName("frmGroupNames");
    setWindowTitle("Edit group names");
    auto* form = new QFormLayout;
    for (const sheet::GroupName& name : names_) {
        auto* box = new QLineEdit(QString::fromStdString(name.value), this);
        form->addRow(QString::fromStdString(name.word) + ":", box);
        boxes_.push_back(box);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    setMinimumWidth(360);
}

std::vector<sheet::GroupName> GroupNamesDialog::Names() const {
    std::vector<sheet::GroupName> names = names_;
    for (std::size_t i = 0; i < names.size(); ++i)
        names[i].value = boxes_[i]->text().toStdString();
    return names;
}

}  // namespace synthara::ui
