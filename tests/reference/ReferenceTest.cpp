// Runs every case folder through synthara-cli and checks the numbers it
// prints against the independently computed ones in expect.json. Every case
// must run, exit 0 and pass every check.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "JsonPath.h"
#include "support/Tolerance.h"

namespace synthara::testing {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

std::vector<std::string> CaseFolders() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(SYNTHARA_REFERENCE_CASES))
        if (entry.is_directory() && fs::exists(entry.path() / "expect.json"))
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string ShellQuote(const std::string& arg) {
    std::string quoted = "'";
    for (const char c : arg)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

Outcome RunCli(const std::vector<std::string>& args) {
    const fs::path errFile =
        fs::temp_directory_path() / ("synthara-ref-" + std::to_string(::getpid()) + ".err");
    std::string command = ShellQuote(SYNTHARA_CLI_PATH);
    for (const auto& a : args)
        command += " " + ShellQuote(a);
    command += " 2>" + ShellQuote(errFile.string());
    Outcome outcome;
    if (FILE* pipe = ::popen(command.c_str(), "r")) {
        std::array<char, 65536> buffer{};
        std::size_t n = 0;
        while ((n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
            outcome.out.append(buffer.data(), n);
        const int raw = ::pclose(pipe);
        outcome.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    }
    std::ifstream err(errFile);
    outcome.err.assign(std::istreambuf_iterator<char>(err), std::istreambuf_iterator<char>());
    fs::remove(errFile);
    return outcome;
}

// One check of expect.json; "" when it passes, otherwise why not.
std::string Check(const json& output, const json& check) {
    const std::string path = check.at("path").get<std::string>();
    std::string why;
    const json* got = ResolvePath(output, path, &why);
    if (check.value("absent", false)) {
        if (got == nullptr || got->is_null()) return "";
        return path + ": should be absent, got " + got->dump();
    }
    if (got == nullptr) return path + ": " + why;
    const json& want = check.at("value");
    if (want.is_string() || want.is_boolean()) {
        if (got->type() == want.type() && *got == want) return "";
        return path + ": got " + got->dump() + ", want " + want.dump();
    }
    if (!got->is_number()) return path + ": got " + got->dump() + ", want " + want.dump();
    const double rtol = check.value("rtol", kRelTol);
    const double atol = check.value("atol", kAbsTol);
    if (Near(got->get<double>(), want.get<double>(), rtol, atol)) return "";
    std::ostringstream text;
    text.precision(17);
    text << path << ": got " << got->get<double>() << ", want " << want.get<double>();
    return text.str();
}

class ReferenceCase : public ::testing::TestWithParam<std::string> {};

TEST_P(ReferenceCase, MatchesIndependentNumbers) {
    const std::string name = GetParam();
    const fs::path folder = fs::path(SYNTHARA_REFERENCE_CASES) / name;
    std::ifstream in(folder / "expect.json");
    const json expect = json::parse(in);
    auto args = expect.at("args").get<std::vector<std::string>>();
    ASSERT_FALSE(args.empty());
    args.insert(args.begin() + 1, (folder / "input.csv").string());

    const Outcome run = RunCli(args);
    ASSERT_EQ(run.status, 0) << run.err;
    const json output = json::parse(run.out, nullptr, false);
    ASSERT_FALSE(output.is_discarded()) << "not JSON:\n" << run.out.substr(0, 2000);

    std::vector<std::string> failures;
    for (const auto& check : expect.at("checks")) {
        if (auto failure = Check(output, check); !failure.empty())
            failures.push_back(std::move(failure));
    }
    const std::size_t total = expect.at("checks").size();
    std::ostringstream report;
    for (std::size_t i = 0; i < failures.size() && i < 40; ++i)
        report << failures[i] << '\n';
    EXPECT_TRUE(failures.empty()) << failures.size() << " of " << total << " checks fail:\n"
                                  << report.str() << run.err;
}

std::string TestName(const ::testing::TestParamInfo<std::string>& info) {
    std::string name = info.param;
    std::replace_if(
        name.begin(), name.end(),
        [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Cases, ReferenceCase, ::testing::ValuesIn(CaseFolders()), TestName);

}  // namespace
}  // namespace synthara::testing
