// The weights view: each valid row's share of its block's weight, in percent.
#include <algorithm>
#include <vector>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"

namespace synthara::analysis {

void Analysis::DisplayWeights(int model) {
    constexpr int run = 1;
    ColRef w1 = vs.Ref(RunModelKey(Stem::W1, run, model));
    ColRef pct = vs.Ref(RunModelKey(Stem::WtPct, run, model));
    ColRef bar = vs.Ref(RunModelKey(Stem::WtPctG, run, model));
    ColRef validRow = vs.Ref(Key::ValidRow);
    ColRef refLineSub = vs.Ref(Key::RefLineSub);
    if (!w1 || !pct) return;

    const int first = WorkingTable::FirstDataRow;
    const int last = vs.LastRow();
    const std::vector<int> blocks = CalculationRows();
    std::vector<double> blockSum(blocks.size(), 0.0);
    double largest = 0;
    for (int r = first; r <= last; ++r) {
        if (validRow.Get(r) <= 0) continue;
        const int block = static_cast<int>(refLineSub.Get(r));
        const double share = w1.Get(r) * 100 / w1.Get(block);
        pct.Set(r, share);
        largest = std::max(largest, share);
        const auto it = std::lower_bound(blocks.begin(), blocks.end(), block);
        if (it != blocks.end() && *it == block)
            blockSum[static_cast<std::size_t>(it - blocks.begin())] += share;
    }
    const double factor = ScaleWeightsToMaximum && largest > 0 ? 100 / largest : 1;
    for (int r = first; r <= last; ++r) {
        if (validRow.Get(r) > 0) bar.Set(r, factor * pct.Get(r));
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (w1.Get(blocks[i]) > 0) pct.Set(blocks[i], blockSum[i]);
    }
}

}  // namespace synthara::analysis
