// Printing the sheet: the print preview (to a printer or a PDF file) and the
// page setup, which the next print keeps.
#include <QPageSetupDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

#include "app/MainWindow.h"
#include "app/SheetPrinter.h"
#include "sheet/SheetWidget.h"

namespace synthara::ui {

void MainWindow::RegisterPrintCommands() {
    handlers_["Print"] = [this] { PrintSheet(); };
    handlers_["Printsetup"] = [this] {
        QPageSetupDialog dialog(&Printer(), this);
        dialog.setWindowTitle("Page setup");
        execDialog(dialog);
    };
}

QPrinter& MainWindow::Printer() {
    if (!printer_) printer_ = std::make_shared<QPrinter>(QPrinter::HighResolution);
    return *printer_;
}

void MainWindow::PrintSheet() {
    const SheetPrinter pages(document_, sheet_->Model(),
                             QString::fromStdString(document_.Caption()));
    QPrintPreviewDialog preview(&Printer(), this);
    preview.setWindowTitle("Print preview");
    connect(&preview, &QPrintPreviewDialog::paintRequested,
            [&pages](QPrinter* printer) { pages.Print(*printer); });
    execDialog(preview);
}

}  // namespace synthara::ui
