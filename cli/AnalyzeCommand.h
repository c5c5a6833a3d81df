#pragma once
// `analyze`: the fixed and random summaries of a sheet, its study rows with
// their limits and weights.
#include <iosfwd>
#include <string>
#include <vector>

#include "analysis/Result.h"
#include "cli/SelectionOptions.h"
#include "sheet/grid/Cell.h"

namespace CLI {
class App;
}

namespace synthara::cli {

struct AnalyzeArgs {
    std::string input;
    std::string format;
    sheet::NumberSeparators separators;  // --locale
    std::string index;    // as the analysis offers it; "" for the sheet's primary index
    std::string ciLevel;  // "95" or "95%"; "" for the default
    std::string groupBy;  // a moderator's or identifying column's title; "" for none
    std::string run;      // "all", "omit-one" or "cumulative"; "" for all
    std::string tau2;     // the random model's estimator ("REML", ...); "" for the project's
    bool hksj = false;    // the random model's adjusted limits
    bool json = false;
    std::vector<std::string> options;  // --option NAME=VALUE
    SelectionArgs selection;
};

// Registers the subcommand; `args` receives its options when it is parsed.
CLI::App* AddAnalyzeCommand(CLI::App& app, AnalyzeArgs& args);

int RunAnalyze(const AnalyzeArgs& args, std::ostream& out, std::ostream& err);

// Writes {"index", "computation_index", "transform", "ci_level", "studies",
// "summaries"}, and "between", "omit_one" or "cumulative" where the analysis
// has them, as one line of JSON, each study and pass as it comes.
// `result` holds the summaries; the studies are read from the analysis.
void WriteAnalyzeJson(analysis::Analysis& analysis, const analysis::AnalysisResult& result,
                      std::ostream& out);

}  // namespace synthara::cli
