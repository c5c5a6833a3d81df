#pragma once
// `compute`: every row's effect sizes, as the sheet's display columns hold them.
#include <iosfwd>
#include <string>

#include <nlohmann/json_fwd.hpp>

#include "shell/Document.h"

namespace CLI {
class App;
}

namespace synthara::cli {

struct ComputeArgs {
    std::string input;
    std::string format;
    sheet::NumberSeparators separators;  // --locale
    bool json = false;
    bool trails = false;  // each index's formula trail in the JSON
};

// Registers the subcommand; `args` receives its options when it is parsed.
CLI::App* AddComputeCommand(CLI::App& app, ComputeArgs& args);

int RunCompute(const ComputeArgs& args, std::ostream& out, std::ostream& err);

// The results of the opened rows, each evaluated from its entries:
// {"rows": [{"row", "study", "format", "errors", "indices"}]}. An index is
// listed when it is valid and the sheet has display columns for it; with
// `trails`, each carries its "trail", lines separated by "\n".
nlohmann::json ComputeJson(const shell::Document& document, bool trails);

}  // namespace synthara::cli
