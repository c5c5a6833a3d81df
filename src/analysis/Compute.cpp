// Compute: rebuilds the rows of the working table and runs every pass.
#include <algorithm>
#include <string>
#include <vector>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"
#include "sheet/grid/Sheet.h"

namespace synthara::analysis {

namespace {

using sheet::MetaRow;

class BusyGuard {
  public:
    explicit BusyGuard(bool& flag) : flag_(flag) { flag_ = true; }
    ~BusyGuard() { flag_ = false; }
    BusyGuard(const BusyGuard&) = delete;
    BusyGuard& operator=(const BusyGuard&) = delete;

  private:
    bool& flag_;
};

// The identifying columns present, level 1 (study name) first.
std::vector<int> PopulationCols(const sheet::Grid& g) {
    std::vector<int> cols;
    for (std::string_view name : sheet::PopulationNames) {
        for (int c = 0; c < g.Cols(); ++c) {
            if (g.TextIs(MetaRow::Function, c, "Populations") &&
                g.TextIs(MetaRow::Attribute, c, name)) {
                cols.push_back(c);
                break;
            }
        }
    }
    return cols;
}

}  // namespace

ComputeStatus Analysis::Compute() {
    if (busy_) return ComputeStatus::Busy;
    BusyGuard guard(busy_);

    // Without a grouping two models run: fixed, and random ignoring grouping.
    // A grouping fills `Group by` from its column before the blocks are
    // inserted and raises the number of models for the mixed and fully random
    // rows it shows; the passes already walk one block per group.
    NumberOfModels = 2;
    CICritical = analysis::CICritical(CILevel);
    if (const ComputeStatus status = FindIndex(); status != ComputeStatus::Done) return status;
    // Mantel-Haenszel needs the 2x2 terms of model 1 in the pass.
    if (UseMH) return ComputeStatus::NotAvailable;

    if (computed_) ClearWorkingColumns();
    RestoreRows();
    RemoveStudies();
    InsertSummaryBlocks();
    // Made once the rows stand, so that a new column is born at its length.
    EnsureColumns();
    RunPasses();
    for (int m = 1; m <= NumberOfModels; ++m)
        DisplayWeights(m);
    ShowModelRows();
    SetRowKinds();
    computed_ = true;
    return ComputeStatus::Done;
}

// The calculation columns are made here, in the working table and not in the
// sheet, and only for the run and the models in use: the sheet stays as the
// user built it, and a table of many rows is not widened by columns no pass
// writes. Compute asks for them each time, since the models in use follow the
// options; columns already there are kept.
void Analysis::EnsureColumns() {
    constexpr int run = 1;
    for (int m = 1; m <= NumberOfModels; ++m) {
        for (const CalcStem& s : CalcStems)
            vs.Ensure(RunModelKey(s.stem, run, m), s.title, "Calc");
        for (const CalcStem& s : WeightStems)
            vs.Ensure(RunModelKey(s.stem, run, m), s.title, "Influence");
    }
    if (UseMH) {
        for (std::string_view stem : MHStems)
            vs.Ensure(RunModelKey(stem, run, 1), stem.substr(0, stem.size() - 1), "Calc");
    }
}

// What an earlier Compute wrote into the data rows, so that a row now left
// out carries no figures of a pass it no longer belongs to.
void Analysis::ClearWorkingColumns() {
    std::vector<ColRef> cols;
    for (std::string_view key : {Key::ValidRow, Key::Temp01, Key::Temp03, Key::Model,
                                 Key::ModelDisplay, Key::RefLineSub, Key::RefLineTot})
        cols.push_back(vs.Ref(key));
    for (int m = 1; m <= MaxModels; ++m) {
        for (const CalcStem& s : CalcStems)
            cols.push_back(vs.Ref(RunModelKey(s.stem, 1, m)));
        for (const CalcStem& s : WeightStems)
            cols.push_back(vs.Ref(RunModelKey(s.stem, 1, m)));
    }
    for (std::string_view stem : MHStems)
        cols.push_back(vs.Ref(RunModelKey(stem, 1, 1)));
    for (ColRef& col : cols) {
        if (!col) continue;
        for (int r = WorkingTable::FirstDataRow; r <= vs.LastRow(); ++r)
            col.Clear(r);
    }
}

// The rows as the sheet gave them: inserted rows (summary blocks, merged
// rows) and rows without identity or data go, hidden rows come back, and the
// order is the entry order with the identifying columns as the sort keys.
void Analysis::RestoreRows() {
    sheet::Grid& g = vs.grid;
    const int first = WorkingTable::FirstDataRow;
    std::vector<int> keyCols = PopulationCols(g);
    for (int c = 0; c < g.Cols(); ++c) {
        if (g.TextIs(MetaRow::Function, c, "Data Entry")) keyCols.push_back(c);
    }
    ColRef original = vs.Ref(Key::OriginalRow);
    std::vector<int> source;
    source.reserve(static_cast<std::size_t>(g.Rows()));
    for (int r = 0; r < g.Rows(); ++r) {
        bool keep = r < first;
        if (!keep && original.TextIs(r, Word::Original)) {
            keep = std::any_of(keyCols.begin(), keyCols.end(),
                               [&](int c) { return !g.IsBlank(r, c); });
        }
        if (keep) source.push_back(r);
    }
    if (static_cast<int>(source.size()) != g.Rows()) {
        // Usually only the total's block at the end goes: the table is cut short.
        bool prefix = true;
        for (std::size_t i = 0; i < source.size() && prefix; ++i)
            prefix = source[i] == static_cast<int>(i);
        if (prefix)
            g.SetRows(static_cast<int>(source.size()));
        else
            vs.RebuildRows(source);
    }
    for (int r = first; r < g.Rows(); ++r)
        g.SetRowHidden(r, false);
    SortRows();
}

// By entry order, then one stable ascending sort on the identifying columns,
// study name first, so that the rows of a study stand together. The two sorts
// run on a narrow grid of the key columns and each row's place; the table
// itself then moves once, and not at all when its order stands.
void Analysis::SortRows() {
    const sheet::Grid& g = vs.grid;
    const int first = WorkingTable::FirstDataRow;
    const int count = g.Rows() - first;
    if (count < 2) return;
    std::vector<int> keyCols;
    if (const int seq = vs.Find(Key::EntrySeq); seq >= 0) keyCols.push_back(seq);
    const std::vector<int> pop = PopulationCols(g);
    keyCols.insert(keyCols.end(), pop.begin(), pop.end());
    if (keyCols.empty()) return;

    sheet::Grid keys;
    const int place = static_cast<int>(keyCols.size());
    keys.SetCols(place + 1);
    keys.SetRows(count);
    for (std::size_t k = 0; k < keyCols.size(); ++k) {
        for (int i = 0; i < count; ++i)
            keys.Set(i, static_cast<int>(k), g.At(first + i, keyCols[k]));
    }
    for (int i = 0; i < count; ++i)
        keys.SetNumber(i, place, i);
    const int seqKeys = vs.Find(Key::EntrySeq) >= 0 ? 1 : 0;
    if (seqKeys == 1) keys.SortRows(0, count - 1, 0, 0);
    if (place > seqKeys) keys.SortRows(0, count - 1, seqKeys, place - 1);

    std::vector<int> source(static_cast<std::size_t>(g.Rows()));
    bool moved = false;
    for (int r = 0; r < g.Rows(); ++r) {
        const int from =
            r < first ? r : first + static_cast<int>(keys.At(r - first, place).Number());
        source[static_cast<std::size_t>(r)] = from;
        moved = moved || from != r;
    }
    if (moved) vs.RebuildRows(source);
}

// Rows without a point or a variance of the index stay in the table, hidden,
// with their reason. The user's own exclusions join here with the selection.
void Analysis::RemoveStudies() {
    ColRef hide = vs.Ref(Key::HideCol);
    ColRef point = vs.Ref(Key::PointSource);
    ColRef variance = vs.Ref(Key::VarianceSource);
    const sheet::Cell missing = sheet::Cell::FromText(std::string(Word::MissingData));
    for (int r = WorkingTable::FirstDataRow; r <= vs.LastRow(); ++r) {
        if (point.Blank(r) || variance.Blank(r)) {
            vs.grid.SetRowHidden(r, true);
            hide.Assign(r, missing);
        } else {
            hide.Clear(r);
        }
    }
}

// A block of ten rows after each group (when `Group by` changes from one row
// to the next) and one at the end for the total, all hidden for now.
void Analysis::InsertSummaryBlocks() {
    const int first = WorkingTable::FirstDataRow;
    const int rows = vs.grid.Rows();
    ColRef groupBy = vs.Ref(Key::GroupBy);
    std::vector<int> groupEnds;  // last row of each group, when there is a grouping
    for (int r = first; r < rows; ++r) {
        if (groupBy.Blank(r)) continue;
        if (r + 1 >= rows || groupBy.At(r + 1).Text() != groupBy.At(r).Text())
            groupEnds.push_back(r);
    }

    struct Block {
        int at;      // first row of the block in the new table
        int source;  // the study row its identity is copied from; -1 when none
        std::string group;
        bool overall;
    };
    std::vector<Block> blocks;
    int lastStudy = rows - 1;  // where the last row of the table ends up
    if (groupEnds.empty()) {
        vs.grid.SetRows(rows + BlockRows);
    } else {
        std::vector<int> source;
        source.reserve(static_cast<std::size_t>(rows) + (groupEnds.size() + 1) * BlockRows);
        std::size_t next = 0;
        for (int r = 0; r < rows; ++r) {
            if (r == rows - 1) lastStudy = static_cast<int>(source.size());
            source.push_back(r);
            if (next < groupEnds.size() && groupEnds[next] == r) {
                blocks.push_back({static_cast<int>(source.size()), r, groupBy.At(r).Text(), false});
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
    blocks.push_back({vs.grid.Rows() - BlockRows, lastStudy >= first ? lastStudy : -1,
                      std::string(Word::Overall), true});
    for (const Block& b : blocks)
        LabelBlock(b.at, b.source, b.overall ? Word::Overall : Word::Subgroup, b.group);
}

void Analysis::LabelBlock(int firstRow, int sourceRow, std::string_view kind,
                          std::string_view group) {
    sheet::Grid& g = vs.grid;
    ColRef temp01 = vs.Ref(Key::Temp01);
    ColRef groupBy = vs.Ref(Key::GroupBy);
    ColRef model = vs.Ref(Key::Model);
    ColRef modelDisplay = vs.Ref(Key::ModelDisplay);
    for (int i = 0; i < BlockRows; ++i) {
        const int r = firstRow + i;
        g.SetRowHidden(r, true);
        temp01.SetText(r, kind);
        groupBy.SetText(r, group);
        model.SetText(r, ModelLabels[static_cast<std::size_t>(i)]);
        if (i == 1)
            modelDisplay.SetText(r, Word::Fixed);
        else if (i >= 2 && i <= MaxModels)
            modelDisplay.SetText(r, Word::Random);
    }
    if (sourceRow < 0) return;
    for (int c : PopulationCols(g))
        g.Set(firstRow, c, g.At(sourceRow, c));
}

std::vector<int> Analysis::CalculationRows() const {
    std::vector<int> rows;
    const int modelCol = vs.Find(Key::Model);
    const int kindCol = vs.Find(Key::Temp01);
    if (modelCol < 0 || kindCol < 0) return rows;
    const sheet::Grid& g = vs.grid;
    for (int r = WorkingTable::FirstDataRow; r < g.Rows(); ++r) {
        if (g.TextIs(r, modelCol, Word::Calculations) &&
            (g.TextIs(r, kindCol, Word::Subgroup) || g.TextIs(r, kindCol, Word::Overall)))
            rows.push_back(r);
    }
    return rows;
}

// Which model rows of each block are on show. Without a grouping the fixed
// and the random row follow RunWhich and the others stay hidden.
void Analysis::ShowModelRows() {
    for (int calc : CalculationRows()) {
        for (int m = 1; m < BlockRows; ++m) {
            const bool shown =
                m <= 2 && m <= NumberOfModels && RunWhich[static_cast<std::size_t>(m)];
            vs.grid.SetRowHidden(calc + m, !shown);
        }
    }
}

// `Temp03`, the row kind the views go by.
void Analysis::SetRowKinds() {
    ColRef temp01 = vs.Ref(Key::Temp01);
    ColRef temp03 = vs.Ref(Key::Temp03);
    const sheet::Cell none = sheet::Cell::FromText(std::string(Word::None));
    const sheet::Cell study = sheet::Cell::FromText(std::string(Word::Study));
    const sheet::Cell subgroup = sheet::Cell::FromText(std::string(Word::Subgroup));
    const sheet::Cell overall = sheet::Cell::FromText(std::string(Word::Overall));
    for (int r = WorkingTable::FirstDataRow; r <= vs.LastRow(); ++r) {
        if (temp01.TextIs(r, Word::Subgroup))
            temp03.Assign(r, subgroup);
        else if (temp01.TextIs(r, Word::Overall))
            temp03.Assign(r, overall);
        else
            temp03.Assign(r, vs.grid.RowHidden(r) ? none : study);
    }
}

}  // namespace synthara::analysis
