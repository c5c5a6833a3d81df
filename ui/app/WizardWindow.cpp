#include "app/WizardWindow.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "sheet/catalogue/FormatCatalogue.h"

namespace synthara::ui {

namespace {

QLabel* Heading(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    font.setBold(true);
    label->setFont(font);
    return label;
}

QLabel* Words(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    return label;
}

QString Text(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A panel under its heading; the caller fills in the rest of the layout.
QVBoxLayout* NewPanel(const QString& heading, QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(Heading(heading, page));
    return layout;
}

void AddNodes(QTreeWidgetItem* parent, const sheet::WizardNode& node) {
    for (const sheet::WizardNode& child : node.children) {
        auto* item = new QTreeWidgetItem(parent, {QString::fromStdString(child.caption)});
        if (child.format != nullptr)
            item->setData(0, Qt::UserRole, QString::fromStdString(child.caption));
        AddNodes(item, child);
    }
}

}  // namespace

WizardWindow::WizardWindow(shell::Document& document, bool identify, QWidget* parent)
    : QDialog(parent),
      document_(document),
      wizard_(document.StartWizard()),
      panels_(new QStackedWidget(this)),
      steps_(new QLabel(this)),
      back_(new QPushButton("< &Back", this)),
      next_(new QPushButton("&Next >", this)),
      finish_(new QPushButton("&Finish", this)) {
    setObjectName("frmESCols2");
    setWindowTitle(identify ? "Identify columns for effect size data"
                            : "Insert columns for effect size data");
    panels_->addWidget(MakeWelcome(identify));
    panels_->addWidget(MakeStudyType());
    panels_->addWidget(MakeFormats());
    panels_->addWidget(MakeColumns());

    auto* cancel = new QPushButton("Cancel", this);
    connect(back_, &QPushButton::clicked, this, &WizardWindow::Back);
    connect(next_, &QPushButton::clicked, this, &WizardWindow::Next);
    connect(finish_, &QPushButton::clicked, this, &WizardWindow::accept);
    connect(cancel, &QPushButton::clicked, this, &WizardWindow::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* button : {back_, next_, finish_, cancel})
        buttons->addWidget(button);
    auto* body = new QHBoxLayout;
    body->addWidget(steps_);
    body->addWidget(panels_, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addLayout(buttons);
    steps_->setObjectName("steps");
    steps_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    steps_->setFixedWidth(150);
    steps_->setMargin(12);
    steps_->setStyleSheet("QLabel#steps { background: #1c3f6e; color: #c8d7eb; }");
    resize(720, 480);
    ShowPanel(Welcome);
}

WizardWindow::~WizardWindow() {
    // Closed by its owner without Finish or Cancel: what the wizard made stays.
    if (!ended_) document_.EndWizard(wizard_->Created());
}

QWidget* WizardWindow::MakeWelcome(bool identify) {
    QVBoxLayout* layout = NewPanel("Effect size data", this);
    QWidget* page = layout->parentWidget();
    layout->addWidget(Words(
        identify ? "This wizard tells the program which columns of the sheet hold the data of "
                   "one data-entry format. Choose the kind of study, then the format, then "
                   "the column for each of its entries."
                 : "This wizard adds a block of data-entry columns to the sheet. Choose the "
                   "kind of study and the format in which the studies report their results; "
                   "the program then creates a column for each entry and the columns that "
                   "show the computed effect sizes.",
        page));
    layout->addStretch();
    return page;
}

QWidget* WizardWindow::MakeStudyType() {
    QVBoxLayout* layout = NewPanel("What kind of studies?", this);
    QWidget* page = layout->parentWidget();
    studyTypes_ = new QButtonGroup(page);
    for (std::size_t i = 0; i < sheet::WizardCaptions::StudyTypes.size(); ++i) {
        auto* option = new QRadioButton(Text(sheet::WizardCaptions::StudyTypes[i]), page);
        studyTypes_->addButton(option, static_cast<int>(i));
        layout->addWidget(option);
    }
    studyTypes_->button(wizard_->optDatatypes)->setChecked(true);
    layout->addSpacing(16);
    commonOnly_ = new QRadioButton(Text(sheet::WizardCaptions::CommonOnly), page);
    auto* all = new QRadioButton(Text(sheet::WizardCaptions::AllFormats), page);
    auto* commonGroup = new QButtonGroup(page);
    commonGroup->addButton(commonOnly_);
    commonGroup->addButton(all);
    commonOnly_->setChecked(wizard_->commonOnly);
    all->setChecked(!wizard_->commonOnly);
    layout->addWidget(commonOnly_);
    layout->addWidget(all);
    layout->addStretch();
    return page;
}

QWidget* WizardWindow::MakeFormats() {
    QVBoxLayout* layout = NewPanel("In which format are the data?", this);
    QWidget* page = layout->parentWidget();
    tree_ = new QTreeWidget(page);
    tree_->setHeaderHidden(true);
    connect(tree_, &QTreeWidget::currentItemChanged, this, [this] { ShowPanel(Formats); });
    layout->addWidget(tree_, 1);
    return page;
}

QWidget* WizardWindow::MakeColumns() {
    QVBoxLayout* layout = NewPanel("Columns for the data", this);
    QWidget* page = layout->parentWidget();
    layout->addWidget(Words(
        "For each entry, create a new column or choose a column already on the sheet.", page));
    comboForm_ = new QFormLayout;
    layout->addLayout(comboForm_);
    layout->addStretch();
    return page;
}

void WizardWindow::FillTree() {
    wizard_->optDatatypes = studyTypes_->checkedId();
    wizard_->commonOnly = commonOnly_->isChecked();
    tree_->clear();
    const sheet::WizardNode root = wizard_->Tree();
    auto* top = new QTreeWidgetItem(tree_, {QString::fromStdString(root.caption)});
    AddNodes(top, root);
    tree_->expandAll();
}

void WizardWindow::FillCombos() {
    while (comboForm_->rowCount() > 0)
        comboForm_->removeRow(0);
    combos_.clear();
    for (sheet::RoleCombo& role : wizard_->Combos()) {
        auto* combo = new QComboBox(this);
        for (const sheet::ComboEntry& entry : role.entries)
            combo->addItem(QString::fromStdString(entry.text));
        combo->setCurrentIndex(role.selected);
        connect(combo, &QComboBox::currentIndexChanged, this,
                [&role](int index) { role.selected = index; });
        comboForm_->addRow(QString::fromStdString(role.role) + ":", combo);
        combos_.push_back(combo);
    }
}

int WizardWindow::CurrentPanel() const {
    return panels_->currentIndex();
}

void WizardWindow::ShowPanel(int panel) {
    panels_->setCurrentIndex(panel);
    // The steps beside the panels, the current one in white and bold.
    QString steps;
    const QStringList names = {"Welcome", "Kind of study", "Format", "Columns"};
    for (int i = 0; i < names.size(); ++i)
        steps += i == panel ? "<p><b style='color:white'>" + names[i] + "</b></p>"
                            : "<p>" + names[i] + "</p>";
    steps_->setText(steps);
    const QTreeWidgetItem* item = tree_->currentItem();
    const bool formatChosen = item != nullptr && item->data(0, Qt::UserRole).isValid();
    back_->setEnabled(panel > Welcome);
    next_->setEnabled(panel < Columns && (panel != Formats || formatChosen));
    finish_->setEnabled(panel == Columns);
    (panel == Columns ? finish_ : next_)->setDefault(true);
}

void WizardWindow::Next() {
    const int panel = CurrentPanel();
    if (panel == StudyType) FillTree();
    if (panel == Formats) {
        const QTreeWidgetItem* item = tree_->currentItem();
        if (item == nullptr ||
            !wizard_->ChooseFormat(item->data(0, Qt::UserRole).toString().toStdString()))
            return;
        FillCombos();
    }
    ShowPanel(std::min(panel + 1, static_cast<int>(Columns)));
}

void WizardWindow::Back() {
    ShowPanel(std::max(CurrentPanel() - 1, static_cast<int>(Welcome)));
}

bool WizardWindow::SelectFormat(const QString& longName) {
    const auto found = tree_->findItems(longName, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty()) return false;
    tree_->setCurrentItem(found.first());
    return true;
}

void WizardWindow::accept() {
    if (!wizard_->Finish()) return;
    ended_ = true;
    document_.EndWizard(true);
    QDialog::accept();
}

void WizardWindow::reject() {
    if (!wizard_->Leave()) return;
    ended_ = true;
    document_.EndWizard(false);
    QDialog::reject();
}

}  // namespace synthara::ui
