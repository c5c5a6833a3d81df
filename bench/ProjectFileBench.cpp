// Saving and opening a large project: one block of two-group event data with
// its display columns, 100,000 rows of typed entry cells and computed numbers.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>
#include <string>

#include "ports/Prompter.h"
#include "sheet/files/ProjectFile.h"
#include "sheet/grid/Sheet.h"

namespace {

namespace fs = std::filesystem;
using synthara::sheet::FixedRowCount;
using synthara::sheet::Sheet;

constexpr const char* kFormat = "Events and sample size in each group";

void FillSheet(Sheet& sheet, int rows) {
    sheet.InitializeGrid();
    const int studyCol = sheet.MakePop(1);
    synthara::sheet::DefineFormat(kFormat, sheet.Defined);
    sheet.CreateAll();
    sheet.CreateDisplayCols(kFormat);
    sheet.FindCols();
    sheet.FindESCols(kFormat);
    sheet.SetRows(FixedRowCount + rows);
    // The computed columns of the primary index hold numbers, as after a computation.
    const int index = synthara::sheet::IndexNumber("Odds ratio");
    const auto& display = sheet.DisplayColTable()[static_cast<std::size_t>(index)];
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> size(20, 5000);
    std::uniform_real_distribution<double> estimate(0.2, 5.0);
    for (int r = 0; r < rows; ++r) {
        const int row = FixedRowCount + r;
        const int n1 = size(random), n2 = size(random);
        std::uniform_int_distribution<int> events1(0, n1 / 4), events2(0, n2 / 4);
        sheet.SetText(row, studyCol, "Study " + std::to_string(r + 1));
        const int values[4] = {events1(random), n1, events2(random), n2};
        for (int role = 0; role < 4; ++role)
            sheet.SetText(row, sheet.EntryColIndex()[static_cast<std::size_t>(role)],
                          std::to_string(values[role]));
        const double point = estimate(random);
        sheet.SetNumber(row, display[1], point);
        sheet.SetNumber(row, display[2], point / 7.0);
        sheet.SetNumber(row, display[3], point * point / 49.0);
        sheet.SetNumber(row, display[4], 1.0);
    }
    sheet.FindFormats();
}

fs::path BenchFile() {
    return fs::temp_directory_path() / "synthara-bench-project.syn";
}

void BM_SaveProject(benchmark::State& state) {
    synthara::ports::SilentPrompter prompter;
    Sheet sheet(prompter);
    FillSheet(sheet, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const auto result = synthara::sheet::SaveProjectFile(sheet, BenchFile());
        if (!result.ok) state.SkipWithError(result.message.c_str());
    }
    state.counters["bytes"] = static_cast<double>(fs::file_size(BenchFile()));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_SaveProject)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_OpenProject(benchmark::State& state) {
    synthara::ports::SilentPrompter prompter;
    {
        Sheet sheet(prompter);
        FillSheet(sheet, static_cast<int>(state.range(0)));
        synthara::sheet::SaveProjectFile(sheet, BenchFile());
    }
    Sheet sheet(prompter);
    sheet.InitializeGrid();
    for (auto _ : state) {
        const auto result = synthara::sheet::LoadProjectFile(sheet, BenchFile());
        if (!result.ok) state.SkipWithError(result.message.c_str());
    }
    state.counters["columns"] = sheet.Flex().Cols();
    state.SetItemsProcessed(state.iterations() * state.range(0));
    fs::remove(BenchFile());
}
BENCHMARK(BM_OpenProject)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
