#include "sheet/import/ImportTable.h"

#include <algorithm>
#include <cmath>

#include "sheet/blocks/BlockTable.h"
#include "sheet/blocks/BlockWizard.h"
#include "sheet/blocks/CellBorders.h"
#include "sheet/blocks/DisplayColumns.h"
#include "sheet/grid/Cell.h"

namespace synthara::sheet {
namespace {

enum class Kind { Skip, Population, DataFormat, Role, Moderator };

struct FileColumn {
    Kind kind = Kind::Skip;
    std::string title;
    int population = 0;  // 1..5 for a population column
};

struct Plan {
    std::vector<FileColumn> columns;
    int formatColumn = -1;  // file column of "Data format"
    // The table's rows that hold anything, after the titles: they become the
    // sheet's rows in order, blank ones left out.
    std::vector<std::size_t> dataRows;
    std::vector<const FormatDef*> rowFormats;  // one for each data row
    std::vector<const FormatDef*> used;        // in order of first appearance
};

// The file and the place in it, in the words of the table's kind of file.
std::string Where(const DelimitedTable& table, std::string_view fileName, int line,
                  int column = 0) {
    const std::string place = PlaceText(table.places, line, column);
    return std::string(fileName) + (place.empty() ? "" : ", " + place) + ": ";
}

std::string_view Trimmed(std::string_view s) {
    const auto first = s.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    const auto last = s.find_last_not_of(" \t");
    return s.substr(first, last - first + 1);
}

std::string_view Field(const std::vector<std::string>& row, std::size_t c) {
    return c < row.size() ? std::string_view(row[c]) : std::string_view();
}

// A table built by hand may come without line numbers.
int LineOf(const DelimitedTable& table, std::size_t row) {
    return row < table.lines.size() ? table.lines[row] : static_cast<int>(row) + 1;
}

bool RowIsBlank(const std::vector<std::string>& row) {
    return std::all_of(row.begin(), row.end(), [](const std::string& f) { return f.empty(); });
}

bool IsRoleName(std::string_view title) {
    for (const auto& format : AllFormats())
        for (const auto& role : format.roles)
            if (role.name == title) return true;
    return false;
}

int PopulationIndex(std::string_view title) {
    for (std::size_t i = 0; i < PopulationNames.size(); ++i)
        if (PopulationNames[i] == title) return static_cast<int>(i) + 1;
    return 0;
}

// Titles match as the catalogue spells them; blanks around a title are
// forgiven only when the exact text means nothing.
FileColumn Classify(std::string_view raw) {
    for (const std::string_view title : {raw, Trimmed(raw)}) {
        FileColumn col;
        col.title = std::string(title);
        if ((col.population = PopulationIndex(title)) > 0) {
            col.kind = Kind::Population;
            return col;
        }
        if (title == DataFormatTitle) {
            col.kind = Kind::DataFormat;
            return col;
        }
        if (IsRoleName(title)) {
            col.kind = Kind::Role;
            return col;
        }
    }
    FileColumn col;
    col.title = std::string(raw);
    col.kind = Trimmed(raw).empty() ? Kind::Skip : Kind::Moderator;
    return col;
}

const FormatDef* LookUpFormat(std::string_view name) {
    if (const auto* f = FindFormatByAnyName(name)) return f;
    return FindFormatByAnyName(Trimmed(name));
}

ImportResult Refuse(std::string message, bool optionFault = false) {
    ImportResult result;
    result.message = std::move(message);
    result.optionFault = optionFault;
    return result;
}

// Tables read by ReadDelimitedText are valid already; others are checked here.
bool CheckText(const DelimitedTable& table, std::string_view fileName, ImportResult& fault) {
    for (std::size_t r = 0; r < table.rows.size(); ++r) {
        for (std::size_t c = 0; c < table.rows[r].size(); ++c) {
            if (FindInvalidText(table.rows[r][c]) == std::string_view::npos) continue;
            const int line = LineOf(table, r);
            fault =
                Refuse(Where(table, fileName, line, static_cast<int>(c) + 1) + "not valid text");
            return false;
        }
    }
    return true;
}

// Reads the title row: every column's meaning, duplicates refused.
bool PlanColumns(const DelimitedTable& table, std::string_view fileName, Plan& plan,
                 ImportResult& fault) {
    const auto& titles = table.rows.front();
    const int titleLine = LineOf(table, 0);
    bool haveStudy = false;
    for (std::size_t c = 0; c < titles.size(); ++c) {
        FileColumn col = Classify(titles[c]);
        const int column = static_cast<int>(c) + 1;
        if (col.kind != Kind::Skip) {
            for (std::size_t prior = 0; prior < plan.columns.size(); ++prior) {
                if (plan.columns[prior].kind != Kind::Skip &&
                    plan.columns[prior].title == col.title) {
                    fault =
                        Refuse(Where(table, fileName, titleLine, column) + "the column title \"" +
                               col.title + "\" appears twice (also in column " +
                               std::to_string(prior + 1) + ")");
                    return false;
                }
            }
        }
        if (col.kind == Kind::DataFormat) plan.formatColumn = static_cast<int>(c);
        if (col.kind == Kind::Population && col.population == 1) haveStudy = true;
        plan.columns.push_back(std::move(col));
    }
    if (!haveStudy) {
        fault = Refuse(Where(table, fileName, titleLine) + "there is no \"Study name\" column");
        return false;
    }
    return true;
}

// Gives every data row its format and refuses fields that no column owns.
bool PlanRows(const DelimitedTable& table, std::string_view fileName, const FormatDef* byDefault,
              Plan& plan, ImportResult& fault) {
    for (std::size_t r = 1; r < table.rows.size(); ++r) {
        const auto& row = table.rows[r];
        const int line = LineOf(table, r);
        for (std::size_t c = 0; c < row.size(); ++c) {
            if (row[c].empty()) continue;
            if (c >= plan.columns.size() || plan.columns[c].kind == Kind::Skip) {
                fault = Refuse(Where(table, fileName, line, static_cast<int>(c) + 1) +
                               "this field has no column title");
                return false;
            }
        }
        if (RowIsBlank(row)) continue;
        const FormatDef* format = nullptr;
        const auto formatCol = static_cast<std::size_t>(plan.formatColumn);
        const std::string_view cell =
            plan.formatColumn >= 0 ? Field(row, formatCol) : std::string_view();
        const int column = plan.formatColumn + 1;
        if (!Trimmed(cell).empty()) {
            format = LookUpFormat(cell);
            if (format == nullptr) {
                fault = Refuse(Where(table, fileName, line, column) + "unknown data format \"" +
                               std::string(cell) + "\"");
                return false;
            }
        } else if (byDefault != nullptr) {
            format = byDefault;
        } else {
            fault = Refuse(Where(table, fileName, line, plan.formatColumn >= 0 ? column : 0) +
                           "the row has no data format and no default format was given");
            return false;
        }
        if (std::find(plan.used.begin(), plan.used.end(), format) == plan.used.end())
            plan.used.push_back(format);
        plan.dataRows.push_back(r);
        plan.rowFormats.push_back(format);
    }
    return true;
}

int RoleSlot(const FormatDef& format, std::string_view role) {
    for (std::size_t k = 0; k < format.roles.size(); ++k)
        if (format.roles[k].name == role) return static_cast<int>(k);
    return -1;
}

// Where the first moderator goes: the place of the first empty column, as
// when the user picks that column and gives it a title; later ones follow it.
int FirstModeratorPlace(const Sheet& sheet) {
    for (int c = sheet.Flex().FixedCols(); c < sheet.Flex().Cols(); ++c)
        if (sheet.MetaIs(c, MetaRow::Function, "Empty") && sheet.isColEmpty(c)) return c;
    return sheet.Flex().Cols();
}

// A new column of the user's own at `at`: a moderator with the record the
// column dialog leaves, or a column typed into ("Unknown") that the user has
// still to identify.
void AddUserColumn(Sheet& sheet, int at, const std::string& title, const std::string& dataType,
                   const char* function, const char* renamed) {
    sheet.InsertColumn(at);
    sheet.SetMeta(at, MetaRow::ColumnHeader, title);
    sheet.SetMeta(at, MetaRow::DataType, dataType);
    sheet.SetMeta(at, MetaRow::Function, function);
    sheet.SetMeta(at, MetaRow::Hidden, "Show");
    sheet.SetMeta(at, MetaRow::Renamed, renamed);
}

void AddModerator(Sheet& sheet, int at, const FileColumn& col, const std::string& dataType) {
    AddUserColumn(sheet, at, col.title, dataType, "Moderator", "Manual");
}

std::string CellText(std::string_view role, std::string_view cell) {
    if (const auto* dropDown = FindDropDown(role)) {
        const int code = DropDownCode(*dropDown, cell);
        if (code >= 0) return std::to_string(code);
    }
    return std::string(cell);
}

// A block as the wizard makes it: the format chosen from its tree with every
// role on a new column, then finished. The wizard's confirmation box has no
// reader here, so the sheet's boxes are silenced meanwhile. The two formats
// the tree does not offer get the same steps by hand.
void AddBlock(Sheet& sheet, const FormatDef& format) {
    ports::SilentPrompter silent;
    ports::Prompter& previous = sheet.SetPrompter(silent);
    BlockWizard wizard(sheet);
    wizard.commonOnly = false;
    wizard.optDatatypes = static_cast<int>(format.branch);
    if (format.branch != Branch::NotInWizard && wizard.ChooseFormat(format.longName)) {
        wizard.Finish();
    } else {
        DefineFormat(format.longName, sheet.Defined);
        sheet.CreateAll();
        sheet.CreateDisplayCols(format.longName);
        AdjustBlocks(sheet);
        ShowBlocks(sheet, sheet.Defined.CurrentFormatShort);
        ShowIndices(sheet);
        AddCellBorders(sheet);
    }
    sheet.SetPrompter(previous);
}

// A new sheet with room for `dataRows` rows and some to spare.
void StartSheet(Sheet& sheet, std::size_t dataRows) {
    sheet.InitializeGrid();
    const int wanted = FixedRowCount + static_cast<int>(dataRows) + 80;
    if (sheet.Flex().Rows() < wanted) {
        sheet.SetRows(wanted);
        sheet.AddRowNumbers();
    }
}

void BuildColumns(Sheet& sheet, const DelimitedTable& table, const Plan& plan) {
    StartSheet(sheet, plan.dataRows.size());
    for (const auto& col : plan.columns)
        if (col.kind == Kind::Population) sheet.MakePop(col.population);
    for (const FormatDef* format : plan.used)
        AddBlock(sheet, *format);
    int at = FirstModeratorPlace(sheet);
    for (std::size_t c = 0; c < plan.columns.size(); ++c) {
        const auto& col = plan.columns[c];
        if (col.kind != Kind::Moderator) continue;
        std::vector<std::string_view> cells;
        for (const std::size_t r : plan.dataRows)
            cells.push_back(Field(table.rows[r], c));
        AddModerator(sheet, at++, col, ModeratorDataType(cells, sheet.Separators));
    }
    sheet.ApplyGroupNames();
    sheet.FindCols();
    sheet.AddLetters();
}

// Where each file column's cells go, found after every column has taken its
// final place: population and moderator columns by sheet column, roles by
// block (in the order of plan.used) and slot.
struct Targets {
    std::vector<int> sheetCol;
    std::vector<std::array<int, MaxRoles>> entry;
};

Targets FindTargets(Sheet& sheet, const Plan& plan) {
    Targets t;
    std::vector<int> moderators;
    for (int c = sheet.Flex().FixedCols(); c < sheet.Flex().Cols(); ++c)
        if (sheet.MetaIs(c, MetaRow::Function, "Moderator")) moderators.push_back(c);
    std::size_t nextModerator = 0;
    for (const auto& col : plan.columns) {
        int at = -1;
        if (col.kind == Kind::Population) at = sheet.GetCol(0, col.population);
        if (col.kind == Kind::Moderator && nextModerator < moderators.size())
            at = moderators[nextModerator++];
        t.sheetCol.push_back(at);
    }
    for (const FormatDef* format : plan.used) {
        sheet.FindESCols(format->longName);
        t.entry.push_back(sheet.EntryColIndex());
    }
    return t;
}

// A row's format, block name and merge type, written as the first typed
// entry cell would write them; set here for every row, since a row's first
// typed cell may lie in another format's block. The cells of one format are
// made once and shared by its rows.
struct FormatCells {
    Cell format, nickName, mergeType;
    explicit FormatCells(const FormatDef& def)
        : format(Cell::FromText(def.longName)),
          nickName(Cell::FromText(def.shortName)),
          mergeType(Cell::FromText(std::to_string(MergeType(def.longName)))) {}
};

void SetRowFormat(Sheet& sheet, int row, const FormatCells& cells) {
    if (const int c = sheet.FormatCol(); c >= 0) sheet.Set(row, c, cells.format);
    if (const int c = sheet.NickNameCol(); c >= 0) sheet.Set(row, c, cells.nickName);
    if (const int c = sheet.MergeTypeCol(); c >= 0) sheet.Set(row, c, cells.mergeType);
}

void FillRows(Sheet& sheet, const DelimitedTable& table, const Plan& plan) {
    const Targets targets = FindTargets(sheet, plan);
    std::vector<FormatCells> formatCells;
    for (const FormatDef* format : plan.used)
        formatCells.emplace_back(*format);
    // Where each column's cells go, by block, and whether they are coded
    // words: worked out once, not for every cell.
    std::vector<std::vector<int>> place(plan.used.size());
    std::vector<bool> coded(plan.columns.size(), false);
    for (std::size_t c = 0; c < plan.columns.size(); ++c) {
        const auto& col = plan.columns[c];
        coded[c] = col.kind == Kind::Role && FindDropDown(col.title) != nullptr;
        for (std::size_t block = 0; block < plan.used.size(); ++block) {
            int at = targets.sheetCol[c];
            if (col.kind == Kind::Role) {
                const int slot = RoleSlot(*plan.used[block], col.title);
                at = slot < 0 ? -1 : targets.entry[block][static_cast<std::size_t>(slot)];
            }
            place[block].push_back(at);
        }
    }
    const int rows = static_cast<int>(plan.dataRows.size());
    for (int k = 0; k < rows; ++k) {
        const FormatDef* format = plan.rowFormats[static_cast<std::size_t>(k)];
        const int sheetRow = FixedRowCount + k;
        const auto block = static_cast<std::size_t>(
            std::find(plan.used.begin(), plan.used.end(), format) - plan.used.begin());
        const auto& row = table.rows[plan.dataRows[static_cast<std::size_t>(k)]];
        for (std::size_t c = 0; c < row.size() && c < plan.columns.size(); ++c) {
            const int at = place[block][c];
            if (row[c].empty() || at <= 0) continue;
            if (coded[c])
                sheet.SetText(sheetRow, at, CellText(plan.columns[c].title, row[c]));
            else
                sheet.Set(sheetRow, at, Cell::FromText(row[c]));
        }
        SetRowFormat(sheet, sheetRow, formatCells[block]);
    }
    // Rows with a format are left as they are; this greys the other blocks' cells.
    sheet.FindFormats(FixedRowCount, FixedRowCount + rows - 1);
}

}  // namespace

std::string ModeratorDataType(const std::vector<std::string_view>& cells,
                              const NumberSeparators& separators) {
    bool any = false, whole = true;
    for (const auto cell : cells) {
        if (Trimmed(cell).empty()) continue;
        double value = 0;
        if (!ParseTypedNumber(cell, separators, value) || !std::isfinite(value))
            return "Categorical";
        any = true;
        if (value != std::trunc(value)) whole = false;
    }
    if (!any) return "Categorical";
    return whole ? "Integer" : "Decimal";
}

ImportResult ImportTable(Sheet& sheet, const DelimitedTable& table, std::string_view defaultFormat,
                         std::string_view fileName) {
    if (table.rows.empty())
        return Refuse(std::string(fileName) +
                      ": the file is empty; its first line must hold the column titles");
    const FormatDef* byDefault = nullptr;
    if (!defaultFormat.empty()) {
        byDefault = LookUpFormat(defaultFormat);
        if (byDefault == nullptr)
            return Refuse("Unknown data format \"" + std::string(defaultFormat) + "\"", true);
    }
    Plan plan;
    ImportResult fault;
    if (!CheckText(table, fileName, fault)) return fault;
    if (!PlanColumns(table, fileName, plan, fault)) return fault;
    if (plan.formatColumn < 0 && byDefault == nullptr)
        return Refuse(std::string(fileName) +
                          ": no data format: the file has no \"Data format\" column and no "
                          "default format was given",
                      true);
    if (!PlanRows(table, fileName, byDefault, plan, fault)) return fault;

    BuildColumns(sheet, table, plan);
    FillRows(sheet, table, plan);

    ImportResult result;
    result.ok = true;
    result.dataRows = static_cast<int>(plan.dataRows.size());
    for (const std::size_t r : plan.dataRows)
        result.lines.push_back(LineOf(table, r));
    return result;
}

const FormatDef* FormatOfTitles(const std::vector<std::string>& titles) {
    std::vector<std::string_view> names;
    for (const std::string& title : titles)
        names.push_back(Trimmed(title));
    const FormatDef* best = nullptr;
    for (const FormatDef& format : AllFormats()) {
        const bool fits = std::all_of(format.roles.begin(), format.roles.end(), [&](const auto& r) {
            return std::find(names.begin(), names.end(), r.name) != names.end();
        });
        if (fits && !format.roles.empty() &&
            (best == nullptr || format.roles.size() > best->roles.size()))
            best = &format;
    }
    return best;
}

ImportResult ImportPlainTable(Sheet& sheet, const DelimitedTable& table,
                              std::string_view fileName) {
    if (table.rows.empty()) return Refuse(std::string(fileName) + ": the file holds no rows");
    ImportResult fault;
    if (!CheckText(table, fileName, fault)) return fault;
    std::vector<std::size_t> dataRows;
    for (std::size_t r = 1; r < table.rows.size(); ++r)
        if (!RowIsBlank(table.rows[r])) dataRows.push_back(r);

    StartSheet(sheet, dataRows.size());
    const auto& titles = table.rows.front();
    const int first = sheet.Flex().FixedCols();
    for (std::size_t c = 0; c < titles.size(); ++c) {
        std::vector<std::string_view> cells;
        for (const std::size_t r : dataRows)
            cells.push_back(Field(table.rows[r], c));
        const std::string type = ModeratorDataType(cells, sheet.Separators);
        const int at = first + static_cast<int>(c);
        AddUserColumn(sheet, at, titles[c], type, "Unknown", "Auto");
        sheet.SetMeta(at, MetaRow::Align, type == "Categorical" ? "Left" : "Auto");
        for (std::size_t k = 0; k < dataRows.size(); ++k) {
            const std::string_view cell = Field(table.rows[dataRows[k]], c);
            if (!cell.empty())
                sheet.Set(FixedRowCount + static_cast<int>(k), at, Cell::FromText(cell));
        }
    }
    sheet.FindCols();
    sheet.AddLetters();

    ImportResult result;
    result.ok = true;
    result.dataRows = static_cast<int>(dataRows.size());
    for (const std::size_t r : dataRows)
        result.lines.push_back(LineOf(table, r));
    return result;
}

void AddFormatBlock(Sheet& sheet, const FormatDef& format) {
    AddBlock(sheet, format);
}

}  // namespace synthara::sheet
