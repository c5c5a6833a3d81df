// Screenshots of the program's windows, saved in the build folder's
// screenshots/ for a person to look at: the main window with the example,
// the block wizard on its column panel, and the start dialog.
#include <QDir>
#include <QTableView>

#include "ProgramFixture.h"
#include "app/StartDialog.h"
#include "app/WizardWindow.h"

namespace synthara::ui {
namespace {

bool Save(QWidget& widget, const char* name) {
    QDir().mkpath(SYNTHARA_SCREENSHOTS);
    return widget.grab().save(QString(SYNTHARA_SCREENSHOTS "/") + name);
}

TEST_F(ProgramFixture, MainWindowShowsTheExample) {
    Make();
    OpenExample();
    MainWindow& window = program->Window();
    window.show();
    auto* view = window.findChild<QTableView*>();
    ASSERT_NE(view, nullptr);
    EXPECT_GE(view->model()->rowCount(), program->Document().DataRows());
    EXPECT_TRUE(Save(window, "main-window.png"));
}

TEST_F(ProgramFixture, WizardWalksToItsColumnPanel) {
    Make();
    WizardWindow wizard(program->Document(), false, &program->Window());
    wizard.show();
    wizard.Next();
    wizard.Next();
    ASSERT_EQ(wizard.CurrentPanel(), WizardWindow::Formats);
    ASSERT_TRUE(wizard.SelectFormat("Events and sample size in each group"));
    wizard.Next();
    ASSERT_EQ(wizard.CurrentPanel(), WizardWindow::Columns);
    EXPECT_EQ(wizard.Combos().size(), 4u);
    EXPECT_TRUE(Save(wizard, "wizard.png"));

    // Finish makes the block and its display columns.
    wizard.accept();
    EXPECT_TRUE(program->Document().HasDataEntryColumns());
    EXPECT_TRUE(program->Document().Dirty());
}

TEST_F(ProgramFixture, StartDialogOffersTheRecentFiles) {
    store.Set("Recent", "0", "/home/user/projects/bcg-vaccine-trials.syn");
    store.Set("Recent", "1", "/home/user/projects/smoking-cessation.syn");
    Make();
    StartDialog dialog(program->Settings(), program->Recent(), &program->Window());
    dialog.show();
    EXPECT_EQ(dialog.Option(), shell::StartOption::File);
    EXPECT_EQ(dialog.ChosenPath(), "/home/user/projects/bcg-vaccine-trials.syn");
    EXPECT_TRUE(Save(dialog, "start-dialog.png"));
}

}  // namespace
}  // namespace synthara::ui
