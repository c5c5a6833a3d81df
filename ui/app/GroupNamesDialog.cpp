#include "app/GroupNamesDialog.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "app/OkCancel.h"

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
    QDialogButtonBox* buttons = OkCancel(*this);
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
