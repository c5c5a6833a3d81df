// A difference in means of two independent groups computed by the user: the
// raw difference, Cohen's d or Hedges's g, with confidence limits, a
// standard error or a variance, and the two sample sizes where known.
#include <cmath>
#include <string>
#include <variant>

#include "effectsize/ComputePoint.h"
#include "effectsize/PointSupport.h"
#include "effectsize/StdDiffChain.h"
#include "effectsize/Trail.h"
#include "stats/Formulas.h"

namespace synthara::effectsize {

namespace {

using sheet::MeansIndex;
using sheet::PointForm;
using sheet::RoleKind;

constexpr RoleKind PointKind(MeansIndex given) {
    switch (given) {
        case MeansIndex::RawDifference:
            return RoleKind::MeanDifference;
        case MeansIndex::CohensD:
            return RoleKind::CohensD;
        case MeansIndex::HedgesG:
            break;
    }
    return RoleKind::HedgesG;
}

constexpr int IndexOf(MeansIndex given) {
    return given == MeansIndex::RawDifference ? Ix::DifferenceInMeans
           : given == MeansIndex::CohensD     ? Ix::StdDiffInMeans
                                              : Ix::HedgesG;
}

constexpr Formula kJ{"J = 1 - (3 / (4 * {df} - 1))"};
constexpr Formula kDFromG{"StdDiff = {g} / {J}"};
constexpr Formula kDSEMethod1{"StdDiffSe = {StdErr(g)} / {J}"};
constexpr Formula kN{"n = {df} + 2"};
constexpr Formula kDSEMethod2{
    "StdDiffSe = Sqr({StdErr(g)} ^ 2 - ({g} ^ 2 / (2 * ({n} - 3.94))) + ({d} ^ 2 / (2 * {n})))"};
constexpr Formula kRawSD{"RawDiffSD = Sqr(({N1} * {N2}) / ({N1} + {N2})) * {RawDiffSE}"};
constexpr Formula kDFromRaw{"StdDiff = {RawDiff} / {RawDiffSD}"};
constexpr Formula kDSEFromRaw{
    "StdDiffSE = Sqr(1 / {N1} + 1 / {N2} + {StdDiff} ^ 2 / (2 * ({N1} + {N2})))"};

void GToDTrail(double g, double gSE, double d, double dSE, int df, int method, std::string& t) {
    AddFormula(t, "Standardized mean difference (d)", "T");
    AddFormula(t, "The program first computes Hedges' g", "S");
    AddFormula(t, "and its SE and then computes d and its SE.", "S");
    AddFormula(t, "This tab shows the last step in this sequence (g to d).", "S");
    AddFormula(t, "To see prior steps, select the appropriate tab above.", "S");
    const std::string dfText = G1(df), jText = G3(stats::CorrectionJ(df)), gText = G3(g),
                      gSEText = G3(gSE), dText = G3(d), nText = G1(df + 2);
    const Slots values{{"df", dfText},         {"J", jText}, {"g", gText},
                       {"StdErr(g)", gSEText}, {"d", dText}, {"n", nText}};
    if (method == 2)
        AddFormulaLines(t, {{kJ, jText}, {kDFromG, dText}, {kN, nText}, {kDSEMethod2, G3(dSE)}},
                        values);
    else
        AddFormulaLines(t, {{kJ, jText}, {kDFromG, dText}, {kDSEMethod1, G3(dSE)}}, values);
}

void RawToDTrail(double raw, double rawSE, double rawSD, double n1, double n2, double d, double dSE,
                 std::string& t) {
    AddFormula(t, "Standardized mean difference (d)", "T");
    AddFormula(t, "The program first computes the Raw mean difference,", "S");
    AddFormula(t, " its SD and SE, and then computes d and its SE.", "S");
    const std::string n1Text = G1(n1), n2Text = G1(n2), rawText = G3(raw), rawSEText = G3(rawSE),
                      sdText = G3(rawSD), dText = G3(d);
    const Slots values{{"N1", n1Text},           {"N2", n2Text},        {"RawDiff", rawText},
                       {"RawDiffSE", rawSEText}, {"RawDiffSD", sdText}, {"StdDiff", dText}};
    AddFormulaLines(t, {{kRawSD, sdText}, {kDFromRaw, dText}, {kDSEFromRaw, G3(dSE)}}, values);
}

}  // namespace

void ComputePointTIndep(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context) {
    const auto* layout = std::get_if<sheet::PointTIndepLayout>(&format.layout);
    if (layout == nullptr) return;
    const FormatRoles roles(format, ws);
    const RoleKind pointKind = PointKind(layout->given);
    GivenPoint given{layout->form};
    if (!CheckGivenDifference(roles, pointKind, {RoleKind::TotalNA, RoleKind::TotalNB}, ws,
                              context.options, given))
        return;

    // The sizes count only as a pair.
    const double n1 = roles.Value(RoleKind::TotalNA), n2 = roles.Value(RoleKind::TotalNB);
    const double nTot = n1 >= 2 && n2 >= 2 ? n1 + n2 : 0;
    if (nTot > 0) {
        ws.SetPoint(Ix::N1, n1);
        ws.SetPoint(Ix::N2, n2);
        ws.SetPoint(Ix::N3, nTot);
    }
    const double df = nTot - 2;
    if (!FindGivenSE(roles, df, ws, given)) return;
    const double point = ApplyDirection(given.point, roles.Value(RoleKind::EffectDirection));
    const double se = given.se;
    const int givenIndex = IndexOf(layout->given);
    if (ws.BuildTrails) GivenPointTrail(given, ws.EsFormula[static_cast<std::size_t>(givenIndex)]);

    const bool sized = nTot > 3;
    const int method = context.options.GVarianceMethod;
    double d = point, dSE = se;
    if (layout->given == MeansIndex::HedgesG) {
        if (!sized) {
            ws.SetResult(Ix::HedgesG, point, se, se * se);
            NeedsSampleSize(ws, {Ix::StdDiffInMeans, Ix::StdPairedDifference, Ix::Correlation,
                                 Ix::FishersZ, Ix::LogOddsRatio, Ix::OddsRatio});
            return;
        }
        const int wholeDf = static_cast<int>(std::nearbyint(df));
        d = stats::GToD(point, wholeDf);
        dSE = stats::DSEFromG(point, se, wholeDf, method);
        if (ws.BuildTrails)
            GToDTrail(point, se, d, dSE, wholeDf, method, ws.EsFormula[Ix::StdDiffInMeans]);
    } else if (layout->given == MeansIndex::RawDifference) {
        ws.SetResult(Ix::DifferenceInMeans, point, se, se * se);
        if (!sized) {
            NeedsSampleSize(ws, {Ix::StdDiffInMeans, Ix::HedgesG, Ix::StdPairedDifference,
                                 Ix::Correlation, Ix::FishersZ, Ix::LogOddsRatio, Ix::OddsRatio});
            return;
        }
        const double rawSD = std::sqrt(n1 * n2 / (n1 + n2)) * se;
        d = point / rawSD;
        dSE = std::sqrt(d * d / (2 * (n1 + n2)) + 1 / n1 + 1 / n2);
        if (ws.BuildTrails)
            RawToDTrail(point, se, rawSD, n1, n2, d, dSE, ws.EsFormula[Ix::StdDiffInMeans]);
    }
    ws.SetResult(Ix::StdDiffInMeans, d, dSE, dSE * dSE);
    PairedFromD(d, dSE, PairedWords{}, ws, context.options);
    const ChainInput chain{d, dSE, n1, n2, nTot, false, OddsLimit::RefuseAbove620};
    ChainFromGivenD(chain, sized, ws, context.options);
}

}  // namespace synthara::effectsize
