#pragma once
// A change of the computation options on the undo stack: the options before
// and after, each computing every row again when it comes back.
#include <QUndoCommand>

#include "effectsize/WorkingSet.h"

namespace synthara::shell {
class Document;
}

namespace synthara::ui {

class OptionsCommand final : public QUndoCommand {
  public:
    // `after` is in force already: the first redo, which pushing the command
    // calls, does nothing.
    OptionsCommand(shell::Document& document, const effectsize::ComputeOptions& before,
                   const effectsize::ComputeOptions& after);

    void undo() override;
    void redo() override;

  private:
    shell::Document& document_;
    effectsize::ComputeOptions before_;
    effectsize::ComputeOptions after_;
    bool done_ = true;
};

}  // namespace synthara::ui
