#pragma once
// The working set of one row while it is computed, rebuilt for every row.
#include <array>
#include <string>

#include "ports/Prompter.h"
#include "sheet/catalogue/FormatCatalogue.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::effectsize {

using sheet::IndexCount;
using sheet::MaxRoles;

// Index numbers as the computation uses them.
namespace Ix {
inline constexpr int LogOddsRatio = 1, OddsRatio = 2, LogRiskRatio = 3, RiskRatio = 4,
                     LogRateRatio = 5, RateRatio = 6, LogHazardRatio = 7, HazardRatio = 8,
                     RiskDifference = 9, RateDifference = 10, DifferenceInMeans = 11,
                     StdDiffInMeans = 12, HedgesG = 13, StdPairedDifference = 14, Correlation = 15,
                     FishersZ = 16, LogitEventRate = 17, EventRate = 18, Mean = 19,
                     PointEstimate = 20, PointRaw = 21, PointLog = 22, LogPetoOddsRatio = 23,
                     PetoOddsRatio = 24, PetoOE = 25, PetoV = 26, MHCellA = 27, MHCellB = 28,
                     MHCellC = 29, MHCellD = 30, N1 = 31, N2 = 32, N3 = 33, Events1 = 34,
                     Events2 = 35, Events3 = 36, CcN1 = 37, CcN2 = 38, CcN3 = 39, Exposed1 = 40,
                     Exposed2 = 41, Exposed3 = 42, Mean1 = 43, Mean2 = 44, SD1 = 45, SD2 = 46,
                     NPY1 = 47, NPY2 = 48, NPY3 = 49, EventsPY1 = 50, EventsPY2 = 51,
                     EventsPY3 = 52, PYCellA = 53, PYCellB = 54, PYCellC = 55, PYCellD = 56,
                     Mean0 = 57, SD0 = 58, MeanN0 = 59, N0 = 60, Events0 = 61, NPY0 = 62,
                     EventsPY0 = 63, MHLogOddsRatio = 64, MHOddsRatio = 65, MHLogRiskRatio = 66,
                     MHRiskRatio = 67, MHRiskDifference = 68, Rate = 69, OneCellA = 72,
                     OneCellB = 73, PY1CellA = 74, PY1CellB = 75;
}  // namespace Ix

// The computation options; Settings rows 80 to 83 of a project.
struct ComputeOptions {
    double ImputedR = 0.5;
    double FudgeFactor = 1.1;
    int PoolVarianceMethod = 1;
    int GVarianceMethod = 1;
};

struct WorkingSet {
    std::array<double, MaxRoles> EntryVals{};
    std::array<bool, MaxRoles> EntryMissing{};
    std::array<std::string, MaxRoles> EntryText;
    // Label of each role's column with line breaks removed, for messages and trails.
    std::array<std::string, MaxRoles> EntryLabels;
    std::array<std::string, MaxRoles> EntryMarks;
    // EsResults[k][i]: attribute k (1 Point, 2 StdErr, 3 Variance, 4 Valid) of index i.
    std::array<std::array<double, IndexCount + 1>, 5> EsResults{};
    std::array<std::string, IndexCount + 1> EsFormula;
    // True where the index has a standard error and variance besides its point.
    std::array<bool, IndexCount + 1> HasSpread{};
    std::string RowErrors;
    // Whether the procedure writes its trails. Computing a sheet leaves them
    // off: a trail is rebuilt from the row's entries when someone reads it.
    bool BuildTrails = true;

    double& Es(int k, int i) {
        return EsResults[static_cast<std::size_t>(k)][static_cast<std::size_t>(i)];
    }
    double Es(int k, int i) const {
        return EsResults[static_cast<std::size_t>(k)][static_cast<std::size_t>(i)];
    }
    bool IsValid(int i) const { return Es(4, i) != 0.0; }
    // Point, StdErr, Variance of index i, and Valid 1.
    void SetResult(int i, double point, double se, double variance);
    // Point only, and Valid 1 (the ratio indices, counts, cells).
    void SetPoint(int i, double point);
    // Copies all four numbers of index `from` to index `to`.
    void CopyResult(int from, int to);
    void Reset();  // every Valid 0, every trail "", every mark ""
};

// What a family procedure may use besides the row's working set.
struct ComputeContext {
    ComputeOptions& options;
    ports::Prompter& prompter;
    bool NegativeVariance = false;  // left by the log odds step for the caller
};

}  // namespace synthara::effectsize
