#include "effectsize/Validators.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>

namespace synthara::effectsize {
namespace {

// Roles from 0 with the values given, the first two labelled as two-group
// events are; std::nullopt is a missing cell.
WorkingSet Roles(std::initializer_list<std::optional<double>> values) {
    WorkingSet ws;
    ws.Reset();
    ws.EntryLabels[0] = "Group-A Events";
    ws.EntryLabels[1] = "Group-A Total N";
    std::size_t role = 0;
    for (const auto& value : values) {
        ws.EntryMissing[role] = !value;
        ws.EntryVals[role] = value.value_or(0);
        ++role;
    }
    return ws;
}

// "A" when the first cell is marked, "B" when the second is.
std::string Marked(const WorkingSet& ws) {
    return std::string(ws.EntryMarks[0].empty() ? "" : "A") + (ws.EntryMarks[1].empty() ? "" : "B");
}

// The row's errors as they are stored, from messages joined by '|'.
std::string RowErrors(std::string_view joined) {
    std::string text;
    for (std::size_t start = 0; start < joined.size();) {
        const std::size_t end = std::min(joined.find('|', start), joined.size());
        text += "\r  " + std::string(joined.substr(start, end - start));
        start = end + 1;
    }
    return text;
}

TEST(Validators, EventValidatorsReportInOrderAndMarkTheCellTheyBlame) {
    const auto none = std::nullopt;
    const struct {
        const char* what;
        void (*check)(int, int, WorkingSet&);
        std::optional<double> first, second;
        const char* marked;    // "A" the first cell, "B" the second
        const char* messages;  // in order, joined by '|'
    } cases[] = {
        {"good", CheckEventsAndN, 3, 10, "", ""},
        {"events equal N", CheckEventsAndN, 10, 10, "", ""},
        {"both missing", CheckEventsAndN, none, none, "AB",
         "The number of events is missing|The total N is missing"},
        {"events above N marks both", CheckEventsAndN, 11, 10, "AB",
         "Group-A Events cannot exceed Group-A Total N"},
        {"negative events, N below 1", CheckEventsAndN, -1, 0.5, "AB",
         "Group-A Events cannot be less than zero|Group-A Total N cannot be less than 1"},
        {"N too large", CheckEventsAndN, 1, 100000001, "B",
         "The Group-A Total N cannot be greater than 100,000,000"},
        {"N at the limit", CheckEventsAndN, 1, 100000000, "", ""},
        {"non-events missing", CheckNonEventsAndN, none, 10, "A",
         "The number of non-events is missing"},
        {"events, non-events: sum below 1", CheckEventsNonEvents, 0, 0.5, "AB",
         "Total N cannot be less than 1"},
        {"events, non-events: negative and missing", CheckEventsNonEvents, -2, none, "AB",
         "The number of non-events is missing|Group-A Events cannot be less than zero"},
        {"events, non-events: too many", CheckEventsNonEvents, 50000000, 50000001, "AB",
         "The sample size cannot be greater than 100,000,000"},
        {"rate missing", CheckEventRateN, none, 10, "A", "Group-A Events is missing"},
        {"rate above one, N below one", CheckEventRateN, 1.01, 0, "AB",
         "Group-A Events cannot be greater than one|Group-A Total N cannot be less than one"},
        {"rate negative, N too large", CheckEventRateN, -0.1, 2e8, "AB",
         "Group-A Events cannot be less than zero|"
         "Group-A Total N cannot be greater than 100,000,000"},
        {"rate of one", CheckEventRateN, 1, 1, "", ""},
    };
    for (const auto& c : cases) {
        WorkingSet ws = Roles({c.first, c.second});
        c.check(0, 1, ws);
        EXPECT_EQ(ws.RowErrors, RowErrors(c.messages)) << c.what;
        EXPECT_EQ(Marked(ws), c.marked) << c.what;
    }
}

TEST(Validators, ExternalCorrelation) {
    const char* const range = "Correlation must fall in the range of -.9999 to +.9999";
    const struct {
        std::optional<double> r;
        const char* message;
    } cases[] = {{0.9999, ""},
                 {-0.9999, ""},
                 {0.99991, range},
                 {-1, range},
                 {std::nullopt, "Correlation is missing"}};
    for (const auto& c : cases) {
        WorkingSet ws = Roles({c.r, 1});
        CheckR(0, ws);
        EXPECT_EQ(ws.RowErrors, RowErrors(c.message));
        EXPECT_EQ(ws.EntryMarks[0], c.message);
    }
}

TEST(Validators, OneValueAgainstItsRange) {
    using Check = void (*)(int, WorkingSet&);
    const auto none = std::nullopt;
    const struct {
        Check check;
        std::optional<double> value;
        const char* message;  // "" when the value passes
    } cases[] = {
        {CheckN, 2, ""},
        {CheckN, 1.99, "Sample size must be 2 or greater"},
        {CheckN, 100000000, ""},
        {CheckN, 100000001, "Sample size cannot be greater than 100,000,000"},
        {CheckN, none, "Sample size is missing"},
        {CheckNChiSq, 3.5, "Sample size must be 4 or greater"},
        {CheckNCorr, 4, ""},
        {CheckN1, 1, "First sample size must be 2 or greater"},
        {CheckN2, 2e8, "Second sample size cannot be greater than 100,000,000"},
        {CheckN1Optional, none, ""},
        {CheckN2Optional, 1, "First sample size must be 2 or greater"},
        {CheckSDP, 0, "Standard deviation must exceed zero"},
        {CheckSD2, none, "Second standard deviation is missing"},
        {CheckSe, -1, "Standard error must exceed zero"},
        {CheckSeCorr, 1.01, "Standard error cannot exceed 1"},
        {CheckVarianceFisher, 1, ""},
        {CheckVariance, 0, "Variance must exceed zero"},
        {CheckCorr, 0.99999, ""},
        {CheckCorr, -1, "Correlation must be greater than -1"},
        {CheckCorr, 1, "Correlation must be less than +1"},
        {CheckFisherZ, -4.96, "Fisher's Z must fall in the range of -4.95 to +4.95"},
        {CheckChiSq, 0, ""},
        {CheckRate, 1.1, "Rate cannot be greater than 1.0"},
        {CheckRatePY, 3, ""},
        {CheckT, none, "t-value is missing"},
        {CheckF, 0, "F-value must be greater than zero"},
        {CheckEvents, -0.5, "Number of events cannot be less than zero"},
        {CheckPersonYears, 0, "Person-years must be greater than zero"},
        {CheckLogPoint, 10.5, "Point estimate must fall in range of -10 to +10"},
        {CheckPoint, none, "The point estimate is missing"},
        {CheckMean1, none, "First mean is missing"},
        {CheckDesign, 4, "Study design is missing"},
        {CheckDesign, 3, ""},
    };
    for (const auto& c : cases) {
        WorkingSet ws = Roles({c.value, 1});
        c.check(0, ws);
        EXPECT_EQ(ws.RowErrors, RowErrors(c.message)) << c.message << " " << c.value.value_or(-99);
        EXPECT_EQ(ws.EntryMarks[0], c.message);
    }
}

TEST(Validators, CodedChoices) {
    const struct {
        std::optional<double> code;
        bool autoAllowed;
        const char* message;
    } directions[] = {{1, true, ""},
                      {3, false, ""},
                      {1, false, "Effect direction cannot be determined automatically"},
                      {4, true, "Effect direction is missing"},
                      {std::nullopt, true, "Effect direction is missing"}};
    for (const auto& c : directions) {
        WorkingSet ws = Roles({c.code, 1});
        CheckDirection(0, ws, c.autoAllowed);
        EXPECT_EQ(ws.RowErrors, RowErrors(c.message));
    }
    const struct {
        std::optional<double> method;
        StdTypes permitted;
        const char* message;
    } methods[] = {
        {1, StdTypes::PostOnly, ""},
        {2, StdTypes::PostOnly, "With this format, must standardize by post-score SD"},
        {1, StdTypes::ChangeOnly, "With this format, must standardize by change score SD"},
        {std::nullopt, StdTypes::Either, "Method for standardizing is missing"}};
    for (const auto& c : methods) {
        WorkingSet ws = Roles({c.method, 1});
        CheckStdType(0, ws, c.permitted);
        EXPECT_EQ(ws.RowErrors, RowErrors(c.message));
    }
}

TEST(Validators, PrePostCorrelation) {
    const auto none = std::nullopt;
    const char* post =
        "To standardize by post-scores using this format, the pre-post correlation is required";
    const struct {
        std::optional<double> r, method;
        CorrNeed need;
        const char* marked;
        const char* messages;
    } cases[] = {
        {none, 1, CorrNeed::NeedForPost, "AB", post},
        {none, 2, CorrNeed::NeedForChange, "AB",
         "To standardize by change-scores using this format, the pre-post correlation is required"},
        {none, 2, CorrNeed::NeedForPost, "", ""},
        {1, 2, CorrNeed::NeedForNeither, "A", "Correlation must be less than +1"},
        {0.5, 3, CorrNeed::NeedForPost, "B", "Method for standardizing is missing"},
    };
    for (const auto& c : cases) {
        WorkingSet ws = Roles({c.r, c.method});
        CheckCorrOptional(0, 1, c.need, ws);
        EXPECT_EQ(ws.RowErrors, RowErrors(c.messages)) << c.messages;
        EXPECT_EQ(Marked(ws), c.marked) << c.messages;
    }
    EXPECT_TRUE(CheckCorrValid(0, Roles({0.99, 1})));
    EXPECT_FALSE(CheckCorrValid(0, Roles({-1, 1})));
    EXPECT_FALSE(CheckCorrValid(0, Roles({none, 1})));
}

TEST(Validators, TestValuesAgreeWithTheMeans) {
    const struct {
        std::optional<double> p, tails;
        double mean1, mean2;
        const char* messages;
    } pCases[] = {
        {0.5, 1, 3, 3, ""},
        {0.5, 1, 3, 4, "If mean difference is not zero, 1-tailed p-value cannot equal 0.500"},
        {0.3, 2, 3, 3 + 1e-9, "If mean difference is zero, 2-tailed p-value must equal 1.000"},
        {1, 2, 3, 4, "If mean difference is not zero, 2-tailed p-value cannot equal 1.000"},
    };
    for (const auto& c : pCases) {
        WorkingSet ws = Roles({c.p, c.tails, c.mean1, c.mean2});
        CheckPMeans(0, 1, 2, 3, ws);
        EXPECT_EQ(ws.RowErrors, RowErrors(c.messages)) << c.messages;
    }
    WorkingSet t = Roles({0, 5});
    CheckTMeanDiff(0, 1, t);
    EXPECT_EQ(t.RowErrors, RowErrors("If mean difference is not zero, t-value cannot equal zero"));
    EXPECT_EQ(t.EntryMarks[1], t.EntryMarks[0]);
    WorkingSet same = Roles({2.1, 4, 4});
    CheckTMeans(0, 1, 2, same);
    EXPECT_EQ(same.RowErrors, RowErrors("If mean difference is zero, t-value must equal zero"));

    const struct {
        std::optional<double> p, tails;
        const char* messages;
    } checkP[] = {
        {1, 2, ""},
        {0.5, 1, ""},
        {0.6, 1, "One-sided p-value cannot exceed 0.500"},
        {0, 3, "p-value must exceed zero|Tails must be either 1 or 2"},
        {std::nullopt, std::nullopt, "p-value is missing|The number of tails is missing"},
        {1.2, 2, "p-value cannot exceed 1.000"},
    };
    for (const auto& c : checkP) {
        WorkingSet ws = Roles({c.p, c.tails});
        CheckP(0, 1, ws);
        EXPECT_EQ(ws.RowErrors, RowErrors(c.messages)) << c.messages;
    }
}

TEST(Validators, ConfidenceLimits) {
    const auto none = std::nullopt;
    const struct {
        CIKind kind;
        std::optional<double> point, lower, upper, level;
        CILimits limits;
        const char* messages;
    } cases[] = {
        {CIKind::Raw, 24.5, 21.3, 27.7, 0.95, BothLimits, ""},
        // Half-widths 1 and 1.1 are allowed by the default factor; 1 and 1.2 are not.
        {CIKind::Raw, 10, 9, 11.1, 0.95, BothLimits, ""},
        {CIKind::Raw, 10, 9, 11.2, 0.95, BothLimits,
         "The lower and upper limits are not symmetric"},
        {CIKind::Ratio, 2, 1, 4, 0.95, BothLimits, ""},
        {CIKind::Ratio, 2, 1, 5, 0.95, BothLimits,
         "Log values for lower and upper limits are not symmetric"},
        {CIKind::Raw, 1, 2, 0.5, 0.95, BothLimits,
         "The lower limit must be less than the point value|"
         "The lower limit must be less than the upper limit|"
         "The upper limit must be greater than the point value|"
         "The upper limit must be greater than the lower limit"},
        {CIKind::Ratio, 2, -1, 3, 0.95, BothLimits,
         "The lower limit must be greater than zero|The lower limit must exceed zero"},
        {CIKind::Ratio, 2, -1, none, 0.95, LowerOnly,
         "The lower limit must exceed zero|The lower limit must be greater than zero"},
        {CIKind::Raw, 2, none, 1, 0.95, UpperOnly,
         "The upper limit must be greater than the point value"},
        {CIKind::Raw, none, none, none, none, NoLimits,
         "The point estimate is missing|The lower and upper limits are missing|"
         "The confidence level is missing"},
        {CIKind::Ratio, 0, 1, 2, 0.5, BothLimits,
         "The confidence level must fall in the range of .600 to .999|"
         "The point estimate must exceed zero"},
    };
    for (const auto& c : cases) {
        WorkingSet ws = Roles({c.point, c.lower, c.upper, c.level});
        ComputeOptions options;
        EXPECT_EQ(CheckCI(c.kind, 0, 1, 2, 3, ws, options), c.limits) << c.messages;
        EXPECT_EQ(ws.RowErrors, RowErrors(c.messages)) << c.messages;
    }
    // A factor of exactly 1 becomes 1.0001 in the options, and lets equal half-widths pass.
    ComputeOptions exact{0.5, 1, 1, 1};
    WorkingSet ws = Roles({10, 9, 11, 0.95});
    CheckCI(CIKind::Raw, 0, 1, 2, 3, ws, exact);
    EXPECT_EQ(exact.FudgeFactor, 1.0001);
    EXPECT_EQ(ws.RowErrors, "");
}

}  // namespace
}  // namespace synthara::effectsize
