#include "analysis/WorkingTable.h"

#include <algorithm>
#include <utility>

#include "analysis/ColumnKeys.h"

namespace synthara::analysis {

namespace {

const sheet::Cell kEmpty{};

// Rows reordered into fresh storage, with room for one summary block more.
template <typename T>
std::vector<T> Reordered(std::vector<T>& old, const std::vector<int>& source, T blank) {
    std::vector<T> out;
    out.reserve(source.size() + BlockRows);
    for (const int from : source) {
        if (from >= 0 && static_cast<std::size_t>(from) < old.size())
            out.push_back(std::move(old[static_cast<std::size_t>(from)]));
        else
            out.push_back(blank);
    }
    return out;
}

// The cycles of a permutation, each as the rows it passes through; a
// permutation moves every column in place along them without new storage.
std::vector<std::vector<int>> Cycles(const std::vector<int>& source) {
    std::vector<std::vector<int>> cycles;
    std::vector<char> done(source.size(), 0);
    for (std::size_t start = 0; start < source.size(); ++start) {
        if (done[start] != 0 || source[start] == static_cast<int>(start)) continue;
        std::vector<int> cycle;
        for (auto at = static_cast<int>(start); done[static_cast<std::size_t>(at)] == 0;
             at = source[static_cast<std::size_t>(at)]) {
            done[static_cast<std::size_t>(at)] = 1;
            cycle.push_back(at);
        }
        cycles.push_back(std::move(cycle));
    }
    return cycles;
}

// new[i] = old[source[i]] along each cycle i -> source[i] -> ...
template <typename T>
void Permute(std::vector<T>& values, const std::vector<std::vector<int>>& cycles) {
    for (const auto& cycle : cycles) {
        T first = std::move(values[static_cast<std::size_t>(cycle.front())]);
        for (std::size_t k = 0; k + 1 < cycle.size(); ++k)
            values[static_cast<std::size_t>(cycle[k])] =
                std::move(values[static_cast<std::size_t>(cycle[k + 1])]);
        values[static_cast<std::size_t>(cycle.back())] = std::move(first);
    }
}

bool IsPermutation(const std::vector<int>& source, int rows) {
    if (static_cast<int>(source.size()) != rows) return false;
    std::vector<char> seen(source.size(), 0);
    for (const int from : source) {
        if (from < 0 || from >= rows || seen[static_cast<std::size_t>(from)] != 0) return false;
        seen[static_cast<std::size_t>(from)] = 1;
    }
    return true;
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
    if (column_ == nullptr || row < 0 || static_cast<std::size_t>(row) >= column_->cells.size())
        return kEmpty;
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
    if (IsPermutation(source, grid.Rows())) {
        // Hidden flags and heights were read above and are set again below.
        const auto cycles = Cycles(source);
        // Rows before the first one that moves stay where they are.
        const auto first = static_cast<std::ptrdiff_t>(cycles.empty() ? 0 : cycles.front().front());
        for (int c = 0; c < grid.Cols(); ++c) {
            sheet::Column& column = grid.Col(c);
            // Most columns of a sheet hold nothing on a given format's rows;
            // a scan in order is far cheaper than moving their cells about.
            if (std::any_of(column.cells.begin() + first, column.cells.end(),
                            [](const sheet::Cell& cell) { return !cell.IsEmpty(); }))
                Permute(column.cells, cycles);
            if (!column.back.empty()) Permute(column.back, cycles);
            if (!column.shade.empty()) Permute(column.shade, cycles);
        }
    } else {
        for (int c = 0; c < grid.Cols(); ++c) {
            sheet::Column& column = grid.Col(c);
            column.cells = Reordered(column.cells, source, sheet::Cell());
            if (!column.back.empty())
                column.back = Reordered(column.back, source, sheet::kNoBackColor);
            if (!column.shade.empty())
                column.shade = Reordered(column.shade, source, std::uint8_t{0});
        }
    }
    grid.SetRows(rows);  // the columns already have their length
    for (int i = 0; i < rows; ++i) {
        grid.SetRowHidden(i, hidden[static_cast<std::size_t>(i)] != 0);
        grid.SetRowHeight(i, height[static_cast<std::size_t>(i)]);
    }
}

}  // namespace synthara::analysis
