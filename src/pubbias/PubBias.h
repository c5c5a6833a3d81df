#pragma once
// The four procedures run at once on one dataset, and their report.
#include <string_view>

#include "analysis/DisplayVals.h"
#include "pubbias/BiasData.h"
#include "pubbias/FailSafe.h"
#include "pubbias/Intercept.h"
#include "pubbias/RankCorrelation.h"
#include "pubbias/Report.h"
#include "pubbias/TrimFill.h"

namespace synthara::pubbias {

// The settings at start-up, but for the observed mean, which comes from the analysis.
struct BiasSettings {
    FailSafeSettings failSafe;
    TrimSide side = TrimSide::Left;
    TrimModel model = TrimModel::Fixed;
    int eggerTails = 2;
};

struct BiasResult {
    BiasDataset data;
    FailSafeResult failSafe;
    TauResult tau;
    InterceptResult intercept;
    TrimFillResult trimFill;
    ReportSections sections;
};

// `indexName` and `transform` are those of the analysis's index: the texts
// show values on its display scale. The data must have passed CheckVals.
BiasResult RunPubBias(BiasDataset data, const BiasSettings& settings, std::string_view indexName,
                      analysis::Transform transform);

}  // namespace synthara::pubbias
