#include "pubbias/Tables.h"

#include "pubbias/Report.h"
#include "pubbias/Scale.h"

namespace synthara::pubbias {
namespace {

std::string F5(double value) {
    return Fixed(value, 5);
}

std::array<std::string, 8> TrimCells(const StoredSummary& s, int trimmed, bool showTrimmed,
                                     analysis::Transform transform) {
    const auto shown = [transform](double value) { return Shown(value, transform); };
    return {showTrimmed ? Fixed(trimmed, 0) : std::string(),
            shown(static_cast<double>(s.fixedMean)),
            shown(s.FixedLower()),
            shown(s.FixedUpper()),
            shown(static_cast<double>(s.randomMean)),
            shown(s.RandomLower()),
            shown(s.RandomUpper()),
            F5(s.Q)};
}

}  // namespace

std::vector<TableRow> FailSafeTable(const FailSafeResult& r, std::string_view indexName,
                                    analysis::Transform transform) {
    const std::string lower = LowerCase(indexName);
    std::vector<TableRow> rows = {
        {1, "Z-value for observed studies", F5(r.zc)},
        {2, "P-value for observed studies", F5(r.p)},
        {3, "Alpha", F5(r.alpha)},
        {4, "Tails", F5(r.tails)},
        {5, "Z for alpha", F5(r.zAlpha)},
        {6, "Number of observed studies", F5(r.n)},
        {7, "Number of missing studies that would bring p-value to > alpha", F5(r.failSafeN)},
        {12, std::string(indexName) + " in observed studies", Shown(r.observedMean, transform)},
        {13, "Criterion for a 'trivial' " + lower, Shown(r.criterion, transform)},
        {14, "Mean " + lower + " in missing studies", Shown(r.meanNew, transform)},
    };
    if (r.orwinN)
        rows.push_back({15, OrwinRowLabel(r, indexName, transform), F5(*r.orwinN)});
    else
        rows.push_back({15, "Criterion must fall between other values", "", false, true});
    return rows;
}

std::vector<TableRow> TauTable(const TauResult& r) {
    return {
        {1, "Kendall's S statistic (P-Q)", F5(r.s), true},
        {3, "Kendall's tau without continuity correction", "", true},
        {4, "Tau", F5(r.tau)},
        {5, "z-value for tau", F5(r.z)},
        {6, "P-value (1-tailed)", F5(r.p1)},
        {7, "P-value (2-tailed)", F5(r.p2)},
        {9, "Kendall's tau with continuity correction", "", true},
        {10, "Tau", F5(r.tauCorrected)},
        {11, "z-value for tau", F5(r.zCorrected)},
        {12, "P-value (1-tailed)", F5(r.p1Corrected)},
        {13, "P-value (2-tailed)", F5(r.p2Corrected)},
    };
}

std::vector<TableRow> InterceptTable(const InterceptResult& r) {
    const auto optional = [](const std::optional<double>& v) { return v ? F5(*v) : ""; };
    return {
        {1, "Intercept", F5(r.intercept)},
        {2, "Standard error", F5(r.se)},
        {3, "95% lower limit (2-tailed)", F5(r.lower)},
        {4, "95% upper limit (2-tailed)", F5(r.upper)},
        r.t ? TableRow{5, "t-value", F5(*r.t)}
            : TableRow{5, "t-value cannot be computed because standard error is zero", ""},
        {6, "df", Fixed(r.df, 0)},
        {7, "P-value (1-tailed)", optional(r.p1)},
        {8, "P-value (2-tailed)", optional(r.p2)},
    };
}

std::vector<TrimTableRow> TrimTable(const TrimFillResult& r, analysis::Transform transform) {
    return {
        {4, "Initial (Log)", TrimCells(r.observed, 0, false, analysis::Transform::None), true},
        {5, "Adjusted (L)", TrimCells(r.adjusted, r.k, true, analysis::Transform::None), true},
        {7, "Observed values", TrimCells(r.observed, 0, false, transform)},
        {8, "Adjusted values", TrimCells(r.adjusted, r.k, true, transform)},
    };
}

}  // namespace synthara::pubbias
