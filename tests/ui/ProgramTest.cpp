// The program's start and close, and commands reaching the open project
// through the window's menu entries.
#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

#include "ProgramFixture.h"
#include "app/AddStudyDialog.h"
#include "app/StartDialog.h"
#include "sheet/SheetWidget.h"
#include "sheet/files/Backup.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::ui {
namespace {

namespace fs = std::filesystem;

TEST_F(ProgramFixture, TheFirstStartOffersTheStartDialogWithABlankSheetSelected) {
    QStringList captions;
    int option = 0;
    Make([&](QDialog& dialog) {
        auto& start = dynamic_cast<StartDialog&>(dialog);
        for (QAbstractButton* button : start.Options().buttons())
            captions << button->text();
        option = static_cast<int>(start.Option());
        return int(QDialog::Rejected);
    });
    program->Start({}, false);
    EXPECT_EQ(captions,
              (QStringList{"Start a blank spreadsheet", "Start a new spreadsheet using a template",
                           "Open an existing file"}));
    EXPECT_EQ(option, static_cast<int>(shell::StartOption::Blank));
    EXPECT_TRUE(program->Window().Command("Opening wizard")->isChecked());
}

TEST_F(ProgramFixture, TheStartDialogOpensARecentFileOrAsksForOne) {
    const std::string path = SaveExample();

    // The next session: the file is at hand and opened from the list.
    program.reset();
    QStringList entries;
    Make([&](QDialog& dialog) {
        auto& start = dynamic_cast<StartDialog&>(dialog);
        for (int i = 0; i < start.List().count(); ++i)
            entries << start.List().item(i)->text();
        return int(QDialog::Accepted);
    });
    program->Start({}, false);
    EXPECT_EQ(entries, (QStringList{"trials.syn", "More files ..."}));
    EXPECT_EQ(program->Document().Caption(), "trials.syn");
    EXPECT_EQ(program->Document().DataRows(), 13);
    EXPECT_EQ(program->Settings().Text("OptCurrentNameSelection"), "3");

    // "More files ..." opens the file dialog.
    Make([&](QDialog& dialog) {
        auto& start = dynamic_cast<StartDialog&>(dialog);
        start.List().setCurrentRow(start.List().count() - 1);
        return int(QDialog::Accepted);
    });
    program->Start({}, false);
    ASSERT_EQ(chooser.asked.size(), 2u);
    EXPECT_EQ(chooser.asked.back().title, "Open database");
}

TEST_F(ProgramFixture, AFileOnTheCommandLineSkipsTheStartDialog) {
    const std::string path = SaveExample();

    int dialogs = 0;
    Make([&](QDialog&) { return ++dialogs, int(QDialog::Rejected); });
    program->Start(path, false);
    EXPECT_EQ(dialogs, 0);
    EXPECT_EQ(program->Document().DataRows(), 13);
    EXPECT_TRUE(program->Window().windowTitle().startsWith("trials.syn"));
}

TEST_F(ProgramFixture, ClosingAsksWritesTheSettingsAndDeletesTheTemporaryFiles) {
    Make();
    OpenExample();
    MainWindow& window = program->Window();
    window.show();
    window.Run("Bookmark");
    ASSERT_TRUE(fs::exists(folder / sheet::BookmarkFileName));
    EXPECT_TRUE(window.Command("Restore")->isEnabled());

    prompter.answers = {ports::Answer::Cancel};
    EXPECT_FALSE(window.close());
    EXPECT_EQ(prompter.Last(),
              "Synthara|Do you want to save the changes you made to the spreadsheet?       ");
    EXPECT_FALSE(store.Get("Startup", "ShowWizard01"));

    window.Command("Opening wizard")->trigger();  // off
    prompter.answers = {ports::Answer::No};
    EXPECT_TRUE(window.close());
    EXPECT_EQ(store.GetOr("Startup", "ShowWizard01", "-"), "0");
    EXPECT_EQ(store.GetOr("Startup", "FudgeFactor", "-").substr(0, 3), "1.1");
    EXPECT_EQ(store.GetOr("Settings", "gHeaderText", "-"), "Meta Analysis");
    EXPECT_FALSE(fs::exists(folder / sheet::BookmarkFileName));
}

TEST_F(ProgramFixture, MenuCommandsReachTheOpenProject) {
    std::string typedName = "Zeta 2001";
    Make([&](QDialog& dialog) {
        auto& add = dynamic_cast<AddStudyDialog&>(dialog);
        EXPECT_EQ(add.NameBox().text(), "Study013");
        add.NameBox().setText(QString::fromStdString(typedName));
        add.accept();
        return add.result();
    });
    OpenExample();
    MainWindow& window = program->Window();
    shell::Document& document = program->Document();
    const int studyCol = document.Sheet().GetCol(0, 1);

    window.Command("Insert study")->trigger();
    EXPECT_EQ(document.DataRows(), 14);

    window.Sheet().SetCurrentCell(sheet::FixedRowCount, studyCol);
    window.Command("Sort ZA")->trigger();
    EXPECT_EQ(document.StudyName(0), "Zeta 2001");

    prompter.answers = {ports::Answer::Yes};
    window.Sheet().SetCurrentCell(sheet::FixedRowCount, studyCol);
    window.Command("Delete study")->trigger();
    EXPECT_EQ(document.DataRows(), 13);
    EXPECT_NE(document.StudyName(0), "Zeta 2001");

    window.Sheet().SetCurrentCell(sheet::FixedRowCount, studyCol + 2);
    window.Command("Freeze columns")->trigger();
    EXPECT_EQ(document.Sheet().Flex().FixedCols(), studyCol + 2);
    EXPECT_TRUE(window.Command("Unfreeze columns")->isEnabled());

    prompter.shown.clear();
    window.Command("Check data")->trigger();
    EXPECT_EQ(prompter.Only(),
              "Check complete|The spreadsheet format is correct.|Select 'Analyses ... Run "
              "analyses' to proceed.      ");
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_TRUE(window.windowTitle().startsWith("Data"));
}

TEST_F(ProgramFixture, TheContextMenuOffersWhatAppliesToTheCellClicked) {
    Make();
    OpenExample();
    const MainWindow& window = program->Window();
    const sheet::Sheet& sheet = program->Document().Sheet();
    const int row = sheet::FixedRowCount;
    EXPECT_TRUE(window.ContextCommands(row, sheet.GetCol(0, 1)).contains("Delete study"));
    int point = -1;
    int entry = -1;
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (point < 0 && sheet.MetaIs(c, sheet::MetaRow::Attribute, "Point") &&
            !sheet.Flex().Col(c).hidden)
            point = c;
        if (entry < 0 && sheet.MetaIs(c, sheet::MetaRow::Function, "Data Entry")) entry = c;
    }
    ASSERT_GE(point, 0);
    EXPECT_TRUE(window.ContextCommands(row, point).contains("Set primary index"));
    EXPECT_FALSE(window.ContextCommands(row, entry).contains("Set primary index"));
    EXPECT_TRUE(window.ContextCommands(row, entry).contains("Delete this data entry block"));
    for (const QString& key : window.ContextCommands(row, entry))
        EXPECT_NE(window.Command(key), nullptr) << key.toStdString();
}

}  // namespace
}  // namespace synthara::ui
