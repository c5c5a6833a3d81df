#include "app/OptionsDialog.h"

#include <array>

#include <QButtonGroup>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QUndoStack>
#include <QVBoxLayout>

#include "app/OkCancel.h"
#include "app/OptionsCommand.h"
#include "shell/OptionsForm.h"

namespace synthara::ui {

namespace {

// A group box of two exclusive buttons, ids 1 and 2, with `checked` on.
QButtonGroup* AddChoice(QWidget& dialog, QVBoxLayout& layout, const QString& title,
                        const QString& first, const QString& second, int checked) {
    auto* box = new QGroupBox(title, &dialog);
    auto* inner = new QVBoxLayout(box);
    auto* group = new QButtonGroup(box);
    int id = 1;
    for (const QString& text : {first, second}) {
        auto* button = new QRadioButton(text, box);
        group->addButton(button, id);
        button->setChecked(id == checked);
        inner->addWidget(button);
        ++id;
    }
    layout.addWidget(box);
    return group;
}

bool SameOptions(const effectsize::ComputeOptions& a, const effectsize::ComputeOptions& b) {
    return a.ImputedR == b.ImputedR && a.FudgeFactor == b.FudgeFactor &&
           a.PoolVarianceMethod == b.PoolVarianceMethod && a.GVarianceMethod == b.GVarianceMethod;
}

}  // namespace

OptionsDialog::OptionsDialog(shell::Document& document, QUndoStack& undo, QWidget* parent)
    : QDialog(parent), document_(document), undo_(undo) {
    setObjectName("frmESOptions");
    setWindowTitle("Computation options");
    const shell::OptionsForm form = shell::OptionsForm::Of(document.Options());
    imputedR_ = new QLineEdit(QString::fromStdString(form.imputedR), this);
    imputedR_->setObjectName("txtImputedR");
    imputedR_->setToolTip("Allowed range: -0.999 to +0.999");
    fudgeFactor_ = new QLineEdit(QString::fromStdString(form.fudgeFactor), this);
    fudgeFactor_->setObjectName("txtFudgeFactor");
    fudgeFactor_->setToolTip("Allowed range: 1 to 2 (recommended 1.01 to 1.20)");

    auto* layout = new QVBoxLayout(this);
    auto* numbers = new QFormLayout;
    numbers->addRow(MenuEntries()[0] + ":", imputedR_);
    numbers->addRow(MenuEntries()[1] + ":", fudgeFactor_);
    layout->addLayout(numbers);
    poolVariance_ = AddChoice(*this, *layout, MenuEntries()[2], "Pool variance",
                              "Don't pool variance", form.poolVarianceMethod);
    poolVariance_->setObjectName("optPoolVarianceMethod");
    gVariance_ = AddChoice(
        *this, *layout, MenuEntries()[3], "SE(g) = SE(d) * J (Recommended)",
        "SE(g) = Sqr(SE(d) ^ 2 - (d ^ 2 / (2 * N)) + (g ^ 2 / (2 * (N - 3.94)))) (Revman)",
        form.gVarianceMethod);
    gVariance_->setObjectName("optGVarianceMethod");
    layout->addWidget(OkCancel(*this));
}

const QStringList& OptionsDialog::MenuEntries() {
    static const QStringList entries = {
        "Correlation for imputing paired SD", "Symmetry for confidence intervals",
        "Variance for mean difference", "Variance for Hedges's g", "Limits for correlation"};
    return entries;
}

void OptionsDialog::FocusOn(const QString& menuEntry) {
    // "Limits for correlation" is the range the assumed correlation is held
    // to, so it opens on that field too.
    const std::array<QWidget*, 5> fields = {imputedR_, fudgeFactor_, poolVariance_->checkedButton(),
                                            gVariance_->checkedButton(), imputedR_};
    const qsizetype at = MenuEntries().indexOf(menuEntry);
    if (at >= 0 && fields[static_cast<std::size_t>(at)] != nullptr)
        fields[static_cast<std::size_t>(at)]->setFocus();
}

void OptionsDialog::accept() {
    shell::OptionsForm form;
    form.imputedR = imputedR_->text().toStdString();
    form.fudgeFactor = fudgeFactor_->text().toStdString();
    form.poolVarianceMethod = poolVariance_->checkedId();
    form.gVarianceMethod = gVariance_->checkedId();
    const effectsize::ComputeOptions before = document_.Options();
    const effectsize::ComputeOptions after = form.Read(document_.Sheet().Separators);
    if (!document_.SetOptions(after)) return;
    if (!SameOptions(before, after)) undo_.push(new OptionsCommand(document_, before, after));
    QDialog::accept();
}

}  // namespace synthara::ui
