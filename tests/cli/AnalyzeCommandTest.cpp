#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "CliRun.h"

namespace synthara::cli {
namespace {

using clitest::Ran;

Ran Analyze(std::vector<std::string> options) {
    const std::string path = clitest::WriteFile(
        "analyze.csv",
        "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n"
        "Aronson 1948,4,123,11,139\n"
        "One cell empty,,50,10,52\n"
        "Ferguson & Simes 1949,6,306,29,303\n");
    std::vector<std::string> args = {"analyze", path, "--format", "Cohort 2x2 (Events)"};
    args.insert(args.end(), options.begin(), options.end());
    return clitest::RunCli(args);
}

TEST(AnalyzeCommand, RefusesWhatItCannotAnalyze) {
    const struct {
        std::vector<std::string> options;
        int status;
        const char* err;
    } cases[] = {
        {{"--index", "Fold change"}, ExitRefused, "Oops!"},
        {{"--index", "MH odds ratio"}, ExitRefused, "Mantel-Haenszel"},
        {{"--index", "Hedges's g", "--ci-level", "96"}, ExitUsage, "--ci-level"},
        {{"--ci-level", "90%"}, ExitDone, ""},
        {{"--group-by", "Study name"}, ExitUsage, ""},
    };
    for (const auto& c : cases) {
        const Ran ran = Analyze(c.options);
        EXPECT_EQ(ran.status, c.status) << ran.err;
        EXPECT_NE(ran.err.find(c.err), std::string::npos) << ran.err;
    }
}

TEST(AnalyzeCommand, JsonKeepsEveryRowAndPrintsNullForWhatIsMissing) {
    const Ran ran = Analyze({"--index", "Risk ratio", "--json"});
    ASSERT_EQ(ran.status, ExitDone) << ran.err;
    // The names and numbers themselves are the reference cases' subject.
    const auto j = nlohmann::json::parse(ran.out);
    ASSERT_EQ(j["studies"].size(), 3u);
    const auto& missing = j["studies"][2];  // rows stand by study name
    EXPECT_EQ(missing["study"], "One cell empty");
    EXPECT_EQ(missing["valid"], false);
    EXPECT_EQ(missing["hide_reason"], "Missing Data");
    EXPECT_TRUE(missing["point"].is_null());
    EXPECT_TRUE(missing["weight"]["fixed"].is_null());
    EXPECT_FALSE(missing.contains("subgroup"));  // only the levels the file has
    ASSERT_EQ(j["summaries"].size(), 2u);
    EXPECT_EQ(j["summaries"][0]["model"], "Fixed");
    EXPECT_EQ(j["summaries"][1]["model"], "Random");
    EXPECT_EQ(j["summaries"][1]["group"], "Overall");
    EXPECT_EQ(j["summaries"][1]["k"], 2);
}

}  // namespace
}  // namespace synthara::cli
