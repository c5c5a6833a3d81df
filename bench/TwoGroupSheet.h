#pragma once
// The sheets the benchmarks share: one block of data, a study-name column and
// `rows` rows of plausible studies: two-group trials (a few with an empty
// cell, as real sheets have), events over person-time, one proportion, two groups' means.
#include <array>
#include <random>
#include <string>

#include "sheet/grid/Sheet.h"

namespace synthara::bench {

inline constexpr const char* kTwoGroupFormat = "Events and sample size in each group";

// A sheet of one block of `format` with `rows` rows whose entries `values`
// gives, role by role, as text ("" for an empty cell).
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
            if (!texts[role].empty()) sheet.SetText(row, sheet.EntryColIndex()[role], texts[role]);
    }
}

// Two-group trials of 20 to 5000 patients an arm, up to a quarter with the
// event; now and then a missing cell.
inline void FillSheet(sheet::Sheet& sheet, int rows) {
    int r = 0;
    FillSheetOf(sheet, kTwoGroupFormat, rows, [&r](std::mt19937& random) {
        std::uniform_int_distribution<int> size(20, 5000);
        const int n1 = size(random), n2 = size(random);
        std::uniform_int_distribution<int> events1(0, n1 / 4), events2(0, n2 / 4);
        const int e1 = events1(random), e2 = events2(random);
        std::array<std::string, 4> texts{std::to_string(e1), std::to_string(n1), std::to_string(e2),
                                         std::to_string(n2)};
        if (r++ % 997 == 0) texts[2].clear();
        return texts;
    });
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

// Two independent groups' means: a mean, SD and size of 10 to 500 in each,
// the effect direction taken from the means.
inline void FillMeansSheet(sheet::Sheet& sheet, int rows) {
    FillSheetOf(sheet, "Mean, SD and sample size in each group", rows, [](std::mt19937& random) {
        std::uniform_int_distribution<int> mean(200, 800), sd(20, 150), size(10, 500);
        const auto tenths = [](int value) {
            return std::to_string(value / 10) + "." + std::to_string(value % 10);
        };
        return std::array<std::string, 7>{tenths(mean(random)),
                                          tenths(sd(random)),
                                          std::to_string(size(random)),
                                          tenths(mean(random)),
                                          tenths(sd(random)),
                                          std::to_string(size(random)),
                                          "1"};
    });
}

// Forgets every row's format, so that the next computation starts afresh.
inline void ForgetFormats(sheet::Sheet& sheet) {
    const int formatCol = sheet.FormatCol();
    for (int row = sheet::FixedRowCount; row < sheet.Flex().Rows(); ++row)
        sheet.ClearCell(row, formatCol);
}

}  // namespace synthara::bench
