#pragma once
// Two-group event data: the 2-by-2 table and every index it yields.
#include <string_view>

#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

void ComputeFromEvents(std::string_view format, WorkingSet& ws, ComputeContext& context);

}  // namespace synthara::effectsize
