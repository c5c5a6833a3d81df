#include "sheet/SheetEditor.h"

#include <QUndoStack>

#include "sheet/CellEditCommand.h"
#include "shell/Document.h"

namespace synthara::ui {

SheetEditor::SheetEditor(shell::Document& document, QUndoStack& undo)
    : document_(document), undo_(undo) {}

bool SheetEditor::Commit(const std::vector<shell::CellEdit>& edits) {
    shell::EditDelta delta = document_.FinishEdits(edits);
    if (delta.Empty()) return false;
    const QString text = edits.size() == 1 ? QObject::tr("Edit cell") : QObject::tr("Clear cells");
    undo_.push(new CellEditCommand(document_, std::move(delta), text));
    return true;
}

}  // namespace synthara::ui
