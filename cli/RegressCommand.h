#pragma once
// `regress`: meta-regression of the studies of an analysis on one numeric
// moderator, with its coefficient, Q and model tables.
#include <iosfwd>
#include <string>

#include "cli/AnalysisRun.h"
#include "regression/Regression.h"

namespace CLI {
class App;
}

namespace synthara::cli {

struct RegressArgs {
    InputArgs in;
    std::string index;      // as the analysis offers it; "" for the primary index
    std::string predictor;  // a numeric moderator's title
    std::string method;     // "fixed", "moments" or "ml"; "" for moments
    bool json = false;
};

CLI::App* AddRegressCommand(CLI::App& app, RegressArgs& args);

int RunRegress(const RegressArgs& args, std::ostream& out, std::ostream& err);

// {"intercept", "k", "method", "q_model", "q_residual", "q_total", "slope",
// "steps", "tau2", "title"} as one line of JSON; numbers on the computation
// scale.
void WriteRegressJson(const regression::RegressionResult& result, std::ostream& out);

}  // namespace synthara::cli
