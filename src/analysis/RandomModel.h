#pragma once
// The random model's choices beyond the classic analysis: where the project
// keeps them, and the figures they add to the random summaries.
#include "analysis/Result.h"
#include "analysis/Tau2.h"
#include "sheet/grid/Grid.h"
#include "sheet/grid/Sheet.h"

namespace synthara::analysis {

// The choices kept in the sheet's Settings column; a sheet without them has
// the classic estimator and normal limits.
RandomModelOptions ReadRandomModel(const sheet::Grid& grid);
// Keeps the choices there, blank for the classic ones, so that a save takes them.
void WriteRandomModel(sheet::Sheet& sheet, const RandomModelOptions& options);

// Gives each random summary (model 2) of `result` its prediction interval,
// its limits of tau-squared, the estimator whose value it shows and, when
// asked for, the adjusted limits and test.
void AddRandomModelFigures(const Analysis& analysis, AnalysisResult& result);

}  // namespace synthara::analysis
