#include "cli/App.h"

#include <exception>
#include <new>
#include <optional>
#include <ostream>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>

#include "cli/AnalyzeCommand.h"
#include "cli/BiasCommand.h"
#include "cli/ComputeCommand.h"
#include "cli/ConvertCommand.h"
#include "sheet/files/Project.h"

namespace synthara::cli {
namespace {

// The commands and options of the command line that this version does not
// have yet. An option is named with its command, or with "" for every
// command that reads INPUT.
constexpr std::string_view kPlannedCommands[] = {"regress"};
constexpr std::pair<std::string_view, std::string_view> kPlannedOptions[] = {{"", "--option"}};

CLI::App* FindSubcommand(CLI::App& app, std::string_view name) {
    for (CLI::App* sub : app.get_subcommands([](CLI::App*) { return true; })) {
        if (sub->get_name() == name) return sub;
    }
    return nullptr;
}

bool IsPlannedOption(std::string_view command, std::string_view option) {
    for (const auto& [forCommand, name] : kPlannedOptions) {
        if (name == option && (forCommand.empty() || forCommand == command)) return true;
    }
    return false;
}

// What the arguments ask for that is planned and not built yet, in words;
// nothing when they ask for nothing of the kind. An option counts only while
// its command has no option of that name, so that building it is enough.
std::optional<std::string> NotBuiltYet(CLI::App& app, const std::vector<std::string>& args) {
    std::size_t at = 0;
    while (at < args.size() && args[at].starts_with("-"))
        ++at;
    if (at == args.size()) return std::nullopt;
    const std::string& command = args[at];
    CLI::App* sub = FindSubcommand(app, command);
    if (sub == nullptr) {
        for (std::string_view planned : kPlannedCommands) {
            if (planned == command) return "The command \"" + command + "\"" + kNotBuilt;
        }
        return std::nullopt;
    }
    for (std::size_t i = at + 1; i < args.size() && args[i] != "--"; ++i) {
        if (!args[i].starts_with("--")) continue;
        const std::string option = args[i].substr(0, args[i].find('='));
        if (IsPlannedOption(command, option) && sub->get_option_no_throw(option) == nullptr)
            return "The option " + option + " of \"" + command + "\"" + kNotBuilt;
    }
    return std::nullopt;
}

}  // namespace

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
    ConvertArgs convert;
    auto* convertCmd = AddConvertCommand(app, convert);

    if (const auto notBuilt = NotBuiltYet(app, args)) {
        err << *notBuilt << '\n';
        return ExitUsage;
    }
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
