#pragma once
// Means of two groups: independent groups from means and SDs, a difference,
// d, or a t- or p-value; one group measured twice (paired); and two groups
// each measured before and after (pre-post).
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

void ComputeFromMeans(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);
void ComputeFromMeansTest(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);
void ComputeFromPairedMeans(const sheet::FormatDef& format, WorkingSet& ws,
                            ComputeContext& context);
void ComputeFromPairedMeansTest(const sheet::FormatDef& format, WorkingSet& ws,
                                ComputeContext& context);
void ComputeFromPrePostMeans(const sheet::FormatDef& format, WorkingSet& ws,
                             ComputeContext& context);

}  // namespace synthara::effectsize
