#include "analysis/WorkingTable.h"

#include <algorithm>
#include <utility>

#include "analysis/ColumnKeys.h"

namespace synthara::analysis {

namespace {

const sheet::Cell kEmpty{};

// Rows reordered into fresh storage, with room for one summary block more.
// New row i holds old row source[i], or nothing where source[i] is -1.
template <typename T>
sheet::PagedColumn<T> Reordered(const sheet::PagedColumn<T>& old, const std::vector<int>& source) {
    sheet::PagedColumn<T> rows;
    rows.resize(source.size());
    if (old.AllEmpty()) return rows;
    for (std::size_t i = 0; i < source.size(); ++i)
        if (source[i] >= 0) rows.Set(i, old[static_cast<std::size_t>(source[i])]);
    return rows;
}

char Fold(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameKey(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (Fold(a[i]) != Fold(b[i])) return false;
    return true;
}

}  // namespace

std::string RunModelKey(std::string_view stem, int run, int model) {
    std::string key(stem);
    key += std::to_string(run);
    key += ',';
    key += std::to_string(model);
    key += ')';
    return key;
}

const sheet::Cell& ColRef::At(int row) const {
    if (column_ == nullptr || row < 0) return kEmpty;
    return column_->cells[static_cast<std::size_t>(row)];
}

double ColRef::Get(int row) const {
    double value = 0;
    if (!At(row).TryNumber(value)) return 0;
    return value;
}

std::string WorkingTable::FoldKey(std::string_view key) {
    std::string folded(key);
    for (char& c : folded)
        c = Fold(c);
    return folded;
}

void WorkingTable::Reindex() const {
    index_.clear();
    for (int c = 0; c < grid.Cols(); ++c) {
        const std::string& key = grid.Col(c).key;
        if (!key.empty()) index_.emplace(FoldKey(key), c);  // the leftmost holder wins
    }
    stale_ = false;
}

int WorkingTable::Find(std::string_view key) const {
    if (key.empty()) return -1;
    if (stale_) Reindex();
    const std::string folded = FoldKey(key);
    const auto hit = index_.find(folded);
    if (hit != index_.end() && hit->second < grid.Cols() && SameKey(grid.Col(hit->second).key, key))
        return hit->second;
    // Keys may have been set or columns moved through the grid itself: the
    // columns have the last word, and the index is rebuilt at the next call.
    for (int c = 0; c < grid.Cols(); ++c) {
        if (SameKey(grid.Col(c).key, key)) {
            stale_ = true;
            return c;
        }
    }
    return -1;
}

ColRef WorkingTable::Ref(std::string_view key) {
    const int col = Find(key);
    return col < 0 ? ColRef() : ColRef(&grid.Col(col));
}

int WorkingTable::Ensure(std::string_view key, std::string_view title, std::string_view function) {
    if (const int col = Find(key); col >= 0) return col;
    const int col = grid.Cols();
    grid.InsertColumn(col);
    sheet::Column& column = grid.Col(col);
    column.key = std::string(key);
    column.hidden = true;
    if (!title.empty()) grid.SetText(sheet::MetaRow::ColumnHeader, col, std::string(title));
    if (!function.empty()) grid.SetText(sheet::MetaRow::Function, col, std::string(function));
    // Appending at the right end leaves every other column where it was.
    if (!stale_) index_.emplace(FoldKey(key), col);
    return col;
}

void WorkingTable::SetKey(int col, std::string key) {
    grid.SetColKey(col, std::move(key));
    stale_ = true;
}

void WorkingTable::ClearKey(std::string_view key) {
    for (int col = Find(key); col >= 0; col = Find(key))
        SetKey(col, "");
}

std::string WorkingTable::Text(int row, std::string_view key) const {
    const int col = Find(key);
    return col < 0 ? std::string() : grid.Text(row, col);
}

void WorkingTable::RebuildRows(const std::vector<int>& source) {
    const int rows = static_cast<int>(source.size());
    // Out of range, a grid answers with its default height.
    const int defaultHeight = grid.RowHeight(-1);
    std::vector<char> hidden(source.size(), 0);
    std::vector<int> height(source.size(), defaultHeight);
    for (int i = 0; i < rows; ++i) {
        const int from = source[static_cast<std::size_t>(i)];
        if (from < 0) continue;
        hidden[static_cast<std::size_t>(i)] = grid.RowHidden(from) ? 1 : 0;
        height[static_cast<std::size_t>(i)] = grid.RowHeight(from);
    }
    for (int c = 0; c < grid.Cols(); ++c) {
        sheet::Column& column = grid.Col(c);
        column.cells = Reordered(column.cells, source);
        column.back = Reordered(column.back, source);
        column.shade = Reordered(column.shade, source);
    }
    grid.SetRows(rows);  // the columns already have their length
    for (int i = 0; i < rows; ++i) {
        grid.SetRowHidden(i, hidden[static_cast<std::size_t>(i)] != 0);
        grid.SetRowHeight(i, height[static_cast<std::size_t>(i)]);
    }
}

}  // namespace synthara::analysis
