#pragma once
// The classic fail-safe N (how many null studies would take the combined
// p-value above alpha) and Orwin's (how many studies of a given mean would
// take the combined effect past a criterion).
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/DisplayVals.h"
#include "pubbias/BiasData.h"

namespace synthara::pubbias {

// All on the computation scale of the index.
struct FailSafeSettings {
    double alpha = 5.0 / 100;
    int tails = 2;
    double orwinObservedMean = 0;  // the analysis's combined effect
    double orwinCriterion = 0;
    double orwinMeanNew = 0;  // mean in the missing studies
};

// Where the combined mean moves when the missing studies come in.
enum class OrwinCase { Under, Over, NotBetween };

struct FailSafeResult {
    double zc = 0;  // combined z of the observed studies
    double p = 0;   // its p-value with the settings' tails
    double alpha = 0;
    int tails = 2;
    double zAlpha = 0;     // z for alpha
    int n = 0;             // observed studies
    double failSafeN = 0;  // a whole number; 0 when the result is not significant
    double observedMean = 0, criterion = 0, meanNew = 0;
    OrwinCase orwin = OrwinCase::NotBetween;
    std::optional<std::int32_t> orwinN;  // nothing when the criterion is not between
};

FailSafeResult RunFailSafe(const BiasDataset& data, const FailSafeSettings& settings);

// The refusals of the alpha and tails boxes, with the stored value they go
// back to; nothing when the value is accepted.
std::optional<std::string> CheckAlpha(double alpha, double stored);
std::optional<std::string> CheckTails(double tails, int stored);

inline constexpr std::string_view kOrwinTitle = "Orwin fail-safe N";
inline constexpr std::string_view kOrwinRangeMessage =
    "Values out of range, and will be reset to prior values      ";
inline constexpr std::string_view kOrwinNotValidTitle = "Values for Orwin not valid";
inline constexpr std::string_view kOrwinNotValidMessage =
    "The criterion value must fall between the other two values        ";

// A value typed on the display scale taken to the computation scale;
// nothing when it is outside the range the index allows.
std::optional<double> OrwinValue(double shown, analysis::Transform transform);

// Fix(x + 0.9999): every fraction from 0.0001 up rounds up.
double RoundUpFailSafe(double x);

}  // namespace synthara::pubbias
