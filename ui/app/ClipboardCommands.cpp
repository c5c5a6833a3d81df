// The clipboard's command keys: copy, paste, cut and delete of the cells
// selected on the sheet, through the system clipboard.
#include <QItemSelectionModel>
#include <algorithm>
#include <optional>

#include "app/MainWindow.h"
#include "app/QtClipboard.h"
#include "sheet/SheetModel.h"
#include "sheet/SheetView.h"
#include "sheet/SheetWidget.h"

namespace synthara::ui {

namespace {

// The selected cells in sheet rows and columns: the rectangle around what is
// selected, whole rows when it spans every column the user may select and
// whole columns when it spans every row; none when nothing is selected.
std::optional<shell::SheetSelection> SelectedCells(SheetWidget& sheet, int fixedCols) {
    const QItemSelection selection = sheet.View().selectionModel()->selection();
    if (selection.isEmpty()) return std::nullopt;
    int top = selection.front().top(), bottom = selection.front().bottom();
    int left = selection.front().left(), right = selection.front().right();
    for (const QItemSelectionRange& range : selection) {
        top = std::min(top, range.top());
        bottom = std::max(bottom, range.bottom());
        left = std::min(left, range.left());
        right = std::max(right, range.right());
    }
    const SheetModel& model = sheet.Model();
    shell::SheetSelection cells;
    cells.cells = {model.GridRow(top), model.GridRow(bottom), left, right};
    cells.wholeRows = left <= fixedCols && right == model.columnCount() - 1;
    cells.wholeColumns = top == 0 && bottom == model.rowCount() - 1;
    return cells;
}

}  // namespace

void MainWindow::RegisterClipboardCommands() {
    auto& h = handlers_;
    const auto selected = [this] {
        return SelectedCells(*sheet_, document_.Sheet().Flex().FixedCols());
    };
    const auto copy = [this, selected](shell::CopyMode mode) {
        return [this, selected, mode] {
            QtClipboard clipboard;
            document_.Copy(selected(), mode, clipboard);
        };
    };
    h["Copy selection"] = copy(shell::CopyMode::Selection);
    h["Copy with header"] = copy(shell::CopyMode::WithHeader);
    h["Copy entire grid"] = copy(shell::CopyMode::EntireGrid);
    h["Copy to clipboard"] = h["Copy entire grid"];
    h["Paste"] = [this, selected] {
        QtClipboard clipboard;
        document_.Paste(selected(), clipboard);
    };
    h["Cut"] = [this, selected] {
        QtClipboard clipboard;
        document_.Cut(selected(), clipboard);
    };
    h["Delete"] = [this, selected] { document_.ClearCells(selected()); };
}

}  // namespace synthara::ui
