#include "app/MainWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QDialog>
#include <QFileInfo>
#include <QIcon>
#include <QTimer>

#include "sheet/CellEditCommand.h"
#include "sheet/SheetWidget.h"
#include "sheet/SnapshotCommand.h"

// The icon is a resource of this static library, which the linker keeps only
// when something names it; outside any namespace, as Qt asks.
static void InitResources() {
    Q_INIT_RESOURCE(resources);
}

namespace synthara::ui {

MainWindow::MainWindow(shell::Document& document, shell::FileServices& files,
                       shell::StoredSettings& settings, QWidget* parent)
    : QMainWindow(parent),
      execDialog([](QDialog& dialog) { return dialog.exec(); }),
      document_(document),
      files_(files),
      settings_(settings),
      sheet_(new SheetWidget(document, undo_, this)) {
    InitResources();
    setCentralWidget(sheet_);
    setWindowIcon(QIcon(":/synthara.svg"));
    resize(1180, 720);
    RegisterCommands();
    BuildMenus();
    connect(sheet_, &SheetWidget::ContextMenuAt, this, &MainWindow::ShowContextMenu);
    WatchColumnTitles();
    // Auto sort: an edit of the grid just done (or done again) is followed by
    // the sort, once the edit's command is on the stack.
    connect(&undo_, &QUndoStack::indexChanged, this, [this](int index) {
        if (!autoSort_ || index == 0 || index != undo_.count()) return;
        if (dynamic_cast<const CellEditCommand*>(undo_.command(index - 1)) == nullptr) return;
        QTimer::singleShot(0, this, &MainWindow::SortAgain);
    });
    document_.AddListener(*this);
    UpdateCaption();
    SyncChecks();
}

MainWindow::~MainWindow() {
    document_.RemoveListener(*this);
}

bool MainWindow::Run(const QString& key) {
    const auto handler = handlers_.find(key);
    if (handler == handlers_.end()) return false;
    if (NeedsDataEntryColumns(key) && !document_.HasDataEntryColumns()) {
        document_.Prompts().Message(shell::Document::EffectSizeColumnsMissing());
        SyncChecks();  // a ticked entry that was refused shows the state again
        return true;
    }
    // Whatever the command changes on the sheet is one step of undo.
    QString text = key;
    if (const QAction* action = Command(key)) text = action->text().remove('&').remove("...");
    RunUndoable(document_, undo_, text, handler->second);
    return true;
}

QAction* MainWindow::Command(const QString& key) const {
    const auto alias = Aliases().find(key);
    const auto it = commands_.find(alias == Aliases().end() ? key : alias->second);
    return it == commands_.end() ? nullptr : it->second;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!document_.Close(files_)) {
        event->ignore();
        return;
    }
    event->accept();
    emit Closed();
}

void MainWindow::SheetChanged(const shell::SheetChange& change) {
    if (change.kind == shell::ChangeKind::Cells) return;
    // Another sheet altogether: the edits made before can't be undone on it.
    if (change.kind == shell::ChangeKind::Reset) undo_.clear();
    UpdateCaption();
    SyncChecks();
    RefreshRecentFiles();
}

void MainWindow::DirtyChanged(bool dirty) {
    setWindowModified(dirty);
    UpdateCaption();
}

void MainWindow::UpdateCaption() {
    // "[*]" is where the window shows that there are unsaved changes.
    setWindowTitle(QString::fromStdString(document_.Caption()) + "[*] - Synthara");
    setWindowModified(document_.Dirty());
}

}  // namespace synthara::ui
