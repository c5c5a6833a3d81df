#include "cli/ComputeCommand.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <sstream>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "cli/App.h"
#include "cli/CliPrompter.h"
#include "cli/CommandSupport.h"
#include "cli/LoadInput.h"
#include "effectsize/Trail.h"
#include "effectsize/WorkingSet.h"

namespace synthara::cli {
namespace {

using nlohmann::json;
using sheet::FixedRowCount;

// A cell as a JSON number; null when it holds none (or nothing finite).
json Number(const sheet::Sheet& sheet, int row, int col) {
    if (col <= 0) return nullptr;
    double value = 0;
    if (!sheet.flex.At(row, col).TryNumber(value) || !std::isfinite(value)) return nullptr;
    return value;
}

bool IsValid(const sheet::Sheet& sheet, int row, int index) {
    const int col = sheet.DisplayColTable[static_cast<std::size_t>(index)][sheet::AttrValid];
    double valid = 0;
    return col > 0 && sheet.flex.At(row, col).TryNumber(valid) && valid == 1.0;
}

json Indices(const sheet::Sheet& sheet, int row) {
    json indices = json::object();
    const auto& names = sheet::IndexNameTable();
    for (int i = 1; i <= sheet::IndexCount; ++i) {
        const auto& name = names[static_cast<std::size_t>(i)];
        if (name.empty() || !IsValid(sheet, row, i)) continue;
        const auto& cols = sheet.DisplayColTable[static_cast<std::size_t>(i)];
        indices[name] = {{"point", Number(sheet, row, cols[sheet::AttrPoint])},
                         {"se", Number(sheet, row, cols[sheet::AttrStdErr])},
                         {"variance", Number(sheet, row, cols[sheet::AttrVariance])}};
    }
    return indices;
}

std::string StudyName(const sheet::Sheet& sheet, int row) {
    const int col = sheet.GetCol(0, 1);
    return col >= 0 ? sheet.flex.Text(row, col) : std::string();
}

// The readable table: each row's primary index (its format's first one) with
// point and standard error, then its messages.
// The indices a row's format shows first, each with its point and, where it
// has one, its standard error: "Odds ratio 0.391; Log odds ratio -0.939 (SE 0.598)".
std::string Results(const json& indices, const sheet::FormatDef& format, int decimals) {
    std::string text;
    for (std::string_view name : format.displaySet) {
        const auto it = indices.find(std::string(name));
        if (it == indices.end() || !(*it)["point"].is_number()) continue;
        if (!text.empty()) text += "; ";
        text += std::string(name) + " " +
                effectsize::FormatDecimals((*it)["point"].get<double>(), decimals);
        if ((*it)["se"].is_number())
            text += " (SE " + effectsize::FormatDecimals((*it)["se"].get<double>(), decimals) + ")";
    }
    return text;
}

void PrintTable(const json& rows, const sheet::Sheet& sheet, std::ostream& out) {
    std::vector<std::vector<std::string>> lines{{"Row", "Study name", "Data format", "Results"}};
    std::vector<std::vector<std::string>> errors{{}};
    for (const auto& r : rows) {
        const std::string longName = r["format"].get<std::string>();
        const auto* format = sheet::FindFormat(longName);
        lines.push_back({std::to_string(r["row"].get<int>()), r["study"].get<std::string>(),
                         format != nullptr ? std::string(format->shortName) : longName,
                         format != nullptr ? Results(r["indices"], *format, sheet.Decimals) : ""});
        errors.push_back(r["errors"].get<std::vector<std::string>>());
    }
    std::ostringstream table;
    PrintColumns(lines, table, {0});
    // Each row's messages stand under it, indented.
    std::istringstream printed(table.str());
    std::string line;
    for (std::size_t k = 0; std::getline(printed, line); ++k) {
        out << line << '\n';
        if (k < errors.size())
            for (const auto& e : errors[k])
                out << "    " << e << '\n';
    }
}

}  // namespace

CLI::App* AddComputeCommand(CLI::App& app, ComputeArgs& args) {
    auto* cmd = app.add_subcommand("compute", "Compute every row's effect sizes");
    AddInputOptions(*cmd, args.input, args.format, args.separators);
    cmd->add_flag("--json", args.json, "Print JSON");
    return cmd;
}

json ComputeJson(const sheet::Sheet& sheet, const sheet::ImportResult& imported) {
    json rows = json::array();
    const int formatCol = sheet.FormatCol();
    const int errorCol = sheet.ErrorCol();
    for (int i = 0; i < imported.dataRows; ++i) {
        const int row = FixedRowCount + i;
        const std::string format = formatCol >= 0 ? sheet.flex.Text(row, formatCol) : "";
        if (format.empty()) continue;  // a blank line of the file
        const std::string errors = errorCol >= 0 ? sheet.flex.Text(row, errorCol) : "";
        rows.push_back({{"row", i + 1},
                        {"study", StudyName(sheet, row)},
                        {"format", format},
                        {"errors", effectsize::SplitErrors(errors)},
                        {"indices", Indices(sheet, row)}});
    }
    return {{"rows", std::move(rows)}};
}

int RunCompute(const ComputeArgs& args, std::ostream& out, std::ostream& err) {
    CliPrompter prompter(err);
    sheet::Sheet sheet(prompter);
    sheet.Separators = args.separators;
    sheet::ImportResult imported;
    if (const int status = LoadAndCompute(args.input, args.format, sheet, imported, prompter, err);
        status != ExitDone)
        return status;
    const json result = ComputeJson(sheet, imported);
    if (args.json)
        out << Dump(result) << '\n';
    else
        PrintTable(result["rows"], sheet, out);
    return ExitDone;
}

}  // namespace synthara::cli
