// "Run analyses": how the working table is filled from the sheet.
#include <algorithm>
#include <cstdio>

#include "analysis/Analysis.h"
#include "analysis/Collapse.h"
#include "analysis/ColumnKeys.h"
#include "analysis/IndexChoice.h"
#include "analysis/RandomModel.h"
#include "sheet/grid/Sheet.h"
#include "sheet/rows/SheetCheck.h"

namespace synthara::analysis {

namespace {

using sheet::MetaRow;

// The index of the first column marked as the primary index; "" when none.
std::string PrimaryIndex(const sheet::Sheet& sheet) {
    const sheet::Grid& g = sheet.Flex();
    for (int c = 0; c < g.Cols(); ++c) {
        if (g.TextIs(MetaRow::Function, c, "Display") && g.TextIs(MetaRow::Attribute, c, "Point") &&
            g.TextIs(MetaRow::DisplayClass, c, "Primary"))
            return g.Text(MetaRow::IndexName, c);
    }
    return {};
}

// The identifying column of each level, study name first; -1 where none.
std::array<int, PopulationLevels> PopulationCols(const sheet::Grid& g) {
    std::array<int, PopulationLevels> cols{};
    cols.fill(-1);
    for (std::size_t i = 0; i < cols.size(); ++i) {
        for (int c = 0; c < g.Cols(); ++c) {
            if (g.TextIs(MetaRow::Function, c, "Populations") &&
                g.TextIs(MetaRow::Attribute, c, sheet::PopulationNames[i])) {
                cols[i] = c;
                break;
            }
        }
    }
    return cols;
}

// A cell's text as a code of the pool; an empty cell is "".
Code InternCell(TextPool& texts, const sheet::Cell& cell) {
    return cell.IsText() ? texts.Intern(cell.TextView()) : texts.Intern(cell.Text());
}

// The sheet's columns the table keeps beside the identifying ones: each
// moderator, and each count the sheet has a column for (the table's column
// is made when a row has a value).
struct SheetColumns {
    std::vector<int> moderators;
    std::vector<std::pair<int, int>> counts;  // (count, sheet column)
};

SheetColumns AddSheetColumns(const sheet::Grid& g, WorkingTable& vs) {
    SheetColumns cols;
    for (int c = 0; c < g.Cols(); ++c) {
        if (!g.TextIs(MetaRow::Function, c, "Moderator")) continue;
        cols.moderators.push_back(c);
        vs.AddModerator(g.Text(MetaRow::ColumnHeader, c));
    }
    for (int i = 0; i < CountColumns; ++i) {
        const int col = FindIndexColumns(g, CountNames[static_cast<std::size_t>(i)]).point;
        if (col >= 0) cols.counts.emplace_back(i, col);
    }
    return cols;
}

void ReadSheetColumns(const sheet::Grid& g, int sheetRow, const SheetColumns& cols,
                      WorkingTable& vs, int row) {
    for (std::size_t m = 0; m < cols.moderators.size(); ++m) {
        const int col = cols.moderators[m];
        vs.Moderator(static_cast<int>(m))[row] =
            g.IsBlank(sheetRow, col) ? EmptyText : InternCell(vs.texts, g.At(sheetRow, col));
    }
    for (const auto& [count, col] : cols.counts) {
        const sheet::Cell& cell = g.At(sheetRow, col);
        double value = 0;
        // A count's column is made at its first value: a sheet has the
        // columns of every count its blocks could give, most of them empty.
        if (!cell.IsEmpty() && cell.TryNumber(value)) vs.EnsureCount(count)[row] = value;
    }
}

std::vector<int> DataEntryCols(const sheet::Grid& g) {
    std::vector<int> cols;
    for (int c = 0; c < g.Cols(); ++c)
        if (g.TextIs(MetaRow::Function, c, "Data Entry")) cols.push_back(c);
    return cols;
}

// The point and variance of one sheet row, and which of the index's cells it has.
void ReadSources(const sheet::Grid& g, int sheetRow, const IndexColumns& cols, WorkingTable& vs,
                 int row) {
    std::uint8_t present = 0;
    double point = 0;
    double variance = 0;
    if (cols.point >= 0) {
        const sheet::Cell& cell = g.At(sheetRow, cols.point);
        if (!cell.IsEmpty()) present |= Source::Point;
        if (!cell.TryNumber(point)) point = 0;
    }
    if (cols.se >= 0 && !g.IsBlank(sheetRow, cols.se)) present |= Source::StdErr;
    if (cols.variance >= 0) {
        const sheet::Cell& cell = g.At(sheetRow, cols.variance);
        if (!cell.IsEmpty()) present |= Source::Variance;
        if (!cell.TryNumber(variance)) variance = 0;
    }
    vs.sources[row] = present;
    vs.point[row] = point;
    vs.variance[row] = variance;
}

// The "Effect direction" entry column of two groups' means: a study whose
// direction was reversed in one subgroup cannot have its means rebuilt.
int MeansDirectionColumn(const sheet::Grid& g) {
    for (int c = 0; c < g.Cols(); ++c) {
        if (g.TextIs(MetaRow::Function, c, "Data Entry") &&
            g.TextIs(MetaRow::FormatName, c, "Mean, SD and sample size in each group") &&
            g.TextIs(MetaRow::Attribute, c, "Effect direction"))
            return c;
    }
    return -1;
}

std::int8_t MergeCodeOf(const sheet::Grid& g, int row, int mergeCol, int directionCol) {
    double code = 0;
    if (mergeCol < 0 || !g.At(row, mergeCol).TryNumber(code) || code < 0 || code > 10)
        return MergeCode::NotSpecified;
    if (code == MergeCode::RecreateMeansTwoGroup) {
        double direction = 0;
        if (directionCol < 0 || !g.At(row, directionCol).TryNumber(direction) || direction != 1)
            return MergeCode::MiniMeta;
    }
    return static_cast<std::int8_t>(code);
}

}  // namespace

std::string EntrySeqText(int n) {
    char text[16];
    std::snprintf(text, sizeof text, "%05d", n);
    return text;
}

void Analysis::FillFromSheet(sheet::Sheet& sheet) {
    const int first = sheet::FixedRowCount;
    const int last = sheet.GetLastRow();
    const int seq = sheet.EntrySeqCol();
    if (seq >= 0) {
        // Cells that already hold their number are left alone: a repeated
        // "Run analyses" writes nothing into the sheet.
        const sheet::Grid& g = sheet.Flex();
        for (int r = first; r < g.Rows(); ++r) {
            if (r > last) {
                if (!g.IsBlank(r, seq)) sheet.ClearCell(r, seq);
                continue;
            }
            std::string text = EntrySeqText(r - first + 1);
            if (!g.TextIs(r, seq, text)) sheet.SetText(r, seq, std::move(text));
        }
    }
    if (DisplayIndex.empty()) DisplayIndex = PrimaryIndex(sheet);

    // Every column the run reads is found once; the rows are then read in
    // one pass, and only those columns of each row.
    const sheet::Grid& g = sheet.Flex();
    sheet_ = &sheet;
    vs.Clear();
    groupCodes_.clear();
    groupsLoaded_.clear();
    mhCells_.clear();
    mhLoaded_ = false;
    vs.hasEntrySeq = seq >= 0;
    const std::array<int, PopulationLevels> pop = PopulationCols(g);
    for (std::size_t i = 0; i < pop.size(); ++i)
        vs.levelPresent[i] = pop[i] >= 0;
    const std::vector<int> entry = DataEntryCols(g);
    const SheetColumns kept = AddSheetColumns(g, vs);
    selection = ReadSelection(g);
    if (AdjustSelection) AdjustSelection(selection);
    RandomModel = ReadRandomModel(g);
    if (AdjustRandomModel) AdjustRandomModel(RandomModel);
    const int mergeCol = sheet.MergeTypeCol();
    const int directionCol = MeansDirectionColumn(g);
    const std::optional<IndexMapping> mapping = MapIndex(DisplayIndex);
    sources_ = mapping ? FindIndexColumns(g, mapping->computation) : IndexColumns();

    // Rows without identity or data never reach the table: "Run analyses"
    // deletes them before anything is counted.
    // Room for every sheet row; cut to the rows kept at the end.
    vs.SetRows(std::max(g.Rows() - first, 0));
    int row = 0;
    vs.texts.Reserve(static_cast<std::size_t>(g.Rows() - first));
    std::array<Code, PopulationLevels> identity{};
    for (int r = first; r < g.Rows(); ++r) {
        bool keep = false;
        for (std::size_t i = 0; i < pop.size(); ++i) {
            identity[i] = EmptyText;
            if (pop[i] < 0 || g.IsBlank(r, pop[i])) continue;
            identity[i] = InternCell(vs.texts, g.At(r, pop[i]));
            keep = true;
        }
        for (std::size_t i = 0; i < entry.size() && !keep; ++i)
            keep = !g.IsBlank(r, entry[i]);
        if (!keep) continue;
        vs.sheetRow[row] = r;
        vs.entrySeq[row] = seq >= 0 && r <= last ? r - first + 1 : 0;
        for (std::size_t i = 0; i < pop.size(); ++i)
            vs.population[i][row] = identity[i];
        ReadSources(g, r, sources_, vs, row);
        ReadSheetColumns(g, r, kept, vs, row);
        vs.mergeCode[row] = MergeCodeOf(g, r, mergeCol, directionCol);
        ++row;
    }
    vs.SetRows(row);

    IndexLabel = "Effect measure:  " + DisplayIndex;
}

void Analysis::LoadSources() {
    if (sheet_ == nullptr) return;
    const sheet::Grid& g = sheet_->Flex();
    for (int row = 0; row < vs.Rows(); ++row) {
        if (vs.sheetRow[row] >= 0) ReadSources(g, vs.sheetRow[row], sources_, vs, row);
    }
}

namespace {

// The column a grouping names: a moderator by its title, or an identifying
// column by its title or its level's name; -1 when none.
int GroupColumn(const sheet::Grid& g, std::string_view name) {
    for (int c = 0; c < g.Cols(); ++c) {
        const bool moderator = g.TextIs(MetaRow::Function, c, "Moderator");
        const bool population = g.TextIs(MetaRow::Function, c, "Populations");
        if (!moderator && !population) continue;
        if (g.TextIs(MetaRow::ColumnHeader, c, name) ||
            (population && g.TextIs(MetaRow::Attribute, c, name)))
            return c;
    }
    return -1;
}

std::size_t SheetIndex(int sheetRow) {
    return static_cast<std::size_t>(sheetRow - sheet::FixedRowCount);
}

}  // namespace

bool Analysis::LoadGroups() {
    if (groupsLoaded_ == GroupBy && !groupCodes_.empty()) return true;
    if (sheet_ == nullptr) return false;
    const sheet::Grid& g = sheet_->Flex();
    const int col = GroupColumn(g, GroupBy);
    if (col < 0) return false;
    groupLevel_ = 0;
    for (std::size_t i = 0; i < sheet::PopulationNames.size(); ++i) {
        if (g.TextIs(MetaRow::Function, col, "Populations") &&
            g.TextIs(MetaRow::Attribute, col, sheet::PopulationNames[i]))
            groupLevel_ = static_cast<int>(i) + 1;
    }
    groupCodes_.assign(static_cast<std::size_t>(std::max(g.Rows() - sheet::FixedRowCount, 0)),
                       EmptyText);
    for (int row = 0; row < vs.Rows(); ++row) {
        const int r = vs.sheetRow[row];
        if (r < 0 || g.IsBlank(r, col)) continue;
        groupCodes_[SheetIndex(r)] = InternCell(vs.texts, g.At(r, col));
    }
    groupsLoaded_ = GroupBy;
    return true;
}

void Analysis::LoadMHCells() {
    if (mhLoaded_ || sheet_ == nullptr) return;
    const sheet::Grid& g = sheet_->Flex();
    std::array<int, 4> cols{};
    constexpr std::array<std::string_view, 4> names = {"MHCellA", "MHCellB", "MHCellC", "MHCellD"};
    for (std::size_t i = 0; i < cols.size(); ++i)
        cols[i] = FindIndexColumns(g, names[i]).point;
    mhCells_.assign(static_cast<std::size_t>(std::max(g.Rows() - sheet::FixedRowCount, 0)),
                    std::array<double, 4>{});
    for (int row = 0; row < vs.Rows(); ++row) {
        const int r = vs.sheetRow[row];
        if (r < 0) continue;
        std::array<double, 4>& cells = mhCells_[SheetIndex(r)];
        for (std::size_t i = 0; i < cols.size(); ++i) {
            if (cols[i] < 0 || !g.At(r, cols[i]).TryNumber(cells[i])) cells[i] = 0;
        }
    }
    mhLoaded_ = true;
}

std::array<double, 4> Analysis::MHCells(int row) const {
    const int r = vs.sheetRow[row];
    if (r < 0) {
        const int slot = vs.mergedCells[row];
        return slot >= 0 ? mergedMH_[static_cast<std::size_t>(slot)] : std::array<double, 4>{};
    }
    if (r < 0 || SheetIndex(r) >= mhCells_.size()) return {};
    return mhCells_[SheetIndex(r)];
}

bool Analysis::SetConfidenceLevel(std::string_view level) {
    const std::optional<double> fraction = ParseConfidenceLevel(level);
    if (!fraction) return false;
    CILevel = *fraction;
    return true;
}

ComputeStatus RunAnalyses(sheet::Sheet& sheet, Analysis& analysis) {
    // Nothing of the sheet reaches the working table before it is proved
    // usable: a duplicate row or a row without a study name would be merged
    // or grouped as if it were sound.
    if (!sheet::CheckData(sheet)) return ComputeStatus::SheetRefused;
    sheet.SynchData();
    analysis.FillFromSheet(sheet);
    return analysis.Compute();
}

}  // namespace synthara::analysis
