#include "sheet/grid/Grid.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "sheet/grid/SortKey.h"

namespace synthara::sheet {

namespace {

const Cell kEmptyCell{};

template <typename T>
bool Holds(const std::vector<T>& values, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < values.size();
}

// Takes the element at `from` out and reinserts it so that it ends at `to`.
template <typename Vector>
void MoveOne(Vector& values, int from, int to) {
    if (!Holds(values, from) || !Holds(values, to)) return;
    const auto begin = values.begin();
    if (from < to) {
        std::rotate(begin + from, begin + from + 1, begin + to + 1);
    } else {
        std::rotate(begin + to, begin + from, begin + from + 1);
    }
}

}  // namespace

void Grid::SetRows(int rows) {
    ++revision_;
    ++structureRevision_;
    rows = std::max(rows, 0);
    const auto size = static_cast<std::size_t>(rows);
    rows_ = rows;
    for (Column& column : cols_)
        ResizeColumn(column);
    rowHidden_.resize(size, false);
    rowHeight_.resize(size, defaultRowHeight_);
}

void Grid::ResizeColumn(Column& column) const {
    const auto size = static_cast<std::size_t>(rows_);
    column.cells.resize(size);
    column.back.resize(size);
    column.dataBackEnd = std::min(column.dataBackEnd, rows_);
    column.shade.resize(size);
}

void Grid::SetCols(int cols) {
    ++revision_;
    ++structureRevision_;
    cols = std::max(cols, 0);
    const auto size = static_cast<std::size_t>(cols);
    if (size < cols_.size()) {
        cols_.resize(size);
    } else {
        cols_.reserve(size);
        while (cols_.size() < size) {
            cols_.emplace_back();
            ResizeColumn(cols_.back());
        }
    }
    InvalidateIndex();
}

void Grid::Clear() {
    ++revision_;
    ++structureRevision_;
    rows_ = 0;
    cols_.clear();
    rowHidden_.clear();
    rowHeight_.clear();
    InvalidateIndex();
}

const Cell& Grid::EmptyCell() {
    return kEmptyCell;
}

void Grid::Set(int row, int col, Cell cell) {
    ++revision_;
    // The metadata rows say what a column is.
    if (row < fixedRows_) ++structureRevision_;
    if (!ValidCol(col)) return;
    Column& column = cols_[static_cast<std::size_t>(col)];
    if (!ValidRow(row)) return;
    if (row >= fixedRows_ && !cell.IsEmpty()) column.dataWritten = true;
    column.cells.Set(static_cast<std::size_t>(row), std::move(cell));
}

void Grid::SetFixedRows(int n) {
    ++revision_;
    ++structureRevision_;
    // Rows that leave the fixed area take their metadata into the data rows.
    if (n < fixedRows_) MarkDataWritten();
    // Which rows are data rows changes: colours follow their cells.
    for (Column& column : cols_)
        SpellOutDataBack(column);
    fixedRows_ = n;
}

void Grid::MarkDataWritten() {
    for (Column& column : cols_)
        column.dataWritten = true;
}

void Grid::SetText(int row, int col, std::string text) {
    Set(row, col, Cell::FromText(std::move(text)));
}

void Grid::SetNumber(int row, int col, double value) {
    // In place: computing a sheet writes tens of numbers a row.
    ++revision_;
    if (row < fixedRows_) ++structureRevision_;
    if (!Valid(row, col)) return;
    Column& column = cols_[static_cast<std::size_t>(col)];
    if (row >= fixedRows_) column.dataWritten = true;
    column.cells.Fill(static_cast<std::size_t>(row))->AssignNumber(value);
}

void Grid::ClearCell(int row, int col) {
    ++revision_;
    if (row < fixedRows_) ++structureRevision_;
    Set(row, col, Cell());
}

bool Grid::TextIs(int row, int col, std::string_view text) const {
    const Cell& cell = At(row, col);
    if (cell.IsNumber()) return FormatNumber(cell.Number()) == text;
    return cell.TextView() == text;
}

Column& Grid::Col(int col) {
    ++revision_;
    ++structureRevision_;
    if (ValidCol(col)) return cols_[static_cast<std::size_t>(col)];
    detached_ = Column();
    ResizeColumn(detached_);
    return detached_;
}

const Column& Grid::Col(int col) const {
    if (ValidCol(col)) return cols_[static_cast<std::size_t>(col)];
    detached_ = Column();
    ResizeColumn(detached_);
    return detached_;
}

void Grid::Reindex() const {
    index_.clear();
    index_.reserve(cols_.size());
    for (int c = 0; c < Cols(); ++c) {
        const std::string& key = cols_[static_cast<std::size_t>(c)].key;
        if (!key.empty()) index_.emplace(key, c);  // emplace keeps the leftmost
    }
    indexStale_ = false;
}

int Grid::ColIndex(std::string_view key) const {
    if (key.empty()) return -1;
    if (indexStale_) Reindex();
    const auto hit = index_.find(key);
    if (hit != index_.end() && ValidCol(hit->second) &&
        cols_[static_cast<std::size_t>(hit->second)].key == key) {
        return hit->second;
    }
    // The map may predate a key edited in place; the columns have the last word.
    for (int c = 0; c < Cols(); ++c) {
        if (cols_[static_cast<std::size_t>(c)].key == key) {
            indexStale_ = true;
            return c;
        }
    }
    return -1;
}

void Grid::SetColKey(int col, std::string key) {
    ++revision_;
    ++structureRevision_;
    if (!ValidCol(col)) return;
    cols_[static_cast<std::size_t>(col)].key = std::move(key);
    InvalidateIndex();
}

BackColor Grid::CellBackColor(int row, int col) const {
    if (!ValidCol(col) || row < 0) return kNoBackColor;
    const Column& column = cols_[static_cast<std::size_t>(col)];
    const BackColor own = column.back[static_cast<std::size_t>(row)];
    if (own == kResetBackColor) return kNoBackColor;
    if (own != kNoBackColor) return own;
    return row >= fixedRows_ && row < column.dataBackEnd ? column.dataBack : kNoBackColor;
}

void Grid::SetCellBackColor(int row, int col, BackColor color) {
    ++revision_;
    if (!Valid(row, col)) return;
    Column& column = cols_[static_cast<std::size_t>(col)];
    const bool inColoured =
        column.dataBack != kNoBackColor && row >= fixedRows_ && row < column.dataBackEnd;
    BackColor stored = color;
    if (inColoured) {
        if (color == column.dataBack)
            stored = kNoBackColor;
        else if (color == kNoBackColor)
            stored = kResetBackColor;
    }
    column.back.Set(static_cast<std::size_t>(row), stored);
}

void Grid::SetDataBackColor(int col, BackColor color) {
    ++revision_;
    if (!ValidCol(col)) return;
    Column& column = cols_[static_cast<std::size_t>(col)];
    column.back.ClearFrom(static_cast<std::size_t>(std::max(fixedRows_, 0)));
    column.dataBack = color;
    column.dataBackEnd = rows_;
}

void Grid::SpellOutDataBack(Column& column) const {
    if (column.dataBack == kNoBackColor) return;
    for (int r = fixedRows_; r < std::min(column.dataBackEnd, rows_); ++r) {
        const auto at = static_cast<std::size_t>(r);
        const BackColor own = column.back[at];
        column.back.Set(at, own == kNoBackColor      ? column.dataBack
                            : own == kResetBackColor ? kNoBackColor
                                                     : own);
    }
    column.dataBack = kNoBackColor;
    column.dataBackEnd = 0;
}

std::uint8_t Grid::CellShade(int row, int col) const {
    if (!ValidCol(col)) return 0;
    if (row < 0) return 0;
    return cols_[static_cast<std::size_t>(col)].shade[static_cast<std::size_t>(row)];
}

void Grid::SetCellShade(int row, int col, std::uint8_t shade) {
    ++revision_;
    if (!Valid(row, col)) return;
    cols_[static_cast<std::size_t>(col)].shade.Set(static_cast<std::size_t>(row), shade);
}

bool Grid::RowHidden(int row) const {
    return Holds(rowHidden_, row) && rowHidden_[static_cast<std::size_t>(row)];
}

void Grid::SetRowHidden(int row, bool hidden) {
    ++revision_;
    if (Holds(rowHidden_, row)) rowHidden_[static_cast<std::size_t>(row)] = hidden;
}

int Grid::RowHeight(int row) const {
    return Holds(rowHeight_, row) ? rowHeight_[static_cast<std::size_t>(row)] : defaultRowHeight_;
}

void Grid::SetRowHeight(int row, int height) {
    ++revision_;
    if (Holds(rowHeight_, row)) rowHeight_[static_cast<std::size_t>(row)] = height;
}

void Grid::MoveColumn(int from, int to) {
    ++revision_;
    ++structureRevision_;
    if (from == to || !ValidCol(from) || !ValidCol(to)) return;
    MoveOne(cols_, from, to);
    InvalidateIndex();
}

void Grid::InsertColumn(int at) {
    ++revision_;
    ++structureRevision_;
    if (at < 0 || at > Cols()) return;
    Column column;
    ResizeColumn(column);
    cols_.insert(cols_.begin() + at, std::move(column));
    InvalidateIndex();
}

void Grid::RemoveColumn(int col) {
    ++revision_;
    ++structureRevision_;
    if (!ValidCol(col)) return;
    cols_.erase(cols_.begin() + col);
    InvalidateIndex();
}

void Grid::MoveRow(int from, int to) {
    ++revision_;
    ++structureRevision_;
    if (from == to || !ValidRow(from) || !ValidRow(to)) return;
    if (std::min(from, to) < fixedRows_) MarkDataWritten();
    for (Column& column : cols_) {
        if (std::min(from, to) < fixedRows_ || std::max(from, to) >= column.dataBackEnd)
            SpellOutDataBack(column);
        const auto f = static_cast<std::size_t>(from), t = static_cast<std::size_t>(to);
        column.cells.Move(f, t);
        column.back.Move(f, t);
        column.shade.Move(f, t);
    }
    MoveOne(rowHidden_, from, to);
    MoveOne(rowHeight_, from, to);
}

template <typename T>
void Grid::ApplyOrder(std::vector<T>& values, int first, const std::vector<int>& order) {
    if (!Holds(values, first + static_cast<int>(order.size()) - 1)) return;
    std::vector<T> sorted;
    sorted.reserve(order.size());
    for (int from : order)
        sorted.push_back(std::move(values[static_cast<std::size_t>(first + from)]));
    std::move(sorted.begin(), sorted.end(), values.begin() + first);
}

void Grid::SortRows(int r1, int r2, int c1, int c2) {
    ++revision_;
    ++structureRevision_;
    if (r1 > r2) std::swap(r1, r2);
    if (c1 > c2) std::swap(c1, c2);
    r1 = std::max(r1, 0);
    r2 = std::min(r2, rows_ - 1);
    c1 = std::max(c1, 0);
    c2 = std::min(c2, Cols() - 1);
    if (r1 >= r2 || c1 > c2) return;
    if (r1 < fixedRows_) MarkDataWritten();

    const int count = r2 - r1 + 1;
    const int width = c2 - c1 + 1;
    // Keys are built once: a text cell is parsed once, not at every comparison.
    std::vector<SortKey> keys(static_cast<std::size_t>(count) * static_cast<std::size_t>(width));
    for (int i = 0; i < count; ++i) {
        for (int k = 0; k < width; ++k) {
            keys[static_cast<std::size_t>(i * width + k)] = MakeSortKey(At(r1 + i, c1 + k));
        }
    }
    std::vector<int> order(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        order[static_cast<std::size_t>(i)] = i;
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        for (int k = 0; k < width; ++k) {
            const int c = CompareSortKeys(keys[static_cast<std::size_t>(a * width + k)],
                                          keys[static_cast<std::size_t>(b * width + k)]);
            if (c != 0) return c < 0;
        }
        return false;
    });
    if (std::is_sorted(order.begin(), order.end())) return;

    for (Column& column : cols_) {
        if (r1 < fixedRows_ || r2 >= column.dataBackEnd) SpellOutDataBack(column);
        const auto first = static_cast<std::size_t>(r1);
        column.cells.ApplyOrder(first, order);
        column.back.ApplyOrder(first, order);
        column.shade.ApplyOrder(first, order);
    }
    ApplyOrder(rowHidden_, r1, order);
    ApplyOrder(rowHeight_, r1, order);
}

}  // namespace synthara::sheet
