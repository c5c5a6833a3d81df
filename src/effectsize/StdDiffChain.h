#pragma once
// The chain from a standardised difference in means to every index it
// yields: paired d, Hedges's g, r and Fisher's Z, the log odds ratio. The
// families of two groups' means, independent, paired and pre-post, end in it.
#include <string_view>

#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

// The effect direction codes: 1 keeps the sign as computed, 2 makes the
// value negative, 3 positive.
double ApplyDirection(double value, double code);

// The log odds ratio from d overflows its ratio beyond these. The procedure
// of independent means refuses the row above 700 on the absolute value;
// the others leave the odds ratio out above 620 on the signed value, or,
// where d came from an effect the user computed, refuse the row there.
enum class OddsLimit { RefuseAbove700, SkipAbove620, RefuseAbove620 };

struct ChainInput {
    double d = 0, dSE = 0;
    // Group sizes for r; both are taken as 1 when either is 1 or less.
    double n1 = 1, n2 = 1;
    double nTot = 0;
    // One group measured twice (df = n - 1): the trails say so, and g's
    // variance under the second method counts n rather than n1 + n2.
    bool pairedDesign = false;
    OddsLimit oddsLimit = OddsLimit::SkipAbove620;
};

// Paired d from d with the option's imputed correlation (index 14). The
// trail opens with `title` and the two lines that say what each d is
// standardised by.
struct PairedWords {
    std::string_view title = "Paired standardized mean difference";
    std::string_view pooled = "d (pooled) is standardized by the pooled SD within groups.";
    std::string_view change = "d (change) is standardized by the SD of the differences.";
};
void PairedFromD(double d, double dSE, const PairedWords& words, WorkingSet& ws,
                 const ComputeOptions& options);

// g, r, Fisher's Z and the log odds ratio from d.
void StdDiffChain(const ChainInput& in, WorkingSet& ws, const ComputeOptions& options);

// The chain's steps one by one, for families that take only some of them.
void HedgesGFromD(const ChainInput& in, WorkingSet& ws, const ComputeOptions& options);
void CorrelationFromD(const ChainInput& in, WorkingSet& ws);
// False when the row is refused for the size of the log odds ratio.
bool LogOddsFromD(const ChainInput& in, WorkingSet& ws);

}  // namespace synthara::effectsize
