#include "cli/App.h"

#include <exception>
#include <new>
#include <ostream>

#include <CLI/CLI.hpp>

#include "cli/AnalyzeCommand.h"
#include "cli/BiasCommand.h"
#include "cli/ComputeCommand.h"
#include "cli/ConvertCommand.h"
#include "cli/RegressCommand.h"
#include "sheet/files/Project.h"

namespace synthara::cli {

int Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    CLI::App app("Synthara: meta-analysis from the command line", "synthara-cli");
    app.set_version_flag("--version", std::string("synthara-cli ") + SYNTHARA_VERSION);
    app.require_subcommand(1);

    ComputeArgs compute;
    auto* computeCmd = AddComputeCommand(app, compute);
    AnalyzeArgs analyze;
    auto* analyzeCmd = AddAnalyzeCommand(app, analyze);
    BiasArgs bias;
    auto* biasCmd = AddBiasCommand(app, bias);
    RegressArgs regress;
    auto* regressCmd = AddRegressCommand(app, regress);
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
        if (biasCmd->parsed()) return RunBias(bias, out, err);
        if (regressCmd->parsed()) return RunRegress(regress, out, err);
        if (convertCmd->parsed()) return RunConvert(convert, out, err);
    } catch (const std::bad_alloc&) {
        err << sheet::NotEnoughMemoryToRead << '\n';
        return ExitRefused;
    } catch (const std::exception&) {
        // The engine reports bad data in its own words; this is the last
        // guard, and a library's text means nothing to the user.
        err << "The command stopped on an unexpected fault in the program\n";
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
