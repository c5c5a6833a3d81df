// The validator of a point estimate with its confidence limits.
#include <cmath>
#include <string_view>

#include "effectsize/ValidatorSupport.h"
#include "effectsize/Validators.h"

namespace synthara::effectsize {

using namespace validate;

namespace {

constexpr std::string_view kLowerBelowPoint = "The lower limit must be less than the point value";
constexpr std::string_view kUpperAbovePoint =
    "The upper limit must be greater than the point value";
constexpr std::string_view kLowerExceedsZero = "The lower limit must exceed zero";
constexpr std::string_view kLowerAboveZero = "The lower limit must be greater than zero";
constexpr std::string_view kUpperExceedsZero = "The upper limit must exceed zero";

// Both limits: each fault is told from the side of each limit, so the same
// fault may be reported twice in two wordings.
void CheckBothLimits(bool ratio, double point, int lowerRole, int upperRole, WorkingSet& ws) {
    const double lower = Val(ws, lowerRole), upper = Val(ws, upperRole);
    if (lower >= point) Blame(ws, lowerRole, kLowerBelowPoint);
    if (lower >= upper) Blame(ws, lowerRole, "The lower limit must be less than the upper limit");
    if (ratio && lower <= 0) Blame(ws, lowerRole, kLowerAboveZero);
    if (upper <= point) Blame(ws, upperRole, kUpperAbovePoint);
    if (upper <= lower)
        Blame(ws, upperRole, "The upper limit must be greater than the lower limit");
    if (ratio && lower <= 0) Blame(ws, lowerRole, kLowerExceedsZero);
    if (ratio && upper <= 0) Blame(ws, upperRole, kUpperExceedsZero);
}

// The two half-widths may differ by the factor the options allow, on the
// scale the data are analysed on.
void CheckSymmetry(bool ratio, double point, int lowerRole, int upperRole, WorkingSet& ws,
                   double allowed) {
    const double lower = Val(ws, lowerRole), upper = Val(ws, upperRole);
    const double d1 =
        ratio ? std::fabs(std::log(point) - std::log(lower)) : std::fabs(point - lower);
    const double d2 =
        ratio ? std::fabs(std::log(upper) - std::log(point)) : std::fabs(point - upper);
    if (allowed < d1 / d2 || allowed < d2 / d1)
        BlameBoth(ws, lowerRole, upperRole,
                  ratio ? "Log values for lower and upper limits are not symmetric"
                        : "The lower and upper limits are not symmetric");
}

}  // namespace

CILimits CheckCI(CIKind kind, int pointRole, int lowerRole, int upperRole, int levelRole,
                 WorkingSet& ws, ComputeOptions& options) {
    // A factor of exactly 1 would refuse limits that differ in the last digit.
    if (options.FudgeFactor == 1) options.FudgeFactor = 1.0001;
    const bool ratio = kind == CIKind::Ratio;
    const bool haveLower = !Missing(ws, lowerRole), haveUpper = !Missing(ws, upperRole);
    const CILimits limits = haveLower && haveUpper ? BothLimits
                            : haveLower            ? LowerOnly
                            : haveUpper            ? UpperOnly
                                                   : NoLimits;
    if (Missing(ws, pointRole)) Blame(ws, pointRole, "The point estimate is missing");
    if (limits == NoLimits)
        BlameBoth(ws, lowerRole, upperRole, "The lower and upper limits are missing");
    if (Missing(ws, levelRole)) Blame(ws, levelRole, "The confidence level is missing");
    if (!ws.RowErrors.empty()) return limits;

    const double point = Val(ws, pointRole), level = Val(ws, levelRole);
    if (level < 0.6 || level > 0.999)
        Blame(ws, levelRole, "The confidence level must fall in the range of .600 to .999");
    if (ratio && point <= 0) Blame(ws, pointRole, "The point estimate must exceed zero");
    if (!ws.RowErrors.empty()) return limits;

    switch (limits) {
        case BothLimits:
            CheckBothLimits(ratio, point, lowerRole, upperRole, ws);
            if (ws.RowErrors.empty())
                CheckSymmetry(ratio, point, lowerRole, upperRole, ws, options.FudgeFactor);
            break;
        case LowerOnly:
            if (Val(ws, lowerRole) >= point) Blame(ws, lowerRole, kLowerBelowPoint);
            if (ratio && Val(ws, lowerRole) <= 0) {
                Blame(ws, lowerRole, kLowerExceedsZero);
                Blame(ws, lowerRole, kLowerAboveZero);
            }
            break;
        case UpperOnly:
            if (Val(ws, upperRole) <= point) Blame(ws, upperRole, kUpperAbovePoint);
            if (ratio && Val(ws, upperRole) <= 0) Blame(ws, upperRole, kUpperExceedsZero);
            break;
        case NoLimits:
            break;
    }
    return limits;
}

}  // namespace synthara::effectsize
