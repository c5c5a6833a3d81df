// The road of a large sheet of two-group event data through the analysis:
// the rows' computation, the filling of the working table, and the analysis
// under the fixed and the random model, each timed on its own, at 10,000 and
// 100,000 rows.
#include <benchmark/benchmark.h>

#include <malloc.h>

#include <map>
#include <memory>
#include <string>

#include "TwoGroupSheet.h"
#include "analysis/Analysis.h"
#include "analysis/Result.h"
#include "effectsize/Compute.h"
#include "ports/Prompter.h"
#include "sheet/grid/Sheet.h"

namespace {

using synthara::analysis::Analysis;
using synthara::analysis::ComputeStatus;
using synthara::sheet::Sheet;

synthara::ports::SilentPrompter prompter;

void ComputeRows(Sheet& sheet) {
    synthara::effectsize::ComputeOptions options;
    synthara::effectsize::ComputeContext context{options, prompter};
    int first = 0, last = 0;
    synthara::effectsize::Compute(sheet, first, last, context);
}

// The computed sheet of each size, made once and shared by the stages after
// the computation.
Sheet& ComputedSheet(int rows) {
    static std::map<int, std::unique_ptr<Sheet>> sheets;
    auto& sheet = sheets[rows];
    if (!sheet) {
        sheet = std::make_unique<Sheet>(prompter);
        synthara::bench::FillSheet(*sheet, rows);
        ComputeRows(*sheet);
        sheet->FindCols();
    }
    return *sheet;
}

int Rows(const benchmark::State& state) {
    return static_cast<int>(state.range(0));
}

void BM_RoadComputeRows(benchmark::State& state) {
    Sheet sheet(prompter);
    synthara::bench::FillSheet(sheet, Rows(state));
    for (auto _ : state) {
        state.PauseTiming();
        synthara::bench::ForgetFormats(sheet);
        state.ResumeTiming();
        ComputeRows(sheet);
    }
    state.SetItemsProcessed(state.iterations() * Rows(state));
}

void BM_RoadFillWorkingTable(benchmark::State& state) {
    Sheet& sheet = ComputedSheet(Rows(state));
    Analysis analysis(prompter);
    for (auto _ : state) {
        analysis.FillFromSheet(sheet);
        benchmark::DoNotOptimize(analysis.vs.Rows());
    }
    state.SetItemsProcessed(state.iterations() * Rows(state));
}

// What "Run analyses" costs after the sheet check: the table filled, rows
// restored and sorted, summary block, valid rows, the passes of both models,
// weights. `table_MB` is the heap the analysis holds after the run.
void BM_RoadFillAndAnalysis(benchmark::State& state) {
    Sheet& sheet = ComputedSheet(Rows(state));
    const std::size_t before = mallinfo2().uordblks;
    Analysis analysis(prompter);
    for (auto _ : state) {
        analysis.FillFromSheet(sheet);
        if (analysis.Compute() != ComputeStatus::Done) state.SkipWithError("analysis refused");
    }
    const std::size_t after = mallinfo2().uordblks;
    state.counters["table_MB"] = static_cast<double>(after - before) / 1e6;
    state.SetItemsProcessed(state.iterations() * Rows(state));
}

// A Compute after an option change (another confidence level) on the same table.
void BM_RoadAnalysisAgain(benchmark::State& state) {
    Sheet& sheet = ComputedSheet(Rows(state));
    Analysis analysis(prompter);
    analysis.FillFromSheet(sheet);
    analysis.Compute();
    for (auto _ : state) {
        analysis.CILevel = analysis.CILevel == 0.95 ? 0.90 : 0.95;
        if (analysis.Compute() != ComputeStatus::Done) state.SkipWithError("analysis refused");
    }
    state.SetItemsProcessed(state.iterations() * Rows(state));
}

// The passes alone: valid rows, run 1 under both models, the copy onto the rows.
void BM_RoadPasses(benchmark::State& state) {
    Sheet& sheet = ComputedSheet(Rows(state));
    Analysis analysis(prompter);
    analysis.FillFromSheet(sheet);
    analysis.Compute();
    for (auto _ : state)
        analysis.RunPasses();
    state.SetItemsProcessed(state.iterations() * Rows(state));
}

void BM_RoadCollectResult(benchmark::State& state) {
    Sheet& sheet = ComputedSheet(Rows(state));
    Analysis analysis(prompter);
    analysis.FillFromSheet(sheet);
    analysis.Compute();
    for (auto _ : state) {
        const auto result = synthara::analysis::CollectResult(analysis);
        benchmark::DoNotOptimize(result.studies.size());
    }
    state.SetItemsProcessed(state.iterations() * Rows(state));
}

// One run of k passes, omit-one (2) or cumulative (3), under the fixed and
// the random model, after run 1 has left its results.
void BM_RoadSensitivityRun(benchmark::State& state) {
    Sheet& sheet = ComputedSheet(Rows(state));
    Analysis analysis(prompter);
    const int run = static_cast<int>(state.range(1));
    analysis.RunOptions[static_cast<std::size_t>(run - 1)] = true;
    analysis.FillFromSheet(sheet);
    if (analysis.Compute() != ComputeStatus::Done) state.SkipWithError("analysis refused");
    for (auto _ : state)
        analysis.RunSensitivity(run);
    state.SetItemsProcessed(state.iterations() * Rows(state));
}

// The computed sheet of `rows` rows in studies of four subgroups each: the
// same trials, with the study name taken by every four rows and a subgroup
// column beside it.
Sheet& SubgroupSheet(int rows) {
    static std::map<int, std::unique_ptr<Sheet>> sheets;
    auto& sheet = sheets[rows];
    if (!sheet) {
        sheet = std::make_unique<Sheet>(prompter);
        synthara::bench::FillSheet(*sheet, rows);
        const int studyCol = sheet->GetCol(0, 1);
        const int subgroupCol = sheet->MakePop(2);
        for (int r = 0; r < rows; ++r) {
            const int row = synthara::sheet::FixedRowCount + r;
            sheet->SetText(row, studyCol, "Study " + std::to_string(r / 4 + 1));
            sheet->SetText(row, subgroupCol, "Subgroup " + std::to_string(r % 4 + 1));
        }
        ComputeRows(*sheet);
        sheet->FindCols();
    }
    return *sheet;
}

// A Compute that makes each study of four subgroups one row, its cells
// summed and its effect computed again; `study_unit` 0 times the same
// Compute with the subgroups as the unit, for the merge's own share.
void BM_MergeSubgroups(benchmark::State& state) {
    Sheet& sheet = SubgroupSheet(Rows(state));
    Analysis analysis(prompter);
    analysis.FillFromSheet(sheet);
    analysis.selection.studyIsUnit = state.range(1) != 0;
    for (auto _ : state) {
        if (analysis.Compute() != ComputeStatus::Done) state.SkipWithError("analysis refused");
    }
    state.counters["study_unit"] = static_cast<double>(state.range(1));
    state.SetItemsProcessed(state.iterations() * Rows(state));
}

constexpr int kSmall = 10000;
constexpr int kLarge = 100000;

BENCHMARK(BM_RoadComputeRows)->Arg(kLarge)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_RoadFillWorkingTable)
    ->Arg(kSmall)
    ->Arg(kLarge)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);
BENCHMARK(BM_RoadFillAndAnalysis)
    ->Arg(kSmall)
    ->Arg(kLarge)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);
BENCHMARK(BM_RoadAnalysisAgain)
    ->Arg(kSmall)
    ->Arg(kLarge)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);
BENCHMARK(BM_RoadPasses)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_RoadSensitivityRun)
    ->Args({kSmall, 2})
    ->Args({kSmall, 3})
    ->Args({kLarge, 2})
    ->Args({kLarge, 3})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK(BM_MergeSubgroups)
    ->Args({kLarge, 1})
    ->Args({kLarge, 0})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);
BENCHMARK(BM_RoadCollectResult)
    ->Arg(kSmall)
    ->Arg(kLarge)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);

}  // namespace

BENCHMARK_MAIN();
