// Two independent groups from a t-value or a p-value with the sample sizes,
// and the means or their difference where they were given.
#include <cmath>
#include <cstddef>
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

constexpr Formula kRawDiff{"RawDiff = {Mean1} - {Mean2}"};
constexpr Formula kRawDifference{"RawDifference = {Mean1} - {Mean2}"};
constexpr Formula kRawDiffSE{"RawDiffSE = abs({RawDiff} / {tObs})"};
constexpr Formula kRawDiffSEFromP{"RawDiffSE = {RawDiff} / {t}"};
constexpr Formula kP{"p = {pEntered} / {tails}"};
constexpr Formula kPObs{"pObs = {pEntered} / {tails}"};
constexpr Formula kDf{"df = {N1} + {N2} - 2"};
constexpr Formula kTFromP{"t= Abs(t for {p}, {df})"};
constexpr Formula kHarmonicN{"HarmonicN = (2 * {N1} * {N2}) / ({N1} + {N2})"};
constexpr Formula kStdDiff{"StdDiff = {tObs} / (Sqr({HarmonicN}) / Sqr(2))"};
constexpr Formula kStdDiffFromT{"StdDiff = {t} / (Sqr({HarmonicN}) / Sqr(2))"};
constexpr Formula kStdDiffSE{
    "StdDiffSE = Sqr(1 / {N1} + 1 / {N2} + {StdDiff} ^ 2 / (2 * ({N1} + {N2})))"};

// The words that open the trails, in the order of the t and p entries.
constexpr std::array<std::string_view, 6> kOpenings{
    "Independent means, N, and t-value",
    "Independent difference in means, sample size, and t-value",
    "Sample size and independent t-value",
    "Independent means, sample size, and p-value",
    "Independent difference in means, sample size, and p-value",
    "Sample size and p-value",
};

using Kind = MeansTestRow;

void Validate(const Kind& kind, const FormatRoles& roles, WorkingSet& ws) {
    const int mean1 = roles.Role(RoleKind::MeanA), mean2 = roles.Role(RoleKind::MeanB),
              diff = roles.Role(RoleKind::MeanDifference), n1 = roles.Role(RoleKind::TotalNA),
              n2 = roles.Role(RoleKind::TotalNB), t = roles.Role(RoleKind::TValue),
              p = roles.Role(RoleKind::PValue), tails = roles.Role(RoleKind::Tails),
              direction = roles.Role(RoleKind::EffectDirection);
    if (kind.means) {
        CheckMean1(mean1, ws);
        CheckN1(n1, ws);
        CheckMean2(mean2, ws);
    } else {
        if (kind.difference) CheckMean(diff, ws);
        CheckN1(n1, ws);
    }
    CheckN2(n2, ws);
    if (kind.pValue)
        CheckP(p, tails, ws);
    else
        CheckT(t, ws);
    // Without means or their difference there is nothing to tell the direction from.
    CheckDirection(direction, ws, kind.means || kind.difference);
    if (kind.pValue) {
        if (kind.means) CheckPMeans(p, tails, mean1, mean2, ws);
        if (kind.difference) CheckPMeanDiff(p, tails, diff, ws);
    } else if (ws.RowErrors.empty()) {
        if (kind.means) CheckTMeans(t, mean1, mean2, ws);
        if (kind.difference) CheckTMeanDiff(t, diff, ws);
    }
}

}  // namespace

MeansTestRow TestRowOf(MeansEntry entry, const std::array<std::string_view, 6>& openings) {
    const auto at =
        static_cast<std::size_t>(entry) - static_cast<std::size_t>(MeansEntry::MeansAndT);
    return {sheet::TestKindOf(entry), at < openings.size() ? openings[at] : ""};
}

void ComputeFromMeansTest(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context) {
    const auto* layout = std::get_if<sheet::MeansLayout>(&format.layout);
    if (layout == nullptr) return;
    const Kind kind = TestRowOf(layout->entry, kOpenings);
    const FormatRoles roles(format, ws);
    Validate(kind, roles, ws);
    if (!ws.RowErrors.empty()) return;

    const double n1 = roles.Value(RoleKind::TotalNA), n2 = roles.Value(RoleKind::TotalNB);
    const double nTot = n1 + n2;
    const bool raw = kind.means || kind.difference;
    const double mean1 = roles.Value(RoleKind::MeanA), mean2 = roles.Value(RoleKind::MeanB);
    double rawDiff = kind.means ? mean1 - mean2 : roles.Value(RoleKind::MeanDifference);
    const double pEntered = roles.Value(RoleKind::PValue), tails = roles.Value(RoleKind::Tails);
    const double p = pEntered / tails, df = nTot - 2;
    const double tObs =
        kind.pValue ? std::fabs(stats::VBDTIN(p, df)) : std::fabs(roles.Value(RoleKind::TValue));
    const double rawDiffSE = tObs == 0 ? 0 : std::fabs(rawDiff / tObs);
    const double harmonicN = (2 * n1 * n2) / (n1 + n2);
    double stdDiff = tObs / (std::sqrt(harmonicN) / std::sqrt(2.0));
    const double stdDiffSE = std::sqrt(1 / n1 + 1 / n2 + stdDiff * stdDiff / (2 * (n1 + n2)));
    if (raw && rawDiff < 0) stdDiff = -stdDiff;

    if (ws.BuildTrails) {
        const std::string mean1Text = G3(mean1), mean2Text = G3(mean2), rawText = G3(rawDiff),
                          tText = G3(tObs), n1Text = G1(n1), n2Text = G1(n2), hText = G3(harmonicN),
                          pText = G3(p), pEnteredText = G3(pEntered), tailsText = G1(tails),
                          dfText = G1(df), dText = G3(stdDiff);
        const Slots values{{"Mean1", mean1Text}, {"Mean2", mean2Text},
                           {"RawDiff", rawText}, {"tObs", tText},
                           {"t", tText},         {"N1", n1Text},
                           {"N2", n2Text},       {"HarmonicN", hText},
                           {"p", pText},         {"pEntered", pEnteredText},
                           {"tails", tailsText}, {"df", dfText}};
        const Slots more{{{"StdDiff", dText}}, &values};
        std::string& r = ws.EsFormula[Ix::DifferenceInMeans];
        AddFormula(r, kind.opening, "A");
        AddFormula(r, "Raw difference in means", "T");
        if (!raw) {
            AddFormula(r, "Cannot be computed without means.", "S");
        } else if (tObs == 0) {
            AddFormula(r,
                       kind.pValue       ? "When t = 0 cannot compute RawDiffSe"
                       : kind.difference ? "When t=0 cannot compute RawDiffSE"
                                         : "When t=0 cannot compute RawDiffSe",
                       "S");
        } else {
            const Formula& diffLine =
                kind.means ? (kind.pValue ? kRawDifference : kRawDiff) : kRawDiff;
            const Formula& seLine = kind.difference && kind.pValue ? kRawDiffSEFromP : kRawDiffSE;
            if (kind.means)
                diffLine.AddSymbols(r);
            else
                AddFormula(r, "RawDiff = Given", "S");
            seLine.AddSymbols(r);
            if (kind.means)
                diffLine.AddNumbers(r, values, rawText);
            else
                AddStep(r, {"RawDiff = ", rawText});
            seLine.AddNumbers(r, values, G3(rawDiffSE));
        }
        std::string& d = ws.EsFormula[Ix::StdDiffInMeans];
        AddFormula(d, kind.opening, "A");
        AddFormula(d, "Standardized difference in means", "T");
        const Formula& pLine = kind.difference ? kPObs : kP;
        const Formula& dLine = raw ? kStdDiff : kStdDiffFromT;
        if (kind.pValue) {
            pLine.AddSymbols(d);
            kDf.AddSymbols(d);
            kTFromP.AddSymbols(d);
        }
        kHarmonicN.AddSymbols(d);
        dLine.AddSymbols(d);
        kStdDiffSE.AddSymbols(d);
        if (kind.pValue) {
            pLine.AddNumbers(d, values, pText);
            kDf.AddNumbers(d, values, dfText);
            kTFromP.AddNumbers(d, values, tText);
        }
        kHarmonicN.AddNumbers(d, values, hText);
        dLine.AddNumbers(d, values, dText);
        kStdDiffSE.AddNumbers(d, more, G3(stdDiffSE));
    }

    const double direction = roles.Value(RoleKind::EffectDirection);
    stdDiff = ApplyDirection(stdDiff, direction);
    rawDiff = ApplyDirection(rawDiff, direction);
    PairedFromD(stdDiff, stdDiffSE, PairedWords{"Standardized paired difference in means"}, ws,
                context.options);
    if (raw && tObs != 0)
        ws.SetResult(Ix::DifferenceInMeans, rawDiff, rawDiffSE, rawDiffSE * rawDiffSE);
    ws.SetResult(Ix::StdDiffInMeans, stdDiff, stdDiffSE, stdDiffSE * stdDiffSE);
    StdDiffChain({stdDiff, stdDiffSE, n1, n2, nTot, false, OddsLimit::SkipAbove620}, ws,
                 context.options);
}

}  // namespace synthara::effectsize
