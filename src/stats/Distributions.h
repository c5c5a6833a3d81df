#pragma once
// Normal, t and chi-squared distribution functions with their inverses, and the
// simple least-squares line. These are the only distribution arithmetic the
// program does; everything else goes through the shared formulas.
#include <vector>

namespace synthara::stats {

// P(Z < x) for a standard normal Z.
double VBDNORDF(double x);
// z with P(Z < z) = p. p must lie strictly inside (0, 1): callers refuse 0 and 1.
double VBDNORIN(double p);
// P(T < t) with df degrees of freedom (df may be fractional, > 0).
double VBDTDF(double t, double df);
// t with P(T < t) = p, df degrees of freedom.
double VBDTIN(double p, double df);
// P(X < x) for chi-squared with df degrees of freedom; 0 for x <= 0.
double VBDCHIDF(double x, double df);
// x with P(X < x) = p for chi-squared with df degrees of freedom; NaN outside
// the domain.
double ChiSquareQuantile(double p, double df);

// Ordinary least-squares line y = intercept + slope * x.
struct RegressionLine {
    int n = 0;
    double slope = 0;
    double slopeSE = 0;
    double intercept = 0;
    double interceptSE = 0;
    double df = 0;  // n - 2
    double residualVariance = 0;
    double r = 0;        // Pearson correlation of x and y
    bool valid = false;  // false when n < 3 or all x are equal
};
RegressionLine VBDRLINE(const std::vector<double>& x, const std::vector<double>& y);

}  // namespace synthara::stats
