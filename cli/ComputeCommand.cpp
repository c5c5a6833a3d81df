#include "cli/ComputeCommand.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <ostream>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/App.h"
#include "cli/CliPrompter.h"
#include "cli/CommandSupport.h"
#include "cli/JsonWriter.h"
#include "effectsize/RowResult.h"
#include "effectsize/Trail.h"
#include "effectsize/WorkingSet.h"

namespace synthara::cli {
namespace {

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

const std::string& IndexName(const effectsize::IndexResult& index) {
    return sheet::IndexNameTable()[static_cast<std::size_t>(index.index)];
}

// The indices the row shows, by name; a number that is not finite is null.
void WriteIndices(JsonWriter& json, const effectsize::RowResult& result, bool trails) {
    std::vector<const effectsize::IndexResult*> byName;
    byName.reserve(result.indices.size());
    for (const effectsize::IndexResult& index : result.indices)
        byName.push_back(&index);
    std::sort(byName.begin(), byName.end(),
              [](const auto* a, const auto* b) { return IndexName(*a) < IndexName(*b); });
    json.BeginObject();
    for (const effectsize::IndexResult* index : byName) {
        json.Key(IndexName(*index)).BeginObject();
        json.Key("point").Number(index->point);
        json.Key("se").Number(index->stdErr);
        if (trails) json.Key("trail").String(TrailLines(index->trail));
        json.Key("variance").Number(index->variance);
        json.EndObject();
    }
    json.EndObject();
}

// One row's object; its members, like every object's, in the order of their keys.
void WriteRow(JsonWriter& json, const shell::Document& document, int i,
              const effectsize::RowResult& result, bool trails) {
    json.BeginObject();
    json.Key("errors").BeginArray();
    for (const std::string& error : effectsize::SplitErrors(result.errors))
        json.String(error);
    json.EndArray();
    json.Key("format").String(result.format);
    json.Key("indices");
    WriteIndices(json, result, trails);
    json.Key("row").Integer(i + 1);
    json.Key("study").String(document.StudyName(i));
    json.EndObject();
}

// The number in the readable table; nothing where the index has none.
std::optional<double> Shown(const std::optional<double>& value) {
    if (value && std::isfinite(*value)) return value;
    return std::nullopt;
}

// The indices a row's format shows first, each with its point and, where it
// has one, its standard error: "Odds ratio 0.391; Log odds ratio -0.939 (SE 0.598)".
std::string Results(const effectsize::RowResult& result, const sheet::FormatDef& format,
                    int decimals) {
    std::string text;
    for (std::string_view name : format.displaySet) {
        const effectsize::IndexResult* index = result.Find(sheet::IndexNumber(name));
        if (index == nullptr) continue;
        const auto point = Shown(index->point);
        if (!point) continue;
        if (!text.empty()) text += "; ";
        text += std::string(name) + " " + effectsize::FormatDecimals(*point, decimals);
        if (const auto se = Shown(index->stdErr))
            text += " (SE " + effectsize::FormatDecimals(*se, decimals) + ")";
    }
    return text;
}

// The readable table: a line per row with the indices its format shows first,
// then the row's messages under it, indented. The column widths depend on
// every row, so the lines are kept until the end.
void PrintTable(const shell::Document& document, std::ostream& out) {
    std::vector<std::vector<std::string>> lines{{"Row", "Study name", "Data format", "Results"}};
    std::vector<std::vector<std::string>> errors{{}};
    const sheet::FormatDef* format = nullptr;  // the previous row's, as rows come in runs
    document.ForEachRowResult([&](int i, const effectsize::RowResult& result) {
        if (result.format.empty()) return;  // a blank line of the file
        if (format == nullptr || format->longName != result.format)
            format = sheet::FindFormat(result.format);
        lines.push_back({std::to_string(i + 1), document.StudyName(i),
                         format != nullptr ? std::string(format->shortName) : result.format,
                         format != nullptr ? Results(result, *format, document.Sheet().Decimals)
                                           : std::string()});
        errors.push_back(effectsize::SplitErrors(result.errors));
    });
    const std::vector<std::size_t> widths = ColumnWidths(lines);
    for (std::size_t k = 0; k < lines.size(); ++k) {
        PrintLine(lines[k], widths, out, {0});
        for (const std::string& error : errors[k])
            out << "    " << error << '\n';
    }
}

}  // namespace

CLI::App* AddComputeCommand(CLI::App& app, ComputeArgs& args) {
    auto* cmd = app.add_subcommand("compute", "Compute every row's effect sizes");
    AddInputOptions(*cmd, args.input, args.format, args.separators);
    cmd->add_flag("--json", args.json, "Print JSON");
    cmd->add_flag("--trails", args.trails, "Add each index's formula trail to the JSON");
    AddOptionArg(*cmd, args.options);
    return cmd;
}

void WriteComputeJson(const shell::Document& document, bool trails, std::ostream& out) {
    JsonWriter json(out);
    json.BeginObject();
    json.Key("rows").BeginArray();
    document.ForEachRowResult(
        [&](int i, const effectsize::RowResult& result) {
            if (result.format.empty()) return;  // a blank line of the file
            WriteRow(json, document, i, result, trails);
        },
        trails ? effectsize::Trails::On : effectsize::Trails::Off);
    json.EndArray();
    json.EndObject();
}

int RunCompute(const ComputeArgs& args, std::ostream& out, std::ostream& err) {
    CliPrompter prompter(err);
    const CommandObject<shell::Document> held(prompter);
    shell::Document& document = *held;
    if (const int status =
            OpenInput(args.input, args.format, args.separators, document, err, args.options);
        status != ExitDone)
        return status;
    if (args.json)
        WriteComputeJson(document, args.trails, out);
    else
        PrintTable(document, out);
    return ExitDone;
}

}  // namespace synthara::cli
