#pragma once
// Opening a table of rows (a delimited text or a workbook): the file's first
// rows as the import will read them, the sheet of a workbook to take, and
// "Use first row as labels". Ok takes the choices; the window opens the file
// with them.
#include <QDialog>
#include <string>

#include "sheet/import/TableFile.h"

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLabel;
class QTableWidget;

namespace synthara::ui {

class ImportDialog final : public QDialog {
    Q_OBJECT
  public:
    // The rows the preview shows, the titles row included.
    static constexpr std::size_t kPreviewRows = 20;

    explicit ImportDialog(std::string path, QWidget* parent = nullptr);

    // The sheet chosen (a workbook's) and whether the first row titles the columns.
    sheet::TableOptions Options() const;
    // The format of rows that name none (long name); "" when every row names its own.
    std::string DefaultFormat() const;

    QComboBox& Sheets() { return *sheets_; }
    QComboBox& Formats() { return *formats_; }
    QCheckBox& FirstRowLabels() { return *labels_; }
    QTableWidget& Preview() { return *preview_; }
    // Why the file can't be read; empty when it can.
    QString Fault() const;

  private:
    void ListWorkbookSheets();
    void ListFormats();
    // Proposes the format the titles fit, when the user has not chosen one.
    void ProposeFormat(const std::vector<std::string>& titles);
    void Refresh();
    void ShowFault(const QString& text);

    std::string path_;
    QComboBox* sheets_;
    QComboBox* formats_;
    QCheckBox* labels_;
    QTableWidget* preview_;
    QLabel* fault_;
    QDialogButtonBox* buttons_;
    bool formatChosen_ = false;
};

}  // namespace synthara::ui
