// The event families besides the two-group table, and the one-group
// families: each format's indices against numbers worked out by hand from
// the published formulas, and its refusals.
#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "RowCases.h"
#include "support/Tolerance.h"

namespace synthara::effectsize {
namespace {

using synthara::testing::IsNear;
constexpr auto none = std::nullopt;

constexpr const char* kPY = "Events and person years in each group";
constexpr const char* kPYRates = "Event rate and person years in each group";

TEST(PersonTime, IndicesOfTwoGroups) {
    const ValidCase cases[] = {
        // Rates of .02 on 500 and .05 on 400 person-years are 10 and 20 events.
        {"rates",
         kPYRates,
         {0.02, 500, 0.05, 400},
         {{Ix::LogRateRatio, -0.916290731874155, 0.3872983346207417},
          {Ix::RateRatio, 0.4},
          {Ix::RateDifference, -0.03, 0.012845232578665129},
          {Ix::PYCellA, 10},
          {Ix::PYCellB, 500},
          {Ix::EventsPY3, 30},
          {Ix::NPY3, 900}}},
    };
    for (const ValidCase& c : cases)
        CheckValid(c);

    // An empty group, or two, are reference cases; both empty still say so.
    const Row bothZero(kPY, {0, 100, 0, 200});
    EXPECT_TRUE(bothZero.ws.IsValid(Ix::LogRateRatio));
    EXPECT_TRUE(bothZero.ws.EsFormula[Ix::LogRateRatio].starts_with(
        "Rate ratio\r\nCannot be computed when event rate is 0% in both groups\r\n\r\nRate ratio"));
    EXPECT_EQ(bothZero.ws.EsFormula[Ix::RateRatio], bothZero.ws.EsFormula[Ix::LogRateRatio]);
}

TEST(PersonTime, RefusedRows) {
    const RefusedCase cases[] = {
        {"missing",
         kPY,
         {none, 100, 5, none},
         {"One of the required values is missing", "One of the required values is missing"}},
        {"each group in turn",
         kPY,
         {-1, 0, 2, -5},
         {"Number of events cannot be less than zero", "Person-years must be greater than zero",
          "Person-years must be greater than zero"}},
        {"negative rate", kPYRates, {-0.1, 10, 0.2, 10}, {"Rate cannot be less than zero"}},
        {"too much person-time",
         kPY,
         {1, 6e7, 1, 5e7},
         {"Total person years cannot be greater than 100,000,000"}},
    };
    for (const RefusedCase& c : cases)
        CheckRefused(c);
}

TEST(OneGroup, EventRates) {
    const ValidCase cases[] = {
        {"non-events",
         "Non-events and sample size",
         {3, 10},
         {{Ix::LogitEventRate, 0.8472978603872037, 0.6900655593423543},
          {Ix::EventRate, 0.7},
          {Ix::N0, 10},
          {Ix::Events0, 7},
          {Ix::OneCellB, 3}}},
        {"events and non-events",
         "Events and non-events",
         {4, 6},
         {{Ix::LogitEventRate, -0.4054651081081644, 0.6454972243679028}, {Ix::EventRate, 0.4}}},
        {"rate",
         "Event rate and sample size",
         {0.25, 40},
         {{Ix::LogitEventRate, -1.0986122886681098, 0.3651483716701107}, {Ix::Events0, 10}}},
    };
    for (const ValidCase& c : cases)
        CheckValid(c);

    const RefusedCase refused[] = {
        {"one subject", "Events and sample size", {1, 1}, {"Sample size cannot be less than 2"}},
        {"more events than subjects",
         "Events and sample size",
         {5, 4},
         {"Events cannot exceed Sample size"}},
        {"a rate above one",
         "Event rate and sample size",
         {1.5, 1},
         {"Event rate cannot be greater than one", "Sample size cannot be less than two"}},
        {"one in all", "Events and non-events", {1, 0}, {"Total N cannot be less than 2"}},
        {"missing",
         "Non-events and sample size",
         {none, none},
         {"One of the required values is missing", "One of the required values is missing"}},
    };
    for (const RefusedCase& c : refused)
        CheckRefused(c);
}

TEST(OneGroup, RatesOverPersonTime) {
    const ValidCase cases[] = {
        {"events",
         "Events and person years",
         {5, 100},
         {{Ix::Rate, 0.05, 0.022360679774997897},
          {Ix::NPY0, 100},
          {Ix::EventsPY0, 5},
          {Ix::PY1CellA, 5},
          {Ix::PY1CellB, 100}}},
        {"rate",
         "Event rate and person years",
         {0.02, 250},
         {{Ix::Rate, 0.02, 0.008944271909999159}, {Ix::EventsPY0, 5}}},
        // No events: half an event over half a person-year more; the cells keep what was entered.
        {"no events",
         "Events and person years",
         {0, 100},
         {{Ix::Rate, 0.004975124378109453, 0.007035888370015399},
          {Ix::NPY0, 100},
          {Ix::EventsPY0, 0.5},
          {Ix::PY1CellA, 0}}},
    };
    for (const ValidCase& c : cases)
        CheckValid(c);
    CheckRefused({"zero person-time",
                  "Event rate and person years",
                  {0.1, 0},
                  {"Person-years must be greater than zero"}});
    CheckRefused({"missing events",
                  "Events and person years",
                  {none, 10},
                  {"The number of events is missing"}});
}

// Each format's numbers, the limits on one side among them, are reference cases.
TEST(OneGroup, Means) {
    const char* limits = "Mean and confidence limits";
    const RefusedCase refused[] = {
        {"SD zero, N one",
         "Mean, SD and sample size",
         {1, 0, 1},
         {"Standard deviation must exceed zero", "Sample size must be 2 or greater"}},
        {"no limits",
         limits,
         {24.5, none, none, 18, 0.95},
         {"The lower and upper limits are missing"}},
        {"limits on one side",
         limits,
         {24.5, 25, 27.7, 1, 0.95},
         {"The lower limit must be less than the point value",
          "First sample size must be 2 or greater"}},
        {"variance missing", "Mean and variance", {1, none}, {"Variance is missing"}},
    };
    for (const RefusedCase& c : refused)
        CheckRefused(c);

    const Row sd("Mean, SD and sample size", {10, 3, 25});
    EXPECT_EQ(sd.ws.EsFormula[Ix::Mean],
              "Starting with\r\nMean, SD and Sample size\r\n\r\nMean\r\nMean = Given\r\n"
              "MeanSE = SD * Sqr(1 / n)\r\nMean = 10.000\r\nMeanSE = 3.000 * Sqr(1 / 25) = 0.600");
}

TEST(Peto, FromObservedMinusExpected) {
    // 620 is the largest log ratio computed.
    CheckValid({"at the limit", "Peto's (O-E) and V", {620, 1}, {{Ix::LogPetoOddsRatio, 620, 1}}});
    const Row above("Peto's (O-E) and V", {620.5, 1});
    EXPECT_TRUE(above.ValidIndices().empty());
    EXPECT_EQ(above.ws.EsFormula[Ix::PetoV],
              "Peto Odds ratio\r\ncannot be computed from entered data\r\n");
    CheckRefused({"nothing",
                  "Peto's (O-E) and V",
                  {none, none},
                  {"The value O-E is missing", "The value V is missing"}});
    CheckRefused({"V negative", "Peto's (O-E) and V", {1, -1}, {"The value V must exceed 0"}});
}

TEST(ChiSquare, CorrelationAndItsConversions) {
    const char* format = "Chi-squared and total sample size";
    CheckValid({"negative",
                format,
                {4, 100, 2},
                {{Ix::Correlation, -0.2, 0.09747323185282744},
                 {Ix::FishersZ, -0.2027325540540822, 0.10153461651336192},
                 {Ix::StdDiffInMeans, -0.4082482904638631, 0.2072566680724196},
                 {Ix::HedgesG, -0.40511595063933215, 0.2056664634580532},
                 {Ix::LogOddsRatio, -0.7404804896930605, 0.3759220127830566}}});
    CheckValid({"no association", format, {0, 50, 3}, {{Ix::Correlation, 0}, {Ix::FishersZ, 0}}});
    CheckRefused(
        {"ranges",
         format,
         {101, 3, 1},
         {"Chi-squared must fall in the range of 0 to 100", "Sample size must be 4 or greater"}});
    CheckRefused({"ratio to N",
                  format,
                  {50, 40, 0},
                  {"Ratio of chi-sq to N must be less than 1.0", "Effect direction is missing"}});
}

TEST(CaseControl, OddsRatioFromEachLayout) {
    // Exposed 20 of 50 cases and 10 of 100 controls, in each layout.
    const std::vector<Expect> expect = {
        {Ix::LogOddsRatio, 1.791759469228055, 0.44095855184409843},
        {Ix::OddsRatio, 6},
        {Ix::StdDiffInMeans, 0.9878487690310408, 0.24311319131500006},
        {Ix::HedgesG, 0.982834308274538, 0.24187911420172595},
        {Ix::StdPairedDifference, 0.9878487690310408},
        // The correlation counts cases and controls as its two groups.
        {Ix::Correlation, 0.4221481420775815, 0.08537766945627959},
        {Ix::FishersZ, 0.45030312448192494, 0.10389220014805121},
        {Ix::CcN1, 50},
        {Ix::CcN2, 100},
        {Ix::CcN3, 150},
        {Ix::Exposed1, 20},
        {Ix::Exposed2, 10},
        {Ix::Exposed3, 30},
        {Ix::MHCellA, 20},
        {Ix::MHCellB, 10},
        {Ix::MHCellC, 30},
        {Ix::MHCellD, 90}};
    CheckValid({"exposed and unexposed",
                "Exposed and unexposed for cases and controls",
                {20, 30, 10, 90},
                expect});
    CheckValid({"exposed and total",
                "Exposed and total for cases and controls",
                {20, 50, 10, 100},
                expect});
    CheckValid({"proportions",
                "Proportion exposed and total for cases and controls",
                {0.4, 50, 0.1, 100},
                expect});

    const Row row("Exposed and total for cases and controls", {20, 50, 10, 100});
    for (int i : {Ix::LogRiskRatio, Ix::RiskDifference, Ix::LogPetoOddsRatio})
        EXPECT_FALSE(row.ws.IsValid(i)) << i;
    EXPECT_TRUE(row.ws.EsFormula[Ix::LogPetoOddsRatio].ends_with(
        "D = 100 - 10 = 90\r\n\r\nPeto Odds ratio\r\n"
        "Peto odds ratio is not computed for case control studies"));
    EXPECT_TRUE(row.ws.EsFormula[Ix::RiskDifference].ends_with(
        "Risk difference\r\nIs not computed for case control studies"));
    EXPECT_NE(row.ws.EsFormula[Ix::StdDiffInMeans].find(
                  "StdDiff = Sqr(3) * LogOdds / PI\r\nStdDiffSE = Sqr((3 * (LogOddsSE ^ 2)) / PI ^ "
                  "2)\r\nStdDiffSEVar =  StdDiffSE ^ 2"),
              std::string::npos);
}

TEST(CaseControl, UndefinedAndRefusedTables) {
    // No exposure at all: no odds ratio, but the counts and the cells stand.
    const Row none0("Exposed and unexposed for cases and controls", {0, 30, 0, 90});
    EXPECT_EQ(none0.ValidIndices(), (std::vector<int>{27, 28, 29, 30, 37, 38, 39, 40, 41, 42}));
    EXPECT_TRUE(none0.ws.EsFormula[Ix::HedgesG].ends_with(
        "Cannot be computed when event rate is 0% or 100% in both groups"));

    CheckRefused({"exposed above total",
                  "Exposed and total for cases and controls",
                  {60, 50, 10, 100},
                  {"Exposed Cases cannot exceed Total Cases"}});
    CheckRefused({"missing",
                  "Exposed and unexposed for cases and controls",
                  {1, none, 2, 3},
                  {"One of the required values is missing"}});
}

}  // namespace
}  // namespace synthara::effectsize
