#pragma once
// Cells as spreadsheets exchange them through the clipboard: cells by tabs,
// rows by line feeds, and a cell whose text holds a tab, a line break or a
// quote put in quotes with its quotes doubled.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace synthara::shell {

// Builds the clipboard's text row by row; every row ends with a line feed.
class ClipboardWriter {
  public:
    void AddCell(std::string_view text);
    void EndRow();
    const std::string& Text() const { return text_; }

  private:
    std::string text_;
    bool rowStarted_ = false;
};

// The rectangle of cells the clipboard's text holds. Short rows are filled
// out with empty cells; a line break at the end of the text ends the last
// row rather than starting another, and "\r\n" or a lone "\r" end a row as
// "\n" does.
class ClipboardTable {
  public:
    // The most cells a table takes: more are refused, not read (Parse gives
    // false), so a clipboard of millions of tabs cannot exhaust memory.
    static constexpr std::size_t kMaxCells = std::size_t{1} << 24;

    // False when the text holds more than kMaxCells cells.
    bool Parse(std::string_view text);

    int Rows() const { return static_cast<int>(rowStarts_.size()); }
    int Cols() const { return cols_; }
    bool Empty() const { return rowStarts_.empty(); }
    // The cell's text; "" beyond the end of a short row.
    std::string_view At(int row, int col) const;

  private:
    // The cells' texts, unquoted, one after another; `ends_` holds where
    // each cell ends and `rowStarts_` the first cell of each row.
    std::string text_;
    std::vector<std::uint32_t> ends_;
    std::vector<std::size_t> rowStarts_;
    int cols_ = 0;
};

}  // namespace synthara::shell
