#pragma once
// Reading delimited text (.csv, .tsv, .txt) into rows of fields. The reader
// takes whatever bytes it is given: faults come back as a result naming the
// line and column, never as an exception.
#include <string>
#include <string_view>
#include <vector>

namespace synthara::sheet {

struct DelimitedTable {
    std::vector<std::vector<std::string>> rows;
    std::vector<int> lines;  // the line (1-based) on which each row starts
};

struct DelimitedResult {
    bool ok = false;
    std::string message;  // what is wrong, without its place
    int line = 0;         // 1-based; 0 when the fault has no place
    int column = 0;       // the field's number on its row (1-based); 0 when none
    DelimitedTable table;

    // "data.csv, line 3, column 2: not valid text"
    std::string Describe(std::string_view fileName) const;
};

// ',' for a .csv file, a tab for .tsv and .txt (and anything else).
char DelimiterForPath(std::string_view path);

// Splits UTF-8 text (an optional byte-order mark first) into rows. Fields
// quoted with '"' may hold the delimiter, doubled quotes and line breaks;
// lines end in LF, CR LF or CR. A final line break does not start a row.
DelimitedResult ReadDelimitedText(std::string_view bytes, char delimiter);

// Reads a whole file, choosing the delimiter by its extension. A file that
// cannot be read comes back as a fault without a place.
DelimitedResult ReadDelimitedFile(const std::string& path);

// Where text stops being valid UTF-8: the offset of the first bad byte, or
// npos when all of it is valid. NUL bytes count as invalid.
std::size_t FindInvalidText(std::string_view text);

}  // namespace synthara::sheet
