#include "effectsize/ComputeFromEvents.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "OneRow.h"
#include "effectsize/Compute.h"
#include "effectsize/EventsSteps.h"
#include "effectsize/Trail.h"
#include "support/Tolerance.h"

namespace synthara::effectsize {
namespace {

using synthara::testing::IsNear;

constexpr const char* kEventsN = "Events and sample size in each group";
constexpr const char* kRates = "Event rate and sample size in each group";
constexpr std::string_view kAdded = "One or more cells was empty, so 0.5 was added to each cell";

bool Contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

// Trail lines joined by the line end the trails use.
std::string Lines(std::initializer_list<std::string_view> lines) {
    std::string text;
    bool first = true;
    for (std::string_view line : lines) {
        if (!first) text += "\r\n";
        first = false;
        text += line;
    }
    return text;
}

// The cells of "Events and sample size in each group" as the trails open with them.
std::string EventsHead(std::string_view a, std::string_view b, std::string_view c,
                       std::string_view d) {
    return Lines({"Starting with", "Cells in 2x2 table", "", "Where cells are given as",
                  "A = Group-A Events", "B = Group-A Total N - A", "C = Group-B Events",
                  "D = Group-B Total N - C", "", a, b, c, d});
}

// A row through ComputeFromEvents itself, or `framed`: through the frame,
// which also refuses results that are not finite.
struct Row : OneRow {
    Row(std::string_view format, std::vector<std::optional<double>> values, bool framed = false)
        : OneRow(format, values, framed ? nullptr : &ComputeFromEvents) {}
};

// The numbers of ordinary and empty-cell tables are checked against
// independently computed ones by the reference cases; here, which indices a
// table yields.
TEST(ComputeFromEvents, OrdinaryTableYieldsItsIndices) {
    Row row(kEventsN, {4, 123, 11, 139});
    EXPECT_EQ(row.ws.RowErrors, "");
    EXPECT_TRUE(IsNear(row.Point(Ix::LogOddsRatio), -0.9386941408703922));
    EXPECT_EQ(row.ValidIndices(),
              (std::vector<int>{1,  2,  3,  4,  9,  12, 13, 14, 15, 16, 23, 24, 25, 26, 27,
                                28, 29, 30, 31, 32, 33, 34, 35, 36, 64, 65, 66, 67, 68}));
}

TEST(ComputeFromEvents, TrailsOfAnOrdinaryTableReadExactly) {
    Row row(kEventsN, {10, 50, 20, 50});
    const auto& trail = row.ws.EsFormula;
    const std::string head = EventsHead("A = 10", "B = 50 - 10 = 40", "C = 20", "D = 50 - 20 = 30");
    EXPECT_EQ(trail[Ix::LogOddsRatio],
              head + "\r\n" +
                  Lines({"LogOddsRatio = Log((A * D) / (B * C))",
                         "LogOddsVariance = (1 / A + 1 / B + 1 / C + 1 / D)",
                         "LogOddsSE = Sqr(LogOddsVariance)", "OddsRatio = Exp(LogOddsRatio)", "",
                         "LogOddsRatio = Log((10 * 30) / (40 * 20)) = -0.981",
                         "LogOddsVariance = (1 / 10 + 1 / 40 + 1 / 20 + 1 / 30) = 0.208",
                         "LogOddsSE = Sqr(0.208) = 0.456", "OddsRatio = Exp(-0.981) = 0.375"}));
    EXPECT_EQ(
        trail[Ix::StdDiffInMeans],
        Lines({"Standardized mean difference (d)", "Starting with cells in 2x2 table,",
               "first compute the Log odds ratio, and then convert to d.",
               "StdDiff = Sqr(3) * LogOddsRatio / PI",
               "StdDiffSE = Sqr((3 * (LogOddsSE ^ 2)) / PI ^ 2)", "StdDiffVar = StdDiffSE ^ 2",
               "StdDiff = Sqr(3) * -0.981 / 3.14159265358979 = -0.541",
               "StdDiffSE = Sqr((3 * (0.456 ^ 2)) / 3.14159265358979 ^ 2) = 0.252",
               "StdDiffVar = 0.252 ^ 2 = 0.063", "To display computation of Odds ratio,",
               "select 'Odds ratio' tab on this form."}));
    EXPECT_EQ(trail[Ix::HedgesG],
              Lines({"Standardized mean difference corrected for bias (Hedges' g)",
                     "To compute g, the program computes a correction factor J,",
                     "J = 1 - (3 / (4 * df - 1))", "Where df = NTot - 2", "Computation of g",
                     "g = d * J", "StdErr(g) = StdErr(d) * J", "Variance(g) = StdErr(g) ^ 2"}));
    // The text says 4 where the computation used the group sizes.
    EXPECT_EQ(trail[Ix::Correlation],
              Lines({"Correlation (r) and Fisher's Z", "r = d / Sqr(d ^ 2 + 4)",
                     "StdErr(r) = Sqr(16 * StdErr(d) ^ 2 / ((d ^ 2 + 4) ^ 3))",
                     "r = -0.541 / Sqr(-0.541 ^ 2 + 4) = -0.261",
                     "StdErr(r) = Sqr(16 * 0.252 ^ 2 / ((-0.541 ^ 2 + 4) ^ 3)) = 0.113", "",
                     "Computation of Z", "Z = 0.5 * Log((1 + r) / (1 - r))",
                     "StdErr(Z) = StdErr(r) / (1 - r ^ 2)",
                     "Z = 0.5 * Log((1 + -0.261) / (1 - -0.261)) = -0.267",
                     "StdErr(Z) = 0.113 / (1 - -0.261 ^ 2) = 0.121"}));
    EXPECT_EQ(
        trail[Ix::LogPetoOddsRatio],
        head + "\r\n" +
            Lines({"T = A + B + C + D", "O = A", "E = ((A + B) * (A + C)) / T",
                   "V = ((A + B) * (C + D) * (A + C) * (B + D)) / (Total ^ 2 * (Total - 1))",
                   "T = 10 + 40 + 20 + 30 = 100", "O = 10",
                   "E = ((10 + 40) * (10 + 20)) / 100 = 15.000",
                   "V = ((10 + 40) * (20 + 30) * (10 + 20) * (40 + 30)) / (100 ^ 2 * (100 - 1)) = "
                   "5.303",
                   "O-E = Observed - Expected",
                   "Peto LogOddsRatio = (Observed - Expected) / Variance",
                   "StdErr = Sqr(1 / Variance)", "Variance = StdErr ^ 2",
                   "Peto OddsRatio = Exp(LogOddsRatio)", "O-E = 10 - 15.000 = -5.000",
                   "Peto LogOddsRatio = (-5.000) / 5.303 = -0.943",
                   "StdErr = Sqr(1 / 5.303) = 0.434", "Variance = 0.434 ^ 2 = 0.189",
                   "PetoOddsRatio = Exp(-0.943) = 0.390"}));
    // Copies, and the indices that carry the cells alone or nothing.
    EXPECT_EQ(trail[Ix::OddsRatio], trail[Ix::LogOddsRatio]);
    EXPECT_EQ(trail[Ix::RiskRatio], trail[Ix::LogRiskRatio]);
    for (int i : {Ix::PetoOddsRatio, Ix::PetoOE, Ix::PetoV})
        EXPECT_EQ(trail[static_cast<std::size_t>(i)], trail[Ix::LogPetoOddsRatio]);
    for (int i = Ix::MHCellA; i <= Ix::MHCellD; ++i)
        EXPECT_EQ(trail[static_cast<std::size_t>(i)], head);
    for (int i : {Ix::FishersZ, Ix::N1, Ix::MHLogOddsRatio, Ix::MHRiskDifference})
        EXPECT_EQ(trail[static_cast<std::size_t>(i)], "") << i;
}

TEST(ComputeFromEvents, TrailsOfATableWithAnEmptyCellReadExactly) {
    Row row(kEventsN, {0, 20, 10, 20});
    const auto& trail = row.ws.EsFormula;
    const std::string head = EventsHead("A = 0", "B = 20 - 0 = 20", "C = 10", "D = 20 - 10 = 10");
    EXPECT_EQ(trail[Ix::LogRiskRatio],
              head + "\r\n\r\n" +
                  Lines({"Risk ratio", "N1 = A + B", "N2 = C + D", "N1 = 0.5 + 20.5 = 21",
                         "N2 = 10.5 + 10.5 = 21", "LogRiskRatio = Log((A / N1) / (C / N2))",
                         "LogRiskVariance = (B / A) / (B + A) + (D / C) / (D + C)",
                         "LogRiskSE = Sqr(LogRiskVariance)", "RiskRatio = Exp(LogRiskRatio)",
                         "LogRiskRatio = Log((0.5 / 21) / (10.5 / 21)) = -3.045",
                         "LogRiskVariance = (20.5 / 0.5) / (20.5 + 0.5) + (10.5 / 10.5) / (10.5 + "
                         "10.5) = 2.000",
                         "LogRiskSE = Sqr(2.000) = 1.414", "RiskRatio = Exp(-3.045) = 0.048",
                         kAdded, "for computation of Log risk ratio and its variance"}));
    // The point line prints the cells with 0.5 added beside the point of the
    // raw table; the empty title leaves two line ends.
    EXPECT_EQ(trail[Ix::RiskDifference],
              head + "\r\n\r\n" +
                  Lines({"Risk difference",
                         "P1 = A / (A + B)",
                         "Q1 = B / (A + B)",
                         "P2 = C / (C + D)",
                         "Q2 = D / (C + D)",
                         "",
                         "RiskDiff = A / (A + B) - C / (C + D)",
                         "RiskDiffSE = Sqr(((P1 * Q1) / (A + B)) + ((P2 * Q2) / (C + D)))",
                         "",
                         "",
                         kAdded,
                         "for computation of the Risk difference variance ",
                         "but not for computation of the Risk difference itself",
                         "",
                         "P1 = 0.5 / (0.5 + 20.5) = 0.024",
                         "Q1 = 20.5 / (0.5 + 20.5) = 0.976",
                         "P2 = 10.5 / (10.5 + 10.5) = 0.500",
                         "Q2 = 10.5 / (10.5 + 10.5) = 0.500",
                         "RiskDiff = 0.5 / (0.5 + 20.5) - 10.5 / (10.5 + 10.5) = -0.500",
                         "RiskDiffSE = Sqr(((0.024 * 0.976) / (0.5 + 20.5)) + ((0.500 * 0.500) / "
                         "(10.5 + 10.5))) = 0.114"}));
    EXPECT_FALSE(Contains(trail[Ix::LogPetoOddsRatio], kAdded));
}

TEST(ComputeFromEvents, NoEventsInEitherArmLeavesOnlyTheRiskDifference) {
    Row row(kEventsN, {0, 20, 0, 30});
    const WorkingSet& ws = row.ws;
    EXPECT_EQ(row.ValidIndices(),
              (std::vector<int>{9, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 68}));
    EXPECT_EQ(row.Point(Ix::RiskDifference), 0);
    EXPECT_TRUE(IsNear(ws.Es(2, Ix::RiskDifference), 0.040232965216371645));
    const std::string note = "Cannot be computed when event rate is 0% or 100% in both groups";
    const std::string head = EventsHead("A = 0", "B = 20 - 0 = 20", "C = 0", "D = 30 - 0 = 30");
    EXPECT_EQ(ws.EsFormula[Ix::LogOddsRatio], head + "\r\n\r\nOdds ratio\r\n" + note);
    EXPECT_EQ(ws.EsFormula[Ix::OddsRatio], "");
    EXPECT_EQ(ws.EsFormula[Ix::HedgesG], "Corrected standardized mean difference (g)\r\n" + note);
    EXPECT_EQ(ws.EsFormula[Ix::FishersZ], "Fisher's Z\r\n" + note);
    for (int i : {Ix::LogPetoOddsRatio, Ix::LogRiskRatio}) {
        const std::string& trail = ws.EsFormula[static_cast<std::size_t>(i)];
        EXPECT_EQ(trail, head + "\r\n\r\n" +
                             std::string(i == 3 ? "Risk ratio" : "Peto Odds ratio") + "\r\n" +
                             note);
    }
    EXPECT_FALSE(row.context.NegativeVariance);
}

TEST(ComputeFromEvents, EachEmptyRoleIsReportedOnce) {
    const auto none = std::nullopt;
    const std::string missing = "\r  One of the required values is missing";
    Row one(kEventsN, {4, 123, none, 139});
    EXPECT_EQ(one.ws.RowErrors, missing);
    EXPECT_TRUE(one.ValidIndices().empty());
    EXPECT_TRUE(one.ws.EntryMarks[2].empty());
    Row three(kEventsN, {none, none, 11, none});
    EXPECT_EQ(three.ws.RowErrors, missing + missing + missing);
    Row refused(kEventsN, {124, 123, 11, 139});
    EXPECT_EQ(refused.ws.RowErrors, "\r  Group-A Events cannot exceed Group-A Total N");
    EXPECT_TRUE(refused.ValidIndices().empty());
}

TEST(ComputeFromEvents, RatesGiveFractionalCells) {
    Row row(kRates, {0.33, 10, 0.5, 20});
    EXPECT_EQ(row.Point(Ix::Events1), 0.33 * 10);
    EXPECT_TRUE(IsNear(row.Point(Ix::LogOddsRatio), std::log((3.3 * 10) / (6.7 * 10))));
    const std::string& trail = row.ws.EsFormula[Ix::LogOddsRatio];
    EXPECT_TRUE(Contains(trail, "A = Group-A Event rate * Group-A Total N\r\n"));
    EXPECT_TRUE(Contains(trail, "A = 0.3 * 10 = 3.3\r\nB = 10 - 3.3 = 6.7\r\n"));
}

TEST(ComputeFromEvents, PetoRefusesALogOddsRatioAbove620) {
    // One subject with the event against n without: Peto's log odds ratio is n + 1.
    Row limit(kEventsN, {1, 1, 0, 619});
    EXPECT_EQ(limit.Point(Ix::LogPetoOddsRatio), 620);
    EXPECT_TRUE(limit.ws.IsValid(Ix::PetoV));
    Row over(kEventsN, {1, 1, 0, 620});
    for (int i = Ix::LogPetoOddsRatio; i <= Ix::PetoV; ++i) {
        EXPECT_FALSE(over.ws.IsValid(i));
        EXPECT_TRUE(over.ws.EsFormula[static_cast<std::size_t>(i)].ends_with(
            "\r\n\r\nPeto Odds ratio\r\ncannot be computed from entered data\r\n"));
    }
    EXPECT_TRUE(over.ws.IsValid(Ix::LogOddsRatio));
    EXPECT_TRUE(events::PetoComputable(-1e300));
}

TEST(ComputeFromEvents, PairedTables) {
    const char* external = "Events and sample size in each treatment, and external correlation";
    Row independent(kEventsN, {10, 50, 20, 50});
    Row zero(external, {10, 50, 20, 50, 0});
    EXPECT_EQ(zero.ws.Es(3, Ix::LogOddsRatio), independent.ws.Es(3, Ix::LogOddsRatio));
    EXPECT_FALSE(zero.ws.IsValid(Ix::LogPetoOddsRatio));
    EXPECT_FALSE(zero.ws.IsValid(Ix::LogRiskRatio));
    EXPECT_FALSE(zero.ws.IsValid(Ix::RiskDifference));
    EXPECT_FALSE(zero.ws.IsValid(Ix::MHCellA));
    EXPECT_TRUE(zero.ws.EsFormula[Ix::RiskDifference].ends_with(
        "Risk difference\r\nIs not computed from paired data"));
    EXPECT_TRUE(Contains(zero.ws.EsFormula[Ix::LogOddsRatio],
                         "D = 50 - 20 = 30\r\nRho = External correlation\r\n\r\n"
                         "NTot = (A + B + C + D) / 2\r\n"
                         "DeltaOverN = (NTot * Rho) / Sqr(A * B * C * D)\r\nRho = 0.000\r\n"
                         "NTot = (10 + 40 + 20 + 30) / 2 = 50\r\n"
                         "DeltaOverN = (50 * 0.000) / Sqr(10 * 40 * 20 * 30) = 0.000\r\n"
                         "LogOddsRatio = Log((A * D) / (B * C))\r\n"
                         "LogOddsVariance = (1 / A + 1 / B + 1 / C + 1 / D) - 2 * DeltaOverN\r\n"));
    EXPECT_TRUE(zero.ws.EsFormula[Ix::LogPetoOddsRatio].ends_with(
        "\r\n\r\nPeto Odds ratio\r\nIs not computed for paired data"));

    Row missingR(external, {10, 50, 20, 50, std::nullopt});
    EXPECT_EQ(missingR.ws.RowErrors, "\r  Correlation is missing");

    // A strongly correlated, lopsided table can drive the variance below zero.
    Row negative(external, {1, 2, 1, 101, 0.5});
    EXPECT_TRUE(negative.context.NegativeVariance);
    EXPECT_FALSE(negative.ws.IsValid(Ix::LogOddsRatio));
    EXPECT_TRUE(negative.ws.IsValid(Ix::N1));

    // Matched pairs S, T, U, V with an empty cell: marginals get 0.5, S gets 0.25.
    Row matched("Matched 2x2 table", {0, 5, 0, 12});
    const double A = 5.5, B = 0.5, C = 12.5, D = 17.5, s = 0.25, n = (A + B + C + D) / 2;
    const double deltaOverN = n * (n * s - A * B) / (A * B * C * D);
    EXPECT_TRUE(
        IsNear(matched.ws.Es(3, Ix::LogOddsRatio), 1 / A + 1 / B + 1 / C + 1 / D - 2 * deltaOverN));
    EXPECT_EQ(matched.Point(Ix::N1), 5);
    EXPECT_TRUE(Contains(matched.ws.EsFormula[Ix::LogOddsRatio],
                         "DeltaOverN = Delta / NTot\r\n\r\n" + std::string(kAdded) +
                             "\r\nfor computation of Rho and DeltaOverN\r\nNTot = 36/2 = 18\r\n"));
}

TEST(ComputeFromEvents, FormatsWithoutATableShowOneBoxAndComputeNothing) {
    Row condition("Events and sample size in each condition", {4, 123, 11, 139});
    EXPECT_EQ(condition.prompter.Only(), "Error|Error");
    EXPECT_TRUE(condition.ValidIndices().empty());

    // Dispatch routes every name: a row its procedure refuses, or a name no
    // procedure knows, computes nothing.
    for (const char* format : {"Mean, SD and sample size in each group", "No such format",
                               "Cases and controls in each condition"}) {
        Row row(kEventsN, {4, 123, 11, 139});
        row.ws.Reset();
        Dispatch(format, row.ws, row.context);
        EXPECT_TRUE(row.ValidIndices().empty()) << format;
    }
    Row routed(kEventsN, {4, 123, 11, 139});
    routed.ws.Reset();
    Dispatch("Events and non-events in each group", routed.ws, routed.context);
    EXPECT_EQ(routed.Point(Ix::N1), 127);
}

TEST(ComputeFromEvents, ResultsThatAreNotFiniteAreNeverValid) {
    const std::string note = "Cannot be computed: the result is not a finite number";
    // A count of 1e-320 passes the validators; 1 / A is then infinite.
    Row tiny(kEventsN, {1e-320, 10, 5, 10}, true);
    for (int i : {Ix::LogOddsRatio, Ix::LogRiskRatio, Ix::StdDiffInMeans, Ix::HedgesG,
                  Ix::StdPairedDifference, Ix::Correlation, Ix::FishersZ, Ix::MHLogOddsRatio,
                  Ix::MHLogRiskRatio}) {
        EXPECT_FALSE(tiny.ws.IsValid(i)) << i;
        EXPECT_TRUE(tiny.ws.EsFormula[static_cast<std::size_t>(i)].ends_with(note)) << i;
    }
    EXPECT_TRUE(tiny.ws.EsFormula[Ix::LogOddsRatio].ends_with("= 0.000\r\n\r\n" + note));
    EXPECT_EQ(tiny.ws.EsFormula[Ix::FishersZ], note);  // its text stands under the correlation
    // Finite results of the same row stand: the ratios' points, Peto, the
    // risk difference and the counts.
    for (int i : {Ix::OddsRatio, Ix::RiskRatio, Ix::LogPetoOddsRatio, Ix::RiskDifference, Ix::N1})
        EXPECT_TRUE(tiny.ws.IsValid(i)) << i;
    EXPECT_FALSE(Contains(tiny.ws.EsFormula[Ix::RiskDifference], "finite"));
    EXPECT_EQ(tiny.ws.RowErrors, "");

    // An ordinary table loses nothing to the check.
    Row ordinary(kEventsN, {4, 123, 11, 139}, true);
    EXPECT_EQ(ordinary.ValidIndices(), Row(kEventsN, {4, 123, 11, 139}).ValidIndices());
}

}  // namespace
}  // namespace synthara::effectsize
