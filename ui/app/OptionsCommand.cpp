#include "app/OptionsCommand.h"

#include "shell/Document.h"

namespace synthara::ui {

OptionsCommand::OptionsCommand(shell::Document& document, const effectsize::ComputeOptions& before,
                               const effectsize::ComputeOptions& after)
    : QUndoCommand(QObject::tr("Change options")),
      document_(document),
      before_(before),
      after_(after) {}

void OptionsCommand::undo() {
    document_.RestoreOptions(before_);
    done_ = false;
}

void OptionsCommand::redo() {
    if (done_) return;
    document_.RestoreOptions(after_);
    done_ = true;
}

}  // namespace synthara::ui
