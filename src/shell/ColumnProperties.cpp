#include "shell/ColumnProperties.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>
#include <unordered_map>

#include "sheet/grid/MetaRows.h"
#include "sheet/grid/NumberFormats.h"
#include "sheet/grid/Sheet.h"
#include "sheet/rows/StudyRows.h"

namespace synthara::shell {

namespace {

using sheet::MetaRow;

constexpr const char* kTitle = " Column properties";
// The width a column given back to "Auto" starts from, as on a new sheet.
constexpr int kAutoBaseWidth = 940;
constexpr int kTwipsPerPoint = 20;
// Room beside the widest text, as the grid pads its cells.
constexpr double kCellPaddingPoints = 8;

ports::Box Refusal(std::string line) {
    return {kTitle, {std::move(line)}, ports::Icon::Information};
}

// A whole number written as digits only; nullopt for anything else.
std::optional<int> Digits(const std::string& text) {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto [ptr, ec] = std::from_chars(text.data(), end, value);
    if (text.empty() || ec != std::errc() || ptr != end || value < 0) return std::nullopt;
    return value;
}

template <std::size_t N>
bool OneOf(const std::string& value, const char* const (&list)[N]) {
    return std::any_of(std::begin(list), std::end(list),
                       [&](const char* item) { return value == item; });
}

// Writes a record field only when it reads otherwise, so that an unchanged
// property leaves the grid's revision, and the project's dirty flag, alone.
void Put(sheet::Sheet& sheet, int col, int row, const std::string& value) {
    if (!sheet.MetaIs(col, row, value)) sheet.SetMeta(col, row, value);
}

// The looks of a column that its record sets.
enum Look : unsigned { kFormat = 1, kAlign = 2, kWidth = 4, kHidden = 8 };

// The column's `looks` from its record, where they read otherwise; looks of
// fields the user did not change stay as they are.
void Reformat(sheet::Sheet& sheet, int col, unsigned looks) {
    const sheet::Column& look = sheet.Flex().Col(col);
    if (const std::string format = sheet::ColumnNumberFormat(sheet, col);
        (looks & kFormat) != 0 && look.numberFormat != format)
        sheet.SetColNumberFormat(col, format);
    if (const sheet::Alignment align = sheet::ColumnAlignment(sheet, col);
        (looks & kAlign) != 0 && look.alignment != align)
        sheet.SetColAlignment(col, align);
    // A width of "Auto" leaves the grid's: the screen widens such a column to
    // its contents, and a project keeps the width it was saved with.
    if (const std::optional<int> width = Digits(sheet.Meta(col, MetaRow::ColWidth));
        (looks & kWidth) != 0 && width && look.width != *width)
        sheet.SetColWidth(col, *width);
    // Only the user's own columns are shown and hidden by their record.
    if (const bool hidden = sheet.MetaIs(col, MetaRow::Hidden, "Hide");
        (looks & kHidden) != 0 && KindOfColumn(sheet, col) == ColumnKind::User &&
        look.hidden != hidden) {
        sheet.SetColHidden(col, hidden);
        sheet.AddLetters();
    }
}

bool HasLineBreakOrTab(const std::string& text) {
    return text.find_first_of("\t\r\n") != std::string::npos;
}

// The drop-down values as the record keeps them: no blanks, each once.
std::vector<std::string> CleanValues(const std::vector<std::string>& values) {
    std::vector<std::string> clean;
    std::set<std::string> seen;
    for (const std::string& value : values)
        if (!value.empty() && seen.insert(value).second) clean.push_back(value);
    return clean;
}

std::optional<ports::Box> CheckValues(const std::vector<std::string>& values,
                                      const std::string& title) {
    for (const std::string& value : values)
        if (value.find('|') != std::string::npos || HasLineBreakOrTab(value))
            return ports::Box{title,
                              {"A value in a drop-down box cannot hold the character | "
                               "or a line break     "},
                              ports::Icon::Information};
    if (CleanValues(values).size() > kMaxDropDownValues)
        return ports::Box{title,
                          {"A drop-down box can offer at most " +
                           std::to_string(kMaxDropDownValues) + " values     "},
                          ports::Icon::Information};
    return std::nullopt;
}

std::optional<ports::Box> CheckShown(const sheet::Sheet& sheet, int col) {
    switch (KindOfColumn(sheet, col)) {
        case ColumnKind::User:
            return std::nullopt;
        case ColumnKind::Computed:
            return ports::Box{kTitle,
                              {"To hide column that displays effect size       ",
                               "Right-click on the column and select 'Customize display'.   "},
                              ports::Icon::Information};
        case ColumnKind::Entry:
            return ports::Box{kTitle,
                              {"Columns for entering effect size data are shown and hidden with "
                               "their block.     ",
                               "Use 'Show all blocks' or 'Show only current block'.     "},
                              ports::Icon::Information};
        case ColumnKind::System:
            break;
    }
    return Refusal("This column is kept by the program and cannot be shown or hidden     ");
}

// Digits after the decimal separator of a typed number.
int FractionDigits(const std::string& text, const std::string& decimal) {
    const std::size_t at = text.find(decimal);
    if (at == std::string::npos) return 0;
    int digits = 0;
    for (std::size_t i = at + decimal.size(); i < text.size() && text[i] >= '0' && text[i] <= '9';
         ++i)
        ++digits;
    return digits;
}

}  // namespace

ColumnKind KindOfColumn(const sheet::Sheet& sheet, int col) {
    if (col <= 0 || col >= sheet.Flex().Cols() || col == sheet.ErrorCol())
        return ColumnKind::System;
    for (const char* function :
         {"Data Format", "NickName", "MergeType", "EntrySeq", "Temp Sequence", "Settings"})
        if (sheet.MetaIs(col, MetaRow::Function, function)) return ColumnKind::System;
    if (sheet.MetaIs(col, MetaRow::Function, "Display")) return ColumnKind::Computed;
    if (sheet.MetaIs(col, MetaRow::Function, "Data Entry")) return ColumnKind::Entry;
    return ColumnKind::User;
}

ColumnProperties ReadColumnProperties(const sheet::Sheet& sheet, int col) {
    ColumnProperties p;
    p.title = sheet.Meta(col, MetaRow::ColumnHeader);
    p.varName = sheet.Meta(col, MetaRow::VarName);
    p.dataType = sheet.Meta(col, MetaRow::DataType);
    const std::optional<int> decimals = Digits(sheet.Meta(col, MetaRow::NumDecs));
    p.decimals = decimals && *decimals <= kMaxDecimals ? *decimals : -1;
    const std::string align = sheet.Meta(col, MetaRow::Align);
    p.align = OneOf(align, kAlignments) ? align : "Auto";
    p.width = Digits(sheet.Meta(col, MetaRow::ColWidth)).value_or(-1);
    p.hidden = sheet.Flex().Col(col).hidden;
    p.missing = sheet.Meta(col, MetaRow::Missing);
    p.values = sheet::SplitValueList(sheet.Meta(col, MetaRow::ValueList));
    return p;
}

std::optional<ports::Box> CheckColumnProperties(const sheet::Sheet& sheet, int col,
                                                const ColumnProperties& wanted) {
    const ColumnKind kind = KindOfColumn(sheet, col);
    if (kind == ColumnKind::System)
        return Refusal("The properties of this column are kept by the program     ");
    const ColumnProperties now = ReadColumnProperties(sheet, col);
    if (wanted.title != now.title) {
        if (wanted.title.find_first_not_of(' ') == std::string::npos)
            return Refusal("Please type a name for the column     ");
        if (HasLineBreakOrTab(wanted.title))
            return Refusal("A column's name cannot hold a tab or a line break     ");
        for (int c = 0; c < sheet.Flex().Cols(); ++c)
            if (c != col && sheet.ColumnLabel(c) == wanted.title)
                return ports::Box{" Name in use",
                                  {"The variable name already exists     "},
                                  ports::Icon::Information};
    }
    if (wanted.dataType != now.dataType) {
        if (kind != ColumnKind::User)
            return Refusal(
                "The data type of this column is set by the program and cannot be changed     ");
        if (!OneOf(wanted.dataType, kUserDataTypes))
            return Refusal("Please choose a data type from the list     ");
    }
    if (wanted.decimals < -1 || wanted.decimals > kMaxDecimals)
        return Refusal("The number of decimals must be from 0 to 9     ");
    if (!OneOf(wanted.align, kAlignments))
        return Refusal("Please choose an alignment from the list     ");
    if (wanted.width != -1 && (wanted.width < kMinColumnWidth || wanted.width > kMaxColumnWidth))
        return Refusal("The width of a column must be from " +
                       std::to_string(kMinColumnWidth / kTwipsPerPoint) + " to " +
                       std::to_string(kMaxColumnWidth / kTwipsPerPoint) + " points     ");
    if (wanted.hidden != now.hidden)
        if (auto refusal = CheckShown(sheet, col)) return refusal;
    if (HasLineBreakOrTab(wanted.varName))
        return Refusal("A column's name cannot hold a tab or a line break     ");
    if (HasLineBreakOrTab(wanted.missing))
        return Refusal("The code for a missing value cannot hold a tab or a line break     ");
    if (wanted.dataType == "Drop down box" && kind == ColumnKind::User)
        return CheckValues(wanted.values, kTitle);
    return std::nullopt;
}

void ApplyColumnProperties(sheet::Sheet& sheet, int col, const ColumnProperties& p) {
    // Only what the user changed is written: a record may keep a field blank
    // that reads as its default.
    const ColumnProperties now = ReadColumnProperties(sheet, col);
    if (p.title != now.title) {
        sheet.SetMeta(col, MetaRow::ColumnHeader, p.title);
        Put(sheet, col, MetaRow::Renamed, "Manual");
    }
    if (p.varName != now.varName) Put(sheet, col, MetaRow::VarName, p.varName);
    if (p.missing != now.missing) Put(sheet, col, MetaRow::Missing, p.missing);
    if (p.decimals != now.decimals)
        Put(sheet, col, MetaRow::NumDecs, p.decimals < 0 ? "Auto" : std::to_string(p.decimals));
    if (p.align != now.align) Put(sheet, col, MetaRow::Align, p.align);
    if (p.width != now.width) {
        if (p.width < 0) sheet.SetColWidth(col, kAutoBaseWidth);
        Put(sheet, col, MetaRow::ColWidth, p.width < 0 ? "Auto" : std::to_string(p.width));
    }
    if (KindOfColumn(sheet, col) == ColumnKind::User) {
        if (p.dataType != now.dataType) Put(sheet, col, MetaRow::DataType, p.dataType);
        if (p.hidden != now.hidden) Put(sheet, col, MetaRow::Hidden, p.hidden ? "Hide" : "Show");
        std::vector<std::string> values;
        if (p.dataType == "Drop down box") {
            values = CleanValues(p.values);
            // A drop-down box with no values given offers those the column holds.
            if (values.empty())
                values = DistinctValues(sheet, col, kMaxDropDownValues).value_or(values);
        }
        if (values != now.values) {
            Put(sheet, col, MetaRow::ValueList, JoinValueList(values));
            Put(sheet, col, MetaRow::Numvals, std::to_string(values.size()));
        }
    }
    Reformat(sheet, col,
             (p.decimals != now.decimals || p.dataType != now.dataType ? kFormat : 0u) |
                 (p.align != now.align ? kAlign : 0u) | (p.width != now.width ? kWidth : 0u) |
                 (p.hidden != now.hidden ? kHidden : 0u));
}

std::optional<ports::Box> SetColumnsShown(sheet::Sheet& sheet,
                                          const std::vector<std::pair<int, bool>>& shown) {
    for (const auto& [col, show] : shown)
        if (sheet.Flex().Col(col).hidden == show)
            if (auto refusal = CheckShown(sheet, col)) return refusal;
    for (const auto& [col, show] : shown) {
        if (sheet.Flex().Col(col).hidden != show) continue;
        Put(sheet, col, MetaRow::Hidden, show ? "Show" : "Hide");
        Reformat(sheet, col, kHidden);
    }
    return std::nullopt;
}

std::optional<std::vector<std::string>> DistinctValues(const sheet::Sheet& sheet, int col,
                                                       std::size_t limit) {
    const sheet::Grid& flex = sheet.Flex();
    std::vector<std::string> values;
    std::set<std::string> seen;
    for (int r = flex.FixedRows(); r < flex.Rows(); ++r) {
        if (flex.IsBlank(r, col)) continue;
        std::string value = flex.Text(r, col);
        if (!seen.insert(value).second) continue;
        if (values.size() == limit) return std::nullopt;
        values.push_back(std::move(value));
    }
    return values;
}

std::string JoinValueList(const std::vector<std::string>& values) {
    std::string list;
    for (const std::string& value : values)
        list += (list.empty() ? "" : "|") + value;
    return list;
}

std::optional<ports::Box> MakeDropDown(sheet::Sheet& sheet, int col) {
    constexpr const char* kDropDownTitle = " Drop down box";
    if (KindOfColumn(sheet, col) != ColumnKind::User)
        return ports::Box{kDropDownTitle,
                          {"A drop-down box can be made only for a column of your own data, "
                           "such as a moderator     "},
                          ports::Icon::Information};
    const auto values = DistinctValues(sheet, col, kMaxDropDownValues);
    if (!values)
        return ports::Box{kDropDownTitle,
                          {"This column holds more than " + std::to_string(kMaxDropDownValues) +
                           " different values, too many for a drop-down box     "},
                          ports::Icon::Information};
    if (auto refusal = CheckValues(*values, kDropDownTitle)) return refusal;
    ColumnProperties p = ReadColumnProperties(sheet, col);
    p.dataType = "Drop down box";
    p.values = *values;
    ApplyColumnProperties(sheet, col, p);
    return std::nullopt;
}

void SetDecimals(sheet::Sheet& sheet, const std::vector<int>& cols, int decimals) {
    decimals = std::clamp(decimals, 0, kMaxDecimals);
    for (int col : cols) {
        if (KindOfColumn(sheet, col) == ColumnKind::System) continue;
        Put(sheet, col, MetaRow::NumDecs, std::to_string(decimals));
        Reformat(sheet, col, kFormat);
    }
}

void StepDecimals(sheet::Sheet& sheet, const std::vector<int>& cols, int step) {
    for (int col : cols) {
        if (KindOfColumn(sheet, col) == ColumnKind::System) continue;
        const std::optional<int> own = Digits(sheet.Meta(col, MetaRow::NumDecs));
        const int now = std::clamp(own.value_or(sheet.Decimals), 0, kMaxDecimals);
        const int next = std::clamp(now + step, 0, kMaxDecimals);
        if (own && next == now) continue;
        Put(sheet, col, MetaRow::NumDecs, std::to_string(next));
        Reformat(sheet, col, kFormat);
    }
}

void AutoFormat(sheet::Sheet& sheet) {
    const sheet::Grid& flex = sheet.Flex();
    const int last = sheet.GetLastRow();
    for (int col = flex.FixedCols(); col < flex.Cols(); ++col) {
        const ColumnKind kind = KindOfColumn(sheet, col);
        if (kind == ColumnKind::System || kind == ColumnKind::Computed || flex.Col(col).hidden)
            continue;
        bool any = false;
        bool numbers = true;
        int decimals = 0;
        for (int r = flex.FixedRows(); r <= last && numbers; ++r) {
            if (flex.IsBlank(r, col)) continue;
            const std::string text = flex.Text(r, col);
            double value = 0;
            any = true;
            numbers = sheet::ParseTypedNumber(text, sheet.Separators, value);
            decimals = std::max(decimals, FractionDigits(text, sheet.Separators.decimal));
        }
        if (!any) continue;
        Put(sheet, col, MetaRow::Align, numbers ? "Right" : "Left");
        if (numbers && kind == ColumnKind::User)
            Put(sheet, col, MetaRow::NumDecs, std::to_string(std::min(decimals, kMaxDecimals)));
        Reformat(sheet, col, kFormat | kAlign);
    }
}

void AutoSize(sheet::Sheet& sheet, const std::vector<int>& cols,
              const ports::TextMeasurer& measurer, const ports::FontSpec& font,
              const std::function<std::string(int row, int col)>& shown) {
    const sheet::Grid& flex = sheet.Flex();
    const int last = sheet.GetLastRow();
    // Sheets repeat their values; each text is measured once.
    std::unordered_map<std::string, double> widths;
    const auto measure = [&](const std::string& text) {
        auto [at, added] = widths.try_emplace(text, 0.0);
        if (added) at->second = measurer.Measure(text, font).width;
        return at->second;
    };
    for (int col : cols) {
        if (KindOfColumn(sheet, col) == ColumnKind::System || flex.Col(col).hidden) continue;
        double widest = 0;
        // The title wraps between its words.
        const std::string title = sheet.ColumnLabel(col);
        std::size_t start = 0;
        while (start < title.size()) {
            const std::size_t end = std::min(title.find_first_of(" \n", start), title.size());
            if (end > start) widest = std::max(widest, measure(title.substr(start, end - start)));
            start = end + 1;
        }
        for (int r = flex.FixedRows(); r <= last; ++r)
            if (!flex.IsBlank(r, col)) widest = std::max(widest, measure(shown(r, col)));
        const int twips =
            std::clamp(static_cast<int>(std::ceil((widest + kCellPaddingPoints) * kTwipsPerPoint)),
                       kMinColumnWidth, kMaxColumnWidth);
        Put(sheet, col, MetaRow::ColWidth, std::to_string(twips));
        Reformat(sheet, col, kWidth);
    }
}

}  // namespace synthara::shell
