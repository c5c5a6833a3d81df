#pragma once
// The working table `vs`: one row per study row the sheet gave and per row of
// the summary blocks, held as typed columns. It keeps what a run reads of the
// sheet (the identifying cells as codes of a text pool, the index's point and
// variance as doubles) and what the passes write (one column of doubles per
// statistic, run and model), never a copy of the sheet's grid. Rows are
// numbered from 0; there are no header rows.
//
// Adding a column of the rows is one member line: a `Column` made with
// `list_` follows every change of the rows. A statistic per run and model is
// one entry of `Stat`.
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/Column.h"
#include "analysis/ColumnKeys.h"
#include "analysis/TextPool.h"

namespace synthara::analysis {

// `Temp01`: what a row is.
enum class RowKind : std::uint8_t { Study, Subgroup, Overall };
// `Temp03`: the row kind the views go by; None for a hidden study row.
enum class RowView : std::uint8_t { None, Study, Subgroup, Overall };
// `HideCol`: why a row is out of the analysis.
enum class HideReason : std::uint8_t {
    None,
    MissingData,
    NoData,
    Combined,
    ExcludedByUser,
    ExcludedBySequence,
    NotSpecified,
};
std::string_view HideWord(HideReason reason);  // "" for None, else the word the views show
// `SubGroup Merge`: how a merged study row was obtained.
enum class MergeKind : std::uint8_t { None, MiniMeta, OneSubgroup, CollapseCells, ReverseAnova };
std::string_view MergeWord(MergeKind kind);  // "", "Mini Meta", "One subgroup", ...

// Which of the index's cells a row holds (an empty cell is absent; text that
// is no number is present and reads as 0).
namespace Source {
inline constexpr std::uint8_t Point = 1;
inline constexpr std::uint8_t StdErr = 2;
inline constexpr std::uint8_t Variance = 4;
}  // namespace Source

inline constexpr int NoRow = -1;
inline constexpr std::int8_t NoLine = -1;  // `blockLine` of a study row
inline constexpr int PopulationLevels = 5;

// The counts of a row's raw data, as the sheet's display columns of these
// names hold them: of group 1, group 2 and both (3), and of one group (0).
inline constexpr int CountColumns = 22;
inline constexpr std::array<std::string_view, CountColumns> CountNames = {
    "N(1)",   "N(2)",      "N(3)",   "Events(1)",   "Events(2)",   "Events(3)",
    "ccN(1)", "ccN(2)",    "ccN(3)", "Exposed(1)",  "Exposed(2)",  "Exposed(3)",
    "NPY(1)", "NPY(2)",    "NPY(3)", "EventsPY(1)", "EventsPY(2)", "EventsPY(3)",
    "N(0)",   "Events(0)", "NPY(0)", "EventsPY(0)"};

// One statistic's column resolved for a pass: a column that was not made
// reads as empty and drops writes. An empty cell holds NaN and reads as 0.
class StatRef {
  public:
    StatRef() = default;
    explicit StatRef(Column<double>* column) : column_(column) {}
    explicit operator bool() const { return column_ != nullptr; }

    // The stored value, NaN when empty or not made.
    double Value(int row) const;
    // The value as a pass reads it: 0 for an empty cell.
    double Get(int row) const;
    void Set(int row, double value) {
        if (column_ != nullptr) (*column_)[row] = value;
    }

  private:
    Column<double>* column_ = nullptr;
};

class WorkingTable {
  public:
    WorkingTable() = default;
    WorkingTable(const WorkingTable&) = delete;
    WorkingTable& operator=(const WorkingTable&) = delete;

    // No rows, no statistics, no texts.
    void Clear();

    int Rows() const { return rows_; }
    int LastRow() const { return rows_ - 1; }
    // Cut short, or lengthened with blank rows.
    void SetRows(int rows);
    // New row i is old row source[i], or a new blank row where source[i] is
    // -1: removing and inserting many rows is one sweep of each column.
    void RebuildRows(const std::vector<int>& source);

    TextPool texts;
    // Which identifying levels the sheet has a column for, study name first.
    std::array<bool, PopulationLevels> levelPresent{};
    bool hasEntrySeq = false;  // the sheet numbers its rows in `EntrySeq`

  private:
    ColumnList list_;  // made before the columns that join it

  public:
    // The sheet's row a row was filled from; NoRow on an inserted row
    // (what `OriginalRow` = "Original" says).
    Column<int> sheetRow{list_, NoRow};
    Column<int> entrySeq{list_, 0};  // `EntrySeq`; 0 where the cell was empty
    std::array<Column<Code>, PopulationLevels> population{
        Column<Code>(list_, EmptyText), Column<Code>(list_, EmptyText),
        Column<Code>(list_, EmptyText), Column<Code>(list_, EmptyText),
        Column<Code>(list_, EmptyText)};
    Column<Code> groupBy{list_, EmptyText};  // `Group by`
    Column<std::uint8_t> sources{list_, 0};  // Source:: flags of the index's cells
    Column<double> point{list_, 0.0};        // through `colPointSource`
    Column<double> variance{list_, 0.0};     // through `colVarianceSource`

    // `cMergeTypeCol`: the sheet's merge code of the row's format (MergeCode,
    // Collapse.h); on an inserted row the code its merge used, and 0 (a
    // meta-analysis of the rows) on a row of means whose direction was reversed.
    Column<std::int8_t> mergeCode{list_, 0};
    Column<MergeKind> merge{list_, MergeKind::None};  // `SubGroup Merge`
    // On a row inserted for a study's subgroups, where its summed 2x2 cells
    // are kept for a Mantel-Haenszel index; NoRow elsewhere.
    Column<int> mergedCells{list_, NoRow};

    Column<std::uint8_t> hidden{list_, 0};
    Column<HideReason> hide{list_, HideReason::None};
    Column<RowKind> kind{list_, RowKind::Study};
    // `Model`: the line of a summary block, 0 ("Calculations") to 9.
    Column<std::int8_t> blockLine{list_, NoLine};
    Column<RowView> view{list_, RowView::None};
    Column<int> validRow{list_, 0};        // `ValidRow`
    Column<int> refLineSub{list_, NoRow};  // `RefLineSub`
    Column<int> refLineTot{list_, NoRow};  // `RefLineTot`

    std::string_view PopulationText(int level, int row) const {
        return texts.Text(population[static_cast<std::size_t>(level)][row]);
    }
    bool IsCalculations(int row) const {
        return blockLine[row] == 0 && kind[row] != RowKind::Study;
    }

    // The moderator columns of the sheet, in the sheet's order, by their
    // titles; each holds its cells as codes of `texts` ("" where empty), and
    // a merged row holds the value its rows share, else "Combined".
    int ModeratorCount() const { return static_cast<int>(moderators_.size()); }
    const std::vector<std::string>& ModeratorTitles() const { return moderatorTitles_; }
    // The moderator of that title; -1 when none.
    int FindModerator(std::string_view title) const;
    Column<Code>& Moderator(int moderator) { return *moderators_[Index(moderator)]; }
    const Column<Code>& Moderator(int moderator) const { return *moderators_[Index(moderator)]; }
    std::string_view ModeratorText(int moderator, int row) const {
        return texts.Text(Moderator(moderator)[row]);
    }
    // A new moderator column, empty at the table's length.
    Column<Code>& AddModerator(std::string title);

    // A count's column (index into CountNames), nullptr when no row has
    // that count; an empty cell holds NaN.
    const Column<double>* Count(int count) const { return counts_[Index(count)].get(); }
    Column<double>* Count(int count) { return counts_[Index(count)].get(); }
    // The count's column, made empty at the table's length when there is none yet.
    Column<double>& EnsureCount(int count);

    // A statistic's column of one run and model; nullptr until made.
    Column<double>* Find(Stat stat, int run, int model);
    const Column<double>* Find(Stat stat, int run, int model) const;
    // The column of a key ("cQ(1,2)"), read without regard to case.
    const Column<double>* Find(std::string_view key) const;
    // The column, made empty at the table's length when there is none yet.
    Column<double>& Ensure(Stat stat, int run, int model);
    StatRef Ref(Stat stat, int run, int model) { return StatRef(Find(stat, run, model)); }
    // Every statistic's column goes; the next Ensure makes it anew.
    void DropStats();

  private:
    static std::size_t Slot(Stat stat, int run, int model);
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    int rows_ = 0;
    // Columns made for what the sheet holds (moderators, counts): they follow
    // the rows like the member columns and go with Clear.
    std::vector<std::unique_ptr<Column<Code>>> moderators_;
    std::vector<std::string> moderatorTitles_;
    std::array<std::unique_ptr<Column<double>>, CountColumns> counts_{};
    std::vector<ColumnBase*> sheetColumns_;
    std::array<std::unique_ptr<Column<double>>, MaxRuns * MaxModels * StatCount> stats_{};
    std::vector<Column<double>*> made_;  // the statistics' columns that exist
};

}  // namespace synthara::analysis
