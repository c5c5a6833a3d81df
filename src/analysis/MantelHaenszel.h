#pragma once
// The Mantel-Haenszel summaries: each row's terms from its 2x2 table, and the
// block's estimate and variance from the sums of those terms.
#include <array>
#include <string_view>

#include "analysis/ColumnKeys.h"

namespace synthara::analysis {

enum class MHIndex { None, LogOddsRatio, LogRiskRatio, RiskDifference };
// "MH log odds ratio", "MH log risk ratio", "MH risk difference"; None otherwise.
MHIndex MHIndexOf(std::string_view computationIndex);

// The terms in the order of their columns: MHOR-R, -S, -E, -F, -G, -H,
// MHRR-P, -R, -S, MHRD-J, -K.
using MHSums = std::array<double, MHTermCount>;
namespace MHTerm {
inline constexpr std::size_t R = 0, S = 1, E = 2, F = 3, G = 4, H = 5, P = 6, RRR = 7, RRS = 8,
                             J = 9, K = 10;
}

struct MHRow {
    double weight = 0;
    MHSums terms{};
};

// One row's weight and terms from its cells (events and non-events of group
// 1, then of group 2). A zero cell adds 0.5 to all four; for the risk
// difference the weight and K are taken from the cells as given.
MHRow GetMHVals(MHIndex index, double a, double b, double c, double d);

// The standard error of the block's estimate from the sums of its terms
// (for the odds ratio the Robins, Breslow and Greenland variance).
double MHSE(MHIndex index, const MHSums& sums);

// Model 1's weighted mean of ratios (or differences) and its variance become
// the Mantel-Haenszel estimate on the computation scale and its variance.
void ConvertPointAndVariance(MHIndex index, const MHSums& sums, double& mean, double& variance);

// The row's point as model 1 averages it: the ratio itself for the two log
// indices, so that the weighted mean is the Mantel-Haenszel ratio.
double MHPoint(MHIndex index, double point);
// A model 1 point back on the computation scale, for the Q around the mean.
double MHPointToScale(MHIndex index, double point);

}  // namespace synthara::analysis

namespace synthara::analysis {

struct MetaSums;
struct MetaVals;

// Heterogeneity under Mantel-Haenszel: inverse-variance weights around the
// Mantel-Haenszel mean, summed row by row.
struct MHHeterogeneity {
    double W = 0, Wsq = 0, Wcu = 0, K = 0, Q = 0;
    // A row with inverse-variance weight w and point y on the computation scale.
    void Add(double w, double y, double mean) {
        const double d = y - mean;
        K += 1;
        W += w;
        Wsq += w * w;
        Wcu += w * w * w;
        Q += w * d * d;
    }
};

// Replaces Q, I-squared and tau-squared of model 1's summary by those of the
// inverse-variance weights around the Mantel-Haenszel mean; C, B, df and K
// stay those of the Mantel-Haenszel weights.
void ApplyMHHeterogeneity(MetaVals& v, const MHHeterogeneity& h);

}  // namespace synthara::analysis
