#include "cli/ComputeCommand.h"

#include <algorithm>
#include <cmath>
#include <ostream>

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
void PrintTable(const json& rows, const sheet::Sheet& sheet, std::ostream& out) {
    struct Line {
        std::string row, study, format, index, point, se;
        std::vector<std::string> errors;
    };
    std::vector<Line> lines{{"Row", "Study name", "Data format", "Index", "Point", "Std Err", {}}};
    for (const auto& r : rows) {
        Line line;
        line.row = std::to_string(r["row"].get<int>());
        line.study = r["study"].get<std::string>();
        const auto* format = sheet::FindFormat(r["format"].get<std::string>());
        line.format =
            format != nullptr ? std::string(format->shortName) : r["format"].get<std::string>();
        if (format != nullptr && !format->displaySet.empty()) {
            line.index = std::string(format->displaySet.front());
            if (const auto it = r["indices"].find(line.index); it != r["indices"].end()) {
                const auto text = [&](const json& v) {
                    return v.is_number()
                               ? effectsize::FormatDecimals(v.get<double>(), sheet.Decimals)
                               : std::string();
                };
                line.point = text((*it)["point"]);
                line.se = text((*it)["se"]);
            }
        }
        line.errors = r["errors"].get<std::vector<std::string>>();
        lines.push_back(std::move(line));
    }
    std::array<std::size_t, 6> width{};
    for (const auto& l : lines) {
        const std::array<const std::string*, 6> f{&l.row,   &l.study, &l.format,
                                                  &l.index, &l.point, &l.se};
        for (std::size_t k = 0; k < f.size(); ++k)
            width[k] = std::max(width[k], f[k]->size());
    }
    for (const auto& l : lines) {
        out << Pad(l.row, width[0]) << "  " << Pad(l.study, width[1]) << "  "
            << Pad(l.format, width[2]) << "  " << Pad(l.index, width[3]) << "  "
            << Pad(l.point, width[4]) << "  " << l.se << '\n';
        for (const auto& e : l.errors)
            out << "    " << e << '\n';
    }
}

}  // namespace

CLI::App* AddComputeCommand(CLI::App& app, ComputeArgs& args) {
    auto* cmd = app.add_subcommand("compute", "Compute every row's effect sizes");
    AddInputOptions(*cmd, args.input, args.format);
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
