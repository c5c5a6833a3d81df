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

inline const analysis::SummaryResult* FindSummary(const analysis::AnalysisResult& r,
                                                  std::string_view model,
                                                  std::string_view group = "Overall") {
    for (const auto& s : r.summaries)
        if (s.modelWord == model && s.group == group) return &s;
    return nullptr;
}

}  // namespace synthara::testing
