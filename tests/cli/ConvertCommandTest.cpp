#include <gtest/gtest.h>

#include "CliRun.h"

namespace synthara::cli {
namespace {

using clitest::RunCli;
using clitest::WriteFile;

const std::string kTrials =
    "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N,Latitude\n"
    "Aronson 1948,4,123,11,139,44\n"
    "Zero cell A,0,50,10,52,13\n"
    "No events in either group,0,30,0,28,20\n"
    "One cell empty,,50,10,52,33\n"
    "Text in a cell,n/a,50,10,52,42\n";

// A project written from a text file holds the same sheet: every command reads
// the same numbers from either.
TEST(ConvertCommand, ProjectGivesTheSameNumbersAsItsTextFile) {
    const std::string csv = WriteFile("trials.csv", kTrials);
    const std::string syn = ::testing::TempDir() + "trials.syn";
    const std::string syt = ::testing::TempDir() + "trials.syt";
    const std::string format = "Events and sample size in each group";

    ASSERT_EQ(RunCli({"convert", csv, syn, "--format", format}).status, ExitDone);
    ASSERT_EQ(RunCli({"convert", syn, syt}).status, ExitDone);

    const auto fromText = RunCli({"compute", csv, "--format", format, "--json"});
    ASSERT_EQ(fromText.status, ExitDone) << fromText.err;
    for (const std::string& project : {syn, syt}) {
        const auto fromProject = RunCli({"compute", project, "--json"});
        ASSERT_EQ(fromProject.status, ExitDone) << fromProject.err;
        EXPECT_EQ(fromProject.out, fromText.out) << project;
        EXPECT_EQ(RunCli({"analyze", project, "--json"}).out,
                  RunCli({"analyze", csv, "--format", format, "--json"}).out);
    }
}

// A project written with --option keeps it: opening it computes what the
// conversion computed.
TEST(ConvertCommand, ProjectKeepsTheOptionsItWasComputedWith) {
    const std::string csv = WriteFile("options.csv", kTrials);
    const std::string syn = ::testing::TempDir() + "options.syn";
    const std::vector<std::string> given = {"--format", "Cohort 2x2 (Events)", "--option",
                                            "ImputedR=0.3"};
    std::vector<std::string> convert = {"convert", csv, syn};
    convert.insert(convert.end(), given.begin(), given.end());
    ASSERT_EQ(RunCli(convert).status, ExitDone);

    std::vector<std::string> compute = {"compute", csv, "--json"};
    compute.insert(compute.end(), given.begin(), given.end());
    const auto withOption = RunCli(compute).out;
    EXPECT_EQ(RunCli({"compute", syn, "--json"}).out, withOption);
    EXPECT_NE(RunCli({"compute", csv, "--format", "Cohort 2x2 (Events)", "--json"}).out,
              withOption);
}

TEST(ConvertCommand, Refusals) {
    const std::string csv = WriteFile("refusals.csv", kTrials);
    const std::string notProject = WriteFile("not-a-project.syn", "Study name\nA\n");
    const struct {
        std::vector<std::string> args;
        int status;
        const char* err;
    } cases[] = {
        {{"convert", csv, ::testing::TempDir() + "out.csv", "--format", "Cohort 2x2 (Events)"},
         ExitUsage,
         "must end in .syn"},
        {{"convert", notProject, ::testing::TempDir() + "out.syn"},
         ExitRefused,
         "not-a-project.syn"},
        {{"compute", notProject}, ExitRefused, "not-a-project.syn"},
        {{"convert", csv, ::testing::TempDir() + "no-such-folder/out.syn", "--format",
          "Cohort 2x2 (Events)"},
         ExitRefused,
         "out.syn"},
    };
    for (const auto& c : cases) {
        const auto ran = RunCli(c.args);
        EXPECT_EQ(ran.status, c.status) << c.args[1];
        EXPECT_NE(ran.err.find(c.err), std::string::npos) << ran.err;
    }
}

}  // namespace
}  // namespace synthara::cli
