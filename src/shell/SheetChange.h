#pragma once
// What a change of the open project touched, as its listeners are told.
#include <vector>

namespace synthara::shell {

// A rectangle of the sheet, rows and columns inclusive.
struct CellRange {
    int firstRow = 0;
    int lastRow = 0;
    int firstCol = 0;
    int lastCol = 0;

    bool Contains(int row, int col) const {
        return row >= firstRow && row <= lastRow && col >= firstCol && col <= lastCol;
    }
    friend bool operator==(const CellRange&, const CellRange&) = default;
};

enum class ChangeKind {
    Cells,      // the contents or looks of the cells in `ranges`
    Structure,  // columns inserted, moved or deleted, blocks changed, rows sorted
    Reset,      // a different sheet altogether: a file was opened
};

struct SheetChange {
    ChangeKind kind = ChangeKind::Cells;
    std::vector<CellRange> ranges;  // for Cells only
};

// Views of the open project (the desktop's grid model, a caption) listen here.
class DocumentListener {
  public:
    virtual ~DocumentListener() = default;
    virtual void SheetChanged(const SheetChange& change) = 0;
    virtual void DirtyChanged(bool /*dirty*/) {}
};

}  // namespace synthara::shell
