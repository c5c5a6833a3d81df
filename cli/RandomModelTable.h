#pragma once
// The readable part of `analyze` that belongs to the random model: its
// prediction intervals and limits of tau-squared, and under them the
// estimator and the limits in use.
#include <iosfwd>

#include "analysis/Result.h"

namespace synthara::cli {

void PrintRandomModel(const analysis::AnalysisResult& result, bool grouped, std::ostream& out);

}  // namespace synthara::cli
