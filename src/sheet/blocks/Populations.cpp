#include "sheet/blocks/Populations.h"

#include <algorithm>
#include <string>

#include "sheet/blocks/CellBorders.h"
#include "sheet/blocks/ColumnMoves.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

namespace {

bool IsFreeForRole(const Sheet& sheet, int col) {
    return sheet.MetaIs(col, MetaRow::Function, "Empty") ||
           sheet.MetaIs(col, MetaRow::Function, "Unknown") ||
           sheet.MetaIs(col, MetaRow::Function, "Moderator");
}

// "The column Dose is being used for another function": true when it is.
bool SayIfTaken(Sheet& sheet, int col) {
    if (IsFreeForRole(sheet, col)) return false;
    sheet.Prompts().Message(
        {" Assign function to column",
         {"The column " + sheet.ColumnLabel(col) + " is being used for another function          ",
          "Please click on the correct column and then try again"},
         ports::Icon::Information});
    return true;
}

std::string Lower(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return out;
}

}  // namespace

void SayPopulationExists(Sheet& sheet, int existing, int populationIndex) {
    const std::string_view name = PopulationNames[static_cast<std::size_t>(populationIndex - 1)];
    sheet.Prompts().Message({" Column already exists",
                             {"The column labeled '" + sheet.ColumnLabel(existing) +
                              "' is now being used to identify " + Lower(name)},
                             ports::Icon::Information});
}

bool SayIfNameInUse(Sheet& sheet, std::string_view name, int except) {
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (c == except || sheet.ColumnLabel(c) != name) continue;
        sheet.Prompts().Message(
            {" Name in use", {"The variable name already exists     "}, ports::Icon::Information});
        return true;
    }
    return false;
}

int IdentifyPop(Sheet& sheet, int col, int populationIndex) {
    if (populationIndex < 1 || populationIndex > static_cast<int>(PopulationNames.size()))
        return -1;
    if (col < sheet.Flex().FixedCols() || col >= sheet.Flex().Cols()) return -1;
    const int existing = sheet.GetCol(0, populationIndex);
    if (existing == col) return col;
    if (existing >= 0) {
        SayPopulationExists(sheet, existing, populationIndex);
        return existing;
    }
    if (SayIfTaken(sheet, col)) return -1;
    const std::string name(PopulationNames[static_cast<std::size_t>(populationIndex - 1)]);
    // A title the user gave stays; a column still lettered takes the name.
    const bool lettered = !sheet.MetaIs(col, MetaRow::Renamed, "Manual");
    if (lettered && SayIfNameInUse(sheet, name, col)) return -1;

    if (lettered) sheet.SetMeta(col, MetaRow::ColumnHeader, name);
    sheet.SetMeta(col, MetaRow::DataType, "Categorical");
    sheet.SetMeta(col, MetaRow::Function, "Populations");
    sheet.SetMeta(col, MetaRow::PopulationMark, "Populations");
    sheet.SetMeta(col, MetaRow::Attribute, name);
    sheet.SetMeta(col, MetaRow::Align, "Left");
    sheet.SetMeta(col, MetaRow::Hidden, "Show");
    sheet.SetMeta(col, MetaRow::Renamed, "Manual");
    sheet.SetMeta(col, MetaRow::BlockSeq, std::to_string(populationIndex));
    sheet.SetColHidden(col, false);
    sheet.FindCols();
    sheet.AddLetters();
    AddCellBorders(sheet);
    return sheet.GetCol(0, populationIndex);
}

bool IdentifyCols(Sheet& sheet, int col) {
    if (col < sheet.Flex().FixedCols() || col >= sheet.Flex().Cols()) return false;
    if (SayIfTaken(sheet, col)) return false;
    sheet.SetMeta(col, MetaRow::Function, "Moderator");
    sheet.SetMeta(col, MetaRow::Hidden, "Show");
    sheet.SetColHidden(col, false);
    return true;
}

int InsertCols(Sheet& sheet, int current, const ColumnPropertiesDialog& properties) {
    const Grid& flex = sheet.Flex();
    const int col = flex.Cols();
    sheet.InsertColumn(col);
    const int defaults[] = {MetaRow::ValueList, MetaRow::NumDecs, MetaRow::Missing,
                            MetaRow::ColWidth,  MetaRow::Align,   MetaRow::Numvals};
    const char* values[] = {"", "Auto", "", "Auto", "Auto", "0"};
    for (std::size_t i = 0; i < std::size(defaults); ++i)
        sheet.SetMeta(col, defaults[i], values[i]);
    sheet.SetMeta(col, MetaRow::ColumnHeader, "");
    sheet.SetMeta(col, MetaRow::DataType, "Not specified");
    sheet.SetMeta(col, MetaRow::Function, "Moderator");
    sheet.SetMeta(col, MetaRow::Attribute, "Empty");
    sheet.SetMeta(col, MetaRow::Hidden, "Show");
    sheet.SetMeta(col, MetaRow::Renamed, "Manual");
    sheet.SetColNumberFormat(col, flex.Col(std::max(current, 0)).numberFormat);

    const std::string title = properties ? properties(sheet, col) : std::string();
    if (title.empty()) {
        sheet.RemoveColumn(col);
        return -1;
    }
    sheet.SetMeta(col, MetaRow::ColumnHeader, title);

    static constexpr const char* kPlaced[] = {"Populations", "Data Entry", "Display", "Moderator"};
    const bool placed = current >= 0 && current < col &&
                        std::any_of(std::begin(kPlaced), std::end(kPlaced), [&](const char* f) {
                            return sheet.MetaIs(current, MetaRow::Function, f);
                        });
    int at = current;
    if (placed || current < flex.FixedCols() || current >= col) {
        // After the last moderator; with none, after the blocks and their results.
        at = -1;
        for (int c = 0; c < col; ++c) {
            if (sheet.MetaIs(c, MetaRow::Function, "Moderator")) at = c + 1;
        }
        if (at < 0) {
            at = EndOfEntryCols(sheet);
            for (int c = 0; c < col; ++c) {
                if (sheet.MetaIs(c, MetaRow::Function, "Display")) at = std::max(at, c + 1);
            }
        }
    }
    sheet.MoveColumn(col, std::min(at, col));
    sheet.FindCols();
    sheet.AddLetters();
    AddCellBorders(sheet);
    return std::min(at, col);
}

}  // namespace synthara::sheet
