#pragma once
// The estimators of tau-squared, the between-studies variance of the random
// model, as pure functions of the studies' effects and within-study
// variances, and the Q-profile confidence limits of tau-squared. Every pass
// is linear in the number of studies; the iterative estimators make at most
// `Tau2Control::maxIterations` passes.
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace synthara::analysis {

// DL: the method of moments of the classic program (the default). REML and
// ML: restricted and full maximum likelihood. PM: the generalised-Q
// (Paule-Mandel) estimator. HE: the unweighted moment (Hedges) estimator.
// SJ: the Sidik-Jonkman estimator.
enum class Tau2Method { DL, REML, ML, PM, HE, SJ };

// "DL", "REML", ... as the command line and the project file spell them.
std::string_view Tau2MethodWord(Tau2Method method);
// The method in words: "restricted maximum likelihood", ...
std::string_view Tau2MethodName(Tau2Method method);
// How an iterative method stops, in words; "" for the others.
std::string Tau2ConvergenceRule(Tau2Method method, const struct Tau2Control& control);
// The method of a word, in any case; nothing for an unknown word.
std::optional<Tau2Method> ParseTau2Method(std::string_view word);

// When an iterative estimator stops: REML and ML (Fisher scoring) when a step
// changes tau-squared by less than `tolerance`; PM and the Q-profile limits
// (bisection of a bracket) when the bracket is narrower than `tolerance`
// times the larger of 1 and its upper end. Each counts its passes over the
// studies, the search for a bracket included, up to `maxIterations`.
struct Tau2Control {
    int maxIterations = 100;
    double tolerance = 1e-10;
};

// The random model's choices, which travel with the project.
struct RandomModelOptions {
    Tau2Method tau2 = Tau2Method::DL;
    bool hksj = false;  // Hartung-Knapp-Sidik-Jonkman limits, t on k - 1 df
    Tau2Control control;
};

struct Tau2Estimate {
    double tau2 = 0;
    // The variance of the estimate where the method gives one (DL, REML,
    // ML), else NaN.
    double variance = std::numeric_limits<double>::quiet_NaN();
    bool converged = true;  // false: `maxIterations` passes were not enough
    int iterations = 0;
};

// Tau-squared of the studies with effects `y` and within-study variances
// `v` (equal lengths, every variance above 0). Fewer than two studies give 0.
// An estimate is never below 0.
Tau2Estimate EstimateTau2(Tau2Method method, std::span<const double> y, std::span<const double> v,
                          const Tau2Control& control = {});

// The limits of tau-squared at confidence `level` where the generalised Q
// meets the chi-squared quantiles on k - 1 df; a limit the data put below 0
// is 0. Nothing for fewer than two studies or a search that did not end.
struct Tau2Limits {
    std::optional<double> lower, upper;
};
Tau2Limits QProfileLimits(std::span<const double> y, std::span<const double> v, double level,
                          const Tau2Control& control = {});

}  // namespace synthara::analysis
