#pragma once
// Opening any file of rows the import takes as one table of text cells: a
// delimited text (.csv, .tsv, .txt) or a sheet of a workbook (.xlsx, .xls).
// Whatever the file, what follows (the titles row, the columns' roles, the
// rows' formats) is the same: ImportTable turns the table into a sheet.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/import/DelimitedText.h"
#include "sheet/import/WorkbookLimits.h"

namespace synthara::sheet {

// Which sheet of a workbook to read: by its name when `name` is not empty,
// else by its place (1 for the first); the first when neither is given.
struct SheetChoice {
    std::string name;
    int number = 0;
};

struct TableOptions {
    SheetChoice sheet;
    // "Use first row as labels": the first row titles the columns. When off,
    // every row is data and the columns are titled by their letters (A, B,
    // ... as the file's own columns are lettered).
    bool firstRowTitles = true;
    WorkbookLimits limits;
};

// A workbook (.xlsx or .xls), by the ending of its name in any case.
bool IsWorkbookFile(std::string_view path);

struct SheetList {
    bool ok = false;
    std::string message;  // why not, the file named
    std::vector<std::string> names;
};

// The sheets of a workbook in their order, for the user to choose one.
SheetList ListSheets(const std::string& path, const WorkbookLimits& limits = {});

// The file's rows: those holding text, each with its place (`lines`: a text
// file's line, a sheet's row number). A workbook's cells read as the user
// sees them: texts, numbers in their shortest form ("12", "0.1"), TRUE and
// FALSE, a formula's last result; dates as their serial numbers. A fault
// comes back with its message naming the place; Describe adds the file.
DelimitedResult ReadTableFile(const std::string& path, const TableOptions& options = {});

// The first `rows` rows holding text of the chosen sheet (or text file), as
// they stand in the file: for a preview, which shows the titles row too. Of
// a workbook's sheet only as much is read as those rows need.
DelimitedResult PreviewTableFile(const std::string& path, const TableOptions& options,
                                 std::size_t rows);

// Puts a row of column letters above every row, as wide as the widest row:
// what "Use first row as labels" turned off gives. Its place is 0. An empty
// table is left empty.
void TitleByLetters(DelimitedTable& table);

}  // namespace synthara::sheet
