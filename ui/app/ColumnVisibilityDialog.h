#pragma once
// "Hide or display columns": the user's own columns, each ticked while it is
// shown. Ok shows and hides them through the open project.
#include <QDialog>

#include "shell/Document.h"

class QListWidget;

namespace synthara::ui {

class ColumnVisibilityDialog final : public QDialog {
    Q_OBJECT
  public:
    explicit ColumnVisibilityDialog(shell::Document& document, QWidget* parent = nullptr);

    QListWidget& Columns() { return *columns_; }
    void accept() override;

  private:
    shell::Document& document_;
    QListWidget* columns_;
};

}  // namespace synthara::ui
