#pragma once
// A chi-squared test of a 2-by-2 table with its total: the correlation and
// what follows from it.
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

void ComputeFromChiSquare(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);

}  // namespace synthara::effectsize
