// The one-study-removed and cumulative runs: their passes, worked from
// running sums, against the full pass over the table for the same row, and
// their edge cases.
#include <cmath>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "AnalysisFixture.h"
#include "analysis/ColumnKeys.h"
#include "support/Tolerance.h"

namespace synthara::analysis {
namespace {

using testing::AnalysisFixture;
using testing::IsNear;
using testing::RowValues;

// Rows with 2x2 tables, their log odds ratio and its variance; one table
// with a zero cell.
std::vector<RowValues> Tables(bool grouped) {
    const std::array<std::array<double, 4>, 7> cells = {{{4, 119, 11, 128},
                                                         {6, 300, 29, 274},
                                                         {0, 228, 11, 209},
                                                         {62, 1353, 248, 1261},
                                                         {33, 536, 47, 576},
                                                         {18, 136, 37, 107},
                                                         {8, 253, 10, 61}}};
    std::vector<RowValues> rows;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        std::array<double, 4> c = cells[i];
        if (c[0] == 0)
            for (double& x : c)
                x += 0.5;
        const double point = std::log(c[0] * c[3] / (c[1] * c[2]));
        const double variance = 1 / c[0] + 1 / c[1] + 1 / c[2] + 1 / c[3];
        const std::string group = grouped ? (i < 3 ? "x" : i < 5 ? "y" : "z") : "";
        rows.push_back({"S" + std::to_string(i + 1), point, variance, group, cells[i]});
    }
    return rows;
}

// Many rows of varied weights, so that the tau-squared of a pass stays near
// that of all rows and the passes take their sums from series.
std::vector<RowValues> ManyRows(bool grouped) {
    std::vector<RowValues> rows;
    for (int i = 0; i < 240; ++i) {
        const double point = std::sin(i * 1.7) * 0.8 + 0.1;
        const double variance = 0.02 + 0.3 * (1 + std::cos(i * 0.9)) / 2;
        char name[8];
        std::snprintf(name, sizeof name, "S%03d", i);
        rows.push_back({name, point, variance, grouped ? std::string(1, 'a' + i % 3) : ""});
    }
    return rows;
}

void RunEveryPassOverTheTable(const std::vector<RowValues>& rows, bool grouped, const char* index,
                              int run) {
    SCOPED_TRACE(std::string(index) + (grouped ? ", grouped, run " : ", run ") +
                 std::to_string(run) + ", rows " + std::to_string(rows.size()));
    AnalysisFixture f(rows, index);
    if (grouped) f.analysis.GroupBy = "Arm";
    f.analysis.RunOptions[static_cast<std::size_t>(run - 1)] = true;
    f.Run();
    ASSERT_EQ(f.status, ComputeStatus::Done);
    Analysis& a = f.analysis;
    WorkingTable& vs = a.vs;
    for (int m = 1; m <= a.NumberOfModels; ++m) {
        for (int s = 0; s < StatCount; ++s)
            vs.Ensure(static_cast<Stat>(s), run, m);
    }
    for (int r = 0; r < vs.Rows(); ++r) {
        if (vs.kind[r] != RowKind::Study || vs.validRow[r] <= 0) continue;
        // The row's own pass over the whole table leaves its block's results
        // on the block's row.
        a.DoMeta(run, vs.validRow[r]);
        const int block = vs.refLineSub[r];
        for (int m = 1; m <= a.NumberOfModels; ++m) {
            const double k = vs.Ref(Stat::K, run, m).Get(r);
            if (k == 0) continue;  // the pass left the block without rows
            for (Stat stat : CopiedStats) {
                SCOPED_TRACE(RunModelKey(stat, run, m) + " of " + std::to_string(vs.validRow[r]));
                EXPECT_TRUE(IsNear(vs.Ref(stat, run, m).Value(r), vs.Ref(stat, run, m).Value(block),
                                   1e-12, 1e-12));
            }
        }
    }
}

TEST(Sensitivity, EachPassIsThePassOverTheTable) {
    for (int run : {2, 3}) {
        RunEveryPassOverTheTable(Tables(true), true, "Odds ratio", run);
        RunEveryPassOverTheTable(Tables(true), true, "MH odds ratio", run);
        RunEveryPassOverTheTable(Tables(false), false, "MH odds ratio", run);
        RunEveryPassOverTheTable(ManyRows(false), false, "Odds ratio", run);
        RunEveryPassOverTheTable(ManyRows(true), true, "Odds ratio", run);
    }
}

std::vector<PassResult> Passes(Analysis& a, int run) {
    std::vector<PassResult> out;
    ForEachPass(a, run, [&](const PassResult& p) { out.push_back(p); });
    return out;
}

TEST(Sensitivity, TheLastCumulativePassIsTheAnalysisOfAllRows) {
    AnalysisFixture f(Tables(false));
    f.analysis.RunOptions[2] = true;
    const AnalysisResult r = f.Run();
    const std::vector<PassResult> passes = Passes(f.analysis, 3);
    ASSERT_EQ(passes.size(), 14u);  // 7 passes of 2 models
    for (int m = 0; m < 2; ++m) {
        const PassResult& last = passes[static_cast<std::size_t>(12 + m)];
        const SummaryResult& all = r.summaries[static_cast<std::size_t>(m)];
        EXPECT_EQ(last.study, "S7");
        EXPECT_EQ(last.k, 7);
        EXPECT_TRUE(IsNear(*last.estimate.point, *all.estimate.point));
        EXPECT_TRUE(IsNear(*last.estimate.se, *all.estimate.se));
    }
    EXPECT_EQ(passes.front().k, 1);
    // The first pass is the first study alone.
    EXPECT_TRUE(IsNear(*passes.front().estimate.point, *r.studies.front().estimate.point));
}

TEST(Sensitivity, OneValidStudyLeavesTheOmitOnePassEmpty) {
    for (int run : {2, 3}) {
        AnalysisFixture f({{"A", 0.3, 0.04}, {"B", std::nullopt, std::nullopt}});
        f.analysis.RunOptions[static_cast<std::size_t>(run - 1)] = true;
        const AnalysisResult r = f.Run();
        const std::vector<PassResult> passes = Passes(f.analysis, run);
        ASSERT_EQ(passes.size(), 2u);
        if (run == 2) {
            EXPECT_EQ(passes[0].k, 0);
            EXPECT_FALSE(passes[0].estimate.point.has_value());
        } else {
            EXPECT_EQ(passes[1].k, 1);
            EXPECT_EQ(*passes[1].estimate.point, *r.summaries[1].estimate.point);
        }
    }
}

// Reports each pass, asks for another Compute while the passes run, and
// cancels after the third.
class CancellingProgress final : public ports::Progress {
  public:
    explicit CancellingProgress(Analysis& a) : a_(a) {}
    void Start(const std::string& caption, int total) override {
        caption_ = caption;
        total_ = total;
    }
    void Step() override {
        ++steps_;
        reentered_ = a_.Compute();
    }
    void Finish() override { finished_ = true; }
    void SetText(const std::string& text) override { text_ = text; }
    bool Cancelled() const override { return steps_ == 3; }

    Analysis& a_;
    std::string caption_, text_;
    int total_ = 0, steps_ = 0;
    bool finished_ = false;
    ComputeStatus reentered_ = ComputeStatus::Done;
};

TEST(Sensitivity, ProgressTellsEachPassAndMayCancel) {
    for (int run : {2, 3}) {
        AnalysisFixture f(Tables(false));
        CancellingProgress progress(f.analysis);
        f.analysis.SetProgress(progress);
        f.analysis.RunOptions[static_cast<std::size_t>(run - 1)] = true;
        f.Run();
        EXPECT_EQ(progress.total_, 7);
        EXPECT_EQ(progress.steps_, 3);
        EXPECT_TRUE(progress.finished_);
        EXPECT_EQ(progress.reentered_, ComputeStatus::Busy);
        if (run == 2) {
            EXPECT_EQ(progress.caption_, "Omit one");
            EXPECT_EQ(progress.text_,
                      "Running analysis with one study omitted on each "
                      "pass\nOmitted on this pass: S3");
            continue;
        }
        EXPECT_EQ(progress.caption_, "Cumulative analysis");
        EXPECT_EQ(progress.text_,
                  "Running cumulative analysis with 3 studies\nAdded on this pass: S3");
        // The rows the run did not reach hold nothing of it.
        const std::vector<PassResult> passes = Passes(f.analysis, 3);
        EXPECT_EQ(passes[4].k, 3);  // pass 3, the fixed model
        EXPECT_EQ(passes[6].k, 0);  // pass 4
    }
}

}  // namespace
}  // namespace synthara::analysis
