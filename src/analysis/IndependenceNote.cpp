// The notes under the summary when rows of one study were combined as if
// they were independent.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <absl/container/flat_hash_map.h>

#include "analysis/Analysis.h"
#include "analysis/Result.h"

namespace synthara::analysis {

namespace {

// Whether two rows that take part belong to one study and the same key
// above `level` but differ at `level`: data of one study counted twice at
// that level.
bool TwoOrMoreAt(const WorkingTable& vs, int level) {
    const auto at = static_cast<std::size_t>(level - 1);
    absl::flat_hash_map<std::array<Code, PopulationLevels - 1>, Code> seen;
    for (int r = 0; r < vs.Rows(); ++r) {
        if (vs.view[r] != RowView::Study || vs.validRow[r] <= 0) continue;
        std::array<Code, PopulationLevels - 1> key{};
        for (std::size_t i = 0; i < at; ++i)
            key[i] = vs.population[i][r];
        const auto [it, added] = seen.try_emplace(key, vs.population[at][r]);
        if (!added && it->second != vs.population[at][r]) return true;
    }
    return false;
}

std::string Plural(int level) {
    return LevelWord(level) + "s";
}

}  // namespace

std::vector<std::string> IndependenceNotes(const Analysis& analysis) {
    const WorkingTable& vs = analysis.vs;
    std::vector<int> levels;
    for (int level = 3; level <= PopulationLevels; ++level) {
        if (vs.levelPresent[static_cast<std::size_t>(level - 1)] && TwoOrMoreAt(vs, level))
            levels.push_back(level);
    }
    std::vector<std::string> notes;
    if (!levels.empty()) {
        std::string list;
        for (std::size_t i = 0; i < levels.size(); ++i) {
            if (i > 0) list += i + 1 == levels.size() ? " and " : ",";
            list += Plural(levels[i]);
        }
        notes.push_back(
            "The overall statistics are computed by combining data across " + list +
            " and treating these as independent.  If studies yield data for two or more " + list +
            " the assumption of independence is unlikely to be correct.  The standard error for "
            "the overall effect will likely be erroneously small, the confidence interval too "
            "narrow, and statistical significance tests likely to reject MORE often than the "
            "nominal significance level.");
    }
    const int grouped = analysis.GroupLevel();
    if (grouped >= 3 && std::find(levels.begin(), levels.end(), grouped) != levels.end()) {
        const std::string w = LevelWord(grouped);
        notes.push_back(
            "The comparison of treatment effects as a function of " + w +
            " assumes that the data for the various " + w +
            "s are independent of each other. If studies yield data for two or more " + w +
            "s the assumption of independence is unlikely to be correct.  The standard error of "
            "the difference is likely to be too WIDE, the confidence interval too wide, and the "
            "statistical significance tests that compare the treatment effect across " +
            w + "s are likely to reject LESS often than the nominal significance level.");
    }
    return notes;
}

}  // namespace synthara::analysis
