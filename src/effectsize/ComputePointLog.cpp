// Ratios computed by the user: odds, risk, rate and hazard ratios and a
// generic ratio, each analysed in logs and given with confidence limits, or
// as a log with its standard error or variance. An odds ratio goes on to d,
// paired d, r and Fisher's Z.
#include <array>
#include <cmath>
#include <string>
#include <variant>

#include "effectsize/ComputePoint.h"
#include "effectsize/PointSupport.h"
#include "effectsize/Trail.h"
#include "stats/Formulas.h"

namespace synthara::effectsize {

namespace {

using sheet::PointForm;
using sheet::RatioFamily;
using sheet::RoleKind;

struct Family {
    std::string_view name;  // "Odds ratio"
    std::string_view word;  // "Odds", as the trail's names spell it
    int logIndex;
    int ratioIndex;
};
// In the order of RatioFamily.
constexpr std::array<Family, 5> kFamilies{
    {{"Odds ratio", "Odds", Ix::LogOddsRatio, Ix::OddsRatio},
     {"Risk ratio", "Risk", Ix::LogRiskRatio, Ix::RiskRatio},
     {"Rate ratio", "Rate", Ix::LogRateRatio, Ix::RateRatio},
     {"Hazard ratio", "Hazard", Ix::LogHazardRatio, Ix::HazardRatio},
     {"Generic ratio", "Generic", Ix::PointLog, Ix::PointRaw}}};

const Family& FamilyOf(RatioFamily family) {
    return kFamilies[static_cast<std::size_t>(family)];
}

// A trail line of the family's names: each '@' is the family's word.
std::string Named(std::string_view text, std::string_view word) {
    std::string line;
    for (char c : text) {
        if (c == '@')
            line += word;
        else
            line += c;
    }
    return line;
}

void LimitsTrail(const Family& f, const EnteredPoint& m, std::string& t) {
    const std::string logName = Named("Log@Ratio", f.word), ratioName = Named("@Ratio", f.word);
    const std::string seLine =
        Named(m.limits == LowerOnly   ? "Log@SE = ({L} - {LLower}) / {Z}"
              : m.limits == UpperOnly ? "Log@SE = ({LUpper} - {L}) / {Z}"
                                      : "Log@SE = (({LUpper} - {LLower}) / 2) / {Z}",
              f.word);
    const Formula lLower{"LLower = Log({Lower limit})"}, lUpper{"LUpper = Log({Upper limit})"};
    const std::string logLine = logName + " = Log({" + ratioName + "})";
    const Formula logValue{logLine}, se{seLine};
    AddFormula(t, Cat({"Point estimate and confidence interval for ", f.name}), "A");
    AddFormula(t, "All computations use the logs of the provided values.", "S");
    lLower.AddSymbols(t);
    lUpper.AddSymbols(t);
    AddFormula(t, ratioName + " = Given", "T");
    const Slots names{{"L", logName}};
    logValue.AddSymbols(t);
    se.AddSymbols(t, &names);
    const std::string lowerText = G3(m.lower), upperText = G3(m.upper),
                      lLowerText = G3(std::log(m.lower)), lUpperText = G3(std::log(m.upper)),
                      pointText = G3(m.point), lText = G3(m.value), zText = G3(m.critical);
    const Slots values{{"Lower limit", lowerText},
                       {"Upper limit", upperText},
                       {"LLower", lLowerText},
                       {"LUpper", lUpperText},
                       {ratioName, pointText},
                       {"L", lText},
                       {"Z", zText}};
    if (m.limits != UpperOnly) lLower.AddNumbers(t, values, lLowerText);
    if (m.limits != LowerOnly) lUpper.AddNumbers(t, values, lUpperText);
    logValue.AddNumbers(t, values, lText);
    se.AddNumbers(t, values, G3(m.se));
}

void GivenTrail(const Family& f, PointForm form, const EnteredPoint& m, std::string& t) {
    const bool variance = form == PointForm::Variance;
    AddFormula(
        t,
        Cat({f.name, variance ? " and Variance in log units" : " and Standard error in log units"}),
        "A");
    AddFormula(t, Named("Log@Ratio = Given", f.word), "S");
    const std::string seLine =
        Named(variance ? "Log@SE = Sqr({Log@Variance})" : "Log@SE = Given", f.word);
    const Formula se{seLine};
    se.AddSymbols(t);
    const std::string exp = Named("@Ratio = Exp({Log@Ratio})", f.word);
    const Formula ratio{exp};
    ratio.AddSymbols(t);
    const std::string logName = Named("Log@Ratio", f.word), varName = Named("Log@Variance", f.word);
    const std::string lText = G3(m.value), varText = G3(m.se * m.se);
    const Slots values{{logName, lText}, {varName, varText}};
    AddStep(t, {logName, " = ", lText});
    if (variance)
        se.AddNumbers(t, values, G3(m.se));
    else
        AddStep(t, {Named("Log@SE = ", f.word), G3(m.se)});
    ratio.AddNumbers(t, values, G3(std::exp(m.value)));
}

// The other ratios cannot come from this row; a row of odds ratios says so
// with a full stop.
void RefuseOtherRatios(RatioFamily family, WorkingSet& ws) {
    for (std::size_t k = 0; k < kFamilies.size(); ++k) {
        if (static_cast<RatioFamily>(k) == family) continue;
        const Family& other = kFamilies[k];
        std::string& t = ws.EsFormula[static_cast<std::size_t>(other.logIndex)];
        t = Cat({other.name, " cannot be computed from the data"});
        if (family == RatioFamily::Odds && k != 0) t += '.';
        ws.EsFormula[static_cast<std::size_t>(other.ratioIndex)] = t;
    }
}

constexpr Formula kStdDiff{"StdDiff = Sqr(3) * {LogOddsRatio} / {PI}"};
constexpr Formula kStdDiffSE{"StdDiffSE = Sqr((3 * ({LogOddsSE} ^ 2)) / {PI} ^ 2)"};
constexpr Formula kStdDiffVar{"StdDiffVar =  {StdDiffSE} ^ 2"};
constexpr Formula kPaired{"StdPairedDiff = {StdDiff} / Sqr(2 * (1 - {ImputedR}))"};
constexpr Formula kPairedSE{"StdPairedDiffSE = {StdDiffSE} / Sqr(2 * (1 - {ImputedR}))"};
constexpr Formula kPairedVar{"StdPairedDiffVar = {StdPairedDiffSE} ^ 2"};
constexpr Formula kCorr{"Corr = {StdDiff} / Sqr({StdDiff} ^ 2 + 4)"};
constexpr Formula kCorrSE{"CorrSE = Sqr(16 * {StdDiffSE} ^ 2 / (({StdDiff} ^ 2 + 4) ^ 3))"};
constexpr Formula kFisherZ{"FisherZ =  0.5 * Log((1 + {Corr}) / (1 - {Corr}))"};
constexpr Formula kFisherZSE{"FisherZSE = {CorrSE} / (1 - {Corr} ^ 2)"};

// How d, and what follows from it, came from the odds ratio.
void AddOpening(std::string& t) {
    AddSteps(t, {"Starting with Odds ratio and confidence interval,",
                 "the program computes the Log odds ratio",
                 "then converts that to a Standardized mean difference (d),",
                 "where d is standardized by the pooled SD within groups.",
                 "For details on the computation of Log odds ratio",
                 "or of d, select the corresponding tab in this window."});
}

// d, paired d, r and Fisher's Z from the log odds ratio.
void FromLogOdds(double logOdds, double se, WorkingSet& ws, const ComputeOptions& options) {
    const double d = stats::LogOddsToD(logOdds), dSE = stats::LogOddsSEToD(se);
    const double f = std::sqrt(2 * (1 - options.ImputedR));
    const double paired = d / f, pairedSE = dSE / f;
    const double r = stats::DToR(d, 1, 1), rSE = stats::DSEToRSE(dSE, d, 1, 1);
    const double z = stats::FisherZ(r), zSE = rSE / (1 - r * r);
    ws.SetResult(Ix::StdDiffInMeans, d, dSE, dSE * dSE);
    ws.SetResult(Ix::StdPairedDifference, paired, pairedSE, pairedSE * pairedSE);
    ws.SetResult(Ix::Correlation, r, rSE, rSE * rSE);
    ws.SetResult(Ix::FishersZ, z, zSE, zSE * zSE);
    if (!ws.BuildTrails) return;

    const std::string lText = G3(logOdds), seText = G3(se), dText = G3(d), dSEText = G3(dSE),
                      rText = G3(options.ImputedR), pairedSEText = G3(pairedSE), corrText = G3(r),
                      corrSEText = G3(rSE);
    const Slots values{{"LogOddsRatio", lText},
                       {"LogOddsSE", seText},
                       {"PI", "3.14159265358979"},
                       {"StdDiff", dText},
                       {"StdDiffSE", dSEText},
                       {"ImputedR", rText},
                       {"StdPairedDiffSE", pairedSEText},
                       {"Corr", corrText},
                       {"CorrSE", corrSEText}};
    std::string& dTrail = ws.EsFormula[Ix::StdDiffInMeans];
    AddFormula(dTrail, "Standardized mean difference (d)", "T");
    AddFormula(dTrail, "Starting with Odds ratio and confidence limits,", "S");
    AddFormula(dTrail, "first compute the Log odds ratio, and then convert to d.", "S");
    AddFormulaLines(
        dTrail, {{kStdDiff, dText}, {kStdDiffSE, dSEText}, {kStdDiffVar, G3(dSE * dSE)}}, values);
    AddFormula(dTrail, "To display computation of Odds ratio,", "S");
    AddFormula(dTrail, "select 'Odds ratio' tab on this form.", "S");

    std::string& p = ws.EsFormula[Ix::StdPairedDifference];
    AddFormula(p, "Paired standardized mean difference", "T");
    AddOpening(p);
    AddSteps(p, {"The program then imputes the value of d (paired).",
                 "Assuming an imputed correlation between scores in the two groups,",
                 "d(paired) is standardized by the SD of A minus B."});
    AddFormulaLines(
        p,
        {{kPaired, G3(paired)}, {kPairedSE, pairedSEText}, {kPairedVar, G3(pairedSE * pairedSE)}},
        values);

    std::string& c = ws.EsFormula[Ix::Correlation];
    AddFormula(c, "Correlation (r) and Fisher's Z", "T");
    AddOpening(c);
    AddFormula(c, "Computation of Correlation", "T");
    AddFormulaLines(c, {{kCorr, corrText}, {kCorrSE, corrSEText}}, values);
    AddFormula(c, "Computation of Fisher's Z", "T");
    AddFormulaLines(c, {{kFisherZ, G3(z)}, {kFisherZSE, G3(zSE)}}, values);
    ws.EsFormula[Ix::FishersZ] = c;
}

}  // namespace

void ComputePointLog(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context) {
    const auto* layout = std::get_if<sheet::PointLogLayout>(&format.layout);
    if (layout == nullptr) return;
    const FormatRoles roles(format, ws);
    EnteredPoint m;
    if (!ReadEnteredPoint(layout->form, CIKind::Ratio, roles, ws, context.options, m)) return;
    const Family& f = FamilyOf(layout->family);
    ws.SetResult(f.logIndex, m.value, m.se, m.se * m.se);
    ws.SetPoint(f.ratioIndex, std::exp(m.value));
    if (ws.BuildTrails) {
        std::string& t = ws.EsFormula[static_cast<std::size_t>(f.logIndex)];
        if (layout->form == PointForm::Limits)
            LimitsTrail(f, m, t);
        else
            GivenTrail(f, layout->form, m, t);
        ws.EsFormula[static_cast<std::size_t>(f.ratioIndex)] = t;
        RefuseOtherRatios(layout->family, ws);
    }
    // Only an odds ratio converts to a difference in means; without a
    // sample size there is no Hedges's g.
    if (layout->family == RatioFamily::Odds) FromLogOdds(m.value, m.se, ws, context.options);
}

}  // namespace synthara::effectsize
