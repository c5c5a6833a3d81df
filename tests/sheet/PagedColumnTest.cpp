#include "sheet/grid/PagedColumn.h"

#include <vector>

#include <gtest/gtest.h>

#include "sheet/grid/Cell.h"

namespace synthara::sheet {
namespace {

constexpr std::size_t kPage = PagedColumn<int>::kPageRows;

std::vector<int> Values(const PagedColumn<int>& column) {
    std::vector<int> values;
    for (std::size_t r = 0; r < column.size(); ++r)
        values.push_back(column[r]);
    return values;
}

TEST(PagedColumnTest, PagesExistOnlyWhileTheyHoldSomething) {
    PagedColumn<int> column;
    column.resize(10 * kPage);
    EXPECT_TRUE(column.AllEmpty());
    column.Set(3 * kPage + 5, 0);  // the empty value allocates nothing
    EXPECT_TRUE(column.AllEmpty());
    column.Set(3 * kPage + 5, 7);
    column.Set(3 * kPage + 6, 8);
    EXPECT_EQ(column[3 * kPage + 5], 7);
    EXPECT_EQ(column[10 * kPage + 1], 0);  // beyond the end reads empty
    column.Set(10 * kPage + 1, 9);         // and ignores writes
    column.Set(3 * kPage + 5, 0);
    EXPECT_FALSE(column.AllEmpty());
    column.Set(3 * kPage + 6, 0);
    EXPECT_TRUE(column.AllEmpty());

    // Shrinking drops the rows cut off, also inside a page that stays.
    column.Set(2 * kPage + 3, 1);
    column.Set(2 * kPage + 4, 2);
    column.resize(2 * kPage + 4);
    column.resize(3 * kPage);
    EXPECT_EQ(column[2 * kPage + 3], 1);
    EXPECT_EQ(column[2 * kPage + 4], 0);
}

TEST(PagedColumnTest, MovesAndOrdersAcrossPages) {
    PagedColumn<int> column;
    column.resize(3 * kPage);
    column.Set(1, 11);
    column.Set(2 * kPage + 1, 22);
    column.Move(1, 2 * kPage + 1);  // down across a page that holds nothing
    EXPECT_EQ(column[2 * kPage + 1], 11);
    EXPECT_EQ(column[2 * kPage], 22);
    EXPECT_EQ(column[1], 0);
    column.Move(2 * kPage + 1, 0);
    EXPECT_EQ(column[0], 11);
    EXPECT_EQ(column[2 * kPage + 1], 22);

    PagedColumn<int> small;
    small.resize(5);
    for (int r = 0; r < 5; ++r)
        small.Set(static_cast<std::size_t>(r), r + 1);
    small.ApplyOrder(1, {3, 2, 1, 0});
    EXPECT_EQ(Values(small), (std::vector<int>{1, 5, 4, 3, 2}));

    std::vector<std::size_t> rows;
    column.ForEachSet([&](std::size_t row, int) { rows.push_back(row); });
    EXPECT_EQ(rows, (std::vector<std::size_t>{0, 2 * kPage + 1}));
}

TEST(PagedColumnTest, CopiesAreIndependentAndCellsShareText) {
    PagedColumn<Cell> column;
    column.resize(4);
    column.Set(2, Cell::FromText("a text longer than a cell holds"));
    PagedColumn<Cell> copy = column;
    column.Set(2, Cell());
    EXPECT_TRUE(column.AllEmpty());
    EXPECT_EQ(copy[2].Text(), "a text longer than a cell holds");
}

// Copies share pages until a write: whichever side writes, moves, reorders or
// clears must leave the other exactly as it was.
TEST(PagedColumnTest, WritesAfterACopyStayOnTheirSide) {
    PagedColumn<int> original;
    original.resize(3 * kPage);
    for (std::size_t r = 0; r < original.size(); r += 7)
        original.Set(r, static_cast<int>(r) + 1);
    const std::vector<int> before = Values(original);

    PagedColumn<int> copy = original;
    copy.Set(7, 99);
    *copy.Fill(kPage + 3) = 5;
    copy.Move(0, 2 * kPage);
    copy.ApplyOrder(kPage, {1, 0});
    copy.ClearFrom(2 * kPage + 10);
    EXPECT_EQ(Values(original), before);

    const std::vector<int> copied = Values(copy);
    EXPECT_NE(copied, before);
    original.Set(14, -1);
    original.resize(kPage);
    EXPECT_EQ(Values(copy), copied);
}

}  // namespace
}  // namespace synthara::sheet
