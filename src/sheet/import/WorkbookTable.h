#pragma once
// What the two workbook readers (.xlsx, .xls) share: how a sheet is asked
// for and answered, and how its cells become the rows of a table of text
// within the limits.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/import/DelimitedText.h"
#include "sheet/import/TableFile.h"
#include "sheet/import/WorkbookLimits.h"

namespace synthara::sheet {

struct WorkbookRequest {
    SheetChoice sheet;
    WorkbookLimits limits;
    std::size_t rowLimit = 0;  // rows holding text to read; 0 for all of them
    bool namesOnly = false;    // list the sheets and read none
};

struct WorkbookResult {
    bool ok = false;
    std::string message;  // why not, without the file's name
    std::vector<std::string> sheetNames;
    DelimitedTable table;  // its places are the sheet's rows
};

WorkbookResult WorkbookFault(std::string message);

// Whether the bytes start as a compound document does: an .xls workbook, or
// an encrypted .xlsx one.
bool IsCompoundDocument(std::string_view head);
// The first bytes of a file, as many as tell whether it is a compound document.
std::string FileHead(const std::string& path);

// The index among `names` of the sheet chosen, or -1 with `fault` saying why.
int PickSheet(const std::vector<std::string>& names, const SheetChoice& choice, std::string& fault);

// Characters in UTF-8 text (not bytes).
std::size_t TextCharacters(std::string_view text);

// "B3" for row 3, column 2 (both 1-based).
std::string CellName(std::size_t row, std::size_t column);

// A number as its shortest text that reads back as the same double: "12",
// "0.1", "1e+300".
std::string NumberText(double value);

// The cells of one sheet, given row by row in the sheet's order, gathered
// into the rows of a table. Cells without text are left out, and so are rows
// without any; a row's cells may come in any order.
class SheetCells {
  public:
    SheetCells(const WorkbookLimits& limits, std::size_t rowLimit)
        : limits_(limits), rowLimit_(rowLimit) {}

    // A cell's text at its place (1-based). False, with Fault() saying why,
    // when the place or the text passes a limit or the rows run backwards.
    bool Put(std::size_t row, std::size_t column, std::string text);
    // False, with Fault() saying why, when a cell's text would pass the limit
    // on its length: for readers that gather a text piece by piece.
    bool TextFits(std::size_t row, std::size_t column, std::string_view text);
    // Whether a preview has all its rows once `row` starts.
    bool Enough(std::size_t row) const;
    const std::string& Fault() const { return fault_; }
    DelimitedTable Take();

  private:
    bool Fail(std::string message);

    WorkbookLimits limits_;
    std::size_t rowLimit_;
    std::size_t lastRow_ = 0;
    std::size_t cells_ = 0;
    DelimitedTable table_;
    std::string fault_;
};

}  // namespace synthara::sheet
