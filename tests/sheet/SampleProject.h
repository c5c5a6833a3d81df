#pragma once
// A sheet with a bit of everything a project holds, and a cell-for-cell
// comparison of two grids, for the file and study-row tests.
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "sheet/blocks/BlockTable.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet::sample {

inline constexpr const char* kEvents = "Events and sample size in each group";
inline constexpr const char* kMeans = "Mean, SD and sample size in each group";

inline int AddBlock(Sheet& sheet, std::string_view format) {
    DefineFormat(format, sheet.Defined);
    const int first = sheet.Flex().Cols();
    sheet.CreateAll();
    return first;
}

// A moderator column at the right end.
inline int AddModerator(Sheet& sheet, const std::string& title, const std::string& dataType) {
    const int c = sheet.Flex().Cols();
    sheet.InsertColumn(c);
    sheet.SetMeta(c, MetaRow::ColumnHeader, title);
    sheet.SetMeta(c, MetaRow::Function, "Moderator");
    sheet.SetMeta(c, MetaRow::DataType, dataType);
    sheet.SetMeta(c, MetaRow::Renamed, "Manual");
    sheet.SetMeta(c, MetaRow::Hidden, "Show");
    return c;
}

// Two blocks with display columns, three identifying columns, two moderators
// (one hidden), odd widths, changed group words, selection rows, and cells
// holding typed text, numbers of every awkward kind and text that isn't UTF-8.
inline void Build(Sheet& sheet) {
    sheet.InitializeGrid();
    const int study = sheet.MakePop(1);
    const int subgroup = sheet.MakePop(2);
    sheet.MakePop(4);
    const int events = AddBlock(sheet, kEvents);
    sheet.CreateDisplayCols(kEvents);
    const int means = AddBlock(sheet, kMeans);
    sheet.CreateDisplayCols(kMeans);
    const int region = AddModerator(sheet, "Region", "Categorical");
    const int year = AddModerator(sheet, "Year", "Integer");
    sheet.SetColHidden(year, true);
    sheet.SetMeta(year, MetaRow::Hidden, "Hide");
    sheet.SetColWidth(region, 2345);
    sheet.SetColWidth(study, 1800);
    sheet.SetColAlignment(region, Alignment::Left);
    sheet.SetText(SettingsRow::GroupA, sheet.SettingsCol(), "Treated");
    sheet.SetText(SettingsRow::Events, sheet.SettingsCol(), "Deaths");
    sheet.SetText(SettingsRow::ImputedR, sheet.SettingsCol(), "0.25");
    sheet.ApplyGroupNames();
    for (int r = MetaRow::SelectionFirst; r <= MetaRow::SelectionLast; ++r)
        sheet.SetText(r, study, "sel|" + std::to_string(r));
    sheet.SetRows(FixedRowCount + 12);

    const double awkward[] = {0.1,
                              1.0 / 3.0,
                              -0.0,
                              5e-324,
                              1.7976931348623157e308,
                              4611686018427387904.0,
                              123456789.0,
                              std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity()};
    int r = FixedRowCount;
    for (double value : awkward) {
        sheet.SetText(r, study, "Study " + std::to_string(r - FixedRowCount + 1));
        sheet.SetText(r, subgroup, r % 2 == 0 ? "Adults" : "Children");
        sheet.SetText(r, events, "12");  // typed, stays text
        sheet.SetNumber(r, events + 1, value);
        sheet.SetText(r, region, r % 3 == 0 ? "North" : "");
        ++r;
    }
    sheet.SetText(r, study, "Quote \" back\\slash\nline\ttab \xC3\xA9t\xC3\xA9");
    sheet.SetText(r, means, "0.10");
    sheet.SetText(r, means + 1, "Latin-1 \xE9t\xE9");  // not UTF-8
    sheet.FindFormats();
    AdjustBlocks(sheet);
}

inline bool SameNumber(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

inline void ExpectSameCells(const Grid& a, const Grid& b) {
    ASSERT_EQ(a.Rows(), b.Rows());
    ASSERT_EQ(a.Cols(), b.Cols());
    EXPECT_EQ(a.FixedRows(), b.FixedRows());
    EXPECT_EQ(a.FixedCols(), b.FixedCols());
    for (int c = 0; c < a.Cols(); ++c) {
        EXPECT_EQ(a.Col(c).key, b.Col(c).key) << "column " << c;
        for (int r = 0; r < a.Rows(); ++r) {
            const Cell& x = a.At(r, c);
            const Cell& y = b.At(r, c);
            ASSERT_EQ(x.IsNumber(), y.IsNumber()) << r << "," << c;
            if (x.IsNumber())
                ASSERT_TRUE(SameNumber(x.Number(), y.Number())) << r << "," << c;
            else
                ASSERT_EQ(x.TextView(), y.TextView()) << r << "," << c;
        }
    }
}

// Cells, keys and everything of the layout that a file keeps; with
// `shades`, also the grey that a load rebuilds.
inline void ExpectSameGrid(const Grid& a, const Grid& b, bool shades = true) {
    ExpectSameCells(a, b);
    if (::testing::Test::HasFatalFailure()) return;
    for (int c = 0; c < a.Cols(); ++c) {
        EXPECT_EQ(a.Col(c).width, b.Col(c).width) << "column " << c;
        EXPECT_EQ(a.Col(c).hidden, b.Col(c).hidden) << "column " << c;
        EXPECT_EQ(a.Col(c).alignment, b.Col(c).alignment) << "column " << c;
        EXPECT_EQ(a.Col(c).numberFormat, b.Col(c).numberFormat) << "column " << c;
        for (int r = FixedRowCount; shades && r < a.Rows(); ++r)
            ASSERT_EQ(a.CellShade(r, c), b.CellShade(r, c)) << r << "," << c;
    }
    for (int r = 0; r < a.Rows(); ++r) {
        EXPECT_EQ(a.RowHidden(r), b.RowHidden(r)) << "row " << r;
        EXPECT_EQ(a.RowHeight(r), b.RowHeight(r)) << "row " << r;
    }
}

}  // namespace synthara::sheet::sample
