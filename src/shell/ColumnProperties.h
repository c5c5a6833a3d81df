#pragma once
// A column's properties as the user sees and sets them: its title, the kind
// of data it holds, how its numbers read, its width and visibility, and the
// values of a drop-down box. They live in the column's metadata record; the
// functions here read them, check the user's changes and write them back
// together with the column's looks on screen.
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ports/Prompter.h"
#include "ports/TextMeasurer.h"

namespace synthara::sheet {
class Sheet;
}

namespace synthara::shell {

// Column widths in twips (1/1440 inch), as the record keeps them.
inline constexpr int kMinColumnWidth = 200;    // 10 points
inline constexpr int kMaxColumnWidth = 14400;  // 10 inches
inline constexpr int kMaxDecimals = 9;
// A drop-down box offers at most this many values.
inline constexpr std::size_t kMaxDropDownValues = 200;

// The data types the user may give a column of their own.
inline constexpr const char* kUserDataTypes[] = {"Not specified", "Categorical", "Integer",
                                                 "Decimal", "Drop down box"};
inline constexpr const char* kAlignments[] = {"Auto", "Left", "Center", "Right"};

struct ColumnProperties {
    std::string title;
    std::string varName;   // a variable name apart from the title
    std::string dataType;  // one of kUserDataTypes, or a type the program set
    int decimals = -1;     // digits after the point; -1 for "Auto"
    std::string align = "Auto";
    int width = -1;  // twips; -1 for "Auto"
    bool hidden = false;
    std::string missing;              // the code that stands for a missing value
    std::vector<std::string> values;  // a drop-down box's values

    friend bool operator==(const ColumnProperties&, const ColumnProperties&) = default;
};

// What the program lets the user change on a column.
enum class ColumnKind {
    System,    // row numbers, format names, sequence and settings: nothing
    Computed,  // a display column: its title and looks, not its type or visibility
    Entry,     // a data-entry column: as a display column
    User,      // identifying columns, moderators and free columns: everything
};
ColumnKind KindOfColumn(const sheet::Sheet& sheet, int col);

ColumnProperties ReadColumnProperties(const sheet::Sheet& sheet, int col);

// The box that refuses `wanted` for column `col`; none when it may be applied.
std::optional<ports::Box> CheckColumnProperties(const sheet::Sheet& sheet, int col,
                                                const ColumnProperties& wanted);

// Writes the properties into the column's record and brings its looks
// (number format, alignment, width, visibility) and the letter titles in
// line. Writes only what differs, so applying the same properties again
// changes nothing. The caller checked them first.
void ApplyColumnProperties(sheet::Sheet& sheet, int col, const ColumnProperties& properties);

// Shows or hides each column of `shown` (column, shown). The box that refuses
// the first column that can't be hidden or shown by the user; none after the
// change.
std::optional<ports::Box> SetColumnsShown(sheet::Sheet& sheet,
                                          const std::vector<std::pair<int, bool>>& shown);

// The distinct texts of the column's data rows in order of first
// appearance; nullopt when there are more than `limit`.
std::optional<std::vector<std::string>> DistinctValues(const sheet::Sheet& sheet, int col,
                                                       std::size_t limit);
// Values as the ValueList record joins them ("a|b|c"), and back.
std::string JoinValueList(const std::vector<std::string>& values);

// "Drop down box": the column offers the values it holds.
std::optional<ports::Box> MakeDropDown(sheet::Sheet& sheet, int col);

// "Decimals displayed": `decimals` (0 to 9) for each column that takes them.
void SetDecimals(sheet::Sheet& sheet, const std::vector<int>& cols, int decimals);
// "Increase Decimal" (+1) and "Decrease Decimal" (-1): one step from what
// each column shows now, kept within 0 to 9.
void StepDecimals(sheet::Sheet& sheet, const std::vector<int>& cols, int step);

// "Apply auto format": every visible column with data that the user may
// format is aligned and given decimals by what it holds. A column of numbers
// is right-aligned and, unless it is a data-entry column (whose typed values
// always show as typed), shows as many decimals as its longest typed
// fraction, at most 9. A column with any text that is not a number is
// left-aligned. Data types are left as they are: the user's choice of
// "Categorical" for coded numbers stands.
void AutoFormat(sheet::Sheet& sheet);

// "Width Col": each visible column of `cols` as wide as the widest of its
// shown cells and the longest word of its title, measured in `font`, within
// the width bounds. `shown` gives the text a cell shows.
void AutoSize(sheet::Sheet& sheet, const std::vector<int>& cols,
              const ports::TextMeasurer& measurer, const ports::FontSpec& font,
              const std::function<std::string(int row, int col)>& shown);

}  // namespace synthara::shell
