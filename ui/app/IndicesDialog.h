#pragma once
// frmIndices, "Effect size indices": which indices the display columns
// show, the primary one, whether standard errors and variances show too, and
// the display mode. Ok lays the display columns out again.
#include <QDialog>

#include "shell/Document.h"
#include "shell/IndexSelection.h"

class QCheckBox;
class QComboBox;
class QListWidget;
class QListWidgetItem;
class QRadioButton;

namespace synthara::ui {

class IndicesDialog final : public QDialog {
    Q_OBJECT
  public:
    explicit IndicesDialog(shell::Document& document, QWidget* parent = nullptr);

    QListWidget& Display() { return *display_; }
    QComboBox& Primary() { return *primary_; }
    QCheckBox& StdErr() { return *stdErr_; }
    QCheckBox& Variance() { return *variance_; }
    QRadioButton& OnlyPrimary() { return *onlyPrimary_; }
    void accept() override;

  private:
    void Ticked(QListWidgetItem* item);
    void PrimaryChosen(int position);
    void ShowTicks();

    shell::Document& document_;
    shell::IndexSelection selection_;
    QListWidget* display_;
    QComboBox* primary_;
    QCheckBox* stdErr_;
    QCheckBox* variance_;
    QRadioButton* selected_;
    QRadioButton* onlyPrimary_;
};

}  // namespace synthara::ui
