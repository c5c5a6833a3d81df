#include "sheet/SheetModel.h"

#include <QColor>
#include <algorithm>

#include "sheet/SheetEditor.h"
#include "sheet/grid/MetaRows.h"
#include "sheet/grid/SheetColors.h"

namespace synthara::ui {

namespace {

// The fixed columns (row numbers, the format name) look like headers.
const QColor kFixedBack(240, 240, 240);

QColor ToColor(sheet::BackColor color) {
    return QColor::fromRgba(color);
}

Qt::Alignment AlignmentOf(const sheet::Grid& flex, int row, int col) {
    if (col < flex.FixedCols()) return Qt::AlignCenter;
    switch (flex.Col(col).alignment) {
        case sheet::Alignment::Left:
            return Qt::AlignLeft | Qt::AlignVCenter;
        case sheet::Alignment::Center:
            return Qt::AlignCenter;
        case sheet::Alignment::Right:
            return Qt::AlignRight | Qt::AlignVCenter;
        case sheet::Alignment::General:
            break;
    }
    // As spreadsheets do: numbers to the right, text to the left.
    double number = 0;
    return flex.At(row, col).TryNumber(number) ? Qt::AlignRight | Qt::AlignVCenter
                                               : Qt::AlignLeft | Qt::AlignVCenter;
}

}  // namespace

SheetModel::SheetModel(shell::Document& document, QObject* parent)
    : QAbstractTableModel(parent), document_(document) {
    cols_ = document_.Sheet().Flex().Cols();
    firstRow_ = document_.Sheet().Flex().FixedRows();
    shownRows_ = ShownRows(rows_);
    document_.AddListener(*this);
}

SheetModel::~SheetModel() {
    document_.RemoveListener(*this);
}

std::vector<int> SheetModel::ShownRows(int& count) const {
    const sheet::Grid& flex = document_.Sheet().Flex();
    std::vector<int> shown;
    int first = flex.FixedRows();
    while (first < flex.Rows() && !flex.RowHidden(first))
        ++first;
    count = std::max(0, flex.Rows() - flex.FixedRows());
    if (first == flex.Rows()) return shown;
    // Some row is hidden: keep the list of the shown ones.
    for (int r = flex.FixedRows(); r < flex.Rows(); ++r)
        if (!flex.RowHidden(r)) shown.push_back(r);
    count = static_cast<int>(shown.size());
    return shown;
}

int SheetModel::GridRow(int modelRow) const {
    if (modelRow < 0 || modelRow >= rows_) return -1;
    return shownRows_.empty() ? firstRow_ + modelRow
                              : shownRows_[static_cast<std::size_t>(modelRow)];
}

int SheetModel::ModelRow(int gridRow) const {
    if (shownRows_.empty())
        return gridRow >= firstRow_ && gridRow < firstRow_ + rows_ ? gridRow - firstRow_ : -1;
    const auto it = std::lower_bound(shownRows_.begin(), shownRows_.end(), gridRow);
    return it != shownRows_.end() && *it == gridRow ? static_cast<int>(it - shownRows_.begin())
                                                    : -1;
}

int SheetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int SheetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : cols_;
}

QString SheetModel::Text(int modelRow, int col) const {
    return QString::fromStdString(document_.DisplayText(GridRow(modelRow), col));
}

QVariant SheetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int row = GridRow(index.row());
    const int col = index.column();
    const sheet::Grid& flex = document_.Sheet().Flex();
    switch (role) {
        case Qt::DisplayRole:
            return Text(index.row(), col);
        case Qt::EditRole:
            return QString::fromStdString(document_.CellText(row, col));
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(AlignmentOf(flex, row, col));
        case Qt::BackgroundRole: {
            if (col < flex.FixedCols()) return kFixedBack;
            if (const std::uint8_t shade = flex.CellShade(row, col); shade != 0)
                return ToColor(sheet::BlockShadeColor(shade));
            const sheet::BackColor back = flex.CellBackColor(row, col);
            if (back == sheet::kNoBackColor || back == sheet::kResetBackColor) return {};
            return ToColor(back);
        }
        case EdgeRole: {
            int edges = 0;
            for (const sheet::CellBorder& border : document_.Sheet().View.Borders) {
                if (border.firstCol == col) edges |= LeftEdge;
                if (border.lastCol == col) edges |= RightEdge;
            }
            return edges;
        }
        case JoinAboveRole:
        case JoinBelowRole: {
            if (!flex.Col(col).merged) return false;
            const int other = GridRow(index.row() + (role == JoinAboveRole ? -1 : 1));
            return other >= 0 && !flex.IsBlank(row, col) &&
                   flex.At(other, col) == flex.At(row, col);
        }
        default:
            return {};
    }
}

QVariant SheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Vertical) return section + 1;
    QString title = QString::fromStdString(
        document_.Sheet().Flex().Text(sheet::MetaRow::ColumnHeader, section));
    return title.replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

QStringList SheetModel::DropDownValues(int col) const {
    const sheet::Sheet& sheet = document_.Sheet();
    QStringList values;
    if (col < 0 || col >= sheet.Flex().Cols() ||
        !sheet.MetaIs(col, sheet::MetaRow::DataType, "Drop down box"))
        return values;
    for (const std::string& value : document_.PropertiesOf(col).values)
        values << QString::fromStdString(value);
    return values;
}

Qt::ItemFlags SheetModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    // The fixed columns (row numbers, the format name) label the rows.
    if (index.column() < document_.Sheet().Flex().FixedCols()) return Qt::ItemIsEnabled;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (editor_ != nullptr && document_.CellEditable(GridRow(index.row()), index.column()))
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool SheetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole || editor_ == nullptr) return false;
    return editor_->Commit(
        {{GridRow(index.row()), index.column(), value.toString().toStdString()}});
}

void SheetModel::SheetChanged(const shell::SheetChange& change) {
    switch (change.kind) {
        case shell::ChangeKind::Reset:
            beginResetModel();
            cols_ = document_.Sheet().Flex().Cols();
            firstRow_ = document_.Sheet().Flex().FixedRows();
            shownRows_ = ShownRows(rows_);
            endResetModel();
            emit StructureChanged();
            return;
        case shell::ChangeKind::Structure:
            ChangeStructure();
            return;
        case shell::ChangeKind::Cells:
            for (const shell::CellRange& range : change.ranges)
                CellsChanged(range);
            return;
    }
}

void SheetModel::ResizeAtEnd(Qt::Orientation orientation, int& count, int wanted) {
    const bool columns = orientation == Qt::Horizontal;
    if (wanted > count) {
        columns ? beginInsertColumns({}, count, wanted - 1)
                : beginInsertRows({}, count, wanted - 1);
        count = wanted;
        columns ? endInsertColumns() : endInsertRows();
    } else if (wanted < count) {
        columns ? beginRemoveColumns({}, wanted, count - 1)
                : beginRemoveRows({}, wanted, count - 1);
        count = wanted;
        columns ? endRemoveColumns() : endRemoveRows();
    }
}

// Columns added or removed at the end of the model, then everything laid out
// again: the data stays where it is, only which column shows what moved.
void SheetModel::ChangeStructure() {
    const sheet::Grid& flex = document_.Sheet().Flex();
    ResizeAtEnd(Qt::Horizontal, cols_, flex.Cols());
    int rows = 0;
    std::vector<int> shown = ShownRows(rows);
    ResizeAtEnd(Qt::Vertical, rows_, rows);
    emit layoutAboutToBeChanged();
    firstRow_ = flex.FixedRows();
    shownRows_ = std::move(shown);
    emit layoutChanged();
    if (cols_ > 0) emit headerDataChanged(Qt::Horizontal, 0, cols_ - 1);
    emit StructureChanged();
}

void SheetModel::CellsChanged(const shell::CellRange& range) {
    if (cols_ == 0 || rows_ == 0) return;
    const int firstCol = std::max(range.firstCol, 0);
    const int lastCol = std::min(range.lastCol, cols_ - 1);
    if (firstCol > lastCol) return;
    if (range.firstRow < firstRow_) {
        if (range.firstRow == sheet::MetaRow::ColumnHeader)
            emit headerDataChanged(Qt::Horizontal, firstCol, lastCol);
        // A record's field (alignment, format, function) changes how every
        // cell of the column reads.
        if (range.lastRow > sheet::MetaRow::ColumnHeader)
            emit dataChanged(index(0, firstCol), index(rows_ - 1, lastCol));
        if (range.lastRow < firstRow_) return;
    }
    // The shown rows within the range.
    int first = -1;
    int last = -1;
    if (shownRows_.empty()) {
        first = std::max(range.firstRow, firstRow_) - firstRow_;
        last = std::min(range.lastRow - firstRow_, rows_ - 1);
    } else {
        first = static_cast<int>(
            std::lower_bound(shownRows_.begin(), shownRows_.end(), range.firstRow) -
            shownRows_.begin());
        last =
            static_cast<int>(std::upper_bound(shownRows_.begin(), shownRows_.end(), range.lastRow) -
                             shownRows_.begin()) -
            1;
    }
    if (first <= last) emit dataChanged(index(first, firstCol), index(last, lastCol));
}

}  // namespace synthara::ui
