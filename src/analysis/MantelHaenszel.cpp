#include "analysis/MantelHaenszel.h"

#include <cmath>

#include "analysis/MetaVals.h"

namespace synthara::analysis {

MHIndex MHIndexOf(std::string_view computationIndex) {
    if (computationIndex == "MH log odds ratio") return MHIndex::LogOddsRatio;
    if (computationIndex == "MH log risk ratio") return MHIndex::LogRiskRatio;
    if (computationIndex == "MH risk difference") return MHIndex::RiskDifference;
    return MHIndex::None;
}

MHRow GetMHVals(MHIndex index, double a, double b, double c, double d) {
    using namespace MHTerm;
    const double a0 = a, b0 = b, c0 = c, d0 = d;
    if (a == 0 || b == 0 || c == 0 || d == 0) {
        a += 0.5;
        b += 0.5;
        c += 0.5;
        d += 0.5;
    }
    MHRow row;
    MHSums& t = row.terms;
    switch (index) {
        case MHIndex::LogOddsRatio: {
            const double N = a + b + c + d;
            const double N2 = N * N;
            row.weight = b * c / N;
            t[R] = a * d / N;
            t[S] = b * c / N;
            t[E] = (a + d) * a * d / N2;
            t[F] = (a + d) * b * c / N2;
            t[G] = (b + c) * a * d / N2;
            t[H] = (b + c) * b * c / N2;
            break;
        }
        case MHIndex::LogRiskRatio: {
            const double n1 = a + b, n2 = c + d, N = n1 + n2;
            row.weight = n1 * c / N;
            t[P] = (n1 * n2 * (a + c) - a * c * N) / (N * N);
            t[RRR] = a * n2 / N;
            t[RRS] = c * n1 / N;
            break;
        }
        case MHIndex::RiskDifference: {
            const double n1 = a + b, n2 = c + d, N = n1 + n2;
            t[J] = (a * b * n2 * n2 * n2 + c * d * n1 * n1 * n1) / (n1 * n2 * N * N);
            // The weight and K come from the cells as given: a zero cell moves J only.
            const double u1 = a0 + b0, u2 = c0 + d0;
            row.weight = u1 * u2 / (u1 + u2);
            t[K] = row.weight;
            break;
        }
        case MHIndex::None:
            break;
    }
    return row;
}

double MHSE(MHIndex index, const MHSums& s) {
    using namespace MHTerm;
    switch (index) {
        case MHIndex::LogOddsRatio:
            return std::sqrt(0.5 * (s[E] / (s[R] * s[R]) + (s[F] + s[G]) / (s[R] * s[S]) +
                                    s[H] / (s[S] * s[S])));
        case MHIndex::LogRiskRatio:
            return std::sqrt(s[P] / (s[RRR] * s[RRS]));
        case MHIndex::RiskDifference:
            return std::sqrt(s[J] / (s[K] * s[K]));
        case MHIndex::None:
            break;
    }
    return 0;
}

void ConvertPointAndVariance(MHIndex index, const MHSums& sums, double& mean, double& variance) {
    if (index == MHIndex::None) return;
    if (index != MHIndex::RiskDifference) mean = std::log(mean);
    const double se = MHSE(index, sums);
    variance = se * se;
}

double MHPoint(MHIndex index, double point) {
    return index == MHIndex::LogOddsRatio || index == MHIndex::LogRiskRatio ? std::exp(point)
                                                                            : point;
}

double MHPointToScale(MHIndex index, double point) {
    return index == MHIndex::LogOddsRatio || index == MHIndex::LogRiskRatio ? std::log(point)
                                                                            : point;
}

void ApplyMHHeterogeneity(MetaVals& v, const MHHeterogeneity& h) {
    const MetaVals h2 = ComputeMetaVals2({h.W, h.Wsq, h.Wcu, h.K, 0, 0}, h.Q, v);
    v.Q = h2.Q;
    v.I2 = h2.I2;
    v.T2 = h2.T2;
    v.varT2 = h2.varT2;
    v.seT2 = h2.seT2;
}

}  // namespace synthara::analysis
