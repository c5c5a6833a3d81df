#include "effectsize/Validators.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

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
        WorkingSet ws = TwoRoles(c.first, c.second);
        c.check(0, 1, ws);
        EXPECT_EQ(ws.RowErrors, RowErrors(c.messages)) << c.what;
        const std::string marked = std::string(ws.EntryMarks[0].empty() ? "" : "A") +
                                   (ws.EntryMarks[1].empty() ? "" : "B");
        EXPECT_EQ(marked, c.marked) << c.what;
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
        EXPECT_EQ(ws.RowErrors, RowErrors(c.message));
        EXPECT_EQ(ws.EntryMarks[0], c.message);
    }
}

}  // namespace
}  // namespace synthara::effectsize
