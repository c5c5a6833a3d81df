// The menus, the toolbar and the context menu of the main window: each entry
// carries a command key and runs it.
#include <QAction>
#include <QActionGroup>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "app/MainWindow.h"
#include "app/OptionsDialog.h"
#include "sheet/SheetWidget.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::ui {

namespace {

// Commands whose entries are ticked, in exclusive groups.
const QStringList kBlockModes = {"Hide all blocks", "Show only current block", "Show all blocks"};
const QStringList kIndexModes = {"Show only primary index", "Show selected indices"};

}  // namespace

QAction* MainWindow::AddCommand(QMenu* menu, const QString& key, const QString& text,
                                const QKeySequence& shortcut) {
    QAction* action = menu->addAction(text.isEmpty() ? key : text);
    action->setData(key);
    if (!shortcut.isEmpty()) action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, [this, key] { Run(key); });
    commands_[key] = action;
    return action;
}

void MainWindow::BuildMenus() {
    QMenu* file = menuBar()->addMenu("&File");
    AddCommand(file, "New", "&New", QKeySequence::New);
    AddCommand(file, "Open", "&Open...", QKeySequence::Open);
    AddCommand(file, "From template", "New from &template...");
    recentMenu_ = file->addMenu("Recent &files");
    file->addSeparator();
    AddCommand(file, "Save", "&Save", QKeySequence::Save);
    AddCommand(file, "SaveAs", "Save &as...", QKeySequence("Ctrl+Shift+S"));
    AddCommand(file, "Close", "&Close");
    file->addSeparator();
    AddCommand(file, "Exit", "E&xit", QKeySequence("Ctrl+Q"));

    QMenu* edit = menuBar()->addMenu("&Edit");
    QAction* undo = undo_.createUndoAction(this, "&Undo");
    undo->setShortcut(QKeySequence("Ctrl+Z"));
    QAction* redo = undo_.createRedoAction(this, "&Redo");
    redo->setShortcut(QKeySequence("Ctrl+Y"));
    edit->addAction(undo);
    edit->addAction(redo);
    edit->addSeparator();
    AddCommand(edit, "Bookmark", "Set &bookmark");
    AddCommand(edit, "Restore", "&Restore bookmark");

    QMenu* insert = menuBar()->addMenu("&Insert");
    QMenu* identify = menuBar()->addMenu("I&dentify");
    const QStringList populations = {"study names", "subgroup within study", "the comparison name",
                                     "the outcome name", "the timepoint name"};
    for (const QString& words : populations) {
        AddCommand(insert, "Insert column for " + words, "Column for " + words);
        AddCommand(identify, "Identify column for " + words, "Column for " + words);
    }
    insert->addSeparator();
    identify->addSeparator();
    AddCommand(insert, "Insert columns for effect size data", "Columns for effect size data...");
    AddCommand(identify, "Identify columns with effect size data",
               "Columns with effect size data...");
    AddCommand(insert, "Insert column for moderator variable", "Column for moderator variable...");
    AddCommand(identify, "Identify column for moderator variable", "Column for moderator variable");
    insert->addSeparator();
    AddCommand(insert, "Insert study", "Study...");

    QMenu* view = menuBar()->addMenu("&View");
    QMenu* blocks = view->addMenu("Data-entry &blocks");
    QMenu* indices = view->addMenu("Effect size &indices");
    auto* blockGroup = new QActionGroup(this);
    for (const QString& key : kBlockModes)
        blockGroup->addAction(AddCommand(blocks, key))->setCheckable(true);
    auto* indexGroup = new QActionGroup(this);
    for (const QString& key : kIndexModes)
        indexGroup->addAction(AddCommand(indices, key))->setCheckable(true);
    indices->addSeparator();
    AddCommand(indices, "Customize display", "Customize display...");
    view->addSeparator();
    auto* rowGroup = new QActionGroup(this);
    rowGroup->addAction(AddCommand(view, "Merge rows"))->setCheckable(true);
    rowGroup->addAction(AddCommand(view, "Show each row"))->setCheckable(true);
    view->addSeparator();
    AddCommand(view, "Freeze columns");
    AddCommand(view, "Unfreeze columns");

    QMenu* tools = menuBar()->addMenu("&Tools");
    AddCommand(tools, "Compute effects");
    AddCommand(tools, "Check data");
    AddCommand(tools, "Remove red backcolor", "Remove red background");
    tools->addSeparator();
    AddCommand(tools, "Sort AZ", "Sort ascending");
    AddCommand(tools, "Sort ZA", "Sort descending");
    tools->addSeparator();
    AddCommand(tools, "Set primary index");
    AddCommand(tools, "Edit group names", "Edit group names...");
    AddCommand(tools, "Data entry assistant", "Data entry assistant...");
    AddCommand(tools, "Formulas", "Formulas of this row...");
    tools->addSeparator();
    AddCommand(tools, "Delete study");
    AddCommand(tools, "Delete this data entry block");

    QMenu* formulas = menuBar()->addMenu("F&ormulas");
    for (const QString& key : OptionsDialog::MenuEntries())
        AddCommand(formulas, key, key + "...");

    QMenu* help = menuBar()->addMenu("&Help");
    AddCommand(help, "Opening wizard")->setCheckable(true);
    AddCommand(help, "About", "&About Synthara");

    QToolBar* bar = addToolBar("Commands");
    bar->setObjectName("ActiveBar1");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (const char* key : {"New", "Open", "Save"})
        bar->addAction(Command(key));
    bar->addSeparator();
    bar->addAction(undo);
    bar->addAction(redo);
    bar->addSeparator();
    for (const char* key : {"Insert study", "Sort AZ", "Sort ZA", "Merge rows", "Show each row"})
        bar->addAction(Command(key));
    bar->addSeparator();
    for (const char* key : {"Compute effects", "Check data"})
        bar->addAction(Command(key));
    RefreshRecentFiles();
}

void MainWindow::RefreshRecentFiles() {
    recentMenu_->clear();
    int number = 0;
    for (const std::string& path : files_.recent.Files().Entries()) {
        if (path.empty()) continue;
        const QString full = QString::fromStdString(path);
        QAction* action =
            recentMenu_->addAction(QString("&%1 %2").arg(++number).arg(QFileInfo(full).fileName()));
        action->setToolTip(full);
        connect(action, &QAction::triggered, this,
                [this, path] { document_.FileOpen(files_, sheet::OpenKind::File, path); });
    }
    recentMenu_->setEnabled(number > 0);
}

void MainWindow::SyncChecks() {
    const sheet::BlockView& view = document_.Sheet().View;
    const auto check = [this](const QString& key, bool on) {
        if (QAction* action = Command(key)) action->setChecked(on);
    };
    for (int mode = 0; mode < kBlockModes.size(); ++mode)
        check(kBlockModes[mode], view.BlockDisplay == mode);
    check("Show only primary index", view.IndexDisplay == sheet::ShowPrimaryIndex);
    check("Show selected indices", view.IndexDisplay == sheet::ShowSelectedIndices);
    check("Merge rows", document_.Project().MergeRowsOn);
    check("Show each row", !document_.Project().MergeRowsOn);
    check("Opening wizard", settings_.Integer("ShowWizard01") == 1);
    Command("Restore")->setEnabled(document_.Project().RestoreEnabled);
    Command("Unfreeze columns")->setEnabled(document_.Frozen());
}

QStringList MainWindow::ContextCommands(int row, int col) const {
    const sheet::Sheet& sheet = document_.Sheet();
    const sheet::Grid& flex = sheet.Flex();
    if (col < 0 || col >= flex.Cols()) return {};
    using sheet::MetaRow;
    const std::string function = flex.Text(MetaRow::Function, col);
    QStringList keys;
    if (function == "Populations") {
        keys << "Insert study";
        if (row >= sheet::FixedRowCount) keys << "Delete study";
    } else if (function == "Data Entry") {
        keys << "Delete this data entry block"
             << "Edit group names";
    } else if (function == "Display") {
        if (!flex.Text(MetaRow::IndexName, col).empty() &&
            flex.Text(MetaRow::Attribute, col) == "Point")
            keys << "Set primary index";
        keys << "Show only primary index"
             << "Show selected indices"
             << "Customize display";
    } else if (function != "Moderator") {
        keys << "Identify column for study names"
             << "Identify column for moderator variable"
             << "Identify columns with effect size data";
    }
    // The row dialogs, from any cell of a data row that holds a block's data.
    if (row >= sheet::FixedRowCount && (function == "Data Entry" || function == "Display"))
        keys << "Data entry assistant"
             << "Formulas";
    keys << "Sort AZ"
         << "Sort ZA";
    keys << (document_.Frozen() ? "Unfreeze columns" : "Freeze columns");
    return keys;
}

void MainWindow::ShowContextMenu(int row, int col, const QPoint& globalPos) {
    // The commands act on the cell clicked.
    sheet_->SetCurrentCell(row, col);
    QMenu menu(this);
    for (const QString& key : ContextCommands(row, col))
        menu.addAction(Command(key));
    if (!menu.isEmpty()) menu.exec(globalPos);
}

}  // namespace synthara::ui
