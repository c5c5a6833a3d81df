#include "app/MainWindow.h"

#include "sheet/SheetWidget.h"

namespace synthara::ui {

MainWindow::MainWindow(shell::Document& document, QWidget* parent)
    : QMainWindow(parent), document_(document), sheet_(new SheetWidget(document, undo_, this)) {
    setCentralWidget(sheet_);
    resize(1100, 700);
}

}  // namespace synthara::ui
