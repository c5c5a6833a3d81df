#include "sheet/blocks/ColumnMoves.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "sheet/blocks/CellBorders.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {

namespace {

constexpr const char* kCannotMoveTitle = "  Cannot move column";

bool IsEntry(const Sheet& sheet, int col) {
    return sheet.MetaIs(col, MetaRow::Function, "Data Entry");
}

bool InBlock(const Sheet& sheet, int col, const std::string& blockName) {
    return col >= 0 && col < sheet.Flex().Cols() && IsEntry(sheet, col) &&
           sheet.MetaIs(col, MetaRow::BlockName, blockName);
}

// The groups a column may not be dropped into the middle of.
enum class Group { Other, Identifying, Entry, Display };

Group GroupOf(const Sheet& sheet, int col) {
    if (col < 0 || col >= sheet.Flex().Cols()) return Group::Other;
    if (sheet.MetaIs(col, MetaRow::Function, "Populations") || col == sheet.EntrySeqCol())
        return Group::Identifying;
    if (IsEntry(sheet, col)) return Group::Entry;
    if (sheet.MetaIs(col, MetaRow::Function, "Display")) return Group::Display;
    return Group::Other;
}

bool Refuse(Sheet& sheet, std::vector<std::string> lines) {
    sheet.Prompts().Message({kCannotMoveTitle, std::move(lines), ports::Icon::Information});
    return false;
}

// Refusals for a data-entry column: it may go anywhere inside its block.
bool CanMoveEntryColumn(Sheet& sheet, int from, int to) {
    const std::string block = sheet.Meta(from, MetaRow::BlockName);
    int first = from;
    int last = from;
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (InBlock(sheet, c, block)) {
            first = std::min(first, c);
            last = std::max(last, c);
        }
    }
    if (to >= first && to <= last) return true;
    if (to == first - 1 || to == last + 1)
        return Refuse(sheet, {"Effect size column cannot be moved outside its own block     "});
    return Refuse(sheet, {"Column may only be moved within its own block   "});
}

}  // namespace

void PlaceColumns(Grid& flex, const std::vector<int>& cols, int before) {
    const int n = flex.Cols();
    std::vector<bool> member(static_cast<std::size_t>(n), false);
    std::vector<int> moving;
    for (int c : cols) {
        if (c >= 0 && c < n && !member[static_cast<std::size_t>(c)]) {
            member[static_cast<std::size_t>(c)] = true;
            moving.push_back(c);
        }
    }
    if (moving.empty()) return;

    // The wanted order of the present columns, then moves that reach it from
    // the left; a column already in its place is not touched.
    std::vector<int> target;
    target.reserve(static_cast<std::size_t>(n));
    bool inserted = false;
    for (int c = 0; c < n; ++c) {
        if (!inserted && c >= before) {
            target.insert(target.end(), moving.begin(), moving.end());
            inserted = true;
        }
        if (!member[static_cast<std::size_t>(c)]) target.push_back(c);
    }
    if (!inserted) target.insert(target.end(), moving.begin(), moving.end());

    std::vector<int> current(static_cast<std::size_t>(n));
    std::iota(current.begin(), current.end(), 0);
    for (int i = 0; i < n; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (current[at] == target[at]) continue;
        const auto found = std::find(current.begin() + i, current.end(), target[at]);
        const int p = static_cast<int>(found - current.begin());
        flex.MoveColumn(p, i);
        std::rotate(current.begin() + i, found, found + 1);
    }
}

int EndOfIdentifyingCols(const Sheet& sheet) {
    int end = sheet.EntrySeqCol();
    for (int p = 1; p <= static_cast<int>(PopulationNames.size()); ++p)
        end = std::max(end, sheet.GetCol(0, p));
    return std::max(end + 1, sheet.Flex().FixedCols());
}

int EndOfEntryCols(const Sheet& sheet) {
    for (int c = sheet.Flex().Cols() - 1; c >= 0; --c) {
        if (IsEntry(sheet, c)) return c + 1;
    }
    return EndOfIdentifyingCols(sheet);
}

void MoveEntryCols(Sheet& sheet, const std::string& formatName, const std::string& blockName) {
    struct Member {
        int col;
        double seq;
    };
    std::vector<Member> members;
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (IsEntry(sheet, c) && sheet.MetaIs(c, MetaRow::FormatName, formatName) &&
            sheet.MetaIs(c, MetaRow::BlockName, blockName)) {
            double seq = 0;
            sheet.Flex().At(MetaRow::BlockSeq, c).TryNumber(seq);
            members.push_back({c, seq});
        }
    }
    if (members.size() < 2) return;
    std::stable_sort(members.begin(), members.end(),
                     [](const Member& a, const Member& b) { return a.seq < b.seq; });
    // The format's first column stays; the others follow it in order.
    const int start = members.front().col;
    std::vector<int> cols;
    for (const Member& m : members)
        cols.push_back(m.col);
    sheet.PlaceColumns(cols, start);
}

bool CanMoveColumn(Sheet& sheet, int from, int to) {
    const int n = sheet.Flex().Cols();
    if (from < 0 || from >= n || to < 0 || to >= n) return false;
    if (from == to) return true;
    if (sheet.MetaIs(from, MetaRow::Function, "Populations"))
        return Refuse(sheet, {"Columns used to identify study cannot be moved    "});
    if (from == sheet.NickNameCol() || from == sheet.FormatCol())
        return Refuse(sheet, {"This column cannot be moved    "});
    if (IsEntry(sheet, from)) return CanMoveEntryColumn(sheet, from, to);
    if (sheet.MetaIs(from, MetaRow::Function, "Display"))
        return Refuse(sheet, {"Display of computed effects cannot be moved    ",
                              "Right-click to modify the display"});

    // The neighbours the column would have once moved.
    const int left = from < to ? to : to - 1;
    const int right = from < to ? to + 1 : to;
    const Group group = GroupOf(sheet, left);
    if (to < sheet.Flex().FixedCols() || (group != Group::Other && group == GroupOf(sheet, right)))
        return Refuse(sheet, {"Column cannot be moved to this position    "});
    return true;
}

bool RepositionEntryCols(Sheet& sheet, int from, int to) {
    if (!IsEntry(sheet, to)) {
        AddCellBorders(sheet);
        return true;
    }
    const std::string block = sheet.Meta(to, MetaRow::BlockName);
    if (from != to && !InBlock(sheet, to - 1, block) && !InBlock(sheet, to + 1, block)) {
        sheet.MoveColumn(to, from);
        sheet.Prompts().Message(
            {"Move data entry column ",
             {"Sorry, data entry column cannot be moved outside its own block    "},
             ports::Icon::Information});
        return false;
    }
    int seq = 0;
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (InBlock(sheet, c, block)) sheet.SetMeta(c, MetaRow::BlockSeq, std::to_string(++seq));
    }
    sheet.FindCols();
    AddCellBorders(sheet);
    return true;
}

void Sheet::PlaceColumns(const std::vector<int>& cols, int before) {
    sheet::PlaceColumns(flex_, cols, before);
}

}  // namespace synthara::sheet
