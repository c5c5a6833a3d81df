#include "regression/Predictor.h"

#include <cmath>
#include <cstddef>

#include "analysis/Analysis.h"
#include "regression/Regression.h"
#include "sheet/grid/MetaRows.h"
#include "sheet/grid/Sheet.h"

namespace synthara::regression {
namespace {

using sheet::MetaRow;

bool IsNumericModerator(const sheet::Grid& g, int col) {
    return g.TextIs(MetaRow::Function, col, "Moderator") &&
           (g.TextIs(MetaRow::DataType, col, "Integer") ||
            g.TextIs(MetaRow::DataType, col, "Decimal"));
}

bool TakesPart(const analysis::WorkingTable& vs, int row) {
    return vs.validRow[row] > 0 && vs.kind[row] == analysis::RowKind::Study;
}

ports::Box Refusal(std::vector<std::string> lines) {
    return ports::Box{std::string(kRegressionTitle), std::move(lines)};
}

bool LevelUsed(const analysis::Analysis& analysis, int level) {
    return analysis.vs.levelPresent[static_cast<std::size_t>(level - 1)];
}

// "Use the mean" at a level the sheet has.
bool MeanInUse(const analysis::Analysis& analysis) {
    for (int level = 3; level <= analysis::SelectionLevels; ++level)
        if (LevelUsed(analysis, level) &&
            analysis.selection.Level(level).use == analysis::LevelUse::Mean)
            return true;
    return false;
}

}  // namespace

std::vector<std::string> LoadDropDown(const sheet::Grid& grid) {
    std::vector<std::string> list{std::string(kNoPredictor)};
    for (int c = 0; c < grid.Cols(); ++c)
        if (IsNumericModerator(grid, c)) list.push_back(grid.Text(MetaRow::ColumnHeader, c));
    return list;
}

int PredictorColumn(const sheet::Grid& grid, std::string_view title) {
    for (int c = 0; c < grid.Cols(); ++c)
        if (IsNumericModerator(grid, c) && grid.TextIs(MetaRow::ColumnHeader, c, title)) return c;
    return -1;
}

// The one place a row's predictor is read. The working table does not hold
// moderators yet, so the value comes from the sheet's row the table's row
// was filled from; a row that merging made has none.
std::optional<double> PredictorValue(const sheet::Sheet& sheet, int column,
                                     const analysis::Analysis& analysis, int row) {
    const int sheetRow = analysis.vs.sheetRow[row];
    if (sheetRow == analysis::NoRow || column < 0) return std::nullopt;
    const sheet::Cell& cell = sheet.Flex().At(sheetRow, column);
    double value = 0;
    if (cell.IsNumber()) {
        value = cell.Number();
    } else if (!cell.IsText() ||
               !sheet::ParseTypedNumber(cell.TextView(), sheet.Separators, value)) {
        return std::nullopt;
    }
    if (!std::isfinite(value)) return std::nullopt;
    return value;
}

Prepared PrepareRegression(const sheet::Sheet& sheet, const analysis::Analysis& analysis,
                           std::string_view predictor) {
    Prepared prepared;
    const sheet::Grid& grid = sheet.Flex();
    const int column = PredictorColumn(grid, predictor);
    if (predictor == kNoPredictor || column < 0) {
        prepared.refusal = Refusal({"Please select a predictor variable  "});
        return prepared;
    }
    if (LevelUsed(analysis, 2) && analysis.selection.studyIsUnit) {
        prepared.refusal = Refusal({"Cannot run meta regression      ",
                                    "when 'Use study as the unit of analysis'      ",
                                    "is selected for subgroups     "});
        return prepared;
    }
    if (MeanInUse(analysis)) {
        prepared.refusal =
            Refusal({"Cannot run meta regression when 'Use the mean' is selected      ",
                     "for comparisons, outcomes, or time points     "});
        return prepared;
    }
    const analysis::WorkingTable& vs = analysis.vs;
    std::vector<std::string> names;
    std::vector<double> T, V, X;
    for (int row = 0; row < vs.Rows(); ++row) {
        if (!TakesPart(vs, row)) continue;
        const std::optional<double> x = PredictorValue(sheet, column, analysis, row);
        if (!x) {
            prepared.refusal =
                Refusal({"The predictor variable includes non-numeric or blank values       ",
                         "To exclude rows return to the Core analysis module     ",
                         "Then use 'Select by' on the computational options menu       "});
            return prepared;
        }
        names.emplace_back(vs.PopulationText(0, row));
        T.push_back(vs.point[row]);
        V.push_back(vs.variance[row]);
        X.push_back(*x);
    }
    if (names.size() < 3) {
        prepared.refusal =
            Refusal({"There must be at least three rows of data to run meta regression      "});
        return prepared;
    }
    bool varies = false;
    for (const double x : X)
        varies = varies || x != X.front();
    if (!varies) {
        prepared.refusal = Refusal({"There must be some variation in the predictor variable     "});
        return prepared;
    }
    prepared.table.SetStudies(std::move(names), std::move(T), std::move(V), std::move(X));
    return prepared;
}

}  // namespace synthara::regression
