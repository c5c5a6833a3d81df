#pragma once
// What the procedures of computed effects share: the standard error from
// confidence limits, from a given SE or from a variance.
#include <initializer_list>
#include <string>

#include "effectsize/FormatRoles.h"
#include "effectsize/StdDiffChain.h"
#include "effectsize/Validators.h"

namespace synthara::effectsize {

// The normal deviate (ratios and differences) or the t-value of `df`
// (means) that limits at `level` lie from the point.
double CriticalZ(double level);
double CriticalT(double level, double df);

// The standard error from the limits entered, on the estimate's scale: one
// limit's distance from the point, or half the width when both are there.
double SEFromLimits(CILimits limits, double point, double lower, double upper, double critical);

// The standard error of a point given with its SE or its variance.
double GivenSE(sheet::PointForm form, const FormatRoles& roles);

// A difference in means as the user gave it, with the t-value its limits
// were read with.
struct GivenPoint {
    sheet::PointForm form = sheet::PointForm::StdErr;
    CILimits limits = NoLimits;
    double point = 0, se = 0, lower = 0, upper = 0, critical = 0;
};
// Validates a difference in means given with limits (its sizes then
// required) or with a standard error or variance (its sizes optional: the
// first in words for the first size, a second in words for the second), and
// the effect direction; true when the row stands. Reads the point and the
// limits into `given`.
bool CheckGivenDifference(const FormatRoles& roles, sheet::RoleKind pointKind,
                          std::initializer_list<sheet::RoleKind> sizes, WorkingSet& ws,
                          ComputeOptions& options, GivenPoint& given);
// Its standard error: from the limits with the t-value of `df`, where a df
// below 1 refuses the row; false when refused.
bool FindGivenSE(const FormatRoles& roles, double df, WorkingSet& ws, GivenPoint& given);

// The trail of the index entered: its point and how its SE was found.
void GivenPointTrail(const GivenPoint& given, std::string& trail);

// The chain from the d of a difference in means the user gave: r and Z,
// the log odds ratio (whose refusal discards the whole row), and g only
// where the sizes are known (`sized`).
void ChainFromGivenD(const ChainInput& chain, bool sized, WorkingSet& ws,
                     const ComputeOptions& options);

// A family's result refused after some indices were stored: none of them stands.
void DiscardResults(WorkingSet& ws);

// "Cannot compute without sample size." as the trail of each index.
void NeedsSampleSize(WorkingSet& ws, std::initializer_list<int> indices);

}  // namespace synthara::effectsize
