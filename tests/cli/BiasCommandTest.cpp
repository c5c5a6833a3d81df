#include <cmath>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "CliRun.h"

namespace synthara::cli {
namespace {

using clitest::Ran;

constexpr const char* kFourStudies =
    "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n"
    "Aronson 1948,4,123,11,139\n"
    "Ferguson & Simes 1949,6,306,29,303\n"
    "Rosenthal et al 1960,3,231,11,220\n"
    "Hart & Sutherland 1977,62,13598,248,12867\n";

Ran Bias(const std::string& text, std::vector<std::string> options = {}) {
    const std::string path = clitest::WriteFile("rows.csv", text);
    std::vector<std::string> args = {"bias", path, "--format", "Cohort 2x2 (Events)"};
    args.insert(args.end(), options.begin(), options.end());
    return clitest::RunCli(args);
}

TEST(BiasCommand, RefusalsInTheProgramsWords) {
    const std::string twoRows =
        "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n"
        "A,4,123,11,139\nB,6,306,29,303\n";
    const struct {
        std::string text;
        std::vector<std::string> options;
        int status;
        const char* err;
    } cases[] = {
        {twoRows,
         {},
         ExitRefused,
         "There must be at least three rows of data to run publication bias procedures"},
        // Two studies left out by the selection leave too few.
        {kFourStudies,
         {"--exclude", "Study name=Aronson 1948", "--exclude", "Study name=Ferguson & Simes 1949"},
         ExitRefused,
         "There must be at least three rows of data to run publication bias procedures"},
        {kFourStudies,
         {"--alpha", "0.5"},
         ExitUsage,
         "Alpha must fall in the range of 0.000001 to .4999999      \nValue will be reset to "
         "0.05000    \n"},
        {kFourStudies, {"--tails", "3"}, ExitUsage, "Tails must be either 1 or 2"},
        {kFourStudies, {"--trim-side", "up"}, ExitUsage, "--trim-side must be left or right"},
        {kFourStudies,
         {"--index", "Risk ratio", "--orwin-criterion", "600"},
         ExitUsage,
         "Values out of range, and will be reset to prior values"},
    };
    for (const auto& c : cases) {
        const Ran ran = Bias(c.text, c.options);
        EXPECT_EQ(ran.status, c.status) << ran.err;
        EXPECT_NE(ran.err.find(c.err), std::string::npos) << ran.err;
    }
}

TEST(BiasCommand, JsonHoldsEveryProcedureAndTheReport) {
    const Ran ran = Bias(kFourStudies, {"--index", "Risk ratio", "--orwin-criterion", "0.9",
                                        "--orwin-mean", "1", "--json"});
    ASSERT_EQ(ran.status, ExitDone) << ran.err;
    EXPECT_EQ(clitest::Redumped(ran.out), ran.out);  // members in key order
    const auto json = nlohmann::json::parse(ran.out);
    EXPECT_EQ(json["k"], 4);
    EXPECT_EQ(json["fail_safe"]["tails"], 2);
    EXPECT_TRUE(json["begg"]["tau"].is_number());
    EXPECT_EQ(json["egger"]["df"], 2);
    EXPECT_EQ(json["trim_fill"]["side"], "left");
    EXPECT_EQ(json["trim_fill"]["model"], "fixed");
    EXPECT_TRUE(json["orwin"]["n"].is_number_integer());
    EXPECT_NEAR(json["orwin"]["criterion"].get<double>(), std::log(0.9), 1e-12);
    const std::string report = json["report"];
    EXPECT_TRUE(report.starts_with("Introduction to publication bias\n"));
    EXPECT_NE(report.find("Duval and Tweedie's Trim and Fill\n"), std::string::npos);
}

TEST(BiasCommand, PrintsTablesAndTheReport) {
    const Ran ran = Bias(kFourStudies, {"--trim-side", "right", "--trim-model", "random"});
    ASSERT_EQ(ran.status, ExitDone) << ran.err;
    EXPECT_NE(ran.out.find("Number of observed studies"), std::string::npos);
    EXPECT_NE(ran.out.find("Kendall's tau with continuity correction"), std::string::npos);
    EXPECT_NE(ran.out.find("The program is looking for missing studies based on a random "
                           "effects model, and is looking for missing studies only to the "
                           "right side"),
              std::string::npos);
}

}  // namespace
}  // namespace synthara::cli
