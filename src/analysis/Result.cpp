#include "analysis/Result.h"

#include <cmath>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"
#include "sheet/grid/Sheet.h"
#include "stats/Formulas.h"

namespace synthara::analysis {

namespace {

using sheet::MetaRow;

std::optional<double> NumberIn(const ColRef& col, int row) {
    double value = 0;
    if (!col.At(row).TryNumber(value) || !std::isfinite(value)) return std::nullopt;
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

void CollectStudies(Analysis& a, AnalysisResult& result) {
    WorkingTable& vs = a.vs;
    std::array<ColRef, 5> identity;
    for (std::size_t i = 0; i < identity.size(); ++i) {
        for (int c = 0; c < vs.grid.Cols(); ++c) {
            if (vs.grid.TextIs(MetaRow::Function, c, "Populations") &&
                vs.grid.TextIs(MetaRow::Attribute, c, sheet::PopulationNames[i])) {
                identity[i] = ColRef(&vs.grid.Col(c));
                result.levelPresent[i] = true;
                break;
            }
        }
    }
    ColRef temp01 = vs.Ref(Key::Temp01);
    ColRef validRow = vs.Ref(Key::ValidRow);
    ColRef hide = vs.Ref(Key::HideCol);
    ColRef point = vs.Ref(Key::PointSource);
    ColRef variance = vs.Ref(Key::VarianceSource);
    ColRef fixed = vs.Ref(RunModelKey(Stem::WtPct, 1, 1));
    ColRef random = vs.Ref(RunModelKey(Stem::WtPct, 1, 2));
    for (int r = WorkingTable::FirstDataRow; r <= vs.LastRow(); ++r) {
        if (temp01.TextIs(r, Word::Subgroup) || temp01.TextIs(r, Word::Overall)) continue;
        StudyResult s;
        s.row = r;
        for (std::size_t i = 0; i < identity.size(); ++i)
            s.identity[i] = identity[i].At(r).Text();
        s.valid = validRow.Get(r) > 0;
        s.hideReason = hide.At(r).Text();
        if (s.valid) {
            s.estimate =
                MakeEstimate(point.Get(r), variance.Get(r), a.DisplayTransform, a.CICritical);
            s.weightFixed = NumberIn(fixed, r);
            s.weightRandom = NumberIn(random, r);
        }
        result.studies.push_back(std::move(s));
    }
}

SummaryResult Summary(Analysis& a, int calcRow, int model) {
    WorkingTable& vs = a.vs;
    const auto ref = [&](std::string_view stem) { return vs.Ref(RunModelKey(stem, 1, model)); };
    SummaryResult s;
    s.model = model;
    s.modelWord = std::string(ModelWords[static_cast<std::size_t>(model)]);
    s.group = vs.Text(calcRow, Key::GroupBy);
    const std::optional<double> k = NumberIn(ref(Stem::K), calcRow);
    s.k = k ? static_cast<int>(std::lround(*k)) : 0;
    if (s.k <= 0) return s;  // a block without rows has no figures
    s.estimate =
        MakeEstimate(ref(Stem::SummaryPoint).Get(calcRow), ref(Stem::SummaryVariance).Get(calcRow),
                     a.DisplayTransform, a.CICritical);
    s.q = NumberIn(ref(Stem::Q), calcRow);
    s.df = NumberIn(ref(Stem::Qdf), calcRow);
    if (s.q && s.df) s.qP = Finite(stats::ChiSquareP(*s.q, *s.df));
    s.i2 = NumberIn(ref(Stem::I2), calcRow);
    s.tau2 = NumberIn(ref(Stem::GroupT2), calcRow);
    s.tau2Variance = NumberIn(ref(Stem::GroupT2Variance), calcRow);
    s.tau2Se = Root(s.tau2Variance);
    s.tau = Root(s.tau2);
    return s;
}

}  // namespace

Estimate MakeEstimate(double point, double variance, Transform transform, double critical) {
    const DisplayVals raw = GetDisplayVals(variance, point, Transform::None, critical);
    const DisplayVals shown = GetDisplayVals(variance, point, transform, critical);
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

AnalysisResult CollectResult(Analysis& analysis) {
    AnalysisResult result;
    result.index = analysis.DisplayIndex;
    result.computationIndex = analysis.ComputationIndex;
    result.transform = analysis.DisplayTransform;
    result.ciLevel = analysis.CILevel;
    CollectStudies(analysis, result);
    const std::vector<int> blocks = analysis.CalculationRows();
    for (int m = 1; m <= analysis.NumberOfModels; ++m) {
        for (int calc : blocks) {
            if (!analysis.vs.grid.RowHidden(calc + m))
                result.summaries.push_back(Summary(analysis, calc, m));
        }
    }
    return result;
}

}  // namespace synthara::analysis
