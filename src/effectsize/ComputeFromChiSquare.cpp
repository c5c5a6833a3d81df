#include "effectsize/ComputeFromChiSquare.h"

#include <cmath>
#include <string>

#include "effectsize/EventsSteps.h"
#include "effectsize/FormatRoles.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"
#include "stats/Formulas.h"

namespace synthara::effectsize {

namespace {

using sheet::RoleKind;

constexpr Formula kCorrelation{"Correlation = Sqr({ChiSq}/{N})"};
constexpr Formula kZSE{"StdErr = 1 / (Sqr({N} - 3))"};
constexpr Formula kD{"d = 2 * {Corr} / Sqr(1 - {Corr} ^ 2)"};
constexpr Formula kDSE{"StdErr = Sqr(4 * {CorrSe} ^ 2 / ((1 - {Corr} ^ 2) ^ 3))"};
constexpr Formula kLogOdds{"LogOddsRatio = {PI} * {StdDiff} / Sqr(3)"};
constexpr Formula kLogOddsSE{"LogOddsSE = Sqr({PI} ^ 2 * {StdErr(d)} ^ 2 / 3)"};

constexpr std::string_view kPi = "3.14159265358979";

enum Direction { Auto = 1, Negative = 2, Positive = 3 };

}  // namespace

void ComputeFromChiSquare(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context) {
    const FormatRoles roles(format, ws);
    const int chiRole = roles.Role(RoleKind::ChiSquared), nRole = roles.Role(RoleKind::SampleSize);
    CheckChiSq(chiRole, ws);
    CheckNChiSq(nRole, ws);
    if (!ws.RowErrors.empty()) return;
    CheckChiSquareN(chiRole, nRole, ws);
    CheckDirection(roles.Role(RoleKind::EffectDirection), ws);
    if (!ws.RowErrors.empty()) return;

    const double chiSq = roles.Value(RoleKind::ChiSquared), n = roles.Value(RoleKind::SampleSize);
    double r = std::sqrt(chiSq / n);
    const double zSE = 1 / std::sqrt(n - 3);
    const double rSE = (1 - r * r) * zSE;
    const auto direction = static_cast<int>(roles.Value(RoleKind::EffectDirection));
    if (direction == Negative) r = -std::fabs(r);
    if (direction == Positive) r = std::fabs(r);
    const double z = stats::FisherZ(r);
    ws.SetResult(Ix::Correlation, r, rSE, rSE * rSE);
    ws.SetResult(Ix::FishersZ, z, zSE, zSE * zSE);

    const double d = stats::RToD(r), dSE = stats::RSEToDSE(r, rSE);
    ws.SetResult(Ix::StdDiffInMeans, d, dSE, dSE * dSE);
    const int df = static_cast<int>(std::nearbyint(n - 2));
    const int method = context.options.GVarianceMethod;
    const double gSE = stats::GSEFromD(d, dSE, df, true, method);
    const double gSEAgain = stats::GSEFromD(d, dSE, df, true, method);
    ws.SetResult(Ix::HedgesG, stats::DToG(d, df), gSE, gSEAgain * gSEAgain);
    const double logOdds = stats::DToLogOdds(d), logOddsSE = stats::DSEToLogOddsSE(dSE);
    ws.SetResult(Ix::LogOddsRatio, logOdds, logOddsSE, logOddsSE * logOddsSE);
    ws.SetPoint(Ix::OddsRatio, std::exp(logOdds));
    if (!ws.BuildTrails) return;

    const std::string chiText = G3(chiSq), nText = G1(n), rText = G3(r), rSEText = G3(rSE),
                      dText = G3(d), dSEText = G3(dSE);
    const Slots values{{"ChiSq", chiText},    {"N", nText}, {"Corr", rText},
                       {"CorrSe", rSEText},   {"PI", kPi},  {"StdDiff", dText},
                       {"StdErr(d)", dSEText}};
    std::string& rTrail = ws.EsFormula[Ix::Correlation];
    AddFormula(rTrail, "Correlation (r) and Fisher's Z", "T");
    kCorrelation.AddSymbols(rTrail);
    kZSE.AddSymbols(rTrail);
    kCorrelation.AddNumbers(rTrail, values, G3(std::sqrt(chiSq / n)));
    kZSE.AddNumbers(rTrail, values, G3(zSE));

    std::string& dTrail = ws.EsFormula[Ix::StdDiffInMeans];
    AddFormula(dTrail, "Standardized mean difference (d)", "T");
    kD.AddSymbols(dTrail);
    kDSE.AddSymbols(dTrail);
    kD.AddNumbers(dTrail, values, dText);
    kDSE.AddNumbers(dTrail, values, dSEText);

    events::AddHedgesGText(ws.EsFormula[Ix::HedgesG]);

    std::string& oddsTrail = ws.EsFormula[Ix::LogOddsRatio];
    AddFormula(oddsTrail, "Odds ratio", "T");
    kLogOdds.AddSymbols(oddsTrail);
    kLogOddsSE.AddSymbols(oddsTrail);
    kLogOdds.AddNumbers(oddsTrail, values, G3(logOdds));
    kLogOddsSE.AddNumbers(oddsTrail, values, G3(logOddsSE));
    ws.EsFormula[Ix::OddsRatio] = oddsTrail;
}

}  // namespace synthara::effectsize
