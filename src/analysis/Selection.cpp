#include "analysis/Selection.h"

#include <cctype>

#include "sheet/grid/MetaRows.h"
#include "sheet/grid/Sheet.h"

namespace synthara::analysis {

namespace {

using sheet::MetaRow;

constexpr int ExcludedRow = MetaRow::SelectionFirst;      // "|a|b": each value left out
constexpr int SequenceRow = MetaRow::SelectionFirst + 1;  // "a|b|c": the priority order
constexpr int OptionRow = MetaRow::SelectionFirst + 3;    // the level's option word

constexpr char Separator = '|';

std::vector<std::string> ReadExcluded(std::string_view text) {
    if (text.empty()) return {};
    std::vector<std::string> values = SplitText(text, Separator);
    // The list starts with its separator: the first part is not a value.
    if (text.front() == Separator) values.erase(values.begin());
    return values;
}

std::string JoinExcluded(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& v : values) {
        text += Separator;
        text += v;
    }
    return text;
}

std::string JoinSequence(const std::vector<std::string>& values) {
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i > 0) text += Separator;
        text += values[i];
    }
    return text;
}

// The level (1 to 5) of an identifying column; 0 for any other column.
int LevelOf(const sheet::Grid& g, int col) {
    if (!g.TextIs(MetaRow::Function, col, "Populations")) return 0;
    for (std::size_t i = 0; i < sheet::PopulationNames.size(); ++i) {
        if (g.TextIs(MetaRow::Attribute, col, sheet::PopulationNames[i]))
            return static_cast<int>(i) + 1;
    }
    return 0;
}

bool IsModerator(const sheet::Grid& g, int col) {
    return g.TextIs(MetaRow::Function, col, "Moderator");
}

}  // namespace

// The level's name in lower case: "comparison", "outcome", "time point".
std::string LevelWord(int level) {
    std::string word(sheet::PopulationNames[static_cast<std::size_t>(level - 1)]);
    for (char& ch : word)
        ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    return word;
}

std::vector<std::string> SplitText(std::string_view text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        parts.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

int ModeratorColumn(const sheet::Grid& g, std::string_view title) {
    for (int c = 0; c < g.Cols(); ++c) {
        if (IsModerator(g, c) && g.TextIs(MetaRow::ColumnHeader, c, title)) return c;
    }
    return -1;
}

bool Selection::AnyMean() const {
    for (int level = 3; level <= SelectionLevels; ++level)
        if (Level(level).use == LevelUse::Mean) return true;
    return false;
}

Selection ReadSelection(const sheet::Grid& g) {
    Selection s;
    for (int c = 0; c < g.Cols(); ++c) {
        if (const int level = LevelOf(g, c); level > 0) {
            LevelChoice& choice = s.Level(level);
            choice.excluded = ReadExcluded(g.Text(ExcludedRow, c));
            const std::string sequence = g.Text(SequenceRow, c);
            choice.sequence =
                sequence.empty() ? std::vector<std::string>() : SplitText(sequence, Separator);
            const std::string option = g.Text(OptionRow, c);
            if (level == 2) s.studyIsUnit = option == "Study";
            if (option == "Mean") choice.use = LevelUse::Mean;
            if (option == "One") choice.use = LevelUse::One;
        } else if (IsModerator(g, c)) {
            std::vector<std::string> excluded = ReadExcluded(g.Text(ExcludedRow, c));
            if (!excluded.empty())
                s.moderators.push_back({g.Text(MetaRow::ColumnHeader, c), std::move(excluded)});
        }
    }
    return s;
}

std::string_view OptionWord(const Selection& selection, int level) {
    if (level == 1) return "None";
    if (level == 2) return selection.studyIsUnit ? "Study" : "Subgroup";
    switch (selection.Level(level).use) {
        case LevelUse::Mean:
            return "Mean";
        case LevelUse::One:
            return "One";
        case LevelUse::All:
            break;
    }
    return "All";
}

void WriteSelection(sheet::Sheet& sheet, const Selection& selection) {
    const sheet::Grid& g = sheet.Flex();
    for (int c = 0; c < g.Cols(); ++c) {
        if (const int level = LevelOf(g, c); level > 0) {
            const LevelChoice& choice = selection.Level(level);
            PutText(sheet, ExcludedRow, c, JoinExcluded(choice.excluded));
            PutText(sheet, SequenceRow, c, JoinSequence(choice.sequence));
            PutText(sheet, OptionRow, c, std::string(OptionWord(selection, level)));
        } else if (IsModerator(g, c)) {
            std::string excluded;
            for (const ModeratorFilter& f : selection.moderators) {
                if (g.TextIs(MetaRow::ColumnHeader, c, f.column))
                    excluded = JoinExcluded(f.excluded);
            }
            PutText(sheet, ExcludedRow, c, std::move(excluded));
        }
    }
}

void PutText(sheet::Sheet& sheet, int row, int col, std::string text) {
    if (text.empty()) {
        if (!sheet.Flex().IsBlank(row, col)) sheet.ClearCell(row, col);
    } else if (!sheet.Flex().TextIs(row, col, text)) {
        sheet.SetText(row, col, std::move(text));
    }
}

ports::Box MeanRefusedBox() {
    return {"Invalid selection",
            {"Cannot select 'Use the mean' for comparisons, outcomes, or time points     ",
             "when using a Mantel Haenszel effect measure.     "},
            ports::Icon::Warning};
}

ports::Box IndexRefusedBox() {
    return {"Invalid selection",
            {"Cannot combine a Mantel Haenszel effect measure       ",
             "with 'Use the mean' for comparisons, outcomes, or time points.     "},
            ports::Icon::Warning};
}

std::string CaveatTreatCaption(int level) {
    return "Treat " + LevelWord(level) + "s as independent";
}

std::string CaveatAgainCaption(int level) {
    return "Show this warning again for " + LevelWord(level) + "s as needed";
}

ports::Box CaveatBox(int level) {
    const std::string w = LevelWord(level);
    std::string opening = "You are selecting an option to treat each " + w +
                          " as independent of the other " + w + "s. ";
    if (level == 3)
        opening += "When the data for the various " + w +
                   "s includes a common comparison group the assumption of independence will "
                   "not be true.  ";
    else if (level == 4)
        opening += "When the data for the various " + w +
                   "s come from the same people, it is unlikely that the assumption of "
                   "independence will be true.  ";
    else
        opening += "When the data for the various " + w +
                   "s come from the same people, especially when the time points are close to "
                   "each other, it is unlikely that the assumption of independence will be "
                   "true.  ";
    opening += "The use of this option is therefore discouraged except for advanced users. ";
    opening += "If this option is nevertheless selected and the " + w +
               "s are not actually independent of each other, it is important to consider how "
               "this will affect the statistics. ";
    ports::Box box;
    box.icon = ports::Icon::Warning;
    box.lines = {
        opening,
        "",
        "Precision of the point estimate.",
        "The standard error of the treatment effect for EACH " + w +
            " will be correct.  However, the standard error for the point estimate computed "
            "ACROSS " +
            w +
            "s will likely be erroneously small, the confidence interval too narrow, and "
            "statistical significance tests likely to reject MORE often than the nominal "
            "significance level.",
        "",
        "Comparison of the treatment effect across " + w + "s.",
        "The impact of ignoring the correlation among " + w +
            "s works in the opposite direction when we are working with the DIFFERENCE in "
            "treatment effects across " +
            w +
            "s.  That is, the standard error of the difference is likely to be too large, the "
            "confidence interval too wide, and the statistical significance tests that compare "
            "the treatment effect across " +
            w + "s are likely to reject LESS often than the nominal significance level.",
        "",
        "Therefore, p-values for the difference in treatment effects are likely to be "
        "conservative with regard to Type I error rates but counter-conservative with regard "
        "to type II error rates. ",
    };
    return box;
}

}  // namespace synthara::analysis
