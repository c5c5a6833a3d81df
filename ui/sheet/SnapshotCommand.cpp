#include "sheet/SnapshotCommand.h"

#include <QUndoStack>

#include "shell/Document.h"

namespace synthara::ui {

namespace {

int underway = 0;

// Marks the time of an undoable change.
class Underway {
  public:
    Underway() { ++underway; }
    ~Underway() { --underway; }
    Underway(const Underway&) = delete;
    Underway& operator=(const Underway&) = delete;
};

}  // namespace

bool UndoableChangeUnderway() {
    return underway > 0;
}

SnapshotCommand::SnapshotCommand(shell::Document& document, shell::SheetSnapshot before,
                                 shell::SheetSnapshot after, const QString& text)
    : QUndoCommand(text),
      document_(document),
      before_(std::move(before)),
      after_(std::move(after)) {}

void SnapshotCommand::undo() {
    const Underway mark;
    document_.Restore(before_);
}

void SnapshotCommand::redo() {
    if (done_) {
        done_ = false;
        return;
    }
    const Underway mark;
    document_.Restore(after_);
}

bool RunUndoable(shell::Document& document, QUndoStack& undo, const QString& text,
                 const std::function<void()>& command) {
    const int steps = undo.index();
    const int count = undo.count();
    const std::uint64_t revision = document.Revision();
    const std::uint64_t loaded = document.SheetsLoaded();
    shell::SheetSnapshot before = document.Snapshot();
    {
        const Underway mark;
        command();
    }
    if (document.Revision() == revision || document.SheetsLoaded() != loaded ||
        undo.index() != steps || undo.count() != count)
        return false;
    shell::SheetSnapshot after = document.Snapshot();
    if (after.grid.SameContent(before.grid)) return false;
    undo.push(new SnapshotCommand(document, std::move(before), std::move(after), text));
    return true;
}

}  // namespace synthara::ui
