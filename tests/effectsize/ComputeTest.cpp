#include "effectsize/Compute.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>

#include "effectsize/RowResult.h"
#include "effectsize/Trail.h"
#include "sheet/BlockTestSheet.h"
#include "support/Tolerance.h"

namespace synthara::effectsize {
namespace {

using sheet::FixedRowCount;
using synthara::testing::IsNear;

// A new sheet with a study-name column and one block of two-group events.
class ComputeOnSheet : public sheet::BlockTestSheet {
  protected:
    ComputeOnSheet() {
        AddBlock(sheet::kCohort);
        sheet.FindESCols(sheet::kCohort);
    }

    int Entry(int role) const { return sheet.EntryColIndex()[static_cast<std::size_t>(role)]; }
    int Display(int index, int attr) const {
        return sheet
            .DisplayColTable()[static_cast<std::size_t>(index)][static_cast<std::size_t>(attr)];
    }
    void Enter(int row, std::array<const char*, 4> texts) {
        sheet.SetText(row, sheet.GetCol(0, 1), "Trial");
        for (int role = 0; role < 4; ++role) {
            if (*texts[static_cast<std::size_t>(role)])
                sheet.SetText(row, Entry(role), texts[static_cast<std::size_t>(role)]);
            else
                sheet.ClearCell(row, Entry(role));
        }
    }
    void ComputeRow(int row) {
        int first = row, last = row;
        Compute(sheet, first, last, context);
    }
    bool Red(int row, int role) const {
        return sheet.Flex().CellBackColor(row, Entry(role)) == sheet::kRed;
    }
    std::string ErrorText(int row) const { return sheet.Flex().Text(row, sheet.ErrorCol()); }
    std::string Formula(int row, int index) {
        return FormulaText(sheet, row, index, options, prompter);
    }

    ComputeOptions options;
    ComputeContext context{options, prompter};
    static constexpr int kRow = FixedRowCount;
};

TEST_F(ComputeOnSheet, ResultsAreWrittenAsNumbersWithTheirTrail) {
    Enter(kRow, {"4", "123", "11", "139"});
    sheet.SetNumber(kRow, Entry(3), 139);  // a number cell counts like typed text
    int first = 0, last = 0;
    Compute(sheet, first, last, context);
    EXPECT_EQ(first, sheet.Flex().FixedRows());
    EXPECT_EQ(last, sheet.Flex().Rows() - 1);

    const sheet::Cell& point = sheet.Flex().At(kRow, Display(1, sheet::AttrPoint));
    ASSERT_TRUE(point.IsNumber());
    EXPECT_TRUE(IsNear(point.Number(), -0.9386941408703922));
    EXPECT_TRUE(IsNear(sheet.Flex().At(kRow, Display(1, sheet::AttrVariance)).Number(),
                       0.5975993241743407 * 0.5975993241743407));
    EXPECT_EQ(sheet.Flex().At(kRow, Display(1, sheet::AttrValid)).Number(), 1.0);
    EXPECT_EQ(sheet.Flex().At(kRow, Display(31, sheet::AttrPoint)).Number(), 123.0);
    // The trail is built when read; the sheet keeps no text of it.
    EXPECT_TRUE(sheet.Flex().IsBlank(kRow, Display(1, sheet::AttrFormula)));
    const std::string trail = Formula(kRow, 1);
    EXPECT_EQ(trail.rfind("Starting with\r\nCells in 2x2 table", 0), 0u);
    EXPECT_EQ(Formula(kRow, 2), trail);
    // The odds ratio has a point only.
    EXPECT_TRUE(sheet.Flex().IsBlank(kRow, Display(2, sheet::AttrStdErr)));
    // Indices this format does not yield stay empty.
    EXPECT_TRUE(sheet.Flex().IsBlank(kRow, Display(11, sheet::AttrPoint)));
    EXPECT_TRUE(sheet.Flex().IsBlank(kRow, Display(11, sheet::AttrValid)));
    EXPECT_EQ(ErrorText(kRow), "");
    for (int role = 0; role < 4; ++role)
        EXPECT_FALSE(Red(kRow, role));
    EXPECT_EQ(sheet.Flex().Text(kRow, Entry(0)), "4");
}

TEST_F(ComputeOnSheet, BadCellsTurnRedAndMissingOnesDoNot) {
    Enter(kRow, {"124", "123", "11", "139"});
    ComputeRow(kRow);
    const std::string expected =
        "\r  " + sheet.ColumnLabel(Entry(0)) + " cannot exceed " + sheet.ColumnLabel(Entry(1));
    EXPECT_EQ(ErrorText(kRow), expected);
    EXPECT_TRUE(Red(kRow, 0));
    EXPECT_TRUE(Red(kRow, 1));
    EXPECT_FALSE(Red(kRow, 2));
    EXPECT_EQ(Formula(kRow, 1), expected);
    EXPECT_TRUE(sheet.Flex().IsBlank(kRow, Display(1, sheet::AttrPoint)));
    EXPECT_TRUE(sheet.Flex().IsBlank(kRow, Display(1, sheet::AttrValid)));

    // Mended, the kRow computes and loses its colours and its error.
    Enter(kRow, {"4", "123", "11", "139"});
    ComputeRow(kRow);
    EXPECT_FALSE(Red(kRow, 0));
    EXPECT_EQ(ErrorText(kRow), "");
    EXPECT_TRUE(sheet.Flex().At(kRow, Display(1, sheet::AttrPoint)).IsNumber());

    // Text that is not a number counts as missing and is not marked.
    Enter(kRow, {"4", "123", "abc", ""});
    ComputeRow(kRow);
    EXPECT_EQ(SplitErrors(ErrorText(kRow)),
              (std::vector<std::string>{"One of the required values is missing",
                                        "One of the required values is missing"}));
    EXPECT_FALSE(Red(kRow, 2));
    EXPECT_FALSE(Red(kRow, 3));
    EXPECT_TRUE(sheet.Flex().IsBlank(kRow, Display(1, sheet::AttrPoint)));
}

TEST_F(ComputeOnSheet, EmptiedRowClearsItsResultsButKeepsItsError) {
    Enter(kRow, {"4", "123", "11", "139"});
    Enter(kRow + 1, {"124", "123", "11", "139"});
    int first = kRow, last = kRow + 1;
    Compute(sheet, first, last, context);
    const std::string error = ErrorText(kRow + 1);
    ASSERT_NE(error, "");

    Enter(kRow, {"", "", "", ""});
    Enter(kRow + 1, {"", "", "", ""});
    Compute(sheet, first, last, context);
    for (int r : {kRow, kRow + 1}) {
        EXPECT_TRUE(sheet.Flex().IsBlank(r, Display(1, sheet::AttrPoint)));
        EXPECT_EQ(Formula(r, 1), "");
        EXPECT_TRUE(sheet.Flex().IsBlank(r, Display(31, sheet::AttrPoint)));
    }
    EXPECT_EQ(ErrorText(kRow + 1), error);
    EXPECT_TRUE(prompter.shown.empty());
}

TEST_F(ComputeOnSheet, EvaluatedRowsMatchWhatComputeWrites) {
    Enter(kRow, {"4", "123", "11", "139"});
    Enter(kRow + 1, {"124", "123", "11", "139"});
    Enter(kRow + 2, {"", "", "", ""});
    sheet.FindFormats(kRow, kRow + 2);  // the rows' formats, as typing gives them
    const RowResult before = EvaluateRow(sheet, kRow, options, prompter);
    EXPECT_TRUE(
        sheet.Flex().IsBlank(kRow, Display(1, sheet::AttrPoint)));  // the sheet is untouched
    EXPECT_EQ(before.definition, sheet::FindFormat(sheet::kCohort));
    ASSERT_NE(before.Find(Ix::OddsRatio), nullptr);
    EXPECT_FALSE(before.Find(Ix::OddsRatio)->stdErr.has_value());

    int first = kRow, last = kRow + 2;
    Compute(sheet, first, last, context);
    for (int row = kRow; row <= kRow + 1; ++row) {
        const RowResult result = EvaluateRow(sheet, row, options, prompter);
        ASSERT_TRUE(result.hasEntry);
        EXPECT_EQ(result.errors, ErrorText(row));
        for (int role = 0; role < 4; ++role)
            EXPECT_EQ(!result.marks[static_cast<std::size_t>(role)].empty(), Red(row, role));
        for (int i = 1; i <= IndexCount; ++i) {
            if (Display(i, sheet::AttrPoint) <= 0) continue;
            const IndexResult* index = result.Find(i);
            const bool valid = index != nullptr && index->valid;
            EXPECT_EQ(valid, !sheet.Flex().IsBlank(row, Display(i, sheet::AttrValid))) << i;
            if (!valid) continue;
            EXPECT_EQ(index->point, sheet.Flex().At(row, Display(i, sheet::AttrPoint)).Number());
            const sheet::Cell& se = sheet.Flex().At(row, Display(i, sheet::AttrStdErr));
            EXPECT_EQ(index->stdErr.has_value(), se.IsNumber()) << i;
            if (se.IsNumber()) {
                EXPECT_EQ(*index->stdErr, se.Number());
            }
            EXPECT_EQ(index->trail, Formula(row, i)) << i;
        }
    }
    // Read back from the cells, a computed row says what evaluating it says.
    ShownReader reader(sheet);
    for (int row = kRow; row <= kRow + 2; ++row) {
        RowResult evaluated = EvaluateRow(sheet, row, options, prompter);
        KeepShownIndices(sheet, evaluated);
        const RowResult shown = reader.Read(row);
        EXPECT_EQ(shown.format, evaluated.format);
        EXPECT_EQ(shown.errors, evaluated.errors);
        ASSERT_EQ(shown.indices.size(), evaluated.indices.size()) << row;
        for (std::size_t k = 0; k < shown.indices.size(); ++k) {
            EXPECT_EQ(shown.indices[k].index, evaluated.indices[k].index);
            EXPECT_EQ(shown.indices[k].point, evaluated.indices[k].point);
            EXPECT_EQ(shown.indices[k].stdErr, evaluated.indices[k].stdErr);
            EXPECT_EQ(shown.indices[k].variance, evaluated.indices[k].variance);
        }
    }
    const RowResult empty = EvaluateRow(sheet, kRow + 2, options, prompter);
    EXPECT_FALSE(empty.hasEntry);
    EXPECT_TRUE(empty.indices.empty());
    EXPECT_EQ(empty.format, "");  // an emptied row loses its format
}

}  // namespace
}  // namespace synthara::effectsize
