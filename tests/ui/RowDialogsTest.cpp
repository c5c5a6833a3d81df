// The row dialogs opened from the sheet's current cell: the "Formulas" and
// the data entry assistant of a computed row, and the box for a row without
// data.
#include <QListWidget>
#include <QPlainTextEdit>

#include <QTableWidget>
#include "ProgramFixture.h"
#include "support/Screenshot.h"

#include "app/DataEntryDialog.h"
#include "app/FormulasDialog.h"
#include "app/QtClipboard.h"
#include "sheet/SheetWidget.h"
#include "sheet/grid/Sheet.h"

namespace synthara::ui {
namespace {

TEST_F(ProgramFixture, FormulasShowTheTrailsOfTheCurrentRow) {
    std::string copied;
    Make([&](QDialog& dialog) {
        auto& formulas = dynamic_cast<FormulasDialog&>(dialog);
        formulas.show();
        EXPECT_TRUE(SaveScreenshot(formulas, "formulas-dialog.png"));
        EXPECT_GT(formulas.Indices().count(), 3);
        // It opens on the primary index, whose trail shows.
        EXPECT_FALSE(formulas.Trail().toPlainText().isEmpty());
        const QString first = formulas.Trail().toPlainText();
        formulas.Indices().setCurrentRow(formulas.Indices().count() - 1);
        EXPECT_NE(formulas.Trail().toPlainText(), first);
        formulas.Copy();
        copied = QtClipboard().Text();
        return int(QDialog::Rejected);
    });
    OpenExample();
    MainWindow& window = program->Window();
    const sheet::Sheet& sheet = program->Document().Sheet();
    const int studyCol = sheet.GetCol(0, 1);
    window.Sheet().SetCurrentCell(sheet::FixedRowCount + 1, studyCol);
    window.Command("Formulas")->trigger();
    EXPECT_TRUE(prompter.shown.empty());
    EXPECT_EQ(copied.rfind("Study: " + program->Document().StudyName(1) + "\n", 0), 0u);
}

TEST_F(ProgramFixture, DataEntryAssistantShowsTheRowsValues) {
    Make([&](QDialog& dialog) {
        auto& entries = dynamic_cast<DataEntryDialog&>(dialog);
        entries.show();
        EXPECT_EQ(entries.Roles().rowCount(), 4);
        EXPECT_EQ(entries.Roles().item(0, 0)->text(), "Group-A Events");
        EXPECT_FALSE(entries.Roles().item(0, 1)->text().isEmpty());
        EXPECT_TRUE(SaveScreenshot(entries, "data-entry-dialog.png"));
        return int(QDialog::Rejected);
    });
    OpenExample();
    MainWindow& window = program->Window();
    window.Sheet().SetCurrentCell(sheet::FixedRowCount, program->Document().Sheet().GetCol(0, 1));
    window.Command("Data entry assistant")->trigger();
    EXPECT_TRUE(prompter.shown.empty());
}

TEST_F(ProgramFixture, RowDialogsOfARowWithoutDataAreRefused) {
    bool opened = false;
    Make([&](QDialog&) {
        opened = true;
        return int(QDialog::Rejected);
    });
    OpenExample();
    MainWindow& window = program->Window();
    window.Sheet().SetCurrentCell(sheet::FixedRowCount + program->Document().DataRows() + 2, 0);
    for (const char* key : {"Formulas", "Data entry assistant"}) {
        prompter.shown.clear();
        window.Command(key)->trigger();
        EXPECT_FALSE(opened) << key;
        EXPECT_EQ(prompter.Only(),
                  "Cannot open dialog box|Please enter data for this row and then try again      ");
    }
}

}  // namespace
}  // namespace synthara::ui
