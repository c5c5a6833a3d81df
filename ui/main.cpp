// synthara: the desktop program. `synthara FILE` opens that project or
// template at once; without one the start dialog asks how to begin.
#include <QApplication>
#include <QIcon>

#include "app/Program.h"
#include "app/QtFileChooser.h"
#include "app/QtPrompter.h"
#include "app/QtSettingsStore.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Synthara");
    QApplication::setWindowIcon(QIcon(":/synthara.svg"));
    synthara::ui::QtSettingsStore store;
    synthara::ui::QtPrompter prompter;
    synthara::ui::QtFileChooser chooser;
    synthara::ui::Program program(store, prompter, chooser);
    prompter.SetParent(&program.Window());
    chooser.SetParent(&program.Window());
    program.Start(argc > 1 ? argv[1] : std::string(), true);
    const int status = QApplication::exec();
    store.Sync();
    return status;
}
