#include "app/ColumnPropertiesDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>

#include "app/OkCancel.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::ui {

namespace {

using sheet::MetaRow;

constexpr int kTwipsPerPoint = 20;
constexpr const char* kDropDown = "Drop down box";

// What the column is for, in the user's words.
QString UsedFor(const sheet::Sheet& sheet, int col) {
    const auto meta = [&](int row) { return QString::fromStdString(sheet.Meta(col, row)); };
    const QString function = meta(MetaRow::Function);
    if (function == "Populations") return "Identifies the " + meta(MetaRow::Attribute).toLower();
    if (function == "Data Entry") return "Effect size data (" + meta(MetaRow::BlockName) + ")";
    if (function == "Display") return "Computed " + meta(MetaRow::IndexName).toLower();
    if (function == "Moderator") return "Moderator variable";
    if (function == "Empty") return "Free column";
    return "Data of your own";
}

// A title breaks into lines in the header; the field shows it on one.
QString OnOneLine(const std::string& title) {
    return QString::fromStdString(title).replace("\r\n", " ").replace('\n', ' ').replace('\r', ' ');
}

}  // namespace

ColumnPropertiesDialog::ColumnPropertiesDialog(shell::Document& document, int col, QWidget* parent)
    : QDialog(parent),
      document_(document),
      col_(col),
      initial_(document.PropertiesOf(col)),
      shownTitle_(OnOneLine(initial_.title)),
      title_(new QLineEdit(shownTitle_, this)),
      varName_(new QLineEdit(QString::fromStdString(initial_.varName), this)),
      dataType_(new QComboBox(this)),
      missing_(new QLineEdit(QString::fromStdString(initial_.missing), this)),
      values_(new QPlainTextEdit(this)),
      decimals_(new QSpinBox(this)),
      align_(new QComboBox(this)),
      autoWidth_(new QCheckBox("Fit to contents", this)),
      width_(new QSpinBox(this)),
      hidden_(new QCheckBox("Hide this column", this)) {
    setObjectName("frmColFormat");
    setWindowTitle("Column properties");
    const shell::ColumnKind kind = shell::KindOfColumn(document.Sheet(), col);
    const bool own = kind == shell::ColumnKind::User;

    title_->setObjectName("txtName");
    varName_->setObjectName("txtVarName");
    varName_->setPlaceholderText("Optional, for analyses and exports");
    for (const char* type : shell::kUserDataTypes)
        if (own) dataType_->addItem(type);
    if (dataType_->findText(QString::fromStdString(initial_.dataType)) < 0)
        dataType_->addItem(QString::fromStdString(initial_.dataType));
    dataType_->setCurrentText(QString::fromStdString(initial_.dataType));
    dataType_->setEnabled(own);
    QStringList values;
    for (const std::string& value : initial_.values)
        values << QString::fromStdString(value);
    values_->setPlainText(values.join('\n'));
    values_->setPlaceholderText("One value a line");
    values_->setTabChangesFocus(true);
    values_->setFixedHeight(values_->fontMetrics().lineSpacing() * 5 + 12);
    missing_->setPlaceholderText("None");

    decimals_->setRange(-1, shell::kMaxDecimals);
    decimals_->setSpecialValueText("Auto");
    decimals_->setValue(initial_.decimals);
    for (const char* align : shell::kAlignments)
        align_->addItem(align);
    align_->setCurrentText(QString::fromStdString(initial_.align));
    width_->setRange(shell::kMinColumnWidth / kTwipsPerPoint,
                     shell::kMaxColumnWidth / kTwipsPerPoint);
    width_->setSuffix(" pt");
    const int twips = initial_.width >= 0 ? initial_.width : document.Sheet().Flex().Col(col).width;
    width_->setValue(twips / kTwipsPerPoint);
    autoWidth_->setChecked(initial_.width < 0);
    width_->setEnabled(initial_.width >= 0);
    hidden_->setChecked(initial_.hidden);
    hidden_->setEnabled(own);
    connect(autoWidth_, &QCheckBox::toggled, width_, [this](bool on) { width_->setEnabled(!on); });
    connect(dataType_, &QComboBox::currentTextChanged, this,
            &ColumnPropertiesDialog::DataTypeChosen);
    DataTypeChosen();

    auto* name = new QGroupBox("Name", this);
    auto* nameForm = new QFormLayout(name);
    nameForm->addRow("Column title:", title_);
    nameForm->addRow("Variable name:", varName_);
    nameForm->addRow("Used for:", new QLabel(UsedFor(document.Sheet(), col), this));

    auto* dataBox = new QGroupBox("Data", this);
    auto* dataForm = new QFormLayout(dataBox);
    dataForm->addRow("Data type:", dataType_);
    dataForm->addRow("Drop-down values:", values_);
    dataForm->addRow("Missing value code:", missing_);

    auto* look = new QGroupBox("Display", this);
    auto* lookForm = new QFormLayout(look);
    lookForm->addRow("Decimals:", decimals_);
    lookForm->addRow("Alignment:", align_);
    auto* widthRow = new QHBoxLayout;
    widthRow->addWidget(width_, 1);
    widthRow->addWidget(autoWidth_);
    lookForm->addRow("Width:", widthRow);
    lookForm->addRow(" ", hidden_);

    // One column of labels through the three groups.
    int labelWidth = 0;
    for (QFormLayout* form : {nameForm, dataForm, lookForm})
        for (int row = 0; row < form->rowCount(); ++row)
            if (QLayoutItem* label = form->itemAt(row, QFormLayout::LabelRole))
                labelWidth = std::max(labelWidth, label->sizeHint().width());
    for (QFormLayout* form : {nameForm, dataForm, lookForm})
        for (int row = 0; row < form->rowCount(); ++row)
            if (QLayoutItem* label = form->itemAt(row, QFormLayout::LabelRole))
                label->widget()->setMinimumWidth(labelWidth);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(name);
    layout->addWidget(dataBox);
    layout->addWidget(look);
    layout->addWidget(OkCancel(*this));
    setMinimumWidth(420);
}

void ColumnPropertiesDialog::DataTypeChosen() {
    const bool dropDown = dataType_->currentText() == kDropDown && dataType_->isEnabled();
    values_->setEnabled(dropDown);
    // An "Integer" column shows whole numbers whatever its decimals.
    decimals_->setEnabled(dataType_->currentText() != "Integer");
    // A new drop-down box starts with the values the column holds.
    if (dropDown && values_->toPlainText().trimmed().isEmpty()) {
        const auto held = shell::DistinctValues(document_.Sheet(), col_, shell::kMaxDropDownValues);
        QStringList lines;
        for (const std::string& value : held.value_or(std::vector<std::string>{}))
            lines << QString::fromStdString(value);
        values_->setPlainText(lines.join('\n'));
    }
}

shell::ColumnProperties ColumnPropertiesDialog::Properties() const {
    shell::ColumnProperties p = initial_;
    // An untouched title keeps its line breaks.
    if (title_->text() != shownTitle_) p.title = title_->text().trimmed().toStdString();
    p.varName = varName_->text().trimmed().toStdString();
    p.dataType = dataType_->currentText().toStdString();
    p.missing = missing_->text().trimmed().toStdString();
    p.values.clear();
    if (p.dataType == kDropDown)
        for (const QString& line : values_->toPlainText().split('\n'))
            if (!line.trimmed().isEmpty()) p.values.push_back(line.trimmed().toStdString());
    p.decimals = decimals_->value();
    p.align = align_->currentText().toStdString();
    p.width = autoWidth_->isChecked() ? -1 : width_->value() * kTwipsPerPoint;
    // The width as it was, unless the user changed it: points round twips.
    if (initial_.width >= 0 && !autoWidth_->isChecked() &&
        width_->value() == initial_.width / kTwipsPerPoint)
        p.width = initial_.width;
    p.hidden = hidden_->isChecked();
    return p;
}

void ColumnPropertiesDialog::accept() {
    if (document_.SetColumnProperties(col_, Properties())) QDialog::accept();
}

}  // namespace synthara::ui
