#pragma once
// Events over person-time in two groups: rate ratio and rate difference.
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

void ComputeFromEventsPersonYears(const sheet::FormatDef& format, WorkingSet& ws,
                                  ComputeContext& context);

}  // namespace synthara::effectsize
