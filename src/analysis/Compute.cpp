// Compute: rebuilds the rows of the working table and runs every pass.
#include <algorithm>
#include <numeric>
#include <vector>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::analysis {

namespace {

class BusyGuard {
  public:
    explicit BusyGuard(bool& flag) : flag_(flag) { flag_ = true; }
    ~BusyGuard() { flag_ = false; }
    BusyGuard(const BusyGuard&) = delete;
    BusyGuard& operator=(const BusyGuard&) = delete;

  private:
    bool& flag_;
};

}  // namespace

ComputeStatus Analysis::Compute() {
    if (busy_) return ComputeStatus::Busy;
    BusyGuard guard(busy_);

    NumberOfModels = ModelsToRun();
    CICritical = analysis::CICritical(CILevel);
    if (const ComputeStatus status = FindIndex(); status != ComputeStatus::Done) return status;
    // A Mantel-Haenszel summary needs each study's own 2x2 table, which a
    // mean of several rows does not have.
    if (UseMH && selection.AnyMean()) {
        prompter_.Message(IndexRefusedBox());
        return ComputeStatus::MeanRefused;
    }
    if (UseMH) LoadMHCells();
    if (Grouped() && !LoadGroups()) return ComputeStatus::NoGroupColumn;

    RestoreRows();
    RemoveStudies();
    MergeLevels();
    InsertSummaryBlocks();
    // Made once the rows stand, so that a new column is born at its length.
    EnsureColumns();
    RunPasses();
    for (int m = 1; m <= NumberOfModels; ++m)
        DisplayWeights(m);
    FilterRows();
    SetRowKinds();
    return ComputeStatus::Done;
}

// The statistics' columns are made only for the run and the models in use,
// so a table of many rows holds no column no pass writes. Compute makes them
// anew each time, since the models in use follow the options, and an earlier
// run's figures must not linger on a row now left out.
void Analysis::EnsureColumns() {
    constexpr int run = 1;
    vs.DropStats();
    for (int m = 1; m <= NumberOfModels; ++m) {
        for (int s = 0; s <= static_cast<int>(LastCalcStat); ++s)
            vs.Ensure(static_cast<Stat>(s), run, m);
        vs.Ensure(Stat::WtPct, run, m);
        vs.Ensure(Stat::WtPctG, run, m);
    }
    if (UseMH) {
        for (int i = 0; i < MHTermCount; ++i)
            vs.Ensure(static_cast<Stat>(static_cast<int>(FirstMHStat) + i), run, 1);
    }
    for (int r : {2, 3}) {
        if (RunOptions[static_cast<std::size_t>(r - 1)]) EnsureRunColumns(r);
    }
}

// The omit-one and cumulative runs leave on each row only the results its
// views read: those a study row copies from its block.
void Analysis::EnsureRunColumns(int run) {
    for (int m = 1; m <= NumberOfModels; ++m) {
        for (Stat stat : CopiedStats)
            vs.Ensure(stat, run, m);
    }
}

// Two models without a grouping; with one, as many as the models on show need
// (asking for model 2 alone runs model 3 as well).
int Analysis::ModelsToRun() const {
    if (!Grouped()) return 2;
    const auto wanted = [&](int m) {
        return CompModelA[1][static_cast<std::size_t>(m)] ||
               CompModelA[2][static_cast<std::size_t>(m)];
    };
    if (wanted(5)) return 5;
    if (wanted(4)) return 4;
    if (wanted(2) || wanted(3)) return 3;
    return 2;
}

// The rows as the sheet gave them: inserted rows (summary blocks, merged
// rows) go, hidden rows come back, what a pass wrote is cleared, and the
// order is the entry order with the identifying columns as the sort keys.
// Rows without identity or data never entered the table.
void Analysis::RestoreRows() {
    std::vector<int> source;
    source.reserve(static_cast<std::size_t>(vs.Rows()));
    for (int r = 0; r < vs.Rows(); ++r) {
        if (vs.sheetRow[r] >= 0) source.push_back(r);
    }
    if (static_cast<int>(source.size()) != vs.Rows()) {
        // Usually only the total's block at the end goes: the table is cut short.
        bool prefix = true;
        for (std::size_t i = 0; i < source.size() && prefix; ++i)
            prefix = source[i] == static_cast<int>(i);
        if (prefix)
            vs.SetRows(static_cast<int>(source.size()));
        else
            vs.RebuildRows(source);
    }
    vs.hidden.Fill(0);
    vs.kind.Fill(RowKind::Study);
    const bool grouped = Grouped();
    for (int r = 0; r < vs.Rows(); ++r) {
        const int sheetRow = vs.sheetRow[r] - sheet::FixedRowCount;
        vs.groupBy[r] = grouped ? groupCodes_[static_cast<std::size_t>(sheetRow)] : EmptyText;
    }
    vs.blockLine.Fill(NoLine);
    vs.view.Fill(RowView::None);
    vs.validRow.Fill(0);
    vs.refLineSub.Fill(NoRow);
    vs.refLineTot.Fill(NoRow);
    SortRows();
}

// By entry order, then one stable ascending sort on the identifying columns,
// study name first, so that the rows of a study stand together, then on the
// group, keeping that order within a group. All come to one stable sort on
// (group, identifying levels, entry order); the texts compare by their
// ranks, worked out once per text. The table moves once, and not at all when
// its order stands.
void Analysis::SortRows() {
    const int count = vs.Rows();
    if (count < 2) return;
    std::vector<const Column<Code>*> levels;
    if (Grouped()) levels.push_back(&vs.groupBy);
    for (std::size_t i = 0; i < vs.population.size(); ++i)
        if (vs.levelPresent[i]) levels.push_back(&vs.population[i]);
    if (levels.empty() && !vs.hasEntrySeq) return;

    const std::vector<std::uint32_t>& rank = vs.texts.SortRanks();
    const auto before = [&](int a, int b) {
        for (const Column<Code>* level : levels) {
            const std::uint32_t ra = rank[(*level)[a]];
            const std::uint32_t rb = rank[(*level)[b]];
            if (ra != rb) return ra < rb;
        }
        return vs.hasEntrySeq && vs.entrySeq[a] < vs.entrySeq[b];
    };
    std::vector<int> source(static_cast<std::size_t>(count));
    std::iota(source.begin(), source.end(), 0);
    bool sorted = true;
    for (int r = 1; r < count && sorted; ++r)
        sorted = !before(r, r - 1);
    if (sorted) return;
    std::stable_sort(source.begin(), source.end(), before);
    vs.RebuildRows(source);
}

// A block of ten rows after each group (when `groupBy` changes from one row
// to the next) and one at the end for the total, all hidden for now.
void Analysis::InsertSummaryBlocks() {
    const int rows = vs.Rows();
    std::vector<int> groupEnds;  // last row of each group, when there is a grouping
    // A group whose rows were all left out or merged away gets no block.
    int taking = 0;
    for (int r = 0; r < rows && Grouped(); ++r) {
        if (vs.hidden[r] == 0) ++taking;
        if (r + 1 >= rows || vs.groupBy[r + 1] != vs.groupBy[r]) {
            if (taking > 0) groupEnds.push_back(r);
            taking = 0;
        }
    }

    struct Block {
        int at;      // first row of the block in the new table
        int source;  // the study row its identity is copied from; -1 when none
        Code group;
        RowKind kind;
    };
    std::vector<Block> blocks;
    int lastStudy = rows - 1;  // where the last row of the table ends up
    if (groupEnds.empty()) {
        vs.SetRows(rows + BlockRows);
    } else {
        std::vector<int> source;
        source.reserve(static_cast<std::size_t>(rows) + (groupEnds.size() + 1) * BlockRows);
        std::size_t next = 0;
        for (int r = 0; r < rows; ++r) {
            if (r == rows - 1) lastStudy = static_cast<int>(source.size());
            source.push_back(r);
            if (next < groupEnds.size() && groupEnds[next] == r) {
                blocks.push_back(
                    {static_cast<int>(source.size()), r, vs.groupBy[r], RowKind::Subgroup});
                source.insert(source.end(), BlockRows, -1);
                ++next;
            }
        }
        source.insert(source.end(), BlockRows, -1);
        vs.RebuildRows(source);
        // The copy rows moved down with the inserted blocks above them.
        int shift = 0;
        for (Block& b : blocks) {
            b.source += shift;
            shift += BlockRows;
        }
    }
    blocks.push_back(
        {vs.Rows() - BlockRows, lastStudy, vs.texts.Intern(Word::Overall), RowKind::Overall});
    for (const Block& b : blocks)
        LabelBlock(b.at, b.source, b.kind, b.group);
}

void Analysis::LabelBlock(int firstRow, int sourceRow, RowKind kind, Code group) {
    for (int i = 0; i < BlockRows; ++i) {
        const int r = firstRow + i;
        vs.hidden[r] = 1;
        vs.kind[r] = kind;
        vs.groupBy[r] = group;
        vs.blockLine[r] = static_cast<std::int8_t>(i);
    }
    if (sourceRow < 0) return;
    for (Column<Code>& level : vs.population)
        level[firstRow] = level[sourceRow];
}

std::vector<int> Analysis::CalculationRows() const {
    std::vector<int> rows;
    for (int r = 0; r < vs.Rows(); ++r) {
        if (vs.IsCalculations(r)) rows.push_back(r);
    }
    return rows;
}

// Which model rows of each block are on show. Without a grouping the fixed
// and the random row follow RunWhich and the others stay hidden; with one,
// each block's rows follow the flags of its kind, and the total may be
// hidden as a whole.
void Analysis::FilterRows() {
    const bool grouped = Grouped();
    for (int calc : CalculationRows()) {
        const bool overall = vs.kind[calc] == RowKind::Overall;
        const auto& flags = CompModelA[overall ? 2 : 1];
        for (int m = 1; m < BlockRows; ++m) {
            const auto i = static_cast<std::size_t>(m);
            bool shown = false;
            if (m <= NumberOfModels) {
                if (!grouped)
                    shown = m <= 2 && RunWhich[i];
                else
                    shown = flags[i] && (!overall || ShowOverall);
            }
            vs.hidden[calc + m] = shown ? 0 : 1;
        }
    }
}

// `Temp03`, the row kind the views go by.
void Analysis::SetRowKinds() {
    for (int r = 0; r < vs.Rows(); ++r) {
        switch (vs.kind[r]) {
            case RowKind::Subgroup:
                vs.view[r] = RowView::Subgroup;
                break;
            case RowKind::Overall:
                vs.view[r] = RowView::Overall;
                break;
            case RowKind::Study:
                vs.view[r] = vs.hidden[r] != 0 ? RowView::None : RowView::Study;
                break;
        }
    }
}

}  // namespace synthara::analysis
