#include "cli/ConvertCommand.h"

#include <ostream>

#include <CLI/CLI.hpp>

#include "cli/App.h"
#include "cli/CliPrompter.h"
#include "cli/CommandSupport.h"
#include "cli/LoadInput.h"
#include "sheet/ProjectFile.h"

namespace synthara::cli {

CLI::App* AddConvertCommand(CLI::App& app, ConvertArgs& args) {
    auto* cmd = app.add_subcommand("convert", "Write a project or template from a file");
    cmd->add_option("INPUT", args.input, kInputHelp)->required();
    cmd->add_option("OUTPUT", args.output, "The project (.syn) or template (.syt) to write")
        ->required();
    cmd->add_option("--format", args.format,
                    "Data format (long or short name) of rows without a \"Data format\" cell");
    return cmd;
}

int RunConvert(const ConvertArgs& args, std::ostream& out, std::ostream& err) {
    if (!IsProjectFile(args.output)) {
        err << args.output << ": the output must end in .syn (project) or .syt (template)\n";
        return ExitUsage;
    }
    CliPrompter prompter(err);
    sheet::Sheet sheet(prompter);
    sheet::ImportResult imported;
    if (const int status = LoadInput(args.input, args.format, sheet, imported, err);
        status != ExitDone)
        return status;
    // A project holds its rows' results, as the sheet shows them after typing.
    ComputeRows(sheet, imported, prompter);
    const sheet::FileResult saved = sheet::SaveProjectFile(sheet, args.output);
    if (!saved.ok) {
        err << args.output << ": " << saved.message << '\n';
        return ExitRefused;
    }
    out << "Wrote " << args.output << " (" << imported.dataRows << " rows)\n";
    return ExitDone;
}

}  // namespace synthara::cli
