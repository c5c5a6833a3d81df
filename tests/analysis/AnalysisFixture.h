#pragma once
// A sheet of rows with its analysis, and the prompter that records what they say.
#include <string>
#include <string_view>
#include <vector>

#include "SheetOfRows.h"
#include "analysis/Analysis.h"
#include "analysis/Result.h"
#include "support/ScriptedPrompter.h"

namespace synthara::testing {

struct AnalysisFixture {
    explicit AnalysisFixture(const std::vector<RowValues>& rows, std::string index = "Odds ratio")
        : sheet(prompter), analysis(prompter) {
        FillSheet(sheet, rows);
        analysis.DisplayIndex = std::move(index);
    }
    analysis::AnalysisResult Run() {
        status = analysis::RunAnalyses(sheet, analysis);
        return analysis::CollectResult(analysis);
    }

    ScriptedPrompter prompter;
    sheet::Sheet sheet;
    analysis::Analysis analysis;
    analysis::ComputeStatus status = analysis::ComputeStatus::Busy;
};

// Nine studies in three arms of the moderator "Arm": "a", "b" and "c".
inline std::vector<RowValues> ThreeArms() {
    return {{"A1", 0.1, 0.04, "a"}, {"A2", 0.5, 0.09, "a"}, {"A3", -0.2, 0.05, "a"},
            {"B1", 0.8, 0.10, "b"}, {"B2", 0.3, 0.02, "b"}, {"C1", -0.4, 0.07, "c"},
            {"C2", 0.2, 0.03, "c"}, {"C3", 0.9, 0.2, "c"},  {"C4", 0.0, 0.06, "c"}};
}

// The three arms, grouped by arm unless told otherwise.
struct ArmsFixture : AnalysisFixture {
    explicit ArmsFixture(bool grouped = true) : AnalysisFixture(ThreeArms()) {
        if (grouped) analysis.GroupBy = "Arm";
    }
};

inline const analysis::SummaryResult* FindSummary(const analysis::AnalysisResult& r,
                                                  std::string_view model,
                                                  std::string_view group = "Overall") {
    for (const auto& s : r.summaries)
        if (s.modelWord == model && s.group == group) return &s;
    return nullptr;
}

}  // namespace synthara::testing
