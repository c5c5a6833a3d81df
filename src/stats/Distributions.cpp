#include "stats/Distributions.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <boost/math/policies/policy.hpp>

namespace synthara::stats {

namespace {

namespace bmp = boost::math::policies;

// Out-of-domain arguments come back as NaN (or an infinity for p of 0 or 1)
// instead of throwing, so a fault upstream stays visible as an invalid result.
using Quiet =
    bmp::policy<bmp::domain_error<bmp::ignore_error>, bmp::overflow_error<bmp::ignore_error>,
                bmp::underflow_error<bmp::ignore_error>, bmp::pole_error<bmp::ignore_error>,
                bmp::evaluation_error<bmp::ignore_error>, bmp::rounding_error<bmp::ignore_error>>;

using Normal = boost::math::normal_distribution<double, Quiet>;
using StudentsT = boost::math::students_t_distribution<double, Quiet>;
using ChiSquared = boost::math::chi_squared_distribution<double, Quiet>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// The policy already turns argument faults into NaN; this catches whatever
// else the library might raise so nothing escapes into the engine.
template <typename F>
double Guarded(F&& f) noexcept {
    try {
        return f();
    } catch (...) {
        return kNaN;
    }
}

}  // namespace

double VBDNORDF(double x) {
    return Guarded([&] { return boost::math::cdf(Normal(), x); });
}

double VBDNORIN(double p) {
    return Guarded([&] { return boost::math::quantile(Normal(), p); });
}

double VBDTDF(double t, double df) {
    return Guarded([&] { return boost::math::cdf(StudentsT(df), t); });
}

double VBDTIN(double p, double df) {
    return Guarded([&] { return boost::math::quantile(StudentsT(df), p); });
}

double VBDCHIDF(double x, double df) {
    if (x <= 0) return 0;
    return Guarded([&] { return boost::math::cdf(ChiSquared(df), x); });
}

double ChiSquareQuantile(double p, double df) {
    return Guarded([&] { return boost::math::quantile(ChiSquared(df), p); });
}

RegressionLine VBDRLINE(const std::vector<double>& x, const std::vector<double>& y) {
    RegressionLine line;
    const std::size_t n = std::min(x.size(), y.size());
    line.n = static_cast<int>(n);
    line.df = static_cast<double>(n) - 2;
    if (n < 2) return line;

    const double count = static_cast<double>(n);
    double xbar = 0;
    double ybar = 0;
    for (std::size_t i = 0; i < n; ++i) {
        xbar += x[i];
        ybar += y[i];
    }
    xbar /= count;
    ybar /= count;

    // Centred sums: more stable than raw sums of squares for large x.
    double sxx = 0;
    double sxy = 0;
    double syy = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const double dx = x[i] - xbar;
        const double dy = y[i] - ybar;
        sxx += dx * dx;
        sxy += dx * dy;
        syy += dy * dy;
    }
    if (!(sxx > 0)) return line;

    line.slope = sxy / sxx;
    line.intercept = ybar - line.slope * xbar;
    line.r = syy > 0 ? sxy / std::sqrt(sxx * syy) : 0;
    if (n < 3) return line;

    double sse = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const double e = y[i] - (line.intercept + line.slope * x[i]);
        sse += e * e;
    }
    line.residualVariance = sse / line.df;
    line.slopeSE = std::sqrt(line.residualVariance / sxx);
    line.interceptSE = std::sqrt(line.residualVariance * (1 / count + xbar * xbar / sxx));
    line.valid = std::isfinite(line.slope) && std::isfinite(line.interceptSE);
    return line;
}

}  // namespace synthara::stats
