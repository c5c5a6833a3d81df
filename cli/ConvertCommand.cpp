#include "cli/ConvertCommand.h"

#include <ostream>

#include <CLI/CLI.hpp>

#include "cli/App.h"
#include "cli/CliPrompter.h"
#include "cli/CommandSupport.h"
#include "cli/LoadInput.h"
#include "sheet/files/ProjectFile.h"

namespace synthara::cli {

CLI::App* AddConvertCommand(CLI::App& app, ConvertArgs& args) {
    auto* cmd = app.add_subcommand("convert", "Write a project or template from a file");
    AddInputOptions(*cmd, args.input, args.format, args.separators);
    cmd->add_option("OUTPUT", args.output, "The project (.syn) or template (.syt) to write")
        ->required();
    return cmd;
}

int RunConvert(const ConvertArgs& args, std::ostream& out, std::ostream& err) {
    if (!IsProjectFile(args.output)) {
        err << args.output << ": the output must end in .syn (project) or .syt (template)\n";
        return ExitUsage;
    }
    CliPrompter prompter(err);
    sheet::Sheet sheet(prompter);
    sheet.Separators = args.separators;
    sheet::ImportResult imported;
    if (const int status = LoadAndCompute(args.input, args.format, sheet, imported, prompter, err);
        status != ExitDone)
        return status;
    const sheet::FileResult saved = sheet::SaveProjectFile(sheet, args.output);
    if (!saved.ok) {
        err << args.output << ": " << saved.message << '\n';
        return ExitRefused;
    }
    out << "Wrote " << args.output << " (" << imported.dataRows << " rows)\n";
    return ExitDone;
}

}  // namespace synthara::cli
