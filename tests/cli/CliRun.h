#pragma once
// Runs synthara-cli in-process and keeps what it printed.
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

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

// Writes `text` to a file of that name in the test's temporary folder.
inline std::string WriteFile(const std::string& name, const std::string& text) {
    const std::string path = ::testing::TempDir() + name;
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

}  // namespace synthara::cli::clitest
