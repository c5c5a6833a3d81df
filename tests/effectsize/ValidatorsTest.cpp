#include "effectsize/Validators.h"

#include <gtest/gtest.h>

#include <optional>

#include "effectsize/Trail.h"

namespace synthara::effectsize {
namespace {

// Two roles with labels; std::nullopt is a missing cell.
WorkingSet TwoRoles(std::optional<double> first, std::optional<double> second) {
    WorkingSet ws;
    ws.Reset();
    const std::optional<double> values[2] = {first, second};
    ws.EntryLabels[0] = "Group-A Events";
    ws.EntryLabels[1] = "Group-A Total N";
    for (std::size_t role = 0; role < 2; ++role) {
        ws.EntryMissing[role] = !values[role];
        ws.EntryVals[role] = values[role].value_or(0);
    }
    return ws;
}

using Validator = void (*)(int, int, WorkingSet&);

struct Case {
    const char* what;
    Validator check;
    std::optional<double> first, second;
    std::vector<std::string> messages;
    bool markFirst, markSecond;
};

TEST(Validators, EventValidatorsReportInOrderAndMarkTheCellTheyBlame) {
    const auto none = std::nullopt;
    const Case cases[] = {
        {"good", CheckEventsAndN, 3, 10, {}, false, false},
        {"events equal N", CheckEventsAndN, 10, 10, {}, false, false},
        {"both missing",
         CheckEventsAndN,
         none,
         none,
         {"The number of events is missing", "The total N is missing"},
         true,
         true},
        {"events above N marks both",
         CheckEventsAndN,
         11,
         10,
         {"Group-A Events cannot exceed Group-A Total N"},
         true,
         true},
        {"negative events, N below 1",
         CheckEventsAndN,
         -1,
         0.5,
         {"Group-A Events cannot be less than zero", "Group-A Total N cannot be less than 1"},
         true,
         true},
        {"N too large",
         CheckEventsAndN,
         1,
         100000001,
         {"The Group-A Total N cannot be greater than 100,000,000"},
         false,
         true},
        {"N at the limit", CheckEventsAndN, 1, 100000000, {}, false, false},
        {"non-events missing",
         CheckNonEventsAndN,
         none,
         10,
         {"The number of non-events is missing"},
         true,
         false},
        {"events, non-events: sum below 1",
         CheckEventsNonEvents,
         0,
         0.5,
         {"Total N cannot be less than 1"},
         true,
         true},
        {"events, non-events: negative and missing",
         CheckEventsNonEvents,
         -2,
         none,
         {"The number of non-events is missing", "Group-A Events cannot be less than zero"},
         true,
         true},
        {"events, non-events: too many",
         CheckEventsNonEvents,
         50000000,
         50000001,
         {"The sample size cannot be greater than 100,000,000"},
         true,
         true},
        {"rate missing", CheckEventRateN, none, 10, {"Group-A Events is missing"}, true, false},
        {"rate above one, N below one",
         CheckEventRateN,
         1.01,
         0,
         {"Group-A Events cannot be greater than one", "Group-A Total N cannot be less than one"},
         true,
         true},
        {"rate negative, N too large",
         CheckEventRateN,
         -0.1,
         2e8,
         {"Group-A Events cannot be less than zero",
          "Group-A Total N cannot be greater than 100,000,000"},
         true,
         true},
        {"rate of one", CheckEventRateN, 1, 1, {}, false, false},
    };
    for (const Case& c : cases) {
        WorkingSet ws = TwoRoles(c.first, c.second);
        c.check(0, 1, ws);
        EXPECT_EQ(SplitErrors(ws.RowErrors), c.messages) << c.what;
        EXPECT_EQ(!ws.EntryMarks[0].empty(), c.markFirst) << c.what;
        EXPECT_EQ(!ws.EntryMarks[1].empty(), c.markSecond) << c.what;
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
        WorkingSet ws = TwoRoles(c.r, 1);
        CheckR(0, ws);
        const std::string expected = *c.message ? std::string("\r  ") + c.message : "";
        EXPECT_EQ(ws.RowErrors, expected);
        EXPECT_EQ(ws.EntryMarks[0], c.message);
    }
}

}  // namespace
}  // namespace synthara::effectsize
