#pragma once
// The open project's grid as a Qt table model. It holds no copy of the data:
// every cell is read from the document when the view asks for it, and the
// document's change notifications become the model's signals. Model columns
// are the grid's columns (the view hides the hidden ones); model rows are the
// grid's shown data rows, the fixed rows above them serving as the column
// headers (row 0) and as each column's record (the rest, never shown).
#include <QAbstractTableModel>
#include <QStringList>
#include <vector>

#include "shell/Document.h"

namespace synthara::ui {

class SheetEditor;

class SheetModel final : public QAbstractTableModel, private shell::DocumentListener {
    Q_OBJECT
  public:
    // What the cell painter needs besides the standard roles.
    enum Role {
        EdgeRole = Qt::UserRole + 1,  // Edge flags: the cell stands at an outline's side
        JoinAboveRole,                // true: a merged column's cell repeats the one above
        JoinBelowRole,                // true: ... and the one below repeats it
    };
    enum Edge { LeftEdge = 1, RightEdge = 2 };

    explicit SheetModel(shell::Document& document, QObject* parent = nullptr);
    ~SheetModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // Typing goes through the editor, which makes it one undoable command.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    shell::Document& Document() { return document_; }
    // The values a drop-down column offers its editor; empty for other columns.
    QStringList DropDownValues(int col) const;
    // Without an editor the model is read-only.
    void SetEditor(SheetEditor* editor) { editor_ = editor; }

    // The grid row of a model row, and the model row of a grid row (-1 when
    // the grid row is not shown).
    int GridRow(int modelRow) const;
    int ModelRow(int gridRow) const;

  signals:
    // Columns were added, moved, shown or hidden, or another sheet opened:
    // the views lay themselves out again.
    void StructureChanged();

  private:
    void SheetChanged(const shell::SheetChange& change) override;
    void ChangeStructure();
    // Columns or rows added or removed at the end until there are `wanted`.
    void ResizeAtEnd(Qt::Orientation orientation, int& count, int wanted);
    void CellsChanged(const shell::CellRange& range);
    // The shown data rows; empty while none is hidden, the usual case.
    std::vector<int> ShownRows(int& count) const;
    QString Text(int modelRow, int col) const;

    shell::Document& document_;
    SheetEditor* editor_ = nullptr;
    int rows_ = 0;
    int cols_ = 0;
    int firstRow_ = 0;
    std::vector<int> shownRows_;
};

}  // namespace synthara::ui
