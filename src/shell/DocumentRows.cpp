// Whole rows and columns on the open project: copying, inserting, deleting,
// dragging rows and the user's highlights. Rows and their results move
// together, so only a copied row needs computing.
#include "effectsize/Compute.h"
#include "sheet/blocks/ColumnEdits.h"
#include "sheet/grid/Highlights.h"
#include "sheet/rows/RowEdits.h"
#include "shell/Document.h"

namespace synthara::shell {

bool Document::CopyRow(int row) {
    return Settled([&] {
        int copy = sheet::CopyRow(sheet_, row);
        if (copy < 0) return false;
        // The original's boxes were shown when it was computed.
        ports::SilentPrompter silent;
        effectsize::ComputeContext context{options_, silent};
        int last = copy;
        effectsize::Compute(sheet_, copy, last, context);
        return true;
    });
}

bool Document::InsertRows(int first, int count) {
    return Settled([&] { return sheet::InsertRows(sheet_, first, count); });
}

bool Document::DeleteRows(int first, int last) {
    return Settled([&] { return sheet::DeleteRows(sheet_, first, last); });
}

bool Document::MoveRow(int from, int to) {
    return Settled([&] { return sheet::MoveRow(sheet_, from, to); });
}

bool Document::CopyColumn(int col) {
    return Settled([&] { return sheet::CopyColumn(sheet_, col) >= 0; });
}

bool Document::DeleteColumns(int first, int last) {
    return Settled([&] { return sheet::DeleteColumns(sheet_, first, last); });
}

void Document::HighlightColumns(int first, int last, bool on) {
    Settled([&] { sheet::HighlightColumns(sheet_, first, last, on); });
}

void Document::HighlightRows(int first, int last, bool on) {
    Settled([&] { sheet::HighlightRows(sheet_, first, last, on); });
}

}  // namespace synthara::shell
