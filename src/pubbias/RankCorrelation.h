#pragma once
// Begg and Mazumdar's rank correlation of the standardised effects with
// their variances (Kendall's tau), before and after continuity correction.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pubbias/BiasData.h"

namespace synthara::pubbias {

inline constexpr std::string_view kTauProblem = "There was a Problem computing tau     ";

// Pairs of studies taken in order of V*: a pair whose T* are within 1E-08
// counts nowhere; a pair of equal V* counts half to each side.
struct PairCounts {
    double concordant = 0;
    double discordant = 0;
    std::int64_t ties = 0;  // pairs of equal V*
};
PairCounts CountPairs(const std::vector<double>& vStar, const std::vector<double>& tStar);

struct TauResult {
    bool ok = false;
    std::string message;  // kTauProblem when the run failed
    PairCounts pairs;
    double s = 0, tau = 0, z = 0, p1 = 0, p2 = 0;
    double sCorrected = 0, tauCorrected = 0, zCorrected = 0, p1Corrected = 0, p2Corrected = 0;
};

TauResult RunTau(const BiasDataset& data);

}  // namespace synthara::pubbias
