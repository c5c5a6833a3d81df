// One group measured twice, or matched pairs, from a paired t-value or
// p-value with the number of pairs, and the means or their difference where
// they were given.
#include <cmath>
#include <string>
#include <variant>

#include "effectsize/ComputeFromMeans.h"
#include "effectsize/FormatRoles.h"
#include "effectsize/StdDiffChain.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"
#include "stats/Distributions.h"

namespace synthara::effectsize {

namespace {

using sheet::MeansEntry;
using sheet::RoleKind;

constexpr Formula kPairedDiff{"PairedDiff = {Mean2} - {Mean1}"};
constexpr Formula kSEAbs{"PairedDiffSE = Abs({PairedDiff}) / {tObs}"};
constexpr Formula kSESigned{"PairedDiffSE = {PairedDiff} / {tObs}"};
constexpr Formula kSEFromP{"PairedDiffSE = Abs({PairedDiff}) / ({t from p})"};
constexpr Formula kSEAbsT{"PairedDiffSE = Abs({PairedDiff}) / {t}"};
constexpr Formula kStdPairedDiff{"StdPairedDiff = {tObs} / Sqr({n})"};
constexpr Formula kStdPairedDiffT{"StdPairedDiff = {t} / Sqr({n})"};
constexpr Formula kStdPairedDiffSE{
    "StdPairedDiffSE = (1 / Sqr({n})) * Sqr(1 + {StdPairedDiff} ^ 2 / 2)"};
constexpr Formula kStdDiff{"StdDiff = {StdPairedDiff} * Sqr(2 * (1 - {ImputedR}))"};
constexpr Formula kStdDiffSE{
    "StdDiffSE = Sqr(1 / {n} + {StdPairedDiff} ^ 2 / (2 * {n})) * Sqr(2 * (1 - {ImputedR}))"};

// The words that open the trails, in the order of the t and p entries.
constexpr std::array<std::string_view, 6> kOpenings{
    "Means, Sample size, Paired t-value",           "Paired mean difference, Sample size, t-value",
    "Sample size and t-value from paired t-test",   "Means, Sample size, Paired p-value",
    "Mean difference, Sample size, Paired p-value", "Sample size and p-value from paired t-test",
};

using Kind = MeansTestRow;

void Validate(const Kind& kind, const FormatRoles& roles, WorkingSet& ws) {
    const int mean1 = roles.Role(RoleKind::PreMean), mean2 = roles.Role(RoleKind::PostMean),
              diff = roles.Role(RoleKind::MeanDifference), n = roles.Role(RoleKind::SampleSize),
              t = roles.Role(RoleKind::TValue), p = roles.Role(RoleKind::PValue),
              tails = roles.Role(RoleKind::Tails);
    const bool raw = kind.means || kind.difference;
    // A test that says the means are equal leaves no difference to scale.
    if (raw && !kind.pValue && !ws.EntryMissing[static_cast<std::size_t>(t)] &&
        roles.Value(RoleKind::TValue) == 0)
        AddErr(ws.RowErrors, "Cannot compute when t-value = 0");
    if (raw && kind.pValue && !ws.EntryMissing[static_cast<std::size_t>(p)] &&
        !ws.EntryMissing[static_cast<std::size_t>(tails)]) {
        const double pValue = roles.Value(RoleKind::PValue),
                     tailsValue = roles.Value(RoleKind::Tails);
        if (pValue == 0.5 && tailsValue == 1)
            AddErr(ws.RowErrors, "Cannot compute when p-value = 0.5 and tails = 1");
        if (pValue == 1 && tailsValue == 2)
            AddErr(ws.RowErrors, "Cannot compute when p-value = 1.0 and tails = 2");
    }
    if (kind.means) {
        CheckMean1(mean1, ws);
        CheckMean2(mean2, ws);
    }
    if (kind.difference) CheckMean(diff, ws);
    CheckN(n, ws);
    if (kind.pValue)
        CheckP(p, tails, ws);
    else
        CheckT(t, ws);
    CheckDirection(roles.Role(RoleKind::EffectDirection), ws, raw);
    if (kind.means && kind.pValue) CheckPMeans(p, tails, mean1, mean2, ws);
    if (kind.difference && kind.pValue) CheckPMeanDiff(p, tails, diff, ws);
    if (kind.means && !kind.pValue) CheckTMeans(t, mean1, mean2, ws);
    if (kind.difference && !kind.pValue) CheckTMeanDiff(t, diff, ws);
}

}  // namespace

void ComputeFromPairedMeansTest(const sheet::FormatDef& format, WorkingSet& ws,
                                ComputeContext& context) {
    const auto* layout = std::get_if<sheet::PairedMeansLayout>(&format.layout);
    if (layout == nullptr) return;
    const Kind kind = TestRowOf(layout->entry, kOpenings);
    const FormatRoles roles(format, ws);
    Validate(kind, roles, ws);
    if (!ws.RowErrors.empty()) return;

    const double n = roles.Value(RoleKind::SampleSize);
    const double mean1 = roles.Value(RoleKind::PreMean), mean2 = roles.Value(RoleKind::PostMean);
    const bool raw = kind.means || kind.difference;
    const double t = kind.pValue
                         ? std::fabs(stats::VBDTIN(
                               roles.Value(RoleKind::PValue) / roles.Value(RoleKind::Tails), n - 1))
                         : std::fabs(roles.Value(RoleKind::TValue));
    double diff = kind.means ? mean2 - mean1 : roles.Value(RoleKind::MeanDifference);
    // A given difference with its t keeps its sign in the standard error.
    const bool signedSE = layout->entry == MeansEntry::DifferenceAndT;
    const double diffSE = signedSE ? diff / t : std::fabs(diff) / t;
    double stdPaired = t / std::sqrt(n);
    const double stdPairedSE = (1 / std::sqrt(n)) * std::sqrt(1 + stdPaired * stdPaired / 2);
    if (raw && diff < 0) stdPaired = -std::fabs(stdPaired);
    const double direction = roles.Value(RoleKind::EffectDirection);
    diff = ApplyDirection(diff, direction);
    stdPaired = ApplyDirection(stdPaired, direction);
    // No correlation was entered: the option's imputed one gives the pooled SD.
    const double imputedR = context.options.ImputedR;
    const double f = std::sqrt(2 * (1 - imputedR));
    const double stdDiff = f * stdPaired;
    const double stdDiffSE = std::sqrt(stdPaired * stdPaired / (2 * n) + 1 / n) * f;

    if (raw) ws.SetResult(Ix::DifferenceInMeans, diff, diffSE, diffSE * diffSE);
    ws.SetResult(Ix::StdPairedDifference, stdPaired, stdPairedSE, stdPairedSE * stdPairedSE);
    ws.SetResult(Ix::StdDiffInMeans, stdDiff, stdDiffSE, stdDiffSE * stdDiffSE);
    StdDiffChain({stdDiff, stdDiffSE, 1, 1, n, true, OddsLimit::SkipAbove620}, ws, context.options);
    if (!ws.BuildTrails) return;

    const std::string mean1Text = G3(mean1), mean2Text = G3(mean2), nText = G1(n), tText = G3(t),
                      diffText = G3(diff), pairedText = G3(stdPaired), rText = G3(imputedR);
    const Slots values{{"Mean1", mean1Text},
                       {"Mean2", mean2Text},
                       {"n", nText},
                       {"tObs", tText},
                       {"t", tText},
                       {"t from p", tText},
                       {"PairedDiff", diffText},
                       {"StdPairedDiff", pairedText},
                       {"ImputedR", rText}};
    std::string head;
    AddFormula(head, kind.opening, "A");
    if (raw) {
        std::string& r = ws.EsFormula[Ix::DifferenceInMeans];
        r = head;
        AddFormula(r, "Paired difference in means", "T");
        const Formula& se = signedSE       ? kSESigned
                            : !kind.pValue ? kSEAbs
                            : kind.means   ? kSEFromP
                                           : kSEAbsT;
        if (kind.means)
            kPairedDiff.AddSymbols(r);
        else
            AddFormula(r, "PairedDiff = Given", "S");
        if (kind.difference && kind.pValue) AddFormula(r, "t = t for p (df = n-1)", "S");
        se.AddSymbols(r);
        if (kind.means)
            kPairedDiff.AddNumbers(r, values, diffText);
        else
            AddStep(r, {"PairedDiff = ", diffText});
        se.AddNumbers(r, values, G3(diffSE));
    }
    std::string& paired = ws.EsFormula[Ix::StdPairedDifference];
    paired = head;
    AddFormula(paired,
               layout->entry == MeansEntry::MeansAndT ? "d (standardized by SD of change)"
                                                      : "Paired standardized mean difference",
               "T");
    const Formula& pairedLine = kind.pValue ? kStdPairedDiffT : kStdPairedDiff;
    AddFormulaLines(paired, {{pairedLine, pairedText}, {kStdPairedDiffSE, G3(stdPairedSE)}},
                    values);

    std::string& d = ws.EsFormula[Ix::StdDiffInMeans];
    d = head;
    AddFormula(d, "Independent standardized mean difference", "T");
    AddFormulaLines(d, {{kStdDiff, G3(stdDiff)}, {kStdDiffSE, G3(stdDiffSE)}}, values);
}

}  // namespace synthara::effectsize
