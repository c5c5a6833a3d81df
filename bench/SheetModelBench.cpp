// The sheet on screen over 100,000 rows of two-group events: one screen of
// cells served by the model, opening the sheet in a window, and scrolling a
// page. Runs on Qt's offscreen platform unless the caller chose another.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QScrollBar>
#include <QUndoStack>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "TwoGroupSheet.h"
#include "ports/Prompter.h"
#include "sheet/SheetModel.h"
#include "sheet/SheetView.h"
#include "sheet/SheetWidget.h"
#include "shell/Document.h"

namespace {

using synthara::shell::Document;

constexpr int kRows = 100000;
constexpr int kScreenRows = 40;
constexpr int kScreenCols = 20;

// A text file of `rows` plausible trials, as a user would open it.
std::filesystem::path WriteTrials(int rows) {
    const auto path = std::filesystem::temp_directory_path() / "synthara-sheet-bench.csv";
    std::ofstream out(path);
    out << "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n";
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> size(20, 5000);
    for (int r = 0; r < rows; ++r) {
        const int n1 = size(random);
        const int n2 = size(random);
        std::uniform_int_distribution<int> events1(1, n1 / 4);
        std::uniform_int_distribution<int> events2(1, n2 / 4);
        out << "Study " << r + 1 << ',' << events1(random) << ',' << n1 << ',' << events2(random)
            << ',' << n2 << '\n';
    }
    return path;
}

// The project every benchmark reads, opened once.
Document& OpenProject() {
    static synthara::ports::SilentPrompter prompter;
    static Document document(prompter);
    static const bool opened = [] {
        const auto path = WriteTrials(kRows);
        const bool ok =
            document
                .Open(path,
                      synthara::shell::OpenSettings::ForFormat(synthara::bench::kTwoGroupFormat))
                .ok();
        std::filesystem::remove(path);
        return ok;
    }();
    if (!opened) std::abort();
    return document;
}

// A screen's worth of visible columns, those holding data first.
std::vector<int> ScreenColumns(const Document& document) {
    const auto& flex = document.Sheet().Flex();
    std::vector<int> cols;
    for (const bool withData : {true, false})
        for (int c = flex.FixedCols(); c < flex.Cols(); ++c)
            if (static_cast<int>(cols.size()) < kScreenCols && !flex.Col(c).hidden &&
                flex.DataRowsBlank(c) != withData)
                cols.push_back(c);
    return cols;
}

void BM_ModelServesOneScreen(benchmark::State& state) {
    Document& document = OpenProject();
    synthara::ui::SheetModel model(document);
    const std::vector<int> cols = ScreenColumns(document);
    const int first = model.rowCount() / 2;
    for (auto _ : state) {
        for (int r = first; r < first + kScreenRows; ++r)
            for (int c : cols) {
                const QModelIndex index = model.index(r, c);
                benchmark::DoNotOptimize(model.data(index, Qt::DisplayRole));
                benchmark::DoNotOptimize(model.data(index, Qt::BackgroundRole));
            }
    }
    state.SetItemsProcessed(state.iterations() * kScreenRows * static_cast<int>(cols.size()));
}
BENCHMARK(BM_ModelServesOneScreen)->Unit(benchmark::kMicrosecond);

// The project is open: the model and the view are made and shown, painted once.
void BM_OpenSheetInWindow(benchmark::State& state) {
    Document& document = OpenProject();
    QUndoStack undo;
    for (auto _ : state) {
        synthara::ui::SheetWidget widget(document, undo);
        widget.resize(1100, 700);
        widget.show();
        QApplication::processEvents();
        benchmark::DoNotOptimize(widget.grab());
    }
}
BENCHMARK(BM_OpenSheetInWindow)->Unit(benchmark::kMillisecond);

// A page down, painted.
void BM_ScrollOnePage(benchmark::State& state) {
    Document& document = OpenProject();
    QUndoStack undo;
    synthara::ui::SheetWidget widget(document, undo);
    widget.resize(1100, 700);
    widget.show();
    QApplication::processEvents();
    QScrollBar& bar = *widget.View().verticalScrollBar();
    for (auto _ : state) {
        bar.setValue(bar.value() + bar.pageStep() < bar.maximum() ? bar.value() + bar.pageStep()
                                                                  : 0);
        widget.View().viewport()->repaint();
    }
}
BENCHMARK(BM_ScrollOnePage)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
