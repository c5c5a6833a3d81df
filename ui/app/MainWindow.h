#pragma once
// The main window: the sheet of the open project with the program's menus,
// toolbar and context menu. Every menu entry sends a command key; Run
// carries it out through the open project's operations, and the window only
// asks the user and shows the outcome.
#include <QMainWindow>
#include <QStringList>
#include <QUndoStack>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "shell/Document.h"
#include "shell/Settings.h"

class QAction;
class QDialog;
class QMenu;
class QPrinter;

namespace synthara::ui {

class SheetWidget;

class MainWindow final : public QMainWindow, private shell::DocumentListener {
    Q_OBJECT
  public:
    // `settings` keeps "Opening wizard" (ShowWizard01); `files` serves the
    // file menu and the recent lists.
    MainWindow(shell::Document& document, shell::FileServices& files,
               shell::StoredSettings& settings, QWidget* parent = nullptr);
    ~MainWindow() override;

    SheetWidget& Sheet() { return *sheet_; }
    QUndoStack& Undo() { return undo_; }
    shell::FileServices& Files() { return files_; }

    // Carries out a command key; false for a key the window does not know.
    // A command that needs data-entry columns answers with a box on a sheet
    // without any.
    bool Run(const QString& key);
    // Whether Run knows the key.
    bool Handles(const QString& key) const { return handlers_.count(key) > 0; }
    static bool NeedsDataEntryColumns(const QString& key);
    // The menu entry of a command key (of the key it stands for, for a
    // second name); nullptr when it is not shown.
    QAction* Command(const QString& key) const;
    // The second names of commands, each with the key of its menu entry.
    static const std::map<QString, QString>& Aliases();
    // The command keys the context menu offers for a sheet cell; a row above
    // the first data row stands for the column's title.
    QStringList ContextCommands(int row, int col) const;
    // Brings the recent-file entries of the File menu up to date.
    void RefreshRecentFiles();

    // Shows a modal dialog; tests answer it without showing it.
    std::function<int(QDialog&)> execDialog;

  signals:
    // The window was closed and the program may end: the project was saved or
    // abandoned and the temporary files are gone.
    void Closed();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void SheetChanged(const shell::SheetChange& change) override;
    void DirtyChanged(bool dirty) override;

    void RegisterCommands();
    void RegisterColumnCommands();
    void RegisterRowColumnCommands();
    void RegisterClipboardCommands();
    // Opening tables of rows, the "Import" note, "Use first row as labels".
    void RegisterImportCommands();
    // "Print" and "Printsetup".
    void RegisterPrintCommands();
    void BuildMenus();
    // An entry of `menu` (of no menu when it is null) that runs `key`.
    QAction* AddCommand(QMenu* menu, const QString& key, const QString& text = {},
                        const QKeySequence& shortcut = {});
    // The context menu's commands in groups, which separators part.
    std::vector<QStringList> ContextGroups(int row, int col) const;
    void ShowContextMenu(int row, int col, const QPoint& globalPos);
    // The column titles' context menu.
    void WatchColumnTitles();
    // The values of the drop-down columns the context menu offers by name,
    // by the column's DataType, and those of column `col`.
    static const std::map<std::string, QStringList>& DropDownValues();
    QStringList CellValues(int col) const;
    void UpdateCaption();
    void SyncChecks();

    // The handlers of the commands that need more than one call.
    void OpenWizard(bool identify);
    void InsertStudy();
    void EditGroupNames();
    void InsertModerator();
    void EditOptions(const QString& menuEntry);
    void ShowFormulas();
    void ShowDataEntry();
    void ViewAnalysis();
    void About();
    // Sorting by a column, and sorting again by it after each edit of the
    // grid while auto sort is on.
    void SortRows(int col, bool descending);
    void SetAutoSort(bool on);
    void SortAgain();
    // "Select multiple rows": the grid picks whole rows, several at a time.
    void SetRowSelection(bool wholeRows);
    // Writes a drop-down value chosen from the context menu into the
    // current cell, as an edit of the grid.
    void WriteCellValue(const QString& value);
    void ShowImportNote();
    // The import preview for a table file, then the file opened with its
    // choices; true when it was opened.
    bool ImportTableFile(const std::string& path);
    void PrintSheet();
    // The printer the page setup and the prints share, made when first asked for.
    QPrinter& Printer();

    shell::Document& document_;
    shell::FileServices& files_;
    shell::StoredSettings& settings_;
    QUndoStack undo_;
    SheetWidget* sheet_;
    std::map<QString, QAction*> commands_;
    std::map<QString, std::function<void()>> handlers_;
    QMenu* recentMenu_ = nullptr;
    // The column (by key, or by position when it has none) and direction of
    // the last sort, which auto sort repeats; `resortCol_` is the column the
    // repeat sorts by while it runs.
    struct LastSort {
        std::string key;
        int col = -1;
        bool descending = false;
    } lastSort_;
    bool autoSort_ = false;
    int resortCol_ = -1;
    bool wholeRows_ = false;
    std::shared_ptr<QPrinter> printer_;
};

}  // namespace synthara::ui
