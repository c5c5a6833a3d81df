#pragma once
// Operations on whole studies: the row display toggle, sorting by a column,
// deleting and adding a study, and the words that name the groups.
#include <filesystem>
#include <string>
#include <vector>

#include "sheet/files/Project.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

// The values of a drop-down column's ValueList record ("a|b|c"), blanks left out.
std::vector<std::string> SplitValueList(const std::string& list);

// The row display toggle. On: rows are sorted by the identifying columns
// (ties in order of entry), equal adjacent identifying cells are drawn as one,
// empty rows go to the end and rows are renumbered. Off: nothing is merged.
void MergeRows(Sheet& sheet, bool mergeOn);

// Sorts the rows with data by one column: as numbers when the column's
// DataType is "Integer" or "Decimal", otherwise as text; then renumbers them.
void ForceSort(Sheet& sheet, OpenProject& project, int column, bool descending = false);

// "Delete study": the study on `selectedRow` (-1 when no row is selected),
// all its rows. The sheet is backed up to `backupFolder` first and restored
// from there when the user says no. True when the study was deleted.
bool DeleteStudy(Sheet& sheet, OpenProject& project, int selectedRow,
                 const std::filesystem::path& backupFolder = ".");

// The add-study dialog. GetNewName proposes a name not yet in the study
// column: "Study" and a number of three digits, counting up from the number
// of rows with data, and from 1 on a sheet without any.
std::string GetNewName(const Sheet& sheet);
// Adds the rows of a new study to the first free rows: one row, or with
// `rectangle` one row for each combination of the value lists of the other
// identifying columns. False, with nothing added, when the sheet has no
// study-name column.
bool InsertStudy(Sheet& sheet, OpenProject& project, const std::string& name, bool rectangle);
struct AddStudyOutcome {
    bool inserted = false;  // false: a box said why and the dialog stays
    std::string nextName;   // what the name box shows next
};
// The dialog's Ok.
AddStudyOutcome AddStudy(Sheet& sheet, OpenProject& project, const std::string& name,
                         bool rectangle);

// A group word in use by the sheet's data-entry columns, with its row in the
// Settings column and the project's current value for it.
struct GroupName {
    std::string word;
    int settingsRow = 0;
    std::string value;
};
// The words the label pieces of the data-entry columns use, in the dialog's order.
std::vector<GroupName> AssessGroupNames(const Sheet& sheet);
// "Edit group names": the words to offer, or, when none is used, a box that
// says so and an empty list.
std::vector<GroupName> EditGroupNames(Sheet& sheet);
// The dialog's Ok: stores each value and retitles the columns.
void SetGroupNames(Sheet& sheet, OpenProject& project, const std::vector<GroupName>& names);

}  // namespace synthara::sheet
