#pragma once
// The state and rules of the "Select by ..." dialog, without a window: the
// tabs of the identifying levels and of moderators, each with its values and
// check marks, the priority sequences and options of the comparison, outcome
// and time-point tabs, the unit of analysis, and OK, Apply and Cancel. The
// window later draws this model and forwards the user's clicks to it.
#include <string>
#include <vector>

#include "analysis/Selection.h"
#include "ports/Prompter.h"

namespace synthara::sheet {
class Sheet;
}

namespace synthara::analysis {

class Analysis;

inline constexpr int MaxModeratorTabs = 5;                       // tabs 6 to 10
inline constexpr const char* UnusedModerator = "Not specified";  // a moderator tab not in use

class SelectionDialog {
  public:
    struct Line {
        std::string value;
        bool checked = true;
    };
    struct Tab {
        int index = 0;            // 1 to 5: the identifying levels; 6 to 10: moderators
        std::string caption;      // "Studies", ..., or the moderator's title
        std::string moderator;    // a moderator tab's column ("Not specified": not in use)
        std::vector<Line> lines;  // each distinct value with its check mark
        std::vector<std::string> sequence;  // tabs 3 to 5: the priority order
        LevelUse use = LevelUse::All;       // tabs 3 to 5
        bool warning = true;                // tabs 3 to 5: "Enable warning"
        bool sequenceEnabled() const { return use == LevelUse::One; }
    };
    enum class Button { Ok, Apply, Cancel };

    SelectionDialog(sheet::Sheet& sheet, Analysis& analysis, ports::Prompter& prompter);

    // Fills the tabs from the sheet's columns and restores the stored choices.
    void Load();
    std::vector<Tab>& Tabs() { return tabs_; }
    Tab* FindTab(int index);
    bool StudyIsUnit() const { return studyIsUnit_; }
    void SetUnit(bool studyIsUnit) { studyIsUnit_ = studyIsUnit; }

    void SelectAll(int tab);
    void ClearAll(int tab);
    // Every value checked, the sequence in the order of the values, all rows used.
    void ResetPanel(int tab);
    void MoveUp(int tab, int line);
    void MoveDown(int tab, int line);
    // One of the three options of tabs 3 to 5; using all rows asks first,
    // while "Enable warning" is on, whether the rows are independent.
    void SetUse(int tab, LevelUse use);
    // A moderator tab for the column of that title; its index, or 0 when
    // the tabs are all in use or there is no such moderator.
    int AddFilter(const std::string& moderator);
    // Whether the tab holds a choice that changes the analysis.
    bool Marked(int tab) const;

    // The choices as the tabs now hold them.
    Selection Current() const;
    // OK and Apply save the choices to the sheet and compute; true when the
    // dialog closes. "Use the mean" beside a Mantel-Haenszel index is refused.
    bool Click(Button button);
    bool Applying() const { return applying_; }

    static const char* LeadLine(int tab);  // "For studies with more than one comparison", ...
    static std::string UseCaption(int tab, LevelUse use);

  private:
    std::vector<std::string> ColumnValues(int col) const;
    void Restore(const Selection& stored);

    sheet::Sheet& sheet_;
    Analysis& analysis_;
    ports::Prompter& prompter_;
    std::vector<Tab> tabs_;
    bool studyIsUnit_ = false;
    bool filling_ = false;
    bool applying_ = false;
};

}  // namespace synthara::analysis
