#include "app/IndicesDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "app/OkCancel.h"

namespace synthara::ui {

IndicesDialog::IndicesDialog(shell::Document& document, QWidget* parent)
    : QDialog(parent),
      document_(document),
      selection_(document.IndexChoices()),
      display_(new QListWidget(this)),
      primary_(new QComboBox(this)),
      stdErr_(new QCheckBox("Also show standard error ", this)),
      variance_(new QCheckBox("Also show variance", this)),
      selected_(new QRadioButton("Show selected indices", this)),
      onlyPrimary_(new QRadioButton("Show only primary index", this)) {
    setObjectName("frmIndices");
    setWindowTitle("Effect size indices");
    display_->setObjectName("flexDisplay");
    primary_->setObjectName("cmbIndex");
    for (const shell::IndexChoice& choice : selection_.indices) {
        auto* item = new QListWidgetItem(QString::fromStdString(choice.name), display_);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        primary_->addItem(QString::fromStdString(choice.name));
    }
    ShowTicks();
    primary_->setCurrentText(QString::fromStdString(selection_.primary));
    stdErr_->setChecked(selection_.showStdErr);
    variance_->setChecked(selection_.showVariance);
    (selection_.mode == sheet::ShowPrimaryIndex ? onlyPrimary_ : selected_)->setChecked(true);
    connect(display_, &QListWidget::itemChanged, this, &IndicesDialog::Ticked);
    connect(primary_, &QComboBox::currentIndexChanged, this, &IndicesDialog::PrimaryChosen);

    auto* list = new QGroupBox("Display columns for these indices", this);
    (new QVBoxLayout(list))->addWidget(display_);
    auto* show = new QGroupBox(this);
    auto* modes = new QVBoxLayout(show);
    modes->addWidget(selected_);
    modes->addWidget(onlyPrimary_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list, 1);
    layout->addWidget(new QLabel("Use the following as the primary index", this));
    layout->addWidget(primary_);
    layout->addWidget(stdErr_);
    layout->addWidget(variance_);
    layout->addWidget(show);
    layout->addWidget(OkCancel(*this));
    resize(360, 480);
}

void IndicesDialog::ShowTicks() {
    const QSignalBlocker quiet(display_);
    for (std::size_t i = 0; i < selection_.indices.size(); ++i)
        display_->item(static_cast<int>(i))
            ->setCheckState(selection_.indices[i].shown ? Qt::Checked : Qt::Unchecked);
}

void IndicesDialog::Ticked(QListWidgetItem* item) {
    const auto position = static_cast<std::size_t>(display_->row(item));
    if (const auto refused = selection_.SetShown(position, item->checkState() == Qt::Checked))
        document_.Prompts().Message(*refused);
    ShowTicks();
}

void IndicesDialog::PrimaryChosen(int position) {
    if (position < 0) return;
    selection_.SetPrimary(primary_->itemText(position).toStdString());
    ShowTicks();
}

void IndicesDialog::accept() {
    selection_.showStdErr = stdErr_->isChecked();
    selection_.showVariance = variance_->isChecked();
    selection_.mode =
        onlyPrimary_->isChecked() ? sheet::ShowPrimaryIndex : sheet::ShowSelectedIndices;
    document_.SetIndexSelection(selection_);
    QDialog::accept();
}

}  // namespace synthara::ui
