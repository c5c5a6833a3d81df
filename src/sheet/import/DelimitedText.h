#pragma once
// Reading delimited text (.csv, .tsv, .txt) into rows of fields. The reader
// takes whatever bytes it is given: faults come back as a result naming the
// line and column, never as an exception.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace synthara::sheet {

// A row may hold text in this many fields at most: more than a sheet takes
// in columns, and a bound on what one long line can cost.
inline constexpr std::size_t MaxDelimitedFields = 16384;

// How messages name a place in a table: a text file's line and field
// ("line 3, column 2"), or a sheet's row and cell ("row 3", "cell B3").
enum class PlaceNames { Lines, Cells };

// "line 3, column 2" or "cell B3"; `column` 0 names the line or row alone,
// and `line` 0 names nothing (an empty text).
std::string PlaceText(PlaceNames names, int line, int column);

// Rows that hold text: blank lines are passed over, and empty fields at the
// end of a row are left out (a row is read as if it had them).
struct DelimitedTable {
    std::vector<std::vector<std::string>> rows;
    std::vector<int> lines;  // the line (1-based) on which each row starts
    PlaceNames places = PlaceNames::Lines;
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
// lines end in LF, CR LF or CR. A final line break does not start a row, and
// neither does a blank line or a line of empty fields. The table costs what
// its text costs: empty fields are only counted until text follows them.
DelimitedResult ReadDelimitedText(std::string_view bytes, char delimiter);

// Reads a whole file, choosing the delimiter by its extension. A file that
// cannot be read, a folder, and a file too large for memory come back as a
// fault without a place.
DelimitedResult ReadDelimitedFile(const std::string& path);

// Where text stops being valid UTF-8: the offset of the first bad byte, or
// npos when all of it is valid. NUL bytes count as invalid.
std::size_t FindInvalidText(std::string_view text);

}  // namespace synthara::sheet
