// The road of a large sheet of two-group event data through the analysis:
// the rows' computation, the filling of the working table, and the analysis
// under the fixed and the random model, each timed on its own.
#include <benchmark/benchmark.h>

#include "TwoGroupSheet.h"
#include "analysis/Analysis.h"
#include "analysis/Result.h"
#include "effectsize/Compute.h"
#include "ports/Prompter.h"
#include "sheet/grid/Sheet.h"

namespace {

using synthara::analysis::Analysis;
using synthara::analysis::ComputeStatus;
using synthara::sheet::FixedRowCount;
using synthara::sheet::Sheet;

constexpr int kRows = 100000;

synthara::ports::SilentPrompter prompter;

void ComputeRows(Sheet& sheet) {
    synthara::effectsize::ComputeOptions options;
    synthara::effectsize::ComputeContext context{options, prompter};
    int first = 0, last = 0;
    synthara::effectsize::Compute(sheet, first, last, context);
}

// The computed sheet, made once and shared by the stages after the computation.
Sheet& ComputedSheet() {
    static Sheet* sheet = [] {
        auto* s = new Sheet(prompter);
        synthara::bench::FillSheet(*s, kRows);
        ComputeRows(*s);
        s->FindCols();
        return s;
    }();
    return *sheet;
}

void BM_RoadComputeRows(benchmark::State& state) {
    Sheet sheet(prompter);
    synthara::bench::FillSheet(sheet, kRows);
    for (auto _ : state) {
        state.PauseTiming();
        synthara::bench::ForgetFormats(sheet);
        state.ResumeTiming();
        ComputeRows(sheet);
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

void BM_RoadFillWorkingTable(benchmark::State& state) {
    Sheet& sheet = ComputedSheet();
    Analysis analysis(prompter);
    for (auto _ : state) {
        analysis.FillFromSheet(sheet);
        benchmark::DoNotOptimize(analysis.vs.grid.Rows());
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

// The first Compute after "Run analyses": rows restored and sorted, summary
// block, valid rows, the passes of both models, weights.
void BM_RoadAnalysis(benchmark::State& state) {
    Sheet& sheet = ComputedSheet();
    Analysis analysis(prompter);
    for (auto _ : state) {
        state.PauseTiming();
        analysis.FillFromSheet(sheet);
        state.ResumeTiming();
        if (analysis.Compute() != ComputeStatus::Done) state.SkipWithError("analysis refused");
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

// A Compute after an option change (another confidence level) on the same table.
void BM_RoadAnalysisAgain(benchmark::State& state) {
    Sheet& sheet = ComputedSheet();
    Analysis analysis(prompter);
    analysis.FillFromSheet(sheet);
    analysis.Compute();
    for (auto _ : state) {
        analysis.CILevel = analysis.CILevel == 0.95 ? 0.90 : 0.95;
        if (analysis.Compute() != ComputeStatus::Done) state.SkipWithError("analysis refused");
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

// The passes alone: valid rows, run 1 under both models, the copy onto the rows.
void BM_RoadPasses(benchmark::State& state) {
    Sheet& sheet = ComputedSheet();
    Analysis analysis(prompter);
    analysis.FillFromSheet(sheet);
    analysis.Compute();
    for (auto _ : state)
        analysis.RunPasses();
    state.SetItemsProcessed(state.iterations() * kRows);
}

void BM_RoadCollectResult(benchmark::State& state) {
    Sheet& sheet = ComputedSheet();
    Analysis analysis(prompter);
    analysis.FillFromSheet(sheet);
    analysis.Compute();
    for (auto _ : state) {
        const auto result = synthara::analysis::CollectResult(analysis);
        benchmark::DoNotOptimize(result.studies.size());
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

BENCHMARK(BM_RoadComputeRows)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_RoadFillWorkingTable)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_RoadAnalysis)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_RoadAnalysisAgain)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_RoadPasses)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_RoadCollectResult)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
