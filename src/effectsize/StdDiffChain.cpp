#include "effectsize/StdDiffChain.h"

#include <cmath>
#include <string>

#include "effectsize/Trail.h"
#include "stats/Formulas.h"

namespace synthara::effectsize {

namespace {

constexpr std::string_view kPi = "3.14159265358979";

constexpr Formula kStdPairedDiff{"StdPairedDiff = {StdDiff} / Sqr(2 * (1 - {ImputedR}))"};
constexpr Formula kStdPairedDiffSE{"StdPairedDiffSE = {StdDiffSE} / Sqr(2 * (1 - {ImputedR}))"};
constexpr Formula kStdPairedDiffVar{"StdPairedDiffVar = {StdPairedDiffSE} ^ 2"};

constexpr Formula kJ{"J = 1 - (3 / (4 * {df} - 1))"};
constexpr Formula kG{"g = {d} * {J}"};
constexpr Formula kGSE{"StdErr(g) = {StdErr(d)} * {J}"};
constexpr Formula kGVar{"Variance(g) = {StdErr(g)} ^ 2"};

// The text says 4 where the computation may have used the group sizes.
constexpr Formula kR{"r = {d} / Sqr({d} ^ 2 + 4)"};
constexpr Formula kRSE{"StdErr(r) = Sqr(16 * {StdErr(d)} ^ 2 / (({d} ^ 2 + 4) ^ 3))"};
constexpr Formula kZ{"FisherZ =  0.5 * Log((1 + {r}) / (1 - {r}))"};
constexpr Formula kZSE{"StdErr(FisherZ) = {StdErr(r)} / (1 - {r} ^ 2)"};

constexpr Formula kLogOdds{"LogOddsRatio = {PI} * {StdDiff} / Sqr(3)"};
constexpr Formula kLogOddsSE{"LogOddsSE = Sqr({PI} ^ 2 * {StdDiffSE} ^ 2 / 3)"};
constexpr Formula kLogOddsVar{"LogOddsVariance =  {LogOddsSE} ^ 2"};
constexpr Formula kPairedLogOddsVar{"LogOddsVariance = {LogOddsSE} ^ 2"};
constexpr Formula kOddsRatio{"OddsRatio = Exp({LogOddsRatio})"};

// The lines that say which step of the sequence a tab shows.
void AddSequence(std::string& trail, const ChainInput& in, std::string_view then,
                 std::string_view last) {
    AddSteps(trail, {in.pairedDesign ? "The program computes the standardized mean difference (d)"
                                     : "The program computes the Standardized mean difference (d)",
                     then, last, "To see prior steps, select the appropriate tab above."});
}

}  // namespace

void HedgesGFromD(const ChainInput& in, WorkingSet& ws, const ComputeOptions& options) {
    // Whole degrees of freedom, rounded half to even.
    const int df = static_cast<int>(std::nearbyint(in.pairedDesign ? in.nTot - 1 : in.nTot - 2));
    const int method = options.GVarianceMethod;
    const double j = stats::CorrectionJ(df);
    const double g = stats::DToG(in.d, df);
    const double se = stats::GSEFromD(in.d, in.dSE, df, !in.pairedDesign, method);
    ws.SetResult(Ix::HedgesG, g, se, se * se);
    if (!ws.BuildTrails) return;

    // The text names the first method's formula whichever method is set.
    std::string& t = ws.EsFormula[Ix::HedgesG];
    AddFormula(t, "Standardized mean difference corrected for bias (Hedges' g)", "T");
    AddSequence(t, in, "and then multiplies d by a correction factor (J) to compute g.",
                "This tab shows the last step in this sequence (d to g).");
    AddFormula(t, "Correction factor J", "T");
    const std::string dfText = G1(df), jText = G3(j), dText = G3(in.d), dSEText = G3(in.dSE),
                      seText = G3(se);
    const Slots values{
        {"df", dfText}, {"J", jText}, {"d", dText}, {"StdErr(d)", dSEText}, {"StdErr(g)", seText}};
    kJ.AddSymbols(t);
    AddFormula(t, in.pairedDesign ? "Where df = NTot - 1" : "Where df = NTot - 2", "S");
    kJ.AddNumbers(t, values, jText);
    AddFormula(t, "Computation of g", "T");
    kG.AddSymbols(t);
    kGSE.AddSymbols(t);
    kGVar.AddSymbols(t);
    kG.AddNumbers(t, values, G3(g));
    kGSE.AddNumbers(t, values, seText);
    kGVar.AddNumbers(t, values, G3(se * se));
}

void CorrelationFromD(const ChainInput& in, WorkingSet& ws) {
    // Sizes of one or less would divide by zero; both are then taken as 1.
    double n1 = in.n1, n2 = in.n2;
    if (!(n1 > 1 && n2 > 1)) n1 = n2 = 1;
    const double r = stats::DToR(in.d, n1, n2);
    const double rSE = stats::DSEToRSE(in.dSE, in.d, n1, n2);
    const double z = stats::FisherZ(r);
    const double zSE = rSE / (1 - r * r);
    ws.SetResult(Ix::Correlation, r, rSE, rSE * rSE);
    ws.SetResult(Ix::FishersZ, z, zSE, zSE * zSE);
    if (!ws.BuildTrails) return;

    std::string& t = ws.EsFormula[Ix::Correlation];
    AddFormula(t, "Correlation (r) and Fisher's Z", "T");
    AddSequence(t, in, "and then computes r from d.",
                "This tab shows the last step in this sequence (d to r).");
    const std::string dText = G3(in.d), dSEText = G3(in.dSE), rText = G3(r), rSEText = G3(rSE);
    const Slots values{{"d", dText}, {"StdErr(d)", dSEText}, {"r", rText}, {"StdErr(r)", rSEText}};
    AddFormula(t, "Computation of r", "T");
    kR.AddSymbols(t);
    kRSE.AddSymbols(t);
    kR.AddNumbers(t, values, rText);
    kRSE.AddNumbers(t, values, rSEText);
    AddFormula(t, "Computation of Z", "T");
    kZ.AddSymbols(t);
    kZSE.AddSymbols(t);
    kZ.AddNumbers(t, values, G3(z));
    kZSE.AddNumbers(t, values, G3(zSE));
    ws.EsFormula[Ix::FishersZ] = t;
}

bool LogOddsFromD(const ChainInput& in, WorkingSet& ws) {
    const double logOdds = stats::DToLogOdds(in.d);
    const double se = stats::DSEToLogOddsSE(in.dSE);
    if (in.oddsLimit == OddsLimit::RefuseAbove700 && std::fabs(logOdds) > 700) {
        AddErr(ws.RowErrors, "The effect size exceeds computer memory");
        return false;
    }
    if (in.oddsLimit == OddsLimit::RefuseAbove620 && logOdds > 620) {
        AddErr(ws.RowErrors, "Cannot compute with entered data");
        return false;
    }
    if (in.oddsLimit == OddsLimit::SkipAbove620 && logOdds > 620) {
        if (!ws.BuildTrails) return true;
        std::string& t = ws.EsFormula[Ix::LogOddsRatio];
        AddFormula(t, "Odds ratio", "T");
        AddFormula(t, "cannot be computed from entered data", "S");
        return true;
    }
    const double oddsRatio = std::exp(logOdds);
    ws.SetResult(Ix::LogOddsRatio, logOdds, se, se * se);
    ws.SetPoint(Ix::OddsRatio, oddsRatio);
    if (!ws.BuildTrails) return true;

    std::string& t = ws.EsFormula[Ix::LogOddsRatio];
    AddFormula(t, "Log odds ratio", "T");
    AddSequence(t, in, "and then computes the Log odds ratio from d.",
                "This tab shows the last step in this sequence (d to Log odds ratio).");
    const Formula& variance = in.pairedDesign ? kPairedLogOddsVar : kLogOddsVar;
    kLogOdds.AddSymbols(t);
    kLogOddsSE.AddSymbols(t);
    variance.AddSymbols(t);
    AddFormula(t, "Where PI = 3.14159265358979", "S");
    const std::string lorText = G3(logOdds), seText = G3(se), dText = G3(in.d),
                      dSEText = G3(in.dSE);
    const Slots values{{"PI", kPi},
                       {"StdDiff", dText},
                       {"StdDiffSE", dSEText},
                       {"LogOddsSE", seText},
                       {"LogOddsRatio", lorText}};
    kLogOdds.AddNumbers(t, values, lorText);
    kLogOddsSE.AddNumbers(t, values, seText);
    variance.AddNumbers(t, values, G3(se * se));
    AddFormula(t, "Odds ratio", "T");
    kOddsRatio.AddSymbols(t);
    kOddsRatio.AddNumbers(t, values, G3(oddsRatio));
    ws.EsFormula[Ix::OddsRatio] = t;
    return true;
}

double ApplyDirection(double value, double code) {
    if (code == 2) return -std::fabs(value);
    if (code == 3) return std::fabs(value);
    return value;
}

void PairedFromD(double d, double dSE, const PairedWords& words, WorkingSet& ws,
                 const ComputeOptions& options) {
    const double imputedR = options.ImputedR;
    const double divisor = std::sqrt(2 * (1 - imputedR));
    const double paired = d / divisor, pairedSE = dSE / divisor;
    ws.SetResult(Ix::StdPairedDifference, paired, pairedSE, pairedSE * pairedSE);
    if (!ws.BuildTrails) return;

    std::string& t = ws.EsFormula[Ix::StdPairedDifference];
    AddFormula(t, words.title, "T");
    const std::string r = G3(imputedR);
    AddSteps(t, {words.pooled, words.change,
                 "The program computes d (pooled) and then imputes the value of d (change),",
                 "assuming a correlation (Imputed r) between scores in A and B.",
                 "This tab shows the final step in this sequence, d (pooled) to d (change).",
                 "To see the prior steps, select the corresponding tab above."});
    AddStep(t, {"Imputed r is given as ", r});
    kStdPairedDiff.AddSymbols(t);
    kStdPairedDiffSE.AddSymbols(t);
    kStdPairedDiffVar.AddSymbols(t);
    const std::string seText = G3(pairedSE), dText = G3(d), dSEText = G3(dSE);
    const Slots values{
        {"StdDiff", dText}, {"StdDiffSE", dSEText}, {"ImputedR", r}, {"StdPairedDiffSE", seText}};
    kStdPairedDiff.AddNumbers(t, values, G3(paired));
    kStdPairedDiffSE.AddNumbers(t, values, seText);
    kStdPairedDiffVar.AddNumbers(t, values, G3(pairedSE * pairedSE));
}

void StdDiffChain(const ChainInput& in, WorkingSet& ws, const ComputeOptions& options) {
    HedgesGFromD(in, ws, options);
    CorrelationFromD(in, ws);
    LogOddsFromD(in, ws);
}

}  // namespace synthara::effectsize
