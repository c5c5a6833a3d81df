// Row computation over a large sheet of two-group event data.
#include <benchmark/benchmark.h>

#include "TwoGroupSheet.h"
#include "effectsize/Compute.h"
#include "effectsize/RowResult.h"
#include "ports/Prompter.h"
#include "sheet/grid/Sheet.h"

namespace {

using synthara::sheet::FixedRowCount;
using synthara::sheet::Sheet;

// Computes the whole sheet that `fill` makes, afresh each round.
void ComputeSheet(benchmark::State& state, void (*fill)(Sheet&, int)) {
    synthara::ports::SilentPrompter prompter;
    Sheet sheet(prompter);
    fill(sheet, static_cast<int>(state.range(0)));
    synthara::effectsize::ComputeOptions options;
    for (auto _ : state) {
        // A fresh computation each time: forget the formats found last round.
        state.PauseTiming();
        synthara::bench::ForgetFormats(sheet);
        state.ResumeTiming();
        synthara::effectsize::ComputeContext context{options, prompter};
        int first = 0, last = 0;
        synthara::effectsize::Compute(sheet, first, last, context);
        benchmark::DoNotOptimize(sheet.Flex().At(FixedRowCount, sheet.FormatCol()));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_ComputeTwoGroupEvents(benchmark::State& state) {
    ComputeSheet(state, synthara::bench::FillSheet);
}
BENCHMARK(BM_ComputeTwoGroupEvents)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_ComputePersonTime(benchmark::State& state) {
    ComputeSheet(state, synthara::bench::FillPersonTimeSheet);
}
BENCHMARK(BM_ComputePersonTime)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_ComputeOneGroupEvents(benchmark::State& state) {
    ComputeSheet(state, synthara::bench::FillOneGroupSheet);
}
BENCHMARK(BM_ComputeOneGroupEvents)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_ComputeMeans(benchmark::State& state) {
    ComputeSheet(state, synthara::bench::FillMeansSheet);
}
BENCHMARK(BM_ComputeMeans)->Arg(100000)->Unit(benchmark::kMillisecond);

// Reading rows' results again, numbers only or with every trail: what a
// screen, a file or "compute --trails" pays for text the sheet never keeps.
void BM_EvaluateRows(benchmark::State& state) {
    synthara::ports::SilentPrompter prompter;
    Sheet sheet(prompter);
    const int rows = static_cast<int>(state.range(0));
    synthara::bench::FillSheet(sheet, rows);
    synthara::effectsize::ComputeOptions options;
    synthara::effectsize::ComputeContext context{options, prompter};
    int first = 0, last = 0;
    synthara::effectsize::Compute(sheet, first, last, context);
    const auto trails =
        state.range(1) != 0 ? synthara::effectsize::Trails::On : synthara::effectsize::Trails::Off;
    for (auto _ : state) {
        synthara::effectsize::RowEvaluator evaluator(sheet, options, prompter, trails);
        for (int r = 0; r < rows; ++r)
            benchmark::DoNotOptimize(evaluator.Evaluate(FixedRowCount + r));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_EvaluateRows)
    ->ArgNames({"rows", "trails"})
    ->Args({100000, 0})
    ->Args({100000, 1})
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
