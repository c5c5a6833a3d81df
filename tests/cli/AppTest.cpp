#include <gtest/gtest.h>

#include "CliRun.h"

namespace synthara::cli {
namespace {

using clitest::Ran;
using clitest::RunCli;

// What the command line offers and this version lacks is said in words a
// script can tell from a mistyped command or option.
TEST(App, SaysWhatIsNotBuiltYet) {
    const std::string path = clitest::WriteFile("events.csv", "Study name,Group-A Events\nA,4\n");
    const struct {
        std::vector<std::string> args;
        const char* err;  // "" for a plain usage error
    } cases[] = {
        {{"regress", path, "--predictor", "x"},
         "The command \"regress\" is not built in this version\n"},
        {{"biass", path}, ""},
        {{"analyze", path, "--rnu", "all"}, ""},
        {{"compute", path, "--run", "all"}, ""},  // --run is analyze's alone
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.args[0] + " " + c.args.back());
        const Ran ran = RunCli(c.args);
        EXPECT_EQ(ran.status, ExitUsage);
        if (*c.err != '\0')
            EXPECT_EQ(ran.err, c.err);
        else
            EXPECT_EQ(ran.err.find(kNotBuilt), std::string::npos) << ran.err;
    }
}

}  // namespace
}  // namespace synthara::cli
