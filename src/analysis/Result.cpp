#include "analysis/Result.h"

#include <cmath>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"
#include "analysis/RandomModel.h"
#include "stats/Formulas.h"

namespace synthara::analysis {

namespace {

std::optional<double> NumberIn(const StatRef& col, int row) {
    const double value = col.Value(row);
    if (!std::isfinite(value)) return std::nullopt;
    return value;
}

std::optional<double> Finite(double value) {
    if (!std::isfinite(value)) return std::nullopt;
    return value;
}

std::optional<double> Root(std::optional<double> value) {
    if (!value || *value < 0) return std::nullopt;
    return std::sqrt(*value);
}

// A study row as data; `fixed` and `random` are the rows' weight percentages.
StudyResult StudyAt(const Analysis& a, int r, const StatRef& fixed, const StatRef& random) {
    const WorkingTable& vs = a.vs;
    StudyResult s;
    s.row = r;
    for (std::size_t i = 0; i < s.identity.size(); ++i)
        s.identity[i] = std::string(vs.PopulationText(static_cast<int>(i), r));
    s.valid = vs.validRow[r] > 0;
    s.hideReason = std::string(HideWord(vs.hide[r]));
    if (s.valid) {
        s.estimate = MakeEstimate(vs.point[r], vs.variance[r], a.DisplayTransform, a.CICritical);
        s.weightFixed = NumberIn(fixed, r);
        s.weightRandom = NumberIn(random, r);
    }
    return s;
}

SummaryResult Summary(Analysis& a, int calcRow, int model) {
    WorkingTable& vs = a.vs;
    const auto ref = [&](Stat stat) { return vs.Ref(stat, 1, model); };
    SummaryResult s;
    s.model = model;
    s.modelWord = std::string(ModelWords[static_cast<std::size_t>(model)]);
    s.group = std::string(vs.texts.Text(vs.groupBy[calcRow]));
    s.row = calcRow;
    const std::optional<double> k = NumberIn(ref(Stat::K), calcRow);
    s.k = k ? static_cast<int>(std::lround(*k)) : 0;
    if (s.k <= 0) return s;  // a block without rows has no figures
    s.estimate =
        MakeEstimate(ref(Stat::SummaryPoint).Get(calcRow), ref(Stat::SummaryVariance).Get(calcRow),
                     a.DisplayTransform, a.CICritical);
    s.q = NumberIn(ref(Stat::Q), calcRow);
    s.df = NumberIn(ref(Stat::Qdf), calcRow);
    if (s.q && s.df) s.qP = Finite(stats::ChiSquareP(*s.q, *s.df));
    s.i2 = NumberIn(ref(Stat::I2), calcRow);
    s.tau2 = NumberIn(ref(Stat::GroupT2), calcRow);
    s.tau2Variance = NumberIn(ref(Stat::GroupT2Variance), calcRow);
    s.tau2Se = Root(s.tau2Variance);
    s.tau = Root(s.tau2);
    return s;
}

// "Total within" and "Total between" of one model, from the groups' Q and
// the total's.
BetweenResult Between(Analysis& a, const std::vector<int>& blocks, int model) {
    WorkingTable& vs = a.vs;
    const StatRef q = vs.Ref(Stat::Q, 1, model);
    const StatRef df = vs.Ref(Stat::Qdf, 1, model);
    BetweenResult b;
    b.model = model;
    b.modelWord = std::string(ModelWords[static_cast<std::size_t>(model)]);
    for (int calc : blocks) {
        if (vs.kind[calc] != RowKind::Subgroup) continue;
        b.qWithin += q.Get(calc);
        b.dfWithin += df.Get(calc);
    }
    const int total = blocks.back();
    b.qBetween = q.Get(total) - b.qWithin;
    b.dfBetween = df.Get(total) - b.dfWithin;
    b.pWithin = Finite(stats::ChiSquareP(b.qWithin, b.dfWithin));
    b.pBetween = Finite(stats::ChiSquareP(b.qBetween, b.dfBetween));
    return b;
}

}  // namespace

Estimate MakeEstimate(double point, double variance, Transform transform, double critical) {
    const DisplayVals raw = RawVals(variance, point, critical);
    const DisplayVals shown = ToDisplay(raw, transform);
    Estimate e;
    e.point = Finite(raw.point);
    e.se = Finite(raw.se);
    e.variance = Finite(raw.variance);
    e.lower = Finite(raw.lower);
    e.upper = Finite(raw.upper);
    e.z = Finite(raw.z);
    e.p = Finite(raw.p);
    e.displayPoint = Finite(shown.point);
    e.displayLower = Finite(shown.lower);
    e.displayUpper = Finite(shown.upper);
    return e;
}

void ForEachStudy(Analysis& analysis, const std::function<void(const StudyResult&)>& visit) {
    WorkingTable& vs = analysis.vs;
    const StatRef fixed = vs.Ref(Stat::WtPct, 1, 1);
    const StatRef random = vs.Ref(Stat::WtPct, 1, 2);
    for (int r = 0; r < vs.Rows(); ++r)
        if (vs.kind[r] == RowKind::Study) visit(StudyAt(analysis, r, fixed, random));
}

bool AnyValidStudy(const Analysis& analysis) {
    const WorkingTable& vs = analysis.vs;
    for (int r = 0; r < vs.Rows(); ++r)
        if (vs.kind[r] == RowKind::Study && vs.validRow[r] > 0) return true;
    return false;
}

AnalysisResult CollectSummaries(Analysis& analysis) {
    AnalysisResult result;
    result.index = analysis.DisplayIndex;
    result.computationIndex = analysis.ComputationIndex;
    result.transform = analysis.DisplayTransform;
    result.ciLevel = analysis.CILevel;
    result.levelPresent = analysis.vs.levelPresent;
    const std::vector<int> blocks = analysis.CalculationRows();
    for (int m = 1; m <= analysis.NumberOfModels; ++m) {
        bool shown = false;
        for (int calc : blocks) {
            if (analysis.vs.hidden[calc + m] != 0) continue;
            result.summaries.push_back(Summary(analysis, calc, m));
            shown = true;
        }
        if (shown && analysis.Grouped()) result.between.push_back(Between(analysis, blocks, m));
    }
    AddRandomModelFigures(analysis, result);
    result.notes = IndependenceNotes(analysis);
    return result;
}

void ForEachPass(Analysis& analysis, int run, const std::function<void(const PassResult&)>& visit) {
    WorkingTable& vs = analysis.vs;
    std::vector<StatRef> k, point, variance;
    for (int m = 1; m <= analysis.NumberOfModels; ++m) {
        k.push_back(vs.Ref(Stat::K, run, m));
        point.push_back(vs.Ref(Stat::SummaryPoint, run, m));
        variance.push_back(vs.Ref(Stat::SummaryVariance, run, m));
    }
    if (!k.front()) return;  // the run was not asked for
    PassResult p;
    for (int r = 0; r < vs.Rows(); ++r) {
        if (vs.kind[r] != RowKind::Study || vs.validRow[r] <= 0) continue;
        p.row = r;
        p.study = std::string(vs.PopulationText(0, r));
        for (int m = 1; m <= analysis.NumberOfModels; ++m) {
            const auto i = static_cast<std::size_t>(m - 1);
            p.model = m;
            p.modelWord = std::string(ModelWords[static_cast<std::size_t>(m)]);
            const std::optional<double> count = NumberIn(k[i], r);
            p.k = count ? static_cast<int>(std::lround(*count)) : 0;
            p.estimate = p.k > 0 ? MakeEstimate(point[i].Get(r), variance[i].Get(r),
                                                analysis.DisplayTransform, analysis.CICritical)
                                 : Estimate();
            visit(p);
        }
    }
}

AnalysisResult CollectResult(Analysis& analysis) {
    AnalysisResult result = CollectSummaries(analysis);
    ForEachStudy(analysis, [&](const StudyResult& s) { result.studies.push_back(s); });
    return result;
}

}  // namespace synthara::analysis
