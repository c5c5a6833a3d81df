#pragma once
// frmDataEntry, "Data entry assistant": the current row's format, each role
// with the column that holds it and the value typed, and what is missing or
// refused, in the row's own words.
#include <QDialog>

#include "shell/RowEntries.h"

class QTableWidget;

namespace synthara::ui {

class DataEntryDialog final : public QDialog {
    Q_OBJECT
  public:
    explicit DataEntryDialog(const shell::RowEntries& entries, QWidget* parent = nullptr);

    QTableWidget& Roles() { return *roles_; }

  private:
    QTableWidget* roles_;
};

}  // namespace synthara::ui
