// The sheet's command keys as the menus, the toolbar and the context menu
// offer them: every key has its entry, the commands that need data-entry
// columns say so on a sheet without any, the context menu offers what fits
// the cell clicked, and the commands the window carries out itself reach
// their logic.
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTableWidget>

#include "ProgramFixture.h"
#include "app/AnalysisResultsDialog.h"
#include "app/OptionsDialog.h"
#include "sheet/SheetModel.h"
#include "sheet/SheetView.h"
#include "sheet/SheetWidget.h"
#include "sheet/grid/Sheet.h"
#include "support/Screenshot.h"

namespace synthara::ui {
namespace {

using sheet::FixedRowCount;
using sheet::MetaRow;

// The first column whose metadata row `row` reads `text`; -1 for none.
int ColumnWhere(const sheet::Sheet& sheet, int row, const std::string& text) {
    for (int c = 0; c < sheet.Flex().Cols(); ++c)
        if (sheet.MetaIs(c, row, text) && !sheet.Flex().Col(c).hidden) return c;
    return -1;
}

TEST_F(ProgramFixture, EveryCommandKeyHasItsMenuEntry) {
    Make();
    // The sheet's command table, its keys parted by "|".
    const QStringList keys =
        QString(
            "New|Open|File|From template|Template|Save|SaveAs|Close|Exit|Bookmark|Restore|Print|"
            "Printsetup|Import|Use first row as labels|Cut|Copy selection|Copy with header|"
            "Copy entire grid|Paste|Delete|Data entered to right|Data entered down|"
            "Insert column for study names|Insert column for the timepoint name|"
            "Identify column for subgroup within study|Insert columns for effect size data|"
            "Create new block|Wiz|Identify columns with effect size data|"
            "Identify columns for effect size data|Wiz2|Insert column for moderator variable|"
            "Identify column for moderator variable|Insert study|Insert row|Insert Rows|Copy row|"
            "Copy column|Delete row|Delete column|Delete study|Delete this data entry block|"
            "Rename column|Modify column properties|Column properties|Hide or display columns|"
            "Width Col|Decimals displayed|Increase Decimal|Decrease Decimal|Drop down box|"
            "Column highlight|Column remove highlight|Row highlight|Row remove highlight|Sort AZ|"
            "Sort ZA|Auto sort on|Auto sort off|Merge rows|Show each row|Select multiple rows|"
            "Freeze columns|Unfreeze columns|Show all blocks|Show only current block|"
            "Hide all blocks|Show selected indices|Show only primary index|Customize display|"
            "Set primary index|Effect size index|Apply auto format|Compute effects|Check data|"
            "Remove red backcolor|Edit group names|Data entry assistant|Formulas|View Analysis|"
            "Correlation for imputing paired SD|Variance for mean difference|"
            "Symmetry for confidence intervals|Limits for correlation|Variance for Hedges's g|"
            "Copy to clipboard|Opening wizard|Technical support|About")
            .split('|');
    MainWindow& window = program->Window();
    for (const QString& key : keys) {
        QAction* action = window.Command(key);
        ASSERT_NE(action, nullptr) << key.toStdString();
        EXPECT_TRUE(window.Handles(key)) << key.toStdString();
        // A second name leads to its command's entry, whose key it runs alike.
        const auto alias = MainWindow::Aliases().find(key);
        EXPECT_EQ(action->data().toString(),
                  alias == MainWindow::Aliases().end() ? key : alias->second);
    }
    EXPECT_EQ(window.Command("Print")->shortcut(), QKeySequence::Print);
    EXPECT_EQ(window.Command("Delete")->shortcut(), QKeySequence::Delete);
    EXPECT_EQ(window.Command("No such command"), nullptr);
    EXPECT_FALSE(window.Run("No such command"));
}

TEST_F(ProgramFixture, CommandsThatNeedEffectSizeColumnsSaySoOnAnEmptySheet) {
    bool opened = false;
    Make([&](QDialog&) {
        opened = true;
        return int(QDialog::Rejected);
    });
    MainWindow& window = program->Window();
    ASSERT_FALSE(program->Document().HasDataEntryColumns());
    for (const char* key : {"View Analysis", "Merge rows", "Formulas", "Show selected indices"}) {
        SCOPED_TRACE(key);
        prompter.shown.clear();
        EXPECT_TRUE(window.Run(key));
        EXPECT_EQ(prompter.Only(),
                  "Columns for effect size missing|"
                  "Please identify the columns with effect size data.      |"
                  "If these columns exist, select 'Identify ... Column for ... Effect size "
                  "data'.     |"
                  "Otherwise, select 'Insert ... Column for... Effect size data'.     ");
    }
    EXPECT_FALSE(opened);
    // The refused toggle shows the row display as it stands.
    window.Command("Merge rows")->trigger();
    EXPECT_FALSE(window.Command("Merge rows")->isChecked());
    EXPECT_FALSE(program->Document().Project().MergeRowsOn);
}

TEST_F(ProgramFixture, TheContextMenuFitsTheCellClicked) {
    Make();
    OpenExample();
    shell::Document& document = program->Document();
    ASSERT_TRUE(document.AddBlock("Correlation and sample size"));
    MainWindow& window = program->Window();
    const sheet::Sheet& sheet = document.Sheet();
    const int row = FixedRowCount;
    const int freeRow = FixedRowCount + document.DataRows();

    // A drop-down column offers its values, and one chosen is typed in.
    const int direction = ColumnWhere(sheet, MetaRow::DataType, "Effect direction");
    ASSERT_GE(direction, 0);
    const QStringList offered = window.ContextCommands(freeRow, direction);
    ASSERT_GE(offered.size(), 2);
    EXPECT_EQ(offered.mid(0, 2), QStringList({"Negative", "Positive"}));
    window.Sheet().SetCurrentCell(freeRow, direction);
    window.Command("Positive")->trigger();
    EXPECT_EQ(document.CellText(freeRow, direction), "Positive");
    EXPECT_TRUE(document.Dirty());
    window.Undo().undo();
    EXPECT_EQ(document.CellText(freeRow, direction), "");

    // A display column of a point offers to make its index the primary one.
    const int point = ColumnWhere(sheet, MetaRow::Attribute, "Point");
    ASSERT_GE(point, 0);
    const QStringList display = window.ContextCommands(row, point);
    EXPECT_TRUE(display.contains("Set primary index"));
    EXPECT_FALSE(display.contains("Negative"));

    // An entry cell: the clipboard, its row and the row's dialogs.
    const int entry = ColumnWhere(sheet, MetaRow::Function, "Data Entry");
    const QStringList cell = window.ContextCommands(row, entry);
    for (const char* key : {"Cut", "Copy selection", "Paste", "Delete", "Insert row", "Delete row",
                            "Data entry assistant", "Formulas", "Sort AZ"})
        EXPECT_TRUE(cell.contains(key)) << key;
    EXPECT_FALSE(cell.contains("Set primary index"));
    EXPECT_FALSE(cell.contains("Column properties"));

    // The column's title: the column's own commands.
    const QStringList title = window.ContextCommands(0, entry);
    for (const char* key : {"Column properties", "Rename column", "Delete column", "Width Col"})
        EXPECT_TRUE(title.contains(key)) << key;
    EXPECT_FALSE(title.contains("Cut"));

    for (int col : {direction, point, entry})
        for (const QString& key : window.ContextCommands(row, col))
            EXPECT_NE(window.Command(key), nullptr) << key.toStdString();
}

TEST_F(ProgramFixture, KeysTheWindowCarriesOutReachTheirLogic) {
    QString opened;
    std::function<void(QDialog&)> inspect;
    Make([&](QDialog& dialog) {
        opened = dialog.objectName();
        if (inspect) inspect(dialog);
        return int(QDialog::Rejected);
    });
    OpenExample();
    MainWindow& window = program->Window();
    shell::Document& document = program->Document();
    const int studyCol = document.Sheet().GetCol(0, 1);
    const auto behavior = [&] { return window.Sheet().View().selectionBehavior(); };
    QSignalSpy status(window.statusBar(), &QStatusBar::messageChanged);

    struct Case {
        const char* key;
        QString dialog;  // the dialog it opens; "" for none
        std::function<void(QDialog&)> inspect;
        std::function<bool()> reached;
    };
    const std::vector<Case> cases = {
        {"Select multiple rows",
         "",
         {},
         [&] {
             return behavior() == QAbstractItemView::SelectRows &&
                    window.Command("Select multiple rows")->isChecked();
         }},
        {"Show each row", "", {}, [&] { return behavior() == QAbstractItemView::SelectItems; }},
        {"Auto sort on",
         "",
         {},
         [&] {
             return window.Command("Auto sort on")->isChecked() &&
                    document.StudyName(0) <= document.StudyName(1);
         }},
        {"Auto sort off", "", {}, [&] { return window.Command("Auto sort off")->isChecked(); }},
        {"Limits for correlation", "frmESOptions",
         [](QDialog& dialog) {
             EXPECT_EQ(dialog.focusWidget(), &dynamic_cast<OptionsDialog&>(dialog).ImputedR());
         },
         [] { return true; }},
        {"View Analysis", "frmAnalysisResults",
         [&](QDialog& dialog) {
             QTableWidget& table = dynamic_cast<AnalysisResultsDialog&>(dialog).Summaries();
             ASSERT_GE(table.rowCount(), 2);
             const auto number = [&](int r, int c) { return table.item(r, c)->text().toDouble(); };
             for (int r = 0; r < table.rowCount(); ++r) {
                 EXPECT_EQ(table.item(r, AnalysisResultsDialog::K)->text(), "13");
                 EXPECT_LT(number(r, AnalysisResultsDialog::Lower),
                           number(r, AnalysisResultsDialog::Estimate));
                 EXPECT_GT(number(r, AnalysisResultsDialog::Upper),
                           number(r, AnalysisResultsDialog::Estimate));
                 const QString p = table.item(r, AnalysisResultsDialog::P)->text();
                 EXPECT_TRUE(p == "<0.00001" || (p.toDouble() > 0 && p.toDouble() <= 1))
                     << p.toStdString();
             }
             dialog.show();
             EXPECT_TRUE(SaveScreenshot(dialog, "analysis-results.png"));
         },
         [&] {
             return !status.isEmpty() &&
                    status.first().first().toString() == "Loading analysis module ...";
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.key);
        opened.clear();
        inspect = c.inspect;
        window.Sheet().SetCurrentCell(FixedRowCount, studyCol);
        EXPECT_TRUE(window.Run(c.key));
        EXPECT_EQ(opened, c.dialog);
        EXPECT_TRUE(c.reached());
    }
}

TEST_F(ProgramFixture, AutoSortSortsAgainAfterEachEdit) {
    Make();
    OpenExample();
    MainWindow& window = program->Window();
    shell::Document& document = program->Document();
    const int studyCol = document.Sheet().GetCol(0, 1);
    const int last = document.DataRows() - 1;
    const auto type = [&](int i, const char* name) {
        SheetModel& model = window.Sheet().Model();
        ASSERT_TRUE(model.setData(model.index(model.ModelRow(FixedRowCount + i), studyCol), name,
                                  Qt::EditRole));
        QApplication::processEvents();
    };

    window.Sheet().SetCurrentCell(FixedRowCount, studyCol);
    window.Run("Sort ZA");
    window.Run("Auto sort on");
    // Sorting again follows the last sort's column and direction.
    type(0, "Aaron 1901");
    EXPECT_EQ(document.StudyName(last), "Aaron 1901");
    window.Run("Auto sort off");
    type(last, "Zed 2020");
    EXPECT_EQ(document.StudyName(last), "Zed 2020");
}

TEST_F(ProgramFixture, MainWindowMenus) {
    Make();
    OpenExample();
    MainWindow& window = program->Window();
    window.show();
    QApplication::processEvents();
    QMenu* edit = nullptr;
    for (QAction* action : window.menuBar()->actions())
        if (action->text() == "&Edit") edit = action->menu();
    ASSERT_NE(edit, nullptr);
    edit->popup(window.mapToGlobal(window.menuBar()->geometry().bottomLeft()) + QPoint(40, 0));
    QApplication::processEvents();
    // The menu is a window of its own: drawn over the main window where it opened.
    QPixmap shot = window.grab();
    QPainter painter(&shot);
    painter.drawPixmap(window.mapFromGlobal(edit->pos()), edit->grab());
    painter.end();
    QDir().mkpath(SYNTHARA_SCREENSHOTS);
    EXPECT_TRUE(shot.save(SYNTHARA_SCREENSHOTS "/main-window-menus.png"));
    edit->close();
}

}  // namespace
}  // namespace synthara::ui
