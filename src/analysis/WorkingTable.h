#pragma once
// The working table `vs`: a copy of the sheet's grid with the analysis's own
// columns and summary rows, its columns found by key without regard to case.
// Numbers stay doubles in the cells, so results keep full precision between
// passes; text is read as a number on demand, an empty cell reading as zero.
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "sheet/grid/Grid.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::analysis {

// One column resolved for a pass: reads and writes by row, no key lookup.
// A reference to a column that does not exist reads as empty and drops writes.
// Adding columns to the table invalidates every reference.
class ColRef {
  public:
    ColRef() = default;
    explicit ColRef(sheet::Column* column) : column_(column) {}
    explicit operator bool() const { return column_ != nullptr; }

    const sheet::Cell& At(int row) const;
    // The cell's numeric reading; 0 for an empty or non-numeric cell.
    double Get(int row) const;
    bool Blank(int row) const { return At(row).IsEmpty(); }
    bool TextIs(int row, std::string_view text) const { return At(row).TextView() == text; }
    void Set(int row, double value) { Assign(row, sheet::Cell::FromNumber(value)); }
    void SetText(int row, std::string_view text) { Assign(row, sheet::Cell::FromText(text)); }
    // A shared copy of one cell: many rows can hold one text without copies.
    void Assign(int row, sheet::Cell cell) {
        if (column_ == nullptr || row < 0) return;
        column_->dataWritten = true;
        column_->cells.Set(static_cast<std::size_t>(row), std::move(cell));
    }
    void Clear(int row) { Assign(row, sheet::Cell()); }

  private:
    sheet::Column* column_ = nullptr;
};

class WorkingTable {
  public:
    sheet::Grid grid;

    static constexpr int FirstDataRow = sheet::FixedRowCount;
    int LastRow() const { return grid.Rows() - 1; }

    // The column of a key, compared without regard to case; -1 when none.
    int Find(std::string_view key) const;
    ColRef Ref(std::string_view key);
    // The column of a key, appended (hidden, with the title and Function row
    // given) when the table has none yet.
    int Ensure(std::string_view key, std::string_view title, std::string_view function);
    void SetKey(int col, std::string key);
    // Takes the key off whichever column holds it.
    void ClearKey(std::string_view key);

    // Text of a cell in the key's column; "" when the column does not exist.
    std::string Text(int row, std::string_view key) const;

    // Rebuilds the rows from the old ones: new row i is old row source[i], or a
    // new empty, visible row where source[i] is -1. One move per cell, so
    // removing and inserting many rows costs one sweep of the table.
    void RebuildRows(const std::vector<int>& source);

    static std::string FoldKey(std::string_view key);

  private:
    void Reindex() const;
    mutable std::unordered_map<std::string, int> index_;
    mutable bool stale_ = true;
};

}  // namespace synthara::analysis
