#pragma once
// The sheet the benchmarks share: one block of two-group event data, a
// study-name column and `rows` rows of plausible trials (a few with an empty
// cell, as real sheets have).
#include <array>
#include <random>
#include <string>

#include "sheet/grid/Sheet.h"

namespace synthara::bench {

inline constexpr const char* kTwoGroupFormat = "Events and sample size in each group";

inline void FillSheet(sheet::Sheet& sheet, int rows) {
    using sheet::FixedRowCount;
    sheet.InitializeGrid();
    int studyCol = sheet.MakePop(1);
    sheet::DefineFormat(kTwoGroupFormat, sheet.Defined);
    sheet.CreateAll();
    sheet.CreateDisplayCols(kTwoGroupFormat);
    sheet.FindCols();
    sheet.FindESCols(kTwoGroupFormat);
    sheet.SetRows(FixedRowCount + rows);
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> size(20, 5000);
    for (int r = 0; r < rows; ++r) {
        int row = FixedRowCount + r;
        int n1 = size(random), n2 = size(random);
        std::uniform_int_distribution<int> events1(0, n1 / 4), events2(0, n2 / 4);
        sheet.SetText(row, studyCol, "Study " + std::to_string(r + 1));
        const int values[4] = {events1(random), n1, events2(random), n2};
        for (int role = 0; role < 4; ++role) {
            if (r % 997 == 0 && role == 2) continue;  // now and then a missing cell
            sheet.SetText(row, sheet.EntryColIndex()[static_cast<std::size_t>(role)],
                          std::to_string(values[role]));
        }
    }
}

// A sheet of one block of `format` with `rows` rows whose entries `values`
// gives, role by role, as text.
template <typename Values>
void FillSheetOf(sheet::Sheet& sheet, const char* format, int rows, Values values) {
    using sheet::FixedRowCount;
    sheet.InitializeGrid();
    const int studyCol = sheet.MakePop(1);
    sheet::DefineFormat(format, sheet.Defined);
    sheet.CreateAll();
    sheet.CreateDisplayCols(format);
    sheet.FindCols();
    sheet.FindESCols(format);
    sheet.SetRows(FixedRowCount + rows);
    std::mt19937 random(20261121);
    for (int r = 0; r < rows; ++r) {
        const int row = FixedRowCount + r;
        sheet.SetText(row, studyCol, "Study " + std::to_string(r + 1));
        const auto texts = values(random);
        for (std::size_t role = 0; role < texts.size(); ++role)
            sheet.SetText(row, sheet.EntryColIndex()[role], texts[role]);
    }
}

// Events over person-time in two groups: up to 60 events over 100 to 5000 years.
inline void FillPersonTimeSheet(sheet::Sheet& sheet, int rows) {
    FillSheetOf(sheet, "Events and person years in each group", rows, [](std::mt19937& random) {
        std::uniform_int_distribution<int> events(0, 60), years(1000, 50000);
        const auto py = [&] { return std::to_string(years(random) / 10) + ".5"; };
        return std::array<std::string, 4>{std::to_string(events(random)), py(),
                                          std::to_string(events(random)), py()};
    });
}

// One proportion: up to a half of 20 to 5000 subjects with the event.
inline void FillOneGroupSheet(sheet::Sheet& sheet, int rows) {
    FillSheetOf(sheet, "Events and sample size", rows, [](std::mt19937& random) {
        std::uniform_int_distribution<int> size(20, 5000);
        const int n = size(random);
        std::uniform_int_distribution<int> events(0, n / 2);
        return std::array<std::string, 2>{std::to_string(events(random)), std::to_string(n)};
    });
}

// Forgets every row's format, so that the next computation starts afresh.
inline void ForgetFormats(sheet::Sheet& sheet) {
    const int formatCol = sheet.FormatCol();
    for (int row = sheet::FixedRowCount; row < sheet.Flex().Rows(); ++row)
        sheet.ClearCell(row, formatCol);
}

}  // namespace synthara::bench
