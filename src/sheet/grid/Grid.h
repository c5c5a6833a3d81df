#pragma once
// A two-dimensional table of cells, stored by column: a column owns its cells,
// its key, width, alignment and visibility, so moving a column is one move.
// Rows and columns are numbered from 0; the first FixedRows() rows and
// FixedCols() columns are the fixed ones.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "sheet/grid/Cell.h"
#include "sheet/grid/PagedColumn.h"

namespace synthara::sheet {

// A cell's back colour as 0xRRGGBB with the top byte set; 0 is the reset value
// (the grid's normal colour).
using BackColor = std::uint32_t;
inline constexpr BackColor kNoBackColor = 0;
inline constexpr BackColor RGB(int r, int g, int b) {
    return 0xFF000000u | (static_cast<BackColor>(r & 0xFF) << 16) |
           (static_cast<BackColor>(g & 0xFF) << 8) | static_cast<BackColor>(b & 0xFF);
}
inline constexpr BackColor kRed = RGB(255, 0, 0);
// Stored for a cell whose colour was reset inside a coloured column; reads
// as kNoBackColor.
inline constexpr BackColor kResetBackColor = 1;

enum class Alignment { General, Left, Center, Right };

struct Column {
    std::string key;
    int width = 940;  // twips
    bool hidden = false;
    bool merged = false;  // equal adjacent cells drawn as one (the row display "Merge rows")
    Alignment alignment = Alignment::General;
    std::string numberFormat;  // "0.000"; "" shows numbers as they are
    // One value per row; only the pages of rows that hold something exist.
    PagedColumn<Cell> cells;
    // Per cell: kNoBackColor to follow the column, else the cell's own colour
    // (kResetBackColor for none where the column has one).
    PagedColumn<BackColor> back;
    // The colour of data rows up to dataBackEnd that have none of their own,
    // so that colouring a whole column costs nothing per row.
    BackColor dataBack = kNoBackColor;
    int dataBackEnd = 0;
    PagedColumn<std::uint8_t> shade;  // grey shade of a refused entry cell: 0 none, 1..8
    // False only while no data row (below the fixed rows) has held a value
    // since the column was made; every write through the grid keeps it, and
    // code that writes `cells` directly must set it.
    bool dataWritten = false;

    friend bool operator==(const Column&, const Column&) = default;
};

class Grid {
  public:
    Grid() = default;

    int Rows() const { return rows_; }
    int Cols() const { return static_cast<int>(cols_.size()); }
    void SetRows(int rows);  // new rows are empty, visible, default height
    void SetCols(int cols);  // new columns are empty and visible
    int FixedRows() const { return fixedRows_; }
    int FixedCols() const { return fixedCols_; }
    void SetFixedRows(int n);
    void SetFixedCols(int n) {
        ++revision_;
        ++structureRevision_;
        fixedCols_ = n;
    }
    void Clear();  // no rows, no columns
    // The same cells, looks and shape, whatever either's revisions: a
    // command that rewrote cells with what they held changed nothing.
    bool SameContent(const Grid& other) const {
        return rows_ == other.rows_ && fixedRows_ == other.fixedRows_ &&
               fixedCols_ == other.fixedCols_ && cols_ == other.cols_ &&
               rowHidden_ == other.rowHidden_ && rowHeight_ == other.rowHeight_;
    }

    // Counts the changes made through the grid (a mutable column handed out
    // counts as one), so an owner can tell whether an operation changed anything.
    std::uint64_t Revision() const { return revision_; }
    // Counts the changes of what the columns are: their number, order, keys
    // and metadata rows, and the rows' number and order. Tables that look
    // columns up are rebuilt when it moves.
    std::uint64_t StructureRevision() const { return structureRevision_; }
    // Counts on from `previous`, whose place this grid takes: the grid then
    // reads as changed to everything that built on `previous`.
    void ContinueRevisions(const Grid& previous) {
        revision_ = std::max(revision_, previous.revision_) + 1;
        structureRevision_ = std::max(structureRevision_, previous.structureRevision_) + 1;
    }

    const Cell& At(int row, int col) const {
        if (!ValidCol(col) || row < 0) return EmptyCell();
        return cols_[static_cast<std::size_t>(col)].cells[static_cast<std::size_t>(row)];
    }
    std::string Text(int row, int col) const { return At(row, col).Text(); }
    void Set(int row, int col, Cell cell);
    void SetText(int row, int col, std::string text);
    void SetNumber(int row, int col, double value);
    void ClearCell(int row, int col);
    bool IsBlank(int row, int col) const { return At(row, col).IsEmpty(); }
    // True when no data row of the column can hold a value: a whole column
    // of empty results is skipped without reading its cells.
    bool DataRowsBlank(int col) const {
        return ValidCol(col) && !cols_[static_cast<std::size_t>(col)].dataWritten;
    }
    // Text comparison without building a string for typed text.
    bool TextIs(int row, int col, std::string_view text) const;

    // A column's looks; none of them changes what the column is.
    void SetColWidth(int col, int width) { SetColLook(col, &Column::width, width); }
    void SetColHidden(int col, bool hidden) { SetColLook(col, &Column::hidden, hidden); }
    void SetColMerged(int col, bool merged) { SetColLook(col, &Column::merged, merged); }
    void SetColAlignment(int col, Alignment alignment) {
        SetColLook(col, &Column::alignment, alignment);
    }
    void SetColNumberFormat(int col, std::string format) {
        SetColLook(col, &Column::numberFormat, std::move(format));
    }

    // Out of range gives a detached empty column whose changes are dropped.
    Column& Col(int col);
    const Column& Col(int col) const;

    // Column keys. Lookup is by exact key; -1 when none. Keys are meant to be
    // unique; with duplicates the leftmost column is found.
    int ColIndex(std::string_view key) const;
    void SetColKey(int col, std::string key);

    BackColor CellBackColor(int row, int col) const;
    void SetCellBackColor(int row, int col, BackColor color);
    // Gives every data row the column has now this back colour, as setting
    // each cell would.
    void SetDataBackColor(int col, BackColor color);

    // 0 for a normal cell; 1 to 8 for an entry cell greyed out by block.
    std::uint8_t CellShade(int row, int col) const;
    void SetCellShade(int row, int col, std::uint8_t shade);

    // Out of range: not hidden, the default height; writes are ignored.
    bool RowHidden(int row) const;
    void SetRowHidden(int row, bool hidden);
    int RowHeight(int row) const;
    void SetRowHeight(int row, int height);
    void SetDefaultRowHeight(int height) { defaultRowHeight_ = height; }

    // Moves column `from` so that it stands at position `to`; the columns in
    // between shift by one, as a grid's column-position property does.
    void MoveColumn(int from, int to);
    void InsertColumn(int at);  // an empty column before `at` (at == Cols() appends)
    void RemoveColumn(int col);
    void MoveRow(int from, int to);
    // Sorts rows r1..r2 ascending by columns c1..c2, left to right, stable;
    // numbers before text, numbers by value, text without regard to case,
    // empty cells first.
    void SortRows(int r1, int r2, int c1, int c2);

  private:
    static const Cell& EmptyCell();
    template <typename T>
    void SetColLook(int col, T Column::*look, T value) {
        if (!ValidCol(col)) return;
        ++revision_;
        cols_[static_cast<std::size_t>(col)].*look = std::move(value);
    }
    void MarkDataWritten();
    bool ValidRow(int row) const { return row >= 0 && row < rows_; }
    bool ValidCol(int col) const { return col >= 0 && col < Cols(); }
    bool Valid(int row, int col) const { return ValidRow(row) && ValidCol(col); }
    void Reindex() const;
    void InvalidateIndex() { indexStale_ = true; }
    template <typename T>
    static void ApplyOrder(std::vector<T>& values, int first, const std::vector<int>& order);
    void ResizeColumn(Column& column) const;
    // Writes a column's colour into its cells, before rows move across the
    // end of the coloured rows.
    void SpellOutDataBack(Column& column) const;

    int rows_ = 0;
    int fixedRows_ = 0;
    int fixedCols_ = 0;
    int defaultRowHeight_ = 250;
    std::uint64_t revision_ = 0;
    std::uint64_t structureRevision_ = 0;
    std::vector<Column> cols_;
    std::vector<bool> rowHidden_;
    std::vector<int> rowHeight_;
    mutable Column detached_;  // what Col() hands out for a column that does not exist

    // Key -> column, rebuilt lazily. Every hit is checked against the column,
    // so a key edited in place through Col() can't give a wrong answer.
    struct KeyHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view key) const {
            return std::hash<std::string_view>{}(key);
        }
    };
    mutable std::unordered_map<std::string, int, KeyHash, std::equal_to<>> index_;
    mutable bool indexStale_ = true;
};

}  // namespace synthara::sheet
