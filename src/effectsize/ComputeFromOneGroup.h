#pragma once
// One group: a proportion, a rate over person-time, or a mean.
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

void ComputeFromEventsOneGroup(const sheet::FormatDef& format, WorkingSet& ws,
                               ComputeContext& context);
void ComputeFromEventsPYOneGroup(const sheet::FormatDef& format, WorkingSet& ws,
                                 ComputeContext& context);
void ComputeFromMeansOneGroup(const sheet::FormatDef& format, WorkingSet& ws,
                              ComputeContext& context);

}  // namespace synthara::effectsize
