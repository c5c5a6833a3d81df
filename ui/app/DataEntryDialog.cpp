#include "app/DataEntryDialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace synthara::ui {

namespace {

enum Column { Label, Value, Fault };

const QColor kFault(0xb0, 0x00, 0x00);

}  // namespace

DataEntryDialog::DataEntryDialog(const shell::RowEntries& entries, QWidget* parent)
    : QDialog(parent), roles_(new QTableWidget(static_cast<int>(entries.roles.size()), 3, this)) {
    setObjectName("frmDataEntry");
    setWindowTitle("Data entry assistant");
    QString heading;
    if (!entries.study.empty())
        heading = QString("Study: %1\n").arg(QString::fromStdString(entries.study));
    heading += QString("Format: %1\n%2 of %3 values entered")
                   .arg(QString::fromStdString(entries.format))
                   .arg(entries.Entered())
                   .arg(entries.roles.size());
    auto* title = new QLabel(heading, this);
    title->setTextInteractionFlags(Qt::TextSelectableByMouse);

    roles_->setHorizontalHeaderLabels({"Column", "Value", "Problem"});
    roles_->verticalHeader()->hide();
    roles_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    roles_->horizontalHeader()->setSectionResizeMode(Label, QHeaderView::ResizeToContents);
    roles_->horizontalHeader()->setSectionResizeMode(Value, QHeaderView::ResizeToContents);
    roles_->horizontalHeader()->setStretchLastSection(true);
    for (int r = 0; r < roles_->rowCount(); ++r) {
        const shell::EntryRole& role = entries.roles[static_cast<std::size_t>(r)];
        QString fault = QString::fromStdString(role.fault);
        if (fault.isEmpty() && role.col < 0)
            fault = "The sheet has no column for this value";
        else if (fault.isEmpty() && role.missing)
            fault = "Missing";
        roles_->setItem(r, Label, new QTableWidgetItem(QString::fromStdString(role.label)));
        roles_->setItem(r, Value, new QTableWidgetItem(QString::fromStdString(role.value)));
        auto* problem = new QTableWidgetItem(fault);
        if (!role.fault.empty()) problem->setForeground(kFault);
        roles_->setItem(r, Fault, problem);
    }

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(roles_, 1);
    if (!entries.errors.empty()) {
        auto* errors = new QLabel(QString::fromStdString(entries.errors).remove('\r'), this);
        errors->setWordWrap(true);
        errors->setStyleSheet("color: #b00000");
        layout->addWidget(errors);
    }
    layout->addWidget(buttons);
    resize(620, 360);
}

}  // namespace synthara::ui
