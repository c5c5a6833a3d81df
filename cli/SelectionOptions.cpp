#include "cli/SelectionOptions.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ostream>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>

#include "analysis/Analysis.h"
#include "cli/App.h"
#include "sheet/grid/MetaRows.h"
#include "sheet/grid/Sheet.h"

namespace synthara::cli {
namespace {

using analysis::LevelUse;
using sheet::MetaRow;

// An identifying column (level 1 to 5) or a moderator (level 0).
struct Target {
    int level = 0;
    int col = -1;
    std::string title;  // a moderator's title, by which the selection names it
};

std::optional<Target> FindColumn(const sheet::Grid& g, std::string_view name) {
    for (int c = 0; c < g.Cols(); ++c) {
        if (g.TextIs(MetaRow::Function, c, "Populations")) {
            for (std::size_t i = 0; i < sheet::PopulationNames.size(); ++i) {
                if (!g.TextIs(MetaRow::Attribute, c, sheet::PopulationNames[i])) continue;
                if (g.TextIs(MetaRow::ColumnHeader, c, name) || sheet::PopulationNames[i] == name)
                    return Target{static_cast<int>(i) + 1, c, {}};
            }
        }
    }
    if (const int c = analysis::ModeratorColumn(g, name); c >= 0)
        return Target{0, c, std::string(name)};
    return std::nullopt;
}

bool LevelPresent(const sheet::Grid& g, int level) {
    const auto found = FindColumn(g, sheet::PopulationNames[static_cast<std::size_t>(level - 1)]);
    return found && found->level == level;
}

bool ColumnHolds(const sheet::Sheet& sheet, int col, std::string_view value) {
    const sheet::Grid& g = sheet.Flex();
    for (int r = sheet::FixedRowCount; r <= sheet.GetLastRow(); ++r) {
        if (g.TextIs(r, col, value)) return true;
    }
    return false;
}

std::optional<LevelUse> ParseUse(std::string_view word) {
    if (word == "all") return LevelUse::All;
    if (word == "mean") return LevelUse::Mean;
    if (word == "one") return LevelUse::One;
    return std::nullopt;
}

// The level of a --sequence's LEVEL; 0 when none.
int SequenceLevel(std::string_view word) {
    if (word == "comparisons") return 3;
    if (word == "outcomes") return 4;
    if (word == "time-points") return 5;
    return 0;
}

// What the options change in the stored choices.
struct Changes {
    std::array<std::optional<std::vector<std::string>>, analysis::SelectionLevels> excluded;
    std::vector<analysis::ModeratorFilter> moderators;
    std::optional<bool> studyIsUnit;
    std::array<std::optional<LevelUse>, analysis::SelectionLevels> use;
    std::array<std::optional<std::vector<std::string>>, analysis::SelectionLevels> sequence;

    void ApplyTo(analysis::Selection& s) const {
        for (std::size_t i = 0; i < use.size(); ++i) {
            if (excluded[i]) s.levels[i].excluded = *excluded[i];
            if (use[i]) s.levels[i].use = *use[i];
            if (sequence[i]) s.levels[i].sequence = *sequence[i];
        }
        if (studyIsUnit) s.studyIsUnit = *studyIsUnit;
        for (const analysis::ModeratorFilter& f : moderators) {
            const auto same = [&](const analysis::ModeratorFilter& m) {
                return m.column == f.column;
            };
            std::erase_if(s.moderators, same);
            s.moderators.push_back(f);
        }
    }
};

std::string NoEffect(std::string_view option, int level) {
    return std::string(option) + ": the sheet has no \"" +
           std::string(sheet::PopulationNames[static_cast<std::size_t>(level - 1)]) +
           "\" column; the option has no effect\n";
}

}  // namespace

void AddSelectionOptions(CLI::App& command, SelectionArgs& args) {
    command.add_option("--exclude", args.exclude,
                       "COLUMN=VALUE: leave out the rows whose identifying or moderator column "
                       "holds VALUE; repeatable");
    command.add_option("--unit", args.unit,
                       "subgroup or study: the unit of analysis when the sheet has subgroups");
    command.add_option("--comparisons", args.comparisons,
                       "all, mean or one: how several comparisons of a study are used");
    command.add_option("--outcomes", args.outcomes, "all, mean or one: likewise for outcomes");
    command.add_option("--time-points", args.timePoints,
                       "all, mean or one: likewise for time points");
    command.add_option("--sequence", args.sequence,
                       "LEVEL=V1,V2,...: the priority order of \"one\" at LEVEL (comparisons, "
                       "outcomes, time-points); repeatable");
}

int ApplySelection(const SelectionArgs& args, const sheet::Sheet& sheet,
                   analysis::Analysis& analysis, std::ostream& err) {
    const sheet::Grid& g = sheet.Flex();
    Changes changes;

    for (const std::string& item : args.exclude) {
        const std::size_t eq = item.find('=');
        if (eq == std::string::npos) {
            err << "--exclude must be COLUMN=VALUE, not \"" << item << "\"\n";
            return ExitUsage;
        }
        const std::string column = item.substr(0, eq);
        const std::string value = item.substr(eq + 1);
        const std::optional<Target> target = FindColumn(g, column);
        if (!target) {
            err << "--exclude: the sheet has no identifying or moderator column \"" << column
                << "\"\n";
            return ExitUsage;
        }
        if (!ColumnHolds(sheet, target->col, value)) {
            err << "--exclude: no row of \"" << column << "\" holds \"" << value << "\"\n";
            return ExitUsage;
        }
        if (target->level > 0) {
            auto& list = changes.excluded[static_cast<std::size_t>(target->level - 1)];
            if (!list) list.emplace();
            list->push_back(value);
        } else {
            auto it = std::find_if(changes.moderators.begin(), changes.moderators.end(),
                                   [&](const auto& f) { return f.column == target->title; });
            if (it == changes.moderators.end())
                it = changes.moderators.insert(changes.moderators.end(), {target->title, {}});
            it->excluded.push_back(value);
        }
    }

    if (!args.unit.empty()) {
        if (args.unit != "subgroup" && args.unit != "study") {
            err << "--unit must be subgroup or study\n";
            return ExitUsage;
        }
        if (LevelPresent(g, 2))
            changes.studyIsUnit = args.unit == "study";
        else
            err << NoEffect("--unit", 2);
    }

    const std::pair<const char*, const std::string*> uses[] = {{"--comparisons", &args.comparisons},
                                                               {"--outcomes", &args.outcomes},
                                                               {"--time-points", &args.timePoints}};
    for (int i = 0; i < 3; ++i) {
        const auto& [option, word] = uses[i];
        if (word->empty()) continue;
        const std::optional<LevelUse> use = ParseUse(*word);
        if (!use) {
            err << option << " must be one of all, mean, one\n";
            return ExitUsage;
        }
        const int level = i + 3;
        if (LevelPresent(g, level))
            changes.use[static_cast<std::size_t>(level - 1)] = use;
        else
            err << NoEffect(option, level);
    }

    for (const std::string& item : args.sequence) {
        const std::size_t eq = item.find('=');
        const int level = eq == std::string::npos ? 0 : SequenceLevel(item.substr(0, eq));
        if (level == 0) {
            err << "--sequence must be LEVEL=V1,V2,... with LEVEL one of comparisons, outcomes, "
                   "time-points\n";
            return ExitUsage;
        }
        if (!LevelPresent(g, level)) {
            err << NoEffect("--sequence", level);
            continue;
        }
        const int col =
            FindColumn(g, sheet::PopulationNames[static_cast<std::size_t>(level - 1)])->col;
        std::vector<std::string> values =
            analysis::SplitText(std::string_view(item).substr(eq + 1), ',');
        for (const std::string& value : values) {
            if (!ColumnHolds(sheet, col, value)) {
                err << "--sequence: no row of \""
                    << sheet::PopulationNames[static_cast<std::size_t>(level - 1)] << "\" holds \""
                    << value << "\"\n";
                return ExitUsage;
            }
        }
        changes.sequence[static_cast<std::size_t>(level - 1)] = std::move(values);
    }

    analysis.AdjustSelection = [changes = std::move(changes)](analysis::Selection& s) {
        changes.ApplyTo(s);
    };
    return ExitDone;
}

}  // namespace synthara::cli
