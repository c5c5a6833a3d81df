// Row computation over a large sheet of two-group event data.
#include <benchmark/benchmark.h>

#include <random>
#include <string>

#include "effectsize/Compute.h"
#include "ports/Prompter.h"
#include "sheet/Sheet.h"

namespace {

using synthara::sheet::FixedRowCount;
using synthara::sheet::Sheet;

constexpr const char* kFormat = "Events and sample size in each group";

// A sheet with one block of the format, a study-name column and `rows` rows of
// plausible trials (a few with empty cells, as real sheets have).
void FillSheet(Sheet& sheet, int rows) {
    sheet.InitializeGrid();
    int studyCol = sheet.MakePop(1);
    synthara::sheet::DefineFormat(kFormat, sheet.Defined);
    sheet.CreateAll();
    sheet.CreateDisplayCols(kFormat);
    sheet.FindCols();
    sheet.FindESCols(kFormat);
    sheet.flex.SetRows(FixedRowCount + rows);
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> size(20, 5000);
    for (int r = 0; r < rows; ++r) {
        int row = FixedRowCount + r;
        int n1 = size(random), n2 = size(random);
        std::uniform_int_distribution<int> events1(0, n1 / 4), events2(0, n2 / 4);
        sheet.flex.SetText(row, studyCol, "Study " + std::to_string(r + 1));
        const int values[4] = {events1(random), n1, events2(random), n2};
        for (int role = 0; role < 4; ++role) {
            if (r % 997 == 0 && role == 2) continue;  // now and then a missing cell
            sheet.flex.SetText(row, sheet.EntryColIndex[static_cast<std::size_t>(role)],
                               std::to_string(values[role]));
        }
    }
}

void BM_ComputeTwoGroupEvents(benchmark::State& state) {
    synthara::ports::SilentPrompter prompter;
    Sheet sheet(prompter);
    FillSheet(sheet, static_cast<int>(state.range(0)));
    synthara::effectsize::ComputeOptions options;
    for (auto _ : state) {
        // A fresh computation each time: forget the formats found last round.
        state.PauseTiming();
        const int formatCol = sheet.FormatCol();
        for (int row = FixedRowCount; row < sheet.flex.Rows(); ++row)
            sheet.flex.ClearCell(row, formatCol);
        state.ResumeTiming();
        synthara::effectsize::ComputeContext context{options, prompter};
        int first = 0, last = 0;
        synthara::effectsize::Compute(sheet, first, last, context);
        benchmark::DoNotOptimize(sheet.flex.At(FixedRowCount, formatCol));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ComputeTwoGroupEvents)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
