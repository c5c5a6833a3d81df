#include "sheet/blocks/ColumnEdits.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "sheet/blocks/ColumnMoves.h"
#include "sheet/grid/MetaRows.h"
#include "sheet/grid/Sheet.h"
#include "sheet/rows/RowEdits.h"

namespace synthara::sheet {

namespace {

constexpr const char* kCannotCopyTitle = "  Cannot copy this column";

bool Refuse(Sheet& sheet, const char* title, std::vector<std::string> lines) {
    sheet.Prompts().Message({title, std::move(lines), ports::Icon::Information});
    return false;
}

// Columns the program keeps for itself besides the entry, display and format
// name columns: the row numbers and the hidden system columns.
bool IsSystemColumn(const Sheet& sheet, int col) {
    if (col == 0 || col == sheet.ErrorCol()) return true;
    for (const char* function :
         {"Data Format", "MergeType", "EntrySeq", "Temp Sequence", "Settings"})
        if (sheet.MetaIs(col, MetaRow::Function, function)) return true;
    return false;
}

bool CanCopy(Sheet& sheet, int col) {
    const auto refuse = [&](std::vector<std::string> lines) {
        return Refuse(sheet, kCannotCopyTitle, std::move(lines));
    };
    if (col < 0 || col >= sheet.Flex().Cols())
        return refuse({"Please select the column to be copied.     "});
    if (sheet.MetaIs(col, MetaRow::Function, "Data Entry"))
        return refuse(
            {"Column used for computing effect sizes cannot be copied automatically.     ",
             "You may highlight all cells in the column and then Copy and Paste to new column.   "
             " "});
    if (sheet.MetaIs(col, MetaRow::Function, "NickName"))
        return refuse({"Column of format names cannot be copied.     "});
    if (sheet.MetaIs(col, MetaRow::Function, "Display"))
        return refuse({"Column of computed effect sizes cannot be copied.     "});
    if (IsSystemColumn(sheet, col)) return refuse({"Please select the column to be copied.     "});
    return true;
}

bool CanDelete(Sheet& sheet, int col) {
    const auto refuse = [&](std::vector<std::string> lines) {
        return Refuse(sheet, CannotDeleteTitle, std::move(lines));
    };
    if (col == 0)
        return refuse(
            {"The first column (containing row numbers) cannot be deleted.  Be sure to "
             "highlight the correct column.    "});
    if (sheet.MetaIs(col, MetaRow::Function, "Data Entry"))
        return refuse(
            {"To delete columns that are used for entering effect size data     ",
             "Right-click on those columns and select 'Delete this data entry block'.     "});
    if (sheet.MetaIs(col, MetaRow::Function, "Display"))
        return refuse({"To hide column that displays effect size       ",
                       "Right-click on the column and select 'Customize display'.   "});
    if (sheet.MetaIs(col, MetaRow::Function, "NickName") || IsSystemColumn(sheet, col))
        return refuse({"This column cannot be deleted.             "});
    return true;
}

}  // namespace

void Sheet::DuplicateColumn(int col) {
    if (col < 0 || col >= flex_.Cols()) return;
    flex_.InsertColumn(col + 1);
    flex_.Col(col + 1) = std::as_const(flex_).Col(col);
    flex_.SetColKey(col + 1, "");
}

int CopyColumn(Sheet& sheet, int col) {
    if (!CanCopy(sheet, col)) return -1;
    const std::string title = sheet.Meta(col, MetaRow::ColumnHeader);
    const bool identifying = sheet.MetaIs(col, MetaRow::Function, "Populations");
    sheet.DuplicateColumn(col);
    int copy = col + 1;
    sheet.SetMeta(copy, MetaRow::ColumnHeader, "Copy of " + title);
    sheet.SetMeta(copy, MetaRow::Renamed, "Manual");
    if (identifying) {
        // A study has one column of each identifier: the copy is plain data,
        // and may not stand among the identifying columns.
        sheet.SetMeta(copy, MetaRow::Function, "Unknown");
        sheet.SetMeta(copy, MetaRow::Attribute, "Empty");
        sheet.SetMeta(copy, MetaRow::PopulationMark, "");
        sheet.SetMeta(copy, MetaRow::BlockSeq, "");
        const int place = EndOfIdentifyingCols(sheet);
        sheet.PlaceColumns({copy}, place);
        if (place <= copy)
            copy = place;
        else
            copy = place - 1;
    }
    sheet.FindCols();
    sheet.AddLetters();
    return copy;
}

bool DeleteColumns(Sheet& sheet, int first, int last) {
    const Grid& flex = sheet.Flex();
    if (first > last) std::swap(first, last);
    last = std::min(last, flex.Cols() - 1);
    if (first < 0 || first > last)
        return Refuse(sheet, CannotDeleteTitle, {"Please select the column to be deleted.     "});
    for (int c = first; c <= last; ++c)
        if (flex.Col(c).hidden)
            return Refuse(
                sheet, CannotDeleteTitle,
                {"The range of columns includes hidden columns which cannot be deleted    "});
    for (int c = first; c <= last; ++c)
        if (!CanDelete(sheet, c)) return false;

    if (!ConfirmDelete(sheet, last - first + 1, "column")) return false;

    // Frozen user columns stay frozen: the count loses the ones deleted.
    const int frozenGone = std::max(0, std::min(last + 1, flex.FixedCols()) - first);
    for (int c = last; c >= first; --c)
        sheet.RemoveColumn(c);
    if (frozenGone > 0) sheet.SetFixedCols(flex.FixedCols() - frozenGone);
    sheet.FindCols();
    sheet.AddLetters();
    return true;
}

}  // namespace synthara::sheet
