#pragma once
// Duval and Tweedie's trim and fill: how many studies are missing from one
// side of the funnel, their mirror images, and the combined effects before
// and after they are filled in.
#include <cstdint>
#include <string>
#include <vector>

#include "pubbias/BiasData.h"

namespace synthara::pubbias {

// Where missing studies are looked for, and which model's mean is the centre.
enum class TrimSide { NotSpecified = 0, Left = 1, Right = 2 };
enum class TrimModel { NotSpecified = 0, Fixed = 1, Random = 2 };

// The fixed and random summaries of one set of rows, with 1.96 limits.
struct TrimPass {
    int count = 0;
    double fixedMean = 0, fixedSE = 0, fixedLower = 0, fixedUpper = 0, Q = 0;
    double randomMean = 0, randomSE = 0, randomLower = 0, randomUpper = 0;
};

// One row of the iteration table.
struct TrimIteration {
    int iteration = 0;
    std::int64_t sumRanks = 0;  // T
    int L0 = 0;                 // before a negative estimate is taken as 0
    TrimPass pass;              // over the rows left after trimming
};

// The four summary values the plot and the result table read, held in
// single precision as the method keeps them, and Q.
struct StoredSummary {
    float fixedMean = 0, fixedSE = 0, randomMean = 0, randomSE = 0;
    double Q = 0;
    double FixedLower() const;
    double FixedUpper() const;
    double RandomLower() const;
    double RandomUpper() const;
};

struct ImputedStudy {
    std::string name;  // of the study it mirrors
    double point = 0;
    double se = 0;
};

struct TrimFillResult {
    TrimSide side = TrimSide::Left;
    TrimModel model = TrimModel::Fixed;
    bool OptionsSet() const {
        return side != TrimSide::NotSpecified && model != TrimModel::NotSpecified;
    }
    int k = 0;          // studies imputed
    double centre = 0;  // of the last iteration
    std::vector<TrimIteration> iterations;
    TrimPass filled;  // over the observed and imputed rows (the "L" row)
    StoredSummary observed, adjusted;
    std::vector<ImputedStudy> imputed;  // in fill order
};

inline constexpr int kTrimIterationCap = 40;

TrimFillResult RunTrimFill(const BiasDataset& data, TrimSide side, TrimModel model);

// To the nearest whole number, halves to the even one.
int RoundHalfEven(double value);

// (4T - N(N+1)) / (2N - 1), rounded to the nearest whole number, halves to even.
int EstimateL0(std::int64_t sumRanks, int n);

}  // namespace synthara::pubbias
