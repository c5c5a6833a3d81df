// A paired difference in means computed by the user: the raw difference or
// d standardised by the SD of the differences, with confidence limits, a
// standard error or a variance, and the number of pairs where known.
#include <cmath>
#include <string>
#include <variant>

#include "effectsize/ComputePoint.h"
#include "effectsize/PointSupport.h"
#include "effectsize/StdDiffChain.h"
#include "effectsize/Trail.h"

namespace synthara::effectsize {

namespace {

using sheet::MeansIndex;
using sheet::PointForm;
using sheet::RoleKind;

constexpr Formula kRawSD{"RawDiffSD = Sqr({NTot}) * {RawDiffSe}"};
constexpr Formula kPaired{"StdPairedDiff = {RawDiff} / {RawDiffSD}"};
constexpr Formula kPairedSE{"StdPairedDiffSE = Sqr((1 / {n}) + {StdPairedDiff} ^ 2 / (2 * {n}))"};
constexpr Formula kDSE{"StdDiffSE = {StdPairedDiffSe} * Sqr(2 * (1 - {ImputedR}))"};
constexpr Formula kDSEFromPaired{"StdDiffSe = {StdPairedDiffSe} * Sqr(2 * (1 - {ImputedR}))"};

void RawToPairedTrail(double raw, double rawSE, double rawSD, double n, double paired,
                      double pairedSE, std::string& t) {
    AddFormula(t, "Paired standardized mean difference is computed", "S");
    AddFormula(t, "from Raw mean difference and its SD.", "S");
    const std::string nText = G1(n), rawText = G3(raw), rawSEText = G3(rawSE), sdText = G3(rawSD),
                      pairedText = G3(paired);
    const Slots values{{"NTot", nText},       {"n", nText},
                       {"RawDiff", rawText},  {"RawDiffSe", rawSEText},
                       {"RawDiffSD", sdText}, {"StdPairedDiff", pairedText}};
    kRawSD.AddSymbols(t);
    kPaired.AddSymbols(t);
    kPairedSE.AddSymbols(t);
    AddFormula(t, "Paired standardized mean difference", "T");
    kRawSD.AddNumbers(t, values, sdText);
    kPaired.AddNumbers(t, values, pairedText);
    kPairedSE.AddNumbers(t, values, G3(pairedSE));
}

void PairedToDTrail(bool fromRaw, double pairedSE, double imputedR, double dSE, std::string& t) {
    AddFormula(t, "Standardized mean difference (d)", "T");
    if (fromRaw) {
        AddFormula(t, "The program first computes the Raw mean difference", "S");
        AddFormula(t, "and its SE and then computes paired d and its SE.", "S");
        AddFormula(t, "Using paired d, assuming a correlation (Imputed r)", "S");
        AddFormula(t, "between scores in A and B, it then computes d.", "S");
    } else {
        AddFormula(t, "The program computes d (changed) and then imputes the value of d (pooled),",
                   "S");
        AddFormula(t, "This tab shows the final step in this sequence, d (changed) to d (pooled).",
                   "S");
    }
    const Formula& line = fromRaw ? kDSE : kDSEFromPaired;
    const std::string seText = G3(pairedSE), rText = G3(imputedR);
    const Slots values{{"StdPairedDiffSe", seText}, {"ImputedR", rText}};
    line.AddSymbols(t);
    line.AddNumbers(t, values, G3(dSE));
}

}  // namespace

void ComputePointTPaired(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context) {
    const auto* layout = std::get_if<sheet::PointTPairedLayout>(&format.layout);
    if (layout == nullptr) return;
    const FormatRoles roles(format, ws);
    const bool raw = layout->given == MeansIndex::RawDifference;
    const RoleKind pointKind = raw ? RoleKind::MeanDifference : RoleKind::CohensD;
    GivenPoint given{layout->form};
    if (!CheckGivenDifference(roles, pointKind, {RoleKind::SampleSize}, ws, context.options, given))
        return;

    const double n = roles.Value(RoleKind::SampleSize);
    if (!ws.EntryMissing[static_cast<std::size_t>(roles.Role(RoleKind::SampleSize))])
        ws.SetPoint(Ix::N3, n);
    if (!FindGivenSE(roles, n - 1, ws, given)) return;
    const double point = ApplyDirection(given.point, roles.Value(RoleKind::EffectDirection));
    const double se = given.se;
    const int givenIndex = raw ? Ix::DifferenceInMeans : Ix::StdPairedDifference;
    if (ws.BuildTrails) GivenPointTrail(given, ws.EsFormula[static_cast<std::size_t>(givenIndex)]);

    const bool sized = n > 3;
    double paired = point, pairedSE = se;
    if (raw) {
        ws.SetResult(Ix::DifferenceInMeans, point, se, se * se);
        if (!sized) {
            NeedsSampleSize(ws, {Ix::StdPairedDifference, Ix::StdDiffInMeans, Ix::HedgesG,
                                 Ix::Correlation, Ix::FishersZ, Ix::LogOddsRatio, Ix::OddsRatio});
            return;
        }
        const double rawSD = std::sqrt(n) * se;
        paired = point / rawSD;
        pairedSE = std::sqrt(paired * paired / (2 * n) + 1 / n);
        if (ws.BuildTrails)
            RawToPairedTrail(point, se, rawSD, n, paired, pairedSE,
                             ws.EsFormula[Ix::StdPairedDifference]);
    }
    ws.SetResult(Ix::StdPairedDifference, paired, pairedSE, pairedSE * pairedSE);
    // No correlation between the pairs' scores was entered: the option's
    // imputed one gives the pooled SD.
    const double f = std::sqrt(2 * (1 - context.options.ImputedR));
    const double d = f * paired, dSE = f * pairedSE;
    ws.SetResult(Ix::StdDiffInMeans, d, dSE, dSE * dSE);
    if (ws.BuildTrails)
        PairedToDTrail(raw, pairedSE, context.options.ImputedR, dSE,
                       ws.EsFormula[Ix::StdDiffInMeans]);
    const ChainInput chain{d, dSE, 1, 1, n, true, OddsLimit::RefuseAbove620};
    ChainFromGivenD(chain, sized, ws, context.options);
}

}  // namespace synthara::effectsize
