// The models of a grouping: the pooled tau-squared of models 3 and 5, and
// the between-groups variance of model 5. They read the results that run 1
// left on the blocks' "Calculations" rows, whichever run is under way.
#include <vector>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"

namespace synthara::analysis {

namespace {

constexpr int kRun = 1;

// A block without a valid row has no figures to pool; the selection drops
// such groups before the passes, and they are passed over here likewise.
bool HasRows(const WorkingTable& vs, int row, int model) {
    const Column<double>* k = vs.Find(Stat::K, kRun, model);
    return k != nullptr && (*k)[row] > 0;
}

double Get(const WorkingTable& vs, Stat stat, int model, int row) {
    const Column<double>* col = vs.Find(stat, kRun, model);
    if (col == nullptr) return 0;
    const double value = (*col)[row];
    return value == value ? value : 0;  // an empty cell reads as 0
}

}  // namespace

Analysis::PooledTau Analysis::GetT2MP() const {
    double G = 0, sumQ = 0, sumC = 0, sumK = 0;
    const std::vector<int> calc = CalculationRows();
    for (int r : calc) {
        if (!HasRows(vs, r, 1)) continue;
        if (vs.kind[r] == RowKind::Subgroup || (vs.kind[r] == RowKind::Overall && G == 0)) {
            G += 1;
            sumQ += Get(vs, Stat::Q, 1, r);
            sumC += Get(vs, Stat::C, 1, r);
            sumK += Get(vs, Stat::K, 1, r);
        }
    }
    PooledTau t;
    if (sumC > 0) {
        // sum K - G is the sum of the groups' df.
        t.T2 = (sumQ - sumK + G) / sumC;
        if (t.T2 < 0) t.T2 = 0;
    }
    double B = 0;
    for (int r : calc) {
        if (!HasRows(vs, r, 1)) continue;
        const double W = Get(vs, Stat::W1, 1, r);
        const bool take =
            vs.kind[r] == RowKind::Subgroup || (vs.kind[r] == RowKind::Overall && G == 1 && W > 0);
        if (!take) continue;
        const double Wsq = Get(vs, Stat::Wsq, 1, r);
        const double Wcu = Get(vs, Stat::Wcu, 1, r);
        // G - 1, the number of groups less one, is added for each group, not
        // the group's own df: the variance is defined so.
        B = t.T2 * t.T2 * (Wsq * Wsq / (W * W) + Wsq - 2 * Wcu / W) + 2 * (W - Wsq / W) * t.T2 +
            (G - 1) + B;
    }
    if (sumC > 0) t.varT2 = 2 * B / (sumC * sumC);
    return t;
}

double Analysis::GetMPQB() const {
    double within = 0, totalQ = 0;
    int count = 0;
    for (int r : CalculationRows()) {
        if (vs.kind[r] == RowKind::Subgroup) {
            if (!HasRows(vs, r, 3)) continue;
            within += Get(vs, Stat::Q, 3, r);
            ++count;
        } else if (vs.kind[r] == RowKind::Overall) {
            totalQ = Get(vs, Stat::Q, 3, r);
        }
    }
    return count > 1 ? totalQ - within : 0;
}

namespace {

// The groups' rows, or the total's when no group came before it.
std::vector<int> GroupRows(const Analysis& a) {
    std::vector<int> rows;
    for (int r : a.CalculationRows()) {
        if (!HasRows(a.vs, r, 3)) continue;
        if (a.vs.kind[r] == RowKind::Subgroup || rows.empty()) rows.push_back(r);
    }
    return rows;
}

}  // namespace

double Analysis::GetCforFullyRandom() const {
    double sw = 0, sw2 = 0;
    for (int r : GroupRows(*this)) {
        const double w = 1 / Get(vs, Stat::SummaryVariance, 3, r);
        sw += w;
        sw2 += w * w;
    }
    return sw > 0 ? sw - sw2 / sw : 0;
}

double Analysis::GetBforFullyRandom(double C, double T2) const {
    double sw = 0, sw2 = 0, sw3 = 0;
    for (int r : GroupRows(*this)) {
        const double w = 1 / Get(vs, Stat::SummaryVariance, 3, r);
        sw += w;
        sw2 += w * w;
        sw3 += w * w * w;
    }
    return (sw2 * sw2 / (sw * sw) + sw2 - 2 * sw3 / sw) * T2 * T2 + (2 * C * T2 + 1);
}

bool Analysis::GetFullyRandom(int run, int totalRow) {
    const double C = GetCforFullyRandom();
    if (C == 0) return false;
    const double QB = GetMPQB();
    // The 2 stands for the number of groups whatever their number, so the
    // between-groups df is always 1.
    double between = (QB - 2 + 1) / C;
    if (between < 0) between = 0;
    const double B = GetBforFullyRandom(C, between);
    double sg = 0, sgp = 0;
    for (int r : GroupRows(*this)) {
        const double g = 1 / (between + Get(vs, Stat::SummaryVariance, 3, r));
        sg += g;
        sgp += g * Get(vs, Stat::SummaryPoint, 3, r);
    }
    vs.Ref(Stat::SummaryPoint, run, 5).Set(totalRow, sgp / sg);
    vs.Ref(Stat::SummaryVariance, run, 5).Set(totalRow, 1 / sg);
    vs.Ref(Stat::GroupT2, run, 5).Set(totalRow, between);
    vs.Ref(Stat::GroupT2Variance, run, 5).Set(totalRow, 2 * B / (C * C));
    return true;
}

bool Analysis::FullyRandomOneGroup() const {
    int groups = 0;
    for (int r : CalculationRows()) {
        if (vs.kind[r] == RowKind::Subgroup && ++groups > 1) return false;
    }
    return true;
}

}  // namespace synthara::analysis
