// A correlation computed by the user, or its Fisher's Z, with a sample
// size, a standard error, a variance, or a t- or p-value; each way gives r,
// Z and N, and one tail writes every index from them.
#include <cmath>
#include <string>
#include <variant>

#include "effectsize/ComputePoint.h"
#include "effectsize/PointSupport.h"
#include "effectsize/StdDiffChain.h"
#include "effectsize/Trail.h"
#include "stats/Distributions.h"
#include "stats/Formulas.h"

namespace synthara::effectsize {

namespace {

using sheet::CorrEntry;
using sheet::RoleKind;

struct CorrRow {
    double r = 0, rSE = 0, z = 0, zSE = 0, n = 0, t = 0;
};

constexpr std::string_view Opening(CorrEntry entry) {
    switch (entry) {
        case CorrEntry::CorrAndN:
            return "Correlation and Sample size";
        case CorrEntry::CorrAndT:
            return "Correlation and t-value";
        case CorrEntry::TAndN:
            return "t-value and sample size";
        case CorrEntry::PAndN:
            return "p-value and sample size";
        case CorrEntry::CorrAndSE:
            return "Correlation and Standard error";
        case CorrEntry::CorrAndVariance:
            return "Correlation and Variance";
        case CorrEntry::ZAndN:
            return "Fisher's Z and Sample size";
        case CorrEntry::ZAndSE:
            return "Fisher's Z and Standard error";
        case CorrEntry::ZAndVariance:
        case CorrEntry::Artifacts:
            break;
    }
    return "Fisher's Z and Variance";
}

constexpr bool GivesZ(CorrEntry e) {
    return e == CorrEntry::ZAndN || e == CorrEntry::ZAndSE || e == CorrEntry::ZAndVariance;
}
constexpr bool GivesSpread(CorrEntry e) {
    return e == CorrEntry::CorrAndSE || e == CorrEntry::CorrAndVariance;
}

void Validate(CorrEntry e, const FormatRoles& roles, WorkingSet& ws) {
    const int r = roles.Role(RoleKind::Correlation), z = roles.Role(RoleKind::FisherZ),
              n = roles.Role(RoleKind::SampleSize), t = roles.Role(RoleKind::TValue),
              se = roles.Role(RoleKind::StdErr), variance = roles.Role(RoleKind::Variance);
    switch (e) {
        case CorrEntry::CorrAndN:
            CheckR(r, ws);
            CheckNCorr(n, ws);
            break;
        case CorrEntry::CorrAndT:
            CheckR(r, ws);
            CheckT(t, ws);
            break;
        case CorrEntry::TAndN:
            CheckT(t, ws);
            CheckNCorr(n, ws);
            break;
        case CorrEntry::PAndN:
            CheckP(roles.Role(RoleKind::PValue), roles.Role(RoleKind::Tails), ws);
            CheckNCorr(n, ws);
            break;
        case CorrEntry::CorrAndSE:
            CheckR(r, ws);
            CheckSeCorr(se, ws);
            break;
        case CorrEntry::CorrAndVariance:
            CheckR(r, ws);
            CheckVarianceCorr(variance, ws);
            break;
        case CorrEntry::ZAndN:
            CheckFisherZ(z, ws);
            CheckNCorr(n, ws);
            break;
        case CorrEntry::ZAndSE:
            CheckFisherZ(z, ws);
            CheckSeFisher(se, ws);
            break;
        case CorrEntry::ZAndVariance:
            CheckFisherZ(z, ws);
            CheckVarianceFisher(variance, ws);
            break;
        case CorrEntry::Artifacts:
            return;
    }
    // A t- or p-value alone does not tell which way the correlation runs.
    CheckDirection(roles.Role(RoleKind::EffectDirection), ws,
                   e != CorrEntry::TAndN && e != CorrEntry::PAndN);
}

// r, Z, their SEs and N by the format; false when N comes out below 3.
bool Arithmetic(CorrEntry e, const FormatRoles& roles, CorrRow& c) {
    c.r = roles.Value(RoleKind::Correlation);
    c.n = roles.Value(RoleKind::SampleSize);
    c.t = roles.Value(RoleKind::TValue);
    if (e == CorrEntry::PAndN)
        c.t = std::fabs(
            stats::VBDTIN(roles.Value(RoleKind::PValue) / roles.Value(RoleKind::Tails), c.n - 2));
    if (e == CorrEntry::CorrAndT) {
        c.n = 2 + (c.t * c.t * (1 - c.r * c.r) / (c.r * c.r));
        // A correlation and a t-value of 0 give no N at all, which counts as too small.
        if (!(c.n >= 3)) return false;
    }
    if (e == CorrEntry::TAndN || e == CorrEntry::PAndN)
        c.r = std::sqrt(c.t * c.t / (c.t * c.t + (c.n - 2)));
    if (GivesSpread(e)) {
        const double rSE = e == CorrEntry::CorrAndSE ? roles.Value(RoleKind::StdErr)
                                                     : std::sqrt(roles.Value(RoleKind::Variance));
        const double rSq = c.r * c.r;
        c.n = ((1 - rSq) * (1 - rSq)) / (rSE * rSE) + 3;
    }
    if (GivesZ(e)) {
        c.z = roles.Value(RoleKind::FisherZ);
        if (e == CorrEntry::ZAndN) {
            c.zSE = 1 / std::sqrt(c.n - 3);
        } else {
            c.zSE = e == CorrEntry::ZAndSE ? roles.Value(RoleKind::StdErr)
                                           : std::sqrt(roles.Value(RoleKind::Variance));
            // Not squared: this N only sets the degrees of freedom of g.
            c.n = 1 / c.zSE + 3;
        }
        c.r = stats::InverseFisher(c.z);
    } else {
        c.z = stats::FisherZ(c.r);
        c.zSE = 1 / std::sqrt(c.n - 3);
    }
    c.rSE = (1 - c.r * c.r) * c.zSE;
    return true;
}

constexpr Formula kFisherZ{"FisherZ = 0.5 * Log((1 + {Corr}) / (1 - {Corr}))"};
constexpr Formula kFisherZSE{"FisherZSE = 1 / (Sqr({N} - 3))"};
constexpr Formula kCorrSE{"CorrSE = (1 - {Corr} ^ 2) * {FisherZSE}"};
constexpr Formula kNFromT{"N = 2 + ({t-value} ^ 2 * (1 - {Corr} ^ 2) / {Corr} ^ 2)"};
constexpr Formula kCorrFromT{"Corr = Sqr({t-value} ^ 2 / ({t-value} ^ 2 + ({N} - 2)))"};
constexpr Formula kRSq{"RSq = {Corr} ^ 2"};
constexpr Formula kNFromSE{"N = (((1 - {RSq}) ^ 2) / {CorrSE} ^ 2) + 3"};
constexpr Formula kC{"C = Exp(2 * {Z})"};
constexpr Formula kCorrFromZ{"Corr = ({C} - 1) / ({C} + 1)"};

// The trail of r and Z (indices 15 and 16).
void CorrTrail(CorrEntry e, const CorrRow& c, const Slots& values, std::string& t) {
    AddFormula(t, Opening(e), "A");
    if (!GivesZ(e) && !GivesSpread(e))
        AddFormula(t, "Computations are performed using the Fisher Z transformation.", "S");
    if (GivesSpread(e)) {
        AddFormula(t, "The program back-computes the sample size (N).", "S");
        AddFormulaLines(t, {{kRSq, G3(c.r * c.r)}, {kNFromSE, G1(c.n)}}, values);
    }
    AddFormula(t, "Fisher's Z", "T");
    if (GivesZ(e)) {
        AddFormula(t, "FisherZ = Given", "S");
        if (e == CorrEntry::ZAndN) AddFormulaLines(t, {{kFisherZSE, G3(c.zSE)}}, values);
    } else {
        AddFormulaLines(t, {{kFisherZ, G3(c.z)}, {kFisherZSE, G3(c.zSE)}}, values);
    }
    AddFormula(t, "Correlation", "T");
    if (e == CorrEntry::PAndN)
        AddFormula(t, "t-value is computed using p-value and sample size.", "S");
    if (e == CorrEntry::CorrAndT) AddFormulaLines(t, {{kNFromT, G1(c.n)}}, values);
    if (e == CorrEntry::TAndN || e == CorrEntry::PAndN)
        AddFormulaLines(t, {{kCorrFromT, G3(c.r)}}, values);
    else if (GivesZ(e))
        AddFormulaLines(t, {{kC, values.Find("C")}, {kCorrFromZ, G3(c.r)}}, values);
    else
        AddFormula(t, "Corr = Given", "S");
    AddFormulaLines(t, {{kCorrSE, G3(c.rSE)}}, values);
}

constexpr Formula kStdDiff{"StdDiff = 2 * {Corr} / Sqr(1 - {Corr} ^ 2)"};
constexpr Formula kStdDiffSE{"StdDiffSE = Sqr(4 * {CorrSE} ^ 2 / ((1 - {Corr} ^ 2) ^ 3))"};
constexpr Formula kStdDiffVar{"StdDiffVar  =  {StdDiffSE} ^ 2"};
constexpr Formula kJ{"J = 1 - (3 / (4 * {df} - 1))"};
constexpr Formula kLogOdds{"LogOddsRatio = {PI} * {StdDiff} / Sqr(3)"};
constexpr Formula kLogOddsSE{"LogOddsSE = Sqr({PI} ^ 2 * {StdDiffSE} ^ 2 / 3)"};
constexpr Formula kLogOddsVar{"LogOddsVariance = {LogOddsSE} ^ 2"};
constexpr Formula kOddsRatio{"OddsRatio = Exp({LogOddsRatio})"};

constexpr int kMaxDf = 100000000;

// d, g and the odds ratio from r; the odds ratio only while it stays finite.
void Tail(const CorrRow& c, WorkingSet& ws, const ComputeOptions& options, const Slots& rowValues) {
    ws.SetResult(Ix::Correlation, c.r, c.rSE, c.rSE * c.rSE);
    ws.SetResult(Ix::FishersZ, c.z, c.zSE, c.zSE * c.zSE);
    const double d = stats::RToD(c.r), dSE = stats::RSEToDSE(c.r, c.rSE);
    ws.SetResult(Ix::StdDiffInMeans, d, dSE, dSE * dSE);
    // A correlation of 0 with its t-value gives an N without end; J is then 1.
    const double wholeDf = std::nearbyint(c.n - 2);
    const int df = wholeDf < kMaxDf ? static_cast<int>(wholeDf) : kMaxDf;
    const double g = stats::DToG(d, df);
    const double gSE = stats::GSEFromD(d, dSE, df, true, options.GVarianceMethod);
    ws.SetResult(Ix::HedgesG, g, gSE, gSE * gSE);
    const double logOdds = stats::DToLogOdds(d), logOddsSE = stats::DSEToLogOddsSE(dSE);
    const bool oddsFinite = logOdds <= 620;
    if (oddsFinite) {
        ws.SetResult(Ix::LogOddsRatio, logOdds, logOddsSE, logOddsSE * logOddsSE);
        ws.SetPoint(Ix::OddsRatio, std::exp(logOdds));
    }
    if (!ws.BuildTrails) return;

    const std::string dText = G3(d), dSEText = G3(dSE), dfText = G1(df),
                      jText = G3(stats::CorrectionJ(df)), lText = G3(logOdds),
                      lSEText = G3(logOddsSE);
    const Slots values{{{"StdDiff", dText},
                        {"StdDiffSE", dSEText},
                        {"df", dfText},
                        {"PI", "3.14159265358979"},
                        {"LogOddsRatio", lText},
                        {"LogOddsSE", lSEText}},
                       &rowValues};
    std::string& dTrail = ws.EsFormula[Ix::StdDiffInMeans];
    AddFormula(dTrail, "Standardized mean difference (d)", "T");
    AddSteps(dTrail, {"Starting with Correlation or Fisher's Z",
                      "First compute the correlation ratio, and then convert to d."});
    AddFormulaLines(
        dTrail, {{kStdDiff, dText}, {kStdDiffSE, dSEText}, {kStdDiffVar, G3(dSE * dSE)}}, values);
    AddSteps(dTrail,
             {"To display computation of Correlation,", "select 'Correlation' tab on this form."});

    std::string& gTrail = ws.EsFormula[Ix::HedgesG];
    AddFormula(gTrail, "Standardized mean difference corrected for bias (Hedges' g)", "T");
    AddSteps(gTrail, {"Starting with Correlation or Fisher's Z", "First compute the Correlation,",
                      "then convert to the Standardized mean difference (d),",
                      "then apply correction factor to get g.",
                      "This screen shows the last step in this process (d to g).",
                      "For details on the computation of Correlation",
                      "or of d, select the corresponding tab in this window.",
                      "To compute g, the program computes a correction factor J,"});
    kJ.AddSymbols(gTrail);
    AddFormula(gTrail, "Where df = N - 2", "S");
    kJ.AddNumbers(gTrail, values, jText);
    AddStep(gTrail, {"g = ", G3(g)});
    AddStep(gTrail, {"StdErr(g) = ", G3(gSE)});

    std::string& o = ws.EsFormula[Ix::LogOddsRatio];
    AddFormula(o, oddsFinite ? "Odds ratio and Log odds ratio" : "Odds ratio", "T");
    if (!oddsFinite) {
        AddFormula(o, "cannot be computed from entered data", "S");
        return;
    }
    AddSteps(o, {"Starting with Correlation or Fisher's Z", "First compute the Correlation,",
                 "then convert to the Standardized mean difference (d),",
                 "then convert d to Log odds ratio.",
                 "This screen shows the last step in this process (d to g)",
                 "For details on the computation of Correlation",
                 "or of d, select the corresponding tab in this window."});
    AddFormula(o, "Computation of Log odds ratio from d", "T");
    AddFormulaLines(o,
                    {{kLogOdds, lText},
                     {kLogOddsSE, lSEText},
                     {kLogOddsVar, G3(logOddsSE * logOddsSE)},
                     {kOddsRatio, G3(std::exp(logOdds))}},
                    values);
    ws.EsFormula[Ix::OddsRatio] = o;
}

}  // namespace

void ComputePointCorr(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context) {
    const auto* layout = std::get_if<sheet::PointCorrLayout>(&format.layout);
    if (layout == nullptr) return;
    const CorrEntry e = layout->entry;
    // A correlation corrected for its artifacts has never been finished:
    // rows of this format are read and compute nothing.
    if (e == CorrEntry::Artifacts) return;
    const FormatRoles roles(format, ws);
    Validate(e, roles, ws);
    if (!ws.RowErrors.empty()) return;

    CorrRow c;
    if (!Arithmetic(e, roles, c)) {
        if (ws.BuildTrails) {
            std::string& t = ws.EsFormula[Ix::Correlation];
            AddFormula(t, Opening(e), "A");
            AddFormula(t, "Cannot compute when calculated n < 3.", "T");
            ws.EsFormula[Ix::FishersZ] = t;
        }
        return;
    }
    const double direction = roles.Value(RoleKind::EffectDirection);
    c.r = ApplyDirection(c.r, direction);
    c.z = ApplyDirection(c.z, direction);
    const std::string rText = G3(c.r), nText = G1(c.n), tText = G3(c.t), zText = G3(c.z),
                      zSEText = G3(c.zSE), rSEText = G3(c.rSE), rSqText = G3(c.r * c.r),
                      cText = G3(std::exp(2 * c.z));
    const Slots values{
        {"Corr", rText},        {"N", nText},        {"t-value", tText}, {"Z", zText},
        {"FisherZSE", zSEText}, {"CorrSE", rSEText}, {"RSq", rSqText},   {"C", cText}};
    if (ws.BuildTrails) {
        CorrTrail(e, c, values, ws.EsFormula[Ix::Correlation]);
        ws.EsFormula[Ix::FishersZ] = ws.EsFormula[Ix::Correlation];
    }
    Tail(c, ws, context.options, values);
}

}  // namespace synthara::effectsize
