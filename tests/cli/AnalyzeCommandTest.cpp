#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "CliRun.h"

namespace synthara::cli {
namespace {

using clitest::Ran;

constexpr const char* kTitles =
    "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n";

Ran AnalyzeText(const std::string& text, std::vector<std::string> options = {}) {
    const std::string path = clitest::WriteFile("rows.csv", text);
    std::vector<std::string> args = {"analyze", path, "--format", "Cohort 2x2 (Events)"};
    args.insert(args.end(), options.begin(), options.end());
    return clitest::RunCli(args);
}

// Two valid rows about one with an empty cell.
Ran Analyze(std::vector<std::string> options) {
    return AnalyzeText(std::string(kTitles) +
                           "Aronson 1948,4,123,11,139\nOne cell empty,,50,10,52\n"
                           "Ferguson & Simes 1949,6,306,29,303\n",
                       std::move(options));
}

TEST(AnalyzeCommand, RefusesWhatItCannotAnalyze) {
    const struct {
        std::vector<std::string> options;
        int status;
        const char* err;
    } cases[] = {
        {{"--index", "Fold change"}, ExitRefused, "Oops!"},
        {{"--index", "MH odds ratio"}, ExitDone, ""},
        {{"--group-by", "Dose"}, ExitRefused, "--group-by"},
        {{"--run", "sideways"}, ExitUsage, "--run"},
        {{"--index", "Hedges's g", "--ci-level", "96"}, ExitUsage, "--ci-level"},
        {{"--ci-level", "90%"}, ExitDone, ""},
        {{"--tau2", "Bayes"}, ExitUsage, "--tau2 must be one of DL, REML, ML, PM, HE, SJ"},
        {{"--tau2", "reml", "--hksj"}, ExitDone, ""},
    };
    for (const auto& c : cases) {
        const Ran ran = Analyze(c.options);
        EXPECT_EQ(ran.status, c.status) << ran.err;
        EXPECT_NE(ran.err.find(c.err), std::string::npos) << ran.err;
    }
}

// The sheet check's boxes, title first, each line beneath without the blanks
// that pad it in the dialog.
TEST(AnalyzeCommand, TheSheetCheckRefusesTheSheetFirst) {
    const struct {
        const char* name;
        std::string rows;
        const char* err;
    } cases[] = {
        {"duplicate", "A,4,123,11,139\nB,6,306,29,303\nA,5,100,9,98\n",
         "Duplicate row found\n"
         "  The following row appears more than once\n"
         "  A, , , ,\n"},
        // An empty subgroup is the word "Blank" once the check has filled it.
        {"blank subgroup",
         "Study name,Subgroup within study,Group-A Events,Group-A Total N,Group-B Events,"
         "Group-B Total N\nA,,4,123,11,139\nA,Blank,6,306,29,303\n",
         "Duplicate row found\n"
         "  The following row appears more than once\n"
         "  A, Blank, , ,\n"},
        {"one name missing", "A,4,123,11,139\n,6,306,29,303\n",
         "Study name missing\n"
         "  One row is missing the study name.\n"
         "  Please enter the name and re-run the analysis.\n"
         "  To remove the red background use the 'Tools' menu.\n"},
        {"two names missing", ",4,123,11,139\nB,6,306,29,303\n,5,100,9,98\n",
         "Study name missing\n"
         "  2 rows are missing the study name.\n"
         "  Please enter the names and re-run the analysis.\n"
         "  To remove the red background use the 'Tools' menu.\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string text = c.rows.starts_with("Study name") ? c.rows : kTitles + c.rows;
        const Ran ran = AnalyzeText(text, {"--index", "Odds ratio"});
        EXPECT_EQ(ran.status, ExitRefused);
        EXPECT_EQ(ran.err, c.err);
        EXPECT_EQ(ran.out, "");
    }
}

TEST(AnalyzeCommand, TitlesWithoutStudyRowsSaySo) {
    for (const std::string rows : {"", "\n,,,,\n"}) {
        const std::string path = clitest::WriteFile("titles.csv", kTitles + rows);
        const Ran ran = clitest::RunCli(
            {"analyze", path, "--format", "Cohort 2x2 (Events)", "--index", "Odds ratio"});
        EXPECT_EQ(ran.status, ExitRefused);
        EXPECT_EQ(ran.err, path + ": the file has no study rows to analyse\n");
    }
}

TEST(AnalyzeCommand, NoValidStudyIsRefusedNamingTheIndex) {
    // Both rows are read; neither yields the index.
    const Ran ran = AnalyzeText(std::string(kTitles) + "A,,123,11,139\nB,40,30,29,303\n",
                                {"--index", "Risk ratio"});
    EXPECT_EQ(ran.status, ExitRefused);
    EXPECT_TRUE(ran.err.starts_with("No study has a valid \"Risk ratio\": ")) << ran.err;
    EXPECT_EQ(ran.out, "");
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

// Only the random rows carry the prediction interval and the limits of
// tau-squared; the readable output names the estimator and the limits.
TEST(AnalyzeCommand, TheRandomRowsCarryTheEstimatorsFigures) {
    const std::string rows = std::string(kTitles) +
                             "A,4,123,11,139\nB,6,306,29,303\nC,3,231,11,220\nD,62,1360,248,1287\n";
    const Ran json = AnalyzeText(rows, {"--tau2", "PM", "--hksj", "--json"});
    ASSERT_EQ(json.status, ExitDone) << json.err;
    const auto j = nlohmann::json::parse(json.out);
    EXPECT_EQ(j["tau2_method"], "PM");
    EXPECT_EQ(j["hksj"], true);
    const auto& fixed = j["summaries"][0];
    const auto& random = j["summaries"][1];
    EXPECT_FALSE(fixed.contains("pi_lower"));
    EXPECT_EQ(random["tau2_method"], "PM");
    EXPECT_LT(random["pi_lower"].get<double>(), random["lower"].get<double>());
    EXPECT_LT(random["display"]["pi_lower"].get<double>(),
              random["display"]["lower"].get<double>());
    EXPECT_TRUE(random["tau2_lower"].is_number());

    const Ran text = AnalyzeText(rows, {"--tau2", "PM", "--hksj"});
    EXPECT_NE(text.out.find("Prediction lower"), std::string::npos);
    EXPECT_NE(text.out.find("tau-squared by Paule-Mandel (PM); 95% limits with the "
                            "Hartung-Knapp-Sidik-Jonkman adjustment"),
              std::string::npos)
        << text.out;
}

// A grouping prints each group's rows, the Q between the groups and the
// models' texts; a run adds its passes. The JSON carries the same.
TEST(AnalyzeCommand, GroupingAndRunsPrintTheirTables) {
    const std::string rows =
        "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N,Arm\n"
        "A,4,123,11,139,x\nB,6,306,29,303,x\nC,3,231,11,220,y\nD,62,1360,248,1287,y\n";
    const Ran grouped = AnalyzeText(rows, {"--group-by", "Arm"});
    ASSERT_EQ(grouped.status, ExitDone) << grouped.err;
    EXPECT_NE(grouped.out.find("Total between"), std::string::npos);
    EXPECT_NE(grouped.out.find("Fully random effects analysis - A random effects model"),
              std::string::npos);
    EXPECT_NE(grouped.out.find("NOT pooled across subgroups."), std::string::npos);

    const Ran passes = AnalyzeText(rows, {"--run", "cumulative"});
    ASSERT_EQ(passes.status, ExitDone) << passes.err;
    EXPECT_NE(passes.out.find("Cumulative analysis"), std::string::npos);

    const Ran json = AnalyzeText(rows, {"--group-by", "Arm", "--run", "omit-one", "--json"});
    ASSERT_EQ(json.status, ExitDone) << json.err;
    const auto doc = nlohmann::json::parse(json.out);
    EXPECT_EQ(doc["between"].size(), 5u);
    EXPECT_EQ(doc["omit_one"].size(), 4u * 5u);  // each row under each model
    EXPECT_EQ(doc["omit_one"][0]["k"], 1);       // its group of two without it
    EXPECT_FALSE(doc.contains("cumulative"));
}

}  // namespace
}  // namespace synthara::cli
