#include "cli/App.h"

#include <exception>
#include <ostream>

#include <CLI/CLI.hpp>

#include "cli/AnalyzeCommand.h"
#include "cli/ComputeCommand.h"
#include "cli/ConvertCommand.h"

namespace synthara::cli {

int Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    CLI::App app("Synthara: meta-analysis from the command line", "synthara-cli");
    app.set_version_flag("--version", std::string("synthara-cli ") + SYNTHARA_VERSION);
    app.require_subcommand(1);

    ComputeArgs compute;
    auto* computeCmd = AddComputeCommand(app, compute);
    AnalyzeArgs analyze;
    auto* analyzeCmd = AddAnalyzeCommand(app, analyze);
    ConvertArgs convert;
    auto* convertCmd = AddConvertCommand(app, convert);

    try {
        // CLI11 takes the arguments last to first.
        std::vector<std::string> reversed(args.rbegin(), args.rend());
        app.parse(reversed);
    } catch (const CLI::ParseError& e) {
        const int status = app.exit(e, out, err);
        return status == 0 ? ExitDone : ExitUsage;
    }
    try {
        if (computeCmd->parsed()) return RunCompute(compute, out, err);
        if (analyzeCmd->parsed()) return RunAnalyze(analyze, out, err);
        if (convertCmd->parsed()) return RunConvert(convert, out, err);
    } catch (const std::exception& e) {
        // The engine reports bad data in its own words; this is the last guard.
        err << "synthara-cli: " << e.what() << '\n';
        return ExitRefused;
    }
    return ExitUsage;
}

int Run(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    std::vector<std::string> args;
    for (int i = 1; i < argc; ++i)
        args.emplace_back(argv[i]);
    return Run(args, out, err);
}

}  // namespace synthara::cli
