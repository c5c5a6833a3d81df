#pragma once
// Peto's observed minus expected and its variance, as entered.
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

void ComputeFromPeto(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);

}  // namespace synthara::effectsize
