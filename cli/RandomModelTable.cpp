#include "cli/RandomModelTable.h"

#include <ostream>
#include <string>
#include <vector>

#include "cli/CommandSupport.h"
#include "cli/ReadableTable.h"

namespace synthara::cli {

void PrintRandomModel(const analysis::AnalysisResult& r, bool grouped, std::ostream& out) {
    ReadableTable table({"Model", "Number Studies", "Prediction lower", "Prediction upper",
                         "Tau Squared lower", "Tau Squared upper"},
                        1, grouped);
    std::vector<std::string> fellBack;
    for (const auto& s : r.summaries) {
        if (s.model != 2 || s.k <= 0) continue;
        table.Add(
            {"Random effects", std::to_string(s.k), Decimals(s.piDisplayLower, 3),
             Decimals(s.piDisplayUpper, 3), Decimals(s.tau2Lower, 6), Decimals(s.tau2Upper, 6)},
            s.group);
        if (s.tau2Method != analysis::Tau2MethodWord(r.tau2Method)) fellBack.push_back(s.group);
    }
    if (table.Empty()) return;
    table.Print(out);

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
