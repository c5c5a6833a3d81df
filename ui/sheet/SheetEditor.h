#pragma once
// The one way edits of the grid reach the open project: each commit is done
// by the document and pushed as one undoable command holding what changed.
#include <vector>

#include "shell/CellEdits.h"

class QUndoStack;

namespace synthara::shell {
class Document;
}

namespace synthara::ui {

class SheetEditor {
  public:
    SheetEditor(shell::Document& document, QUndoStack& undo);

    // The user's texts for cells, committed together as one command. True
    // when anything changed; an edit that changed nothing pushes nothing.
    bool Commit(const std::vector<shell::CellEdit>& edits);

  private:
    shell::Document& document_;
    QUndoStack& undo_;
};

}  // namespace synthara::ui
