#include "cli/ComputeCommand.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <ostream>
#include <sstream>
#include <string_view>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "cli/App.h"
#include "cli/CliPrompter.h"
#include "cli/CommandSupport.h"
#include "effectsize/RowResult.h"
#include "effectsize/Trail.h"
#include "effectsize/WorkingSet.h"

namespace synthara::cli {
namespace {

using nlohmann::json;

// A result as a JSON number; null where the index has none.
json Number(const std::optional<double>& value) {
    if (!value || !std::isfinite(*value)) return nullptr;
    return *value;
}

// A trail's lines joined by "\n" (the sheet's cells end them in CR LF).
std::string TrailLines(std::string_view trail) {
    std::string text;
    text.reserve(trail.size());
    for (std::size_t i = 0; i < trail.size(); ++i) {
        if (trail[i] != '\r')
            text += trail[i];
        else if (i + 1 >= trail.size() || trail[i + 1] != '\n')
            text += '\n';
    }
    return text;
}

// The indices the row shows, by name.
json Indices(const effectsize::RowResult& result, bool trails) {
    json indices = json::object();
    const auto& names = sheet::IndexNameTable();
    for (const effectsize::IndexResult& index : result.indices) {
        json entry = {{"point", Number(index.point)},
                      {"se", Number(index.stdErr)},
                      {"variance", Number(index.variance)}};
        if (trails) entry["trail"] = TrailLines(index.trail);
        indices[names[static_cast<std::size_t>(index.index)]] = std::move(entry);
    }
    return indices;
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
    cmd->add_flag("--trails", args.trails, "Add each index's formula trail to the JSON");
    return cmd;
}

json ComputeJson(const shell::Document& document, bool trails) {
    json rows = json::array();
    document.ForEachRowResult(
        [&](int i, const effectsize::RowResult& result) {
            if (result.format.empty()) return;  // a blank line of the file
            rows.push_back({{"row", i + 1},
                            {"study", document.StudyName(i)},
                            {"format", result.format},
                            {"errors", effectsize::SplitErrors(result.errors)},
                            {"indices", Indices(result, trails)}});
        },
        trails ? effectsize::Trails::On : effectsize::Trails::Off);
    return {{"rows", std::move(rows)}};
}

int RunCompute(const ComputeArgs& args, std::ostream& out, std::ostream& err) {
    CliPrompter prompter(err);
    shell::Document document(prompter);
    if (const int status = OpenInput(args.input, args.format, args.separators, document, err);
        status != ExitDone)
        return status;
    const json result = ComputeJson(document, args.trails);
    if (args.json)
        out << Dump(result) << '\n';
    else
        PrintTable(result["rows"], document.Sheet(), out);
    return ExitDone;
}

}  // namespace synthara::cli
