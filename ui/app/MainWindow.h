#pragma once
// The main window: the sheet of the open project with the program's menus.
#include <QMainWindow>
#include <QUndoStack>

#include "shell/Document.h"

namespace synthara::ui {

class SheetWidget;

class MainWindow final : public QMainWindow {
    Q_OBJECT
  public:
    explicit MainWindow(shell::Document& document, QWidget* parent = nullptr);

    SheetWidget& Sheet() { return *sheet_; }
    QUndoStack& Undo() { return undo_; }

  private:
    shell::Document& document_;
    QUndoStack undo_;
    SheetWidget* sheet_;
};

}  // namespace synthara::ui
