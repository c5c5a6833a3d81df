#include "cli/BiasCommand.h"

#include <ostream>
#include <vector>

#include <CLI/CLI.hpp>

#include "analysis/Result.h"
#include "cli/App.h"
#include "cli/CommandSupport.h"
#include "cli/JsonWriter.h"
#include "pubbias/Tables.h"

namespace synthara::cli {
namespace {

void WriteLimits(JsonWriter& json, const char* key, double point, double lower, double upper) {
    json.Key(key).BeginObject();
    json.Key("lower").Number(lower);
    json.Key("point").Number(point);
    json.Key("upper").Number(upper);
    json.EndObject();
}

void WriteStored(JsonWriter& json, const char* key, const pubbias::StoredSummary& s) {
    json.Key(key).BeginObject();
    WriteLimits(json, "fixed", static_cast<double>(s.fixedMean), s.FixedLower(), s.FixedUpper());
    json.Key("q").Number(s.Q);
    WriteLimits(json, "random", static_cast<double>(s.randomMean), s.RandomLower(),
                s.RandomUpper());
    json.EndObject();
}

std::optional<double> IfTau(const pubbias::TauResult& t, double value) {
    return t.ok ? std::optional<double>(value) : std::nullopt;
}

std::optional<double> IfLine(const pubbias::InterceptResult& r, double value) {
    return r.valid ? std::optional<double>(value) : std::nullopt;
}

void WriteWhole(JsonWriter& json, double value) {
    if (value < 9e15)
        json.Integer(static_cast<std::int64_t>(value));
    else
        json.Number(value);
}

void PrintTable(const std::vector<pubbias::TableRow>& rows, std::ostream& out) {
    std::vector<std::vector<std::string>> lines;
    for (const pubbias::TableRow& row : rows)
        lines.push_back({row.label, row.value});
    PrintColumns(lines, out, {1});
    out << '\n';
}

// The procedures' result tables as their tabs show them.
void PrintTables(const pubbias::BiasResult& r, std::string_view indexName,
                 analysis::Transform transform, std::ostream& out) {
    PrintTable(pubbias::FailSafeTable(r.failSafe, indexName, transform), out);
    if (r.tau.ok)
        PrintTable(pubbias::TauTable(r.tau), out);
    else
        out << r.tau.message << "\n\n";
    if (r.intercept.valid) PrintTable(pubbias::InterceptTable(r.intercept), out);
    std::vector<std::vector<std::string>> lines = {
        {"", "Studies Trimmed", "Fixed Effects Point Estimate", "Lower Limit", "Upper Limit",
         "Random Effects Point Estimate", "Lower Limit", "Upper Limit", "Q Value"}};
    for (const pubbias::TrimTableRow& row : pubbias::TrimTable(r.trimFill, transform)) {
        if (row.hidden) continue;
        lines.push_back({row.label});
        lines.back().insert(lines.back().end(), row.cells.begin(), row.cells.end());
    }
    if (!r.trimFill.OptionsSet()) out << pubbias::kTrimOptionsNotSet << '\n';
    PrintColumns(lines, out, {1, 2, 3, 4, 5, 6, 7, 8});
    out << '\n';
}

}  // namespace

CLI::App* AddBiasCommand(CLI::App& app, BiasArgs& args) {
    auto* cmd = app.add_subcommand("bias",
                                   "Publication bias: fail-safe N, rank correlation, "
                                   "regression intercept, trim and fill");
    AddInputOptions(*cmd, args.in.input, args.in.format, args.in.separators);
    AddOptionArg(*cmd, args.in.options);
    AddSelectionOptions(*cmd, args.in.selection);
    cmd->add_option("--index", args.index,
                    "Effect size index, as the analysis offers it (default: the primary index)");
    cmd->add_option("--trim-side", args.trimSide,
                    "Where trim and fill looks for missing studies: left (default) or right");
    cmd->add_option("--trim-model", args.trimModel,
                    "The model whose mean trim and fill trims around: fixed (default) or random");
    cmd->add_option("--alpha", args.alpha, "Alpha of the classic fail-safe N (default 0.05)");
    cmd->add_option("--tails", args.tails, "Tails of the classic fail-safe N: 1 or 2 (default 2)");
    cmd->add_option("--orwin-criterion", args.orwinCriterion,
                    "Orwin's criterion for a trivial effect, on the index's display scale");
    cmd->add_option("--orwin-mean", args.orwinMean,
                    "Orwin's mean effect in the missing studies, on the index's display scale");
    cmd->add_flag("--json", args.json, "Print JSON");
    return cmd;
}

void WriteBiasJson(const pubbias::BiasResult& r, const std::string& report, std::ostream& out) {
    JsonWriter json(out);
    json.BeginObject();
    const pubbias::TauResult& t = r.tau;
    json.Key("begg").BeginObject();
    json.Key("p1").Number(IfTau(t, t.p1));
    json.Key("p1_corrected").Number(IfTau(t, t.p1Corrected));
    json.Key("p2").Number(IfTau(t, t.p2));
    json.Key("p2_corrected").Number(IfTau(t, t.p2Corrected));
    json.Key("s").Number(IfTau(t, t.s));
    json.Key("s_corrected").Number(IfTau(t, t.sCorrected));
    json.Key("tau").Number(IfTau(t, t.tau));
    json.Key("tau_corrected").Number(IfTau(t, t.tauCorrected));
    json.Key("z").Number(IfTau(t, t.z));
    json.Key("z_corrected").Number(IfTau(t, t.zCorrected));
    json.EndObject();
    const pubbias::InterceptResult& e = r.intercept;
    json.Key("egger").BeginObject();
    json.Key("df");
    if (e.valid)
        json.Integer(static_cast<std::int64_t>(e.df));
    else
        json.Null();
    json.Key("intercept").Number(IfLine(e, e.intercept));
    json.Key("lower").Number(IfLine(e, e.lower));
    json.Key("p1").Number(e.p1);
    json.Key("p2").Number(e.p2);
    json.Key("se").Number(IfLine(e, e.se));
    json.Key("t").Number(e.t);
    json.Key("upper").Number(IfLine(e, e.upper));
    json.EndObject();
    const pubbias::FailSafeResult& f = r.failSafe;
    json.Key("fail_safe").BeginObject();
    json.Key("alpha").Number(f.alpha);
    json.Key("n");
    WriteWhole(json, f.failSafeN);
    json.Key("p").Number(f.p);
    json.Key("tails").Integer(f.tails);
    json.Key("z").Number(f.zc);
    json.Key("z_alpha").Number(f.zAlpha);
    json.EndObject();
    json.Key("k").Integer(r.data.N());
    json.Key("orwin").BeginObject();
    json.Key("criterion").Number(f.criterion);
    json.Key("mean_missing").Number(f.meanNew);
    json.Key("n");
    if (f.orwinN)
        json.Integer(*f.orwinN);
    else
        json.Null();
    json.Key("observed_mean").Number(f.observedMean);
    json.EndObject();
    json.Key("report").String(report);
    const pubbias::TrimFillResult& tf = r.trimFill;
    json.Key("trim_fill").BeginObject();
    WriteStored(json, "adjusted", tf.adjusted);
    json.Key("imputed").BeginArray();
    for (const pubbias::ImputedStudy& s : tf.imputed) {
        json.BeginObject();
        json.Key("point").Number(s.point);
        json.Key("se").Number(s.se);
        json.EndObject();
    }
    json.EndArray();
    json.Key("model").String(tf.model == pubbias::TrimModel::Random ? "random" : "fixed");
    WriteStored(json, "observed", tf.observed);
    json.Key("side").String(tf.side == pubbias::TrimSide::Right ? "right" : "left");
    json.Key("trimmed").Integer(tf.k);
    json.EndObject();
    json.EndObject();
}

int RunBias(const BiasArgs& args, std::ostream& out, std::ostream& err) {
    pubbias::BiasSettings settings;
    if (args.trimSide == "right")
        settings.side = pubbias::TrimSide::Right;
    else if (!args.trimSide.empty() && args.trimSide != "left") {
        err << "--trim-side must be left or right\n";
        return ExitUsage;
    }
    if (args.trimModel == "random")
        settings.model = pubbias::TrimModel::Random;
    else if (!args.trimModel.empty() && args.trimModel != "fixed") {
        err << "--trim-model must be fixed or random\n";
        return ExitUsage;
    }
    pubbias::FailSafeSettings& fs = settings.failSafe;
    if (args.alpha) {
        if (const auto refused = pubbias::CheckAlpha(*args.alpha, fs.alpha)) {
            err << *refused << '\n';
            return ExitUsage;
        }
        fs.alpha = *args.alpha;
    }
    if (args.tails) {
        if (const auto refused = pubbias::CheckTails(*args.tails, fs.tails)) {
            err << *refused << '\n';
            return ExitUsage;
        }
        fs.tails = static_cast<int>(*args.tails);
    }

    AnalysedInput input(err);
    if (const int status = input.Run(args.in, args.index); status != ExitDone) return status;
    analysis::Analysis& analysis = *input.analysis;
    if (const auto refused = pubbias::CheckPubValid(analysis, true)) {
        err << *refused << '\n';
        return ExitRefused;
    }
    const analysis::Transform transform = analysis.DisplayTransform;
    for (const auto& [given, stored] :
         {std::pair{args.orwinCriterion, &fs.orwinCriterion}, {args.orwinMean, &fs.orwinMeanNew}}) {
        if (!given) continue;
        const auto value = pubbias::OrwinValue(*given, transform);
        if (!value) {
            err << pubbias::kOrwinRangeMessage << '\n';
            return ExitUsage;
        }
        *stored = *value;
    }
    for (const auto& s : analysis::CollectSummaries(analysis).summaries) {
        if (s.model == 1 && s.estimate.point) fs.orwinObservedMean = *s.estimate.point;
    }

    std::vector<pubbias::DataRow> rows;
    const pubbias::BiasDataset dataset = pubbias::BiasRows(analysis);
    rows.reserve(dataset.names.size());
    for (std::size_t i = 0; i < dataset.names.size(); ++i)
        rows.push_back({dataset.names[i], dataset.point[i], dataset.se[i], ""});
    pubbias::CheckValsResult checked = pubbias::CheckVals(std::move(rows));
    if (!checked.ok) {
        for (const std::string& message : checked.messages)
            err << message << '\n';
        return ExitRefused;
    }
    const pubbias::BiasResult result =
        pubbias::RunPubBias(std::move(checked.data), settings, analysis.DisplayIndex, transform);
    const std::string report = pubbias::PlainText(pubbias::CreateReport(result.sections, true, {}));
    if (args.json) {
        WriteBiasJson(result, report, out);
        return ExitDone;
    }
    out << analysis.IndexLabel << "  (" << result.data.N() << " studies)\n\n";
    PrintTables(result, analysis.DisplayIndex, transform, out);
    out << report;
    return ExitDone;
}

}  // namespace synthara::cli
