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

// Checks a point given in `form` (the role of `pointKind`): with its limits
// by the rules of `kind`; or with its standard error or variance, a ratio
// then given as its log (RoleKind::LogRatio) and a difference's variance
// told in the words for a standard error. Returns the limits entered.
CILimits CheckEnteredPoint(sheet::PointForm form, CIKind kind, sheet::RoleKind pointKind,
                           const FormatRoles& roles, WorkingSet& ws, ComputeOptions& options);

// A ratio or difference the user computed, as entered and as analysed: a
// ratio in logs (`value` and `se` of its log), a difference as it is.
struct EnteredPoint {
    CILimits limits = NoLimits;
    double point = 0, lower = 0, upper = 0, critical = 0;  // the limits' normal deviate
    double value = 0, se = 0;
};
// Checks the point (CheckEnteredPoint of a ratio's or a difference's roles)
// and reads it into `entered`; false when the row is refused.
bool ReadEnteredPoint(sheet::PointForm form, CIKind kind, const FormatRoles& roles, WorkingSet& ws,
                      ComputeOptions& options, EnteredPoint& entered);

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
