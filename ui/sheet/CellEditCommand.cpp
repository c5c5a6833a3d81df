#include "sheet/CellEditCommand.h"

#include <utility>

#include "shell/Document.h"

namespace synthara::ui {

CellEditCommand::CellEditCommand(shell::Document& document, shell::EditDelta delta,
                                 const QString& text)
    : QUndoCommand(text), document_(document), delta_(std::move(delta)) {}

void CellEditCommand::undo() {
    document_.ApplyDelta(delta_, shell::DeltaSide::Before);
    done_ = false;
}

void CellEditCommand::redo() {
    if (done_) return;
    document_.ApplyDelta(delta_, shell::DeltaSide::After);
    done_ = true;
}

}  // namespace synthara::ui
