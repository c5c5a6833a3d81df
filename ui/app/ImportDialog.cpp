#include "app/ImportDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/OkCancel.h"
#include "sheet/catalogue/FormatCatalogue.h"
#include "sheet/import/ImportTable.h"

namespace synthara::ui {

ImportDialog::ImportDialog(std::string path, QWidget* parent)
    : QDialog(parent),
      path_(std::move(path)),
      sheets_(new QComboBox(this)),
      formats_(new QComboBox(this)),
      labels_(new QCheckBox("Use first row as labels", this)),
      preview_(new QTableWidget(this)),
      fault_(new QLabel(this)),
      buttons_(OkCancel(*this)) {
    const QString name = QFileInfo(QString::fromStdString(path_)).fileName();
    setWindowTitle("Import data - " + name);

    auto* choices = new QFormLayout;
    choices->addRow("&Sheet:", sheets_);
    labels_->setChecked(true);
    labels_->setToolTip(
        "On: the first row holds the column titles. Off: every row is data, and the columns "
        "are titled by their letters for you to identify.");
    choices->addRow(labels_);
    choices->addRow("Data &format of rows that name none:", formats_);

    preview_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    preview_->setSelectionMode(QAbstractItemView::NoSelection);
    preview_->verticalHeader()->setDefaultSectionSize(preview_->fontMetrics().height() + 6);
    preview_->setMinimumSize(640, 360);
    fault_->setWordWrap(true);
    fault_->setStyleSheet("color: #a00000;");
    fault_->hide();

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(choices);
    layout->addWidget(new QLabel(
        QString("The first %1 rows of %2, as they will be read:").arg(kPreviewRows).arg(name),
        this));
    layout->addWidget(preview_, 1);
    layout->addWidget(fault_);
    layout->addWidget(buttons_);

    ListWorkbookSheets();
    ListFormats();
    connect(formats_, &QComboBox::activated, this, [this] { formatChosen_ = true; });
    connect(sheets_, &QComboBox::currentIndexChanged, this, &ImportDialog::Refresh);
    connect(labels_, &QCheckBox::toggled, this, &ImportDialog::Refresh);
    Refresh();
    resize(880, 540);
}

void ImportDialog::ListWorkbookSheets() {
    const bool workbook = sheet::IsWorkbookFile(path_);
    sheets_->setEnabled(workbook);
    if (!workbook) {
        sheets_->addItem("(a text file has one table)");
        return;
    }
    const sheet::SheetList list = sheet::ListSheets(path_);
    if (!list.ok) {
        ShowFault(QString::fromStdString(list.message));
        return;
    }
    for (const std::string& name : list.names)
        sheets_->addItem(QString::fromStdString(name));
}

void ImportDialog::ListFormats() {
    formats_->addItem("(each row names its format)");
    for (const sheet::FormatDef& format : sheet::AllFormats())
        formats_->addItem(QString::fromUtf8(format.longName.data(),
                                            static_cast<qsizetype>(format.longName.size())));
}

void ImportDialog::ProposeFormat(const std::vector<std::string>& titles) {
    if (formatChosen_) return;
    const sheet::FormatDef* format = sheet::FormatOfTitles(titles);
    formats_->setCurrentIndex(
        format == nullptr
            ? 0
            : formats_->findText(QString::fromUtf8(
                  format->longName.data(), static_cast<qsizetype>(format->longName.size()))));
}

std::string ImportDialog::DefaultFormat() const {
    return formats_->isEnabled() && formats_->currentIndex() > 0
               ? formats_->currentText().toStdString()
               : std::string();
}

sheet::TableOptions ImportDialog::Options() const {
    sheet::TableOptions options;
    if (sheets_->isEnabled() && sheets_->currentIndex() >= 0)
        options.sheet.number = sheets_->currentIndex() + 1;
    options.firstRowTitles = labels_->isChecked();
    return options;
}

QString ImportDialog::Fault() const {
    return fault_->text();
}

void ImportDialog::ShowFault(const QString& text) {
    fault_->setText(text);
    fault_->setVisible(!text.isEmpty());
    buttons_->button(QDialogButtonBox::Ok)->setEnabled(text.isEmpty());
}

void ImportDialog::Refresh() {
    preview_->clear();
    preview_->setRowCount(0);
    preview_->setColumnCount(0);
    if (sheets_->isEnabled() && sheets_->count() == 0) return;  // the workbook's fault is shown
    const sheet::TableOptions options = Options();
    sheet::DelimitedResult read = sheet::PreviewTableFile(path_, options, kPreviewRows);
    if (!read.ok) {
        ShowFault(QString::fromStdString(read.Describe(path_)));
        return;
    }
    ShowFault({});
    sheet::DelimitedTable& table = read.table;
    // Columns without labels come in unidentified, with no format.
    formats_->setEnabled(options.firstRowTitles);
    if (!options.firstRowTitles) sheet::TitleByLetters(table);
    if (table.rows.empty()) {
        ShowFault("The file holds no rows to import.");
        return;
    }
    std::size_t width = 0;
    for (const auto& row : table.rows)
        width = std::max(width, row.size());
    preview_->setColumnCount(static_cast<int>(width));
    preview_->setRowCount(static_cast<int>(table.rows.size() - 1));
    if (options.firstRowTitles) ProposeFormat(table.rows.front());
    QStringList titles;
    for (const std::string& title : table.rows.front())
        titles << QString::fromStdString(title);
    preview_->setHorizontalHeaderLabels(titles);
    QStringList places;
    for (std::size_t r = 1; r < table.rows.size(); ++r) {
        places << (r < table.lines.size() ? QString::number(table.lines[r]) : QString());
        const auto& row = table.rows[r];
        for (std::size_t c = 0; c < row.size(); ++c)
            preview_->setItem(static_cast<int>(r - 1), static_cast<int>(c),
                              new QTableWidgetItem(QString::fromStdString(row[c])));
    }
    preview_->setVerticalHeaderLabels(places);
    preview_->resizeColumnsToContents();
}

}  // namespace synthara::ui
