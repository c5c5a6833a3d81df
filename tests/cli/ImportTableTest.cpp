#include <gtest/gtest.h>

#include "sheet/import/ImportTable.h"
#include "support/ScriptedPrompter.h"

namespace synthara::sheet {
namespace {

constexpr std::string_view kEventsN = "Events and sample size in each group";
constexpr std::string_view kEventsNonEvents = "Events and non-events in each group";

struct Imported {
    testing::ScriptedPrompter prompter;
    Sheet sheet{prompter};
    ImportResult result;

    Imported(std::string_view text, std::string_view byDefault) {
        const auto read = ReadDelimitedText(text, ',');
        EXPECT_TRUE(read.ok) << read.message;
        result = ImportTable(sheet, read.table, byDefault, "in.csv");
    }

    int Col(std::string_view function, std::string_view attribute,
            std::string_view format = "") const {
        for (int c = 0; c < sheet.Flex().Cols(); ++c) {
            if (sheet.MetaIs(c, MetaRow::Function, function) &&
                sheet.MetaIs(c, MetaRow::Attribute, attribute) &&
                (format.empty() || sheet.MetaIs(c, MetaRow::FormatName, format)))
                return c;
        }
        return -1;
    }
    int ModeratorCol(std::string_view title) const {
        for (int c = 0; c < sheet.Flex().Cols(); ++c)
            if (sheet.MetaIs(c, MetaRow::Function, "Moderator") &&
                sheet.MetaIs(c, MetaRow::ColumnHeader, title))
                return c;
        return -1;
    }
    std::string Cell(int dataRow, int col) const {
        return col < 0 ? "<no column>" : sheet.Flex().Text(FixedRowCount + dataRow, col);
    }
};

TEST(ImportTable, RefusesWithFileLineAndColumn) {
    struct Case {
        const char* text;
        const char* byDefault;
        bool optionFault;
        const char* message;
    } cases[] = {
        {"", "Cohort 2x2 (Events)", false,
         "in.csv: the file is empty; its first line must hold the column titles"},
        {"Group-A Events,Group-B Events\n1,2\n", "Cohort 2x2 (Events)", false,
         "in.csv, line 1: there is no \"Study name\" column"},
        {"Study name,Group-A Events,Group-A Events\n", "Cohort 2x2 (Events)", false,
         "in.csv, line 1, column 3: the column title \"Group-A Events\" appears twice (also in "
         "column 2)"},
        {"Study name,Data format\nA,Cohort 2x2 (Events)\n\"B\nb\",No such format\n", "", false,
         "in.csv, line 3, column 2: unknown data format \"No such format\""},
        {"Study name,Data format\nA,\n", "", false,
         "in.csv, line 2, column 2: the row has no data format and no default format was given"},
        {"Study name,x\nA,1,2\n", "Cohort 2x2 (Events)", false,
         "in.csv, line 2, column 3: this field has no column title"},
        {"Study name\nA\n", "", true, ""},
        {"Study name\nA\n", "Nonsense", true, "Unknown data format \"Nonsense\""},
    };
    for (const auto& c : cases) {
        Imported in(c.text, c.byDefault);
        EXPECT_FALSE(in.result.ok) << c.text;
        EXPECT_EQ(in.result.optionFault, c.optionFault) << c.text;
        if (*c.message != '\0') {
            EXPECT_EQ(in.result.message, c.message) << c.text;
        }
    }
}

TEST(ImportTable, RefusesInvalidTextInATableBuiltByHand) {
    testing::ScriptedPrompter prompter;
    Sheet sheet(prompter);
    DelimitedTable table;
    table.rows = {{"Study name", "x"}, {"A", "ok"}, {"B", "\xC3("}};
    const auto result = ImportTable(sheet, table, "Cohort 2x2 (Events)", "t.csv");
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.message, "t.csv, line 3, column 2: not valid text");
}

TEST(ImportTable, ModeratorTypeFollowsItsCells) {
    using V = std::vector<std::string_view>;
    const NumberSeparators c;
    const NumberSeparators german{",", "."};
    EXPECT_EQ(ModeratorDataType(V{"1", "", " 20 ", "-3", "1,200"}, c), "Integer");
    EXPECT_EQ(ModeratorDataType(V{"1", "2.5", "1e3"}, c), "Decimal");
    EXPECT_EQ(ModeratorDataType(V{"1", "random"}, c), "Categorical");
    EXPECT_EQ(ModeratorDataType(V{"", " "}, c), "Categorical");
    // The cells are read in the user's locale.
    EXPECT_EQ(ModeratorDataType(V{"1", "2,5"}, c), "Categorical");
    EXPECT_EQ(ModeratorDataType(V{"1", "2,5"}, german), "Decimal");
    EXPECT_EQ(ModeratorDataType(V{"1.200", "3"}, german), "Integer");

    Imported in("Study name,ablat,alloc,Group-A Events\nA,44,random,4\nB,,,5\n", kEventsN);
    ASSERT_TRUE(in.result.ok) << in.result.message;
    const int ablat = in.ModeratorCol("ablat"), alloc = in.ModeratorCol("alloc");
    ASSERT_GE(ablat, 0);
    ASSERT_EQ(alloc, ablat + 1);  // in the file's order
    EXPECT_EQ(in.sheet.Meta(ablat, MetaRow::DataType), "Integer");
    EXPECT_EQ(in.sheet.Meta(alloc, MetaRow::DataType), "Categorical");
    EXPECT_EQ(in.sheet.Meta(alloc, MetaRow::Renamed), "Manual");
    EXPECT_EQ(in.Cell(0, alloc), "random");
    EXPECT_EQ(in.Cell(1, ablat), "");
}

TEST(ImportTable, KeepsTextAsTypedAndStoresDropDownCodes) {
    Imported in(
        "Study name,Correlation,Sample size,Effect direction\n"
        "A,0.50,1e2,Negative\nB,\"0,3\",12,3\nC,.2,40,sideways\nD,1,10,auto\n",
        "Correlation and sample size");
    ASSERT_TRUE(in.result.ok) << in.result.message;
    const int r = in.Col("Data Entry", "Correlation"), n = in.Col("Data Entry", "Sample size");
    const int dir = in.Col("Data Entry", "Effect direction");
    EXPECT_EQ(in.Cell(0, r), "0.50");
    EXPECT_EQ(in.Cell(0, n), "1e2");
    EXPECT_EQ(in.Cell(1, r), "0,3");
    EXPECT_EQ(in.Cell(2, r), ".2");
    EXPECT_EQ(in.Cell(0, dir), "2");
    EXPECT_EQ(in.Cell(1, dir), "3");
    EXPECT_EQ(in.Cell(2, dir), "sideways");  // left for the computation to refuse
    EXPECT_EQ(in.Cell(3, dir), "1");
}

TEST(ImportTable, RoleTitleFeedsEveryFormatThatHasIt) {
    Imported in(
        "Study name,Data format,Group-A Events,Group-A Total N,Group-A Non-events\n"
        "A,Cohort 2x2 (Events),4,123,\n"
        "\n"
        "B,Cohort 2x2 (All cells),6,,300\n"
        "C,,,,7\n",
        kEventsN);
    ASSERT_TRUE(in.result.ok) << in.result.message;
    EXPECT_EQ(in.result.dataRows, 3);
    const int eventsA = in.Col("Data Entry", "Group-A Events", kEventsN);
    const int eventsB = in.Col("Data Entry", "Group-A Events", kEventsNonEvents);
    ASSERT_GE(eventsA, 0);
    ASSERT_GE(eventsB, 0);
    EXPECT_EQ(in.Cell(0, eventsA), "4");
    EXPECT_EQ(in.Cell(0, eventsB), "");
    EXPECT_EQ(in.Cell(1, eventsB), "6");
    EXPECT_EQ(in.Cell(1, eventsA), "");
    // Row C's only entry lies in the other block: it keeps the default format
    // and its cell stays out of that block.
    EXPECT_EQ(in.Cell(2, in.Col("Data Entry", "Group-A Non-events", kEventsNonEvents)), "");

    const int format = in.sheet.FormatCol(), nick = in.sheet.NickNameCol();
    EXPECT_EQ(in.Cell(0, format), kEventsN);
    EXPECT_EQ(in.Cell(1, format), kEventsNonEvents);
    EXPECT_EQ(in.Cell(1, nick), "Cohort 2x2 (All cells)");
    EXPECT_EQ(in.Cell(2, format), kEventsN);
    EXPECT_EQ(in.Cell(2, in.sheet.GetCol(0, 1)), "C");
    EXPECT_TRUE(in.prompter.shown.empty());
}

// Blank lines, and lines of empty fields, make no rows wherever they stand;
// the rows that hold data keep the lines they stand on, for every message.
TEST(ImportTable, BlankLinesMakeNoRowsAndKeepTheLineNumbers) {
    const std::string titles = "Study name,Group-A Events,Data format\n";
    Imported in("\n" + titles + "\n,,\nA,4\n\n\n\nB,6\n,\n\nC,7\n\n", kEventsN);
    ASSERT_TRUE(in.result.ok) << in.result.message;
    EXPECT_EQ(in.result.dataRows, 3);
    EXPECT_EQ(in.result.lines, (std::vector<int>{5, 9, 12}));
    const int study = in.sheet.GetCol(0, 1);
    EXPECT_EQ(in.Cell(0, study), "A");
    EXPECT_EQ(in.Cell(1, study), "B");
    EXPECT_EQ(in.Cell(2, study), "C");
    EXPECT_EQ(in.Cell(3, study), "");
    EXPECT_EQ(in.Cell(2, in.sheet.FormatCol()), kEventsN);

    Imported refused(titles + "\n\nA,4\n\n\nB,5,No such format\n", kEventsN);
    EXPECT_EQ(refused.result.message,
              "in.csv, line 7, column 3: unknown data format \"No such format\"");

    // Rows left blank in a table built by hand are passed over the same way.
    DelimitedTable table;
    table.rows = {{"Study name"}, {""}, {"A"}, {}, {"B"}};
    testing::ScriptedPrompter prompter;
    Sheet sheet(prompter);
    const ImportResult byHand = ImportTable(sheet, table, kEventsN, "in.csv");
    ASSERT_TRUE(byHand.ok) << byHand.message;
    EXPECT_EQ(byHand.lines, (std::vector<int>{3, 5}));
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount + 1, sheet.GetCol(0, 1)), "B");
}

TEST(ImportTable, PopulationColumnsAndRoomForRows) {
    std::string text = "Outcome,Study name,Group-A Events\n";
    for (int i = 0; i < 300; ++i)
        text += "o,S" + std::to_string(i) + ",1\n";
    Imported in(text, kEventsN);
    ASSERT_TRUE(in.result.ok) << in.result.message;
    const int study = in.sheet.GetCol(0, 1), outcome = in.sheet.GetCol(0, 4);
    ASSERT_GE(study, 0);
    ASSERT_GE(outcome, 0);
    EXPECT_LT(study, outcome);
    EXPECT_EQ(in.Cell(299, study), "S299");
    EXPECT_GE(in.sheet.Flex().Rows(), FixedRowCount + 300 + 80);
}

}  // namespace
}  // namespace synthara::sheet
