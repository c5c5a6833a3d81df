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

    // Long text is shared by copies; short text lives in the cell. Either
    // way copies compare equal, and a number never equals its text.
    const Cell longText = Cell::FromText("a text longer than a cell holds");
    const Cell longCopy = longText;
    EXPECT_EQ(longCopy.TextView().data(), longText.TextView().data());
    EXPECT_EQ(longCopy.Text(), "a text longer than a cell holds");
    const Cell copy = text;
    EXPECT_EQ(copy, Cell::FromText("abc"));
    EXPECT_FALSE(copy == longText);
    const std::string fits(Cell::kShortText, 'x'), spills(Cell::kShortText + 1, 'x');
    EXPECT_EQ(Cell::FromText(fits).TextView(), fits);
    EXPECT_EQ(Cell::FromText(spills).TextView(), spills);
    EXPECT_EQ(Cell::FromText(fits), Cell::FromText(fits));
    EXPECT_FALSE(number == Cell::FromText("0.1"));
}

// A cell keeps its other kinds in the patterns of negative not-a-numbers; no
// number, whatever its bits, may read as one of them.
TEST(CellTest, EveryDoubleStaysANumber) {
    const double inf = std::numeric_limits<double>::infinity();
    const double negativeNan = -std::numeric_limits<double>::quiet_NaN();
    const double signallingNan = -std::numeric_limits<double>::signaling_NaN();
    for (double value : {0.0, -0.0, 1e-320, -inf, inf, negativeNan, signallingNan,
                         std::numeric_limits<double>::lowest()}) {
        const Cell cell = Cell::FromNumber(value);
        EXPECT_TRUE(cell.IsNumber()) << value;
        EXPECT_FALSE(cell.IsText() || cell.IsEmpty()) << value;
        EXPECT_EQ(cell.TextView(), "");
        if (std::isnan(value)) {
            EXPECT_TRUE(std::isnan(cell.Number()));
        } else {
            EXPECT_EQ(cell.Number(), value);
        }
    }
    Cell reused = Cell::FromText("a text longer than a cell holds");
    reused.AssignNumber(2.5);
    EXPECT_EQ(reused.Number(), 2.5);
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
    // The program's own format: a point only; surrounding blanks and line ends go.
    const std::pair<const char*, double> cases[] = {
        {"0", 0},      {"42", 42},        {"-7", -7},     {"+7", 7},
        {"3.5", 3.5},  {".5", 0.5},       {"5.", 5},      {"-.25", -0.25},
        {"1e3", 1000}, {"1.5E-2", 0.015}, {"2.5e+1", 25}, {" \t12 ", 12},
        {"007", 7},    {"1e-400", 0},     {"0.1", 0.1},   {"12\r\n", 12}};
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
    EXPECT_TRUE(Cell::FromText(" 3.25 ").TryNumber(got));
    EXPECT_EQ(got, 3.25);
    EXPECT_FALSE(Cell::FromText("n/a").TryNumber(got));
    EXPECT_FALSE(Cell().TryNumber(got));
}

TEST(CellTest, ParseNumberRejects) {
    // A comma is no part of the program's own format, as decimal or as group.
    for (const char* text :
         {"",     "   ", "n/a",   "1.2.3", "1,2,3", "1,234.5",      "inf", "-inf", "nan",
          "0x10", "1e",  "1e+",   "e5",    "12abc", "1 2",          "--1", "+-1",  ".",
          "-",    ",",   "1e5.5", "1e400", "1_000", "\u0661\u0662", "2,5", "1,200"}) {
        SCOPED_TRACE(text);
        double got = -99;
        EXPECT_FALSE(ParseNumber(text, got));
        EXPECT_EQ(got, -99);  // untouched on failure
    }
}

TEST(CellTest, TypedNumbersFollowTheLocaleSeparators) {
    const NumberSeparators c;                      // decimal '.', group ','
    const NumberSeparators german{",", "."};       // de_DE
    const NumberSeparators french{",", "\u202F"};  // fr_FR: a narrow no-break space
    const NumberSeparators ungrouped{",", ""};     // a locale that does not group digits
    const double no = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const NumberSeparators& separators;
        const char* text;
        double want;  // NaN: not a number
    } cases[] = {
        {c, "1,200", 1200},
        {c, "1,200.5", 1200.5},
        {c, "-12,345,678.25", -12345678.25},
        {c, "1,200e3", 1.2e6},
        {c, "1,5", no},  // a group separator is never a decimal point
        {c, "1,2000", no},
        {c, "1234,567", no},
        {c, "12,34,567", no},
        {c, ",200", no},
        {c, "1.200,5", no},  // no groups after the decimal point
        {c, "1.000,000", no},
        {german, "1,5", 1.5},
        {german, "1.200", 1200},
        {german, "1.200,5", 1200.5},
        {german, "-0,75e2", -75},
        {german, "1.5", no},
        {german, "1,200.5", no},
        {french, "1\u202F200,5", 1200.5},
        {french, "1,5", 1.5},
        {french, "1\u202F20", no},
        {french, "1 200", no},
        {ungrouped, "1,5", 1.5},
        {ungrouped, "1.5", no},  // not this locale's decimal
        {ungrouped, "1.200", no},
    };
    for (const auto& k : cases) {
        SCOPED_TRACE(std::string(k.text) + " with decimal '" + k.separators.decimal + "'");
        double got = -99;
        const bool parsed = ParseTypedNumber(k.text, k.separators, got);
        if (std::isnan(k.want)) {
            EXPECT_FALSE(parsed) << got;
        } else {
            ASSERT_TRUE(parsed);
            EXPECT_EQ(got, k.want);
        }
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
