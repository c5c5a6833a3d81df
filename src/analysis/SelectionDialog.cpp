#include "analysis/SelectionDialog.h"

#include <algorithm>
#include <utility>

#include "analysis/Analysis.h"
#include "sheet/grid/Sheet.h"

namespace synthara::analysis {

namespace {

constexpr const char* kTabCaptions[] = {"Studies", "Subgroups", "Comparisons", "Outcomes",
                                        "Timepoints"};

bool Contains(const std::vector<std::string>& list, const std::string& value) {
    return std::find(list.begin(), list.end(), value) != list.end();
}

// The level's name in lower case, one or several.
std::string Noun(int tab, bool plural) {
    const char* one = tab == 3 ? "comparison" : tab == 4 ? "outcome" : "time point";
    return std::string(one) + (plural ? "s" : "");
}

}  // namespace

SelectionDialog::SelectionDialog(sheet::Sheet& sheet, Analysis& analysis, ports::Prompter& prompter)
    : sheet_(sheet), analysis_(analysis), prompter_(prompter) {}

const char* SelectionDialog::LeadLine(int tab) {
    switch (tab) {
        case 3:
            return "For studies with more than one comparison";
        case 4:
            return "For studies with multiple outcomes";
        case 5:
            return "For studies with multiple time points";
        default:
            return "";
    }
}

std::string SelectionDialog::UseCaption(int tab, LevelUse use) {
    switch (use) {
        case LevelUse::Mean:
            return "Use the mean of the selected " + Noun(tab, true);
        case LevelUse::One:
            return "Use the first " + Noun(tab, false) + ", based on the following sequence";
        case LevelUse::All:
            break;
    }
    return "Use all of the selected " + Noun(tab, true) + ", assuming independence";
}

// The distinct values of a column's data rows, in the sheet's order of first use.
std::vector<std::string> SelectionDialog::ColumnValues(int col) const {
    std::vector<std::string> values;
    const sheet::Grid& g = sheet_.Flex();
    for (int r = sheet::FixedRowCount; r <= sheet_.GetLastRow(); ++r) {
        std::string value = g.Text(r, col);
        if (!Contains(values, value)) values.push_back(std::move(value));
    }
    return values;
}

void SelectionDialog::Load() {
    tabs_.clear();
    const sheet::Grid& g = sheet_.Flex();
    for (int level = 1; level <= SelectionLevels; ++level) {
        const int col = sheet_.GetCol(0, level);
        if (col < 0) continue;
        Tab tab;
        tab.index = level;
        tab.caption = kTabCaptions[level - 1];
        for (std::string& v : ColumnValues(col))
            tab.lines.push_back({std::move(v), true});
        for (const Line& line : tab.lines)
            tab.sequence.push_back(line.value);
        tabs_.push_back(std::move(tab));
    }
    const Selection stored = ReadSelection(g);
    for (const ModeratorFilter& f : stored.moderators)
        AddFilter(f.column);
    Restore(stored);
}

void SelectionDialog::Restore(const Selection& stored) {
    filling_ = true;
    studyIsUnit_ = stored.studyIsUnit;
    for (Tab& tab : tabs_) {
        const std::vector<std::string>* excluded = nullptr;
        if (tab.index <= SelectionLevels) {
            const LevelChoice& choice = stored.Level(tab.index);
            excluded = &choice.excluded;
            tab.use = choice.use;
            // The stored order first, then the values it does not name.
            std::vector<std::string> sequence;
            for (const std::string& v : choice.sequence)
                if (Contains(tab.sequence, v) && !Contains(sequence, v)) sequence.push_back(v);
            for (const std::string& v : tab.sequence)
                if (!Contains(sequence, v)) sequence.push_back(v);
            tab.sequence = std::move(sequence);
        } else {
            for (const ModeratorFilter& f : stored.moderators)
                if (f.column == tab.moderator) excluded = &f.excluded;
        }
        for (Line& line : tab.lines)
            line.checked = excluded == nullptr || !Contains(*excluded, line.value);
    }
    filling_ = false;
}

SelectionDialog::Tab* SelectionDialog::FindTab(int index) {
    for (Tab& tab : tabs_)
        if (tab.index == index) return &tab;
    return nullptr;
}

void SelectionDialog::SelectAll(int tab) {
    if (Tab* t = FindTab(tab))
        for (Line& line : t->lines)
            line.checked = true;
}

void SelectionDialog::ClearAll(int tab) {
    if (Tab* t = FindTab(tab))
        for (Line& line : t->lines)
            line.checked = false;
}

void SelectionDialog::ResetPanel(int tab) {
    Tab* t = FindTab(tab);
    if (t == nullptr) return;
    SelectAll(tab);
    t->sequence.clear();
    for (const Line& line : t->lines)
        t->sequence.push_back(line.value);
    t->use = LevelUse::All;
}

void SelectionDialog::MoveUp(int tab, int line) {
    Tab* t = FindTab(tab);
    if (t == nullptr || !t->sequenceEnabled() || line <= 0 ||
        line >= static_cast<int>(t->sequence.size()))
        return;
    std::swap(t->sequence[static_cast<std::size_t>(line)],
              t->sequence[static_cast<std::size_t>(line - 1)]);
}

void SelectionDialog::MoveDown(int tab, int line) {
    MoveUp(tab, line + 1);
}

void SelectionDialog::SetUse(int tab, LevelUse use) {
    Tab* t = FindTab(tab);
    if (t == nullptr || tab < 3 || tab > SelectionLevels) return;
    if (use == LevelUse::All && t->use != LevelUse::All && !filling_ && t->warning) {
        // The user may take the choice back after reading why it is risky.
        if (prompter_.Ask(CaveatBox(tab), ports::Buttons::YesNo, ports::Answer::Yes) ==
            ports::Answer::No)
            return;
    }
    t->use = use;
}

int SelectionDialog::AddFilter(const std::string& moderator) {
    const int col = ModeratorColumn(sheet_.Flex(), moderator);
    int index = SelectionLevels + 1;
    for (const Tab& tab : tabs_) {
        if (tab.moderator == moderator) return tab.index;
        index = std::max(index, tab.index + 1);
    }
    if (col < 0 || index > SelectionLevels + MaxModeratorTabs) return 0;
    Tab tab;
    tab.index = index;
    tab.caption = moderator;
    tab.moderator = moderator;
    for (std::string& v : ColumnValues(col))
        tab.lines.push_back({std::move(v), true});
    tabs_.push_back(std::move(tab));
    return index;
}

bool SelectionDialog::Marked(int tab) const {
    for (const Tab& t : tabs_) {
        if (t.index != tab) continue;
        const bool unchecked =
            std::any_of(t.lines.begin(), t.lines.end(), [](const Line& l) { return !l.checked; });
        return unchecked || (tab == 2 && studyIsUnit_) || (tab >= 3 && t.use != LevelUse::All);
    }
    return false;
}

Selection SelectionDialog::Current() const {
    Selection s;
    s.studyIsUnit = studyIsUnit_;
    for (const Tab& tab : tabs_) {
        std::vector<std::string> excluded;
        for (const Line& line : tab.lines)
            if (!line.checked) excluded.push_back(line.value);
        if (tab.index <= SelectionLevels) {
            LevelChoice& choice = s.Level(tab.index);
            choice.excluded = std::move(excluded);
            if (tab.index >= 3) {
                choice.use = tab.use;
                choice.sequence = tab.sequence;
            }
        } else if (tab.moderator != UnusedModerator && !tab.moderator.empty() &&
                   !excluded.empty()) {
            s.moderators.push_back({tab.moderator, std::move(excluded)});
        }
    }
    return s;
}

bool SelectionDialog::Click(Button button) {
    applying_ = true;
    if (button == Button::Cancel) {
        applying_ = false;
        return true;
    }
    const Selection chosen = Current();
    const std::optional<IndexMapping> mapping = MapIndex(analysis_.DisplayIndex);
    if (mapping && mapping->useMH && chosen.AnyMean()) {
        prompter_.Message(MeanRefusedBox());
        applying_ = false;
        return false;
    }
    WriteSelection(sheet_, chosen);
    analysis_.selection = chosen;
    analysis_.Compute();
    applying_ = false;
    return button == Button::Ok;
}

}  // namespace synthara::analysis
