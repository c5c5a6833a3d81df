#pragma once
// What the commands that analyse share: the input opened and computed, the
// analysis run on it, and each refusal said in words.
#include <iosfwd>
#include <string>
#include <vector>

#include "analysis/Analysis.h"
#include "cli/CliPrompter.h"
#include "cli/CommandSupport.h"
#include "cli/SelectionOptions.h"
#include "shell/Document.h"

namespace synthara::cli {

struct InputArgs {
    std::string input;
    std::string format;
    sheet::NumberSeparators separators;  // --locale
    std::vector<std::string> options;    // --option NAME=VALUE
    SelectionArgs selection;             // --exclude, --unit, --comparisons, ...
};

// Opens the input into `document`, has `analysis` (set up by the caller)
// take the selection options over the project's stored choices, and runs it. Returns the exit
// status; on a refusal the reason is on `err`.
int OpenAndAnalyze(const InputArgs& args, shell::Document& document, analysis::Analysis& analysis,
                   std::ostream& err);

// The project and analysis of a command that analyses, with the prompter
// that speaks for them on standard error.
struct AnalysedInput {
    explicit AnalysedInput(std::ostream& err)
        : prompter(err), document(prompter), analysis(prompter), err_(err) {}
    // OpenAndAnalyze with the index asked for ("" for the primary index).
    int Run(const InputArgs& args, const std::string& index) {
        analysis->DisplayIndex = index;
        return OpenAndAnalyze(args, *document, *analysis, err_);
    }

    CliPrompter prompter;
    const CommandObject<shell::Document> document;
    const CommandObject<analysis::Analysis> analysis;

  private:
    std::ostream& err_;
};

}  // namespace synthara::cli
