#include "sheet/blocks/BlockTable.h"

#include <algorithm>
#include <string>
#include <vector>

#include "sheet/blocks/CellBorders.h"
#include "sheet/blocks/DisplayColumns.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

namespace {

constexpr const char* kDeleteTitle = " Delete data entry block";

bool IsEntry(const Sheet& sheet, int col) {
    return sheet.MetaIs(col, MetaRow::Function, "Data Entry");
}

void SetShown(Sheet& sheet, int col, bool shown) {
    sheet.SetColHidden(col, !shown);
    sheet.SetMeta(col, MetaRow::Hidden, shown ? "Show" : "Hide");
}

// Moves the nickname column to `to`. The fixed area keeps the same other
// columns: when the nickname column crosses its edge, the edge moves with it.
void MoveNickName(Sheet& sheet, int nick, int to) {
    const Grid& flex = sheet.Flex();
    const int fixed = flex.FixedCols();
    sheet.MoveColumn(nick, to);
    if (nick < fixed && to >= fixed)
        sheet.SetFixedCols(fixed - 1);
    else if (nick >= fixed && to < fixed)
        sheet.SetFixedCols(fixed + 1);
}

// The rightmost system column; -1 when the sheet has none.
int LastSystemCol(const Sheet& sheet) {
    return std::max({sheet.FormatCol(), sheet.NickNameCol(), sheet.MergeTypeCol(),
                     sheet.EntrySeqCol(), sheet.TempSeqCol(), sheet.SettingsCol(),
                     sheet.ErrorCol()});
}

// A fixed area that reaches past the nickname column ends one past it, so the
// format name stays frozen, but never before a system column: everything
// right of the fixed area is the user's data.
void KeepFixedCount(Sheet& sheet) {
    const int nick = sheet.NickNameCol();
    if (nick < 0 || nick >= sheet.Flex().FixedCols()) return;
    sheet.SetFixedCols(std::max(nick, LastSystemCol(sheet)) + 1);
}

}  // namespace

void AdjustBlocks(Sheet& sheet) {
    BlockView& view = sheet.View;
    view.Tabs.clear();
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (!IsEntry(sheet, c)) continue;
        std::string block = sheet.Meta(c, MetaRow::BlockName);
        if (static_cast<int>(view.Tabs.size()) < MaxBlocks &&
            std::find(view.Tabs.begin(), view.Tabs.end(), block) == view.Tabs.end())
            view.Tabs.push_back(std::move(block));
    }
    if (view.CurrentTab < 0 || view.CurrentTab >= static_cast<int>(view.Tabs.size()))
        view.CurrentTab = 0;

    const int nick = sheet.NickNameCol();
    if (view.Tabs.size() <= 1) {
        view.TabsVisible = false;
        if (nick >= 0) {
            MoveNickName(sheet, nick, 1);
            sheet.SetColHidden(1, true);
        }
    } else {
        view.TabsVisible = true;
        if (nick >= 0) {
            // The format name goes last in the fixed area but for EntrySeq,
            // which keeps the last place: frozen, and in view while the
            // identifying columns and the entries scroll.
            const int seq = sheet.EntrySeqCol();
            const int fixed = sheet.Flex().FixedCols();
            const int to =
                seq >= 0 ? (nick < seq ? seq - 1 : seq) : (nick < fixed ? fixed - 1 : fixed);
            MoveNickName(sheet, nick, to);
            // With every block hidden the rows' format names would label nothing.
            sheet.SetColHidden(to, view.BlockDisplay == HideAllBlocks);
        }
    }
    KeepFixedCount(sheet);
    sheet.FindCols();
    AddCellBorders(sheet);
}

void ShowBlocks(Sheet& sheet, std::string_view blockName) {
    const int mode = sheet.View.BlockDisplay;
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (!IsEntry(sheet, c)) continue;
        const bool shown =
            mode == ShowAllBlocks ||
            (mode == ShowCurrentBlock && sheet.MetaIs(c, MetaRow::BlockName, blockName));
        SetShown(sheet, c, shown);
    }
    const int nick = sheet.NickNameCol();
    if (nick >= 0 && sheet.View.TabsVisible) sheet.SetColHidden(nick, mode == HideAllBlocks);
    sheet.AddLetters();
    AddCellBorders(sheet);
}

int TabOf(const Sheet& sheet, std::string_view blockName) {
    const auto& tabs = sheet.View.Tabs;
    const auto it = std::find(tabs.begin(), tabs.end(), blockName);
    return it == tabs.end() ? -1 : static_cast<int>(it - tabs.begin());
}

int SynchTabs(Sheet& sheet, int col) {
    if (IsEntry(sheet, col)) {
        const int tab = TabOf(sheet, sheet.Meta(col, MetaRow::BlockName));
        if (tab >= 0) sheet.View.CurrentTab = tab;
    }
    return sheet.View.CurrentTab;
}

bool DeleteTab(Sheet& sheet, std::string_view blockName) {
    std::vector<int> cols;
    std::string formatName;
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (IsEntry(sheet, c) && sheet.MetaIs(c, MetaRow::BlockName, blockName)) {
            cols.push_back(c);
            if (formatName.empty()) formatName = sheet.Meta(c, MetaRow::FormatName);
        }
    }
    if (cols.empty()) return false;
    for (int c : cols) {
        if (!sheet.isColEmpty(c)) {
            sheet.Prompts().Message(
                {kDeleteTitle,
                 {"You need to erase all data in this block before removing the block   "},
                 ports::Icon::Information});
            return false;
        }
    }
    const ports::Box question{kDeleteTitle,
                              {"Delete " + std::string(blockName),
                               "Note that all computed values will be deleted as well.   "},
                              ports::Icon::Question};
    if (sheet.Prompts().Ask(question, ports::Buttons::YesNo, ports::Answer::No) !=
        ports::Answer::Yes)
        return false;

    for (auto it = cols.rbegin(); it != cols.rend(); ++it)
        sheet.RemoveColumn(*it);
    sheet.FindCols();

    const int formatCol = sheet.FormatCol();
    const int nickCol = sheet.NickNameCol();
    const int mergeCol = sheet.MergeTypeCol();
    for (int r = FixedRowCount; r < sheet.Flex().Rows() && formatCol >= 0; ++r) {
        if (!sheet.Flex().TextIs(r, formatCol, formatName)) continue;
        sheet.ClearCell(r, formatCol);
        if (nickCol >= 0) sheet.ClearCell(r, nickCol);
        if (mergeCol >= 0) sheet.ClearCell(r, mergeCol);
        BlankDisplayCols(sheet, r);
    }
    sheet.GrayBlocks(0, 0);
    AdjustBlocks(sheet);
    sheet.AddLetters();
    return true;
}

}  // namespace synthara::sheet
