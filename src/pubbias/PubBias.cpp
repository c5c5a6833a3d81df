#include "pubbias/PubBias.h"

#include <utility>

namespace synthara::pubbias {

BiasResult RunPubBias(BiasDataset data, const BiasSettings& settings, std::string_view indexName,
                      analysis::Transform transform) {
    BiasResult r;
    r.data = std::move(data);
    r.failSafe = RunFailSafe(r.data, settings.failSafe);
    r.tau = RunTau(r.data);
    r.intercept = RunIntercept(r.data, settings.eggerTails);
    r.trimFill = RunTrimFill(r.data, settings.side, settings.model);
    r.sections = {ClassicFailSafeReport(r.failSafe), OrwinReport(r.failSafe, indexName, transform),
                  BeggReport(r.tau), EggerReport(r.intercept),
                  TrimFillReport(r.trimFill, transform)};
    return r;
}

}  // namespace synthara::pubbias
