#pragma once
// Effects the user computed already, given with a standard error, a
// variance or confidence limits: ratios analysed in logs, differences and
// generic estimates, differences in means, and correlations.
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

void ComputePointLog(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);
void ComputePoint(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);
void ComputePointTIndep(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);
void ComputePointTPaired(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);
void ComputePointCorr(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);

}  // namespace synthara::effectsize
