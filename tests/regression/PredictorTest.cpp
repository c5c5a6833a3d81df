#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "analysis/AnalysisFixture.h"
#include "regression/Predictor.h"
#include "regression/Regression.h"

namespace synthara::regression {
namespace {

using testing::AnalysisFixture;
using testing::RowValues;

// A moderator column of the given type after the sheet's used columns, one
// cell a row.
void AddModerator(sheet::Sheet& sheet, const std::string& title, const std::string& type,
                  const std::vector<std::string>& cells) {
    int col = sheet.Flex().FixedCols();
    while (!sheet.MetaIs(col, sheet::MetaRow::Function, "Empty") || !sheet.isColEmpty(col))
        ++col;
    sheet.SetMeta(col, sheet::MetaRow::ColumnHeader, title);
    sheet.SetMeta(col, sheet::MetaRow::DataType, type);
    sheet.SetMeta(col, sheet::MetaRow::Function, "Moderator");
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (!cells[i].empty())
            sheet.SetText(sheet::FixedRowCount + static_cast<int>(i), col, cells[i]);
}

std::vector<RowValues> Rows(int k, std::array<std::string, 4> levels = {}) {
    std::vector<RowValues> rows;
    for (int i = 0; i < k; ++i)
        rows.push_back({"S" + std::to_string(i + 1), 0.1 * i, 0.05 + 0.01 * i, {}, {}, levels});
    return rows;
}

TEST(LoadDropDown, NumericModeratorsAfterNoPredictor) {
    AnalysisFixture f(Rows(3));
    AddModerator(f.sheet, "Arm", "Categorical", {"a", "b", "c"});
    AddModerator(f.sheet, "Latitude", "Decimal", {"1.5", "2", "3"});
    AddModerator(f.sheet, "Year", "Integer", {"1990", "1991", "1992"});
    AddModerator(f.sheet, "Notes", "Not specified", {"1", "2", "3"});
    EXPECT_EQ(LoadDropDown(f.sheet.Flex()),
              (std::vector<std::string>{"No predictor", "Latitude", "Year"}));
    EXPECT_LT(PredictorColumn(f.sheet.Flex(), "Arm"), 0);
    EXPECT_GE(PredictorColumn(f.sheet.Flex(), "Year"), 0);
}

// The run button's checks in their order, each with its box.
TEST(PrepareRegression, ChecksInOrder) {
    using Adjust = std::function<void(analysis::Selection&)>;
    const std::vector<std::string> tooFew = {
        "There must be at least three rows of data to run meta regression      "};
    const std::vector<std::string> notNumeric = {
        "The predictor variable includes non-numeric or blank values       ",
        "To exclude rows return to the Core analysis module     ",
        "Then use 'Select by' on the computational options menu       "};
    const struct {
        const char* name;
        std::vector<RowValues> rows;
        std::vector<std::string> x;
        std::string predictor;
        Adjust adjust;
        std::vector<std::string> lines;  // empty: the studies go to the regression
    } cases[] = {
        {"no predictor",
         Rows(4),
         {"1", "2", "3", "4"},
         "No predictor",
         {},
         {"Please select a predictor variable  "}},
        {"study as the unit of subgroups",
         Rows(4, {"sub", "", "", ""}),
         {"1", "2", "3", "4"},
         "X",
         [](analysis::Selection& s) { s.studyIsUnit = true; },
         {"Cannot run meta regression      ", "when 'Use study as the unit of analysis'      ",
          "is selected for subgroups     "}},
        {"the mean of outcomes",
         Rows(4, {"", "", "o", ""}),
         {"1", "2", "3", "4"},
         "X",
         [](analysis::Selection& s) { s.Level(4).use = analysis::LevelUse::Mean; },
         {"Cannot run meta regression when 'Use the mean' is selected      ",
          "for comparisons, outcomes, or time points     "}},
        // Before the count: a blank among two rows is refused for the blank.
        {"blank predictor", Rows(2), {"1", ""}, "X", {}, notNumeric},
        {"text predictor", Rows(4), {"1", "2", "n/a", "4"}, "X", {}, notNumeric},
        {"two rows", Rows(2), {"1", "2"}, "X", {}, tooFew},
        {"a row left out leaves two",
         Rows(3),
         {"1", "2", "3"},
         "X",
         [](analysis::Selection& s) { s.Level(1).excluded = {"S2"}; },
         tooFew},
        {"one predictor value",
         Rows(4),
         {"2", "2", "2.0", "2"},
         "X",
         {},
         {"There must be some variation in the predictor variable     "}},
        // Grouped typing is read as the user's locale reads it.
        {"runs", Rows(3), {"1,200", "2", "3"}, "X", {}, {}},
        {"the excluded row's text is not read",
         Rows(4),
         {"1", "x", "3", "4"},
         "X",
         [](analysis::Selection& s) { s.Level(1).excluded = {"S2"}; },
         {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AnalysisFixture f(c.rows);
        AddModerator(f.sheet, "X", "Decimal", c.x);
        if (c.adjust) f.analysis.AdjustSelection = c.adjust;
        f.Run();
        ASSERT_EQ(f.status, analysis::ComputeStatus::Done);
        const Prepared p = PrepareRegression(f.sheet, f.analysis, c.predictor);
        if (c.lines.empty()) {
            ASSERT_FALSE(p.refusal) << p.refusal->Text();
            EXPECT_GE(p.table.Rows(), 3);
            EXPECT_EQ(p.table.Col(Key::X)[0], c.x[0] == "1,200" ? 1200 : 1);
            continue;
        }
        ASSERT_TRUE(p.refusal);
        EXPECT_EQ(p.refusal->title, "Meta regression");
        EXPECT_EQ(p.refusal->lines, c.lines);
    }
}

}  // namespace
}  // namespace synthara::regression
