#pragma once
// frmESCols2: the wizard that makes a data-entry block, or points the roles
// of a format at columns already on the sheet. Its panels: welcome, study
// type, format, columns.
#include <QDialog>
#include <memory>
#include <vector>

#include "shell/Document.h"

class QButtonGroup;
class QComboBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class QTreeWidget;

namespace synthara::ui {

class WizardWindow final : public QDialog {
    Q_OBJECT
  public:
    // `identify`: the wizard is over existing columns ("Identify columns with
    // effect size data"), which only changes its welcome words.
    WizardWindow(shell::Document& document, bool identify, QWidget* parent = nullptr);
    ~WizardWindow() override;

    enum Panel { Welcome, StudyType, Formats, Columns };
    int CurrentPanel() const;
    void Next();
    void Back();
    // Selects a format in the tree; false when the tree does not hold it.
    bool SelectFormat(const QString& longName);
    std::vector<QComboBox*>& Combos() { return combos_; }

    // Finish: the block and its display columns; the wizard closes.
    void accept() override;
    // Leaving without finishing asks first and puts the sheet back.
    void reject() override;

  private:
    QWidget* MakeWelcome(bool identify);
    QWidget* MakeStudyType();
    QWidget* MakeFormats();
    QWidget* MakeColumns();
    void FillTree();
    void FillCombos();
    void ShowPanel(int panel);

    shell::Document& document_;
    std::unique_ptr<sheet::BlockWizard> wizard_;
    QStackedWidget* panels_;
    QLabel* steps_;
    QButtonGroup* studyTypes_ = nullptr;
    QRadioButton* commonOnly_ = nullptr;
    QTreeWidget* tree_ = nullptr;
    QFormLayout* comboForm_ = nullptr;
    std::vector<QComboBox*> combos_;
    QPushButton* back_;
    QPushButton* next_;
    QPushButton* finish_;
    bool ended_ = false;
};

}  // namespace synthara::ui
