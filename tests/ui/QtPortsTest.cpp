// The clipboard and text measurement on Qt: text survives the round trip
// exactly, and sizes grow with the text and the font as a layout relies on.
#include <gtest/gtest.h>

#include "app/QtClipboard.h"
#include "app/QtTextMeasurer.h"

namespace synthara::ui {
namespace {

TEST(QtPortsTest, ClipboardKeepsTabsLineFeedsAndUnicode) {
    QtClipboard clipboard;
    const std::string rows = "Study name\tOdds ratio\nM\xC3\xBCller 1998\t0,391\n";
    clipboard.SetText(rows);
    EXPECT_EQ(clipboard.Text(), rows);
    clipboard.SetText("");
    EXPECT_EQ(clipboard.Text(), "");
}

TEST(QtPortsTest, TextSizesFollowTheTextAndTheFont) {
    const QtTextMeasurer measurer;
    const ports::FontSpec normal{"", 10, false, false};
    const ports::TextSize one = measurer.Measure("Aronson 1948", normal);
    const ports::TextSize two = measurer.Measure("Aronson 1948Aronson 1948", normal);
    ASSERT_GT(one.width, 0);
    EXPECT_NEAR(two.width, 2 * one.width, 0.05 * one.width);
    EXPECT_EQ(measurer.Measure("", normal).width, 0);
    // A line of 10-point text stands between 10 and 16 points high.
    EXPECT_GT(one.height, 10);
    EXPECT_LT(one.height, 16);

    const ports::FontSpec larger{"", 20, false, false};
    EXPECT_NEAR(measurer.Measure("Aronson 1948", larger).width, 2 * one.width, 0.15 * one.width);
    const ports::FontSpec bold{"", 10, true, false};
    EXPECT_GE(measurer.Measure("Aronson 1948", bold).width, one.width);
}

}  // namespace
}  // namespace synthara::ui
