// Combining the rows of one study: at the time-point, outcome and comparison
// levels by the user's option, then the subgroups when the study is the unit.
#include <cmath>
#include <optional>
#include <vector>

#include "analysis/Analysis.h"
#include "analysis/Collapse.h"
#include "analysis/ColumnKeys.h"

namespace synthara::analysis {

namespace {

// The word an inserted row takes at the merged level when it has no rows to
// take a value from.
constexpr std::array<std::string_view, PopulationLevels> kCombinedLevelWords = {
    "", "CombinedSubgroups", "CombinedComparisons", "CombinedOutcomes", "CombinedTimePoints"};

constexpr std::uint8_t kAllSources = Source::Point | Source::StdErr | Source::Variance;

}  // namespace

void Analysis::MergeLevels() {
    mergedMH_.clear();
    for (int level = PopulationLevels; level >= 3; --level) {
        if (!vs.levelPresent[static_cast<std::size_t>(level - 1)]) continue;
        switch (selection.Level(level).use) {
            case LevelUse::One:
                SelectByPriority(level);
                break;
            case LevelUse::Mean:
                Aggregate(level);
                break;
            case LevelUse::All:
                if (CoarserMergeFollows(level)) MiniMerge(level);
                break;
        }
    }
    if (vs.levelPresent[1]) MergeSubgroups();
}

bool Analysis::CoarserMergeFollows(int level) const {
    for (int coarser = 3; coarser < level; ++coarser) {
        if (vs.levelPresent[static_cast<std::size_t>(coarser - 1)] &&
            selection.Level(coarser).use == LevelUse::Mean)
            return true;
    }
    return vs.levelPresent[1] && selection.studyIsUnit;
}

void Analysis::HideRowsWithoutData() {
    constexpr std::uint8_t needed = Source::Point | Source::Variance;
    for (int r = 0; r < vs.Rows(); ++r) {
        if ((vs.sources[r] & needed) != needed) {
            vs.hidden[r] = 1;
            vs.hide[r] = HideReason::NoData;
        }
    }
}

std::vector<Analysis::MergeGroup> Analysis::MergeGroups(int level) const {
    const auto differs = [&](int a, int b) {
        if (vs.groupBy[a] != vs.groupBy[b]) return true;
        for (int i = 0; i < level - 1; ++i) {
            const Column<Code>& col = vs.population[static_cast<std::size_t>(i)];
            if (col[a] != col[b]) return true;
        }
        return false;
    };
    std::vector<MergeGroup> groups;
    int start = 0;
    for (int r = 1; r <= vs.Rows(); ++r) {
        if (r == vs.Rows() || differs(r, r - 1)) {
            groups.push_back({start, r - 1});
            start = r;
        }
    }
    return groups;
}

void Analysis::SelectByPriority(int level) {
    HideRowsWithoutData();
    const std::vector<Code> sequence = CodesOf(selection.Level(level).sequence);
    const Column<Code>& cells = vs.population[static_cast<std::size_t>(level - 1)];
    for (const MergeGroup& g : MergeGroups(level)) {
        int winner = NoRow;
        for (std::size_t i = 0; i < sequence.size() && winner == NoRow; ++i) {
            for (int r = g.first; r <= g.last && winner == NoRow; ++r) {
                if (vs.hidden[r] == 0 && cells[r] == sequence[i]) winner = r;
            }
        }
        // A block where no value of the sequence is found stays as it stood.
        if (winner == NoRow) continue;
        for (int r = g.first; r <= g.last; ++r) {
            if (r == winner) continue;
            vs.hidden[r] = 1;
            vs.hide[r] = HideReason::ExcludedBySequence;
        }
    }
}

void Analysis::Aggregate(int level) {
    MergeStep(level, MergeRule::Mean);
}

void Analysis::MiniMerge(int level) {
    MergeStep(level, MergeRule::MiniMeta);
}

void Analysis::MergeSubgroups() {
    if (selection.studyIsUnit)
        MergeStep(2, MergeRule::Subgroups);
    else
        HideRowsWithoutData();  // subgroups are the unit: only the tidying
}

int Analysis::GetMergeMode(int first, int last) const {
    int seen = -1;
    for (int r = first; r <= last; ++r) {
        if (vs.hidden[r] != 0) continue;
        const int code = vs.mergeCode[r];
        if (seen >= 0 && code != seen) return MergeCode::MiniMeta;
        seen = code;
    }
    return seen < 0 ? MergeCode::MiniMeta : seen;
}

// Every group of rows (see MergeGroups) gets one row inserted below it that
// stands for the group: its identifying cells at and below the level are
// the value the group's visible rows share, else "Combined"; its point and
// variance come from the rule; the group's visible rows go out "Combined".
// A group without a visible row gets its row hidden, "No Data". Merging
// subgroups leaves a study of one visible row as it is, and one whose rows
// cannot be merged.
void Analysis::MergeStep(int level, MergeRule rule) {
    HideRowsWithoutData();
    const std::vector<MergeGroup> groups = MergeGroups(level);

    struct Plan {
        bool insert = false;
        bool hasData = false;
        PointVariance value;
        MergeKind kind = MergeKind::None;
        std::int8_t code = MergeCode::MiniMeta;
        std::array<Code, PopulationLevels> identity{};
        std::array<double, 4> cells{};  // the subgroups' 2x2 cells summed
    };
    std::vector<Plan> plans(groups.size());
    const Code combined = vs.texts.Intern(Word::Combined);
    std::optional<CellCollapser> collapser;
    if (rule == MergeRule::Subgroups && sheet_ != nullptr)
        collapser.emplace(*sheet_, ComputationIndex, RowOptions, prompter_);
    bool unmerged = false;
    std::vector<int> visible;
    std::vector<double> points, variances;
    std::vector<int> sheetRows;

    for (std::size_t gi = 0; gi < groups.size(); ++gi) {
        const MergeGroup& g = groups[gi];
        Plan& p = plans[gi];
        visible.clear();
        for (int r = g.first; r <= g.last; ++r)
            if (vs.hidden[r] == 0) visible.push_back(r);
        if (rule == MergeRule::Subgroups && visible.size() == 1) {
            vs.merge[visible[0]] = MergeKind::OneSubgroup;
            continue;
        }
        int mode = MergeCode::MiniMeta;
        if (rule == MergeRule::Subgroups && !visible.empty()) {
            mode = GetMergeMode(g.first, g.last);
            if (mode == MergeCode::NotSpecified) {
                unmerged = true;
                continue;
            }
        }
        p.insert = true;
        for (std::size_t i = 0; i < p.identity.size(); ++i) {
            const Column<Code>& col = vs.population[i];
            const int at = static_cast<int>(i) + 1;  // the level of the column
            if (at < level) {
                p.identity[i] = col[g.first];
            } else if (!vs.levelPresent[i]) {
                p.identity[i] = EmptyText;
            } else if (visible.empty()) {
                p.identity[i] = at == level ? vs.texts.Intern(kCombinedLevelWords[i]) : EmptyText;
            } else {
                p.identity[i] = col[visible[0]];
                for (const int r : visible)
                    if (col[r] != p.identity[i]) p.identity[i] = combined;
            }
        }
        if (visible.empty()) continue;

        points.clear();
        variances.clear();
        for (const int r : visible) {
            points.push_back(vs.point[r]);
            variances.push_back(vs.variance[r]);
        }
        p.hasData = true;
        // Subgroups are disjoint samples: the study's table is their sum.
        if (rule == MergeRule::Subgroups && UseMH) {
            for (const int r : visible) {
                const std::array<double, 4> cells = MHCells(r);
                for (std::size_t i = 0; i < cells.size(); ++i)
                    p.cells[i] += cells[i];
            }
        }
        if (rule == MergeRule::Mean) {
            // The mean of the variances, not the variance of the mean: the rows
            // are taken as wholly correlated, so the merged row is no more
            // precise than its average member.
            const auto k = static_cast<double>(visible.size());
            for (std::size_t i = 0; i < visible.size(); ++i) {
                p.value.point += points[i] / k;
                p.value.variance += variances[i] / k;
            }
        } else if (mode == MergeCode::MiniMeta) {
            p.value = FastMeta(points, variances);
            p.kind = visible.size() == 1 ? MergeKind::OneSubgroup : MergeKind::MiniMeta;
        } else {
            sheetRows.clear();
            for (const int r : visible)
                sheetRows.push_back(vs.sheetRow[r]);
            const std::optional<PointVariance> value =
                collapser ? collapser->Recompute(mode, sheetRows) : std::nullopt;
            p.hasData = value.has_value();
            if (value) p.value = *value;
            p.kind =
                mode == MergeCode::RecreateMeansOneGroup || mode == MergeCode::RecreateMeansTwoGroup
                    ? MergeKind::ReverseAnova
                    : MergeKind::CollapseCells;
            p.code = static_cast<std::int8_t>(mode);
        }
    }
    if (unmerged) prompter_.Message({"", {"Could not merge subgroups"}, ports::Icon::Information});

    std::vector<int> source;
    source.reserve(static_cast<std::size_t>(vs.Rows()) + groups.size());
    for (std::size_t gi = 0; gi < groups.size(); ++gi) {
        for (int r = groups[gi].first; r <= groups[gi].last; ++r)
            source.push_back(r);
        if (plans[gi].insert) source.push_back(NoRow);
    }
    if (static_cast<int>(source.size()) == vs.Rows()) return;
    vs.RebuildRows(source);

    int shift = 0;
    for (std::size_t gi = 0; gi < groups.size(); ++gi) {
        const Plan& p = plans[gi];
        const int first = groups[gi].first + shift;
        const int last = groups[gi].last + shift;
        if (!p.insert) continue;
        ++shift;
        const int row = last + 1;
        vs.entrySeq[row] = vs.entrySeq[first];
        vs.groupBy[row] = vs.groupBy[first];
        for (std::size_t i = 0; i < p.identity.size(); ++i)
            vs.population[i][row] = p.identity[i];
        vs.mergeCode[row] = p.code;
        vs.merge[row] = p.kind;
        if (rule == MergeRule::Subgroups && UseMH) {
            vs.mergedCells[row] = static_cast<int>(mergedMH_.size());
            mergedMH_.push_back(p.cells);
        }
        if (p.hasData) {
            vs.point[row] = p.value.point;
            vs.variance[row] = p.value.variance;
            vs.sources[row] = kAllSources;
        } else {
            vs.hidden[row] = 1;
            vs.hide[row] = HideReason::NoData;
        }
        MergeModeratorsAndCounts(first, last, row, rule == MergeRule::Subgroups);
        for (int r = first; r <= last; ++r) {
            if (vs.hidden[r] != 0) continue;
            vs.hidden[r] = 1;
            vs.hide[r] = HideReason::Combined;
        }
    }
}

// The inserted row's moderators are the value the visible rows of its group
// share, else "Combined". Each count is the mean over the visible rows that
// have it, since rows of one study at a level describe the same people, or
// for subgroups, which are disjoint samples, the sum; no such row leaves it
// empty.
void Analysis::MergeModeratorsAndCounts(int first, int last, int row, bool disjoint) {
    const Code combined = vs.texts.Intern(Word::Combined);
    for (int m = 0; m < vs.ModeratorCount(); ++m) {
        Column<Code>& col = vs.Moderator(m);
        bool seen = false;
        for (int r = first; r <= last; ++r) {
            if (vs.hidden[r] != 0) continue;
            if (!seen) col[row] = col[r];
            if (col[r] != col[row]) col[row] = combined;
            seen = true;
        }
    }
    for (int c = 0; c < CountColumns; ++c) {
        Column<double>* col = vs.Count(c);
        if (col == nullptr) continue;
        double sum = 0;
        int n = 0;
        for (int r = first; r <= last; ++r) {
            if (vs.hidden[r] != 0 || std::isnan((*col)[r])) continue;
            sum += (*col)[r];
            ++n;
        }
        if (n > 0) (*col)[row] = disjoint ? sum : sum / n;
    }
}

}  // namespace synthara::analysis
