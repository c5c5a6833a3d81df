#include "sheet/files/SheetFormat.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "sheet/blocks/DisplayColumns.h"

namespace synthara::sheet {

namespace {

constexpr int kDefaultWidth = 940;
constexpr int kRowNumberWidth = 400;
constexpr int kRowHeight = 250;
constexpr int kHeaderHeight = 500;

bool ReadWhole(const Sheet& sheet, int row, int col, int& out) {
    double value = 0;
    if (!sheet.Flex().At(row, col).TryNumber(value) || !std::isfinite(value)) return false;
    if (value < 0 || value > (1 << 24)) return false;
    out = static_cast<int>(value);
    return true;
}

}  // namespace

StoredNumbers ReadStoredNumbers(const Sheet& sheet) {
    StoredNumbers numbers;
    const int col = sheet.SettingsCol();
    if (col < 0) return numbers;
    const auto read = [&](int row, double& out) {
        double value = 0;
        if (sheet.Flex().At(row, col).TryNumber(value) && std::isfinite(value)) out = value;
    };
    read(SettingsRow::ImputedR, numbers.ImputedR);
    read(SettingsRow::FudgeFactor, numbers.FudgeFactor);
    int method = 0;
    if (ReadWhole(sheet, SettingsRow::PoolVarianceMethod, col, method))
        numbers.PoolVarianceMethod = method;
    if (ReadWhole(sheet, SettingsRow::GVarianceMethod, col, method))
        numbers.GVarianceMethod = method;
    return numbers;
}

void WriteStoredNumbers(Sheet& sheet, const StoredNumbers& numbers) {
    const int col = sheet.SettingsCol();
    if (col < 0) return;
    sheet.SetText(SettingsRow::ImputedR, col, FormatNumber(numbers.ImputedR));
    sheet.SetText(SettingsRow::FudgeFactor, col, FormatNumber(numbers.FudgeFactor));
    sheet.SetText(SettingsRow::PoolVarianceMethod, col, std::to_string(numbers.PoolVarianceMethod));
    sheet.SetText(SettingsRow::GVarianceMethod, col, std::to_string(numbers.GVarianceMethod));
}

void PreSave(Sheet& sheet) {
    const Grid& grid = sheet.Flex();
    for (int c = 0; c < grid.Cols(); ++c)
        sheet.SetText(MetaRow::SavedWidth, c, std::to_string(grid.Col(c).width));
}

void RestoreFormat(Sheet& sheet) {
    const Grid& grid = sheet.Flex();
    // A sheet needs its 150 metadata rows and at least one row of data,
    // whatever the file held.
    if (grid.Rows() <= FixedRowCount) sheet.SetRows(FixedRowCount + 1);
    sheet.SetFixedRows(FixedRowCount);
    sheet.SetFixedCols(std::min(grid.FixedCols(), grid.Cols()));
    for (int r = 1; r < FixedRowCount; ++r)
        sheet.SetRowHidden(r, true);

    for (int c = 0; c < grid.Cols(); ++c)
        sheet.SetColWidth(c, c == 0 ? kRowNumberWidth : kDefaultWidth);
    sheet.SetDefaultRowHeight(kRowHeight);
    for (int r = 0; r < grid.Rows(); ++r)
        sheet.SetRowHeight(r, kRowHeight);
    sheet.SetRowHeight(0, kHeaderHeight);
    for (int c = grid.FixedCols(); c < grid.Cols(); ++c) {
        int width = 0;
        if (ReadWhole(sheet, MetaRow::SavedWidth, c, width)) sheet.SetColWidth(c, width);
    }

    sheet.GrayBlocks(FixedRowCount, sheet.GetLastRow());
    ColorDisplayCols(sheet);
    sheet.ApplyGroupNames();
}

}  // namespace synthara::sheet
