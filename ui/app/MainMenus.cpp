// The menus, the toolbar and the context menu of the main window: each entry
// carries a command key and runs it.
#include <algorithm>

#include <QAction>
#include <QActionGroup>
#include <QFileInfo>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "app/MainWindow.h"
#include "sheet/SheetView.h"
#include "sheet/SheetWidget.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::ui {

namespace {

// Commands whose entries are ticked, in exclusive groups.
const QStringList kBlockModes = {"Hide all blocks", "Show only current block", "Show all blocks"};
const QStringList kIndexModes = {"Show only primary index", "Show selected indices"};
const QStringList kRowModes = {"Merge rows", "Show each row", "Select multiple rows"};
// The computation options, in the order of the Formulas menu.
const QStringList kOptionEntries = {
    "Correlation for imputing paired SD", "Variance for mean difference",
    "Symmetry for confidence intervals", "Limits for correlation", "Variance for Hedges's g"};

}  // namespace

const std::map<std::string, QStringList>& MainWindow::DropDownValues() {
    static const std::map<std::string, QStringList> values = {
        {"Effect direction", {"Negative", "Positive"}},
        {"Study design", {"Paired study", "Independent groups"}},
        {"Standardize by", {"Post score SD", "Change score SD"}},
    };
    return values;
}

QStringList MainWindow::CellValues(int col) const {
    const auto it =
        DropDownValues().find(document_.Sheet().Flex().Text(sheet::MetaRow::DataType, col));
    return it == DropDownValues().end() ? QStringList() : it->second;
}

const std::map<QString, QString>& MainWindow::Aliases() {
    static const std::map<QString, QString> aliases = {
        {"File", "Open"},
        {"Template", "From template"},
        {"Insert Rows", "Insert row"},
        {"Create new block", "Insert columns for effect size data"},
        {"Wiz", "Insert columns for effect size data"},
        {"Identify columns for effect size data", "Identify columns with effect size data"},
        {"Wiz2", "Identify columns with effect size data"},
        {"Effect size index", "Set primary index"},
        {"Modify column properties", "Column properties"},
        {"Technical support", "About"},
    };
    return aliases;
}

QAction* MainWindow::AddCommand(QMenu* menu, const QString& key, const QString& text,
                                const QKeySequence& shortcut) {
    const QString shown = text.isEmpty() ? key : text;
    QAction* action = menu != nullptr ? menu->addAction(shown) : new QAction(shown, this);
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
    AddCommand(file, "Import", "&Import data...");
    AddCommand(file, "Use first row as labels", "Use first row as &labels");
    file->addSeparator();
    AddCommand(file, "Save", "&Save", QKeySequence::Save);
    AddCommand(file, "SaveAs", "Save &as...", QKeySequence("Ctrl+Shift+S"));
    AddCommand(file, "Close", "&Close");
    file->addSeparator();
    AddCommand(file, "Print", "&Print...", QKeySequence::Print);
    AddCommand(file, "Printsetup", "Print set&up...");
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
    AddCommand(edit, "Cut", "Cu&t", QKeySequence::Cut);
    AddCommand(edit, "Copy selection", "&Copy", QKeySequence::Copy);
    AddCommand(edit, "Copy with header", "Copy with &header");
    AddCommand(edit, "Copy entire grid", "Copy &entire grid");
    AddCommand(edit, "Paste", "&Paste", QKeySequence::Paste);
    AddCommand(edit, "Delete", "&Delete", QKeySequence::Delete);
    edit->addSeparator();
    QMenu* rows = edit->addMenu("&Rows");
    AddCommand(rows, "Insert row", "&Insert row");
    AddCommand(rows, "Copy row", "&Copy row");
    AddCommand(rows, "Delete row", "&Delete row");
    QMenu* columns = edit->addMenu("C&olumns");
    AddCommand(columns, "Copy column", "&Copy column");
    AddCommand(columns, "Delete column", "&Delete column");
    QMenu* enter = edit->addMenu("&After Enter move");
    auto* enterGroup = new QActionGroup(this);
    enterGroup->addAction(AddCommand(enter, "Data entered down", "&Down"))->setCheckable(true);
    enterGroup->addAction(AddCommand(enter, "Data entered to right", "&Right"))->setCheckable(true);
    Command("Data entered down")->setChecked(true);
    edit->addSeparator();
    AddCommand(edit, "Bookmark", "Set &bookmark");
    AddCommand(edit, "Restore", "Re&store bookmark");

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
    for (const QString& key : kRowModes)
        rowGroup->addAction(AddCommand(view, key))->setCheckable(true);
    view->addSeparator();
    AddCommand(view, "Freeze columns");
    AddCommand(view, "Unfreeze columns");
    view->addSeparator();
    AddCommand(view, "View Analysis", "&Analysis...", QKeySequence("Ctrl+R"));

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

    QMenu* format = menuBar()->addMenu("For&mat");
    AddCommand(format, "Column properties", "Column &properties...");
    AddCommand(format, "Rename column", "&Rename column");
    AddCommand(format, "Hide or display columns", "&Hide or display columns...");
    AddCommand(format, "Width Col", "Fit column &width");
    format->addSeparator();
    AddCommand(format, "Decimals displayed", "&Decimals displayed...");
    AddCommand(format, "Increase Decimal", "&Increase decimals");
    AddCommand(format, "Decrease Decimal", "D&ecrease decimals");
    format->addSeparator();
    QMenu* highlight = format->addMenu("Hi&ghlight");
    AddCommand(highlight, "Column highlight", "Highlight &column");
    AddCommand(highlight, "Column remove highlight", "Remove column highlight");
    highlight->addSeparator();
    AddCommand(highlight, "Row highlight", "Highlight &row");
    AddCommand(highlight, "Row remove highlight", "Remove row highlight");
    AddCommand(format, "Drop down box", "Drop-down &box...");
    AddCommand(format, "Apply auto format", "Apply &auto format");

    QMenu* tools = menuBar()->addMenu("&Tools");
    AddCommand(tools, "Compute effects", "Compute effects", QKeySequence("F9"));
    AddCommand(tools, "Check data");
    AddCommand(tools, "Remove red backcolor", "Remove red background");
    tools->addSeparator();
    AddCommand(tools, "Sort AZ", "Sort ascending");
    AddCommand(tools, "Sort ZA", "Sort descending");
    auto* sortGroup = new QActionGroup(this);
    QMenu* autoSort = tools->addMenu("A&uto sort");
    sortGroup->addAction(AddCommand(autoSort, "Auto sort on", "On"))->setCheckable(true);
    sortGroup->addAction(AddCommand(autoSort, "Auto sort off", "Off"))->setCheckable(true);
    tools->addSeparator();
    AddCommand(tools, "Set primary index");
    AddCommand(tools, "Edit group names", "Edit group names...");
    AddCommand(tools, "Data entry assistant", "Data entry assistant...");
    AddCommand(tools, "Formulas", "Formulas of this row...");
    tools->addSeparator();
    AddCommand(tools, "Copy to clipboard", "Copy sheet to clipboard");
    tools->addSeparator();
    AddCommand(tools, "Delete study");
    AddCommand(tools, "Delete this data entry block");

    QMenu* formulas = menuBar()->addMenu("F&ormulas");
    for (const QString& key : kOptionEntries)
        AddCommand(formulas, key, key + "...");

    QMenu* help = menuBar()->addMenu("&Help");
    AddCommand(help, "Opening wizard")->setCheckable(true);
    help->addSeparator();
    AddCommand(help, "About", "&About Synthara");

    // The values of the drop-down columns, offered by the context menu alone.
    for (const auto& [dataType, values] : DropDownValues())
        for (const QString& value : values)
            AddCommand(nullptr, value);

    QToolBar* bar = addToolBar("Commands");
    bar->setObjectName("ActiveBar1");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (const char* key : {"New", "Open", "Save", "Print"})
        bar->addAction(Command(key));
    bar->addSeparator();
    bar->addAction(undo);
    bar->addAction(redo);
    bar->addSeparator();
    for (const char* key : {"Cut", "Copy selection", "Paste"})
        bar->addAction(Command(key));
    bar->addSeparator();
    for (const char* key : {"Insert study", "Sort AZ", "Sort ZA", "Merge rows", "Show each row"})
        bar->addAction(Command(key));
    bar->addSeparator();
    for (const char* key : {"Compute effects", "Check data", "View Analysis"})
        bar->addAction(Command(key));
    // Shorter words on the buttons than in the menus.
    Command("Insert study")->setIconText("Add study");
    Command("Sort AZ")->setIconText("Sort A-Z");
    Command("Sort ZA")->setIconText("Sort Z-A");
    Command("View Analysis")->setIconText("Analysis");
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
    const bool merged = document_.Project().MergeRowsOn;
    check("Merge rows", merged);
    check("Show each row", !merged && !wholeRows_);
    check("Select multiple rows", !merged && wholeRows_);
    check("Auto sort on", autoSort_);
    check("Auto sort off", !autoSort_);
    check("Opening wizard", settings_.Integer("ShowWizard01") == 1);
    Command("Restore")->setEnabled(document_.Project().RestoreEnabled);
    Command("Unfreeze columns")->setEnabled(document_.Frozen());
}

std::vector<QStringList> MainWindow::ContextGroups(int row, int col) const {
    const sheet::Sheet& sheet = document_.Sheet();
    const sheet::Grid& flex = sheet.Flex();
    if (col < 0 || col >= flex.Cols()) return {};
    using sheet::MetaRow;
    const std::string function = flex.Text(MetaRow::Function, col);
    const QStringList sorting = {"Sort AZ", "Sort ZA",
                                 document_.Frozen() ? "Unfreeze columns" : "Freeze columns"};

    // The column's title: the column's own commands.
    if (row < sheet::FixedRowCount) {
        return {{"Column properties", "Rename column", "Hide or display columns", "Width Col"},
                {"Copy column", "Delete column", "Column highlight", "Column remove highlight"},
                sorting};
    }

    std::vector<QStringList> groups;
    if (const QStringList values = CellValues(col); !values.isEmpty()) groups.push_back(values);
    QStringList own;
    if (function == "Populations") {
        own << "Insert study"
            << "Delete study";
    } else if (function == "Data Entry") {
        own << "Delete this data entry block"
            << "Edit group names";
    } else if (function == "Display") {
        if (!flex.Text(MetaRow::IndexName, col).empty() &&
            flex.Text(MetaRow::Attribute, col) == "Point")
            own << "Set primary index";
        own << "Show only primary index"
            << "Show selected indices"
            << "Customize display";
    } else if (function != "Moderator") {
        own << "Identify column for study names"
            << "Identify column for moderator variable"
            << "Identify columns with effect size data";
    }
    if (!own.isEmpty()) groups.push_back(own);
    groups.push_back({"Cut", "Copy selection", "Copy with header", "Paste", "Delete"});
    groups.push_back(
        {"Insert row", "Copy row", "Delete row", "Row highlight", "Row remove highlight"});
    // The row dialogs, from any cell of a data row that holds a block's data;
    // on an empty row they say so.
    if (function == "Data Entry" || function == "Display")
        groups.push_back({"Data entry assistant", "Formulas"});
    groups.push_back(sorting);
    return groups;
}

QStringList MainWindow::ContextCommands(int row, int col) const {
    QStringList keys;
    for (const QStringList& group : ContextGroups(row, col))
        keys << group;
    return keys;
}

void MainWindow::ShowContextMenu(int row, int col, const QPoint& globalPos) {
    // The commands act on the cell clicked; a title acts on its column.
    if (row >= sheet::FixedRowCount)
        sheet_->SetCurrentCell(row, col);
    else
        sheet_->SetCurrentCell(std::max(sheet_->CurrentRow(), sheet::FixedRowCount), col);
    QMenu menu(this);
    for (const QStringList& group : ContextGroups(row, col)) {
        if (!menu.isEmpty()) menu.addSeparator();
        for (const QString& key : group) {
            if (QAction* action = Command(key)) menu.addAction(action);
        }
    }
    if (!menu.isEmpty()) menu.exec(globalPos);
}

void MainWindow::WatchColumnTitles() {
    for (QTableView* view : {static_cast<QTableView*>(&sheet_->View()), &sheet_->View().Frozen()}) {
        QHeaderView* header = view->horizontalHeader();
        header->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(header, &QWidget::customContextMenuRequested, this,
                [this, header](const QPoint& pos) {
                    const int col = header->logicalIndexAt(pos);
                    if (col >= 0) ShowContextMenu(0, col, header->viewport()->mapToGlobal(pos));
                });
    }
}

}  // namespace synthara::ui
