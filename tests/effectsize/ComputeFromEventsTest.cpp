#include "effectsize/ComputeFromEvents.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "effectsize/Compute.h"
#include "effectsize/EventsSteps.h"
#include "effectsize/Trail.h"
#include "support/ScriptedPrompter.h"
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

// One row computed straight from its entries; std::nullopt is an empty cell.
struct Row {
    Row(std::string_view format, std::vector<std::optional<double>> values) {
        ws.Reset();
        const char* labels[] = {"Group-A Events", "Group-A Total N", "Group-B Events",
                                "Group-B Total N", "External correlation"};
        for (std::size_t role = 0; role < values.size(); ++role) {
            ws.EntryLabels[role] = labels[role];
            ws.EntryMissing[role] = !values[role];
            ws.EntryVals[role] = values[role].value_or(0);
        }
        ComputeFromEvents(format, ws, context);
    }
    double Point(int i) const { return ws.Es(1, i); }
    std::vector<int> ValidIndices() const {
        std::vector<int> valid;
        for (int i = 1; i <= IndexCount; ++i)
            if (ws.IsValid(i)) valid.push_back(i);
        return valid;
    }

    synthara::testing::ScriptedPrompter prompter;
    ComputeOptions options;
    ComputeContext context{options, prompter};
    WorkingSet ws;
};

TEST(ComputeFromEvents, OrdinaryTableAgreesWithHandValues) {
    Row row(kEventsN, {4, 123, 11, 139});
    const WorkingSet& ws = row.ws;
    EXPECT_EQ(ws.RowErrors, "");
    EXPECT_TRUE(IsNear(ws.Es(1, Ix::LogOddsRatio), -0.9386941408703922));
    EXPECT_TRUE(IsNear(ws.Es(2, Ix::LogOddsRatio), 0.5975993241743407));
    EXPECT_TRUE(IsNear(ws.Es(3, Ix::LogOddsRatio), 0.5975993241743407 * 0.5975993241743407));
    EXPECT_TRUE(IsNear(row.Point(Ix::OddsRatio), std::exp(-0.9386941408703922)));
    EXPECT_TRUE(IsNear(row.Point(Ix::RiskDifference), -0.04661636544422997));
    EXPECT_TRUE(IsNear(row.Point(Ix::LogPetoOddsRatio), -0.8603833473164195));
    EXPECT_TRUE(IsNear(row.Point(Ix::HedgesG), -0.516034894285545));
    EXPECT_TRUE(IsNear(row.Point(Ix::Correlation), -0.2500751077724714));
    EXPECT_TRUE(IsNear(row.Point(Ix::FishersZ), std::atanh(-0.2500751077724714)));
    EXPECT_TRUE(IsNear(row.Point(Ix::LogRiskRatio), std::log((4.0 / 123) / (11.0 / 139))));

    const double counts[][2] = {{Ix::N1, 123},     {Ix::N2, 139},      {Ix::N3, 262},
                                {Ix::Events1, 4},  {Ix::Events2, 11},  {Ix::Events3, 15},
                                {Ix::MHCellA, 4},  {Ix::MHCellB, 119}, {Ix::MHCellC, 11},
                                {Ix::MHCellD, 128}};
    for (const auto& [index, value] : counts)
        EXPECT_EQ(row.Point(static_cast<int>(index)), value);
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(ws.Es(i, Ix::MHLogOddsRatio), ws.Es(i, Ix::LogOddsRatio));
        EXPECT_EQ(ws.Es(i, Ix::MHRiskDifference), ws.Es(i, Ix::RiskDifference));
    }
    EXPECT_EQ(row.ValidIndices(),
              (std::vector<int>{1,  2,  3,  4,  9,  12, 13, 14, 15, 16, 23, 24, 25, 26, 27,
                                28, 29, 30, 31, 32, 33, 34, 35, 36, 64, 65, 66, 67, 68}));

    const std::string& odds = ws.EsFormula[Ix::LogOddsRatio];
    EXPECT_EQ(odds.rfind("Starting with\r\nCells in 2x2 table\r\n\r\nWhere cells are given as\r\n"
                         "A = Group-A Events\r\nB = Group-A Total N - A\r\nC = Group-B Events\r\n"
                         "D = Group-B Total N - C\r\n\r\nA = 4\r\nB = 123 - 4 = 119\r\n",
                         0),
              0u);
    EXPECT_TRUE(Contains(odds, "\r\nLogOddsRatio = Log((4 * 128) / (119 * 11)) = -0.939\r\n"));
    EXPECT_TRUE(Contains(odds, "\r\nLogOddsSE = Sqr(0.357) = 0.598\r\n"));
    EXPECT_FALSE(Contains(odds, kAdded));
    EXPECT_EQ(ws.EsFormula[Ix::OddsRatio], odds);
    EXPECT_EQ(ws.EsFormula[Ix::PetoV], ws.EsFormula[Ix::LogPetoOddsRatio]);
    EXPECT_TRUE(Contains(ws.EsFormula[Ix::StdDiffInMeans],
                         "StdDiff = Sqr(3) * -0.939 / 3.14159265358979 = -0.518"));
    EXPECT_EQ(ws.EsFormula[Ix::FishersZ], "");
    EXPECT_EQ(ws.EsFormula[Ix::MHCellA].rfind("Starting with\r\nCells in 2x2 table", 0), 0u);
}

TEST(ComputeFromEvents, EmptyCellAddsHalfExceptForPetoAndTheCounts) {
    Row row(kEventsN, {0, 20, 10, 20});
    const WorkingSet& ws = row.ws;
    EXPECT_TRUE(IsNear(row.Point(Ix::LogOddsRatio), std::log((0.5 * 10.5) / (20.5 * 10.5))));
    EXPECT_TRUE(IsNear(ws.Es(2, Ix::LogOddsRatio), 1.4964146077478222));
    EXPECT_TRUE(IsNear(row.Point(Ix::LogRiskRatio), std::log((0.5 / 21) / (10.5 / 21))));
    EXPECT_TRUE(IsNear(row.Point(Ix::LogPetoOddsRatio), -2.6));
    EXPECT_EQ(row.Point(Ix::RiskDifference), -0.5);
    EXPECT_EQ(row.Point(Ix::N1), 20);
    EXPECT_EQ(row.Point(Ix::Events1), 0);
    EXPECT_EQ(row.Point(Ix::MHCellA), 0);
    // d, g, r all come from the odds ratio with the added cells; df counts them.
    EXPECT_TRUE(IsNear(row.Point(Ix::HedgesG), std::sqrt(3.0) * row.Point(Ix::LogOddsRatio) /
                                                   3.14159265358979 * (1 - 3.0 / (4 * 40 - 1))));
    EXPECT_TRUE(Contains(
        ws.EsFormula[Ix::LogOddsRatio],
        std::string(kAdded) + "\r\nfor computation of Log odds ratio and its variance\r\n"));
    EXPECT_TRUE(Contains(ws.EsFormula[Ix::LogOddsRatio], "Log((0.5 * 10.5) / (20.5 * 10.5))"));
    EXPECT_TRUE(Contains(ws.EsFormula[Ix::LogRiskRatio], kAdded));
    EXPECT_FALSE(Contains(ws.EsFormula[Ix::LogPetoOddsRatio], kAdded));
    EXPECT_TRUE(Contains(ws.EsFormula[Ix::RiskDifference],
                         "for computation of the Risk difference variance \r\nbut not for"));
    // The printed point line shows the cells after the addition.
    EXPECT_TRUE(Contains(ws.EsFormula[Ix::RiskDifference],
                         "RiskDiff = 0.5 / (0.5 + 20.5) - 10.5 / (10.5 + 10.5) = -0.500"));
}

TEST(ComputeFromEvents, NoEventsInEitherArmLeavesOnlyTheRiskDifference) {
    Row row(kEventsN, {0, 20, 0, 30});
    const WorkingSet& ws = row.ws;
    EXPECT_EQ(row.ValidIndices(),
              (std::vector<int>{9, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 68}));
    EXPECT_EQ(row.Point(Ix::RiskDifference), 0);
    EXPECT_TRUE(IsNear(ws.Es(2, Ix::RiskDifference), 0.040232965216371645));
    const std::string note = "Cannot be computed when event rate is 0% or 100% in both groups";
    EXPECT_EQ(ws.EsFormula[Ix::LogOddsRatio], "Odds ratio\r\n" + note);
    EXPECT_EQ(ws.EsFormula[Ix::HedgesG], "Corrected standardized mean difference (g)\r\n" + note);
    EXPECT_EQ(ws.EsFormula[Ix::FishersZ], "Fisher's Z\r\n" + note);
    for (int i : {Ix::LogPetoOddsRatio, Ix::LogRiskRatio}) {
        const std::string& trail = ws.EsFormula[static_cast<std::size_t>(i)];
        EXPECT_TRUE(trail.ends_with(
            "\r\n\r\n" + std::string(i == 3 ? "Risk ratio" : "Peto Odds ratio") + "\r\n" + note))
            << trail;
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
    EXPECT_TRUE(Contains(trail, "A = Group-A Events * Group-A Total N\r\n"));
    EXPECT_TRUE(Contains(trail, "A = 0.330 * 10 = 3.3\r\nB = 10 - 3.3 = 6.7\r\n"));
    EXPECT_TRUE(Contains(row.ws.EsFormula[Ix::HedgesG], "df = 30 - 2 = 28"));
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

TEST(ComputeFromEvents, CorrelationTakesFourWhenAGroupHasOneSubject) {
    // Rates on one and three subjects: no cell is empty, so N1 stays 1.
    Row row(kRates, {0.5, 1, 0.5, 3});
    const double d = row.Point(Ix::StdDiffInMeans);
    const double r = d / std::sqrt(d * d + 4);
    EXPECT_TRUE(IsNear(row.Point(Ix::Correlation), r));
    Row unequal(kEventsN, {4, 123, 11, 139});
    EXPECT_TRUE(Contains(unequal.ws.EsFormula[Ix::Correlation],
                         "r = d / Sqr(d ^ 2 + 4)\r\n"
                         "StdErr(r) = Sqr(16 * StdErr(d) ^ 2 / ((d ^ 2 + 4) ^ 3))"));
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
    EXPECT_TRUE(Contains(zero.ws.EsFormula[Ix::LogOddsRatio], "- 2 * DeltaOverN"));

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
}

TEST(ComputeFromEvents, FormatsWithoutATableShowOneBoxAndComputeNothing) {
    Row condition("Events and sample size in each condition", {4, 123, 11, 139});
    ASSERT_EQ(condition.prompter.shown.size(), 1u);
    EXPECT_EQ(condition.prompter.shown[0].box.title, "Error");
    EXPECT_EQ(condition.prompter.shown[0].box.lines, std::vector<std::string>{"Error"});
    EXPECT_TRUE(condition.ValidIndices().empty());

    // Dispatch routes every name; procedures not built compute nothing.
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

}  // namespace
}  // namespace synthara::effectsize
