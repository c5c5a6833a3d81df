#pragma once
// Runs synthara-cli in-process and keeps what it printed.
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "cli/App.h"

namespace synthara::cli::clitest {

struct Ran {
    int status = -1;
    std::string out, err;
};

inline Ran RunCli(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    Ran ran;
    ran.status = Run(args, out, err);
    ran.out = out.str();
    ran.err = err.str();
    return ran;
}

// Writes `text` to a file of that name, prefixed by the test's own name so
// that tests run side by side don't share it, in the temporary folder.
inline std::string WriteFile(const std::string& name, const std::string& text) {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    const std::string path =
        ::testing::TempDir() + test->test_suite_name() + "." + test->name() + "-" + name;
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

// JSON output read and printed again by the compact dump it used to come
// from: the same text when its members stand in key order and its numbers and
// strings print as that dump prints them.
inline std::string Redumped(const std::string& json) {
    return nlohmann::json::parse(json).dump(-1, ' ', false,
                                            nlohmann::json::error_handler_t::replace) +
           "\n";
}

}  // namespace synthara::cli::clitest
