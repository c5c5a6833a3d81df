// The passes: valid rows, DoMeta, and the copy of each block's results onto
// its study rows. Every column is resolved once per pass; the rows are read
// and written through those references, and the sums are kept in locals.
#include <algorithm>
#include <array>
#include <vector>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"
#include "analysis/MetaVals.h"
#include "sheet/grid/Sheet.h"

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
    ColRef point, variance, tauWithin, tauBetween, totalVariance, mhQ, ivWeight, mhWeight, w1,
        rawWeight, pointWt, pointSqWt, wsq, wcu, c, b, q, qdf, i2, k, summaryPoint, summaryVariance,
        groupT2, groupT2Variance;
    std::array<ColRef, MHTermCount> mh;

    ModelCols(WorkingTable& vs, int run, int model) {
        const auto ref = [&](std::string_view stem) {
            return vs.Ref(RunModelKey(stem, run, model));
        };
        point = ref(Stem::Point);
        variance = ref(Stem::Variance);
        tauWithin = ref(Stem::TauWithin);
        tauBetween = ref(Stem::TauBetween);
        totalVariance = ref(Stem::TotalVariance);
        mhQ = ref(Stem::MHQ);
        ivWeight = ref(Stem::IVWeight);
        mhWeight = ref(Stem::MHWeight);
        w1 = ref(Stem::W1);
        rawWeight = ref(Stem::RawWeight);
        pointWt = ref(Stem::PointWt);
        pointSqWt = ref(Stem::PointSqWt);
        wsq = ref(Stem::Wsq);
        wcu = ref(Stem::Wcu);
        c = ref(Stem::C);
        b = ref(Stem::B);
        q = ref(Stem::Q);
        qdf = ref(Stem::Qdf);
        i2 = ref(Stem::I2);
        k = ref(Stem::K);
        summaryPoint = ref(Stem::SummaryPoint);
        summaryVariance = ref(Stem::SummaryVariance);
        groupT2 = ref(Stem::GroupT2);
        groupT2Variance = ref(Stem::GroupT2Variance);
        for (std::size_t i = 0; i < mh.size(); ++i)
            mh[i] = ref(MHStems[i]);
    }
};

enum class RowKind : unsigned char { Study, Subgroup, Overall };

// Whether run `run` takes a row numbered v in pass `pass`.
bool Uses(int run, int pass, double v) {
    switch (run) {
        case 2:
            return v > 0 && v != pass;
        case 3:
            return v >= 1 && v <= pass;
        default:
            return v > 0;
    }
}

// What one pass needs of every model: row kinds and the blocks' rows.
struct PassLayout {
    int first = 0;
    int last = -1;
    std::vector<RowKind> kind;  // by row - first
    std::vector<int> calcRows;  // each block's "Calculations" row
    int totalRow = -1;          // the total's "Calculations" row

    RowKind Kind(int row) const { return kind[static_cast<std::size_t>(row - first)]; }
};

PassLayout Layout(Analysis& a) {
    PassLayout p;
    p.first = WorkingTable::FirstDataRow;
    p.last = a.vs.LastRow();
    ColRef temp01 = a.vs.Ref(Key::Temp01);
    p.kind.reserve(static_cast<std::size_t>(std::max(p.last - p.first + 1, 0)));
    for (int r = p.first; r <= p.last; ++r) {
        RowKind k = RowKind::Study;
        if (temp01.TextIs(r, Word::Subgroup))
            k = RowKind::Subgroup;
        else if (temp01.TextIs(r, Word::Overall))
            k = RowKind::Overall;
        p.kind.push_back(k);
    }
    p.calcRows = a.CalculationRows();
    if (!p.calcRows.empty()) p.totalRow = p.calcRows.back();
    return p;
}

// One model's part of a pass: writes a study row's terms and a block's
// summary through columns resolved once.
class ModelPass {
  public:
    ModelPass(WorkingTable& vs, int run, int model) : mc_(vs, run, model), model_(model) {
        // Model 1 hands its tau-squared to the random models (2 and 4) through
        // their `Group T^2` cells, before those models run.
        for (int m : {1, 2, 4}) {
            tauTargets_.push_back({vs.Ref(RunModelKey(Stem::GroupT2, run, m)),
                                   vs.Ref(RunModelKey(Stem::GroupT2Variance, run, m))});
        }
    }

    // The tau-squared added to a row's variance under this model.
    double TauWithin(int groupRow, int totalRow) const {
        switch (model_) {
            case 2:
                return mc_.groupT2.Get(totalRow);
            case 4:
                return mc_.groupT2.Get(groupRow);
            case 3:
            case 5:
                return pooledT2_;
            default:
                return 0;
        }
    }

    // Writes the row's terms and adds them to the block's sums.
    void TakeRow(int r, double point, double variance, double tauWithin, BlockSums& sums) {
        // Under Mantel-Haenszel, model 1 takes its weight and terms from the
        // row's 2x2 cells, and the ratio itself as its point.
        const double tauBetween = 0;
        const double totalVariance = tauBetween + (tauWithin + variance);
        const double ivWeight = 1 / totalVariance;
        const double w = ivWeight;
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

    // The summary of a block on its "Calculations" row.
    void WriteSummary(int row, const BlockSums& s, bool overall) {
        const MetaVals v = ComputeMetaVals({s.W1, s.Wsq, s.Wcu, s.K, s.PointWt, s.PointSqWt});
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
        // Under Mantel-Haenszel, model 1's mean and variance are converted here.
        mc_.summaryPoint.Set(row, v.mean);
        mc_.summaryVariance.Set(row, v.variance);
        if (model_ != 1) return;
        // Under Mantel-Haenszel, Q, T2 and I2 are taken anew around the
        // Mantel-Haenszel mean (ComputeMetaVals2) before this point.
        mc_.i2.Set(row, v.I2);
        for (TauTarget& t : tauTargets_) {
            t.t2.Set(row, v.T2);
            t.variance.Set(row, v.varT2);
        }
    }

  private:
    struct TauTarget {
        ColRef t2, variance;
    };
    ModelCols mc_;
    int model_;
    std::vector<TauTarget> tauTargets_;
    // Models 3 and 5 take one pooled tau-squared for all rows (with a grouping).
    double pooledT2_ = 0;
};

}  // namespace

int Analysis::SetValidLines(int first, int last) {
    ColRef valid = vs.Ref(Key::ValidRow);
    ColRef point = vs.Ref(Key::PointSource);
    ColRef se = vs.Ref(Key::SeSource);
    last = std::min(last, vs.LastRow());
    int k = 0;
    for (int r = std::max(first, 0); r <= last; ++r) {
        const bool isValid = !vs.grid.RowHidden(r) && !point.Blank(r) && !se.Blank(r);
        valid.Set(r, isValid ? ++k : 0);
    }
    return k;
}

// One pass over the table for each model in turn; the order matters, since
// model 1 leaves the tau-squared that models 2 and 4 use.
void Analysis::DoMeta(int run, int pass) {
    const PassLayout layout = Layout(*this);
    ColRef validRow = vs.Ref(Key::ValidRow);
    ColRef pointSource = vs.Ref(Key::PointSource);
    ColRef varianceSource = vs.Ref(Key::VarianceSource);
    ColRef refLineSub = vs.Ref(Key::RefLineSub);
    ColRef refLineTot = vs.Ref(Key::RefLineTot);
    const int studyCol = vs.Find(sheet::PopulationNames[0]);

    for (int m = 1; m <= NumberOfModels; ++m) {
        ModelPass model(vs, run, m);
        BlockSums group;
        BlockSums total;
        std::size_t nextCalc = 0;
        for (int r = layout.first; r <= layout.last; ++r) {
            const RowKind kind = layout.Kind(r);
            if (kind != RowKind::Study) {
                if (kind == RowKind::Subgroup && group.K > 0) model.WriteSummary(r, group, false);
                total.Add(group);
                group = BlockSums();
                if (kind == RowKind::Overall) {
                    if (total.K > 0) model.WriteSummary(r, total, true);
                    total = BlockSums();
                }
                continue;
            }
            while (nextCalc < layout.calcRows.size() && layout.calcRows[nextCalc] < r)
                ++nextCalc;
            const int groupRow = nextCalc < layout.calcRows.size() ? layout.calcRows[nextCalc] : -1;
            const double v = validRow.Get(r);
            if (run != 1 && v >= 1 && v == pass && studyCol >= 0)
                PassStudyName = vs.grid.Text(r, studyCol);
            if (!Uses(run, pass, v)) continue;
            refLineSub.Set(r, groupRow);
            refLineTot.Set(r, layout.totalRow);
            model.TakeRow(r, pointSource.Get(r), varianceSource.Get(r),
                          model.TauWithin(groupRow, layout.totalRow), group);
        }
    }
}

void Analysis::RunPasses() {
    ValidCount = SetValidLines(WorkingTable::FirstDataRow, vs.LastRow());
    DoMeta(1, 0);
    CopyBlockResults(1);
    // The omit-one and cumulative runs add their k passes here, each followed
    // by the copy of its own run's results.
}

// A study row takes the results of its own block, so that every view can
// read them on the row.
void Analysis::CopyBlockResults(int run) {
    std::vector<ColRef> cols;
    for (int m = 1; m <= NumberOfModels; ++m) {
        for (std::string_view stem : CopiedStems) {
            if (ColRef ref = vs.Ref(RunModelKey(stem, run, m))) cols.push_back(ref);
        }
    }
    ColRef model = vs.Ref(Key::Model);
    ColRef temp01 = vs.Ref(Key::Temp01);
    ColRef validRow = vs.Ref(Key::ValidRow);
    int block = -1;
    for (int r = vs.LastRow(); r >= WorkingTable::FirstDataRow; --r) {
        const bool calculations = model.TextIs(r, Word::Calculations);
        if (calculations && (temp01.TextIs(r, Word::Subgroup) || temp01.TextIs(r, Word::Overall))) {
            block = r;
        } else if (!calculations && block >= 0 && validRow.Get(r) > 0) {
            for (ColRef& col : cols)
                col.Assign(r, col.At(block));
        }
    }
}

}  // namespace synthara::analysis
