#include "analysis/MetaVals.h"

#include <cmath>

namespace synthara::analysis {

namespace {

// Steps 7 to 10: tau-squared by the method of moments and its variance.
void TauSquared(const MetaSums& s, MetaVals& v) {
    v.T2 = (v.Q - v.df) / v.C;
    if (v.T2 < 0) v.T2 = 0;
    v.B = (s.Wsq * s.Wsq / (s.W * s.W) + s.Wsq - 2 * s.Wcu / s.W) * v.T2 * v.T2 +
          2 * (s.W - s.Wsq / s.W) * v.T2 + v.df;
    v.varT2 = 2 * v.B / (v.C * v.C);
    if (v.varT2 < 0) v.varT2 = 0;
    v.seT2 = std::sqrt(v.varT2);
}

void NoHeterogeneity(MetaVals& v) {
    v.T2 = 0;
    v.B = 0;
    v.varT2 = 0;
    v.seT2 = 0;
}

}  // namespace

MetaVals ComputeMetaVals(const MetaSums& s) {
    MetaVals v;
    v.mean = s.TW / s.W;
    v.variance = 1 / s.W;
    v.C = s.W - s.Wsq / s.W;
    v.Q = s.T2W - s.TW * s.TW / s.W;
    if (v.Q < 0) v.Q = 0;
    v.df = s.K - 1;
    if (v.C <= 0)
        NoHeterogeneity(v);
    else
        TauSquared(s, v);
    if (v.Q <= 0) {
        v.I2 = 0;
    } else {
        v.I2 = 100 * (v.Q - v.df) / v.Q;
        if (v.I2 < 0) v.I2 = 0;
    }
    if (v.df == 0) {
        // One row: a mean and a variance, but nothing to say about spread.
        NoHeterogeneity(v);
        v.I2 = 0;
    }
    return v;
}

MetaVals ComputeMetaVals2(const MetaSums& s, double Q, const MetaVals& previous) {
    MetaVals v = previous;
    v.mean = s.TW / s.W;
    v.variance = 1 / s.W;
    v.C = s.W - s.Wsq / s.W;
    v.Q = Q < 0 ? 0 : Q;
    v.df = s.K - 1;
    if (v.C == 0)
        NoHeterogeneity(v);
    else if (v.C > 0)
        TauSquared(s, v);
    if (v.Q == 0) {
        v.I2 = 0;
    } else if (v.Q > 0) {
        v.I2 = 100 * (v.Q - v.df) / v.Q;
        if (v.I2 < 0) v.I2 = 0;
    }
    return v;
}

}  // namespace synthara::analysis
