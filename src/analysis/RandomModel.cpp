#include "analysis/RandomModel.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <vector>

#include "analysis/Analysis.h"
#include "analysis/Selection.h"
#include "sheet/grid/MetaRows.h"
#include "stats/Distributions.h"

namespace synthara::analysis {

namespace {

using sheet::SettingsRow;

std::optional<double> Finite(double value) {
    if (!std::isfinite(value)) return std::nullopt;
    return value;
}

// The effects and variances of run 1's rows in each block, by the block's
// position among the "Calculations" rows; the total, last, holds every row.
struct RowsOfBlocks {
    std::vector<std::vector<double>> y, v;
};

RowsOfBlocks RowsByBlock(const Analysis& a, const std::vector<int>& calcRows) {
    const WorkingTable& vs = a.vs;
    RowsOfBlocks rows;
    rows.y.resize(calcRows.size());
    rows.v.resize(calcRows.size());
    if (calcRows.empty()) return rows;
    const std::size_t total = calcRows.size() - 1;
    for (int r = 0; r < vs.Rows(); ++r) {
        if (vs.kind[r] != RowKind::Study || vs.validRow[r] <= 0) continue;
        const auto at = std::lower_bound(calcRows.begin(), calcRows.end(), vs.refLineSub[r]);
        const auto block = static_cast<std::size_t>(at - calcRows.begin());
        rows.y[total].push_back(vs.point[r]);
        rows.v[total].push_back(vs.variance[r]);
        if (block < total) {
            rows.y[block].push_back(vs.point[r]);
            rows.v[block].push_back(vs.variance[r]);
        }
    }
    return rows;
}

// The limits and test of the random summary with the variance scaled by its
// Q over k - 1 and the t distribution on k - 1 df.
void AdjustLimits(SummaryResult& s, Transform transform, double level) {
    if (s.k < 2 || !s.estimate.point || !s.estimate.variance) return;
    const double df = s.k - 1;
    const double variance = s.q.value_or(0) / df * *s.estimate.variance;
    s.estimate =
        MakeEstimate(*s.estimate.point, variance, transform, stats::VBDTIN(0.5 + level / 2, df));
    if (s.estimate.z) s.estimate.p = Finite(2 * stats::VBDTDF(-std::fabs(*s.estimate.z), df));
}

// The interval that holds a new study's true effect: the summary's variance
// and the tau-squared its weights used, t on k - 2 df.
void AddPredictionInterval(SummaryResult& s, double tau2, Transform transform, double level) {
    if (s.k < 3 || !s.estimate.point || !s.estimate.variance) return;
    const Estimate pi = MakeEstimate(*s.estimate.point, tau2 + *s.estimate.variance, transform,
                                     stats::VBDTIN(0.5 + level / 2, s.k - 2));
    s.piLower = pi.lower;
    s.piUpper = pi.upper;
    s.piDisplayLower = pi.displayLower;
    s.piDisplayUpper = pi.displayUpper;
}

}  // namespace

RandomModelOptions ReadRandomModel(const sheet::Grid& grid) {
    RandomModelOptions options;
    const int col = grid.ColIndex(sheet::ColumnKey::Settings);
    if (col < 0) return options;
    if (const auto method = ParseTau2Method(grid.Text(SettingsRow::Tau2Method, col)))
        options.tau2 = *method;
    options.hksj = grid.TextIs(SettingsRow::Hksj, col, "1");
    return options;
}

void WriteRandomModel(sheet::Sheet& sheet, const RandomModelOptions& options) {
    const int col = sheet.SettingsCol();
    if (col < 0) return;
    const bool classic = options.tau2 == Tau2Method::DL;
    PutText(sheet, SettingsRow::Tau2Method, col,
            classic ? std::string() : std::string(Tau2MethodWord(options.tau2)));
    PutText(sheet, SettingsRow::Hksj, col, options.hksj ? "1" : "");
}

void Analysis::EstimateRandomTau2(int run, const std::vector<int>& calcRows,
                                  const std::vector<double>& y, const std::vector<double>& v,
                                  const std::vector<int>& blockOf) {
    StatRef t2 = vs.Ref(Stat::GroupT2, run, 2);
    StatRef t2Variance = vs.Ref(Stat::GroupT2Variance, run, 2);
    const std::span<const double> ys(y), vv(v);
    std::size_t from = 0;
    for (int calc : calcRows) {
        std::size_t begin = 0, end = y.size();
        if (vs.kind[calc] == RowKind::Subgroup) {
            // A group's rows stand together, above its block.
            while (from < blockOf.size() && blockOf[from] < calc)
                ++from;
            begin = end = from;
            while (end < blockOf.size() && blockOf[end] == calc)
                ++end;
            from = end;
        }
        // One row has no heterogeneity to estimate: the classic zeros stand.
        if (end - begin < 2) continue;
        const Tau2Estimate e = EstimateTau2(RandomModel.tau2, ys.subspan(begin, end - begin),
                                            vv.subspan(begin, end - begin), RandomModel.control);
        if (!e.converged) {
            if (run == 1) Tau2NotConverged.push_back(calc);
            continue;
        }
        t2.Set(calc, e.tau2);
        t2Variance.Set(calc, e.variance);
    }
}

void AddRandomModelFigures(const Analysis& analysis, AnalysisResult& result) {
    const RandomModelOptions& options = analysis.RandomModel;
    result.tau2Method = options.tau2;
    result.hksj = options.hksj;
    const auto random = [](const SummaryResult& s) { return s.model == 2 && s.k > 0; };
    if (std::none_of(result.summaries.begin(), result.summaries.end(), random)) return;
    const std::vector<int> calcRows = analysis.CalculationRows();
    const RowsOfBlocks rows = RowsByBlock(analysis, calcRows);
    // Model 2 weighs every block's rows with the total's tau-squared.
    const Column<double>* applied = analysis.vs.Find(Stat::GroupT2, 1, 2);
    const double tau2 = applied != nullptr ? (*applied)[calcRows.back()] : 0;
    const std::vector<int>& failed = analysis.Tau2NotConverged;
    for (SummaryResult& s : result.summaries) {
        if (!random(s)) continue;
        const auto block = static_cast<std::size_t>(
            std::lower_bound(calcRows.begin(), calcRows.end(), s.row) - calcRows.begin());
        const bool fellBack = std::find(failed.begin(), failed.end(), s.row) != failed.end();
        s.tau2Method = Tau2MethodWord(fellBack ? Tau2Method::DL : options.tau2);
        const Tau2Limits limits =
            QProfileLimits(rows.y[block], rows.v[block], result.ciLevel, options.control);
        s.tau2Lower = limits.lower;
        s.tau2Upper = limits.upper;
        if (options.hksj) AdjustLimits(s, result.transform, result.ciLevel);
        AddPredictionInterval(s, std::isfinite(tau2) ? tau2 : 0, result.transform, result.ciLevel);
    }
}

}  // namespace synthara::analysis
