#include "analysis/Tau2.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <string>

#include "analysis/MetaVals.h"
#include "stats/Distributions.h"

namespace synthara::analysis {

namespace {

struct MethodWords {
    Tau2Method method;
    std::string_view word, name;
};

// In the order of the enum.
constexpr std::array<MethodWords, 6> kMethods = {{
    {Tau2Method::DL, "DL", "DerSimonian-Laird (method of moments)"},
    {Tau2Method::REML, "REML", "restricted maximum likelihood"},
    {Tau2Method::ML, "ML", "maximum likelihood"},
    {Tau2Method::PM, "PM", "Paule-Mandel"},
    {Tau2Method::HE, "HE", "Hedges (unweighted method of moments)"},
    {Tau2Method::SJ, "SJ", "Sidik-Jonkman"},
}};

const MethodWords& WordsOf(Tau2Method method) {
    return kMethods[static_cast<std::size_t>(method)];
}

// The sums of one pass with weights 1 / (v + tau2).
struct WeightedSums {
    double sw = 0, sw2 = 0, sw3 = 0;
    double mean = 0;
    double q = 0;   // sum of w (y - mean)^2: the generalised Q
    double r2 = 0;  // sum of w^2 (y - mean)^2
};

WeightedSums SumsAt(std::span<const double> y, std::span<const double> v, double tau2) {
    WeightedSums s;
    double swy = 0;
    for (std::size_t i = 0; i < y.size(); ++i) {
        const double w = 1 / (v[i] + tau2);
        s.sw += w;
        s.sw2 += w * w;
        s.sw3 += w * w * w;
        swy += w * y[i];
    }
    s.mean = swy / s.sw;
    for (std::size_t i = 0; i < y.size(); ++i) {
        const double w = 1 / (v[i] + tau2);
        const double d = y[i] - s.mean;
        s.q += w * d * d;
        s.r2 += w * w * d * d;
    }
    return s;
}

Tau2Estimate Moments(std::span<const double> y, std::span<const double> v) {
    MetaSums sums;
    for (std::size_t i = 0; i < y.size(); ++i) {
        const double w = 1 / v[i];
        sums.W += w;
        sums.Wsq += w * w;
        sums.Wcu += w * w * w;
        sums.K += 1;
        sums.TW += w * y[i];
        sums.T2W += w * y[i] * y[i];
    }
    const MetaVals vals = ComputeMetaVals(sums);
    Tau2Estimate e;
    e.tau2 = vals.T2;
    e.variance = vals.varT2;
    return e;
}

// The unweighted mean and sum of squares about it.
std::pair<double, double> MeanAndSquares(std::span<const double> y) {
    double mean = 0;
    for (double value : y)
        mean += value;
    mean /= static_cast<double>(y.size());
    double ss = 0;
    for (double value : y)
        ss += (value - mean) * (value - mean);
    return {mean, ss};
}

Tau2Estimate Hedges(std::span<const double> y, std::span<const double> v) {
    const double k = static_cast<double>(y.size());
    double meanV = 0;
    for (double value : v)
        meanV += value;
    meanV /= k;
    Tau2Estimate e;
    e.tau2 = std::max(0.0, MeanAndSquares(y).second / (k - 1) - meanV);
    return e;
}

// One step from the unweighted variance: weights 1 / (v + tau0), then the
// weighted squares about their mean scaled by tau0.
Tau2Estimate SidikJonkman(std::span<const double> y, std::span<const double> v) {
    const double k = static_cast<double>(y.size());
    const double tau0 = MeanAndSquares(y).second / k;
    Tau2Estimate e;
    if (tau0 > 0) e.tau2 = tau0 * SumsAt(y, v, tau0).q / (k - 1);
    return e;
}

// Fisher scoring of the (restricted) likelihood from the moment estimate,
// kept at 0 or above.
Tau2Estimate Likelihood(bool restricted, std::span<const double> y, std::span<const double> v,
                        const Tau2Control& control) {
    Tau2Estimate e;
    double tau2 = Moments(y, v).tau2;
    e.converged = false;
    while (e.iterations < control.maxIterations) {
        ++e.iterations;
        const WeightedSums s = SumsAt(y, v, tau2);
        const double trP = s.sw - s.sw2 / s.sw;
        const double trPP = s.sw2 - 2 * s.sw3 / s.sw + s.sw2 * s.sw2 / (s.sw * s.sw);
        const double step = restricted ? (s.r2 - trP) / trPP : (s.r2 - s.sw) / s.sw2;
        const double next = std::max(0.0, tau2 + step);
        const bool done = std::fabs(next - tau2) < control.tolerance;
        tau2 = next;
        if (done) {
            e.converged = true;
            break;
        }
    }
    e.tau2 = tau2;
    const WeightedSums s = SumsAt(y, v, tau2);
    const double info =
        restricted ? s.sw2 - 2 * s.sw3 / s.sw + s.sw2 * s.sw2 / (s.sw * s.sw) : s.sw2;
    e.variance = 2 / info;
    return e;
}

// The tau-squared at which the generalised Q, falling as tau-squared grows,
// comes down to `target`; 0 when it is there already at 0. Nothing when
// the passes ran out first.
std::optional<double> SolveQ(std::span<const double> y, std::span<const double> v, double target,
                             const Tau2Control& control, int& iterations) {
    iterations = 1;
    if (!(SumsAt(y, v, 0).q > target)) return 0.0;
    double lo = 0, hi = 1;
    while (SumsAt(y, v, hi).q > target) {
        lo = hi;
        hi *= 2;
        if (++iterations >= control.maxIterations) return std::nullopt;
    }
    while (hi - lo > control.tolerance * std::max(1.0, hi)) {
        if (++iterations > control.maxIterations) return std::nullopt;
        const double mid = lo + (hi - lo) / 2;
        (SumsAt(y, v, mid).q > target ? lo : hi) = mid;
    }
    return lo + (hi - lo) / 2;
}

Tau2Estimate PauleMandel(std::span<const double> y, std::span<const double> v,
                         const Tau2Control& control) {
    Tau2Estimate e;
    const std::optional<double> root =
        SolveQ(y, v, static_cast<double>(y.size()) - 1, control, e.iterations);
    e.converged = root.has_value();
    e.tau2 = root.value_or(0);
    return e;
}

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

std::string_view Tau2MethodWord(Tau2Method method) {
    return WordsOf(method).word;
}

std::string_view Tau2MethodName(Tau2Method method) {
    return WordsOf(method).name;
}

std::string Tau2ConvergenceRule(Tau2Method method, const Tau2Control& control) {
    char tolerance[32];
    std::snprintf(tolerance, sizeof tolerance, "%g", control.tolerance);
    const std::string most = "at most " + std::to_string(control.maxIterations) + " iterations";
    switch (method) {
        case Tau2Method::REML:
        case Tau2Method::ML:
            return "Fisher scoring stops when a step changes tau-squared by less than " +
                   std::string(tolerance) + ", " + most;
        case Tau2Method::PM:
            return "bisection stops when the bracket of tau-squared is narrower than " +
                   std::string(tolerance) + " (relative above 1), " + most;
        default:
            return "";
    }
}

std::optional<Tau2Method> ParseTau2Method(std::string_view word) {
    std::string upper(word);
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    for (const MethodWords& m : kMethods) {
        if (m.word == upper) return m.method;
    }
    return std::nullopt;
}

Tau2Estimate EstimateTau2(Tau2Method method, std::span<const double> y, std::span<const double> v,
                          const Tau2Control& control) {
    if (y.size() < 2 || v.size() != y.size()) return {};
    switch (method) {
        case Tau2Method::REML:
            return Likelihood(true, y, v, control);
        case Tau2Method::ML:
            return Likelihood(false, y, v, control);
        case Tau2Method::PM:
            return PauleMandel(y, v, control);
        case Tau2Method::HE:
            return Hedges(y, v);
        case Tau2Method::SJ:
            return SidikJonkman(y, v);
        case Tau2Method::DL:
            break;
    }
    return Moments(y, v);
}

Tau2Limits QProfileLimits(std::span<const double> y, std::span<const double> v, double level,
                          const Tau2Control& control) {
    Tau2Limits limits;
    if (y.size() < 2 || v.size() != y.size()) return limits;
    const double df = static_cast<double>(y.size()) - 1;
    const double alpha = 1 - level;
    int iterations = 0;
    // The larger quantile gives the lower limit: Q falls as tau-squared grows.
    if (auto lower = SolveQ(y, v, stats::ChiSquareQuantile(1 - alpha / 2, df), control, iterations))
        limits.lower = *lower;
    if (auto upper = SolveQ(y, v, stats::ChiSquareQuantile(alpha / 2, df), control, iterations))
        limits.upper = *upper;
    return limits;
}

}  // namespace synthara::analysis
