#pragma once
// Which rows enter an analysis and how the several rows of one study are
// used, level by level: the choices of the "Select by ..." dialog. They live
// in the metadata of the sheet's identifying and moderator columns, so that
// they travel with the project file.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ports/Prompter.h"

namespace synthara::sheet {
class Sheet;
class Grid;
}  // namespace synthara::sheet

namespace synthara::analysis {

inline constexpr int SelectionLevels = 5;  // study name, subgroup, comparison, outcome, time point

// How the several rows of a study at the comparison, outcome or time-point
// level are used.
enum class LevelUse : std::uint8_t {
    All,   // each row on its own, assuming independence
    Mean,  // the mean of the rows
    One,   // the first row in the order of the level's sequence
};

struct LevelChoice {
    std::vector<std::string> excluded;  // values left out
    std::vector<std::string> sequence;  // priority order of LevelUse::One, first first
    LevelUse use = LevelUse::All;
    friend bool operator==(const LevelChoice&, const LevelChoice&) = default;
};

// Values left out of one moderator column, named by its title.
struct ModeratorFilter {
    std::string column;
    std::vector<std::string> excluded;
    friend bool operator==(const ModeratorFilter&, const ModeratorFilter&) = default;
};

struct Selection {
    // By level, study name first; `use` counts at levels 3 to 5 only.
    std::array<LevelChoice, SelectionLevels> levels;
    bool studyIsUnit = false;  // several subgroups of a study become one row
    std::vector<ModeratorFilter> moderators;
    friend bool operator==(const Selection&, const Selection&) = default;

    LevelChoice& Level(int level) { return levels[static_cast<std::size_t>(level - 1)]; }
    const LevelChoice& Level(int level) const {
        return levels[static_cast<std::size_t>(level - 1)];
    }
    // "Use the mean" at the comparison, outcome or time-point level.
    bool AnyMean() const;
};

// The choices stored in the sheet's metadata rows; a column without them
// keeps the defaults (every value in, each row on its own).
Selection ReadSelection(const sheet::Grid& grid);
// Writes the choices into the metadata rows of every identifying and
// moderator column (blank where there is nothing to keep).
void WriteSelection(sheet::Sheet& sheet, const Selection& selection);
// Writes a stored choice's text into a metadata cell, or clears the cell for
// "", touching only what changes.
void PutText(sheet::Sheet& sheet, int row, int col, std::string text);

// Parts of a text between separators ("a|b" gives "a" and "b"; "" gives "").
std::vector<std::string> SplitText(std::string_view text, char separator);
// The level's name in lower case: "comparison", "outcome", "time point".
std::string LevelWord(int level);
// A moderator column by its title; -1 when none.
int ModeratorColumn(const sheet::Grid& grid, std::string_view title);

// The words a level's option is stored as; level 1 "None", level 2
// "Subgroup" or "Study", levels 3 to 5 "All", "Mean" or "One".
std::string_view OptionWord(const Selection& selection, int level);

// The refusals of "Use the mean" beside a Mantel-Haenszel index: the
// dialog's OK or Apply, and a change of index on the toolbar.
ports::Box MeanRefusedBox();
ports::Box IndexRefusedBox();

// The warning of independence when all rows of level 3, 4 or 5 are used:
// its text (the headings on lines of their own) and the captions of its two
// check boxes.
ports::Box CaveatBox(int level);
std::string CaveatTreatCaption(int level);
std::string CaveatAgainCaption(int level);

}  // namespace synthara::analysis
