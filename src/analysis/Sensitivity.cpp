// The one-study-removed and cumulative runs. Each pass is the whole analysis
// on a set of rows, but only the results a study row copies from its block
// are kept, so a pass is worked out from arrays of the valid rows rather than
// by a walk of the table: the sums of weights that do not change from pass
// to pass (the fixed model's, and the pooled tau-squared's of models 3 and 5)
// come from running sums before and after each row, added, never subtracted,
// so no precision is lost; models 2 and 4, whose tau-squared changes with the
// pass, sum their rows again.
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"
#include "analysis/MantelHaenszel.h"
#include "analysis/MetaVals.h"
#include "analysis/WeightSeries.h"

namespace synthara::analysis {

namespace {

// The sums of one set of rows under one model's weights, with the
// Mantel-Haenszel terms under model 1 of a Mantel-Haenszel index.
struct PassSums {
    MetaSums s;
    MHSums mh{};

    void Add(double w, double y) {
        s.K += 1;
        s.W += w;
        s.Wsq += w * w;
        s.Wcu += w * w * w;
        s.TW += y * w;
        s.T2W += w * y * y;
    }
    PassSums operator+(const PassSums& o) const {
        PassSums r = *this;
        r.s.K += o.s.K;
        r.s.W += o.s.W;
        r.s.Wsq += o.s.Wsq;
        r.s.Wcu += o.s.Wcu;
        r.s.TW += o.s.TW;
        r.s.T2W += o.s.T2W;
        for (std::size_t i = 0; i < mh.size(); ++i)
            r.mh[i] += o.mh[i];
        return r;
    }
};

// Rows first..last-1 of the valid rows, less `skip` (-1 for none).
struct RowSet {
    int first = 0;
    int last = 0;
    int skip = -1;
};

// A block's valid rows are first..last-1 in the order of ValidRow.
struct Span {
    int first = 0;
    int last = 0;
    int calcRow = NoRow;
};

// The sums of the rows before and after each row within its span.
struct RunningSums {
    std::vector<PassSums> before, after, own;

    template <typename Term>
    RunningSums(const std::vector<Span>& spans, int k, Term term)
        : before(static_cast<std::size_t>(k)),
          after(static_cast<std::size_t>(k)),
          own(static_cast<std::size_t>(k)) {
        for (int i = 0; i < k; ++i)
            own[static_cast<std::size_t>(i)] = term(i);
        for (const Span& s : spans) {
            PassSums acc;
            for (int i = s.first; i < s.last; ++i) {
                before[static_cast<std::size_t>(i)] = acc;
                acc = acc + own[static_cast<std::size_t>(i)];
            }
            acc = PassSums();
            for (int i = s.last - 1; i >= s.first; --i) {
                after[static_cast<std::size_t>(i)] = acc;
                acc = acc + own[static_cast<std::size_t>(i)];
            }
        }
    }
    // Run 2 leaves row i out; run 3 takes its span's rows up to row i.
    PassSums Of(int run, int i) const {
        const auto at = static_cast<std::size_t>(i);
        return run == 2 ? before[at] + after[at] : before[at] + own[at];
    }
};

struct Results {
    MetaVals v;
    double K = 0;
};

// The valid rows as arrays, in the order of ValidRow, and their blocks.
struct PassData {
    std::vector<int> row;
    std::vector<double> y, v;
    std::vector<int> span;  // the index of each row's block
    std::vector<Span> groups;
    std::vector<Span> total;  // one span of all rows
    std::vector<MHRow> mh;
};

class SensitivityRun {
  public:
    SensitivityRun(Analysis& a, int run) : a_(a), run_(run) {
        mhIndex_ = a.UseMH ? MHIndexOf(a.ComputationIndex) : MHIndex::None;
        Gather();
    }
    int Count() const { return static_cast<int>(d_.row.size()); }
    int Row(int i) const { return d_.row[static_cast<std::size_t>(i)]; }

    // Works out pass i (the row numbered i + 1) and writes its block's
    // results onto the pass's row.
    void Pass(int i) {
        const Span& g = d_.groups[static_cast<std::size_t>(d_.span[static_cast<std::size_t>(i)])];
        const RowSet group = SetOf(g, i);
        const int row = Row(i);
        const Results r1 = Model1(*fixed1_, group, i);
        // Model 2 takes the tau-squared of model 1 over all rows of the pass.
        double totalT2 = r1.v.T2;
        if (a_.Grouped()) {
            const Results total = Model1(*totalFixed1_, SetOf(d_.total.front(), i), i);
            totalT2 = total.K > 0 ? total.v.T2 : 0;
        }
        // Or the chosen estimator's, over the pass's rows of the total and
        // of the block: the one weighs the rows, the other is shown.
        double randomT2 = r1.v.T2, randomVarT2 = r1.v.varT2;
        if (a_.RandomModel.tau2 != Tau2Method::DL) {
            OwnTau2(group, randomT2, randomVarT2);
            double totalVarT2 = 0;
            if (a_.Grouped())
                OwnTau2(SetOf(d_.total.front(), i), totalT2, totalVarT2);
            else
                totalT2 = randomT2;
        }
        Write(row, 1, r1, r1.v.T2, r1.v.varT2);
        for (int m = 2; m <= a_.NumberOfModels; ++m) {
            Results r;
            if (m == 3 || m == 5) {
                r = Summarise(pooledSums_->Of(run_, i));
                Write(row, m, r, pooled_.T2, pooled_.varT2);
                continue;
            }
            r = Varying(m, d_.span[static_cast<std::size_t>(i)], group, i,
                        m == 2 ? totalT2 : (r1.K > 0 ? r1.v.T2 : 0));
            if (m == 2)
                Write(row, m, r, randomT2, randomVarT2);
            else
                Write(row, m, r, r1.v.T2, r1.v.varT2);
        }
    }

  private:
    void Gather() {
        WorkingTable& vs = a_.vs;
        const MHIndex mh = mhIndex_;
        for (int r = 0; r < vs.Rows(); ++r) {
            if (vs.kind[r] != RowKind::Study || vs.validRow[r] <= 0) continue;
            const int block = vs.refLineSub[r];
            if (d_.groups.empty() || d_.groups.back().calcRow != block) {
                const int at = static_cast<int>(d_.row.size());
                d_.groups.push_back({at, at, block});
            }
            d_.groups.back().last += 1;
            d_.span.push_back(static_cast<int>(d_.groups.size()) - 1);
            d_.row.push_back(r);
            d_.y.push_back(vs.point[r]);
            d_.v.push_back(vs.variance[r]);
            if (mh != MHIndex::None) {
                const std::array<double, 4> c = a_.MHCells(r);
                d_.mh.push_back(GetMHVals(mh, c[0], c[1], c[2], c[3]));
            }
        }
        const int k = Count();
        d_.total = {{0, k, NoRow}};
        const auto fixedTerm = [&](int i) {
            const auto at = static_cast<std::size_t>(i);
            PassSums s;
            if (mh == MHIndex::None) {
                s.Add(1 / d_.v[at], d_.y[at]);
            } else {
                s.Add(d_.mh[at].weight, MHPoint(mh, d_.y[at]));
                s.mh = d_.mh[at].terms;
            }
            return s;
        };
        fixed1_.emplace(d_.groups, k, fixedTerm);
        if (a_.Grouped()) totalFixed1_.emplace(d_.total, k, fixedTerm);
        MakeSeries();
        if (a_.NumberOfModels >= 3) {
            pooled_ = a_.GetT2MP();
            pooledSums_.emplace(d_.groups, k, [&](int i) {
                const auto at = static_cast<std::size_t>(i);
                PassSums s;
                s.Add(1 / (d_.v[at] + pooled_.T2), d_.y[at]);
                return s;
            });
        }
    }

    // The series of models 2 and 4 for each block, around the tau-squared
    // run 1 gave them: every row of the block for omit-one, none yet for
    // the cumulative run, whose passes add their rows in turn.
    void MakeSeries() {
        WorkingTable& vs = a_.vs;
        const int totalRow = a_.CalculationRows().back();
        for (int m : {2, 4}) {
            if (m > a_.NumberOfModels) continue;
            std::vector<WeightSeries>& all = m == 2 ? series2_ : series4_;
            for (const Span& g : d_.groups) {
                const double t0 = vs.Ref(Stat::GroupT2, 1, m).Get(m == 2 ? totalRow : g.calcRow);
                all.emplace_back(t0);
                for (int i = g.first; i < g.last && run_ == 2; ++i)
                    all.back().Add(d_.v[static_cast<std::size_t>(i)],
                                   d_.y[static_cast<std::size_t>(i)], 1);
            }
        }
    }

    // A model whose tau-squared t moves with the pass: from the block's
    // series when t is near enough to run 1's, else summed anew.
    Results Varying(int model, int span, const RowSet& set, int i, double t) {
        WeightSeries& block = (model == 2 ? series2_ : series4_)[static_cast<std::size_t>(span)];
        const auto at = static_cast<std::size_t>(i);
        if (run_ == 3) block.Add(d_.v[at], d_.y[at], 1);
        WeightSeries pass = block;
        if (run_ == 2) pass.Add(d_.v[at], d_.y[at], -1);
        if (const std::optional<WeightSeries::Sums> s = pass.At(t)) {
            PassSums p;
            p.s = {s->W, s->Wsq, s->Wcu, s->K, s->TW, s->T2W};
            return Summarise(p);
        }
        return Direct(set, t);
    }

    // The chosen estimator over a set of rows, in place of the classic
    // `t2` and `variance`; these stay for a set of one row and where the
    // estimator does not converge. Linear in the set, so a run with it is
    // quadratic in k where the classic one is linear.
    void OwnTau2(const RowSet& set, double& t2, double& variance) {
        setY_.clear();
        setV_.clear();
        for (int j = set.first; j < set.last; ++j) {
            if (j == set.skip) continue;
            setY_.push_back(d_.y[static_cast<std::size_t>(j)]);
            setV_.push_back(d_.v[static_cast<std::size_t>(j)]);
        }
        if (setY_.size() < 2) return;
        const Tau2Estimate e =
            EstimateTau2(a_.RandomModel.tau2, setY_, setV_, a_.RandomModel.control);
        if (!e.converged) return;
        t2 = e.tau2;
        variance = e.variance;
    }

    RowSet SetOf(const Span& s, int i) const {
        return run_ == 2 ? RowSet{s.first, s.last, i} : RowSet{s.first, i + 1, -1};
    }

    static Results Summarise(const PassSums& p) {
        Results r;
        r.K = p.s.K;
        if (r.K > 0) r.v = ComputeMetaVals(p.s);
        return r;
    }

    // Model 1 of a set of rows; under Mantel-Haenszel with the Q around the
    // Mantel-Haenszel mean, taken over the rows from the set's first to its
    // last: a row left out between them still counts there, as its cells
    // hold it from the passes before.
    Results Model1(const RunningSums& sums, const RowSet& set, int i) const {
        const PassSums p = sums.Of(run_, i);
        Results r = Summarise(p);
        if (mhIndex_ == MHIndex::None || r.K <= 0) return r;
        ConvertPointAndVariance(mhIndex_, p.mh, r.v.mean, r.v.variance);
        int first = set.first, last = set.last;
        if (set.skip == first) ++first;
        if (set.skip == last - 1) --last;
        MHHeterogeneity h;
        for (int j = first; j < last; ++j) {
            const auto at = static_cast<std::size_t>(j);
            h.Add(1 / d_.v[at], MHPointToScale(mhIndex_, MHPoint(mhIndex_, d_.y[at])), r.v.mean);
        }
        ApplyMHHeterogeneity(r.v, h);
        return r;
    }

    // The rows of the set weighted with tau-squared t, summed anew. This is
    // where the time of a run goes: four rows at a time, in lanes the
    // compiler can keep in vector registers.
    Results Direct(const RowSet& set, double t) const {
        PassSums p;
        if (set.skip < 0) {
            AddWeighted(set.first, set.last, t, p);
        } else {
            AddWeighted(set.first, set.skip, t, p);
            AddWeighted(set.skip + 1, set.last, t, p);
        }
        return Summarise(p);
    }

    void AddWeighted(int from, int to, double t, PassSums& p) const {
        constexpr int L = 4;
        const double* y = d_.y.data();
        const double* v = d_.v.data();
        double w1[L] = {}, w2[L] = {}, w3[L] = {}, tw[L] = {}, t2w[L] = {};
        int j = from;
        for (; j + L <= to; j += L) {
            for (int l = 0; l < L; ++l) {
                const double w = 1 / (t + v[j + l]);
                const double yl = y[j + l];
                w1[l] += w;
                w2[l] += w * w;
                w3[l] += w * w * w;
                tw[l] += yl * w;
                t2w[l] += w * yl * yl;
            }
        }
        for (int l = 0; l < L; ++l) {
            p.s.W += w1[l];
            p.s.Wsq += w2[l];
            p.s.Wcu += w3[l];
            p.s.TW += tw[l];
            p.s.T2W += t2w[l];
        }
        p.s.K += j - from;
        for (; j < to; ++j)
            p.Add(1 / (t + v[j]), y[j]);
    }

    void Write(int row, int model, const Results& r, double t2, double varT2) {
        WorkingTable& vs = a_.vs;
        const auto set = [&](Stat stat, double value) {
            vs.Ref(stat, run_, model).Set(row, value);
        };
        set(Stat::K, r.K);
        if (r.K <= 0) return;  // a block left without rows holds nothing
        set(Stat::C, r.v.C);
        set(Stat::B, r.v.B);
        set(Stat::Q, r.v.Q);
        set(Stat::Qdf, r.v.df);
        set(Stat::I2, r.v.I2);
        set(Stat::SummaryPoint, r.v.mean);
        set(Stat::SummaryVariance, r.v.variance);
        set(Stat::GroupT2, t2);
        set(Stat::GroupT2Variance, varT2);
    }

    Analysis& a_;
    int run_;
    MHIndex mhIndex_ = MHIndex::None;
    PassData d_;
    std::optional<RunningSums> fixed1_, totalFixed1_, pooledSums_;
    std::vector<WeightSeries> series2_, series4_;
    Analysis::PooledTau pooled_;
    std::vector<double> setY_, setV_;  // the rows of OwnTau2's set
};

std::string PassText(int run, int pass, const std::string& name) {
    if (run == 2)
        return "Running analysis with one study omitted on each pass\nOmitted on this pass: " +
               name;
    return "Running cumulative analysis with " + std::to_string(pass) +
           " studies\nAdded on this pass: " + name;
}

}  // namespace

bool Analysis::RunSensitivity(int run) {
    SensitivityRun passes(*this, run);
    const int k = passes.Count();
    if (k == 0) return true;
    const bool named = vs.levelPresent[0];
    progress_->Start(run == 2 ? "Omit one" : "Cumulative analysis", k);
    bool done = true;
    for (int i = 0; i < k; ++i) {
        const int row = passes.Row(i);
        PassStudyName = named ? std::string(vs.PopulationText(0, row)) : std::string();
        passes.Pass(i);
        progress_->SetText(PassText(run, i + 1, PassStudyName));
        progress_->Step();
        if (progress_->Cancelled()) {
            done = false;
            break;
        }
    }
    progress_->Finish();
    return done;
}

}  // namespace synthara::analysis
