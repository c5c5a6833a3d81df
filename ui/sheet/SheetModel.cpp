#include "sheet/SheetModel.h"

namespace synthara::ui {

SheetModel::SheetModel(shell::Document& document, QObject* parent)
    : QAbstractTableModel(parent), document_(document) {
    rows_ = document_.Sheet().Flex().Rows();
    cols_ = document_.Sheet().Flex().Cols();
    document_.AddListener(*this);
}

SheetModel::~SheetModel() {
    document_.RemoveListener(*this);
}

int SheetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int SheetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : cols_;
}

QVariant SheetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole) return {};
    return QString::fromStdString(document_.CellText(index.row(), index.column()));
}

void SheetModel::SheetChanged(const shell::SheetChange& change) {
    if (change.kind != shell::ChangeKind::Cells) {
        beginResetModel();
        rows_ = document_.Sheet().Flex().Rows();
        cols_ = document_.Sheet().Flex().Cols();
        endResetModel();
        return;
    }
    for (const auto& range : change.ranges)
        emit dataChanged(index(range.firstRow, range.firstCol),
                         index(range.lastRow, range.lastCol));
}

}  // namespace synthara::ui
