#include "cli/RandomModelTable.h"

#include <ostream>
#include <string>
#include <vector>

#include "cli/CommandSupport.h"

namespace synthara::cli {

void PrintRandomModel(const analysis::AnalysisResult& r, bool grouped, std::ostream& out) {
    std::vector<std::string> head = {"Model",
                                     "Number Studies",
                                     "Prediction lower",
                                     "Prediction upper",
                                     "Tau Squared lower",
                                     "Tau Squared upper"};
    if (grouped) head.insert(head.begin() + 1, "Group");
    std::vector<std::vector<std::string>> lines = {head};
    std::vector<std::string> fellBack;
    for (const auto& s : r.summaries) {
        if (s.model != 2 || s.k <= 0) continue;
        std::vector<std::string> line = {"Random effects",
                                         std::to_string(s.k),
                                         Decimals(s.piDisplayLower, 3),
                                         Decimals(s.piDisplayUpper, 3),
                                         Decimals(s.tau2Lower, 6),
                                         Decimals(s.tau2Upper, 6)};
        if (grouped) line.insert(line.begin() + 1, s.group);
        lines.push_back(std::move(line));
        if (s.tau2Method != analysis::Tau2MethodWord(r.tau2Method)) fellBack.push_back(s.group);
    }
    if (lines.size() == 1) return;
    const std::vector<std::size_t> right = ColumnRange(grouped ? 2 : 1, head.size());
    PrintColumns(lines, out, right);

    const std::string level = std::to_string(static_cast<int>(r.ciLevel * 100 + 0.5)) + "%";
    out << "\nRandom effects: tau-squared by " << analysis::Tau2MethodName(r.tau2Method) << " ("
        << analysis::Tau2MethodWord(r.tau2Method) << "); " << level << " limits "
        << (r.hksj ? "with the Hartung-Knapp-Sidik-Jonkman adjustment (t on k - 1 df)"
                   : "from the normal distribution")
        << ".\nPrediction interval: t on k - 2 df (none below 3 studies). Tau-squared limits: "
           "Q-profile.\n";
    for (const std::string& group : fellBack) {
        out << "Tau-squared did not converge for \"" << group << "\" ("
            << analysis::Tau2ConvergenceRule(r.tau2Method, {})
            << "); the DerSimonian-Laird value is shown.\n";
    }
}

}  // namespace synthara::cli
