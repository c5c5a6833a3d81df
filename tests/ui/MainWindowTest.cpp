// Screenshots of the program's windows, saved in the build folder's
// screenshots/ for a person to look at: the main window with the example,
// the block wizard on its column panel, and the start dialog.
#include <QApplication>
#include <QTableView>

#include "ProgramFixture.h"
#include "app/StartDialog.h"
#include "app/WizardWindow.h"
#include "support/Screenshot.h"

namespace synthara::ui {
namespace {

TEST_F(ProgramFixture, MainWindowShowsTheExample) {
    Make();
    OpenExample();
    MainWindow& window = program->Window();
    window.show();
    QApplication::processEvents();
    auto* view = window.findChild<QTableView*>();
    ASSERT_NE(view, nullptr);
    EXPECT_GE(view->model()->rowCount(), program->Document().DataRows());
    // The cursor waits in the first entry cell of the block, in view.
    const int col = view->currentIndex().column();
    EXPECT_EQ(view->model()->headerData(col, Qt::Horizontal).toString().simplified(),
              "Group-A Events");
    EXPECT_TRUE(view->viewport()->rect().intersects(view->visualRect(view->currentIndex())));
    EXPECT_TRUE(SaveScreenshot(window, "main-window.png"));
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
    EXPECT_TRUE(SaveScreenshot(wizard, "wizard.png"));

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
    EXPECT_TRUE(SaveScreenshot(dialog, "start-dialog.png"));
}

}  // namespace
}  // namespace synthara::ui
