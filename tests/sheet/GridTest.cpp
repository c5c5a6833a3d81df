#include "sheet/grid/Grid.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace synthara::sheet {
namespace {

// A grid whose cell (r, c) reads "r<r>c<c>" and whose column c has key "k<c>".
Grid Labelled(int rows, int cols) {
    Grid grid;
    grid.SetRows(rows);
    grid.SetCols(cols);
    for (int c = 0; c < cols; ++c) {
        grid.SetColKey(c, "k" + std::to_string(c));
        for (int r = 0; r < rows; ++r) {
            grid.SetText(r, c, "r" + std::to_string(r) + "c" + std::to_string(c));
        }
    }
    return grid;
}

std::vector<std::string> ColumnTexts(const Grid& grid, int col) {
    std::vector<std::string> out;
    for (int r = 0; r < grid.Rows(); ++r)
        out.push_back(grid.Text(r, col));
    return out;
}

TEST(GridTest, ResizeKeepsDataAndDefaults) {
    Grid grid = Labelled(3, 3);
    grid.SetCellBackColor(2, 1, kRed);
    grid.SetRows(5);
    grid.SetCols(4);
    EXPECT_EQ(grid.Text(2, 2), "r2c2");
    EXPECT_TRUE(grid.IsBlank(4, 0));
    EXPECT_TRUE(grid.IsBlank(0, 3));
    EXPECT_EQ(grid.Col(3).cells.size(), 5u);
    EXPECT_EQ(grid.Col(1).back.size(), 5u);
    EXPECT_EQ(grid.CellBackColor(4, 1), kNoBackColor);
    EXPECT_EQ(grid.RowHeight(4), 250);
    EXPECT_FALSE(grid.RowHidden(4));

    grid.SetRows(2);
    grid.SetCols(2);
    EXPECT_EQ(grid.Text(1, 1), "r1c1");
    EXPECT_EQ(grid.ColIndex("k2"), -1);
    grid.Clear();
    EXPECT_EQ(grid.Rows(), 0);
    EXPECT_EQ(grid.Cols(), 0);
}

TEST(GridTest, OutOfRangeIsHarmless) {
    Grid grid = Labelled(2, 2);
    for (auto [r, c] : {std::pair{-1, 0}, {0, -1}, {2, 0}, {0, 2}, {1 << 30, 1 << 30}}) {
        EXPECT_TRUE(grid.At(r, c).IsEmpty());
        grid.SetText(r, c, "x");
        grid.SetCellBackColor(r, c, kRed);
        grid.SetCellShade(r, c, 3);
        EXPECT_EQ(grid.CellBackColor(r, c), kNoBackColor);
        EXPECT_EQ(grid.CellShade(r, c), 0);
        grid.MoveRow(r, 0);
        grid.MoveColumn(c, 0);
    }
    for (int r : {-1, 2, 1 << 30}) {
        grid.SetRowHidden(r, true);
        grid.SetRowHeight(r, 1);
        EXPECT_FALSE(grid.RowHidden(r));
        EXPECT_EQ(grid.RowHeight(r), 250);
    }
    EXPECT_EQ(grid.Text(0, 0), "r0c0");
    grid.Col(7).key = "ghost";
    EXPECT_EQ(grid.ColIndex("ghost"), -1);
    grid.SortRows(-5, 99, -5, 99);
    grid.SetRows(-3);
    EXPECT_EQ(grid.Rows(), 0);
}

TEST(GridTest, MoveColumnAndKeyLookup) {
    Grid grid = Labelled(1, 5);
    grid.MoveColumn(1, 3);  // forwards: 0 2 3 1 4
    grid.MoveColumn(4, 0);  // backwards: 4 0 2 3 1
    const char* want[] = {"k4", "k0", "k2", "k3", "k1"};
    for (int c = 0; c < 5; ++c) {
        EXPECT_EQ(grid.Col(c).key, want[c]);
        EXPECT_EQ(grid.ColIndex(want[c]), c);
    }
    EXPECT_EQ(grid.Text(0, 4), "r0c1");

    // Keys edited in place, inserted and removed columns are all seen.
    grid.Col(2).key = "renamed";
    EXPECT_EQ(grid.ColIndex("renamed"), 2);
    EXPECT_EQ(grid.ColIndex("k2"), -1);
    grid.InsertColumn(0);
    EXPECT_EQ(grid.ColIndex("k4"), 1);
    EXPECT_TRUE(grid.IsBlank(0, 0));
    grid.RemoveColumn(1);
    EXPECT_EQ(grid.ColIndex("k4"), -1);
    EXPECT_EQ(grid.ColIndex("k0"), 1);
    EXPECT_EQ(grid.ColIndex(""), -1);
}

TEST(GridTest, MoveRowCarriesEverything) {
    Grid grid = Labelled(4, 2);
    grid.SetCellBackColor(0, 1, kRed);
    grid.SetCellShade(0, 0, 5);
    grid.SetRowHidden(0, true);
    grid.SetRowHeight(0, 600);
    grid.MoveRow(0, 2);
    EXPECT_EQ(ColumnTexts(grid, 0), (std::vector<std::string>{"r1c0", "r2c0", "r0c0", "r3c0"}));
    EXPECT_EQ(grid.CellBackColor(2, 1), kRed);
    EXPECT_EQ(grid.CellShade(2, 0), 5);
    EXPECT_TRUE(grid.RowHidden(2));
    EXPECT_EQ(grid.RowHeight(2), 600);
    EXPECT_EQ(grid.CellBackColor(0, 1), kNoBackColor);
    grid.MoveRow(3, 0);
    EXPECT_EQ(ColumnTexts(grid, 1), (std::vector<std::string>{"r3c1", "r1c1", "r2c1", "r0c1"}));
}

TEST(GridTest, SortOrdersEmptyNumbersThenText) {
    Grid grid;
    grid.SetRows(9);
    grid.SetCols(3);
    // Row 0 is a header outside the sorted range; column 1 breaks ties; column 2 tags rows.
    const char* keys[] = {"head", "beta", "10", "", "9", "Alpha", "2.5", "alpha", "9"};
    const char* ties[] = {"", "", "", "", "b", "", "", "", "a"};
    for (int r = 0; r < 9; ++r) {
        grid.SetText(r, 0, keys[r]);
        grid.SetText(r, 1, ties[r]);
        grid.SetText(r, 2, std::to_string(r));
    }
    grid.SetNumber(3, 0, -1);  // a stored number sorts with typed ones
    grid.ClearCell(6, 0);
    grid.SetRowHeight(5, 777);
    grid.SetCellShade(5, 2, 2);
    grid.SortRows(1, 8, 0, 1);
    // Empty, -1, 9 (tie broken by "a" < "b"), 10, then text without regard to
    // case in stable order: "Alpha" (row 5) before "alpha" (row 7).
    EXPECT_EQ(ColumnTexts(grid, 2),
              (std::vector<std::string>{"0", "6", "3", "8", "4", "2", "5", "7", "1"}));
    EXPECT_EQ(grid.RowHeight(6), 777);
    EXPECT_EQ(grid.CellShade(6, 2), 2);
    EXPECT_EQ(grid.Text(0, 0), "head");
}

// The blank-column hint may be conservative but must never claim a column is
// blank while a data row holds a value, whichever way the value got there.
TEST(GridTest, DataRowsBlankNeverHidesAValue) {
    Grid grid;
    grid.SetRows(6);
    grid.SetCols(3);
    grid.SetFixedRows(2);
    grid.SetText(0, 0, "metadata");
    grid.ClearCell(4, 1);
    EXPECT_TRUE(grid.DataRowsBlank(0)) << "fixed rows are not data";
    EXPECT_TRUE(grid.DataRowsBlank(1)) << "clearing writes no value";

    grid.SetNumber(5, 1, 0.0);
    EXPECT_FALSE(grid.DataRowsBlank(1));

    grid.MoveRow(0, 4);  // the metadata cell lands in a data row
    EXPECT_EQ(grid.Text(4, 0), "metadata");
    EXPECT_FALSE(grid.DataRowsBlank(0));

    grid.SetText(1, 2, "x");
    grid.SetFixedRows(1);  // row 1 becomes a data row
    EXPECT_FALSE(grid.DataRowsBlank(2));
    EXPECT_FALSE(grid.DataRowsBlank(7)) << "out of range is not blank";
}

// Colouring a whole column reads exactly as colouring each of its data rows.
TEST(GridTest, ColumnColourReadsAsEveryDataCellColoured) {
    const BackColor blue = RGB(0, 0, 255), green = RGB(0, 255, 0);
    Grid byColumn, byCell;
    for (Grid* grid : {&byColumn, &byCell}) {
        grid->SetRows(6);
        grid->SetCols(1);
        grid->SetFixedRows(1);
    }
    byColumn.SetDataBackColor(0, blue);
    for (int r = 1; r < 6; ++r)
        byCell.SetCellBackColor(r, 0, blue);
    auto same = [&](const char* step) {
        for (int r = 0; r < byCell.Rows(); ++r)
            EXPECT_EQ(byColumn.CellBackColor(r, 0), byCell.CellBackColor(r, 0)) << step << r;
    };
    same("coloured");
    for (Grid* grid : {&byColumn, &byCell}) {
        grid->SetCellBackColor(2, 0, kNoBackColor);
        grid->SetCellBackColor(3, 0, green);
        grid->SetText(4, 0, "b");
        grid->SetText(5, 0, "a");
    }
    same("cells changed");
    for (Grid* grid : {&byColumn, &byCell})
        grid->MoveRow(2, 4);
    same("row moved");
    for (Grid* grid : {&byColumn, &byCell})
        grid->SortRows(1, 5, 0, 0);
    same("sorted");
    for (Grid* grid : {&byColumn, &byCell})
        grid->SetRows(8);  // new rows are not coloured
    same("grown");
    for (Grid* grid : {&byColumn, &byCell})
        grid->MoveRow(7, 1);  // a row from beyond the coloured ones
    same("moved in");
    for (Grid* grid : {&byColumn, &byCell})
        grid->SetFixedRows(3);
    same("fixed rows");
}

}  // namespace
}  // namespace synthara::sheet
