// The validators of one value against its range, and of the coded choices.
#include <limits>
#include <string_view>

#include "effectsize/ValidatorSupport.h"
#include "effectsize/Validators.h"

namespace synthara::effectsize {

using namespace validate;

namespace {

constexpr double kNone = std::numeric_limits<double>::infinity();

// A value's range: it is refused below `low` (at or below it when
// `lowInclusive`) and above `high` (at or above it when `highInclusive`).
// An empty `missing` accepts an absent value.
struct Range {
    std::string_view missing;
    double low = -kNone;
    bool lowInclusive = false;
    std::string_view lowMessage;
    double high = kNone;
    bool highInclusive = false;
    std::string_view highMessage;
};

void CheckRange(int role, WorkingSet& ws, const Range& range) {
    if (Missing(ws, role)) {
        if (!range.missing.empty()) Blame(ws, role, range.missing);
        return;
    }
    const double v = Val(ws, role);
    if (range.lowInclusive ? v <= range.low : v < range.low) Blame(ws, role, range.lowMessage);
    if (range.highInclusive ? v >= range.high : v > range.high) Blame(ws, role, range.highMessage);
}

constexpr std::string_view kTooLarge = "Sample size cannot be greater than 100,000,000";
constexpr std::string_view kFirstTooLarge = "First sample size cannot be greater than 100,000,000";

constexpr Range kN{"Sample size is missing",
                   2,
                   false,
                   "Sample size must be 2 or greater",
                   MaxSampleSize,
                   false,
                   kTooLarge};
constexpr Range kN4{"Sample size is missing",
                    4,
                    false,
                    "Sample size must be 4 or greater",
                    MaxSampleSize,
                    false,
                    kTooLarge};
constexpr Range kN1{"First sample size is missing",
                    2,
                    false,
                    "First sample size must be 2 or greater",
                    MaxSampleSize,
                    false,
                    kFirstTooLarge};
constexpr Range kN2{"Second sample size is missing",
                    2,
                    false,
                    "Second sample size must be 2 or greater",
                    MaxSampleSize,
                    false,
                    "Second sample size cannot be greater than 100,000,000"};
constexpr Range kNOptional{
    "", 2, false, "First sample size must be 2 or greater", MaxSampleSize, false, kFirstTooLarge};

constexpr Range Positive(std::string_view missing, std::string_view message) {
    return {missing, 0, true, message, kNone, false, {}};
}
// Refused below `low`.
constexpr Range NotBelow(std::string_view missing, double low, std::string_view message) {
    return {missing, low, false, message, kNone, false, {}};
}
// Only required: any value passes.
constexpr Range Required(std::string_view missing) {
    return {missing, -kNone, false, {}, kNone, false, {}};
}
constexpr Range kSDP =
    Positive("Standard deviation is missing", "Standard deviation must exceed zero");
constexpr Range kSD1 =
    Positive("First standard deviation is missing", "First standard deviation must exceed zero");
constexpr Range kSD2 =
    Positive("Second standard deviation is missing", "Second standard deviation must exceed zero");
constexpr Range kSe = Positive("Standard error is missing", "Standard error must exceed zero");
constexpr Range kVariance = Positive("Variance is missing", "Variance must exceed zero");
constexpr Range kSeUnit{"Standard error is missing",       0, true,
                        "Standard error must exceed zero", 1, false,
                        "Standard error cannot exceed 1"};
constexpr Range kVarianceUnit{"Variance is missing",       0, true,
                              "Variance must exceed zero", 1, false,
                              "Variance cannot exceed 1"};

// One message for both ends of the range.
constexpr Range Within(std::string_view missing, double low, double high,
                       std::string_view message) {
    return {missing, low, false, message, high, false, message};
}
constexpr Range kR = Within("Correlation is missing", -0.9999, 0.9999,
                            "Correlation must fall in the range of -.9999 to +.9999");
constexpr Range kCorr{"The correlation is missing",          -1, true,
                      "Correlation must be greater than -1", 1,  true,
                      "Correlation must be less than +1"};
constexpr Range kFisherZ = Within("Fisher's Z is missing", -4.95, 4.95,
                                  "Fisher's Z must fall in the range of -4.95 to +4.95");
constexpr Range kChiSq =
    Within("Chi-squared is missing", 0, 100, "Chi-squared must fall in the range of 0 to 100");
constexpr Range kRate{"Rate is missing",
                      0,
                      false,
                      "Rate cannot be less than zero",
                      1,
                      false,
                      "Rate cannot be greater than 1.0"};
constexpr Range kRatePY = NotBelow("Rate is missing", 0, "Rate cannot be less than zero");
constexpr Range kT = Required("t-value is missing");
constexpr Range kF = Positive("F-value is missing", "F-value must be greater than zero");
constexpr Range kEvents =
    NotBelow("The number of events is missing", 0, "Number of events cannot be less than zero");
constexpr Range kPersonYears =
    Positive("The number of person-years is missing", "Person-years must be greater than zero");
constexpr Range kLogPoint = Within("The point estimate is missing", -10, 10,
                                   "Point estimate must fall in range of -10 to +10");
constexpr Range kPoint = Required("The point estimate is missing");
constexpr Range kMean = Required("Mean is missing");
constexpr Range kMean1 = Required("First mean is missing");
constexpr Range kMean2 = Required("Second mean is missing");
constexpr Range kDesign{"Study design is missing", 0, true, "Study design is missing", 3, false,
                        "Study design is missing"};

constexpr std::string_view kStdTypeMissing = "Method for standardizing is missing";

// The pre-post correlation's range, when it is given.
void CheckCorrRange(int corrRole, WorkingSet& ws) {
    if (!Missing(ws, corrRole)) CheckRange(corrRole, ws, kCorr);
}

}  // namespace

// clang-format off
void CheckN(int role, WorkingSet& ws) { CheckRange(role, ws, kN); }
void CheckNChiSq(int role, WorkingSet& ws) { CheckRange(role, ws, kN4); }
void CheckNCorr(int role, WorkingSet& ws) { CheckRange(role, ws, kN4); }
void CheckN1(int role, WorkingSet& ws) { CheckRange(role, ws, kN1); }
void CheckN2(int role, WorkingSet& ws) { CheckRange(role, ws, kN2); }
void CheckN1Optional(int role, WorkingSet& ws) { CheckRange(role, ws, kNOptional); }
void CheckN2Optional(int role, WorkingSet& ws) { CheckRange(role, ws, kNOptional); }
void CheckSDP(int role, WorkingSet& ws) { CheckRange(role, ws, kSDP); }
void CheckSD1(int role, WorkingSet& ws) { CheckRange(role, ws, kSD1); }
void CheckSD2(int role, WorkingSet& ws) { CheckRange(role, ws, kSD2); }
void CheckSe(int role, WorkingSet& ws) { CheckRange(role, ws, kSe); }
void CheckVariance(int role, WorkingSet& ws) { CheckRange(role, ws, kVariance); }
void CheckSeCorr(int role, WorkingSet& ws) { CheckRange(role, ws, kSeUnit); }
void CheckSeFisher(int role, WorkingSet& ws) { CheckRange(role, ws, kSeUnit); }
void CheckVarianceCorr(int role, WorkingSet& ws) { CheckRange(role, ws, kVarianceUnit); }
void CheckVarianceFisher(int role, WorkingSet& ws) { CheckRange(role, ws, kVarianceUnit); }
void CheckR(int role, WorkingSet& ws) { CheckRange(role, ws, kR); }
void CheckCorr(int role, WorkingSet& ws) { CheckRange(role, ws, kCorr); }
void CheckFisherZ(int role, WorkingSet& ws) { CheckRange(role, ws, kFisherZ); }
void CheckChiSq(int role, WorkingSet& ws) { CheckRange(role, ws, kChiSq); }
void CheckRate(int role, WorkingSet& ws) { CheckRange(role, ws, kRate); }
void CheckRatePY(int role, WorkingSet& ws) { CheckRange(role, ws, kRatePY); }
void CheckT(int role, WorkingSet& ws) { CheckRange(role, ws, kT); }
void CheckF(int role, WorkingSet& ws) { CheckRange(role, ws, kF); }
void CheckEvents(int role, WorkingSet& ws) { CheckRange(role, ws, kEvents); }
void CheckPersonYears(int role, WorkingSet& ws) { CheckRange(role, ws, kPersonYears); }
void CheckLogPoint(int role, WorkingSet& ws) { CheckRange(role, ws, kLogPoint); }
void CheckPoint(int role, WorkingSet& ws) { CheckRange(role, ws, kPoint); }
void CheckMean(int role, WorkingSet& ws) { CheckRange(role, ws, kMean); }
void CheckMean1(int role, WorkingSet& ws) { CheckRange(role, ws, kMean1); }
void CheckMean2(int role, WorkingSet& ws) { CheckRange(role, ws, kMean2); }
void CheckDesign(int role, WorkingSet& ws) { CheckRange(role, ws, kDesign); }
// clang-format on

void CheckChiSquareN(int chiSqRole, int nRole, WorkingSet& ws) {
    if (Missing(ws, chiSqRole)) {
        Blame(ws, chiSqRole, "Chi-squared is missing");
        return;
    }
    if (Val(ws, chiSqRole) / Val(ws, nRole) >= 1.0)
        BlameBoth(ws, chiSqRole, nRole, "Ratio of chi-sq to N must be less than 1.0");
}

void CheckDirection(int role, WorkingSet& ws, bool autoDirectionAllowed) {
    const double code = Val(ws, role);
    if (Missing(ws, role) || code <= 0 || code >= 4) {
        Blame(ws, role, "Effect direction is missing");
        return;
    }
    if (code == 1 && !autoDirectionAllowed)
        Blame(ws, role, "Effect direction cannot be determined automatically");
}

void CheckStdType(int role, WorkingSet& ws, StdTypes permitted) {
    if (Missing(ws, role)) {
        Blame(ws, role, kStdTypeMissing);
        return;
    }
    const double method = Val(ws, role);
    if (permitted == StdTypes::PostOnly && method == 2)
        Blame(ws, role, "With this format, must standardize by post-score SD");
    if (permitted == StdTypes::ChangeOnly && method == 1)
        Blame(ws, role, "With this format, must standardize by change score SD");
}

void CheckCorrOptional(int corrRole, int stdTypeRole, CorrNeed need, WorkingSet& ws) {
    const double method = Val(ws, stdTypeRole);
    if (Missing(ws, stdTypeRole) || (method != 1 && method != 2)) {
        Blame(ws, stdTypeRole, kStdTypeMissing);
        return;
    }
    const bool required = (need == CorrNeed::NeedForPost && method == 1) ||
                          (need == CorrNeed::NeedForChange && method == 2);
    if (required && Missing(ws, corrRole)) {
        BlameBoth(ws, corrRole, stdTypeRole,
                  method == 1 ? "To standardize by post-scores using this format, the pre-post "
                                "correlation is required"
                              : "To standardize by change-scores using this format, the pre-post "
                                "correlation is required");
        return;
    }
    CheckCorrRange(corrRole, ws);
}

bool CheckCorrValid(int corrRole, const WorkingSet& ws) {
    return !Missing(ws, corrRole) && Val(ws, corrRole) > -1 && Val(ws, corrRole) < 1;
}

}  // namespace synthara::effectsize
