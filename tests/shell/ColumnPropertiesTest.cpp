// Column properties on the example of trials: reading and setting them with
// their refusals, drop-down boxes, decimals, auto format and auto size.
#include <gtest/gtest.h>

#include <string>

#include "sheet/grid/MetaRows.h"
#include "shell/Document.h"
#include "support/ScriptedPrompter.h"

namespace synthara::shell {
namespace {

using sheet::MetaRow;

// Every character is six points wide.
class FixedWidthMeasurer final : public ports::TextMeasurer {
  public:
    ports::TextSize Measure(const std::string& text, const ports::FontSpec&) const override {
        return {6.0 * static_cast<double>(text.size()), 12};
    }
};

class ColumnPropertiesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(document
                        .Open(SYNTHARA_EXAMPLES "/bcg-vaccine-trials.csv",
                              OpenSettings::ForFormat("Events and sample size in each group"))
                        .ok());
        latitude = Titled("Latitude");
        allocation = Titled("Allocation");
        ASSERT_GT(latitude, 0);
        ASSERT_GT(allocation, 0);
    }
    int Titled(const std::string& title) const {
        for (int c = 0; c < Flex().Cols(); ++c)
            if (Flex().TextIs(MetaRow::ColumnHeader, c, title)) return c;
        return -1;
    }
    int FirstOf(const std::string& function) const {
        for (int c = Flex().FixedCols(); c < Flex().Cols(); ++c)
            if (document.Sheet().MetaIs(c, MetaRow::Function, function)) return c;
        return -1;
    }
    const sheet::Grid& Flex() const { return document.Sheet().Flex(); }
    std::string Meta(int col, int row) const { return document.Sheet().Meta(col, row); }
    static constexpr int kFirst = sheet::FixedRowCount;

    testing::ScriptedPrompter prompter;
    Document document{prompter};
    int latitude = -1;
    int allocation = -1;
};

TEST_F(ColumnPropertiesTest, AppliesWhatTheUserSetsAndReadsItBack) {
    ColumnProperties p = document.PropertiesOf(latitude);
    // Ok on the properties as read, blanks of an imported record included,
    // writes nothing.
    const auto untouched = Flex().Revision();
    ASSERT_TRUE(document.SetColumnProperties(latitude, p));
    ASSERT_TRUE(document.SetColumnProperties(FirstOf("Display"),
                                             document.PropertiesOf(FirstOf("Display"))));
    EXPECT_EQ(Flex().Revision(), untouched);

    EXPECT_EQ(p.title, "Latitude");
    EXPECT_EQ(p.decimals, -1);
    EXPECT_EQ(p.width, -1);
    EXPECT_FALSE(p.hidden);

    EXPECT_EQ(p.dataType, "Integer");
    p.title = "Degrees north";
    p.dataType = "Decimal";
    p.decimals = 2;
    p.align = "Center";
    p.width = 1500;
    p.missing = "NA";
    ASSERT_TRUE(document.SetColumnProperties(latitude, p));
    EXPECT_TRUE(prompter.shown.empty());
    EXPECT_EQ(document.PropertiesOf(latitude), p);
    EXPECT_EQ(Meta(latitude, MetaRow::Renamed), "Manual");
    EXPECT_EQ(Flex().Col(latitude).numberFormat, "0.00");
    EXPECT_EQ(Flex().Col(latitude).alignment, sheet::Alignment::Center);
    EXPECT_EQ(Flex().Col(latitude).width, 1500);
    // Typed numbers show the column's decimals; the cell keeps what was typed.
    EXPECT_EQ(document.DisplayText(kFirst, latitude), "44.00");
    EXPECT_EQ(document.CellText(kFirst, latitude), "44");

    // The same properties again change nothing.
    const auto revision = Flex().Revision();
    ASSERT_TRUE(document.SetColumnProperties(latitude, p));
    EXPECT_EQ(Flex().Revision(), revision);

    // Back to "Auto": numbers as typed, the width of a new column.
    p.decimals = -1;
    p.width = -1;
    ASSERT_TRUE(document.SetColumnProperties(latitude, p));
    EXPECT_EQ(document.DisplayText(kFirst, latitude), "44");
    EXPECT_EQ(Flex().Col(latitude).width, 940);
}

TEST_F(ColumnPropertiesTest, RefusesWhatMustBeRefusedAndChangesNothing) {
    const int display = FirstOf("Display");
    const int entrySeq = document.Sheet().EntrySeqCol();
    ASSERT_GT(display, 0);
    struct Case {
        int col;
        void (*change)(ColumnProperties&);
        const char* box;
    };
    const Case cases[] = {
        {latitude, [](ColumnProperties& p) { p.title = "Allocation"; },
         " Name in use|The variable name already exists     "},
        {latitude, [](ColumnProperties& p) { p.title = "  "; },
         " Column properties|Please type a name for the column     "},
        {latitude, [](ColumnProperties& p) { p.decimals = 10; },
         " Column properties|The number of decimals must be from 0 to 9     "},
        {latitude, [](ColumnProperties& p) { p.width = 100; },
         " Column properties|The width of a column must be from 10 to 720 points     "},
        {latitude,
         [](ColumnProperties& p) {
             p.dataType = "Drop down box";
             p.values = {"a|b"};
         },
         " Column properties|A value in a drop-down box cannot hold the character | or a line "
         "break     "},
        {display, [](ColumnProperties& p) { p.dataType = "Categorical"; },
         " Column properties|The data type of this column is set by the program and cannot be "
         "changed     "},
        {display, [](ColumnProperties& p) { p.hidden = true; },
         " Column properties|To hide column that displays effect size       |Right-click on the "
         "column and select 'Customize display'.   "},
        {entrySeq, [](ColumnProperties& p) { p.align = "Left"; },
         " Column properties|The properties of this column are kept by the program     "},
    };
    for (const Case& c : cases) {
        prompter.shown.clear();
        ColumnProperties p = document.PropertiesOf(c.col);
        c.change(p);
        const auto revision = Flex().Revision();
        EXPECT_FALSE(document.SetColumnProperties(c.col, p)) << c.box;
        EXPECT_EQ(prompter.Only(), c.box);
        EXPECT_EQ(Flex().Revision(), revision) << c.box;
    }
}

TEST_F(ColumnPropertiesTest, DropDownOffersTheColumnsValues) {
    ASSERT_TRUE(document.DropDown(allocation));
    EXPECT_EQ(Meta(allocation, MetaRow::DataType), "Drop down box");
    EXPECT_EQ(Meta(allocation, MetaRow::ValueList), "random|alternate|systematic");
    EXPECT_EQ(Meta(allocation, MetaRow::Numvals), "3");
    EXPECT_EQ(document.PropertiesOf(allocation).values,
              (std::vector<std::string>{"random", "alternate", "systematic"}));
    // A value typed later joins the list, as any edit of a drop-down column does.
    document.FinishEdit(kFirst, allocation, "cluster");
    EXPECT_EQ(Meta(allocation, MetaRow::ValueList), "cluster|random|alternate|systematic");

    // Only the user's own columns, and not with too many values.
    EXPECT_FALSE(document.DropDown(FirstOf("Data Entry")));
    EXPECT_EQ(prompter.Last(),
              " Drop down box|A drop-down box can be made only for a column of your own data, "
              "such as a moderator     ");
    EXPECT_FALSE(DistinctValues(document.Sheet(), allocation, 3).has_value());
    EXPECT_EQ(DistinctValues(document.Sheet(), allocation, 4)->size(), 4u);

    // Another type clears the list.
    ColumnProperties p = document.PropertiesOf(allocation);
    p.dataType = "Categorical";
    ASSERT_TRUE(document.SetColumnProperties(allocation, p));
    EXPECT_EQ(Meta(allocation, MetaRow::ValueList), "");
    EXPECT_EQ(Meta(allocation, MetaRow::Numvals), "0");
}

TEST_F(ColumnPropertiesTest, DecimalsStepWithinZeroToNine) {
    const int display = FirstOf("Display");
    // From "Auto", a step starts at the program's decimals.
    document.StepDecimals({display, latitude}, +1);
    EXPECT_EQ(Meta(display, MetaRow::NumDecs), std::to_string(document.Sheet().Decimals + 1));
    EXPECT_EQ(Flex().Col(display).numberFormat,
              "0." + std::string(static_cast<std::size_t>(document.Sheet().Decimals + 1), '0'));
    EXPECT_EQ(Meta(latitude, MetaRow::NumDecs), Meta(display, MetaRow::NumDecs));

    document.SetDecimals({display}, 9);
    auto revision = Flex().Revision();
    document.StepDecimals({display}, +1);
    EXPECT_EQ(Meta(display, MetaRow::NumDecs), "9");
    EXPECT_EQ(Flex().Revision(), revision);

    document.SetDecimals({display}, 0);
    revision = Flex().Revision();
    document.StepDecimals({display}, -1);
    EXPECT_EQ(Meta(display, MetaRow::NumDecs), "0");
    EXPECT_EQ(Flex().Revision(), revision);

    // System columns keep theirs.
    const int entrySeq = document.Sheet().EntrySeqCol();
    document.SetDecimals({entrySeq}, 4);
    EXPECT_EQ(Meta(entrySeq, MetaRow::NumDecs), "Auto");
}

TEST_F(ColumnPropertiesTest, AutoFormatAlignsNumbersRightAndTextLeft) {
    ColumnProperties p = document.PropertiesOf(latitude);
    p.dataType = "Decimal";
    ASSERT_TRUE(document.SetColumnProperties(latitude, p));
    document.FinishEdit(kFirst + 1, latitude, "55.25");
    const std::string allocationDecs = Meta(allocation, MetaRow::NumDecs);
    const int display = FirstOf("Display");
    const std::string displayDecs = Meta(display, MetaRow::NumDecs);
    const int entry = FirstOf("Data Entry");
    const std::string entryDecs = Meta(entry, MetaRow::NumDecs);

    document.AutoFormat();
    EXPECT_EQ(Meta(latitude, MetaRow::Align), "Right");
    EXPECT_EQ(Meta(latitude, MetaRow::NumDecs), "2");
    EXPECT_EQ(document.DisplayText(kFirst, latitude), "44.00");
    EXPECT_EQ(Flex().Col(latitude).alignment, sheet::Alignment::Right);
    EXPECT_EQ(Meta(allocation, MetaRow::Align), "Left");
    EXPECT_EQ(Meta(allocation, MetaRow::NumDecs), allocationDecs);
    // Entry columns are aligned only; computed columns keep their own looks.
    EXPECT_EQ(Meta(entry, MetaRow::Align), "Right");
    EXPECT_EQ(Meta(entry, MetaRow::NumDecs), entryDecs);
    EXPECT_EQ(Meta(display, MetaRow::NumDecs), displayDecs);
    EXPECT_EQ(Meta(display, MetaRow::Align), "Auto");
}

TEST_F(ColumnPropertiesTest, AutoSizeFitsTheWidestShownText) {
    const FixedWidthMeasurer measurer;
    document.FinishEdit(kFirst, allocation, "a rather long allocation");
    document.AutoSize({allocation, latitude}, measurer, {});
    // 24 characters of 6 points, with 8 points of room, in twips.
    EXPECT_EQ(Meta(allocation, MetaRow::ColWidth), std::to_string((24 * 6 + 8) * 20));
    EXPECT_EQ(Flex().Col(allocation).width, (24 * 6 + 8) * 20);
    // "Latitude" is wider than its two-digit values.
    EXPECT_EQ(Flex().Col(latitude).width, (8 * 6 + 8) * 20);

    document.FinishEdit(kFirst, allocation, std::string(400, 'x'));
    document.AutoSize({allocation}, measurer, {});
    EXPECT_EQ(Flex().Col(allocation).width, kMaxColumnWidth);
}

TEST_F(ColumnPropertiesTest, ShowsAndHidesOnlyTheUsersColumns) {
    ASSERT_TRUE(document.ShowColumns({{latitude, false}}));
    EXPECT_TRUE(Flex().Col(latitude).hidden);
    EXPECT_EQ(Meta(latitude, MetaRow::Hidden), "Hide");

    const int display = FirstOf("Display");
    const auto revision = Flex().Revision();
    EXPECT_FALSE(document.ShowColumns({{latitude, true}, {display, false}}));
    EXPECT_EQ(Flex().Revision(), revision);
    EXPECT_TRUE(Flex().Col(latitude).hidden);

    ASSERT_TRUE(document.ShowColumns({{latitude, true}}));
    EXPECT_FALSE(Flex().Col(latitude).hidden);
    EXPECT_EQ(Meta(latitude, MetaRow::Hidden), "Show");
}

}  // namespace
}  // namespace synthara::shell
