// The clipboard's command keys: copy, paste, cut and delete of the cells
// selected on the sheet, through the system clipboard.
#include "app/MainWindow.h"
#include "app/QtClipboard.h"
#include "sheet/SheetWidget.h"

namespace synthara::ui {

void MainWindow::RegisterClipboardCommands() {
    auto& h = handlers_;
    const auto copy = [this](shell::CopyMode mode) {
        return [this, mode] {
            QtClipboard clipboard;
            document_.Copy(sheet_->Selection(), mode, clipboard);
        };
    };
    h["Copy selection"] = copy(shell::CopyMode::Selection);
    h["Copy with header"] = copy(shell::CopyMode::WithHeader);
    h["Copy entire grid"] = copy(shell::CopyMode::EntireGrid);
    h["Copy to clipboard"] = h["Copy entire grid"];
    h["Paste"] = [this] {
        QtClipboard clipboard;
        document_.Paste(sheet_->Selection(), clipboard);
    };
    h["Cut"] = [this] {
        QtClipboard clipboard;
        document_.Cut(sheet_->Selection(), clipboard);
    };
    h["Delete"] = [this] { document_.ClearCells(sheet_->Selection()); };
}

}  // namespace synthara::ui
