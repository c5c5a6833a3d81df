#pragma once
// `compute`: every row's effect sizes, as the sheet's display columns hold them.
#include <iosfwd>
#include <string>

#include <nlohmann/json_fwd.hpp>

#include "sheet/grid/Sheet.h"
#include "sheet/import/ImportTable.h"

namespace CLI {
class App;
}

namespace synthara::cli {

struct ComputeArgs {
    std::string input;
    std::string format;
    sheet::NumberSeparators separators;  // --locale
    bool json = false;
};

// Registers the subcommand; `args` receives its options when it is parsed.
CLI::App* AddComputeCommand(CLI::App& app, ComputeArgs& args);

int RunCompute(const ComputeArgs& args, std::ostream& out, std::ostream& err);

// The rows of a computed sheet: {"rows": [{"row", "study", "format", "errors", "indices"}]}.
nlohmann::json ComputeJson(const sheet::Sheet& sheet, const sheet::ImportResult& imported);

}  // namespace synthara::cli
