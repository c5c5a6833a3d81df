#pragma once
// Means of two groups: independent groups from means and SDs, a difference,
// d, or a t- or p-value; one group measured twice (paired); and two groups
// each measured before and after (pre-post).
#include <array>
#include <string_view>

#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

// A format of a t- or p-value: what it gives, and the words that open its
// trails, taken from `openings` in the order of the t and p entries.
struct MeansTestRow : sheet::MeansTestKind {
    std::string_view opening;
};
MeansTestRow TestRowOf(sheet::MeansEntry entry, const std::array<std::string_view, 6>& openings);

void ComputeFromMeans(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);
void ComputeFromMeansTest(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context);
void ComputeFromPairedMeans(const sheet::FormatDef& format, WorkingSet& ws,
                            ComputeContext& context);
void ComputeFromPairedMeansTest(const sheet::FormatDef& format, WorkingSet& ws,
                                ComputeContext& context);
void ComputeFromPrePostMeans(const sheet::FormatDef& format, WorkingSet& ws,
                             ComputeContext& context);

}  // namespace synthara::effectsize
