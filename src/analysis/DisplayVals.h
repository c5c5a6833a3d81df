#pragma once
// Confidence limits and the test of one result, and the confidence levels.
#include <array>
#include <optional>
#include <string_view>

namespace synthara::analysis {

// How a result on the computation scale is shown.
enum class Transform { None, Log, Logit, Fisher };
std::string_view TransformWord(Transform transform);  // "None", "Log", "Logit", "Fisher"

struct DisplayVals {
    double point = 0;  // on the display scale
    double se = 0;
    double variance = 0;
    double lower = 0;
    double upper = 0;
    double z = 0;
    double p = 1;
};

// Limits at +-critical standard errors and the two-tailed test of zero, then
// the point and limits taken to the display scale. Under a transform the
// standard error and variance are returned as 0: they mean nothing there.
DisplayVals GetDisplayVals(double variance, double point, Transform transform, double critical);
// The two halves of GetDisplayVals: the computation scale, then the display.
DisplayVals RawVals(double variance, double point, double critical);
DisplayVals ToDisplay(DisplayVals raw, Transform transform);

// The levels offered, default "95%".
inline constexpr std::array<std::string_view, 8> ConfidenceLevels = {"99%", "95%", "90%", "85%",
                                                                     "80%", "75%", "70%", "68%"};
inline constexpr double DefaultCILevel = 0.95;

// The fraction of a level as offered ("95%" or "95"); nullopt for any other text.
std::optional<double> ParseConfidenceLevel(std::string_view text);

// The standard normal deviate with a two-tailed probability of 1 - level.
double CICritical(double level);

}  // namespace synthara::analysis
