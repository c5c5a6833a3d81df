#pragma once
// One edit of the grid on the undo stack: only the cells it changed, their
// texts before and after.
#include <QUndoCommand>

#include "shell/CellEdits.h"

namespace synthara::shell {
class Document;
}

namespace synthara::ui {

class CellEditCommand final : public QUndoCommand {
  public:
    // `delta` has been applied already: the first redo, which pushing the
    // command calls, does nothing.
    CellEditCommand(shell::Document& document, shell::EditDelta delta, const QString& text);

    void undo() override;
    void redo() override;

  private:
    shell::Document& document_;
    shell::EditDelta delta_;
    bool done_ = true;
};

}  // namespace synthara::ui
