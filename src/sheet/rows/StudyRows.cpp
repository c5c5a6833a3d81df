#include "sheet/rows/StudyRows.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <unordered_set>

#include "sheet/blocks/CellBorders.h"
#include "sheet/blocks/DisplayColumns.h"
#include "sheet/files/Backup.h"
#include "sheet/rows/RowOrder.h"
#include "sheet/rows/SheetCheck.h"

namespace synthara::sheet {

namespace {

int PopulationCount() {
    return static_cast<int>(PopulationNames.size());
}

// Stable sort of data rows first..last by `less` over row numbers relative to `first`.
template <typename Less>
void SortDataRows(Sheet& sheet, int first, int last, Less less) {
    if (last <= first) return;
    std::vector<int> order(static_cast<std::size_t>(last - first + 1));
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), less);
    sheet.ReorderRows(first, order);
}

// The sort keys of rows first..last in the given columns, row by row.
std::vector<SortKey> KeysOf(const Grid& grid, int first, int last, const std::vector<int>& cols) {
    std::vector<SortKey> keys;
    if (last < first) return keys;
    keys.reserve(static_cast<std::size_t>(last - first + 1) * cols.size());
    for (int r = first; r <= last; ++r) {
        for (int c : cols)
            keys.push_back(MakeSortKey(grid.At(r, c)));
    }
    return keys;
}

// The next row with nothing in it, from `from` on; a row is added at the end
// when the sheet is full.
int NextFreeRow(Sheet& sheet, int from) {
    for (int r = std::max(from, FixedRowCount); r < sheet.Flex().Rows(); ++r) {
        if (sheet.isRowEmpty(r)) return r;
    }
    sheet.SetRows(sheet.Flex().Rows() + 1);
    return sheet.Flex().Rows() - 1;
}

bool StudyExists(const Sheet& sheet, int studyCol, const std::string& name) {
    if (studyCol < 0) return false;
    for (int r = FixedRowCount; r < sheet.Flex().Rows(); ++r) {
        if (sheet.Flex().TextIs(r, studyCol, name)) return true;
    }
    return false;
}

struct GroupWord {
    const char* word;
    int row;
};
// In the order the dialog lists them.
constexpr GroupWord kGroupWords[] = {
    {"Group-A", SettingsRow::GroupA},
    {"Group-B", SettingsRow::GroupB},
    {"Condition-A", SettingsRow::ConditionA},
    {"Condition-B", SettingsRow::ConditionB},
    {"Exposed", SettingsRow::Exposed},
    {"Unexposed", SettingsRow::Unexposed},
    {"Events", SettingsRow::Events},
    {"Non-events", SettingsRow::NonEvents},
    {"Cases", SettingsRow::Cases},
    {"Controls", SettingsRow::Controls},
    {"Person years", SettingsRow::PersonYears1},
    {"Pre", SettingsRow::Pre},
    {"Post", SettingsRow::Post},
};

}  // namespace

std::vector<std::string> SplitValueList(const std::string& list) {
    std::vector<std::string> values;
    std::size_t start = 0;
    while (start <= list.size()) {
        const std::size_t bar = std::min(list.find('|', start), list.size());
        std::string value = list.substr(start, bar - start);
        if (!value.empty()) values.push_back(std::move(value));
        start = bar + 1;
    }
    return values;
}

void MergeRows(Sheet& sheet, bool mergeOn) {
    const Grid& grid = sheet.Flex();
    if (!mergeOn) {
        for (int c = 0; c < grid.Cols(); ++c)
            sheet.SetColMerged(c, false);
        return;
    }
    sheet.FindCols();
    std::vector<int> keys;
    for (int p = 1; p <= PopulationCount(); ++p) {
        const int c = sheet.GetCol(0, p);
        if (c >= 0) keys.push_back(c);
    }
    if (sheet.GetCol(0, 1) < 0) return;
    std::sort(keys.begin(), keys.end());  // left to right, as they stand
    const int seq = sheet.EntrySeqCol();
    if (seq >= 0) keys.push_back(seq);

    const int last = sheet.GetLastRow();
    const std::vector<SortKey> sortKeys = KeysOf(grid, FixedRowCount, last, keys);
    const std::size_t width = keys.size();
    SortDataRows(sheet, FixedRowCount, last, [&](int a, int b) {
        for (std::size_t k = 0; k < width; ++k) {
            const int order = CompareSortKeys(sortKeys[static_cast<std::size_t>(a) * width + k],
                                              sortKeys[static_cast<std::size_t>(b) * width + k]);
            if (order != 0) return order < 0;
        }
        return false;
    });
    for (int p = 1; p <= PopulationCount(); ++p) {
        const int c = sheet.GetCol(0, p);
        if (c >= 0) sheet.SetColMerged(c, true);
    }
    MoveEmptyRowsToEnd(sheet);
    sheet.AddRowNumbers();
}

void ForceSort(Sheet& sheet, OpenProject& project, int column, bool descending) {
    const Grid& grid = sheet.Flex();
    if (column < 0 || column >= grid.Cols()) return;
    const bool numeric = sheet.MetaIs(column, MetaRow::DataType, "Integer") ||
                         sheet.MetaIs(column, MetaRow::DataType, "Decimal");
    const int last = sheet.GetLastRow();
    const std::vector<SortKey> keys =
        numeric ? KeysOf(grid, FixedRowCount, last, {column}) : std::vector<SortKey>();
    // As text, a number compares by the text it shows.
    std::vector<std::string> texts;
    if (!numeric) {
        for (int r = FixedRowCount; r <= last; ++r)
            texts.push_back(grid.Text(r, column));
    }
    SortDataRows(sheet, FixedRowCount, last, [&](int a, int b) {
        const auto i = static_cast<std::size_t>(a);
        const auto j = static_cast<std::size_t>(b);
        const int order =
            numeric ? CompareSortKeys(keys[i], keys[j]) : CompareFolded(texts[i], texts[j]);
        return descending ? order > 0 : order < 0;
    });
    sheet.AddRowNumbers();
    project.SheetDirty = true;
}

bool DeleteStudy(Sheet& sheet, OpenProject& project, int selectedRow,
                 const std::filesystem::path& backupFolder) {
    ports::Prompter& prompter = sheet.Prompts();
    const Grid& grid = sheet.Flex();
    if (selectedRow < FixedRowCount || selectedRow >= grid.Rows()) {
        prompter.Message({"  No study selected ", {"Please select a study to delete         "}});
        return false;
    }
    const int studyCol = sheet.GetCol(0, 1);
    if (studyCol < 0) {
        prompter.Message({"  Cannot delete study",
                          {"The column for study names has not been created yet       "}});
        return false;
    }
    const std::string name = grid.Text(selectedRow, studyCol);
    if (name.empty()) {
        prompter.Message({" Study name is missing",
                          {"The study on this line has not been identified.  To delete the row "
                           "use 'Delete row'.       "}});
        return false;
    }

    const bool backedUp = WriteBackup(sheet, backupFolder, SystemBackupFileName).ok;
    const ports::Box question{"  Delete study",
                              {"Do you want to delete the " + name + " study? ",
                               "Any subgroups and outcomes for this study will be deleted as "
                               "well.  "},
                              ports::Icon::Question};
    const bool yes =
        prompter.Ask(question, ports::Buttons::YesNo, ports::Answer::Yes) == ports::Answer::Yes;
    if (yes) {
        for (int r = FixedRowCount; r < grid.Rows(); ++r) {
            if (!grid.TextIs(r, studyCol, name)) continue;
            for (int c = 0; c < grid.Cols(); ++c) {
                sheet.ClearCell(r, c);
                sheet.SetCellBackColor(r, c, kNoBackColor);
                sheet.SetCellShade(r, c, 0);
            }
        }
        MoveEmptyRowsToEnd(sheet);
    } else if (backedUp) {
        // Nothing was changed yet, but the copy is the promise the question made.
        LoadBackup(sheet, backupFolder, SystemBackupFileName);
    }
    sheet.AddRowNumbers();
    project.SheetDirty = true;
    return yes;
}

std::string GetNewName(const Sheet& sheet) {
    const int studyCol = sheet.GetCol(0, 1);
    int count = 0;
    for (int r = FixedRowCount; r < sheet.Flex().Rows(); ++r) {
        if (!sheet.isRowEmpty(r)) ++count;
    }
    std::unordered_set<std::string> taken;
    if (studyCol >= 0) {
        for (int r = FixedRowCount; r < sheet.Flex().Rows(); ++r)
            taken.insert(sheet.Flex().Text(r, studyCol));
    }
    // Counting starts at 1: a first study is "Study001".
    for (int n = std::max(count, 1);; ++n) {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "Study%03d", n);
        if (!taken.contains(buffer)) return buffer;
    }
}

bool InsertStudy(Sheet& sheet, OpenProject& project, const std::string& name, bool rectangle) {
    const int studyCol = sheet.GetCol(0, 1);
    if (studyCol < 0) return false;

    // Each row of the study as the values of the other identifying columns.
    std::vector<std::vector<std::pair<int, std::string>>> rows(1);
    if (rectangle) {
        for (int p = 2; p <= PopulationCount(); ++p) {
            const int c = sheet.GetCol(0, p);
            if (c < 0) continue;
            const std::vector<std::string> values =
                SplitValueList(sheet.Meta(c, MetaRow::ValueList));
            if (values.empty()) continue;
            std::vector<std::vector<std::pair<int, std::string>>> grown;
            grown.reserve(rows.size() * values.size());
            for (const auto& row : rows) {
                for (const std::string& value : values) {
                    grown.push_back(row);
                    grown.back().emplace_back(c, value);
                }
            }
            rows = std::move(grown);
        }
    }
    int at = FixedRowCount;
    for (const auto& row : rows) {
        at = NextFreeRow(sheet, at);
        sheet.SetText(at, studyCol, name);
        for (const auto& [col, value] : row)
            sheet.SetText(at, col, value);
        ++at;
    }
    MoveEmptyRowsToEnd(sheet);
    sheet.AddRowNumbers();
    MergeRows(sheet, project.MergeRowsOn);
    AddCellBorders(sheet);
    ColorDisplayCols(sheet);
    project.SheetDirty = true;
    return true;
}

AddStudyOutcome AddStudy(Sheet& sheet, OpenProject& project, const std::string& name,
                         bool rectangle) {
    AddStudyOutcome outcome;
    if (name.empty()) {
        sheet.Prompts().Message({ProgramName, {"Please enter a name for the new study    "}});
        return outcome;
    }
    if (StudyExists(sheet, sheet.GetCol(0, 1), name)) {
        sheet.Prompts().Message({ProgramName, {"You already have a study with this name.  "}});
        return outcome;
    }
    if (!InsertStudy(sheet, project, name, rectangle)) {
        // The same advice the sheet check gives: the rows would have nothing
        // to carry the study's name.
        sheet.Prompts().Message(StudyColumnMissing());
        return outcome;
    }
    outcome.inserted = true;
    outcome.nextName = GetNewName(sheet);
    return outcome;
}

std::vector<GroupName> AssessGroupNames(const Sheet& sheet) {
    std::vector<bool> used(std::size(kGroupWords), false);
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (!sheet.MetaIs(c, MetaRow::Function, "Data Entry")) continue;
        for (int part = MetaRow::LabelPart1; part <= MetaRow::LabelPart3; ++part) {
            const std::string piece = sheet.Meta(c, part);
            for (std::size_t w = 0; w < std::size(kGroupWords); ++w) {
                if (piece == kGroupWords[w].word) used[w] = true;
            }
        }
    }
    std::vector<GroupName> names;
    for (std::size_t w = 0; w < std::size(kGroupWords); ++w) {
        if (!used[w]) continue;
        names.push_back(
            {kGroupWords[w].word, kGroupWords[w].row, sheet.SettingsWord(kGroupWords[w].row)});
    }
    return names;
}

std::vector<GroupName> EditGroupNames(Sheet& sheet) {
    std::vector<GroupName> names = AssessGroupNames(sheet);
    if (names.empty()) {
        sheet.Prompts().Message(
            {"Edit group names",
             {"The current effect size columns do not require group names          "}});
    }
    return names;
}

void SetGroupNames(Sheet& sheet, OpenProject& project, const std::vector<GroupName>& names) {
    const int settings = sheet.SettingsCol();
    if (settings < 0) return;
    for (const GroupName& name : names) {
        if (name.settingsRow < SettingsRow::GroupA || name.settingsRow > SettingsRow::ConditionB)
            continue;
        sheet.SetText(name.settingsRow, settings, name.value);
        // Person time has a word for each group; one edit box names both.
        if (name.settingsRow == SettingsRow::PersonYears1)
            sheet.SetText(SettingsRow::PersonYears2, settings, name.value);
    }
    sheet.ApplyGroupNames();
    project.SheetDirty = true;
}

}  // namespace synthara::sheet
