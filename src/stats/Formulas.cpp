#include "stats/Formulas.h"

#include <cmath>

#include "stats/Distributions.h"

namespace synthara::stats {

namespace {

// The squared link between d and r for two groups: (n1 + n2)^2 / (n1 n2).
double GroupFactor(double n1, double n2) {
    return (n1 + n2) * (n1 + n2) / (n1 * n2);
}

}  // namespace

double DToR(double d, double n1, double n2) {
    const double a = GroupFactor(n1, n2);
    return d / std::sqrt(d * d + a);
}

double DSEToRSE(double se, double d, double n1, double n2) {
    const double a = GroupFactor(n1, n2);
    const double denom = d * d + a;
    return std::sqrt(a * a * se * se / (denom * denom * denom));
}

double DToLogOdds(double d) {
    return d * PI / std::sqrt(3.0);
}

double DSEToLogOddsSE(double se) {
    return std::sqrt(PI * PI * se * se / 3);
}

double LogOddsToD(double x) {
    return std::sqrt(3.0) * x / PI;
}

double LogOddsSEToD(double se) {
    return std::sqrt(3 * se * se / (PI * PI));
}

double RToD(double r) {
    return 2 * r / std::sqrt(1 - r * r);
}

double RSEToDSE(double r, double se) {
    const double v = 1 - r * r;
    return std::sqrt(4 * se * se / (v * v * v));
}

double Logit(double p) {
    return std::log(p / (1 - p));
}

double InverseLogit(double x) {
    const double e = std::exp(x);
    return e / (e + 1);
}

double FisherZ(double r) {
    // A correlation of exactly +-1 has no finite z; it is pulled just inside.
    if (r == 1) r = 0.99999999;
    if (r == -1) r = -0.99999999;
    return 0.5 * std::log((1 + r) / (1 - r));
}

double InverseFisher(double z) {
    const double e = std::exp(2 * z);
    return (e - 1) / (e + 1);
}

double NormalQuantile(double p, int tails) {
    if (tails == 2) p /= 2;
    return VBDNORIN(p);
}

double ZFromP(double p, int tails) {
    double q = p;
    if (tails == 1) {
        // A one-tailed p above one half gives z = 0: the sign of the effect is
        // not recoverable from p alone, so none is invented.
        q = q <= 0.5 ? 1 - q : 0.5;
    } else if (tails == 2) {
        q = 1 - q / 2;
    }
    return NormalQuantile(q, 1);
}

double CorrectionJ(int df) {
    const int m = 4 * df - 1;
    return 1 - 3.0 / m;
}

double DToG(double d, int df) {
    return d * CorrectionJ(df);
}

double GToD(double g, int df) {
    return g / CorrectionJ(df);
}

namespace {
// The small-sample constant of the second variance method, the same both ways.
constexpr double kGVarianceOffset = 3.94;
}  // namespace

double GSEFromD(double d, double se, int df, bool independent, int method) {
    if (method == static_cast<int>(GVarianceMethod::Method1)) return se * CorrectionJ(df);
    if (method != static_cast<int>(GVarianceMethod::Method2)) return 0;
    const double n = independent ? df + 2.0 : df + 1.0;
    const double g = DToG(d, df);
    return std::sqrt(se * se - d * d / (2 * n) + g * g / (2 * (n - kGVarianceOffset)));
}

double DSEFromG(double g, double se, int df, int method) {
    if (method == static_cast<int>(GVarianceMethod::Method1)) return se / CorrectionJ(df);
    if (method != static_cast<int>(GVarianceMethod::Method2)) return 0;
    // Always the two-group N: this direction has no design argument.
    const double n = df + 2.0;
    const double d = GToD(g, df);
    return std::sqrt(se * se - g * g / (2 * (n - kGVarianceOffset)) + d * d / (2 * n));
}

double ChiSquareP(double x, double df) {
    if (df == 0) return 0;
    return 1 - VBDCHIDF(x, df);
}

double HarmonicN(double n1, double n2) {
    return n1 * n2 / (n1 + n2);
}

}  // namespace synthara::stats
