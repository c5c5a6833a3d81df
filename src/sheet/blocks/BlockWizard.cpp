#include "sheet/blocks/BlockWizard.h"

#include <algorithm>
#include <string>

#include "sheet/blocks/BlockTable.h"
#include "sheet/blocks/CellBorders.h"
#include "sheet/blocks/ColumnMoves.h"
#include "sheet/blocks/DisplayColumns.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

BlockWizard::BlockWizard(Sheet& sheet) : sheet_(sheet) {
    BackupFile();
}

void BlockWizard::BackupFile() {
    savedGrid_ = sheet_.Flex();
    savedView_ = sheet_.View;
    savedDefined_ = sheet_.Defined;
}

void BlockWizard::RestoreFile() {
    sheet_.ReplaceGrid(savedGrid_);
    sheet_.View = savedView_;
    sheet_.Defined = savedDefined_;
    sheet_.FindCols();
}

bool BlockWizard::ChooseFormat(std::string_view longName) {
    if (FindFormatNode(Tree(), longName) == nullptr) return false;
    DefineFormat(longName, sheet_.Defined);
    format_ = sheet_.Defined.CurrentFormatLong;
    combos_ = LoadCombos(sheet_, sheet_.Defined);
    InitExisting(sheet_, sheet_.Defined, combos_);
    created_ = false;
    return true;
}

RoleCombo* BlockWizard::ComboOf(std::string_view role) {
    auto it = std::find_if(combos_.begin(), combos_.end(),
                           [role](const RoleCombo& c) { return c.role == role; });
    return it == combos_.end() ? nullptr : &*it;
}

void BlockWizard::PointRoleAt(int col, std::size_t r) {
    const DefinedFormat& d = sheet_.Defined;
    const std::string& role = d.EntryColNames[r];
    const bool dropDown = FindDropDown(role) != nullptr;
    const bool whole = d.EntryColInteger[r] || role == "Tails";
    sheet_.SetMeta(col, MetaRow::Function, "Data Entry");
    sheet_.SetMeta(col, MetaRow::Attribute, role);
    sheet_.SetMeta(col, MetaRow::DataType, dropDown ? role : "Decimal");
    sheet_.SetMeta(col, MetaRow::NumDecs, whole ? "0" : "Auto");
    sheet_.SetMeta(col, MetaRow::LabelPart1, d.LabelPieces[0][r]);
    sheet_.SetMeta(col, MetaRow::LabelPart2, d.LabelPieces[1][r]);
    sheet_.SetMeta(col, MetaRow::LabelPart3, d.LabelPieces[2][r]);
    sheet_.SetMeta(col, MetaRow::FormatName, d.CurrentFormatLong);
    sheet_.SetMeta(col, MetaRow::BlockName, d.CurrentFormatShort);
    sheet_.SetMeta(col, MetaRow::BlockSeq, std::to_string(r + 1));
    sheet_.SetMeta(col, MetaRow::Hidden, "Show");
    sheet_.SetMeta(col, MetaRow::Renamed, "Manual");
    sheet_.SetColHidden(col, false);
}

void BlockWizard::ReleaseUnchosenCols(const std::vector<int>& chosen) {
    // Their data stays, in a column the user may use or delete.
    for (int c = 0; c < sheet_.Flex().Cols(); ++c) {
        if (!sheet_.MetaIs(c, MetaRow::Function, "Data Entry") ||
            !sheet_.MetaIs(c, MetaRow::FormatName, format_) ||
            std::find(chosen.begin(), chosen.end(), c) != chosen.end())
            continue;
        sheet_.SetMeta(c, MetaRow::Function, "Moderator");
        sheet_.SetMeta(c, MetaRow::Attribute, "Empty");
        for (int row : {MetaRow::FormatName, MetaRow::BlockName, MetaRow::BlockSeq,
                        MetaRow::LabelPart1, MetaRow::LabelPart2, MetaRow::LabelPart3})
            sheet_.SetMeta(c, row, "");
    }
}

bool BlockWizard::CreateBlock() {
    if (format_.empty() || finished_) return false;
    std::vector<int> chosen;
    for (const RoleCombo& combo : combos_) {
        const int col = combo.ChosenCol();
        if (col < 0) continue;
        if (std::find(chosen.begin(), chosen.end(), col) != chosen.end()) {
            sheet_.Prompts().Message({" Assign columns",
                                      {"The column " + sheet_.ColumnLabel(col) +
                                           " is selected for more than one role     ",
                                       "Please select a different column for each role"},
                                      ports::Icon::Information});
            return false;
        }
        chosen.push_back(col);
    }

    ReleaseUnchosenCols(chosen);
    const DefinedFormat full = sheet_.Defined;
    DefinedFormat toCreate = full;
    for (const RoleCombo& combo : combos_) {
        const int col = combo.ChosenCol();
        if (col < 0) continue;
        const auto r = static_cast<std::size_t>(combo.roleIndex);
        PointRoleAt(col, r);
        toCreate.EntryColNames[r].clear();
    }
    sheet_.Defined = toCreate;
    sheet_.CreateAll();
    sheet_.Defined = full;

    const std::string& blockName = full.CurrentFormatShort;
    MoveEntryCols(sheet_, full.CurrentFormatLong, blockName);
    sheet_.FindCols();
    sheet_.AddLetters();

    combos_ = LoadCombos(sheet_, sheet_.Defined);
    InitExisting(sheet_, sheet_.Defined, combos_);
    created_ = true;
    sheet_.Prompts().Message({"  Data-entry block created",
                              {"The data-entry block has been created successfully        ",
                               "Click 'Finish' to close the wizard and return to the spreadsheet."},
                              ports::Icon::Information});
    return true;
}

bool BlockWizard::Finish() {
    if (finished_) return false;
    if (!created_ && !CreateBlock()) return false;
    sheet_.CreateDisplayCols(format_);
    GatherDisplayCols(sheet_);
    AdjustBlocks(sheet_);
    const std::string& blockName = sheet_.Defined.CurrentFormatShort;
    const int tab = TabOf(sheet_, blockName);
    if (tab >= 0) sheet_.View.CurrentTab = tab;
    ShowBlocks(sheet_, blockName);
    ShowIndices(sheet_);
    ColorDisplayCols(sheet_);
    sheet_.GrayBlocks(0, 0);
    for (int c = 0; c < sheet_.Flex().Cols(); ++c) {
        if (sheet_.MetaIs(c, MetaRow::Function, "Display") &&
            sheet_.MetaIs(c, MetaRow::DisplayClass, "Primary")) {
            sheet_.View.PrimaryIndex = sheet_.Meta(c, MetaRow::IndexName);
            break;
        }
    }
    AddCellBorders(sheet_);
    finished_ = true;
    return true;
}

bool BlockWizard::Leave() {
    if (finished_) return true;
    const ports::Box box{" Confirm exit ",
                         {"Abandon any changes and return to spreadsheet?     "},
                         ports::Icon::Question};
    if (sheet_.Prompts().Ask(box, ports::Buttons::YesNo, ports::Answer::No) != ports::Answer::Yes)
        return false;
    RestoreFile();
    return true;
}

}  // namespace synthara::sheet
