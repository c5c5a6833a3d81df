// synthara: the desktop program. Opens the project or template named on the
// command line, if any.
#include <QApplication>

#include "app/MainWindow.h"
#include "ports/Prompter.h"
#include "shell/Document.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    synthara::ports::SilentPrompter prompter;
    synthara::shell::Document document(prompter);
    if (argc > 1) document.Open(argv[1]);
    synthara::ui::MainWindow window(document);
    window.show();
    return QApplication::exec();
}
