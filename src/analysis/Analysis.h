#pragma once
// The analysis of a sheet: the working table `vs` and the passes that turn
// each row's point and variance into a summary per group and overall. The
// state that survives between calls of Compute lives here, as it lives with
// the analysis window; the numbers of a run live only in `vs`.
//
// The sheet handed to FillFromSheet must outlive the Computes that follow:
// another index reads its point and variance from the sheet's columns.
#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/DisplayVals.h"
#include "analysis/IndexChoice.h"
#include "analysis/Selection.h"
#include "analysis/Tau2.h"
#include "analysis/WorkingTable.h"
#include "effectsize/WorkingSet.h"
#include "ports/Progress.h"
#include "ports/Prompter.h"

namespace synthara::sheet {
class Sheet;
}

namespace synthara::analysis {

enum class ComputeStatus {
    Done,
    Busy,            // a run is in progress; nothing was done
    UnknownIndex,    // the index is not one the analysis knows ("Oops!" was shown)
    NoIndexColumns,  // the sheet has no columns for the computation index
    NoGroupColumn,   // the grouping names no moderator or identifying column
    SheetRefused,    // the sheet check refused the sheet (its box was shown)
    MeanRefused,     // "Use the mean" beside a Mantel-Haenszel index (its box was shown)
};

class Analysis {
  public:
    explicit Analysis(ports::Prompter& prompter) : prompter_(prompter) {}
    // Where the omit-one and cumulative runs report their passes.
    void SetProgress(ports::Progress& progress) { progress_ = &progress; }

    WorkingTable vs;

    // Settings kept between calls of Compute.
    std::string DisplayIndex;  // the index chosen, as the toolbar offers it
    double CILevel = DefaultCILevel;
    // RunWhich[1]: show the fixed row, RunWhich[2]: the random row (without grouping).
    std::array<bool, 3> RunWhich{false, true, true};
    // "Scale relative to maximum" of the weights view.
    bool ScaleWeightsToMaximum = false;
    // The grouping: the title of a moderator or identifying column, or
    // "No grouping" (or "") for none.
    std::string GroupBy;
    // CompModelA[1][m]: show model m on the subgroup rows; [2][m]: on the total.
    std::array<std::array<bool, MaxModels + 1>, 3> CompModelA{
        {{}, {false, true, true, true, true, true}, {false, true, true, true, true, true}}};
    bool ShowOverall = true;  // "Show overall summary" under a grouping
    // RunOptions[1]: the one-study-removed run, [2]: the cumulative run; at
    // most one of them is set.
    std::array<bool, 3> RunOptions{true, false, false};
    // Which rows enter and how the rows of one study are used; read from the
    // sheet by FillFromSheet, changed by the selection dialog.
    Selection selection;
    // Changes of this run only, made to the stored choices each time they
    // are read (the command line's options); empty for none.
    std::function<void(Selection&)> AdjustSelection;
    // The random model's estimator of tau-squared and its limits; read from
    // the sheet by FillFromSheet, then changed by AdjustRandomModel when set
    // (the command line's options). Models 3 to 5 keep the classic method.
    RandomModelOptions RandomModel;
    std::function<void(RandomModelOptions&)> AdjustRandomModel;
    // The "Calculations" rows of run 1 where the iterative estimator did not
    // converge: the random model there keeps the classic tau-squared.
    std::vector<int> Tau2NotConverged;
    // The row computation's options, for a study rebuilt from its subgroups' cells.
    effectsize::ComputeOptions RowOptions;

    // Worked out at each Compute.
    std::string ComputationIndex;
    Transform DisplayTransform = Transform::None;
    bool UseMH = false;
    double CICritical = 0;
    int NumberOfModels = 2;
    int ValidCount = 0;         // k of the last SetValidLines
    std::string PassStudyName;  // the study left out or added by the current pass
    std::string IndexLabel;     // "Effect measure:  " and the index name

    // "Run analyses", steps 1 to 4: numbers EntrySeq in the sheet, takes the
    // primary index when none is chosen, and fills `vs` in one pass over the
    // sheet's rows with what a run reads of them.
    void FillFromSheet(sheet::Sheet& sheet);

    // The fraction of a level as offered ("95%"); false when not offered.
    bool SetConfidenceLevel(std::string_view level);

    // Rebuilds the table's rows and summary blocks and runs every pass.
    ComputeStatus Compute();
    // Maps the display index to the computation index and transform, finds
    // the sheet's columns of that index and, when they are others than the
    // table holds, reads the rows' point and variance from them.
    ComputeStatus FindIndex();
    // The sheet's columns of the computation index whose values `vs` holds.
    const IndexColumns& SourceColumns() const { return sources_; }
    // Numbers the visible rows in first..last that hold a point and a
    // standard error, 1 to k, in `validRow`; every other row gets 0.
    int SetValidLines(int first, int last);
    // One pass of a run over the table for every model; `pass` is the row
    // left out (run 2) or the last row taken (run 3), ignored for run 1.
    void DoMeta(int run, int pass);
    // The pass driver: valid rows, run 1, each study row's copy of its block,
    // then the omit-one or cumulative run when asked for.
    void RunPasses();
    // The run with one study left out on each pass (2) or one more study
    // added on each pass (3): each valid row takes the results of its own
    // block in the pass that belongs to it. False when the progress port
    // cancelled it; the rows not reached hold no results of the run.
    bool RunSensitivity(int run);
    // `cWtPct` and `cWtPctG` of run 1 for one model.
    void DisplayWeights(int model);

    // Merging the rows of a study, deepest level first: at levels 5 to 3 by
    // the level's option, then the subgroups. Each acts on `vs` in place,
    // inserting a row after each group it merges and hiding the group's rows.
    void MergeLevels();
    // Keeps in each study's block the first row in the order of the level's
    // sequence; the others go out "Excluded by sequence".
    void SelectByPriority(int level);
    // The mean of the points and the mean of the variances of each group.
    void Aggregate(int level);
    // A fixed-effect meta-analysis of each group's rows.
    void MiniMerge(int level);
    // A study's subgroups made one row, when the study is the unit of analysis.
    void MergeSubgroups();
    // The merge code of the visible rows first..last: the code they share,
    // else 0 (a meta-analysis of the rows).
    int GetMergeMode(int first, int last) const;

    // Which model rows of each block are on show, by RunWhich without a
    // grouping and by CompModelA and ShowOverall with one. Compute ends with
    // it; "Show overall summary" calls it alone, since no number changes.
    void FilterRows();

    // The "Calculations" rows of the summary blocks, top to bottom; the last
    // one is the total's.
    std::vector<int> CalculationRows() const;
    bool Grouped() const { return !GroupBy.empty() && GroupBy != NoGrouping; }
    // The identifying level (1 to 5) the grouping names; 0 when it names a
    // moderator or there is none.
    int GroupLevel() const { return Grouped() ? groupLevel_ : 0; }

    // The models of a grouping. Pooled tau-squared of the groups' model 1
    // results (method of moments) and its variance; all read from run 1.
    struct PooledTau {
        double T2 = 0;
        double varT2 = 0;
    };
    PooledTau GetT2MP() const;
    // Q between the groups under model 3.
    double GetMPQB() const;
    // C and B of the groups' model 3 results taken as studies.
    double GetCforFullyRandom() const;
    double GetBforFullyRandom(double C, double T2) const;
    // Model 5's total: the groups' model 3 results combined with a
    // between-groups variance; false (nothing written) when C is 0.
    bool GetFullyRandom(int run, int totalRow);
    // True unless a second group is there.
    bool FullyRandomOneGroup() const;

    static constexpr std::string_view NoGrouping = "No grouping";
    // The 2x2 cells of a row under a Mantel-Haenszel index: events and
    // non-events of group 1, then of group 2.
    std::array<double, 4> MHCells(int row) const;

  private:
    void EnsureColumns();
    void RestoreRows();
    void SortRows();
    void RemoveStudies();
    // Hides the rows of a level's or moderator's excluded values.
    void ExcludeValues();
    void HideRowsWithoutData();
    struct MergeGroup {
        int first;
        int last;
    };
    // Runs of rows whose identifying cells above `level`, and group, agree.
    std::vector<MergeGroup> MergeGroups(int level) const;
    enum class MergeRule { Mean, MiniMeta, Subgroups };
    // The frame of Aggregate, MiniMerge and MergeSubgroups (see Merge.cpp).
    void MergeStep(int level, MergeRule rule);
    // The moderators and counts of the row inserted after first..last;
    // `disjoint` when the rows are samples of their own (subgroups).
    void MergeModeratorsAndCounts(int first, int last, int row, bool disjoint);
    // Whether a coarser level is about to be merged, so that the rows of
    // `level` used on their own must first become one row per coarser key.
    bool CoarserMergeFollows(int level) const;
    void InsertSummaryBlocks();
    void LabelBlock(int firstRow, int sourceRow, RowKind kind, Code group);
    int ModelsToRun() const;
    // Reads the grouping column's text of every row; false when no column has that title.
    bool LoadGroups();
    // Reads each row's 2x2 cells for the Mantel-Haenszel terms.
    void LoadMHCells();
    void SetRowKinds();
    void CopyBlockResults(int run);
    // The random model's tau-squared of each block by the chosen estimator,
    // into `Group T^2(run,2)` before model 2 runs; `y`, `v` and `blockOf`
    // hold model 1's rows, each with its group's "Calculations" row.
    void EstimateRandomTau2(int run, const std::vector<int>& calcRows, const std::vector<double>& y,
                            const std::vector<double>& v, const std::vector<int>& blockOf);
    void EnsureRunColumns(int run);
    // Reads every filled row's point and variance from the sheet's columns.
    void LoadSources();

    ports::Prompter& prompter_;
    const sheet::Sheet* sheet_ = nullptr;  // the sheet of the last FillFromSheet
    IndexColumns sources_;                 // the columns `vs` holds the values of
    bool busy_ = false;
    ports::NullProgress noProgress_;
    ports::Progress* progress_ = &noProgress_;
    // By sheet row less the fixed rows, read only when a run needs them:
    // the grouping column's text, and the 2x2 cells.
    std::string groupsLoaded_;  // the grouping whose texts groupCodes_ holds
    std::vector<Code> groupCodes_;
    int groupLevel_ = 0;  // of the column groupCodes_ came from
    std::vector<Code> CodesOf(const std::vector<std::string>& texts);
    bool mhLoaded_ = false;
    std::vector<std::array<double, 4>> mhCells_;
    // The summed cells of the rows merging inserted, by `mergedCells`.
    std::vector<std::array<double, 4>> mergedMH_;
};

// "00001": the entry order as five-digit text, as `EntrySeq` holds it.
std::string EntrySeqText(int n);

// The sheet's "Run analyses": the sheet check refuses or mends the sheet
// (empty identifying cells take "Blank"), its rows are tidied, and then the
// working table is filled and computed.
ComputeStatus RunAnalyses(sheet::Sheet& sheet, Analysis& analysis);

}  // namespace synthara::analysis
