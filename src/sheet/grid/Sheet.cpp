#include "sheet/grid/Sheet.h"

#include "sheet/grid/NumberFormats.h"

#include <algorithm>
#include <deque>
#include <string>
#include <unordered_map>

#include <absl/container/flat_hash_map.h>

namespace synthara::sheet {

namespace {

// The defaults of rows 2 to 13 on a new column; row 11 carries nothing.
struct DefaultField {
    int row;
    const char* value;
};
constexpr DefaultField kDefaultRecord[] = {
    {MetaRow::DataType, "Not specified"},
    {MetaRow::Function, "Empty"},
    {MetaRow::ValueList, ""},
    {MetaRow::NumDecs, "Auto"},
    {MetaRow::Missing, ""},
    {MetaRow::ColWidth, "Auto"},
    {MetaRow::Align, "Auto"},
    {MetaRow::Hidden, "Show"},
    {MetaRow::Renamed, "Auto"},
    {MetaRow::Numvals, "0"},
    {MetaRow::Attribute, "Empty"},
};

// Column 0 names the fields it can: the label of each field row.
constexpr DefaultField kFieldLabels[] = {
    {MetaRow::DataType, "DataType"},   {MetaRow::Function, "Function"},
    {MetaRow::Attribute, "Attribute"}, {MetaRow::NumDecs, "NumDecs"},
    {MetaRow::Missing, "Missing"},     {MetaRow::ColWidth, "ColWidth"},
    {MetaRow::Align, "Align"},         {MetaRow::Hidden, "Hidden"},
    {MetaRow::Renamed, "Renamed"},     {MetaRow::Numvals, "Numvals"},
};

struct SystemColumn {
    const char* key;
    const char* title;
    const char* dataType;
    const char* function;
    const char* attribute;  // nullptr keeps the default
    const char* align;
    const char* hidden;
    const char* colWidth;
};

// In the order they stand on a new sheet, from column 1. The last one holds
// each row's error text, written by the computation.
constexpr SystemColumn kSystemColumns[] = {
    {ColumnKey::FormatCol, "Data format", "Categorical", "Data Format", "Data Format", "Left",
     "Hide", "Auto"},
    {ColumnKey::NickNameCol, "Data format", "Categorical", "NickName", nullptr, "Left", "Show",
     "1500"},
    {ColumnKey::MergeTypeCol, "Data format", "Integer", "MergeType", nullptr, "Auto", "Show",
     "1500"},
    {ColumnKey::EntrySeq, "EntrySeq", "Integer", "EntrySeq", "EntrySeq", "Auto", "Show", "1500"},
    {ColumnKey::TempSeq, "Temp Sequence", "Integer", "Temp Sequence", nullptr, "Auto", "Show",
     "1500"},
    {ColumnKey::Settings, "Settings", "Integer", "Settings", "Settings", "Auto", "Show", "1500"},
    {ColumnKey::Error, "Errors", "Categorical", "Row Errors", "Row Errors", "Left", "Hide", "Auto"},
};

constexpr DefaultField kSettingsDefaults[] = {
    {SettingsRow::GroupA, "Group-A"},
    {SettingsRow::GroupB, "Group-B"},
    {SettingsRow::Events, "Events"},
    {SettingsRow::NonEvents, "Non-events"},
    {SettingsRow::Exposed, "Exposed"},
    {SettingsRow::Unexposed, "Unexposed"},
    {SettingsRow::Cases, "Cases"},
    {SettingsRow::Controls, "Controls"},
    {SettingsRow::PersonYears1, "Person Years"},
    {SettingsRow::PersonYears2, "Person Years"},
    {SettingsRow::Pre, "Pre"},
    {SettingsRow::Post, "Post"},
    {SettingsRow::ConditionA, "Condition-A"},
    {SettingsRow::ConditionB, "Condition-B"},
    {SettingsRow::ImputedR, "0.5"},
    {SettingsRow::FudgeFactor, "1.1"},
    {SettingsRow::PoolVarianceMethod, "1"},
    {SettingsRow::GVarianceMethod, "1"},
};

std::array<std::string, IndexCount + 1> BuildIndexNames() {
    std::array<std::string, IndexCount + 1> t;
    const char* first[] = {"Log odds ratio",
                           "Odds ratio",
                           "Log risk ratio",
                           "Risk ratio",
                           "Log rate ratio",
                           "Rate ratio",
                           "Log hazard ratio",
                           "Hazard ratio",
                           "Risk difference",
                           "Rate difference",
                           "Difference in means",
                           "Std diff in means",
                           "Hedges's g",
                           "Std Paired Difference",
                           "Correlation",
                           "Fisher's Z",
                           "Logit event rate",
                           "Event rate",
                           "Mean",
                           "Point estimate",
                           "Point (raw)",
                           "Point (log)",
                           "Log Peto odds ratio",
                           "Peto odds ratio",
                           "Peto O-E",
                           "Peto V",
                           "MHCellA",
                           "MHCellB",
                           "MHCellC",
                           "MHCellD",
                           "N(1)",
                           "N(2)",
                           "N(3)",
                           "Events(1)",
                           "Events(2)",
                           "Events(3)",
                           "ccN(1)",
                           "ccN(2)",
                           "ccN(3)",
                           "Exposed(1)",
                           "Exposed(2)",
                           "Exposed(3)",
                           "Mean(1)",
                           "Mean(2)",
                           "SD(1)",
                           "SD(2)",
                           "NPY(1)",
                           "NPY(2)",
                           "NPY(3)",
                           "EventsPY(1)",
                           "EventsPY(2)",
                           "EventsPY(3)",
                           "PYCellA",
                           "PYCellB",
                           "PYCellC",
                           "PYCellD",
                           "Mean(0)",
                           "SD(0)",
                           "MeanN(0)",
                           "N(0)",
                           "Events(0)",
                           "NPY(0)",
                           "EventsPY(0)",
                           "MH log odds ratio",
                           "MH odds ratio",
                           "MH log risk ratio",
                           "MH risk ratio",
                           "MH risk difference",
                           "Rate"};
    int n = 1;
    for (const char* name : first)
        t[static_cast<std::size_t>(n++)] = name;
    t[72] = "One Cell A";
    t[73] = "One Cell B";
    t[74] = "PY1CellA";
    t[75] = "PY1CellB";
    return t;
}

}  // namespace

std::string AutoLetters(int n) {
    // A..Z, AA..AZ, BA.. : a bijective base-26 numeral, which also carries on
    // sensibly past "ZZ".
    std::string s;
    while (n > 0) {
        --n;
        s.insert(s.begin(), static_cast<char>('A' + n % 26));
        n /= 26;
    }
    return s;
}

const std::array<std::string, IndexCount + 1>& IndexNameTable() {
    static const std::array<std::string, IndexCount + 1> table = BuildIndexNames();
    return table;
}

int IndexNumber(std::string_view name) {
    static const std::unordered_map<std::string_view, int> numbers = [] {
        std::unordered_map<std::string_view, int> m;
        const auto& t = IndexNameTable();
        for (int i = 1; i <= IndexCount; ++i) {
            const std::string& s = t[static_cast<std::size_t>(i)];
            if (!s.empty()) m.emplace(s, i);
        }
        return m;
    }();
    if (name.empty()) return 0;
    auto it = numbers.find(name);
    return it == numbers.end() ? 0 : it->second;
}

// Each line break (CR LF, CR or LF) goes; where it stood between two
// characters that are not blanks, one blank takes its place so that the words
// on either side stay apart.
std::string RemoveCR(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        char c = text[i];
        if (c != '\r' && c != '\n') {
            out += c;
            ++i;
            continue;
        }
        i += (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ? 2 : 1;
        bool wordBefore = !out.empty() && out.back() != ' ';
        bool wordAfter = i < text.size() && text[i] != ' ' && text[i] != '\r' && text[i] != '\n';
        if (wordBefore && wordAfter) out += ' ';
    }
    return out;
}

Sheet::Sheet(ports::Prompter& prompter) : prompter_(&prompter) {}

const std::array<std::string, IndexCount + 1>& Sheet::IndexNames() const {
    RefreshLookups();
    return indexNames_;
}

const Sheet::DisplayTable& Sheet::DisplayColTable() const {
    RefreshLookups();
    return displayColTable_;
}

void Sheet::RefreshLookups() const {
    if (lookupsBuiltAt_ == flex_.StructureRevision()) return;
    for (auto& row : displayColTable_)
        row.fill(0);
    indexNames_ = IndexNameTable();
    // One walk: the index number comes from a hashed lookup of the name.
    for (int c = 0; c < flex_.Cols(); ++c) {
        if (!MetaIs(c, MetaRow::Function, "Display")) continue;
        const int index = IndexNumber(flex_.At(MetaRow::IndexName, c).TextView());
        if (index == 0) continue;
        for (int a = AttrPoint; a <= AttrFormula; ++a) {
            if (MetaIs(c, MetaRow::Attribute, AttrNames[a])) {
                displayColTable_[static_cast<std::size_t>(index)][static_cast<std::size_t>(a)] = c;
                break;
            }
        }
    }
    lookupsBuiltAt_ = flex_.StructureRevision();
}

void Sheet::WriteDefaultRecord(int col) {
    for (const DefaultField& f : kDefaultRecord)
        flex_.SetText(f.row, col, f.value);
}

std::string Sheet::NumberFormat() const {
    // The program's setting goes up to eight decimals.
    return DecimalsFormat(Decimals <= 8 ? Decimals : 3);
}

void Sheet::InitializeGrid() {
    flex_.Clear();
    // The display modes and switches are the program's; the tabs belong to the old sheet.
    View.Tabs.clear();
    View.TabsVisible = false;
    View.CurrentTab = 0;
    View.PrimaryIndex.clear();
    View.Borders.clear();
    flex_.SetDefaultRowHeight(250);
    flex_.SetCols(NewSheetColumns);
    flex_.SetFixedCols(NewSheetFixedColumns);
    for (int c = 0; c < flex_.Cols(); ++c)
        flex_.SetColHidden(c, true);
    flex_.SetRows(NewSheetRows);
    flex_.SetFixedRows(FixedRowCount);
    for (int r = 1; r < FixedRowCount; ++r)
        flex_.SetRowHidden(r, true);
    flex_.SetColHidden(0, false);
    for (int c = NewSheetFixedColumns; c < flex_.Cols(); ++c)
        flex_.SetColHidden(c, false);
    for (int c = 0; c < flex_.Cols(); ++c)
        WriteDefaultRecord(c);
    for (const DefaultField& f : kFieldLabels)
        flex_.SetText(f.row, 0, f.value);
    CreateFormatCol();
    AddLetters();
    AddRowNumbers();
    for (int c = 0; c < flex_.Cols(); ++c)
        flex_.SetColWidth(c, 940);
    flex_.SetColWidth(0, 400);
    for (int r = 0; r < flex_.Rows(); ++r)
        flex_.SetRowHeight(r, 250);
    flex_.SetRowHeight(0, 500);
    const std::string format = NumberFormat();
    for (int c = 0; c < flex_.Cols(); ++c)
        flex_.SetColNumberFormat(c, format);
    flex_.SetColNumberFormat(0, "");
}

void Sheet::CreateFormatCol() {
    flex_.SetText(MetaRow::ColumnHeader, 0, "");
    int col = 1;
    for (const SystemColumn& s : kSystemColumns) {
        if (col >= flex_.Cols()) flex_.SetCols(col + 1);
        flex_.SetColKey(col, s.key);
        SetMeta(col, MetaRow::ColumnHeader, s.title);
        SetMeta(col, MetaRow::DataType, s.dataType);
        SetMeta(col, MetaRow::Function, s.function);
        if (s.attribute != nullptr) SetMeta(col, MetaRow::Attribute, s.attribute);
        SetMeta(col, MetaRow::Align, s.align);
        SetMeta(col, MetaRow::Hidden, s.hidden);
        SetMeta(col, MetaRow::ColWidth, s.colWidth);
        SetMeta(col, MetaRow::Renamed, "Manual");
        SetMeta(col, MetaRow::Numvals, "0");
        SetMeta(col, MetaRow::NumDecs, "Auto");
        // Shown only when blocks call for it; see the block layout.
        flex_.SetColHidden(col, true);
        ++col;
    }
    const int settings = SettingsCol();
    for (const DefaultField& f : kSettingsDefaults)
        flex_.SetText(f.row, settings, f.value);
}

std::string Sheet::SettingsWord(int settingsRow) const {
    const int settings = SettingsCol();
    if (settings < 0 || settingsRow < 0 || settingsRow >= flex_.Rows()) return {};
    return flex_.Text(settingsRow, settings);
}

std::string Sheet::ColumnLabel(int col) const {
    if (col < 0 || col >= flex_.Cols()) return {};
    return RemoveCR(flex_.Text(MetaRow::ColumnHeader, col));
}

void Sheet::AddLetters() {
    int counter = 0;
    for (int c = flex_.FixedCols(); c < flex_.Cols(); ++c) {
        if (Flex().Col(c).hidden) continue;
        ++counter;
        if (MetaIs(c, MetaRow::Renamed, "Auto"))
            SetMeta(c, MetaRow::ColumnHeader, AutoLetters(counter));
    }
}

void Sheet::AddRowNumbers() {
    const int seq = EntrySeqCol();
    int n = 1;
    // Numbers read as the same text and need no text of their own.
    for (int r = FixedRowCount; r < flex_.Rows(); ++r, ++n) {
        if (seq >= 0) flex_.SetNumber(r, seq, n);
        flex_.SetNumber(r, 0, n);
    }
}

int Sheet::GetCol(int firstCol, int populationIndex) const {
    if (populationIndex < 1 || populationIndex > static_cast<int>(PopulationNames.size()))
        return -1;
    const std::string_view name = PopulationNames[static_cast<std::size_t>(populationIndex - 1)];
    for (int c = std::max(firstCol, 0); c < flex_.Cols(); ++c) {
        if (MetaIs(c, MetaRow::Function, "Populations") && MetaIs(c, MetaRow::Attribute, name))
            return c;
    }
    return -1;
}

void Sheet::GatherIdentifyingCols(int anchor) {
    std::vector<int> members;
    if (EntrySeqCol() >= 0) members.push_back(EntrySeqCol());
    for (int p = 1; p <= static_cast<int>(PopulationNames.size()); ++p) {
        const int c = GetCol(0, p);
        if (c >= 0) members.push_back(c);
    }
    const int n = flex_.Cols();
    const int k = static_cast<int>(members.size());
    anchor = std::clamp(anchor, 0, n - k);
    bool inPlace = true;
    for (int i = 0; i < k && inPlace; ++i)
        inPlace = members[static_cast<std::size_t>(i)] == anchor + i;
    if (inPlace) return;

    // Take the members out to the right end in order, then set them back
    // from the anchor on: no case work on who stood left of whom.
    for (std::size_t i = 0; i < members.size(); ++i) {
        const int from = members[i];
        flex_.MoveColumn(from, n - 1);
        for (int& other : members) {
            if (other > from) --other;
        }
        members[i] = n - 1;
    }
    for (int i = 0; i < k; ++i)
        flex_.MoveColumn(n - k + i, anchor + i);
}

void Sheet::FindCols() {
    for (int c = flex_.FixedCols(); c < flex_.Cols(); ++c) {
        if (!MetaIs(c, MetaRow::Function, "Populations")) continue;
        for (std::string_view name : PopulationNames) {
            if (MetaIs(c, MetaRow::Attribute, name)) {
                flex_.SetColKey(c, std::string(name));
                break;
            }
        }
    }

    GatherIdentifyingCols(EntrySeqCol() >= 0 ? flex_.FixedCols() - 1 : flex_.FixedCols());

    RefreshLookups();
}

Sheet::RoleColumns Sheet::LocateRoles(std::string_view formatName,
                                      const std::array<std::string, MaxRoles>& roleNames) const {
    RoleColumns found;
    for (int c = 0; c < flex_.Cols(); ++c) {
        if (!MetaIs(c, MetaRow::Function, "Data Entry") ||
            !MetaIs(c, MetaRow::FormatName, formatName))
            continue;
        for (std::size_t r = 0; r < MaxRoles; ++r) {
            const std::string& role = roleNames[r];
            if (!role.empty() && MetaIs(c, MetaRow::Attribute, role)) {
                found.index[r] = c;
                ++found.count[r];
            }
        }
    }
    return found;
}

void Sheet::FindESCols(std::string_view formatName) {
    DefineFormat(formatName, Defined);
    const RoleColumns found = LocateRoles(formatName, Defined.EntryColNames);
    entryColIndex_ = found.index;
    entryColCount_ = found.count;
    if (formatName == "Function") return;
    for (std::size_t r = 0; r < MaxRoles; ++r) {
        if (!Defined.EntryColNames[r].empty() && entryColCount_[r] != 1) {
            prompter_->Message({"Problem locating columns",
                                {"Problem locating columns", std::string(formatName)},
                                ports::Icon::Warning});
            return;
        }
    }
}

void Sheet::FindFormats(int firstRow, int lastRow) {
    const int formatCol = FormatCol();
    if (formatCol < 0) return;
    const int mergeCol = MergeTypeCol();
    const int nickCol = NickNameCol();
    if (firstRow <= 0) firstRow = FixedRowCount;
    if (lastRow <= 0) lastRow = flex_.Rows() - 1;
    firstRow = std::max(firstRow, FixedRowCount);
    lastRow = std::min(lastRow, flex_.Rows() - 1);

    std::vector<int> entryCols;
    for (int c = flex_.FixedCols(); c < flex_.Cols(); ++c) {
        if (MetaIs(c, MetaRow::Function, "Data Entry")) entryCols.push_back(c);
    }
    for (int r = firstRow; r <= lastRow; ++r) {
        if (!flex_.IsBlank(r, formatCol) || isRowEmpty(r)) continue;
        for (int c : entryCols) {
            if (flex_.IsBlank(r, c)) continue;
            std::string format = Meta(c, MetaRow::FormatName);
            if (mergeCol >= 0) flex_.SetText(r, mergeCol, std::to_string(MergeType(format)));
            if (nickCol >= 0) flex_.SetText(r, nickCol, Meta(c, MetaRow::BlockName));
            flex_.SetText(r, formatCol, std::move(format));
            break;
        }
    }
    if (firstRow <= lastRow) GrayBlocks(firstRow, lastRow);
}

bool Sheet::isRowEmpty(int row) const {
    for (int c = flex_.FixedCols(); c < flex_.Cols(); ++c) {
        if (!flex_.IsBlank(row, c)) return false;
    }
    return true;
}

bool Sheet::isColEmpty(int col) const {
    for (int r = FixedRowCount; r < flex_.Rows(); ++r) {
        if (!flex_.IsBlank(r, col)) return false;
    }
    return true;
}

int Sheet::GetLastRow() const {
    for (int r = flex_.Rows() - 1; r > FixedRowCount; --r) {
        if (!isRowEmpty(r)) return r;
    }
    return FixedRowCount;
}

int Sheet::FindLastRow() const {
    // Column by column from the bottom: a column's cells are stored together.
    int last = FixedRowCount;
    for (int c = flex_.FixedCols(); c < flex_.Cols(); ++c) {
        for (int r = flex_.Rows() - 1; r > last; --r) {
            if (!flex_.IsBlank(r, c) && !flex_.TextIs(r, c, " ")) {
                last = r;
                break;
            }
        }
    }
    return last;
}

void Sheet::SynchData() {
    bool anyPopulation = false;
    for (int p = 1; p <= static_cast<int>(PopulationNames.size()) && !anyPopulation; ++p)
        anyPopulation = GetCol(0, p) >= 0;
    const int seq = EntrySeqCol();
    if (!anyPopulation || seq < 0) {
        AddRowNumbers();
        return;
    }

    // Empty rows go to the end. Below the last row with data they already
    // are, so only gaps cost a move.
    bool dataBelow = false;
    for (int r = flex_.Rows() - 1; r >= FixedRowCount; --r) {
        if (!isRowEmpty(r)) {
            dataBelow = true;
        } else if (dataBelow) {
            flex_.MoveRow(r, flex_.Rows() - 1);
        }
    }

    const int last = GetLastRow();
    // Studies numbered by first appearance; all rows of one study share it.
    // Without a study-name column each row counts as its own study.
    const int studyCol = GetCol(0, 1);
    // Names are looked at in their cells, which stay put meanwhile; a number
    // typed as a name is kept as text beside them.
    absl::flat_hash_map<std::string_view, int> studyNumber;
    std::deque<std::string> numberNames;
    studyNumber.reserve(static_cast<std::size_t>(std::max(last - FixedRowCount + 1, 0)));
    int counter = 1;
    for (int r = FixedRowCount; r <= last; ++r) {
        int number = counter;
        if (studyCol >= 0) {
            const Cell& cell = flex_.At(r, studyCol);
            std::string_view name = cell.TextView();
            if (cell.IsNumber()) name = numberNames.emplace_back(cell.Text());
            auto [it, added] = studyNumber.try_emplace(name, counter);
            number = it->second;
            if (added) ++counter;
        } else {
            ++counter;
        }
        flex_.SetNumber(r, seq, number);
    }

    int anchor = seq;
    for (int p = 1; p <= static_cast<int>(PopulationNames.size()); ++p) {
        const int c = GetCol(0, p);
        if (c >= 0) anchor = std::min(anchor, c);
    }
    GatherIdentifyingCols(anchor);
    const int from = EntrySeqCol();
    int to = from;
    for (int p = 1; p <= static_cast<int>(PopulationNames.size()); ++p)
        to = std::max(to, GetCol(0, p));
    if (last > FixedRowCount) flex_.SortRows(FixedRowCount, last, from, to);
    AddRowNumbers();
}

}  // namespace synthara::sheet
