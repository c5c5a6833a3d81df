// The publication-bias run on a dataset of k studies: the four procedures
// and the report at once, and the rank correlation on its own, which is the
// part that grows fastest with k.
#include <benchmark/benchmark.h>

#include <random>

#include "pubbias/PubBias.h"

namespace {

using synthara::pubbias::BiasDataset;

// k studies of a funnel with some asymmetry, from a fixed seed.
BiasDataset Funnel(int k) {
    std::mt19937 random(20261123);
    std::uniform_real_distribution<double> se(0.05, 0.8);
    std::normal_distribution<double> noise(0, 1);
    BiasDataset data;
    for (int i = 0; i < k; ++i) {
        const double s = se(random);
        data.Add("Study " + std::to_string(i + 1), -0.3 + s * noise(random) + 0.4 * s * s, s);
    }
    return data;
}

void BM_PubBias(benchmark::State& state) {
    const BiasDataset data = Funnel(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        auto result = synthara::pubbias::RunPubBias(data, {}, "Odds ratio",
                                                    synthara::analysis::Transform::Log);
        benchmark::DoNotOptimize(result);
    }
}
BENCHMARK(BM_PubBias)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_RankCorrelation(benchmark::State& state) {
    const BiasDataset data = Funnel(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        auto result = synthara::pubbias::RunTau(data);
        benchmark::DoNotOptimize(result);
    }
}
BENCHMARK(BM_RankCorrelation)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
