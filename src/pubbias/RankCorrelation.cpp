#include "pubbias/RankCorrelation.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "stats/Distributions.h"

namespace synthara::pubbias {
namespace {

constexpr double kTieT = 1E-08;

// Counts of the values inserted so far, by rank in one sorted list.
class Fenwick {
  public:
    explicit Fenwick(std::size_t n) : tree_(n + 1, 0) {}
    void Add(std::size_t rank) {
        for (std::size_t i = rank + 1; i < tree_.size(); i += i & (~i + 1))
            ++tree_[i];
    }
    // Inserted values of rank below `end`.
    std::int64_t Prefix(std::size_t end) const {
        std::int64_t sum = 0;
        for (std::size_t i = end; i > 0; i -= i & (~i + 1))
            sum += tree_[i];
        return sum;
    }

  private:
    std::vector<std::int64_t> tree_;
};

// Pairs within a sorted run of values whose distance is at most kTieT.
std::int64_t ClosePairs(const std::vector<double>& sorted) {
    std::int64_t close = 0;
    std::size_t a = 0;
    for (std::size_t b = 0; b < sorted.size(); ++b) {
        while (sorted[b] - sorted[a] > kTieT)
            ++a;
        close += static_cast<std::int64_t>(b - a);
    }
    return close;
}

// z of S against its null variance; the product under the root is an integer.
double KendallZ(double s, int n) {
    const std::int64_t big = n;
    const std::int64_t product = big * (big - 1) * (2 * big + 5);
    return std::fabs(s) * std::sqrt(18.0) / std::sqrt(static_cast<double>(product));
}

}  // namespace

// Each pair is met once, from the row of the larger V*: rows of smaller V*
// are in the tree by then, and the pairs of equal V* are split within their
// group before the group goes in. O(k log k) in place of the k^2 pairs.
PairCounts CountPairs(const std::vector<double>& vStar, const std::vector<double>& tStar) {
    const std::size_t n = vStar.size();
    std::vector<std::size_t> order(n);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return vStar[a] < vStar[b]; });
    std::vector<double> sortedT(tStar);
    std::sort(sortedT.begin(), sortedT.end());
    const auto rankBelow = [&](double t) {
        return static_cast<std::size_t>(std::lower_bound(sortedT.begin(), sortedT.end(), t) -
                                        sortedT.begin());
    };
    const auto rankUpTo = [&](double t) {
        return static_cast<std::size_t>(std::upper_bound(sortedT.begin(), sortedT.end(), t) -
                                        sortedT.begin());
    };
    Fenwick tree(n);
    PairCounts counts;
    std::int64_t inserted = 0;
    std::vector<double> group;
    for (std::size_t start = 0; start < n;) {
        std::size_t end = start;
        while (end < n && vStar[order[end]] == vStar[order[start]])
            ++end;
        group.clear();
        for (std::size_t g = start; g < end; ++g) {
            const double t = tStar[order[g]];
            // Earlier rows: V* smaller, so the pair agrees when their T* is smaller too.
            counts.concordant += static_cast<double>(tree.Prefix(rankBelow(t - kTieT)));
            counts.discordant += static_cast<double>(inserted - tree.Prefix(rankUpTo(t + kTieT)));
            group.push_back(t);
        }
        std::sort(group.begin(), group.end());
        const auto size = static_cast<std::int64_t>(group.size());
        const std::int64_t split = size * (size - 1) / 2 - ClosePairs(group);
        counts.concordant += 0.5 * static_cast<double>(split);
        counts.discordant += 0.5 * static_cast<double>(split);
        counts.ties += split;
        for (std::size_t g = start; g < end; ++g)
            tree.Add(rankBelow(tStar[order[g]]));
        inserted += size;
        start = end;
    }
    return counts;
}

TauResult RunTau(const BiasDataset& data) {
    TauResult r;
    const int n = data.N();
    double s1 = 0;
    double s2 = 0;
    for (int i = 0; i < n; ++i) {
        const auto u = static_cast<std::size_t>(i);
        s1 += 1 / data.variance[u];
        s2 += data.point[u] * (1 / data.variance[u]);
    }
    const double mean = s2 / s1;
    const double varMean = 1 / s1;
    std::vector<double> vStar(data.variance.size());
    std::vector<double> tStar(data.variance.size());
    for (std::size_t i = 0; i < vStar.size(); ++i) {
        vStar[i] = data.variance[i] - varMean;
        // A V* of 0 divides by zero and one below 0 has no root: the run stops.
        if (!(vStar[i] > 0)) {
            r.message = kTauProblem;
            return r;
        }
        tStar[i] = (data.point[i] - mean) / std::sqrt(vStar[i]);
    }
    r.pairs = CountPairs(vStar, tStar);
    const double pairs = r.pairs.concordant + r.pairs.discordant;
    if (pairs == 0) {
        r.message = kTauProblem;
        return r;
    }
    r.s = r.pairs.concordant - r.pairs.discordant;
    r.tau = r.s / pairs;
    r.z = KendallZ(r.s, n);
    r.p1 = stats::VBDNORDF(-r.z);
    r.p2 = 2 * r.p1;

    double s = r.s;
    if (s < 0) s += 1;
    if (s > 0) s -= 1;
    r.sCorrected = s;
    r.tauCorrected = s / pairs;
    r.zCorrected = KendallZ(s, n);
    r.p1Corrected = stats::VBDNORDF(-r.zCorrected);
    r.p2Corrected = 2 * r.p1Corrected;
    r.ok = true;
    return r;
}

}  // namespace synthara::pubbias
