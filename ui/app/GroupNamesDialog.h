#pragma once
// frmGroupNames: the words that name the groups in the data-entry columns'
// titles, each with the project's value for it.
#include <QDialog>
#include <vector>

#include "sheet/rows/StudyRows.h"

class QLineEdit;

namespace synthara::ui {

class GroupNamesDialog final : public QDialog {
    Q_OBJECT
  public:
    explicit GroupNamesDialog(std::vector<sheet::GroupName> names, QWidget* parent = nullptr);

    // The words with the values typed.
    std::vector<sheet::GroupName> Names() const;
    std::vector<QLineEdit*>& Boxes() { return boxes_; }

  private:
    std::vector<sheet::GroupName> names_;
    std::vector<QLineEdit*> boxes_;
};

}  // namespace synthara::ui
