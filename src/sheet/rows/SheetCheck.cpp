#include "sheet/rows/SheetCheck.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <vector>

#include "sheet/rows/RowOrder.h"

namespace synthara::sheet {

namespace {

constexpr std::size_t kPopulations = PopulationNames.size();

// Identifying columns by key, as FindCols leaves them; -1 where absent.
std::array<int, kPopulations> PopulationColumns(const Sheet& sheet) {
    std::array<int, kPopulations> cols{};
    for (std::size_t p = 0; p < kPopulations; ++p)
        cols[p] = sheet.Flex().ColIndex(PopulationNames[p]);
    return cols;
}

bool Fail(Sheet& sheet, ports::Box box) {
    sheet.Prompts().Message(box);
    return false;
}

bool HasDataEntryColumn(const Sheet& sheet) {
    for (int c = sheet.Flex().FixedCols(); c < sheet.Flex().Cols(); ++c) {
        if (sheet.MetaIs(c, MetaRow::Function, "Data Entry")) return true;
    }
    return false;
}

// Gives empty identifying cells (other than the study name) and empty cells
// of categorical moderators the word "Blank".
void FillBlanks(Sheet& sheet, const std::array<int, kPopulations>& pops,
                const std::vector<int>& rows) {
    std::vector<int> cols;
    for (std::size_t p = 1; p < kPopulations; ++p) {
        if (pops[p] >= 0) cols.push_back(pops[p]);
    }
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (sheet.MetaIs(c, MetaRow::Function, "Moderator") &&
            sheet.MetaIs(c, MetaRow::DataType, "Categorical"))
            cols.push_back(c);
    }
    for (int r : rows) {
        for (int c : cols) {
            if (sheet.Flex().IsBlank(r, c)) sheet.SetText(r, c, "Blank");
        }
    }
}

// A row's key: its five identifying cells joined by ", ", an absent
// population giving "".
void RowKey(const Sheet& sheet, const std::array<int, kPopulations>& pops, int row,
            std::string& key) {
    key.clear();
    for (std::size_t p = 0; p < kPopulations; ++p) {
        if (p > 0) key += ", ";
        const Cell& cell = sheet.Flex().At(row, pops[p]);
        if (cell.IsNumber())
            key += cell.Text();
        else
            key += cell.TextView();
    }
}

// Whether two rows could read alike: rows with equal keys have equal hashes,
// so without a repeated hash there is no duplicate, and the sort that finds
// which one to name is needed only when there may be. Sorted hashes find a
// repeat with far fewer cache misses than a set.
bool MayRepeat(const Sheet& sheet, const std::array<int, kPopulations>& pops,
               const std::vector<int>& rows) {
    std::vector<std::size_t> hashes;
    hashes.reserve(rows.size());
    std::string key;
    for (int r : rows) {
        RowKey(sheet, pops, r, key);
        hashes.push_back(std::hash<std::string>{}(key));
    }
    std::sort(hashes.begin(), hashes.end());
    return std::adjacent_find(hashes.begin(), hashes.end()) != hashes.end();
}

// The first key that a row shares with the next, once the rows are in the
// grid's ascending order of their identifying cells.
bool FindDuplicate(const Sheet& sheet, const std::array<int, kPopulations>& pops,
                   const std::vector<int>& rows, std::string& key) {
    if (!MayRepeat(sheet, pops, rows)) return false;
    struct Row {
        std::array<SortKey, kPopulations> order;
        std::array<std::string, kPopulations> text;
        std::string key;
    };
    std::vector<Row> keyed(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Row& row = keyed[i];
        for (std::size_t p = 0; p < kPopulations; ++p) {
            const Cell& cell = sheet.Flex().At(rows[i], pops[p]);
            row.order[p] = MakeSortKey(cell);
            row.text[p] = cell.Text();
        }
        RowKey(sheet, pops, rows[i], row.key);
    }
    std::vector<std::size_t> order(keyed.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    // The grid's order ignores case; the exact text breaks its ties, so that
    // rows with equal cells always end up side by side.
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        for (std::size_t p = 0; p < kPopulations; ++p) {
            const int c = CompareSortKeys(keyed[a].order[p], keyed[b].order[p]);
            if (c != 0) return c < 0;
        }
        return keyed[a].text < keyed[b].text;
    });
    for (std::size_t i = 0; i + 1 < order.size(); ++i) {
        if (keyed[order[i]].key != keyed[order[i + 1]].key) continue;
        key = keyed[order[i]].key;
        return true;
    }
    return false;
}

}  // namespace

ports::Box StudyColumnMissing() {
    return {"Column for study names missing",
            {"The program requires a 'Study names' column.      ",
             "If this column exists, double-click that column heading.      ",
             "Otherwise, select 'Insert ... Column for... Study names'.     "},
            ports::Icon::Information};
}

void RemoveRedBackColor(Sheet& sheet) {
    for (int c : PopulationColumns(sheet)) {
        if (c >= 0) sheet.SetDataBackColor(c, kNoBackColor);
    }
}

bool CheckData(Sheet& sheet) {
    RemoveRedBackColor(sheet);
    const std::array<int, kPopulations> pops = PopulationColumns(sheet);
    const int studyCol = pops[0];
    if (studyCol < 0) {
        return Fail(sheet, StudyColumnMissing());
    }
    if (!HasDataEntryColumn(sheet)) {
        return Fail(
            sheet,
            {"Columns for effect size missing",
             {"The program requires a set of columns for the effect size data.      ",
              "If these columns exist select 'Identify ... Columns with effect size data'     ",
              "Otherwise, select 'Insert ... Column for... Effect size data'.     "},
             ports::Icon::Information});
    }

    std::vector<int> rows;
    int missing = 0;
    for (int r = FixedRowCount; r < sheet.Flex().Rows(); ++r) {
        if (sheet.isRowEmpty(r)) continue;
        rows.push_back(r);
        if (sheet.Flex().IsBlank(r, studyCol)) {
            ++missing;
            sheet.SetCellBackColor(r, studyCol, kRed);
        }
    }
    if (missing == 1) {
        return Fail(sheet, {"Study name missing",
                            {"One row is missing the study name.    ",
                             "Please enter the name and re-run the analysis.    ",
                             "To remove the red background use the 'Tools' menu.    "},
                            ports::Icon::Information});
    }
    if (missing > 1) {
        return Fail(sheet, {"Study name missing",
                            {std::to_string(missing) + " rows are missing the study name.    ",
                             "Please enter the names and re-run the analysis.    ",
                             "To remove the red background use the 'Tools' menu.    "},
                            ports::Icon::Information});
    }

    FillBlanks(sheet, pops, rows);

    if (rows.empty()) {
        return Fail(sheet, {"No data found",
                            {"Please enter data before proceeding to analysis                "},
                            ports::Icon::Information});
    }
    std::string key;
    if (FindDuplicate(sheet, pops, rows, key)) {
        return Fail(sheet, {"Duplicate row found",
                            {"The following row appears more than once                   ", key},
                            ports::Icon::Information});
    }
    return true;
}

bool CheckDataCommand(Sheet& sheet) {
    if (!CheckData(sheet)) return false;
    sheet.Prompts().Message({"Check complete",
                             {"The spreadsheet format is correct.",
                              "Select 'Analyses ... Run analyses' to proceed.      "},
                             ports::Icon::Information});
    return true;
}

}  // namespace synthara::sheet
