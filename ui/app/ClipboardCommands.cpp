// The clipboard's command keys: copy, paste, cut and delete of the cells
// selected on the sheet, through the system clipboard.
#include "app/MainWindow.h"
#include "app/QtClipboard.h"
#include "sheet/SheetWidget.h"

namespace synthara::ui {

void MainWindow::RegisterClipboardCommands() {
    auto& h = handlers_;
    const auto selected = [this] { return sheet_->Selection(); };
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
    h["Delete"] = [this] { sheet_->ClearSelection(); };
}

}  // namespace synthara::ui
