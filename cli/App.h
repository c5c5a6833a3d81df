#pragma once
// The command line: parses the arguments and runs the command they name.
#include <iosfwd>
#include <string>
#include <vector>

namespace synthara::cli {

// Exit status of every command.
enum Exit : int { ExitDone = 0, ExitRefused = 1, ExitUsage = 2 };

// argv as the program receives it (argv[0] is the program's name).
int Run(int argc, const char* const* argv, std::ostream& out, std::ostream& err);
// The same, for tests: the arguments after the program's name.
int Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace synthara::cli
