#pragma once
// What one edit of the sheet changed, cell by cell: the texts before and
// after, so it can be undone and done again without keeping anything else.
#include <string>
#include <vector>

namespace synthara::shell {

// The user's text for one cell.
struct CellEdit {
    int row = 0;
    int col = 0;
    std::string text;
};

// One cell an edit wrote: the typed cell itself, and the format cells or
// column record it changed on the way.
struct CellDelta {
    int row = 0;
    int col = 0;
    std::string before;
    std::string after;
    friend bool operator==(const CellDelta&, const CellDelta&) = default;
};

// The cells in the order they were written. Computed cells are not in it:
// they follow from the entries and are computed again.
struct EditDelta {
    std::vector<CellDelta> cells;
    bool Empty() const { return cells.empty(); }
    void Append(const EditDelta& other) {
        cells.insert(cells.end(), other.cells.begin(), other.cells.end());
    }
};

enum class DeltaSide { Before, After };

}  // namespace synthara::shell
