#include "app/ColumnVisibilityDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/OkCancel.h"

namespace synthara::ui {

namespace {

constexpr int kColumnRole = Qt::UserRole;

void TickAll(QListWidget& list, bool shown) {
    for (int i = 0; i < list.count(); ++i)
        list.item(i)->setCheckState(shown ? Qt::Checked : Qt::Unchecked);
}

}  // namespace

ColumnVisibilityDialog::ColumnVisibilityDialog(shell::Document& document, QWidget* parent)
    : QDialog(parent), document_(document), columns_(new QListWidget(this)) {
    setObjectName("frmHideColumns");
    setWindowTitle("Hide or display columns");
    const sheet::Sheet& sheet = document.Sheet();
    const sheet::Grid& flex = sheet.Flex();
    for (int c = flex.FixedCols(); c < flex.Cols(); ++c) {
        if (shell::KindOfColumn(sheet, c) != shell::ColumnKind::User) continue;
        const QString title = QString::fromStdString(sheet.ColumnLabel(c)).simplified();
        auto* item = new QListWidgetItem(title.isEmpty() ? "(no title)" : title, columns_);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(flex.Col(c).hidden ? Qt::Unchecked : Qt::Checked);
        item->setData(kColumnRole, c);
    }
    auto* showAll = new QPushButton("Show all", this);
    auto* hideAll = new QPushButton("Hide all", this);
    connect(showAll, &QPushButton::clicked, this, [this] { TickAll(*columns_, true); });
    connect(hideAll, &QPushButton::clicked, this, [this] { TickAll(*columns_, false); });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(showAll);
    buttons->addWidget(hideAll);
    buttons->addStretch(1);

    auto* note = new QLabel(
        "Ticked columns are shown. Columns of effect size data and "
        "computed columns are shown with their block and index.",
        this);
    note->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(note);
    layout->addWidget(columns_, 1);
    layout->addLayout(buttons);
    layout->addWidget(OkCancel(*this));
    resize(360, 440);
}

void ColumnVisibilityDialog::accept() {
    std::vector<std::pair<int, bool>> shown;
    for (int i = 0; i < columns_->count(); ++i) {
        const QListWidgetItem* item = columns_->item(i);
        shown.emplace_back(item->data(kColumnRole).toInt(), item->checkState() == Qt::Checked);
    }
    if (document_.ShowColumns(shown)) QDialog::accept();
}

}  // namespace synthara::ui
