#include "cli/CommandSupport.h"

#include <algorithm>
#include <ostream>

#include <CLI/CLI.hpp>

#include "cli/App.h"
#include "cli/LocaleSeparators.h"
#include "effectsize/Options.h"
#include "effectsize/Trail.h"
#include "sheet/import/ImportTable.h"
#include "shell/FileKinds.h"

namespace synthara::cli {

void AddInputOptions(CLI::App& command, std::string& input, std::string& format,
                     sheet::NumberSeparators& separators) {
    command.add_option("INPUT", input, kInputHelp)->required();
    command.add_option("--format", format,
                       "Data format (long or short name) of rows without a \"Data format\" cell");
    command
        .add_option_function<std::string>(
            "--locale",
            [&separators](const std::string& name) {
                const auto found = LocaleSeparators(name);
                if (!found)
                    throw CLI::ValidationError(
                        "--locale", "the locale \"" + name + "\" is not installed on this system");
                separators = *found;
            },
            "How numbers typed in cells are read, e.g. de_DE (default: the C locale)")
        ->type_name("NAME");
}

void AddOptionArg(CLI::App& command, std::vector<std::string>& options) {
    command
        .add_option("--option", options,
                    "A computation option for this run: ImputedR, FudgeFactor, "
                    "PoolVarianceMethod or GVarianceMethod (default: the project's value)")
        ->type_name("NAME=VALUE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

namespace {

// The --option values, each checked as the options dialog checks it.
int ReadOptions(const std::vector<std::string>& given, effectsize::OptionOverrides& overrides,
                shell::Document& document, std::ostream& err) {
    for (const std::string& option : given) {
        if (const auto fault = effectsize::ReadOption(option, overrides)) {
            err << *fault << '\n';
            return ExitUsage;
        }
    }
    effectsize::ComputeOptions checked;
    overrides.ApplyTo(checked);
    if (const auto refused = effectsize::CheckVals(checked)) {
        document.Prompts().Message(*refused);
        return ExitUsage;
    }
    return ExitDone;
}

}  // namespace

int OpenInput(const std::string& input, const std::string& format,
              const sheet::NumberSeparators& separators, shell::Document& document,
              std::ostream& err, const std::vector<std::string>& options) {
    effectsize::OptionOverrides overrides;
    if (const int status = ReadOptions(options, overrides, document, err); status != ExitDone)
        return status;
    const shell::OpenOutcome opened = document.Open(input, {format, separators, overrides});
    switch (opened.status) {
        case shell::OpenStatus::Opened:
            break;
        case shell::OpenStatus::UnknownFormat:
            err << "Unknown data format \"" << format << "\" (--format)\n";
            return ExitUsage;
        case shell::OpenStatus::NoFormat:
            err << "No data format: give --format or a \"" << sheet::DataFormatTitle
                << "\" column\n";
            return ExitUsage;
        case shell::OpenStatus::Refused:
            err << opened.message << '\n';
            return ExitRefused;
    }
    // A project's rows already carry their formats: --format names none of them.
    if (!format.empty() && shell::IsProjectFile(input))
        err << "--format has no effect on a project file\n";
    return ExitDone;
}

namespace {
bool leaveToExit = false;
}  // namespace

void LeaveToExit(bool leave) {
    leaveToExit = leave;
}

bool LeavingToExit() {
    return leaveToExit;
}

void KeepToExit(const void* object) {
    // Never freed, so that what it holds stays reachable to leak checkers.
    static auto* const kept = new std::vector<const void*>;
    kept->push_back(object);
}

std::string Decimals(const std::optional<double>& value, int digits) {
    return value ? effectsize::FormatDecimals(*value, digits) : std::string();
}

std::vector<std::size_t> ColumnRange(std::size_t first, std::size_t end) {
    std::vector<std::size_t> columns;
    for (std::size_t k = first; k < end; ++k)
        columns.push_back(k);
    return columns;
}

std::string Pad(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text;
}

std::vector<std::size_t> ColumnWidths(const std::vector<std::vector<std::string>>& lines) {
    std::vector<std::size_t> width;
    for (const auto& line : lines) {
        if (width.size() < line.size()) width.resize(line.size(), 0);
        for (std::size_t k = 0; k < line.size(); ++k)
            width[k] = std::max(width[k], line[k].size());
    }
    return width;
}

void PrintLine(const std::vector<std::string>& line, const std::vector<std::size_t>& widths,
               std::ostream& out, const std::vector<std::size_t>& rightAligned) {
    std::string text;
    for (std::size_t k = 0; k < line.size(); ++k) {
        if (k > 0) text += "  ";
        const bool right =
            std::find(rightAligned.begin(), rightAligned.end(), k) != rightAligned.end();
        if (right) text.append(widths[k] - line[k].size(), ' ');
        text += right || k + 1 == line.size() ? line[k] : Pad(line[k], widths[k]);
    }
    out << text << '\n';
}

void PrintColumns(const std::vector<std::vector<std::string>>& lines, std::ostream& out,
                  const std::vector<std::size_t>& rightAligned) {
    const std::vector<std::size_t> widths = ColumnWidths(lines);
    for (const auto& line : lines)
        PrintLine(line, widths, out, rightAligned);
}

}  // namespace synthara::cli
