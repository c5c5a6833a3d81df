#include "cli/CommandSupport.h"

#include <algorithm>
#include <ostream>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "cli/App.h"
#include "sheet/import/ImportTable.h"
#include "shell/FileKinds.h"

namespace synthara::cli {

void AddInputOptions(CLI::App& command, std::string& input, std::string& format) {
    command.add_option("INPUT", input, kInputHelp)->required();
    command.add_option("--format", format,
                       "Data format (long or short name) of rows without a \"Data format\" cell");
}

int OpenInput(const std::string& input, const std::string& format, shell::Document& document,
              std::ostream& err) {
    const shell::OpenOutcome opened = document.Open(input, {format});
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

std::string Dump(const nlohmann::json& value) {
    return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string Pad(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text;
}

void PrintColumns(const std::vector<std::vector<std::string>>& lines, std::ostream& out,
                  const std::vector<std::size_t>& rightAligned) {
    std::vector<std::size_t> width;
    for (const auto& line : lines) {
        if (width.size() < line.size()) width.resize(line.size(), 0);
        for (std::size_t k = 0; k < line.size(); ++k)
            width[k] = std::max(width[k], line[k].size());
    }
    for (const auto& line : lines) {
        std::string text;
        for (std::size_t k = 0; k < line.size(); ++k) {
            if (k > 0) text += "  ";
            const bool right =
                std::find(rightAligned.begin(), rightAligned.end(), k) != rightAligned.end();
            if (right) text.append(width[k] - line[k].size(), ' ');
            text += right || k + 1 == line.size() ? line[k] : Pad(line[k], width[k]);
        }
        out << text << '\n';
    }
}

}  // namespace synthara::cli
