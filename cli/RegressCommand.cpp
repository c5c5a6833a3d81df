#include "cli/RegressCommand.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/App.h"
#include "cli/CommandSupport.h"
#include "cli/JsonWriter.h"
#include "cli/ReadableTable.h"
#include "effectsize/Trail.h"
#include "regression/Predictor.h"

namespace synthara::cli {
namespace {

using regression::Method;

struct MethodName {
    std::string_view word;
    Method method;
};
constexpr MethodName kMethods[] = {
    {"fixed", Method::Fixed}, {"moments", Method::Moments}, {"ml", Method::MaximumLikelihood}};

std::string_view MethodWord(Method method) {
    for (const MethodName& m : kMethods)
        if (m.method == method) return m.word;
    return "";
}

// The tables' format "0.00000".
std::string Shown(double value) {
    return effectsize::FormatDecimals(value, 5);
}

std::string Shown(const std::optional<double>& value) {
    return value ? Shown(*value) : std::string();
}

void WriteCoefficient(JsonWriter& json, const char* key, const regression::CoefficientRow& row) {
    json.Key(key).BeginObject();
    json.Key("lower").Number(row.lower);
    json.Key("p").Number(row.p);
    json.Key("point").Number(row.point);
    json.Key("se").Number(row.se);
    json.Key("upper").Number(row.upper);
    json.Key("z").Number(row.test);
    json.EndObject();
}

void WriteQ(JsonWriter& json, const char* key, const regression::QRow& row) {
    json.Key(key).BeginObject();
    json.Key("df").Integer(static_cast<std::int64_t>(row.df));
    json.Key("p").Number(row.p);
    json.Key("q").Number(row.Q);
    json.EndObject();
}

void PrintTables(const regression::RegressionResult& result, std::ostream& out) {
    ReadableTable coefficients({"", "Point estimate", "Standard error", "Lower limit",
                                "Upper limit", "Z-value", "p-Value"},
                               1);
    for (const regression::CoefficientRow& row : regression::Coefficients(result))
        coefficients.Add({std::string(row.label), Shown(row.point), Shown(row.se), Shown(row.lower),
                          Shown(row.upper), Shown(row.test), Shown(row.p)});
    coefficients.Print(out);
    out << '\n';
    ReadableTable q({"", "Q", "df", "p-value"}, 1);
    for (const regression::QRow& row : regression::QStatistics(result))
        q.Add({std::string(row.label), Shown(row.Q), std::to_string(static_cast<long long>(row.df)),
               Shown(row.p)});
    q.Print(out);
    out << '\n';
    ReadableTable steps({"Model", "B1", "seb1", "z1", "B0", "seb0", "z0", "QT", "dfT", "QM", "dfM",
                         "QE", "dfE", "C", "tau2"},
                        1);
    for (const regression::ModelRow& step : result.steps) {
        const regression::Beta& b = step.beta;
        steps.Add({step.Model, Shown(b.B1), Shown(b.seb1), Shown(b.z1), Shown(b.B0), Shown(b.seb0),
                   Shown(b.z0), Shown(b.QT), Shown(b.dfT), Shown(b.QM), Shown(b.dfM), Shown(b.QE),
                   Shown(b.dfE), Shown(b.C), effectsize::FormatDecimals(b.tau2, 11)});
    }
    steps.Print(out);
}

// Each study's effect, variance, predictor, weight, leverage and residuals,
// in two sweeps so that a long table is never held as text.
void PrintStudies(const regression::RegressionTable& table, std::ostream& out) {
    using regression::Key;
    constexpr Key keys[] = {Key::T, Key::V,     Key::X,        Key::w,     Key::h,
                            Key::e, Key::eStud, Key::pvalStud, Key::eStan, Key::pvalStan};
    const auto line = [&](int row) {
        std::vector<std::string> cells = {table.ID[static_cast<std::size_t>(row)]};
        for (const Key key : keys) {
            const double value = table.Col(key)[static_cast<std::size_t>(row)];
            cells.push_back(std::isnan(value) ? std::string() : Shown(value));
        }
        return cells;
    };
    std::vector<std::string> header = {std::string(regression::KeyName(Key::ID))};
    for (const Key key : keys)
        header.emplace_back(regression::KeyName(key));
    std::vector<std::size_t> widths = ColumnWidths({header});
    for (int row = 0; row < table.Rows(); ++row) {
        const std::vector<std::string> cells = line(row);
        for (std::size_t k = 0; k < cells.size(); ++k)
            widths[k] = std::max(widths[k], cells[k].size());
    }
    const std::vector<std::size_t> right = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    PrintLine(header, widths, out, right);
    for (int row = 0; row < table.Rows(); ++row)
        PrintLine(line(row), widths, out, right);
}

}  // namespace

CLI::App* AddRegressCommand(CLI::App& app, RegressArgs& args) {
    auto* cmd = app.add_subcommand("regress", "Meta-regression of the effect on one moderator");
    AddInputOptions(*cmd, args.in.input, args.in.format, args.in.separators);
    AddOptionArg(*cmd, args.in.options);
    AddSelectionOptions(*cmd, args.in.selection);
    cmd->add_option("--predictor", args.predictor, "The title of a numeric moderator column")
        ->required();
    cmd->add_option("--method", args.method,
                    "fixed, moments (default) or ml (unrestricted maximum likelihood)");
    cmd->add_option("--index", args.index,
                    "Effect size index, as the analysis offers it (default: the primary index)");
    cmd->add_flag("--json", args.json, "Print JSON");
    return cmd;
}

void WriteRegressJson(const regression::RegressionResult& result, std::ostream& out) {
    const std::vector<regression::CoefficientRow> coefficients = regression::Coefficients(result);
    const std::vector<regression::QRow> q = regression::QStatistics(result);
    JsonWriter json(out);
    json.BeginObject();
    WriteCoefficient(json, "intercept", coefficients[1]);
    json.Key("k").Integer(result.table.Rows());
    json.Key("method").String(MethodWord(result.method));
    WriteQ(json, "q_model", q[0]);
    WriteQ(json, "q_residual", q[1]);
    WriteQ(json, "q_total", q[2]);
    WriteCoefficient(json, "slope", coefficients[0]);
    json.Key("steps").BeginArray();
    for (const regression::ModelRow& step : result.steps) {
        json.BeginObject();
        json.Key("b0").Number(step.beta.B0);
        json.Key("b1").Number(step.beta.B1);
        json.Key("name").String(step.Model);
        json.Key("tau2").Number(step.beta.tau2);
        json.EndObject();
    }
    json.EndArray();
    json.Key("tau2").Number(coefficients[2].point);
    json.Key("title").String(regression::Title(result.method));
    json.EndObject();
}

int RunRegress(const RegressArgs& args, std::ostream& out, std::ostream& err) {
    Method method = Method::Moments;
    if (!args.method.empty()) {
        const MethodName* found = nullptr;
        for (const MethodName& m : kMethods)
            if (m.word == args.method) found = &m;
        if (found == nullptr) {
            err << "--method must be fixed, moments or ml\n";
            return ExitUsage;
        }
        method = found->method;
    }

    AnalysedInput input(err);
    if (const int status = input.Run(args.in, args.index); status != ExitDone) return status;
    analysis::Analysis& analysis = *input.analysis;
    const sheet::Sheet& sheet = input.document->Sheet();
    if (args.predictor != regression::kNoPredictor &&
        regression::PredictorColumn(sheet.Flex(), args.predictor) < 0) {
        err << "--predictor: the sheet has no numeric moderator column \"" << args.predictor
            << "\"";
        const std::vector<std::string> offered = regression::LoadDropDown(sheet.Flex());
        for (std::size_t i = 1; i < offered.size(); ++i)
            err << (i == 1 ? "; it has \"" : ", \"") << offered[i] << '"';
        err << '\n';
        return ExitRefused;
    }
    regression::Prepared prepared = regression::PrepareRegression(sheet, analysis, args.predictor);
    if (prepared.refusal) {
        input.prompter.Message(*prepared.refusal);
        return ExitRefused;
    }
    const regression::RegressionResult result =
        regression::RunRegression(std::move(prepared.table), method);
    if (result.failed) {
        input.prompter.Message(
            {std::string(regression::kRegressionTitle), regression::FailureLines()});
        return ExitRefused;
    }
    if (args.json) {
        WriteRegressJson(result, out);
        return ExitDone;
    }
    out << regression::Title(result.method) << '\n'
        << analysis.IndexLabel << "  (computed as " << analysis.ComputationIndex
        << "); predictor: " << args.predictor << "  (" << result.table.Rows() << " studies)\n\n";
    PrintTables(result, out);
    out << '\n';
    PrintStudies(result.table, out);
    return ExitDone;
}

}  // namespace synthara::cli
