#include <cmath>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "CliRun.h"

namespace synthara::cli {
namespace {

using clitest::Ran;
using clitest::RunCli;
using clitest::WriteFile;

const std::string kEvents =
    "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n"
    "Aronson 1948,4,123,11,139\n"
    "\n"
    "One cell empty,,50,10,52\n";

TEST(ComputeCommand, ExitStatus) {
    const std::string good = WriteFile("events.csv", kEvents);
    const std::string broken = WriteFile("broken.csv", "Study name\n\"A\n");
    struct Case {
        std::vector<std::string> args;
        int status;
        const char* err;  // a part of standard error
    } cases[] = {
        {{}, ExitUsage, ""},
        {{"--version"}, ExitDone, ""},
        {{"compute", "--help"}, ExitDone, ""},
        {{"analyze", good}, ExitUsage, ""},
        {{"compute"}, ExitUsage, ""},
        {{"compute", good, "--no-such-option"}, ExitUsage, ""},
        {{"compute", good}, ExitUsage, "No data format: give --format"},
        {{"compute", good, "--format", "Nonsense"}, ExitUsage, "Unknown data format \"Nonsense\""},
        {{"compute", good, "--format", "Cohort 2x2 (Events)"}, ExitDone, ""},
        {{"compute", "/nonexistent/x.csv", "--format", "Cohort 2x2 (Events)"},
         ExitRefused,
         "x.csv: the file cannot be opened"},
        {{"compute", broken, "--format", "Cohort 2x2 (Events)"},
         ExitRefused,
         "broken.csv, line 2, column 1: the quote"},
        {{"compute", "/nonexistent/study.syn"}, ExitRefused, "study.syn: "},
    };
    for (const auto& c : cases) {
        const Ran ran = RunCli(c.args);
        const std::string name = c.args.empty() ? "(none)" : c.args.front();
        EXPECT_EQ(ran.status, c.status) << name << ": " << ran.err;
        EXPECT_NE(ran.err.find(c.err), std::string::npos) << name << ": " << ran.err;
    }
    EXPECT_NE(RunCli({"--version"}).out.find(SYNTHARA_VERSION), std::string::npos);
}

TEST(ComputeCommand, JsonRowsCarryIndicesAndErrors) {
    const std::string path = WriteFile("events.csv", kEvents);
    const Ran ran =
        RunCli({"compute", path, "--format", "Events and sample size in each group", "--json"});
    ASSERT_EQ(ran.status, ExitDone) << ran.err;
    EXPECT_EQ(ran.out.find("nan"), std::string::npos);
    const auto doc = nlohmann::json::parse(ran.out);
    const auto& rows = doc.at("rows");
    ASSERT_EQ(rows.size(), 2u);  // the blank line is no row
    EXPECT_EQ(rows[0].at("row"), 1);
    EXPECT_EQ(rows[1].at("row"), 2);
    EXPECT_EQ(rows[0].at("study"), "Aronson 1948");
    EXPECT_EQ(rows[0].at("format"), "Events and sample size in each group");
    EXPECT_TRUE(rows[0].at("errors").empty());
    const auto& ratio = rows[0].at("indices").at("Odds ratio");
    EXPECT_TRUE(ratio.at("point").is_number());
    EXPECT_TRUE(ratio.at("se").is_null());
    EXPECT_TRUE(ratio.at("variance").is_null());
    EXPECT_TRUE(rows[0].at("indices").at("Log odds ratio").at("se").is_number());
    EXPECT_FALSE(rows[1].at("errors").empty());
    EXPECT_TRUE(rows[1].at("indices").empty());
}

// The readable table shows each row's primary index, and its messages under it.
TEST(ComputeCommand, ReadableTableKeepsEachRowsMessagesUnderIt) {
    // A name of two lines makes the row's line two lines of text.
    const std::string path =
        WriteFile("lines.csv",
                  "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n"
                  "\"Two\nlines\",4,123,11,139\n"
                  "One cell empty,,50,10,52\n");
    const Ran ran = RunCli({"compute", path, "--format", "Cohort 2x2 (Events)"});
    ASSERT_EQ(ran.status, ExitDone) << ran.err;
    EXPECT_NE(ran.out.find("Odds ratio"), std::string::npos) << ran.out;
    EXPECT_NE(ran.out.find("0.391"), std::string::npos) << ran.out;
    const std::size_t row = ran.out.find("  2  One cell empty");
    ASSERT_NE(row, std::string::npos) << ran.out;
    EXPECT_EQ(ran.out.find("\n    ", row), ran.out.find('\n', row)) << ran.out;
    EXPECT_TRUE(ran.out.ends_with("\n    One of the required values is missing\n")) << ran.out;
}

TEST(ComputeCommand, TrailsComeWithTheirLinesOnRequest) {
    const std::string path = WriteFile("events.csv", kEvents);
    const std::vector<std::string> args = {"compute", path, "--format", "Cohort 2x2 (Events)",
                                           "--json"};
    const auto plain = nlohmann::json::parse(RunCli(args).out);
    EXPECT_FALSE(plain["rows"][0]["indices"]["Log odds ratio"].contains("trail"));
    auto withTrails = args;
    withTrails.push_back("--trails");
    const auto doc = nlohmann::json::parse(RunCli(withTrails).out);
    const std::string trail = doc["rows"][0]["indices"]["Log odds ratio"].at("trail");
    EXPECT_EQ(trail.rfind("Starting with\nCells in 2x2 table\n\nWhere cells are given as\n", 0),
              0u);
    EXPECT_NE(trail.find("\nLogOddsRatio = Log((4 * 128) / (119 * 11)) = -0.939\n"),
              std::string::npos);
    EXPECT_EQ(trail.find('\r'), std::string::npos);
    // The numbers are those without trails.
    EXPECT_EQ(doc["rows"][0]["indices"]["Log odds ratio"]["point"],
              plain["rows"][0]["indices"]["Log odds ratio"]["point"]);
}

TEST(ComputeCommand, ResultsThatAreNotFiniteAreLeftOut) {
    const std::string path =
        WriteFile("extreme.csv",
                  "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n"
                  "Tiny,1e-320,10,5,10\n"
                  "Huge,1e300,1e300,5,10\n");
    const Ran ran = RunCli({"compute", path, "--format", "Cohort 2x2 (Events)", "--json"});
    ASSERT_EQ(ran.status, ExitDone) << ran.err;
    const auto doc = nlohmann::json::parse(ran.out);
    const auto& tiny = doc["rows"][0];
    EXPECT_TRUE(tiny["errors"].empty());
    EXPECT_FALSE(tiny["indices"].contains("Log odds ratio"));
    EXPECT_FALSE(tiny["indices"].contains("Hedges's g"));
    EXPECT_TRUE(tiny["indices"]["Risk difference"]["se"].is_number());
    // Counts beyond the largest sample size are refused before any formula.
    const auto& huge = doc["rows"][1];
    EXPECT_EQ(huge["errors"],
              nlohmann::json({"The Group-A Total N cannot be greater than 100,000,000"}));
    EXPECT_TRUE(huge["indices"].empty());
}

TEST(ComputeCommand, JsonPrintsAsTheCompactDumpOfItsValues) {
    const std::string path =
        WriteFile("names.csv",
                  "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n"
                  "\"Say \"\"hi\"\" \\ there\",4,123,11,139\n"
                  "\"Two\nlines\ttab\",6,306,29,303\n"
                  "M\xC3\xBCller \xE2\x82\xAC \xF0\x9F\x98\x80,5,100,9,98\n"
                  "Control\x01,0,10,0,10\n"
                  "\n"
                  "Missing,,10,3,10\n");
    for (const bool trails : {false, true}) {
        std::vector<std::string> args = {"compute", path, "--format",
                                         "Events and sample size in each group", "--json"};
        if (trails) args.push_back("--trails");
        const Ran ran = RunCli(args);
        ASSERT_EQ(ran.status, ExitDone) << ran.err;
        EXPECT_EQ(ran.out, clitest::Redumped(ran.out));
        const auto rows = nlohmann::json::parse(ran.out).at("rows");
        ASSERT_EQ(rows.size(), 5u);
        EXPECT_TRUE(rows[4].at("row").is_number_integer());
        EXPECT_EQ(rows[4].at("row"), 5);  // the blank line made no row
        EXPECT_EQ(rows[0].at("study"), "Say \"hi\" \\ there");
        EXPECT_EQ(rows[1].at("study"), "Two\nlines\ttab");
        EXPECT_EQ(rows[2].at("study"), "M\xC3\xBCller \xE2\x82\xAC \xF0\x9F\x98\x80");
    }
}

TEST(ComputeCommand, OptionsForTheRun) {
    const std::string good = WriteFile("events.csv", kEvents);
    const auto paired = [&](std::vector<std::string> options) {
        std::vector<std::string> args{"compute", good, "--format", "Cohort 2x2 (Events)", "--json"};
        args.insert(args.end(), options.begin(), options.end());
        const Ran ran = RunCli(args);
        EXPECT_EQ(ran.status, ExitDone) << ran.err;
        const auto row = nlohmann::json::parse(ran.out)["rows"][0]["indices"];
        return row["Std Paired Difference"]["point"].get<double>() /
               row["Std diff in means"]["point"].get<double>();
    };
    // d (paired) = d / Sqr(2 * (1 - r)): equal to d at the default 0.5.
    EXPECT_DOUBLE_EQ(paired({}), 1);
    EXPECT_DOUBLE_EQ(paired({"--option", "ImputedR=0.3"}), 1 / std::sqrt(1.4));
    EXPECT_DOUBLE_EQ(paired({"--option", "FudgeFactor=1.5", "--option", "ImputedR=0.75"}),
                     1 / std::sqrt(0.5));

    const struct {
        const char* option;
        const char* err;
    } refused[] = {
        {"FudgeFactor=2.5",
         "Option outside range\n  The allowed error must fall in range of 1 to 2\n"
         "  (recommended range is 1.01 to 1.20)\n"},
        {"ImputedR=1",
         "Option outside range\n  The assumed correlation\n"
         "  must fall in the range of -0.999 to +0.999\n"},
        {"GVarianceMethod=3", "The option GVarianceMethod must be 1 or 2\n"},
        {"Nonsense=1",
         "Unknown option \"Nonsense\": give ImputedR, FudgeFactor, PoolVarianceMethod or "
         "GVarianceMethod\n"},
    };
    for (const auto& c : refused) {
        const Ran ran =
            RunCli({"compute", good, "--format", "Cohort 2x2 (Events)", "--option", c.option});
        EXPECT_EQ(ran.status, ExitUsage) << c.option;
        EXPECT_EQ(ran.err, c.err);
        EXPECT_EQ(ran.out, "");
    }
    const Ran analyzed = RunCli({"analyze", good, "--format", "Cohort 2x2 (Events)", "--option",
                                 "GVarianceMethod=2", "--json"});
    EXPECT_EQ(analyzed.status, ExitDone) << analyzed.err;
}

}  // namespace
}  // namespace synthara::cli
