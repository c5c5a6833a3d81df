#include "cli/ConvertCommand.h"

#include <ostream>

#include <CLI/CLI.hpp>

#include "cli/App.h"
#include "cli/CliPrompter.h"
#include "cli/CommandSupport.h"
#include "shell/FileKinds.h"

namespace synthara::cli {

CLI::App* AddConvertCommand(CLI::App& app, ConvertArgs& args) {
    auto* cmd = app.add_subcommand("convert", "Write a project or template from a file");
    AddInputOptions(*cmd, args.input, args.format, args.separators);
    cmd->add_option("OUTPUT", args.output, "The project (.syn) or template (.syt) to write")
        ->required();
    AddOptionArg(*cmd, args.options);
    return cmd;
}

int RunConvert(const ConvertArgs& args, std::ostream& out, std::ostream& err) {
    if (!shell::IsProjectFile(args.output)) {
        err << args.output << ": the output must end in .syn (project) or .syt (template)\n";
        return ExitUsage;
    }
    CliPrompter prompter(err);
    const CommandObject<shell::Document> held(prompter);
    shell::Document& document = *held;
    if (const int status =
            OpenInput(args.input, args.format, args.separators, document, err, args.options);
        status != ExitDone)
        return status;
    // The project written keeps the options its cells were computed with, so
    // that opening it computes the same numbers.
    if (!args.options.empty() && !document.SetOptions(document.Options())) return ExitRefused;
    const sheet::FileResult saved = document.Save(args.output);
    if (!saved.ok) {
        err << args.output << ": " << saved.message << '\n';
        return ExitRefused;
    }
    out << "Wrote " << args.output << " (" << document.DataRows() << " rows)\n";
    return ExitDone;
}

}  // namespace synthara::cli
