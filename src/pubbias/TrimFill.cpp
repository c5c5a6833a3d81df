#include "pubbias/TrimFill.h"

#include <algorithm>
#include <cmath>

#include "analysis/MetaVals.h"

namespace synthara::pubbias {
namespace {

constexpr double kZ95 = 1.96;

struct WorkRow {
    int study = 0;
    double point = 0;
    double se = 0;
    double abs = 0;
};

// Fixed then random over `rows`; the random pass takes the fixed pass's tau-squared.
template <typename Rows>
TrimPass TwoPasses(const Rows& rows, std::size_t count) {
    TrimPass pass;
    pass.count = static_cast<int>(count);
    double tau2 = 0;
    for (int which = 0; which < 2; ++which) {
        analysis::MetaSums sums;
        for (std::size_t i = 0; i < count; ++i) {
            const double v = rows[i].se * rows[i].se;
            const double w = 1 / (v + tau2);
            sums.K += 1;
            sums.W += w;
            sums.Wsq += w * w;
            sums.Wcu += w * w * w;
            sums.TW += w * rows[i].point;
            sums.T2W += w * rows[i].point * rows[i].point;
        }
        const analysis::MetaVals vals = analysis::ComputeMetaVals(sums);
        const double se = std::sqrt(vals.variance);
        if (which == 0) {
            pass.fixedMean = vals.mean;
            pass.fixedSE = se;
            pass.fixedLower = vals.mean - kZ95 * se;
            pass.fixedUpper = vals.mean + kZ95 * se;
            pass.Q = vals.Q;
            tau2 = vals.T2;
        } else {
            pass.randomMean = vals.mean;
            pass.randomSE = se;
            pass.randomLower = vals.mean - kZ95 * se;
            pass.randomUpper = vals.mean + kZ95 * se;
        }
    }
    return pass;
}

StoredSummary Store(const TrimPass& pass) {
    return {static_cast<float>(pass.fixedMean), static_cast<float>(pass.fixedSE),
            static_cast<float>(pass.randomMean), static_cast<float>(pass.randomSE), pass.Q};
}

// Point in the side's direction, then the smaller standard error first.
void SortBySide(std::vector<WorkRow>& rows, TrimSide side) {
    if (side == TrimSide::NotSpecified) return;
    const bool ascending = side == TrimSide::Left;
    std::stable_sort(rows.begin(), rows.end(), [ascending](const WorkRow& a, const WorkRow& b) {
        if (a.point != b.point) return ascending ? a.point < b.point : a.point > b.point;
        return a.se < b.se;
    });
}

}  // namespace

double StoredSummary::FixedLower() const {
    return static_cast<double>(fixedMean) - kZ95 * static_cast<double>(fixedSE);
}
double StoredSummary::FixedUpper() const {
    return static_cast<double>(fixedMean) + kZ95 * static_cast<double>(fixedSE);
}
double StoredSummary::RandomLower() const {
    return static_cast<double>(randomMean) - kZ95 * static_cast<double>(randomSE);
}
double StoredSummary::RandomUpper() const {
    return static_cast<double>(randomMean) + kZ95 * static_cast<double>(randomSE);
}

int RoundHalfEven(double value) {
    // The default rounding mode takes halves to the even neighbour.
    return static_cast<int>(std::nearbyint(value));
}

int EstimateL0(std::int64_t sumRanks, int n) {
    const std::int64_t big = n;
    const std::int64_t numerator = 4 * sumRanks - big * (big + 1);
    const std::int64_t denominator = 2 * big - 1;
    return RoundHalfEven(static_cast<double>(numerator) / static_cast<double>(denominator));
}

TrimFillResult RunTrimFill(const BiasDataset& data, TrimSide side, TrimModel model) {
    TrimFillResult r;
    r.side = side;
    r.model = model;
    const int n = data.N();
    std::vector<WorkRow> rows(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        const auto u = static_cast<std::size_t>(i);
        rows[u] = {i, data.point[u], data.se[u], 0};
    }
    int k = 0;
    double centre = 0;
    for (int iteration = 1;; ++iteration) {
        const int previous = k;
        SortBySide(rows, side);
        const TrimPass pass = TwoPasses(rows, static_cast<std::size_t>(n - k));
        if (model == TrimModel::Fixed) centre = pass.fixedMean;
        if (model == TrimModel::Random) centre = pass.randomMean;
        for (WorkRow& row : rows)
            row.abs = std::fabs(row.point - centre);
        std::stable_sort(rows.begin(), rows.end(),
                         [](const WorkRow& a, const WorkRow& b) { return a.abs < b.abs; });
        // Ranks follow the sorted order: equal distances take consecutive
        // ranks. Without both options no rank is used, and nothing is trimmed.
        std::int64_t sumRanks = 0;
        for (std::size_t i = 0; i < rows.size() && r.OptionsSet(); ++i) {
            const bool counts = (side == TrimSide::Left && rows[i].point > centre) ||
                                (side == TrimSide::Right && rows[i].point < centre);
            if (counts) sumRanks += static_cast<std::int64_t>(i) + 1;
        }
        std::stable_sort(rows.begin(), rows.end(),
                         [](const WorkRow& a, const WorkRow& b) { return a.point < b.point; });
        const int l0 = EstimateL0(sumRanks, n);
        r.iterations.push_back({iteration, sumRanks, l0, pass});
        if (iteration == 1) r.observed = Store(pass);
        k = std::max(l0, 0);
        if (k <= previous || iteration >= kTrimIterationCap) break;
    }
    r.k = k;
    r.centre = centre;

    SortBySide(rows, side);
    std::vector<WorkRow> all(rows);
    for (int i = 1; i <= k; ++i) {
        const WorkRow& source = rows[static_cast<std::size_t>(n - i)];
        r.imputed.push_back({data.names[static_cast<std::size_t>(source.study)],
                             2 * centre + (-1) * source.point, source.se});
        all.push_back({source.study, r.imputed.back().point, source.se, 0});
    }
    r.filled = TwoPasses(all, all.size());
    r.adjusted = Store(r.filled);
    return r;
}

}  // namespace synthara::pubbias
