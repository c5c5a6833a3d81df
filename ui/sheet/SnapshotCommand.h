#pragma once
// A command of the sheet on the undo stack as the whole sheet before and
// after it. Snapshots share the sheet's pages, so keeping both costs only
// the pages the command changed.
#include <QString>
#include <QUndoCommand>
#include <functional>

#include "shell/SheetSnapshot.h"

class QUndoStack;

namespace synthara::shell {
class Document;
}

namespace synthara::ui {

class SnapshotCommand final : public QUndoCommand {
  public:
    // `after` is the sheet as it stands: the first redo, which pushing the
    // command calls, does nothing.
    SnapshotCommand(shell::Document& document, shell::SheetSnapshot before,
                    shell::SheetSnapshot after, const QString& text);

    void undo() override;
    void redo() override;

  private:
    shell::Document& document_;
    shell::SheetSnapshot before_;
    shell::SheetSnapshot after_;
    bool done_ = true;
};

// Runs `command`. When it changed the sheet, and neither put a step of its
// own on `undo` nor loaded another sheet, the change becomes one step named
// `text`. True when it did.
bool RunUndoable(shell::Document& document, QUndoStack& undo, const QString& text,
                 const std::function<void()>& command);

// True while a command runs through RunUndoable or a step is undone or
// redone. A change of the sheet's columns or rows outside those leaves the
// stack's cell addresses pointing elsewhere, and the stack must go.
bool UndoableChangeUnderway();

}  // namespace synthara::ui
