#include "effectsize/Trail.h"

#include <gtest/gtest.h>

namespace synthara::effectsize {
namespace {

TEST(Trail, SectionsOpenTitleAndStep) {
    std::string trail = "old text";
    AddFormula(trail, "Cells", "A");
    EXPECT_EQ(trail, "Starting with\r\nCells");
    AddFormula(trail, "Title", "T");
    AddFormula(trail, "step", "S");
    AddFormula(trail, "", "S");
    AddFormula(trail, "ignored", "X");
    EXPECT_EQ(trail, "Starting with\r\nCells\r\n\r\nTitle\r\nstep\r\n");

    std::string fresh;
    AddFormula(fresh, "Risk ratio", "T");
    EXPECT_EQ(fresh, "Risk ratio");
    AddFormula(fresh, "", "T");
    EXPECT_EQ(fresh, "Risk ratio\r\n\r\n");
}

TEST(Trail, PrintedNumbers) {
    struct Case {
        double value;
        const char* g1;
        const char* g3;
    };
    const Case cases[] = {
        {10, "10", "10.000"},
        {3.3, "3.3", "3.300"},
        {3.25, "3.3", "3.250"},  // half away from zero
        {-3.25, "-3.3", "-3.250"},
        {0.0005, "0.0", "0.001"},
        {-0.0004, "0.0", "0.000"},  // a value printed as zero has no sign
        {1.0005, "1.0", "1.001"},   // typed ties round up although the double lies below
        {-0.9386941408703922, "-0.9", "-0.939"},
        {2.5, "2.5", "2.500"},
        {-0.0, "0", "0.000"},
        {1e20, "100000000000000000000", "100000000000000000000.000"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(G1(c.value), c.g1) << c.value;
        EXPECT_EQ(G3(c.value), c.g3) << c.value;
    }
    EXPECT_EQ(FormatDecimals(0.125, 2), "0.13");
    EXPECT_EQ(FormatDecimals(2.5, 0), "3");
    EXPECT_EQ(FormatDecimals(-2.5, 0), "-3");
    EXPECT_EQ(FormatDecimals(9.9996, 3), "10.000");
}

TEST(Trail, AFormulaGivesItsSymbolicAndNumericLines) {
    constexpr Formula kRatio{"Ratio = Log(({A} * {D}) / {B})"};
    const Slots cells{{"A", "12"}, {"B", "56"}};
    const Slots values{{{"D", "34"}}, &cells};
    std::string trail = "head";
    kRatio.AddSymbols(trail);
    kRatio.AddNumbers(trail, values, "-1.234");
    EXPECT_EQ(trail, "head\r\nRatio = Log((A * D) / B)\r\nRatio = Log((12 * 34) / 56) = -1.234");

    // Other names on the symbolic line, no result, a slot without a value
    // showing its name, and a numeric line that spells its name otherwise.
    const Slots labels{{"Events", "Group-A Events"}};
    constexpr Formula kCell{"A = {Events}"};
    constexpr Formula kRenamed{"Peto OddsRatio = Exp({Log} + {X})", "PetoOddsRatio"};
    std::string lines;
    kCell.AddSymbols(lines, &labels);
    kCell.AddNumbers(lines, Slots{{"Events", "10"}});
    kRenamed.AddNumbers(lines, Slots{{"Log", "0.5"}}, "2.718");
    EXPECT_EQ(lines, "\r\nA = Group-A Events\r\nA = 10\r\nPetoOddsRatio = Exp(0.5 + X) = 2.718");
}

}  // namespace
}  // namespace synthara::effectsize
