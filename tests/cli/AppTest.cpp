#include <gtest/gtest.h>

#include "CliRun.h"

namespace synthara::cli {
namespace {

using clitest::Ran;
using clitest::RunCli;

// A mistyped command or option is a usage error, told apart from a refusal of
// the data by its exit status.
TEST(App, MistypedCommandsAndOptionsAreUsageErrors) {
    const std::string path = clitest::WriteFile("events.csv", "Study name,Group-A Events\nA,4\n");
    const std::vector<std::vector<std::string>> cases = {
        {"biass", path},
        {"analyze", path, "--rnu", "all"},
        {"compute", path, "--run", "all"},  // --run is analyze's alone
        {"analyze", path, "--tau2", "REMl2"},
    };
    for (const auto& args : cases) {
        SCOPED_TRACE(args[0] + " " + args.back());
        const Ran ran = RunCli(args);
        EXPECT_EQ(ran.status, ExitUsage);
        EXPECT_FALSE(ran.err.empty());
    }
}

}  // namespace
}  // namespace synthara::cli
