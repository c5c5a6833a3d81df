#pragma once
// Turns a delimited table into a study sheet, as if the user had created the
// blocks with the wizard and typed every cell: population columns, one block
// per data-entry format used, moderator columns, and each row's format.
#include <string>
#include <string_view>
#include <vector>

#include "sheet/grid/Sheet.h"
#include "sheet/import/DelimitedText.h"

namespace synthara::sheet {

inline constexpr std::string_view DataFormatTitle = "Data format";

struct ImportResult {
    bool ok = false;
    // The fault lies in what the caller asked for (an unknown default format,
    // or no format at all), not in a place in the file.
    bool optionFault = false;
    std::string message;
    // The rows that hold anything after the titles, blank ones left out: the
    // i-th of them (0-based) is sheet row FixedRowCount + i and starts on
    // line lines[i] of the file.
    int dataRows = 0;
    std::vector<int> lines;
};

// Builds the sheet from scratch. `defaultFormat` (long or short name, "" for
// none) is the format of rows without a "Data format" cell. `fileName` names
// the file in messages.
ImportResult ImportTable(Sheet& sheet, const DelimitedTable& table, std::string_view defaultFormat,
                         std::string_view fileName);

// The format a table's titles fit when its rows name none: the one whose
// every role has a column, the one with most roles when several do; nullptr
// when none does.
const FormatDef* FormatOfTitles(const std::vector<std::string>& titles);

// Builds the sheet from scratch with every column of the table as a column of
// the user's own, titled by the table's first row and typed into but not yet
// identified: what opening a file with "Use first row as labels" off gives,
// so that the user then says which column holds what. Columns keep the
// file's order; blank rows are left out.
ImportResult ImportPlainTable(Sheet& sheet, const DelimitedTable& table, std::string_view fileName);

// A block of the format, made through the wizard's own steps with every role
// on a new column, as a user who accepts the wizard's proposals gets it.
void AddFormatBlock(Sheet& sheet, const FormatDef& format);

// The type a moderator column takes from its cells: "Integer" when every
// non-empty cell is a whole number, "Decimal" when every one is a number,
// otherwise (and when there is none) "Categorical". The cells are read as the
// user typed them, with `separators`.
std::string ModeratorDataType(const std::vector<std::string_view>& cells,
                              const NumberSeparators& separators);

}  // namespace synthara::sheet
