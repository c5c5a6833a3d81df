#include "cli/AnalyzeCommand.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ostream>
#include <vector>

#include <CLI/CLI.hpp>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"
#include "analysis/IndexChoice.h"
#include "cli/AnalysisRun.h"
#include "cli/App.h"
#include "cli/CliPrompter.h"
#include "cli/CommandSupport.h"
#include "cli/JsonWriter.h"
#include "cli/RandomModelTable.h"
#include "cli/ReadableTable.h"
#include "effectsize/Trail.h"

namespace synthara::cli {
namespace {

using analysis::AnalysisResult;
using analysis::Estimate;

// The JSON key of each identifying level, study name first.
constexpr std::array<const char*, 5> kLevelKeys = {"study", "subgroup", "comparison", "outcome",
                                                   "time_point"};

// The display-scale numbers of an estimate.
// With `random`, the random summary's prediction interval too.
void WriteDisplay(JsonWriter& json, const Estimate& e,
                  const analysis::SummaryResult* random = nullptr) {
    json.Key("display").BeginObject();
    json.Key("lower").Number(e.displayLower);
    if (random != nullptr) {
        json.Key("pi_lower").Number(random->piDisplayLower);
        json.Key("pi_upper").Number(random->piDisplayUpper);
    }
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

// The random model's rows also carry the prediction interval, the limits of
// tau-squared and the estimator whose value they show.
void WriteSummary(JsonWriter& json, const analysis::SummaryResult& s) {
    const Estimate& e = s.estimate;
    const bool random = s.model == 2;
    json.BeginObject();
    json.Key("df").Number(s.df);
    WriteDisplay(json, e, random ? &s : nullptr);
    json.Key("group").String(s.group);
    json.Key("i2").Number(s.i2);
    json.Key("k").Integer(s.k);
    json.Key("lower").Number(e.lower);
    json.Key("model").String(s.modelWord);
    json.Key("p").Number(e.p);
    if (random) {
        json.Key("pi_lower").Number(s.piLower);
        json.Key("pi_upper").Number(s.piUpper);
    }
    json.Key("point").Number(e.point);
    json.Key("q").Number(s.q);
    json.Key("q_p").Number(s.qP);
    json.Key("se").Number(e.se);
    json.Key("tau").Number(s.tau);
    json.Key("tau2").Number(s.tau2);
    if (random) {
        json.Key("tau2_lower").Number(s.tau2Lower);
        json.Key("tau2_method").String(s.tau2Method);
    }
    json.Key("tau2_se").Number(s.tau2Se);
    if (random) json.Key("tau2_upper").Number(s.tau2Upper);
    json.Key("tau2_variance").Number(s.tau2Variance);
    json.Key("upper").Number(e.upper);
    json.Key("variance").Number(e.variance);
    json.Key("z").Number(e.z);
    json.EndObject();
}

void WriteBetween(JsonWriter& json, const analysis::BetweenResult& b) {
    json.BeginObject();
    json.Key("df_between").Number(b.dfBetween);
    json.Key("df_within").Number(b.dfWithin);
    json.Key("model").String(b.modelWord);
    json.Key("p_between").Number(b.pBetween);
    json.Key("p_within").Number(b.pWithin);
    json.Key("q_between").Number(b.qBetween);
    json.Key("q_within").Number(b.qWithin);
    json.EndObject();
}

void WritePass(JsonWriter& json, const analysis::PassResult& p) {
    const Estimate& e = p.estimate;
    json.BeginObject();
    WriteDisplay(json, e);
    json.Key("k").Integer(p.k);
    json.Key("lower").Number(e.lower);
    json.Key("model").String(p.modelWord);
    json.Key("p").Number(e.p);
    json.Key("point").Number(e.point);
    json.Key("se").Number(e.se);
    json.Key("study").String(p.study);
    json.Key("upper").Number(e.upper);
    json.Key("variance").Number(e.variance);
    json.Key("z").Number(e.z);
    json.EndObject();
}

// The run asked for besides run 1 (2 or 3), 0 for none.
int SensitivityRun(const analysis::Analysis& analysis) {
    if (analysis.RunOptions[1]) return 2;
    if (analysis.RunOptions[2]) return 3;
    return 0;
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
    const std::vector<std::size_t> right = ColumnRange(firstNumber, head.size());
    PrintLine(head, widths, out, right);
    analysis::ForEachStudy(analysis, [&](const analysis::StudyResult& s) {
        lineOf(s, line);
        PrintLine(line, widths, out, right);
    });
}

// A model's name in the summary table.
std::string ModelName(int model, const std::string& word) {
    if (model == 1) return "Fixed effect";
    if (model == 2) return "Random effects";
    return word;
}

void PrintSummaries(const AnalysisResult& r, bool grouped, std::ostream& out) {
    ReadableTable table(
        {"Model", "Number Studies", "Point estimate", "Lower limit", "Upper limit", "Z-value",
         "P-value", "Q-value", "df (Q)", "P-value", "I-squared", "Tau Squared"},
        1, grouped);
    for (const auto& s : r.summaries) {
        table.Add({ModelName(s.model, s.modelWord), std::to_string(s.k),
                   Decimals(s.estimate.displayPoint, 3), Decimals(s.estimate.displayLower, 3),
                   Decimals(s.estimate.displayUpper, 3), Decimals(s.estimate.z, 3),
                   Decimals(s.estimate.p, 3), Decimals(s.q, 3), Decimals(s.df, 0),
                   Decimals(s.qP, 3), Decimals(s.i2, 3), Decimals(s.tau2, 6)},
                  s.group);
    }
    table.Print(out);
}

// "Total within" and "Total between" of each model, then the total.
void PrintBetween(const AnalysisResult& r, std::ostream& out) {
    ReadableTable table({"Model", "", "Q-value", "df (Q)", "P-value"}, 2);
    for (const auto& b : r.between) {
        const std::string name = ModelName(b.model, b.modelWord);
        table.Add({name, "Total within", Decimals(b.qWithin, 3), Decimals(b.dfWithin, 0),
                   Decimals(b.pWithin, 3)});
        table.Add({name, "Total between", Decimals(b.qBetween, 3), Decimals(b.dfBetween, 0),
                   Decimals(b.pBetween, 3)});
    }
    table.Print(out);
    // Each model's text, then each note on the random rows once.
    std::vector<std::string_view> notes;
    for (const auto& b : r.between) {
        if (analysis::ModelText(b.model).empty()) continue;
        out << '\n' << analysis::ModelText(b.model) << '\n';
        const std::string_view note = analysis::RandomRowsText(b.model);
        if (std::find(notes.begin(), notes.end(), note) == notes.end()) notes.push_back(note);
    }
    for (std::string_view note : notes)
        out << '\n' << note << '\n';
}

void PrintPasses(analysis::Analysis& analysis, int run, std::ostream& out) {
    ReadableTable table({run == 2 ? "Study removed" : "Study added", "Model", "Number Studies",
                         "Point", "Lower limit", "Upper limit", "Z-Value", "p-Value"},
                        2);
    analysis::ForEachPass(analysis, run, [&](const analysis::PassResult& p) {
        const Estimate& e = p.estimate;
        table.Add({p.study, ModelName(p.model, p.modelWord), std::to_string(p.k),
                   Decimals(e.displayPoint, 3), Decimals(e.displayLower, 3),
                   Decimals(e.displayUpper, 3), Decimals(e.z, 3), Decimals(e.p, 3)});
    });
    out << (run == 2 ? "One study removed" : "Cumulative analysis") << "\n\n";
    table.Print(out);
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
    cmd->add_option("--group-by", args.groupBy,
                    "Group the studies by the values of a moderator or identifying column; "
                    "all five computational models are reported");
    cmd->add_option("--run", args.run, "all (default), omit-one (one study removed) or cumulative");
    cmd->add_option("--tau2", args.tau2,
                    "Estimator of tau-squared for the random model: DL (default), REML, ML, PM, "
                    "HE or SJ");
    cmd->add_flag("--hksj", args.hksj,
                  "Hartung-Knapp-Sidik-Jonkman limits for the random model (t on k - 1 df)");
    AddSelectionOptions(*cmd, args.selection);
    cmd->add_flag("--json", args.json, "Print JSON");
    return cmd;
}

void WriteAnalyzeJson(analysis::Analysis& analysis, const AnalysisResult& r, std::ostream& out) {
    JsonWriter json(out);
    const int run = SensitivityRun(analysis);
    const auto passes = [&](const char* key, int which) {
        if (run != which) return;
        json.Key(key).BeginArray();
        analysis::ForEachPass(analysis, run,
                              [&](const analysis::PassResult& p) { WritePass(json, p); });
        json.EndArray();
    };
    json.BeginObject();
    if (analysis.Grouped()) {
        json.Key("between").BeginArray();
        for (const auto& b : r.between)
            WriteBetween(json, b);
        json.EndArray();
    }
    json.Key("ci_level").Number(r.ciLevel);
    json.Key("computation_index").String(r.computationIndex);
    passes("cumulative", 3);
    json.Key("hksj").Bool(r.hksj);
    json.Key("index").String(r.index);
    passes("omit_one", 2);
    json.Key("studies").BeginArray();
    analysis::ForEachStudy(analysis,
                           [&](const analysis::StudyResult& s) { WriteStudy(json, r, s); });
    json.EndArray();
    json.Key("summaries").BeginArray();
    for (const auto& s : r.summaries)
        WriteSummary(json, s);
    json.EndArray();
    json.Key("tau2_method").String(analysis::Tau2MethodWord(r.tau2Method));
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
    const int run = args.run.empty() || args.run == "all" ? 1
                    : args.run == "omit-one"              ? 2
                    : args.run == "cumulative"            ? 3
                                                          : 0;
    if (run == 0) {
        err << "--run must be one of all, omit-one, cumulative\n";
        return ExitUsage;
    }

    std::optional<analysis::Tau2Method> tau2;
    if (!args.tau2.empty()) {
        tau2 = analysis::ParseTau2Method(args.tau2);
        if (!tau2) {
            err << "--tau2 must be one of DL, REML, ML, PM, HE, SJ\n";
            return ExitUsage;
        }
    }

    CliPrompter prompter(err);
    const CommandObject<shell::Document> held(prompter);
    const CommandObject<analysis::Analysis> heldAnalysis(prompter);
    analysis::Analysis& analysis = *heldAnalysis;
    analysis.DisplayIndex = args.index;
    analysis.CILevel = level;
    analysis.GroupBy = args.groupBy;
    analysis.RunOptions[1] = run == 2;
    analysis.RunOptions[2] = run == 3;
    // The project's stored choices, unless the command line gives others.
    analysis.AdjustRandomModel = [tau2, hksj = args.hksj](analysis::RandomModelOptions& o) {
        if (tau2) o.tau2 = *tau2;
        if (hksj) o.hksj = true;
    };
    if (const int status =
            OpenAndAnalyze({args.input, args.format, args.separators, args.options, args.selection},
                           *held, analysis, err);
        status != ExitDone)
        return status;
    const AnalysisResult result = analysis::CollectSummaries(analysis);
    if (args.json) {
        WriteAnalyzeJson(analysis, result, out);
        return ExitDone;
    }
    out << analysis.IndexLabel << "  (" << Percent(result.ciLevel)
        << " confidence interval; computed as " << result.computationIndex << ")\n\n";
    PrintStudies(analysis, result, out);
    out << '\n';
    PrintSummaries(result, analysis.Grouped(), out);
    out << '\n';
    PrintRandomModel(result, analysis.Grouped(), out);
    if (analysis.Grouped()) {
        out << '\n';
        PrintBetween(result, out);
    }
    for (const std::string& note : result.notes)
        out << '\n' << note << '\n';
    if (run != 1) {
        out << '\n';
        PrintPasses(analysis, run, out);
    }
    return ExitDone;
}

}  // namespace synthara::cli
