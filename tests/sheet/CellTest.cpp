#include "sheet/grid/Cell.h"

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace synthara::sheet {
namespace {

TEST(CellTest, KindsAndText) {
    EXPECT_TRUE(Cell().IsEmpty());
    EXPECT_TRUE(Cell::FromText("").IsEmpty());
    const Cell text = Cell::FromText("abc");
    EXPECT_TRUE(text.IsText());
    EXPECT_EQ(text.Text(), "abc");
    EXPECT_EQ(text.TextView(), "abc");
    const Cell number = Cell::FromNumber(0.1);
    EXPECT_TRUE(number.IsNumber());
    EXPECT_EQ(number.Text(), "0.1");
    EXPECT_EQ(number.TextView(), "");

    // Copies share the text and compare equal; a number never equals its text.
    const Cell copy = text;
    EXPECT_EQ(copy.TextView().data(), text.TextView().data());
    EXPECT_EQ(copy, Cell::FromText("abc"));
    EXPECT_FALSE(number == Cell::FromText("0.1"));
}

TEST(CellTest, SharedTextOutlivesItsOwners) {
    Cell a = Cell::FromText("shared");
    Cell b;
    b = a;
    b = *&b;  // self-assignment keeps the text
    Cell c = std::move(a);
    EXPECT_TRUE(a.IsEmpty());  // NOLINT(bugprone-use-after-move): moved-from is empty
    c = Cell::FromNumber(1);
    EXPECT_EQ(b.Text(), "shared");
    EXPECT_EQ(c.Number(), 1);
    EXPECT_EQ(b.Number(), 0);
}

TEST(CellTest, NumbersAreReadFromTextAndCells) {
    // A decimal comma as well as a point; surrounding blanks and line ends go.
    const std::pair<const char*, double> cases[] = {
        {"0", 0},      {"42", 42},        {"-7", -7},      {"+7", 7},      {"3.5", 3.5},
        {".5", 0.5},   {"5.", 5},         {"-.25", -0.25}, {"2,5", 2.5},   {"-0,75", -0.75},
        {"1e3", 1000}, {"1.5E-2", 0.015}, {"2,5e+1", 25},  {" \t12 ", 12}, {"007", 7},
        {"1e-400", 0}, {"0.1", 0.1},      {"12\r\n", 12}};
    for (const auto& [text, want] : cases) {
        SCOPED_TRACE(text);
        double got = -99;
        ASSERT_TRUE(ParseNumber(text, got));
        EXPECT_EQ(got, want);
    }
    double got = -99;
    ASSERT_TRUE(ParseNumber("1.7976931348623157e308", got));
    EXPECT_EQ(got, 1.7976931348623157e308);

    EXPECT_TRUE(Cell::FromNumber(2.5).TryNumber(got));
    EXPECT_EQ(got, 2.5);
    EXPECT_TRUE(Cell::FromText(" 3,25 ").TryNumber(got));
    EXPECT_EQ(got, 3.25);
    EXPECT_FALSE(Cell::FromText("n/a").TryNumber(got));
    EXPECT_FALSE(Cell().TryNumber(got));
}

TEST(CellTest, ParseNumberRejects) {
    for (const char* text : {"",    "   ",  "n/a", "1.2.3", "1,2,3", "1,234.5", "inf",   "-inf",
                             "nan", "0x10", "1e",  "1e+",   "e5",    "12abc",   "1 2",   "--1",
                             "+-1", ".",    "-",   ",",     "1e5.5", "1e400",   "1_000", "١٢"}) {
        SCOPED_TRACE(text);
        double got = -99;
        EXPECT_FALSE(ParseNumber(text, got));
        EXPECT_EQ(got, -99);  // untouched on failure
    }
}

TEST(CellTest, FormatNumberIsShortestAndRoundTrips) {
    EXPECT_EQ(FormatNumber(0.1), "0.1");
    EXPECT_EQ(FormatNumber(123), "123");
    EXPECT_EQ(FormatNumber(1e-5), "1e-05");
    EXPECT_EQ(FormatNumber(-0.0), "0");
    for (double v : {0.1 + 0.2, 1.0 / 3, -2.5e-300, 6.02214076e23, 4.9e-324,
                     std::numeric_limits<double>::max(), -123456.789}) {
        double back = 0;
        ASSERT_TRUE(ParseNumber(FormatNumber(v), back)) << FormatNumber(v);
        EXPECT_EQ(back, v);
    }
}

}  // namespace
}  // namespace synthara::sheet
