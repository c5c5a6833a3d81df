#pragma once
// frmESOptions: the four numbers that change how every row is computed.
// Ok checks the two typed numbers, keeps the options and computes the sheet
// as one undoable change; a number out of range is refused with a box and
// the dialog stays open.
#include <QDialog>
#include <QStringList>

#include "shell/Document.h"

class QButtonGroup;
class QLineEdit;
class QUndoStack;

namespace synthara::ui {

class OptionsDialog final : public QDialog {
    Q_OBJECT
  public:
    OptionsDialog(shell::Document& document, QUndoStack& undo, QWidget* parent = nullptr);

    QLineEdit& ImputedR() { return *imputedR_; }
    QLineEdit& FudgeFactor() { return *fudgeFactor_; }
    // The pairs of buttons, by method: id 1 or 2.
    QButtonGroup& PoolVarianceMethod() { return *poolVariance_; }
    QButtonGroup& GVarianceMethod() { return *gVariance_; }
    // The menu entries of the four options, in the order of the fields, and
    // "Limits for correlation"; each opens the dialog on its own field.
    static const QStringList& MenuEntries();
    // Puts the cursor on the field of a menu entry's option.
    void FocusOn(const QString& menuEntry);
    void accept() override;

  private:
    shell::Document& document_;
    QUndoStack& undo_;
    QLineEdit* imputedR_;
    QLineEdit* fudgeFactor_;
    QButtonGroup* poolVariance_;
    QButtonGroup* gVariance_;
};

}  // namespace synthara::ui
