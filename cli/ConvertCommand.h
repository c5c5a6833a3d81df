#pragma once
// `convert`: writes a project (.syn) or template (.syt) from a delimited text
// file or from another project, computed as typing the cells would leave it.
#include <iosfwd>
#include <string>
#include <vector>

#include "sheet/grid/Cell.h"

namespace CLI {
class App;
}

namespace synthara::cli {

struct ConvertArgs {
    std::string input;
    std::string output;
    std::string format;
    sheet::NumberSeparators separators;  // --locale
    std::vector<std::string> options;    // --option NAME=VALUE
};

CLI::App* AddConvertCommand(CLI::App& app, ConvertArgs& args);

int RunConvert(const ConvertArgs& args, std::ostream& out, std::ostream& err);

}  // namespace synthara::cli
