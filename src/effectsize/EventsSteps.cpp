#include "effectsize/EventsSteps.h"

#include <cmath>
#include <initializer_list>
#include <utility>

#include "effectsize/FormatRoles.h"
#include "effectsize/Trail.h"
#include "stats/Formulas.h"

namespace synthara::effectsize::events {

namespace {

constexpr std::string_view kUndefined =
    "Cannot be computed when event rate is 0% or 100% in both groups";
constexpr std::string_view kAdded = "One or more cells was empty, so 0.5 was added to each cell";
constexpr std::string_view kPetoTitle = "Peto Odds ratio";
constexpr std::string_view kPi = "3.14159265358979";

void AddSymbols(std::string& trail, std::initializer_list<const Formula*> formulas) {
    for (const Formula* formula : formulas)
        formula->AddSymbols(trail);
}

constexpr Formula kLogOdds{"LogOddsRatio = Log(({A} * {D}) / ({B} * {C}))"};
constexpr Formula kLogOddsVariance{"LogOddsVariance = (1 / {A} + 1 / {B} + 1 / {C} + 1 / {D})"};
constexpr Formula kPairedLogOddsVariance{
    "LogOddsVariance = (1 / {A} + 1 / {B} + 1 / {C} + 1 / {D}) - 2 * {DeltaOverN}"};
constexpr Formula kLogOddsSE{"LogOddsSE = Sqr({LogOddsVariance})"};
constexpr Formula kOddsRatio{"OddsRatio = Exp({LogOddsRatio})"};

constexpr Formula kStdDiff{"StdDiff = Sqr(3) * {LogOddsRatio} / {PI}"};
constexpr Formula kStdDiffSE{"StdDiffSE = Sqr((3 * ({LogOddsSE} ^ 2)) / {PI} ^ 2)"};
constexpr Formula kStdDiffVar{"StdDiffVar = {StdDiffSE} ^ 2"};
// The case-control trail has always worded these two differently.
constexpr Formula kCaseControlStdDiff{"StdDiff = Sqr(3) * {LogOdds} / {PI}"};
constexpr Formula kCaseControlStdDiffVar{"StdDiffSEVar =  {StdDiffSE} ^ 2"};

constexpr Formula kStdPairedDiff{"StdPairedDiff = {StdDiff} / Sqr(2 * (1 - {ImputedR}))"};
constexpr Formula kStdPairedDiffSE{"StdPairedDiffSE = {StdDiffSE} / Sqr(2 * (1 - {ImputedR}))"};
constexpr Formula kStdPairedDiffVar{"StdPairedDiffVar = {StdPairedDiffSE} ^ 2"};

// The text says 4 where the computation may have used the group sizes.
constexpr Formula kR{"r = {d} / Sqr({d} ^ 2 + 4)"};
constexpr Formula kRSE{"StdErr(r) = Sqr(16 * {StdErr(d)} ^ 2 / (({d} ^ 2 + 4) ^ 3))"};
constexpr Formula kZ{"Z = 0.5 * Log((1 + {r}) / (1 - {r}))"};
constexpr Formula kZSE{"StdErr(Z) = {StdErr(r)} / (1 - {r} ^ 2)"};

constexpr Formula kPetoT{"T = {A} + {B} + {C} + {D}"};
constexpr Formula kPetoO{"O = {A}"};
constexpr Formula kPetoE{"E = (({A} + {B}) * ({A} + {C})) / {T}"};
constexpr Formula kPetoV{
    "V = (({A} + {B}) * ({C} + {D}) * ({A} + {C}) * ({B} + {D})) / ({Total} ^ 2 * ({Total} - 1))"};
constexpr Formula kPetoOE{"O-E = {Observed} - {Expected}"};
constexpr Formula kPetoLog{"Peto LogOddsRatio = ({Observed - Expected}) / {Variance}"};
constexpr Formula kPetoSE{"StdErr = Sqr(1 / {Variance})"};
constexpr Formula kPetoVariance{"Variance = {StdErr} ^ 2"};
constexpr Formula kPetoRatio{"Peto OddsRatio = Exp({LogOddsRatio})", "PetoOddsRatio"};

constexpr Formula kN1{"N1 = {A} + {B}"};
constexpr Formula kN2{"N2 = {C} + {D}"};
constexpr Formula kLogRisk{"LogRiskRatio = Log(({A} / {N1}) / ({C} / {N2}))"};
constexpr Formula kLogRiskVariance{
    "LogRiskVariance = ({B} / {A}) / ({B} + {A}) + ({D} / {C}) / ({D} + {C})"};
constexpr Formula kLogRiskSE{"LogRiskSE = Sqr({LogRiskVariance})"};
constexpr Formula kRiskRatio{"RiskRatio = Exp({LogRiskRatio})"};

constexpr Formula kP1{"P1 = {A} / ({A} + {B})"};
constexpr Formula kQ1{"Q1 = {B} / ({A} + {B})"};
constexpr Formula kP2{"P2 = {C} / ({C} + {D})"};
constexpr Formula kQ2{"Q2 = {D} / ({C} + {D})"};
constexpr Formula kRiskDiff{"RiskDiff = {A} / ({A} + {B}) - {C} / ({C} + {D})"};
constexpr Formula kRiskDiffSE{
    "RiskDiffSE = Sqr((({P1} * {Q1}) / ({A} + {B})) + (({P2} * {Q2}) / ({C} + {D})))"};

}  // namespace

void AddCellsTrail(EventsRow& row, const CellLines& lines, const Slots& labels,
                   const Slots& values) {
    const auto& c = row.cells;
    const std::string a = G1(c[1][1]), b = G1(c[1][2]), cText = G1(c[2][1]), d = G1(c[2][2]);
    const Slots cells{{{"A", a}, {"B", b}, {"C", cText}, {"D", d}}, &values};
    std::string& t = row.head;
    t.reserve(1024);
    AddFormula(t, "Cells in 2x2 table", "A");
    AddFormula(t, "Where cells are given as", "T");
    for (const CellLine& line : lines)
        line.formula.AddSymbols(t, &labels);
    AddFormula(t, "", "S");
    const std::string_view results[] = {a, b, cText, d};
    for (std::size_t k = 0; k < lines.size(); ++k)
        lines[k].formula.AddNumbers(t, cells, lines[k].computed ? results[k] : "");
}

void TitledNote(std::string& trail, const std::string* head, std::string_view title,
                std::string_view step) {
    if (head)
        trail = *head;
    else
        trail.clear();
    AddFormula(trail, title, "T");
    AddFormula(trail, step, "S");
}

void AddHedgesGText(std::string& trail, bool titled) {
    static constexpr std::string_view kLines[] = {
        "To compute g, the program computes a correction factor J,",
        "J = 1 - (3 / (4 * df - 1))",
        "Where df = NTot - 2",
        "Computation of g",
        "g = d * J",
        "StdErr(g) = StdErr(d) * J",
        "Variance(g) = StdErr(g) ^ 2",
    };
    if (titled)
        AddFormula(trail, "Standardized mean difference corrected for bias (Hedges' g)", "T");
    for (std::string_view line : kLines)
        AddFormula(trail, line, "S");
}

double EventsRow::Value(sheet::RoleKind kind) const {
    return FormatRoles(format, ws).Value(kind);
}

const std::string& EventsRow::Label(sheet::RoleKind kind) const {
    return FormatRoles(format, ws).Label(kind);
}

bool LogOddsStep(EventsRow& row) {
    double A, B, C, D;
    bool added;
    row.Restore(A, B, C, D, true, added);
    row.n1 = A + B;
    row.n2 = C + D;
    row.nTot = row.n1 + row.n2;
    const double logOdds = std::log((A * D) / (B * C));
    double variance = 1 / A + 1 / B + 1 / C + 1 / D;
    if (row.paired) variance -= 2 * row.deltaOverN;
    if (variance < 0) {
        row.context.NegativeVariance = true;
        return false;
    }
    row.context.NegativeVariance = false;
    const double se = std::sqrt(variance);
    const double oddsRatio = std::exp(logOdds);
    row.logOdds = logOdds;
    row.logOddsSE = se;
    row.ws.SetResult(Ix::LogOddsRatio, logOdds, se, se * se);
    row.ws.SetPoint(Ix::OddsRatio, oddsRatio);
    if (!row.trails) return true;

    std::string& t = row.Trail(Ix::LogOddsRatio);
    t.reserve(row.head.size() + 768);
    t = row.head;
    const Formula& varianceFormula = row.paired ? kPairedLogOddsVariance : kLogOddsVariance;
    AddSymbols(t, {&kLogOdds, &varianceFormula, &kLogOddsSE, &kOddsRatio});
    AddFormula(t, "", "S");
    if (added) {
        AddFormula(t, kAdded, "S");
        AddFormula(t, "for computation of Log odds ratio and its variance", "S");
        AddFormula(t, "", "S");
    }
    const std::string a = G1(A), b = G1(B), c = G1(C), d = G1(D), lor = G3(logOdds),
                      var = G3(variance), delta = G3(row.deltaOverN);
    const Slots values{{"A", a},
                       {"B", b},
                       {"C", c},
                       {"D", d},
                       {"DeltaOverN", delta},
                       {"LogOddsVariance", var},
                       {"LogOddsRatio", lor}};
    kLogOdds.AddNumbers(t, values, lor);
    varianceFormula.AddNumbers(t, values, var);
    kLogOddsSE.AddNumbers(t, values, G3(se));
    kOddsRatio.AddNumbers(t, values, G3(oddsRatio));
    row.Trail(Ix::OddsRatio) = t;
    return true;
}

void StdDiffStep(EventsRow& row) {
    const double d = std::sqrt(3.0) * row.logOdds / stats::PI;
    const double se = std::sqrt((3 * row.logOddsSE * row.logOddsSE) / (stats::PI * stats::PI));
    row.stdDiff = d;
    row.stdDiffSE = se;
    row.ws.SetResult(Ix::StdDiffInMeans, d, se, se * se);
    if (!row.trails) return;

    std::string& t = row.Trail(Ix::StdDiffInMeans);
    t.reserve(640);
    AddFormula(t, "Standardized mean difference (d)", "T");
    AddFormula(t, "Starting with cells in 2x2 table,", "S");
    AddFormula(t, "first compute the Log odds ratio, and then convert to d.", "S");
    const Formula& dFormula = row.caseControl ? kCaseControlStdDiff : kStdDiff;
    const Formula& varFormula = row.caseControl ? kCaseControlStdDiffVar : kStdDiffVar;
    AddSymbols(t, {&dFormula, &kStdDiffSE, &varFormula});
    const std::string seText = G3(se), lor = G3(row.logOdds), lorSE = G3(row.logOddsSE);
    const Slots values{{"LogOddsRatio", lor},
                       {"LogOdds", lor},
                       {"LogOddsSE", lorSE},
                       {"PI", kPi},
                       {"StdDiffSE", seText}};
    dFormula.AddNumbers(t, values, G3(d));
    kStdDiffSE.AddNumbers(t, values, seText);
    varFormula.AddNumbers(t, values, G3(se * se));
    AddFormula(t, "To display computation of Odds ratio,", "S");
    AddFormula(t, "select 'Odds ratio' tab on this form.", "S");
}

void PairedStdDiffStep(EventsRow& row) {
    const double imputedR = row.context.options.ImputedR;
    const double divisor = std::sqrt(2 * (1 - imputedR));
    const double d = row.stdDiff / divisor;
    const double se = row.stdDiffSE / divisor;
    row.ws.SetResult(Ix::StdPairedDifference, d, se, se * se);
    if (!row.trails) return;

    static constexpr std::string_view kLines[] = {
        "Starting with binary data in a 2x2 table,",
        "the program computes the Log odds ratio",
        "then converts that to a Standardized mean difference (d)",
        "where d is standardized by the pooled SD within groups.",
        "For details on the computation of Log odds ratio",
        "or of d, select the corresponding tab in this window.",
        "The program then imputes the value of d (paired).",
        "Assuming a correlation between scores in the two groups,",
        "d (paired) is standardized by the SD of A minus B.",
    };
    std::string& t = row.Trail(Ix::StdPairedDifference);
    t.reserve(1024);
    AddFormula(t, "Paired standardized mean difference", "T");
    for (std::string_view line : kLines)
        AddFormula(t, line, "S");
    AddSymbols(t, {&kStdPairedDiff, &kStdPairedDiffSE, &kStdPairedDiffVar});
    const std::string r = G3(imputedR), seText = G3(se), dText = G3(row.stdDiff),
                      dSEText = G3(row.stdDiffSE);
    const Slots values{
        {"StdDiff", dText}, {"StdDiffSE", dSEText}, {"ImputedR", r}, {"StdPairedDiffSE", seText}};
    kStdPairedDiff.AddNumbers(t, values, G3(d));
    kStdPairedDiffSE.AddNumbers(t, values, seText);
    kStdPairedDiffVar.AddNumbers(t, values, G3(se * se));
}

void HedgesGStep(EventsRow& row) {
    // The degrees of freedom are whole; fractional tables (from rates, or
    // with 0.5 added) round half to even.
    const int df = static_cast<int>(std::nearbyint(row.nTot - 2));
    const int method = row.context.options.GVarianceMethod;
    const double j = stats::CorrectionJ(df);
    const double g = row.stdDiff * j;
    const double se = stats::GSEFromD(row.stdDiff, row.stdDiffSE, df, true, method);
    const double seAgain = stats::GSEFromD(row.stdDiff, row.stdDiffSE, df, true, method);
    const double variance = seAgain * seAgain;
    row.ws.SetResult(Ix::HedgesG, g, se, variance);
    if (!row.trails) return;

    // The text names the default method's formula whichever method is set,
    // so it carries no numbers that the other method would contradict.
    std::string& t = row.Trail(Ix::HedgesG);
    if (row.caseControl) {
        static constexpr std::string_view kOpening[] = {
            "Starting with binary data in a 2x2 table,",
            "the program computes the Log odds ratio",
            "then converts that to a Standardized mean difference (d).",
            "For details on the computation of Log odds ratio",
            "or of d, select the corresponding tab in this window.",
        };
        for (std::string_view line : kOpening)
            AddFormula(t, line, t.empty() ? "T" : "S");
    }
    AddHedgesGText(t, !row.caseControl);
}

void CorrelationStep(EventsRow& row) {
    // Sizes of one or less would divide by zero; the formula then takes both
    // as 1, so that a = 4. The trail prints 4 in every case.
    double n1 = row.n1, n2 = row.n2;
    if (!(n1 > 1 && n2 > 1)) n1 = n2 = 1;
    const double d = row.stdDiff, dSE = row.stdDiffSE;
    const double r = stats::DToR(d, n1, n2);
    const double rSE = stats::DSEToRSE(dSE, d, n1, n2);
    const double z = stats::FisherZ(r);
    const double zSE = rSE / (1 - r * r);
    row.ws.SetResult(Ix::Correlation, r, rSE, rSE * rSE);
    row.ws.SetResult(Ix::FishersZ, z, zSE, zSE * zSE);
    if (!row.trails) return;

    std::string& t = row.Trail(Ix::Correlation);
    t.reserve(640);
    const std::string dText = G3(d), dSEText = G3(dSE), rText = G3(r), rSEText = G3(rSE);
    const Slots values{{"d", dText}, {"StdErr(d)", dSEText}, {"r", rText}, {"StdErr(r)", rSEText}};
    AddFormula(t, "Correlation (r) and Fisher's Z", "T");
    AddSymbols(t, {&kR, &kRSE});
    kR.AddNumbers(t, values, rText);
    kRSE.AddNumbers(t, values, rSEText);
    AddFormula(t, "Computation of Z", "T");
    AddSymbols(t, {&kZ, &kZSE});
    kZ.AddNumbers(t, values, G3(z));
    kZSE.AddNumbers(t, values, G3(zSE));
}

void UndefinedTableStep(EventsRow& row) {
    if (!row.trails) return;
    static constexpr std::pair<int, std::string_view> kTitles[] = {
        {Ix::LogOddsRatio, "Odds ratio"},
        {Ix::StdDiffInMeans, "Standardized mean difference (d)"},
        {Ix::HedgesG, "Corrected standardized mean difference (g)"},
        {Ix::StdPairedDifference, "Standardized paired mean difference (D)"},
        {Ix::Correlation, "Correlation (r)"},
        {Ix::FishersZ, "Fisher's Z"},
    };
    // The log odds ratio keeps the cells above its note, as its computed
    // trail would; the odds ratio itself gets no trail.
    for (const auto& [index, title] : kTitles)
        TitledNote(row.Trail(index), index == Ix::LogOddsRatio ? &row.head : nullptr, title,
                   kUndefined);
}

void PetoStep(EventsRow& row, bool undefinedTable) {
    std::string& t = row.Trail(Ix::LogPetoOddsRatio);
    auto copyTrail = [&] {
        for (int index : {Ix::PetoOddsRatio, Ix::PetoOE, Ix::PetoV})
            row.Trail(index) = t;
    };
    if (row.paired || undefinedTable) {
        if (!row.trails) return;
        TitledNote(t, &row.head, kPetoTitle,
                   row.paired ? "Is not computed for paired data" : kUndefined);
        copyTrail();
        return;
    }
    // Peto's method works on the table as entered, never with 0.5 added.
    double A, B, C, D;
    bool added;
    row.Restore(A, B, C, D, false, added);
    const double total = A + B + C + D;
    const double expected = ((A + C) * (A + B)) / total;
    const double v = ((A + B) * (C + D) * (A + C) * (B + D)) / (total * total * (total - 1));
    const double oMinusE = A - expected;
    const double logPeto = oMinusE / v;
    if (!PetoComputable(logPeto)) {
        if (!row.trails) return;
        TitledNote(t, &row.head, kPetoTitle, "cannot be computed from entered data");
        AddFormula(t, "", "S");
        copyTrail();
        return;
    }
    const double se = std::sqrt(1 / v);
    row.ws.SetResult(Ix::LogPetoOddsRatio, logPeto, se, se * se);
    row.ws.SetPoint(Ix::PetoOddsRatio, std::exp(logPeto));
    row.ws.SetPoint(Ix::PetoOE, oMinusE);
    row.ws.SetPoint(Ix::PetoV, v);
    if (!row.trails) return;

    t.reserve(row.head.size() + 1024);
    t = row.head;
    const std::string a = G1(A), b = G1(B), c = G1(C), d = G1(D), tot = G1(total),
                      eText = G3(expected), vText = G3(v), oeText = G3(oMinusE),
                      logText = G3(logPeto), seText = G3(se);
    const Slots values{{"A", a},
                       {"B", b},
                       {"C", c},
                       {"D", d},
                       {"T", tot},
                       {"Total", tot},
                       {"Observed", a},
                       {"Expected", eText},
                       {"Observed - Expected", oeText},
                       {"Variance", vText},
                       {"StdErr", seText},
                       {"LogOddsRatio", logText}};
    AddSymbols(t, {&kPetoT, &kPetoO, &kPetoE, &kPetoV});
    kPetoT.AddNumbers(t, values, tot);
    kPetoO.AddNumbers(t, values);
    kPetoE.AddNumbers(t, values, eText);
    kPetoV.AddNumbers(t, values, vText);
    AddSymbols(t, {&kPetoOE, &kPetoLog, &kPetoSE, &kPetoVariance, &kPetoRatio});
    kPetoOE.AddNumbers(t, values, oeText);
    kPetoLog.AddNumbers(t, values, logText);
    kPetoSE.AddNumbers(t, values, seText);
    kPetoVariance.AddNumbers(t, values, G3(se * se));
    kPetoRatio.AddNumbers(t, values, G3(std::exp(logPeto)));
    copyTrail();
}

void RiskRatioStep(EventsRow& row, bool undefinedTable) {
    std::string& t = row.Trail(Ix::LogRiskRatio);
    if (row.paired || undefinedTable) {
        if (!row.trails) return;
        TitledNote(t, &row.head, "Risk ratio",
                   row.paired ? "Is not computed from paired data" : kUndefined);
        row.Trail(Ix::RiskRatio) = t;
        return;
    }
    double A, B, C, D;
    bool added;
    row.Restore(A, B, C, D, true, added);
    const double n1 = A + B, n2 = C + D;
    const double logRisk = std::log((A / n1) / (C / n2));
    const double variance = (B / A) / (B + A) + (D / C) / (D + C);
    const double se = std::sqrt(variance);
    const double riskRatio = std::exp(logRisk);
    row.ws.SetResult(Ix::LogRiskRatio, logRisk, se, se * se);
    row.ws.SetPoint(Ix::RiskRatio, riskRatio);
    if (!row.trails) return;

    t.reserve(row.head.size() + 1024);
    t = row.head;
    const std::string a = G1(A), b = G1(B), c = G1(C), d = G1(D), n1Text = G1(n1), n2Text = G1(n2),
                      logText = G3(logRisk), varText = G3(variance);
    const Slots values{{"A", a},
                       {"B", b},
                       {"C", c},
                       {"D", d},
                       {"N1", n1Text},
                       {"N2", n2Text},
                       {"LogRiskRatio", logText},
                       {"LogRiskVariance", varText}};
    AddFormula(t, "Risk ratio", "T");
    AddSymbols(t, {&kN1, &kN2});
    kN1.AddNumbers(t, values, n1Text);
    kN2.AddNumbers(t, values, n2Text);
    AddSymbols(t, {&kLogRisk, &kLogRiskVariance, &kLogRiskSE, &kRiskRatio});
    kLogRisk.AddNumbers(t, values, logText);
    kLogRiskVariance.AddNumbers(t, values, varText);
    kLogRiskSE.AddNumbers(t, values, G3(se));
    kRiskRatio.AddNumbers(t, values, G3(riskRatio));
    if (added) {
        AddFormula(t, kAdded, "S");
        AddFormula(t, "for computation of Log risk ratio and its variance", "S");
    }
    row.Trail(Ix::RiskRatio) = t;
}

void RiskDifferenceStep(EventsRow& row) {
    std::string& t = row.Trail(Ix::RiskDifference);
    if (row.paired) {
        if (row.trails)
            TitledNote(t, &row.head, "Risk difference", "Is not computed from paired data");
        return;
    }
    // The point rests on the table as entered; only the variance needs the
    // 0.5 when a cell is empty.
    double A, B, C, D;
    bool added;
    row.Restore(A, B, C, D, false, added);
    const double riskDiff = A / (A + B) - C / (C + D);
    row.Restore(A, B, C, D, true, added);
    const double p1 = A / (A + B), q1 = B / (A + B), p2 = C / (C + D), q2 = D / (C + D);
    const double se = std::sqrt(((p1 * q1) / (A + B)) + ((p2 * q2) / (C + D)));
    row.ws.SetResult(Ix::RiskDifference, riskDiff, se, se * se);
    if (!row.trails) return;

    t.reserve(row.head.size() + 1024);
    t = row.head;
    AddFormula(t, "Risk difference", "T");
    AddSymbols(t, {&kP1, &kQ1, &kP2, &kQ2});
    AddFormula(t, "", "S");
    AddSymbols(t, {&kRiskDiff, &kRiskDiffSE});
    AddFormula(t, "", "T");
    if (added) {
        AddFormula(t, kAdded, "S");
        AddFormula(t, "for computation of the Risk difference variance ", "S");
        AddFormula(t, "but not for computation of the Risk difference itself", "S");
        AddFormula(t, "", "S");
    }
    // The numbered lines show the cells the variance used, also for the point.
    const std::string a = G1(A), b = G1(B), c = G1(C), d = G1(D), p1Text = G3(p1), q1Text = G3(q1),
                      p2Text = G3(p2), q2Text = G3(q2);
    const Slots values{{"A", a},       {"B", b},       {"C", c},       {"D", d},
                       {"P1", p1Text}, {"Q1", q1Text}, {"P2", p2Text}, {"Q2", q2Text}};
    kP1.AddNumbers(t, values, p1Text);
    kQ1.AddNumbers(t, values, q1Text);
    kP2.AddNumbers(t, values, p2Text);
    kQ2.AddNumbers(t, values, q2Text);
    kRiskDiff.AddNumbers(t, values, G3(riskDiff));
    kRiskDiffSE.AddNumbers(t, values, G3(se));
}

void MantelHaenszelStep(EventsRow& row, bool undefinedTable) {
    double A, B, C, D;
    bool added;
    row.Restore(A, B, C, D, false, added);
    WorkingSet& ws = row.ws;
    ws.SetPoint(Ix::MHCellA, A);
    ws.SetPoint(Ix::MHCellB, B);
    ws.SetPoint(Ix::MHCellC, C);
    ws.SetPoint(Ix::MHCellD, D);
    ws.CopyResult(Ix::RiskDifference, Ix::MHRiskDifference);
    if (undefinedTable) return;
    ws.CopyResult(Ix::LogOddsRatio, Ix::MHLogOddsRatio);
    ws.CopyResult(Ix::OddsRatio, Ix::MHOddsRatio);
    ws.CopyResult(Ix::LogRiskRatio, Ix::MHLogRiskRatio);
    ws.CopyResult(Ix::RiskRatio, Ix::MHRiskRatio);
}

}  // namespace synthara::effectsize::events
