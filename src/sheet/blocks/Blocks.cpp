// Data-entry blocks, display columns, population columns and the titles built
// from label pieces.
#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "sheet/blocks/CellBorders.h"
#include "sheet/blocks/ColumnMoves.h"
#include "sheet/blocks/Populations.h"
#include "sheet/grid/Sheet.h"
#include "sheet/rows/StudyRows.h"

namespace synthara::sheet {

namespace {

// Display columns, created from right to left: the first named ends up
// rightmost. The format's own indices go in at the marker.
constexpr std::string_view kFamilyMarker = "";
constexpr std::string_view kDisplayOrder[] = {
    "NPY(0)",
    "EventsPY(0)",
    "N(0)",
    "Events(0)",
    "One Cell B",
    "One Cell A",
    "NPY(3)",
    "NPY(2)",
    "NPY(1)",
    "EventsPY(3)",
    "EventsPY(2)",
    "EventsPY(1)",
    "ccN(3)",
    "ccN(2)",
    "ccN(1)",
    "Exposed(3)",
    "Exposed(2)",
    "Exposed(1)",
    "N(3)",
    "N(2)",
    "N(1)",
    "Events(3)",
    "Events(2)",
    "Events(1)",
    "SD(2)",
    "Mean(2)",
    "SD(1)",
    "Mean(1)",
    "MeanN(0)",
    "SD(0)",
    "Mean(0)",
    "PY1CellB",
    "PY1CellA",
    kFamilyMarker,
    "Log hazard ratio",
    "Hazard ratio",
    "PYCellD",
    "PYCellC",
    "PYCellB",
    "PYCellA",
    "Rate difference",
    "Log rate ratio",
    "Rate ratio",
    "MH risk difference",
    "MH log risk ratio",
    "MH risk ratio",
    "MH log odds ratio",
    "MH odds ratio",
    "MHCellD",
    "MHCellC",
    "MHCellB",
    "MHCellA",
    "Fisher's Z",
    "Correlation",
    "Std Paired Difference",
    "Difference in means",
    "Hedges's g",
    "Std diff in means",
    "Risk difference",
    "Log risk ratio",
    "Risk ratio",
    "Peto V",
    "Peto O-E",
    "Log Peto odds ratio",
    "Peto odds ratio",
    "Log odds ratio",
    "Odds ratio",
};

// Roles whose cells are codes of a fixed list. Their titles are the role
// names, and the project's words never rewrite them.
constexpr std::string_view kRoleTitledRoles[] = {"Effect direction", "Study design",
                                                 "Standardize by"};

// The indices a format shows, primary first, limited to indices the sheet
// knows. A name only old files hold borrows the set of the first format
// computed by the same procedure.
std::vector<std::string_view> DisplaySetOf(std::string_view formatName) {
    const FormatDef* format = FindFormat(formatName);
    if (format == nullptr) {
        const Procedure procedure = ProcedureFor(formatName);
        if (procedure != Procedure::None) {
            for (const FormatDef& f : AllFormats()) {
                if (f.procedure == procedure) {
                    format = &f;
                    break;
                }
            }
        }
    }
    std::vector<std::string_view> set;
    if (format == nullptr) return set;
    for (std::string_view name : format->displaySet) {
        if (IndexNumber(name) != 0 && std::find(set.begin(), set.end(), name) == set.end())
            set.push_back(name);
    }
    return set;
}

// The Settings row a label piece names; 0 when the piece is not a group word.
// Person time has one word per group: a piece beside "Group-B" takes the second.
int GroupWordRow(std::string_view piece, bool secondGroup) {
    struct Word {
        std::string_view piece;
        int row;
    };
    static constexpr Word kWords[] = {
        {"Group-A", SettingsRow::GroupA},
        {"Group-B", SettingsRow::GroupB},
        {"Events", SettingsRow::Events},
        {"Non-events", SettingsRow::NonEvents},
        {"Exposed", SettingsRow::Exposed},
        {"Unexposed", SettingsRow::Unexposed},
        {"Cases", SettingsRow::Cases},
        {"Controls", SettingsRow::Controls},
        {"Pre", SettingsRow::Pre},
        {"Post", SettingsRow::Post},
        {"Condition-A", SettingsRow::ConditionA},
        {"Condition-B", SettingsRow::ConditionB},
    };
    if (piece == "Person Years" || piece == "Person years")
        return secondGroup ? SettingsRow::PersonYears2 : SettingsRow::PersonYears1;
    for (const Word& w : kWords) {
        if (w.piece == piece) return w.row;
    }
    return 0;
}

// "Odds ratio" for the point estimate, "Odds ratio StdErr" and so on for the rest.
std::string DisplayTitle(std::string_view indexName, std::string_view attribute) {
    std::string title(indexName);
    if (attribute != AttrNames[AttrPoint]) {
        title += ' ';
        title += attribute;
    }
    return title;
}

// Rebuilds a column's title from its label pieces with the project's words
// put in; false, with the title untouched, when the column has no pieces.
bool TitleFromPieces(Sheet& sheet, int col) {
    const std::string pieces[] = {sheet.Meta(col, MetaRow::LabelPart1),
                                  sheet.Meta(col, MetaRow::LabelPart2),
                                  sheet.Meta(col, MetaRow::LabelPart3)};
    const bool secondGroup =
        std::find(std::begin(pieces), std::end(pieces), "Group-B") != std::end(pieces);
    std::string title;
    for (const std::string& piece : pieces) {
        if (piece.empty()) continue;
        const int row = GroupWordRow(piece, secondGroup);
        const std::string word = row != 0 ? sheet.SettingsWord(row) : piece;
        if (word.empty()) continue;
        if (!title.empty()) title += ' ';
        title += word;
    }
    if (title.empty()) return false;
    sheet.SetMeta(col, MetaRow::ColumnHeader, std::move(title));
    return true;
}

}  // namespace

void Sheet::TitleEntryColumn(int col) {
    const std::string role = Meta(col, MetaRow::Attribute);
    if (std::find(std::begin(kRoleTitledRoles), std::end(kRoleTitledRoles), role) !=
        std::end(kRoleTitledRoles)) {
        if (MetaIs(col, MetaRow::ColumnHeader, "")) SetMeta(col, MetaRow::ColumnHeader, role);
        return;
    }
    if (!TitleFromPieces(*this, col) && MetaIs(col, MetaRow::ColumnHeader, ""))
        SetMeta(col, MetaRow::ColumnHeader, role);
}

void Sheet::ApplyGroupNames() {
    for (int c = 0; c < flex_.Cols(); ++c) {
        if (MetaIs(c, MetaRow::Function, "Data Entry")) {
            TitleEntryColumn(c);
        } else if (MetaIs(c, MetaRow::Function, "Display")) {
            // Only pieces are rewritten: a display column carries none, so a
            // title the user gave it survives every load.
            TitleFromPieces(*this, c);
        }
    }
}

void Sheet::CreateAll() {
    const std::string& formatName = Defined.CurrentFormatLong;
    const std::string& blockName = Defined.CurrentFormatShort;
    const std::string numberFormat = NumberFormat();
    int created = 0;
    for (std::size_t r = 0; r < MaxRoles; ++r) {
        const std::string& role = Defined.EntryColNames[r];
        if (role.empty()) continue;
        const int col = flex_.Cols();
        flex_.InsertColumn(col);
        const bool dropDown = FindDropDown(role) != nullptr;
        const bool whole = Defined.EntryColInteger[r] || role == "Tails";
        SetMeta(col, MetaRow::ColumnHeader, "");
        SetMeta(col, MetaRow::Function, "Data Entry");
        SetMeta(col, MetaRow::Attribute, role);
        // The list of a drop-down role is known from the catalogue and is
        // looked up there by role; the column itself starts without one.
        SetMeta(col, MetaRow::ValueList, "");
        SetMeta(col, MetaRow::LabelPart1, Defined.LabelPieces[0][r]);
        SetMeta(col, MetaRow::LabelPart2, Defined.LabelPieces[1][r]);
        SetMeta(col, MetaRow::LabelPart3, Defined.LabelPieces[2][r]);
        SetMeta(col, MetaRow::DataType, dropDown ? role : "Decimal");
        SetMeta(col, MetaRow::ColWidth, dropDown ? "1400" : "Auto");
        SetMeta(col, MetaRow::NumDecs, whole ? "0" : "Auto");
        SetMeta(col, MetaRow::Missing, "");
        SetMeta(col, MetaRow::Align, "Auto");
        SetMeta(col, MetaRow::Hidden, "Show");
        SetMeta(col, MetaRow::Renamed, "Manual");
        SetMeta(col, MetaRow::Numvals, "0");
        SetMeta(col, MetaRow::FormatName, formatName);
        SetMeta(col, MetaRow::BlockName, blockName);
        // The role's own number: roles pointed at existing columns leave gaps.
        SetMeta(col, MetaRow::BlockSeq, std::to_string(r + 1));
        ++created;
        flex_.SetColNumberFormat(col, numberFormat);
        // A blank title would leave the column nameless in lists and messages.
        TitleEntryColumn(col);
    }
    if (created == 0) return;
    MoveEntryCols(*this, formatName, blockName);
    FindCols();
}

void Sheet::AppendDisplayIndex(std::string_view indexName, std::string_view primary, bool inSet) {
    const std::string numberFormat = NumberFormat();
    for (int a = AttrPoint; a <= AttrFormula; ++a) {
        const int col = flex_.Cols();
        flex_.InsertColumn(col);
        WriteDefaultRecord(col);
        const std::string_view attribute = AttrNames[a];
        SetMeta(col, MetaRow::ColumnHeader, DisplayTitle(indexName, attribute));
        SetMeta(col, MetaRow::Function, "Display");
        SetMeta(col, MetaRow::IndexName, std::string(indexName));
        SetMeta(col, MetaRow::Attribute, std::string(attribute));
        SetMeta(col, MetaRow::Renamed, "Manual");
        const bool point = a == AttrPoint;
        const char* displayClass = !inSet                            ? "Hide"
                                   : (point && indexName == primary) ? "Primary"
                                                                     : "Show";
        SetMeta(col, MetaRow::DisplayClass, displayClass);
        const bool shown = point && inSet;
        SetMeta(col, MetaRow::Hidden, shown ? "Show" : "Hide");
        flex_.SetColHidden(col, !shown);
        flex_.SetColNumberFormat(col, numberFormat);
    }
}

void Sheet::CreateDisplayCols(std::string_view formatName) {
    const std::vector<std::string_view> set = DisplaySetOf(formatName);
    const std::string_view primary = set.empty() ? std::string_view{} : set.front();
    const auto inSet = [&set](std::string_view name) {
        return std::find(set.begin(), set.end(), name) != set.end();
    };

    std::unordered_set<std::string> existing;
    for (int c = 0; c < flex_.Cols(); ++c) {
        if (MetaIs(c, MetaRow::Function, "Display")) existing.insert(Meta(c, MetaRow::IndexName));
    }

    if (!existing.empty()) {
        // The display columns are shared by all blocks: only the primary index
        // changes, as choosing a primary index from the menu does.
        if (!primary.empty()) {
            for (int c = 0; c < flex_.Cols(); ++c) {
                if (!MetaIs(c, MetaRow::Function, "Display")) continue;
                if (MetaIs(c, MetaRow::IndexName, primary))
                    SetMeta(c, MetaRow::DisplayClass, "Primary");
                else if (MetaIs(c, MetaRow::DisplayClass, "Primary"))
                    SetMeta(c, MetaRow::DisplayClass, "Show");
            }
        }
        // A sheet whose blocks come from different families still gets every
        // index the new format shows, its primary index included.
        for (std::string_view name : set) {
            if (!existing.contains(std::string(name))) AppendDisplayIndex(name, primary, true);
        }
        FindCols();
        return;
    }

    // Built in creation order (right to left), then appended left to right.
    std::vector<std::string_view> order;
    for (std::string_view name : kDisplayOrder) {
        if (name != kFamilyMarker) {
            order.push_back(name);
            continue;
        }
        // Reversed, so that the format's own indices read primary first.
        for (auto it = set.rbegin(); it != set.rend(); ++it) {
            if (std::find(std::begin(kDisplayOrder), std::end(kDisplayOrder), *it) ==
                std::end(kDisplayOrder))
                order.push_back(*it);
        }
    }
    for (auto it = order.rbegin(); it != order.rend(); ++it)
        AppendDisplayIndex(*it, primary, inSet(*it));
    FindCols();
}

int Sheet::MakePop(int populationIndex) {
    if (populationIndex < 1 || populationIndex > static_cast<int>(PopulationNames.size()))
        return -1;
    const int existing = GetCol(0, populationIndex);
    if (existing >= 0) {
        SayPopulationExists(*this, existing, populationIndex);
        return existing;
    }
    const std::string name(PopulationNames[static_cast<std::size_t>(populationIndex - 1)]);
    if (SayIfNameInUse(*this, name, -1)) return -1;

    // The row display toggle shows in the grid: with "Merge rows" on, the
    // identifying columns are drawn merged.
    bool merged = false;
    int at = -1;
    for (int p = 1; p <= static_cast<int>(PopulationNames.size()); ++p) {
        const int c = GetCol(0, p);
        if (c >= 0) merged = merged || Flex().Col(c).merged;
        at = std::max(at, c);
    }
    if (at >= 0)
        ++at;
    else
        at = std::max(EntrySeqCol() + 1, flex_.FixedCols());
    at = std::clamp(at, 0, flex_.Cols());

    flex_.InsertColumn(at);
    WriteDefaultRecord(at);
    SetMeta(at, MetaRow::ColumnHeader, name);
    SetMeta(at, MetaRow::DataType, "Categorical");
    SetMeta(at, MetaRow::Function, "Populations");
    SetMeta(at, MetaRow::PopulationMark, "Populations");
    SetMeta(at, MetaRow::Attribute, name);
    SetMeta(at, MetaRow::NumDecs, "Auto");
    SetMeta(at, MetaRow::ColWidth, "Auto");
    SetMeta(at, MetaRow::Align, "Left");
    SetMeta(at, MetaRow::Hidden, "Show");
    SetMeta(at, MetaRow::Renamed, "Manual");
    SetMeta(at, MetaRow::Numvals, "0");
    SetMeta(at, MetaRow::BlockSeq, std::to_string(populationIndex));
    FindCols();
    AddLetters();
    // The new column joins the sort and the merged drawing of the others.
    MergeRows(*this, merged);
    AddCellBorders(*this);
    return GetCol(0, populationIndex);
}

void Sheet::GrayBlocks(int firstRow, int lastRow) {
    const int formatCol = FormatCol();
    const int nickCol = NickNameCol();
    if (firstRow <= 0) firstRow = FixedRowCount;
    if (lastRow <= 0) lastRow = flex_.Rows() - 1;
    firstRow = std::max(firstRow, FixedRowCount);
    lastRow = std::min(lastRow, flex_.Rows() - 1);

    struct EntryCol {
        int col;
        std::string block;
        std::uint8_t shade;
    };
    // Each block keeps its own shade, by order of first appearance.
    std::vector<EntryCol> entry;
    std::unordered_map<std::string, std::uint8_t> shadeOfBlock;
    for (int c = 0; c < flex_.Cols(); ++c) {
        if (!MetaIs(c, MetaRow::Function, "Data Entry")) continue;
        std::string block = Meta(c, MetaRow::BlockName);
        auto [it, added] =
            shadeOfBlock.try_emplace(block, static_cast<std::uint8_t>(shadeOfBlock.size() % 8 + 1));
        entry.push_back({c, std::move(block), it->second});
    }
    if (entry.empty()) return;

    for (int r = firstRow; r <= lastRow; ++r) {
        const bool hasFormat = formatCol >= 0 && !flex_.IsBlank(r, formatCol);
        const std::string nick = hasFormat && nickCol >= 0 ? flex_.Text(r, nickCol) : std::string();
        for (const EntryCol& e : entry) {
            const std::uint8_t shade = hasFormat && e.block != nick ? e.shade : 0;
            if (flex_.CellShade(r, e.col) != shade) flex_.SetCellShade(r, e.col, shade);
        }
    }
}

}  // namespace synthara::sheet
