#pragma once
// `compute`: every row's effect sizes, as the sheet's display columns hold them.
#include <iosfwd>
#include <string>
#include <vector>

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
    bool trails = false;               // each index's formula trail in the JSON
    std::vector<std::string> options;  // --option NAME=VALUE
};

// Registers the subcommand; `args` receives its options when it is parsed.
CLI::App* AddComputeCommand(CLI::App& app, ComputeArgs& args);

int RunCompute(const ComputeArgs& args, std::ostream& out, std::ostream& err);

// Writes the results of the opened rows, each evaluated from its entries, as
// one line of JSON, each row as soon as it is computed:
// {"rows": [{"row", "study", "format", "errors", "indices"}]}. An index is
// listed when it is valid and the sheet has display columns for it; with
// `trails`, each carries its "trail", lines separated by "\n".
void WriteComputeJson(const shell::Document& document, bool trails, std::ostream& out);

}  // namespace synthara::cli
