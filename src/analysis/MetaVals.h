#pragma once
// The arithmetic of one summary row: sums of a block in, summary out.
namespace synthara::analysis {

// The sums of one block under one model's weights W.
struct MetaSums {
    double W = 0;    // sum of W
    double Wsq = 0;  // sum of W^2
    double Wcu = 0;  // sum of W^3
    double K = 0;    // rows summed
    double TW = 0;   // sum of T*W
    double T2W = 0;  // sum of T^2*W
};

struct MetaVals {
    double mean = 0;
    double variance = 0;
    double T2 = 0;
    double varT2 = 0;
    double seT2 = 0;
    double Q = 0;
    double df = 0;
    double C = 0;
    double B = 0;
    double I2 = 0;  // percent
};

// Inverse-variance mean and its variance, Q, and the method-of-moments
// tau-squared with its variance. One row gives a mean but no heterogeneity.
MetaVals ComputeMetaVals(const MetaSums& sums);

// The same once Q has been replaced (under Mantel-Haenszel): `Q` is taken as
// given, floored at 0. `previous` supplies what this variant leaves untouched:
// T2, B, varT2 and seT2 when C is negative, I2 when Q is negative.
MetaVals ComputeMetaVals2(const MetaSums& sums, double Q, const MetaVals& previous = {});

}  // namespace synthara::analysis
