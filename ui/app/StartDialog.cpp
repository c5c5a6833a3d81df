#include "app/StartDialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/OkCancel.h"

namespace synthara::ui {

StartDialog::StartDialog(const shell::StoredSettings& settings, const sheet::RecentFiles& recent,
                         QWidget* parent)
    : QDialog(parent),
      recent_(recent),
      options_(new QButtonGroup(this)),
      list_(new QListWidget(this)),
      listHeading_(new QLabel(this)),
      show_(new QCheckBox("Show this dialog when I start the program", this)) {
    setObjectName("frmStart");
    setWindowTitle("Synthara");
    auto* choices = new QVBoxLayout;
    auto* heading = new QLabel("<b>What would you like to do?</b>", this);
    choices->addWidget(heading);
    for (const shell::StartOffer& offer : shell::StartOptions(false)) {
        auto* option = new QRadioButton(
            QString::fromUtf8(offer.caption.data(), static_cast<int>(offer.caption.size())), this);
        options_->addButton(option, static_cast<int>(offer.option));
        choices->addWidget(option);
    }
    choices->addStretch();
    auto* recentColumn = new QVBoxLayout;
    recentColumn->addWidget(listHeading_);
    recentColumn->addWidget(list_, 1);
    auto* columns = new QHBoxLayout;
    columns->addLayout(choices);
    columns->addSpacing(12);
    columns->addLayout(recentColumn, 1);
    QDialogButtonBox* buttons = OkCancel(*this);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(show_);
    bottom->addStretch();
    bottom->addWidget(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addLayout(bottom);

    show_->setChecked(settings.Integer("ShowWizard01") == 1);
    connect(options_, &QButtonGroup::idClicked, this, [this] { FillList(); });
    connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    SetOption(shell::FirstStartOption(settings, recent, false));
    resize(640, 320);
}

shell::StartOption StartDialog::Option() const {
    return static_cast<shell::StartOption>(options_->checkedId());
}

void StartDialog::SetOption(shell::StartOption option) {
    if (QAbstractButton* button = options_->button(static_cast<int>(option)))
        button->setChecked(true);
    FillList();
}

void StartDialog::FillList() {
    list_->clear();
    listHeading_->setText(Option() == shell::StartOption::Template ? "<b>Recent templates</b>"
                                                                   : "<b>Recent files</b>");
    for (const std::string& entry : shell::StartList(Option(), recent_)) {
        const QString text = QString::fromStdString(entry);
        auto* item = new QListWidgetItem(list_);
        if (entry == shell::kMoreFilesEntry) {
            item->setText(text);
            item->setData(Qt::UserRole, QString::fromUtf8(shell::kMoreFilesValue.data(),
                                                          shell::kMoreFilesValue.size()));
        } else {
            item->setText(QFileInfo(text).fileName());
            item->setToolTip(text);
            item->setData(Qt::UserRole, text);
        }
    }
    list_->setEnabled(list_->count() > 0);
    list_->setCurrentRow(0);
}

std::string StartDialog::ChosenPath() const {
    const QListWidgetItem* item = list_->currentItem();
    if (item == nullptr) return {};
    const std::string value = item->data(Qt::UserRole).toString().toStdString();
    return value == shell::kMoreFilesValue ? std::string() : value;
}

bool StartDialog::ShowNextTime() const {
    return show_->isChecked();
}

}  // namespace synthara::ui
