#pragma once
// Two-group event data: the 2-by-2 table and every index it yields.
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

// Reads the roles by their meaning in `format`; a format without a two-group
// event layout shows the "Error" box and computes nothing.
void ComputeFromEvents(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);

}  // namespace synthara::effectsize
