#include "cli/AnalysisRun.h"

#include <ostream>

#include "analysis/Result.h"
#include "cli/App.h"
#include "cli/CommandSupport.h"

namespace synthara::cli {

int OpenAndAnalyze(const InputArgs& args, shell::Document& document, analysis::Analysis& analysis,
                   std::ostream& err) {
    if (const int status =
            OpenInput(args.input, args.format, args.separators, document, err, args.options);
        status != ExitDone)
        return status;

    // A file of titles alone has no blocks either; the sheet check would ask
    // for columns, when what is missing is the studies.
    if (document.Sheet().isRowEmpty(document.Sheet().GetLastRow())) {
        err << args.input << ": the file has no study rows to analyse\n";
        return ExitRefused;
    }
    if (const int status = ApplySelection(args.selection, document.Sheet(), analysis, err);
        status != ExitDone)
        return status;
    switch (document.RunAnalyses(analysis)) {
        case analysis::ComputeStatus::Done:
            break;
        case analysis::ComputeStatus::SheetRefused:
        case analysis::ComputeStatus::UnknownIndex:
        case analysis::ComputeStatus::MeanRefused:
            return ExitRefused;  // the engine's box has said why
        case analysis::ComputeStatus::NoIndexColumns:
            err << "The sheet has no \"" << analysis.ComputationIndex
                << "\" columns: its data formats do not yield the index \"" << analysis.DisplayIndex
                << "\"\n";
            return ExitRefused;
        case analysis::ComputeStatus::NoGroupColumn:
            err << "--group-by: the sheet has no moderator or identifying column \""
                << analysis.GroupBy << "\"\n";
            return ExitRefused;
        case analysis::ComputeStatus::Busy:
            return ExitRefused;
    }
    if (!analysis::AnyValidStudy(analysis)) {
        err << "No study has a valid \"" << analysis.DisplayIndex
            << "\": every row lacks the data it needs or was refused (\"compute\" shows each "
               "row's errors)\n";
        return ExitRefused;
    }
    return ExitDone;
}

}  // namespace synthara::cli
