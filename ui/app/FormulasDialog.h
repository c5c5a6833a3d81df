#pragma once
// frmStudyDetails, "Formulas": every index of one data row with the trail of
// how it was computed; Copy puts the whole on the clipboard.
#include <QDialog>

#include "ports/Clipboard.h"
#include "shell/RowFormulas.h"

class QListWidget;
class QPlainTextEdit;

namespace synthara::ui {

class FormulasDialog final : public QDialog {
    Q_OBJECT
  public:
    FormulasDialog(shell::RowFormulas formulas, ports::Clipboard& clipboard,
                   QWidget* parent = nullptr);

    QListWidget& Indices() { return *indices_; }
    QPlainTextEdit& Trail() { return *trail_; }
    void Copy();

  private:
    void ShowIndex(int position);

    shell::RowFormulas formulas_;
    ports::Clipboard& clipboard_;
    QListWidget* indices_;
    QPlainTextEdit* trail_;
};

}  // namespace synthara::ui
