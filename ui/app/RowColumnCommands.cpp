// The commands on whole rows and columns of the selection: copying,
// inserting and deleting them, the highlights, and where Enter moves the
// cursor. The open project does the work and says what it refuses.
#include <QAction>
#include <algorithm>

#include "app/MainWindow.h"
#include "sheet/SheetModel.h"
#include "sheet/SheetView.h"
#include "sheet/SheetWidget.h"

namespace synthara::ui {

namespace {

// Rows or columns of the sheet, first to last; first is -1 for none.
struct Span {
    int first = -1;
    int last = -1;
    int Count() const { return last - first + 1; }
};

// The rows (or columns) the selection covers; without a selection, those of
// the cell under the cursor.
Span SelectedSpan(const SheetWidget& sheet, bool rows) {
    if (const auto selection = sheet.Selection()) {
        const shell::CellRange& cells = selection->cells;
        return rows ? Span{cells.firstRow, cells.lastRow} : Span{cells.firstCol, cells.lastCol};
    }
    const int current = rows ? sheet.CurrentRow() : sheet.CurrentColumn();
    return {current, current};
}

}  // namespace

void MainWindow::RegisterRowColumnCommands() {
    auto& h = handlers_;
    const auto rows = [this] { return SelectedSpan(*sheet_, true); };
    const auto cols = [this] { return SelectedSpan(*sheet_, false); };

    h["Insert row"] = [this, rows] {
        const Span span = rows();
        if (span.first < 0) {
            document_.Prompts().Message(
                {"No cell selected", {"Please click on cell, then try again    "}});
            return;
        }
        document_.InsertRows(span.first, span.Count());
    };
    h["Insert Rows"] = h["Insert row"];
    h["Copy row"] = [this, rows] { document_.CopyRow(rows().first); };
    h["Copy column"] = [this, cols] { document_.CopyColumn(cols().first); };
    h["Delete row"] = [this, rows] {
        const Span span = rows();
        document_.DeleteRows(span.first, span.last);
    };
    h["Delete column"] = [this, cols] {
        const Span span = cols();
        document_.DeleteColumns(span.first, span.last);
    };

    for (const bool on : {true, false}) {
        const QString suffix = on ? " highlight" : " remove highlight";
        h["Column" + suffix] = [this, cols, on] {
            const Span span = cols();
            if (span.first >= 0) document_.HighlightColumns(span.first, span.last, on);
        };
        h["Row" + suffix] = [this, rows, on] {
            const Span span = rows();
            if (span.first >= 0) document_.HighlightRows(span.first, span.last, on);
        };
    }

    // The direction is the user's habit: it is kept for the next session.
    const auto enterMoves = [this](bool right) {
        sheet_->SetEnterMovesRight(right);
        settings_.SetInteger("EnterMovesRight", right ? 1 : 0);
        if (QAction* entry = Command(right ? "Data entered to right" : "Data entered down"))
            entry->setChecked(true);
    };
    h["Data entered to right"] = [enterMoves] { enterMoves(true); };
    h["Data entered down"] = [enterMoves] { enterMoves(false); };
    sheet_->SetEnterMovesRight(settings_.Integer("EnterMovesRight") != 0);
}

}  // namespace synthara::ui
