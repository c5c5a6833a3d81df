#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "CliRun.h"

namespace synthara::cli {
namespace {

using clitest::Ran;
using nlohmann::json;

Ran AnalyzeFile(const std::string& text, std::vector<std::string> options) {
    std::vector<std::string> args = {"analyze", clitest::WriteFile("rows.csv", text), "--json"};
    args.insert(args.end(), options.begin(), options.end());
    return clitest::RunCli(args);
}

// The rows that take part, as (identifying cells, point, variance).
std::vector<json> ValidRows(const Ran& ran) {
    std::vector<json> rows;
    if (ran.status != ExitDone) {
        ADD_FAILURE() << ran.err;
        return rows;
    }
    const json parsed = json::parse(ran.out);
    for (const json& s : parsed["studies"])
        if (s["valid"].get<bool>()) rows.push_back(s);
    return rows;
}

constexpr const char* kCohortAndCaseControl =
    "Study name,Subgroup within study,Data format,Group-A Events,Group-A Non-events,"
    "Group-B Events,Group-B Non-events,Exposed Cases,Unexposed Cases,Exposed Controls,"
    "Unexposed Controls\n"
    "A,s1,Cohort 2x2 (All cells),10,90,20,80,,,,\n"
    "A,s2,Cohort 2x2 (All cells),5,45,8,42,,,,\n"
    "B,s1,Cohort 2x2 (All cells),15,85,25,75,,,,\n"
    "C,s1,Cohort 2x2 (All cells),12,88,18,82,,,,\n"
    "C,s2,Case control 2x2 (Exp/Unexp),,,,,30,20,25,25\n";

// Subgroups of one format are rebuilt from their summed cells; subgroups of
// two formats can only be combined by a meta-analysis of their results; a
// study of one subgroup passes as it is. The expected numbers are worked by
// hand from the cells.
TEST(SelectionOptions, StudyAsTheUnitByFormat) {
    const Ran ran =
        AnalyzeFile(kCohortAndCaseControl, {"--index", "Odds ratio", "--unit", "study"});
    ASSERT_EQ(ran.status, ExitDone) << ran.err;
    const auto rows = ValidRows(ran);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0]["study"], "A");
    EXPECT_EQ(rows[0]["subgroup"], "Combined");
    EXPECT_NEAR(rows[0]["point"].get<double>(), -0.7254080427781667, 1e-12);
    EXPECT_NEAR(rows[0]["variance"].get<double>(), 0.11798508109983519, 1e-12);
    EXPECT_EQ(rows[1]["subgroup"], "s1");
    EXPECT_NEAR(rows[2]["point"].get<double>(), -0.03650709580289827, 1e-12);
    EXPECT_NEAR(rows[2]["variance"].get<double>(), 0.08144464316548758, 1e-12);

    const json studies = json::parse(ran.out)["studies"];
    EXPECT_EQ(studies[0]["hide_reason"], "Combined");
    EXPECT_EQ(studies[1]["hide_reason"], "Combined");
}

constexpr const char* kTwoGroupMeans =
    "Study name,Subgroup within study,Group-A Mean,Group-A Std-Dev,Group-A Sample size,"
    "Group-B Mean,Group-B Std-Dev,Group-B Sample size,Effect direction\n"
    "P,s1,10,2,20,8,2.5,20,Auto\nP,s2,12,3,30,9,2,25,Auto\n";

// Cells of person-time and of one group are summed; means are put together
// again by a reverse analysis of variance, each group on its own, and the
// study's effect is computed on the whole sample. The expected numbers are
// worked by hand from the cells.
TEST(SelectionOptions, SubgroupsOfOneFormatAreRebuiltAsOneSample) {
    const struct {
        const char* text;
        const char* format;
        const char* index;
        double point, variance;
    } cases[] = {
        {"Study name,Subgroup within study,Group-A Events,Group-A Person Years,Group-B Events,"
         "Group-B Person Years\nP,s1,10,100,20,150\nP,s2,5,80,12,90\n",
         "Events, person-years", "Rate ratio", -0.4700036292457356, 0.09791666666666667},
        {"Study name,Subgroup within study,Events,Non-events\nQ,s1,10,40\nQ,s2,6,14\n",
         "Events and non-events", "Event rate", -1.2163953243244932, 0.08101851851851852},
        // N 30, mean 7, SD^2 (60 + 207) / 29; the mean's variance SD^2 / N.
        {"Study name,Subgroup within study,Mean,Standard deviation,Sample size\n"
         "M,s1,5,2,10\nM,s2,8,3,20\n",
         "Mean, SD", "Mean", 7.0, 0.30689655172413793},
        // Group A: 50, 11.2, SD 2.8030595529069404; group B: 45, 8.5556, SD 2.2656581981197146.
        {kTwoGroupMeans, "Independent groups (means, SD's)", "Std diff in means", 1.031821761357909,
         0.04782567562859979},
        {kTwoGroupMeans, "Independent groups (means, SD's)", "Hedges's g", 1.0234781891636402,
         0.0470553417682776},
    };
    for (const auto& c : cases) {
        const Ran ran =
            AnalyzeFile(c.text, {"--format", c.format, "--index", c.index, "--unit", "study"});
        ASSERT_EQ(ran.status, ExitDone) << c.format << ": " << ran.err;
        const auto rows = ValidRows(ran);
        ASSERT_EQ(rows.size(), 1u) << c.format;
        EXPECT_EQ(rows[0]["subgroup"], "Combined") << c.format;
        EXPECT_NEAR(rows[0]["point"].get<double>(), c.point, 1e-12) << c.format;
        EXPECT_NEAR(rows[0]["variance"].get<double>(), c.variance, 1e-12) << c.format;
    }
}

constexpr const char* kOutcomes =
    "Study name,Outcome,Arm,Group-A Events,Group-A Non-events,Group-B Events,Group-B Non-events\n"
    "A,Pain,Drug,10,90,20,80\n"
    "A,Function,Drug,5,45,8,42\n"
    "B,Pain,Diet,15,85,25,75\n";

TEST(SelectionOptions, ChoicesOfTheDialog) {
    const auto validCount = [](const Ran& ran) { return ValidRows(ran).size(); };
    const std::vector<std::string> base = {"--format", "Cohort 2x2 (All cells)"};
    const auto run = [&](std::vector<std::string> extra) {
        extra.insert(extra.begin(), base.begin(), base.end());
        return AnalyzeFile(kOutcomes, extra);
    };
    EXPECT_EQ(validCount(run({})), 3u);
    EXPECT_EQ(validCount(run({"--exclude", "Arm=Diet"})), 2u);
    EXPECT_EQ(validCount(run({"--exclude", "Outcome=Pain"})), 1u);
    EXPECT_EQ(validCount(run({"--outcomes", "mean"})), 2u);
    const Ran one = run({"--outcomes", "one", "--sequence", "outcomes=Function,Pain"});
    ASSERT_EQ(validCount(one), 2u);
    EXPECT_EQ(ValidRows(one)[0]["outcome"], "Function");
}

TEST(SelectionOptions, RefusalsAndOptionsWithoutEffect) {
    const std::vector<std::string> base = {"--format", "Cohort 2x2 (All cells)"};
    const struct {
        std::vector<std::string> options;
        int status;
        const char* err;
    } cases[] = {
        {{"--exclude", "Dose=1"}, ExitUsage, "no identifying or moderator column \"Dose\""},
        {{"--exclude", "Arm=Surgery"}, ExitUsage, "no row of \"Arm\" holds \"Surgery\""},
        {{"--exclude", "Arm"}, ExitUsage, "--exclude must be COLUMN=VALUE"},
        {{"--outcomes", "some"}, ExitUsage, "--outcomes must be one of all, mean, one"},
        {{"--sequence", "outcomes=Sleep"}, ExitUsage, "no row of \"Outcome\" holds \"Sleep\""},
        {{"--comparisons", "mean"}, ExitDone, "no \"Comparison\" column; the option has no effect"},
        {{"--unit", "study"}, ExitDone, "no \"Subgroup within study\" column"},
        {{"--index", "MH odds ratio", "--outcomes", "mean"},
         ExitRefused,
         "Cannot combine a Mantel Haenszel effect measure"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> options = base;
        options.insert(options.end(), c.options.begin(), c.options.end());
        const Ran ran = AnalyzeFile(kOutcomes, options);
        EXPECT_EQ(ran.status, c.status) << c.options[0] << ": " << ran.err;
        EXPECT_NE(ran.err.find(c.err), std::string::npos) << ran.err;
    }
}

// A subgroup whose effect direction was reversed cannot have its means
// added to the others': the study is a fixed-effect meta-analysis of its
// subgroups' effects instead.
TEST(SelectionOptions, AReversedSubgroupFallsBackToAMetaAnalysis) {
    constexpr const char* kReversed =
        "Study name,Subgroup within study,Group-A Mean,Group-A Std-Dev,Group-A Sample size,"
        "Group-B Mean,Group-B Std-Dev,Group-B Sample size,Effect direction\n"
        "P,s1,10,2,20,8,2.5,20,Auto\nP,s2,12,3,30,9,2,25,Negative\n";
    const std::vector<std::string> base = {"--format", "Independent groups (means, SD's)",
                                           "--index", "Std diff in means"};
    const auto subgroups = ValidRows(AnalyzeFile(kReversed, base));
    ASSERT_EQ(subgroups.size(), 2u);
    double sumW = 0, sumWY = 0;
    for (const json& s : subgroups) {
        const double w = 1 / s["variance"].get<double>();
        sumW += w;
        sumWY += w * s["point"].get<double>();
    }
    std::vector<std::string> byStudy = base;
    byStudy.insert(byStudy.end(), {"--unit", "study"});
    const auto rows = ValidRows(AnalyzeFile(kReversed, byStudy));
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_NEAR(rows[0]["point"].get<double>(), sumWY / sumW, 1e-12);
    EXPECT_NEAR(rows[0]["variance"].get<double>(), 1 / sumW, 1e-12);
}

// The note under the summary shows only while rows of one study that differ
// at a level take part side by side; a grouping by that level adds the note
// on comparing its groups.
TEST(SelectionOptions, TheNoteOnIndependence) {
    const auto readable = [](std::vector<std::string> options) {
        std::vector<std::string> args = {"analyze", clitest::WriteFile("rows.csv", kOutcomes),
                                         "--format", "Cohort 2x2 (All cells)"};
        args.insert(args.end(), options.begin(), options.end());
        const Ran ran = clitest::RunCli(args);
        EXPECT_EQ(ran.status, ExitDone) << ran.err;
        return ran.out;
    };
    const std::string overall =
        "The overall statistics are computed by combining data across outcomes and treating "
        "these as independent.  If studies yield data for two or more outcomes the assumption "
        "of independence is unlikely to be correct.  The standard error for the overall effect "
        "will likely be erroneously small, the confidence interval too narrow, and statistical "
        "significance tests likely to reject MORE often than the nominal significance level.\n";
    const std::string across =
        "The comparison of treatment effects as a function of outcome assumes that the data for "
        "the various outcomes are independent of each other. If studies yield data for two or "
        "more outcomes the assumption of independence is unlikely to be correct.  The standard "
        "error of the difference is likely to be too WIDE";
    const std::string all = readable({});
    EXPECT_NE(all.find(overall), std::string::npos) << all;
    EXPECT_EQ(all.find(across), std::string::npos);
    EXPECT_EQ(readable({"--outcomes", "mean"}).find("independent"), std::string::npos);
    EXPECT_EQ(readable({"--exclude", "Outcome=Pain"}).find("independent"), std::string::npos);
    const std::string grouped = readable({"--group-by", "Outcome"});
    EXPECT_NE(grouped.find(overall), std::string::npos);
    EXPECT_NE(grouped.find(across), std::string::npos);
    EXPECT_EQ(readable({"--group-by", "Arm"}).find(across), std::string::npos);
}

}  // namespace
}  // namespace synthara::cli
