// The meta-regression's maximum-likelihood run on k studies: every step
// fills the working table's weights and sums, and the last one its residuals.
#include <benchmark/benchmark.h>

#include <random>
#include <string>

#include "regression/Regression.h"

namespace {

using synthara::regression::RegressionTable;

// k studies around a line in a moderator, with between-study variance, from
// a fixed seed.
RegressionTable Studies(int k) {
    std::mt19937 random(20261123);
    std::uniform_real_distribution<double> variance(0.01, 0.5);
    std::uniform_real_distribution<double> moderator(10, 60);
    std::normal_distribution<double> noise(0, 1);
    std::vector<std::string> names;
    std::vector<double> T, V, X;
    for (int i = 0; i < k; ++i) {
        const double v = variance(random);
        const double x = moderator(random);
        names.push_back("Study " + std::to_string(i + 1));
        V.push_back(v);
        X.push_back(x);
        T.push_back(0.4 - 0.03 * x + std::sqrt(v + 0.05) * noise(random));
    }
    RegressionTable table;
    table.SetStudies(std::move(names), std::move(T), std::move(V), std::move(X));
    return table;
}

// One method's run on the studies; `steps` counts the steps it took.
void RunMethod(benchmark::State& state, synthara::regression::Method method) {
    const RegressionTable studies = Studies(static_cast<int>(state.range(0)));
    int steps = 0;
    for (auto _ : state) {
        state.PauseTiming();
        RegressionTable table = studies;
        state.ResumeTiming();
        auto result = synthara::regression::RunRegression(std::move(table), method);
        steps = result.lastStep;
        benchmark::DoNotOptimize(result);
    }
    state.counters["steps"] = steps;
}

void BM_RegressionML(benchmark::State& state) {
    RunMethod(state, synthara::regression::Method::MaximumLikelihood);
}
BENCHMARK(BM_RegressionML)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// A single step and the residuals: what each further step adds is the
// difference from the run above, divided by its steps less one.
void BM_RegressionFixed(benchmark::State& state) {
    RunMethod(state, synthara::regression::Method::Fixed);
}
BENCHMARK(BM_RegressionFixed)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
