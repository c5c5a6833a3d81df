#pragma once
// Where the regression's studies come from: the predictors the sheet offers,
// each study row's predictor value, and the run button's checks, which give
// the studies of an analysis to the regression or say why not.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ports/Prompter.h"
#include "regression/RegressionTable.h"

namespace synthara::sheet {
class Grid;
class Sheet;
}  // namespace synthara::sheet

namespace synthara::analysis {
class Analysis;
}

namespace synthara::regression {

inline constexpr std::string_view kNoPredictor = "No predictor";

// The list of predictors: "No predictor", then the title of each moderator
// column of type "Integer" or "Decimal", left to right.
std::vector<std::string> LoadDropDown(const sheet::Grid& grid);
// The numeric moderator column of that title; -1 when none.
int PredictorColumn(const sheet::Grid& grid, std::string_view title);

// A study row's predictor, read as the user typed it; nothing when the cell
// is empty or not a number, or the row was made by merging.
std::optional<double> PredictorValue(const sheet::Sheet& sheet, int column,
                                     const analysis::Analysis& analysis, int row);

struct Prepared {
    std::optional<ports::Box> refusal;  // the first check that failed
    RegressionTable table;              // the studies, when no check failed
};

// The run button's checks in order, on the analysis's study rows that take
// part (a valid row number), with the predictor of that title.
Prepared PrepareRegression(const sheet::Sheet& sheet, const analysis::Analysis& analysis,
                           std::string_view predictor);

}  // namespace synthara::regression
