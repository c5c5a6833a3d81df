#pragma once
// The open project's grid as a Qt table model. It holds no copy of the data:
// every cell is read from the document when the view asks for it, and the
// document's change notifications become the model's signals.
#include <QAbstractTableModel>

#include "shell/Document.h"

namespace synthara::ui {

class SheetModel final : public QAbstractTableModel, private shell::DocumentListener {
    Q_OBJECT
  public:
    explicit SheetModel(shell::Document& document, QObject* parent = nullptr);
    ~SheetModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    shell::Document& Document() { return document_; }

  private:
    void SheetChanged(const shell::SheetChange& change) override;

    shell::Document& document_;
    int rows_ = 0;
    int cols_ = 0;
};

}  // namespace synthara::ui
