#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "CliRun.h"
#include "cli/LocaleSeparators.h"

namespace synthara::cli {
namespace {

using clitest::Ran;
using clitest::RunCli;
using clitest::WriteFile;

// The tests need the de_DE.UTF-8 locale; scripts/bootstrap.sh makes it.
TEST(Locale, SeparatorsComeFromTheSystemsLocales) {
    const sheet::NumberSeparators c;
    const sheet::NumberSeparators german{",", "."};
    const struct {
        const char* name;
        std::optional<sheet::NumberSeparators> want;
    } cases[] = {
        {"C", c},
        {"C.UTF-8", c},
        {"de_DE", german},
        {"de_DE.UTF-8", german},
        {"xx_YY", std::nullopt},
        {"de_DE.NOSUCHCODESET", std::nullopt},
    };
    for (const auto& k : cases) {
        SCOPED_TRACE(k.name);
        EXPECT_EQ(LocaleSeparators(k.name), k.want);
    }
}

TEST(Locale, TypedNumbersAreReadInTheLocaleGiven) {
    const std::string titles =
        "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N,dose\n";
    // The same rows written the German way and the program's way; a decimal
    // comma needs quotes in a comma-separated file.
    const std::string german =
        WriteFile("german.csv", titles + "A,4,\"1.230\",11,139,\"2,5\"\nB,6,306,29,\"1.303\",3\n");
    const std::string plain =
        WriteFile("plain.csv", titles + "A,4,\"1,230\",11,139,2.5\nB,6,306,29,1303,3\n");
    const std::vector<std::string> format = {"--format", "Cohort 2x2 (Events)", "--json"};
    const auto compute = [&](const std::string& path, std::vector<std::string> options) {
        std::vector<std::string> args = {"compute", path};
        args.insert(args.end(), format.begin(), format.end());
        args.insert(args.end(), options.begin(), options.end());
        return RunCli(args);
    };

    const Ran reference = compute(plain, {});
    ASSERT_EQ(reference.status, ExitDone) << reference.err;
    const auto want = nlohmann::json::parse(reference.out);
    ASSERT_EQ(want["rows"].size(), 2u);
    EXPECT_TRUE(want["rows"][0]["errors"].empty()) << want["rows"][0]["errors"];
    for (const char* name : {"de_DE", "de_DE.UTF-8"}) {
        SCOPED_TRACE(name);
        const Ran ran = compute(german, {"--locale", name});
        ASSERT_EQ(ran.status, ExitDone) << ran.err;
        EXPECT_EQ(nlohmann::json::parse(ran.out), want);
    }
    // Read the program's way, "1.230" is 1.23 people: fewer than the events.
    const Ran asC = compute(german, {});
    ASSERT_EQ(asC.status, ExitDone) << asC.err;
    EXPECT_NE(nlohmann::json::parse(asC.out), want);

    const Ran unknown = compute(german, {"--locale", "xx_YY"});
    EXPECT_EQ(unknown.status, ExitUsage);
    EXPECT_NE(unknown.err.find("the locale \"xx_YY\" is not installed"), std::string::npos)
        << unknown.err;
}

}  // namespace
}  // namespace synthara::cli
