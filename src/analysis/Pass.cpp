// The passes: valid rows, DoMeta, and the copy of each block's results onto
// its study rows. Every column is resolved once per pass; the rows are read
// and written through those references, and the sums are kept in locals.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"
#include "analysis/MantelHaenszel.h"
#include "analysis/MetaVals.h"

namespace synthara::analysis {

namespace {

// Running totals of one block: a group, or all rows together.
struct BlockSums {
    double K = 0;
    double Point = 0;
    double Variance = 0;
    double TauWithin = 0;
    double TauBetween = 0;
    double TotalVariance = 0;
    double IVWeight = 0;
    double MHWeight = 0;
    double W1 = 0;
    double PointWt = 0;
    double PointSqWt = 0;
    double Wsq = 0;
    double Wcu = 0;
    std::array<double, MHTermCount> MH{};

    void Add(const BlockSums& o) {
        K += o.K;
        Point += o.Point;
        Variance += o.Variance;
        TauWithin += o.TauWithin;
        TauBetween += o.TauBetween;
        TotalVariance += o.TotalVariance;
        IVWeight += o.IVWeight;
        MHWeight += o.MHWeight;
        W1 += o.W1;
        PointWt += o.PointWt;
        PointSqWt += o.PointSqWt;
        Wsq += o.Wsq;
        Wcu += o.Wcu;
        for (std::size_t i = 0; i < MH.size(); ++i)
            MH[i] += o.MH[i];
    }
};

// The columns of one run and model.
struct ModelCols {
    StatRef point, variance, tauWithin, tauBetween, totalVariance, mhQ, ivWeight, mhWeight, w1,
        rawWeight, pointWt, pointSqWt, wsq, wcu, c, b, q, qdf, i2, k, summaryPoint, summaryVariance,
        groupT2, groupT2Variance;
    std::array<StatRef, MHTermCount> mh;

    ModelCols(WorkingTable& vs, int run, int model) {
        const auto ref = [&](Stat stat) { return vs.Ref(stat, run, model); };
        point = ref(Stat::Point);
        variance = ref(Stat::Variance);
        tauWithin = ref(Stat::TauWithin);
        tauBetween = ref(Stat::TauBetween);
        totalVariance = ref(Stat::TotalVariance);
        mhQ = ref(Stat::MHQ);
        ivWeight = ref(Stat::IVWeight);
        mhWeight = ref(Stat::MHWeight);
        w1 = ref(Stat::W1);
        rawWeight = ref(Stat::RawWeight);
        pointWt = ref(Stat::PointWt);
        pointSqWt = ref(Stat::PointSqWt);
        wsq = ref(Stat::Wsq);
        wcu = ref(Stat::Wcu);
        c = ref(Stat::C);
        b = ref(Stat::B);
        q = ref(Stat::Q);
        qdf = ref(Stat::Qdf);
        i2 = ref(Stat::I2);
        k = ref(Stat::K);
        summaryPoint = ref(Stat::SummaryPoint);
        summaryVariance = ref(Stat::SummaryVariance);
        groupT2 = ref(Stat::GroupT2);
        groupT2Variance = ref(Stat::GroupT2Variance);
        for (std::size_t i = 0; i < mh.size(); ++i)
            mh[i] = ref(static_cast<Stat>(static_cast<std::size_t>(FirstMHStat) + i));
    }
};

// Whether run `run` takes a row numbered v in pass `pass`.
bool Uses(int run, int pass, int v) {
    switch (run) {
        case 2:
            return v > 0 && v != pass;
        case 3:
            return v >= 1 && v <= pass;
        default:
            return v > 0;
    }
}

// The blocks' "Calculations" rows, found once for all models of a pass.
struct PassLayout {
    std::vector<int> calcRows;  // each block's "Calculations" row
    int totalRow = NoRow;       // the total's "Calculations" row
};

PassLayout Layout(const Analysis& a) {
    PassLayout p;
    p.calcRows = a.CalculationRows();
    if (!p.calcRows.empty()) p.totalRow = p.calcRows.back();
    return p;
}

// One model's part of a pass: writes a study row's terms and a block's
// summary through columns resolved once.
class ModelPass {
  public:
    ModelPass(WorkingTable& vs, int run, int model, MHIndex mh)
        : vs_(vs), mc_(vs, run, model), model_(model), mh_(model == 1 ? mh : MHIndex::None) {
        // Model 1 hands its tau-squared to the random models (2 and 4) through
        // their `Group T^2` cells, before those models run.
        for (int m : {1, 2, 4}) {
            tauTargets_.push_back(
                {vs.Ref(Stat::GroupT2, run, m), vs.Ref(Stat::GroupT2Variance, run, m)});
        }
    }

    void SetPooled(const Analysis::PooledTau& pooled) { pooled_ = pooled; }
    bool UsesMH() const { return mh_ != MHIndex::None; }

    // The tau-squared added to a row's variance under this model.
    double TauWithin(int groupRow, int totalRow) const {
        switch (model_) {
            case 2:
                return mc_.groupT2.Get(totalRow);
            case 4:
                return mc_.groupT2.Get(groupRow);
            case 3:
            case 5:
                return pooled_.T2;
            default:
                return 0;
        }
    }

    // Writes the row's terms and adds them to the block's sums.
    // Under Mantel-Haenszel, model 1 takes its weight and terms from the
    // row's 2x2 cells (`mh`), and the ratio itself as its point.
    void TakeRow(int r, double point, double variance, double tauWithin, const MHRow* mh,
                 BlockSums& sums) {
        if (mh != nullptr) {
            mc_.mhWeight.Set(r, mh->weight);
            for (std::size_t i = 0; i < mc_.mh.size(); ++i) {
                mc_.mh[i].Set(r, mh->terms[i]);
                sums.MH[i] += mh->terms[i];
            }
            sums.MHWeight += mh->weight;
            point = MHPoint(mh_, point);
        }
        const double tauBetween = 0;
        const double totalVariance = tauBetween + (tauWithin + variance);
        const double ivWeight = 1 / totalVariance;
        const double w = mh != nullptr ? mh->weight : ivWeight;
        const double pointWt = point * w;
        const double pointSqWt = w * point * point;
        const double wsq = w * w;
        const double wcu = w * w * w;
        mc_.point.Set(r, point);
        mc_.variance.Set(r, variance);
        mc_.tauWithin.Set(r, tauWithin);
        mc_.tauBetween.Set(r, tauBetween);
        mc_.totalVariance.Set(r, totalVariance);
        mc_.ivWeight.Set(r, ivWeight);
        mc_.w1.Set(r, w);
        mc_.rawWeight.Set(r, w);
        mc_.pointWt.Set(r, pointWt);
        mc_.pointSqWt.Set(r, pointSqWt);
        mc_.wsq.Set(r, wsq);
        mc_.wcu.Set(r, wcu);
        sums.K += 1;
        sums.Point += point;
        sums.Variance += variance;
        sums.TauWithin += tauWithin;
        sums.TauBetween += tauBetween;
        sums.TotalVariance += totalVariance;
        sums.IVWeight += ivWeight;
        sums.W1 += w;
        sums.PointWt += pointWt;
        sums.PointSqWt += pointSqWt;
        sums.Wsq += wsq;
        sums.Wcu += wcu;
    }

    // The summary of a block on its "Calculations" row; `first` and `last`
    // are the block's first and last rows taken in this pass.
    void WriteSummary(int row, const BlockSums& s, bool overall, int first, int last) {
        MetaVals v = ComputeMetaVals({s.W1, s.Wsq, s.Wcu, s.K, s.PointWt, s.PointSqWt});
        for (std::size_t i = 0; i < mc_.mh.size(); ++i) {
            // A subtotal's `MHOR-E` holds the sum of `MHOR-R`; nothing reads it back.
            mc_.mh[i].Set(row, !overall && i == 2 ? s.MH[0] : s.MH[i]);
        }
        mc_.point.Set(row, s.Point);
        mc_.variance.Set(row, s.Variance);
        mc_.tauWithin.Set(row, s.TauWithin);
        mc_.tauBetween.Set(row, s.TauBetween);
        mc_.totalVariance.Set(row, s.TotalVariance);
        mc_.pointWt.Set(row, s.PointWt);
        mc_.pointSqWt.Set(row, s.PointSqWt);
        mc_.w1.Set(row, s.W1);
        mc_.wsq.Set(row, s.Wsq);
        mc_.wcu.Set(row, s.Wcu);
        if (overall) {
            mc_.ivWeight.Set(row, s.IVWeight);
            mc_.mhWeight.Set(row, s.MHWeight);
        }
        mc_.c.Set(row, v.C);
        mc_.b.Set(row, v.B);
        mc_.q.Set(row, v.Q);
        mc_.qdf.Set(row, v.df);
        mc_.i2.Set(row, v.I2);
        mc_.k.Set(row, s.K);
        ConvertPointAndVariance(mh_, s.MH, v.mean, v.variance);
        mc_.summaryPoint.Set(row, v.mean);
        mc_.summaryVariance.Set(row, v.variance);
        if (model_ == 3 || model_ == 5) {
            mc_.groupT2.Set(row, pooled_.T2);
            mc_.groupT2Variance.Set(row, pooled_.varT2);
        }
        if (model_ != 1) return;
        if (UsesMH()) {
            ApplyMHHeterogeneity(v, AccumulateMHVals(first, last, v.mean));
            mc_.mhQ.Set(row, v.Q);
            mc_.q.Set(row, v.Q);
        }
        mc_.i2.Set(row, v.I2);
        for (TauTarget& t : tauTargets_) {
            t.t2.Set(row, v.T2);
            t.variance.Set(row, v.varT2);
        }
    }

  private:
    // Every valid row from the block's first row taken to its last, also a
    // row this pass leaves out between them, as the rows' cells hold it.
    MHHeterogeneity AccumulateMHVals(int first, int last, double mean) const {
        MHHeterogeneity h;
        for (int r = first; r >= 0 && r <= last; ++r) {
            if (vs_.validRow[r] <= 0) continue;
            h.Add(mc_.ivWeight.Get(r), MHPointToScale(mh_, mc_.point.Get(r)), mean);
        }
        return h;
    }

    struct TauTarget {
        StatRef t2, variance;
    };
    const WorkingTable& vs_;
    ModelCols mc_;
    int model_;
    MHIndex mh_;  // None but for model 1 of a Mantel-Haenszel index
    std::vector<TauTarget> tauTargets_;
    // Models 3 and 5 take one pooled tau-squared for all rows (with a grouping).
    Analysis::PooledTau pooled_;
};

}  // namespace

int Analysis::SetValidLines(int first, int last) {
    constexpr std::uint8_t needed = Source::Point | Source::StdErr;
    last = std::min(last, vs.LastRow());
    int k = 0;
    for (int r = std::max(first, 0); r <= last; ++r) {
        const bool isValid = vs.hidden[r] == 0 && (vs.sources[r] & needed) == needed;
        vs.validRow[r] = isValid ? ++k : 0;
    }
    return k;
}

// One pass over the table for each model in turn; the order matters, since
// model 1 leaves the tau-squared that models 2 and 4 use.
void Analysis::DoMeta(int run, int pass) {
    const PassLayout layout = Layout(*this);
    const bool named = vs.levelPresent[0];
    const MHIndex mh = UseMH ? MHIndexOf(ComputationIndex) : MHIndex::None;

    if (run == 1) Tau2NotConverged.clear();
    // Model 1's rows, kept for an estimator other than the classic one.
    const bool ownTau2 = RandomModel.tau2 != Tau2Method::DL;
    std::vector<double> rowPoints, rowVariances;
    std::vector<int> rowBlocks;

    for (int m = 1; m <= NumberOfModels; ++m) {
        ModelPass model(vs, run, m, mh);
        if (m == 3 || m == 5) model.SetPooled(GetT2MP());
        BlockSums group;
        BlockSums total;
        int groupFirst = NoRow, groupLast = NoRow, totalFirst = NoRow, totalLast = NoRow;
        std::size_t nextCalc = 0;
        for (int r = 0; r < vs.Rows(); ++r) {
            const RowKind kind = vs.kind[r];
            if (kind != RowKind::Study) {
                if (kind == RowKind::Subgroup && group.K > 0)
                    model.WriteSummary(r, group, false, groupFirst, groupLast);
                total.Add(group);
                group = BlockSums();
                groupFirst = groupLast = NoRow;
                if (kind == RowKind::Overall) {
                    if (total.K > 0) model.WriteSummary(r, total, true, totalFirst, totalLast);
                    total = BlockSums();
                    totalFirst = totalLast = NoRow;
                }
                continue;
            }
            while (nextCalc < layout.calcRows.size() && layout.calcRows[nextCalc] < r)
                ++nextCalc;
            const int groupRow =
                nextCalc < layout.calcRows.size() ? layout.calcRows[nextCalc] : NoRow;
            const int v = vs.validRow[r];
            if (run != 1 && v >= 1 && v == pass && named)
                PassStudyName = std::string(vs.PopulationText(0, r));
            if (!Uses(run, pass, v)) continue;
            if (groupFirst == NoRow) groupFirst = r;
            if (totalFirst == NoRow) totalFirst = r;
            groupLast = totalLast = r;
            vs.refLineSub[r] = groupRow;
            vs.refLineTot[r] = layout.totalRow;
            MHRow terms;
            if (model.UsesMH()) {
                const std::array<double, 4> c = MHCells(r);
                terms = GetMHVals(mh, c[0], c[1], c[2], c[3]);
            }
            model.TakeRow(r, vs.point[r], vs.variance[r],
                          model.TauWithin(groupRow, layout.totalRow),
                          model.UsesMH() ? &terms : nullptr, group);
            if (m == 1 && ownTau2) {
                rowPoints.push_back(vs.point[r]);
                rowVariances.push_back(vs.variance[r]);
                rowBlocks.push_back(groupRow);
            }
        }
        if (m == 1 && ownTau2)
            EstimateRandomTau2(run, layout.calcRows, rowPoints, rowVariances, rowBlocks);
        if (m == 5 && layout.totalRow != NoRow) {
            // One group: the total is that of the pooled tau-squared.
            if (FullyRandomOneGroup()) {
                for (Stat stat : {Stat::SummaryPoint, Stat::SummaryVariance, Stat::GroupT2,
                                  Stat::GroupT2Variance})
                    vs.Ref(stat, run, 5)
                        .Set(layout.totalRow, vs.Ref(stat, run, 3).Value(layout.totalRow));
            } else {
                GetFullyRandom(run, layout.totalRow);
            }
        }
    }
}

void Analysis::RunPasses() {
    ValidCount = SetValidLines(0, vs.LastRow());
    DoMeta(1, 0);
    CopyBlockResults(1);
    for (int run : {2, 3}) {
        if (RunOptions[static_cast<std::size_t>(run - 1)]) RunSensitivity(run);
    }
}

// A study row takes the results of its own block, so that every view can
// read them on the row.
void Analysis::CopyBlockResults(int run) {
    std::vector<Column<double>*> cols;
    for (int m = 1; m <= NumberOfModels; ++m) {
        for (Stat stat : CopiedStats) {
            if (Column<double>* col = vs.Find(stat, run, m)) cols.push_back(col);
        }
    }
    int block = NoRow;
    for (int r = vs.LastRow(); r >= 0; --r) {
        if (vs.IsCalculations(r)) {
            block = r;
        } else if (vs.blockLine[r] != 0 && block >= 0 && vs.validRow[r] > 0) {
            for (Column<double>* col : cols)
                (*col)[r] = (*col)[block];
        }
    }
}

}  // namespace synthara::analysis
