#pragma once
// Case-control tables: exposure among cases and among controls, and the odds
// ratio with what converts from it.
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

void ComputeFromEventsCaseControl(const sheet::FormatDef& format, WorkingSet& ws,
                                  ComputeContext& context);

}  // namespace synthara::effectsize
