// The weights view: each valid row's share of its block's weight, in percent.
#include <algorithm>
#include <vector>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"

namespace synthara::analysis {

void Analysis::DisplayWeights(int model) {
    constexpr int run = 1;
    StatRef w1 = vs.Ref(Stat::W1, run, model);
    StatRef pct = vs.Ref(Stat::WtPct, run, model);
    StatRef bar = vs.Ref(Stat::WtPctG, run, model);
    if (!w1 || !pct) return;

    const int rows = vs.Rows();
    const std::vector<int> blocks = CalculationRows();
    std::vector<double> blockSum(blocks.size(), 0.0);
    double largest = 0;
    for (int r = 0; r < rows; ++r) {
        if (vs.validRow[r] <= 0) continue;
        const int block = vs.refLineSub[r];
        const double share = w1.Get(r) * 100 / w1.Get(block);
        pct.Set(r, share);
        largest = std::max(largest, share);
        const auto it = std::lower_bound(blocks.begin(), blocks.end(), block);
        if (it != blocks.end() && *it == block)
            blockSum[static_cast<std::size_t>(it - blocks.begin())] += share;
    }
    const double factor = ScaleWeightsToMaximum && largest > 0 ? 100 / largest : 1;
    for (int r = 0; r < rows; ++r) {
        if (vs.validRow[r] > 0) bar.Set(r, factor * pct.Get(r));
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (w1.Get(blocks[i]) > 0) pct.Set(blocks[i], blockSum[i]);
    }
}

}  // namespace synthara::analysis
