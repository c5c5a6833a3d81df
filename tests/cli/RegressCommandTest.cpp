#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "CliRun.h"

namespace synthara::cli {
namespace {

using clitest::Ran;

constexpr const char* kStudies =
    "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N,lat,alloc,note\n"
    "Aronson 1948,4,123,11,139,44,random,1\n"
    "Ferguson & Simes 1949,6,306,29,303,55,random,2\n"
    "Rosenthal et al 1960,3,231,11,220,42,random,\n"
    "Hart & Sutherland 1977,62,13598,248,12867,52,random,4\n"
    "Frimodt-Moller et al 1973,33,5069,47,5808,13,alternate,5\n";

Ran Regress(std::vector<std::string> options) {
    const std::string path = clitest::WriteFile("rows.csv", kStudies);
    std::vector<std::string> args = {"regress", path, "--format", "Cohort 2x2 (Events)"};
    args.insert(args.end(), options.begin(), options.end());
    return clitest::RunCli(args);
}

TEST(RegressCommand, RefusalsInTheProgramsWords) {
    const struct {
        std::vector<std::string> options;
        int status;
        const char* err;
    } cases[] = {
        {{"--predictor", "No predictor"},
         ExitRefused,
         "Meta regression\n  Please select a predictor variable\n"},
        // The moderator "note" has a blank cell, so it is a number column
        // with a hole.
        {{"--predictor", "note"},
         ExitRefused,
         "Meta regression\n"
         "  The predictor variable includes non-numeric or blank values\n"
         "  To exclude rows return to the Core analysis module\n"
         "  Then use 'Select by' on the computational options menu\n"},
        {{"--predictor", "lat", "--exclude", "alloc=random"},
         ExitRefused,
         "Meta regression\n"
         "  There must be at least three rows of data to run meta regression\n"},
        {{"--predictor", "alloc"},
         ExitRefused,
         "--predictor: the sheet has no numeric moderator column \"alloc\"; it has \"lat\", "
         "\"note\"\n"},
        {{"--predictor", "lat", "--method", "reml"},
         ExitUsage,
         "--method must be fixed, moments or ml\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.options[1]);
        const Ran ran = Regress(c.options);
        EXPECT_EQ(ran.status, c.status);
        EXPECT_EQ(ran.err, c.err);
        EXPECT_TRUE(ran.out.empty());
    }
    EXPECT_EQ(Regress({}).status, ExitUsage);  // --predictor is required
}

// A row left out by the selection doesn't take part, so its blank
// predictor is no reason to refuse.
TEST(RegressCommand, RowsLeftOutAreNotChecked) {
    const Ran ran = Regress({"--predictor", "note", "--exclude", "Study name=Rosenthal et al 1960",
                             "--method", "fixed", "--json"});
    ASSERT_EQ(ran.status, ExitDone) << ran.err;
    const auto json = nlohmann::json::parse(ran.out);
    EXPECT_EQ(json["k"], 4);
    EXPECT_EQ(json["method"], "fixed");
    EXPECT_EQ(json["title"], "Fixed effect regression");
    ASSERT_EQ(json["steps"].size(), 1u);
    EXPECT_EQ(json["tau2"], json["steps"][0]["tau2"]);
    EXPECT_EQ(ran.out, clitest::Redumped(ran.out));
}

TEST(RegressCommand, ReadableTables) {
    const Ran ran = Regress({"--predictor", "lat"});
    ASSERT_EQ(ran.status, ExitDone) << ran.err;
    for (const char* text :
         {"Mixed effects regression (method of moments)\n", "predictor: lat  (5 studies)",
          "Point estimate", "Z-value", "p-Value", "Tau-squared", "Residual", "Method of moments",
          "pvalStan", "Aronson 1948"})
        EXPECT_NE(ran.out.find(text), std::string::npos) << text;
}

}  // namespace
}  // namespace synthara::cli
