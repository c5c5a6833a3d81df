#pragma once
// The selection and merging options of the commands that analyse: which
// rows enter and how the rows of one study are used, as the "Select by"
// dialog sets them, for this run only.
#include <iosfwd>
#include <string>
#include <vector>

namespace CLI {
class App;
}
namespace synthara::sheet {
class Sheet;
}
namespace synthara::analysis {
class Analysis;
}

namespace synthara::cli {

struct SelectionArgs {
    std::vector<std::string> exclude;   // --exclude COLUMN=VALUE
    std::string unit;                   // --unit subgroup|study
    std::string comparisons;            // --comparisons all|mean|one
    std::string outcomes;               // --outcomes
    std::string timePoints;             // --time-points
    std::vector<std::string> sequence;  // --sequence LEVEL=V1,V2,...
};

void AddSelectionOptions(CLI::App& command, SelectionArgs& args);

// Checks the options against the sheet and has the analysis take them over
// the choices stored in the project. Returns the exit status: a refusal's
// reason is on `err`, and so is each option that has no effect because its
// level has no column.
int ApplySelection(const SelectionArgs& args, const sheet::Sheet& sheet,
                   analysis::Analysis& analysis, std::ostream& err);

}  // namespace synthara::cli
