#pragma once
// frmColFormat, "Column properties": a column's name, its data type with the
// values of a drop-down box, the code for a missing value, and how it shows:
// decimals, alignment, width and visibility. Ok applies them through the open
// project, which may refuse them with a box; the dialog then stays open.
#include <QDialog>

#include "shell/Document.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QSpinBox;

namespace synthara::ui {

class ColumnPropertiesDialog final : public QDialog {
    Q_OBJECT
  public:
    ColumnPropertiesDialog(shell::Document& document, int col, QWidget* parent = nullptr);

    QLineEdit& Title() { return *title_; }
    QLineEdit& VarName() { return *varName_; }
    QComboBox& DataType() { return *dataType_; }
    QLineEdit& Missing() { return *missing_; }
    QPlainTextEdit& Values() { return *values_; }
    QSpinBox& Decimals() { return *decimals_; }
    QComboBox& Align() { return *align_; }
    QCheckBox& AutoWidth() { return *autoWidth_; }
    QSpinBox& Width() { return *width_; }
    QCheckBox& Hidden() { return *hidden_; }

    // The properties as the fields stand.
    shell::ColumnProperties Properties() const;
    void accept() override;

  private:
    void DataTypeChosen();

    shell::Document& document_;
    int col_;
    shell::ColumnProperties initial_;
    QString shownTitle_;
    QLineEdit* title_;
    QLineEdit* varName_;
    QComboBox* dataType_;
    QLineEdit* missing_;
    QPlainTextEdit* values_;
    QSpinBox* decimals_;
    QComboBox* align_;
    QCheckBox* autoWidth_;
    QSpinBox* width_;
    QCheckBox* hidden_;
};

}  // namespace synthara::ui
