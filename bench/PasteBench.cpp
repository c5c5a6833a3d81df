// Pasting 10,000 rows of two-group events (four columns, as copied from a
// spreadsheet) into a new sheet with an events block, the rows' computation
// included.
#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <string>

#include "TwoGroupSheet.h"
#include "ports/Clipboard.h"
#include "ports/Prompter.h"
#include "sheet/grid/MetaRows.h"
#include "shell/Document.h"

namespace {

using synthara::shell::Document;

constexpr int kRows = 10000;

std::string TrialsText(int rows) {
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> size(20, 5000);
    std::string text;
    for (int r = 0; r < rows; ++r) {
        const int n1 = size(random);
        const int n2 = size(random);
        std::uniform_int_distribution<int> events1(1, n1 / 4);
        std::uniform_int_distribution<int> events2(1, n2 / 4);
        text += std::to_string(events1(random)) + '\t' + std::to_string(n1) + '\t' +
                std::to_string(events2(random)) + '\t' + std::to_string(n2) + "\r\n";
    }
    return text;
}

// The first entry column of the block: where the user clicks before pasting.
int FirstEntryColumn(const Document& document) {
    const synthara::sheet::Grid& flex = document.Sheet().Flex();
    for (int c = flex.FixedCols(); c < flex.Cols(); ++c)
        if (document.Sheet().MetaIs(c, synthara::sheet::MetaRow::Function, "Data Entry")) return c;
    return -1;
}

void BM_PasteTrialsIntoNewSheet(benchmark::State& state) {
    synthara::ports::SilentPrompter prompter;
    synthara::ports::MemoryClipboard clipboard;
    clipboard.SetText(TrialsText(kRows));
    for (auto _ : state) {
        state.PauseTiming();
        auto document = std::make_unique<Document>(prompter);
        document->AddBlock(synthara::bench::kTwoGroupFormat);
        const int col = FirstEntryColumn(*document);
        const int row = synthara::sheet::FixedRowCount;
        state.ResumeTiming();
        const auto pasted =
            document->Paste(synthara::shell::SheetSelection{{row, row, col, col}}, clipboard);
        benchmark::DoNotOptimize(pasted);
        state.PauseTiming();
        if (document->DataRows() != kRows) state.SkipWithError("the rows were not pasted");
        document.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_PasteTrialsIntoNewSheet)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
