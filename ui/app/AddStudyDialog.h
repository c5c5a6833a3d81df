#pragma once
// frmAddStudy: the name of a new study and, for a multi-row study, one row
// for each combination of the other identifying columns' values.
#include <QDialog>

#include "shell/Document.h"

class QCheckBox;
class QLineEdit;

namespace synthara::ui {

class AddStudyDialog final : public QDialog {
    Q_OBJECT
  public:
    AddStudyDialog(shell::Document& document, QWidget* parent = nullptr);

    QLineEdit& NameBox() { return *name_; }
    QCheckBox& Rectangle() { return *rectangle_; }
    // Ok: adds the study, or says why not and stays open.
    void accept() override;

  private:
    shell::Document& document_;
    QLineEdit* name_;
    QCheckBox* rectangle_;
};

}  // namespace synthara::ui
