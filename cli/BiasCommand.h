#pragma once
// `bias`: the publication-bias procedures on the studies of an analysis,
// with their report.
#include <iosfwd>
#include <optional>
#include <string>

#include "cli/AnalysisRun.h"
#include "pubbias/PubBias.h"

namespace CLI {
class App;
}

namespace synthara::cli {

struct BiasArgs {
    InputArgs in;
    std::string index;      // as the analysis offers it; "" for the primary index
    std::string trimSide;   // "left" or "right"; "" for left
    std::string trimModel;  // "fixed" or "random"; "" for fixed
    std::optional<double> alpha;
    std::optional<double> tails;
    std::optional<double> orwinCriterion;  // on the index's display scale
    std::optional<double> orwinMean;
    bool json = false;
};

CLI::App* AddBiasCommand(CLI::App& app, BiasArgs& args);

int RunBias(const BiasArgs& args, std::ostream& out, std::ostream& err);

// {"begg", "egger", "fail_safe", "k", "orwin", "report", "trim_fill"} as one
// line of JSON; numbers on the computation scale.
void WriteBiasJson(const pubbias::BiasResult& result, const std::string& report, std::ostream& out);

}  // namespace synthara::cli
