#include "cli/AnalyzeCommand.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ostream>
#include <vector>

#include <CLI/CLI.hpp>

#include "analysis/Analysis.h"
#include "analysis/IndexChoice.h"
#include "cli/App.h"
#include "cli/CliPrompter.h"
#include "cli/CommandSupport.h"
#include "cli/JsonWriter.h"
#include "effectsize/Trail.h"

namespace synthara::cli {
namespace {

using analysis::AnalysisResult;
using analysis::Estimate;

// The JSON key of each identifying level, study name first.
constexpr std::array<const char*, 5> kLevelKeys = {"study", "subgroup", "comparison", "outcome",
                                                   "time_point"};

// The display-scale numbers of an estimate.
void WriteDisplay(JsonWriter& json, const Estimate& e) {
    json.Key("display").BeginObject();
    json.Key("lower").Number(e.displayLower);
    json.Key("point").Number(e.displayPoint);
    json.Key("upper").Number(e.displayUpper);
    json.EndObject();
}

// A study row's identifying text at `level`, where the table has that level.
void WriteLevel(JsonWriter& json, const AnalysisResult& r, const analysis::StudyResult& s,
                std::size_t level) {
    if (r.levelPresent[level]) json.Key(kLevelKeys[level]).String(s.identity[level]);
}

// The members of these objects stand in the order of their keys, as the
// output has always had them, so the estimate's numbers and the levels mix.
void WriteStudy(JsonWriter& json, const AnalysisResult& r, const analysis::StudyResult& s) {
    const Estimate& e = s.estimate;
    json.BeginObject();
    WriteLevel(json, r, s, 2);  // comparison
    WriteDisplay(json, e);
    json.Key("hide_reason").String(s.hideReason);
    json.Key("lower").Number(e.lower);
    WriteLevel(json, r, s, 3);  // outcome
    json.Key("p").Number(e.p);
    json.Key("point").Number(e.point);
    json.Key("se").Number(e.se);
    WriteLevel(json, r, s, 0);  // study
    WriteLevel(json, r, s, 1);  // subgroup
    WriteLevel(json, r, s, 4);  // time_point
    json.Key("upper").Number(e.upper);
    json.Key("valid").Bool(s.valid);
    json.Key("variance").Number(e.variance);
    json.Key("weight").BeginObject();
    json.Key("fixed").Number(s.weightFixed);
    json.Key("random").Number(s.weightRandom);
    json.EndObject();
    json.Key("z").Number(e.z);
    json.EndObject();
}

void WriteSummary(JsonWriter& json, const analysis::SummaryResult& s) {
    const Estimate& e = s.estimate;
    json.BeginObject();
    json.Key("df").Number(s.df);
    WriteDisplay(json, e);
    json.Key("group").String(s.group);
    json.Key("i2").Number(s.i2);
    json.Key("k").Integer(s.k);
    json.Key("lower").Number(e.lower);
    json.Key("model").String(s.modelWord);
    json.Key("p").Number(e.p);
    json.Key("point").Number(e.point);
    json.Key("q").Number(s.q);
    json.Key("q_p").Number(s.qP);
    json.Key("se").Number(e.se);
    json.Key("tau").Number(s.tau);
    json.Key("tau2").Number(s.tau2);
    json.Key("tau2_se").Number(s.tau2Se);
    json.Key("tau2_variance").Number(s.tau2Variance);
    json.Key("upper").Number(e.upper);
    json.Key("variance").Number(e.variance);
    json.Key("z").Number(e.z);
    json.EndObject();
}

std::string Decimals(const std::optional<double>& value, int digits) {
    return value ? effectsize::FormatDecimals(*value, digits) : std::string();
}

std::string Percent(double level) {
    return std::to_string(static_cast<int>(level * 100 + 0.5)) + "%";
}

// The studies in two sweeps, the widths first: a million lines are
// formatted twice rather than held.
void PrintStudies(analysis::Analysis& analysis, const AnalysisResult& r, std::ostream& out) {
    std::vector<std::string> head;
    for (std::size_t i = 0; i < r.levelPresent.size(); ++i) {
        if (r.levelPresent[i]) head.emplace_back(sheet::PopulationNames[i]);
    }
    const std::size_t firstNumber = head.size();
    for (const char* title :
         {"Point", "Lower limit", "Upper limit", "Weight (Fixed)", "Weight (Random)"})
        head.emplace_back(title);
    const auto lineOf = [&](const analysis::StudyResult& s, std::vector<std::string>& line) {
        line.clear();
        for (std::size_t i = 0; i < r.levelPresent.size(); ++i) {
            if (r.levelPresent[i]) line.push_back(s.identity[i]);
        }
        if (s.valid) {
            line.push_back(Decimals(s.estimate.displayPoint, 3));
            line.push_back(Decimals(s.estimate.displayLower, 3));
            line.push_back(Decimals(s.estimate.displayUpper, 3));
            line.push_back(Decimals(s.weightFixed, 2));
            line.push_back(Decimals(s.weightRandom, 2));
        } else {
            line.push_back(s.hideReason.empty() ? "Not valid" : s.hideReason);
        }
    };
    std::vector<std::size_t> widths = ColumnWidths({head});
    std::vector<std::string> line;
    analysis::ForEachStudy(analysis, [&](const analysis::StudyResult& s) {
        lineOf(s, line);
        for (std::size_t k = 0; k < line.size() && k < widths.size(); ++k)
            widths[k] = std::max(widths[k], line[k].size());
    });
    std::vector<std::size_t> right;
    for (std::size_t k = firstNumber; k < head.size(); ++k)
        right.push_back(k);
    PrintLine(head, widths, out, right);
    analysis::ForEachStudy(analysis, [&](const analysis::StudyResult& s) {
        lineOf(s, line);
        PrintLine(line, widths, out, right);
    });
}

void PrintSummaries(const AnalysisResult& r, std::ostream& out) {
    std::vector<std::vector<std::string>> lines = {
        {"Model", "Number Studies", "Point estimate", "Lower limit", "Upper limit", "Z-value",
         "P-value", "Q-value", "df (Q)", "P-value", "I-squared", "Tau Squared"}};
    for (const auto& s : r.summaries) {
        std::string name = s.modelWord;
        if (s.model == 1) name = "Fixed effect";
        if (s.model == 2) name = "Random effects";
        lines.push_back({name, std::to_string(s.k), Decimals(s.estimate.displayPoint, 3),
                         Decimals(s.estimate.displayLower, 3), Decimals(s.estimate.displayUpper, 3),
                         Decimals(s.estimate.z, 3), Decimals(s.estimate.p, 3), Decimals(s.q, 3),
                         Decimals(s.df, 0), Decimals(s.qP, 3), Decimals(s.i2, 3),
                         Decimals(s.tau2, 6)});
    }
    PrintColumns(lines, out, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
}

}  // namespace

CLI::App* AddAnalyzeCommand(CLI::App& app, AnalyzeArgs& args) {
    auto* cmd = app.add_subcommand("analyze", "Combine the studies: fixed and random summaries");
    AddInputOptions(*cmd, args.input, args.format, args.separators);
    AddOptionArg(*cmd, args.options);
    cmd->add_option("--index", args.index,
                    "Effect size index, as the analysis offers it (default: the primary index)");
    cmd->add_option("--ci-level", args.ciLevel,
                    "Confidence level in percent: 99, 95, 90, 85, 80, 75, 70 or 68");
    cmd->add_flag("--json", args.json, "Print JSON");
    return cmd;
}

void WriteAnalyzeJson(analysis::Analysis& analysis, const AnalysisResult& r, std::ostream& out) {
    JsonWriter json(out);
    json.BeginObject();
    json.Key("ci_level").Number(r.ciLevel);
    json.Key("computation_index").String(r.computationIndex);
    json.Key("index").String(r.index);
    json.Key("studies").BeginArray();
    analysis::ForEachStudy(analysis,
                           [&](const analysis::StudyResult& s) { WriteStudy(json, r, s); });
    json.EndArray();
    json.Key("summaries").BeginArray();
    for (const auto& s : r.summaries)
        WriteSummary(json, s);
    json.EndArray();
    json.Key("transform").String(analysis::TransformWord(r.transform));
    json.EndObject();
}

int RunAnalyze(const AnalyzeArgs& args, std::ostream& out, std::ostream& err) {
    double level = analysis::DefaultCILevel;
    if (!args.ciLevel.empty()) {
        const auto parsed = analysis::ParseConfidenceLevel(args.ciLevel);
        if (!parsed) {
            err << "--ci-level must be one of 99, 95, 90, 85, 80, 75, 70, 68\n";
            return ExitUsage;
        }
        level = *parsed;
    }

    CliPrompter prompter(err);
    const CommandObject<shell::Document> held(prompter);
    shell::Document& document = *held;
    if (const int status =
            OpenInput(args.input, args.format, args.separators, document, err, args.options);
        status != ExitDone)
        return status;

    // A file of titles alone has no blocks either; the sheet check would ask
    // for columns, when what is missing is the studies.
    if (document.Sheet().isRowEmpty(document.Sheet().GetLastRow())) {
        err << args.input << ": the file has no study rows to analyse\n";
        return ExitRefused;
    }

    const CommandObject<analysis::Analysis> heldAnalysis(prompter);
    analysis::Analysis& analysis = *heldAnalysis;
    analysis.DisplayIndex = args.index;
    analysis.CILevel = level;
    switch (document.RunAnalyses(analysis)) {
        case analysis::ComputeStatus::Done:
            break;
        case analysis::ComputeStatus::SheetRefused:
        case analysis::ComputeStatus::UnknownIndex:
            return ExitRefused;  // the engine's box has said why
        case analysis::ComputeStatus::NoIndexColumns:
            err << "The sheet has no \"" << analysis.ComputationIndex
                << "\" columns: its data formats do not yield the index \"" << analysis.DisplayIndex
                << "\"\n";
            return ExitRefused;
        case analysis::ComputeStatus::NotAvailable:
            err << "The Mantel-Haenszel summary (\"" << analysis.DisplayIndex << "\")" << kNotBuilt
                << '\n';
            return ExitRefused;
        case analysis::ComputeStatus::Busy:
            return ExitRefused;
    }

    const AnalysisResult result = analysis::CollectSummaries(analysis);
    if (!analysis::AnyValidStudy(analysis)) {
        err << "No study has a valid \"" << analysis.DisplayIndex
            << "\": every row lacks the data it needs or was refused (\"compute\" shows each "
               "row's errors)\n";
        return ExitRefused;
    }
    if (args.json) {
        WriteAnalyzeJson(analysis, result, out);
        return ExitDone;
    }
    out << analysis.IndexLabel << "  (" << Percent(result.ciLevel)
        << " confidence interval; computed as " << result.computationIndex << ")\n\n";
    PrintStudies(analysis, result, out);
    out << '\n';
    PrintSummaries(result, out);
    return ExitDone;
}

}  // namespace synthara::cli
