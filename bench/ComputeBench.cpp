// Row computation over a large sheet of two-group event data.
#include <benchmark/benchmark.h>

#include "TwoGroupSheet.h"
#include "effectsize/Compute.h"
#include "ports/Prompter.h"
#include "sheet/grid/Sheet.h"

namespace {

using synthara::sheet::FixedRowCount;
using synthara::sheet::Sheet;

void BM_ComputeTwoGroupEvents(benchmark::State& state) {
    synthara::ports::SilentPrompter prompter;
    Sheet sheet(prompter);
    synthara::bench::FillSheet(sheet, static_cast<int>(state.range(0)));
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
BENCHMARK(BM_ComputeTwoGroupEvents)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
