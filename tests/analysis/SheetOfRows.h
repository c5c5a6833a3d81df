#pragma once
// A sheet whose rows carry a log odds ratio, its standard error and variance
// as computed rows do, set directly so that the analysis is tested alone.
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "effectsize/WorkingSet.h"
#include "sheet/grid/Sheet.h"

namespace synthara::testing {

struct RowValues {
    std::string study;
    std::optional<double> point;
    std::optional<double> variance;  // the standard error is its root
    std::string group = {};          // the moderator "Arm", made when a row has one
    // The 2x2 cells (events and non-events of group 1, then of group 2); the
    // row's point and variance then serve the Mantel-Haenszel log odds ratio too.
    std::optional<std::array<double, 4>> cells = {};
    // The cells of the subgroup, comparison, outcome and time-point columns,
    // each column made when a row has a value for it.
    std::array<std::string, 4> levels = {};
};

inline void FillSheet(sheet::Sheet& sheet, const std::vector<RowValues>& rows) {
    constexpr const char* kFormat = "Events and non-events in each group";
    sheet.InitializeGrid();
    const int studyCol = sheet.MakePop(1);
    std::array<int, 4> levelCols{-1, -1, -1, -1};
    for (std::size_t k = 0; k < levelCols.size(); ++k) {
        for (const RowValues& row : rows) {
            if (!row.levels[k].empty() && levelCols[k] < 0)
                levelCols[k] = sheet.MakePop(static_cast<int>(k) + 2);
        }
    }
    sheet::DefineFormat(kFormat, sheet.Defined);
    sheet.CreateAll();
    sheet.CreateDisplayCols(kFormat);
    sheet.FindCols();
    sheet.SetRows(sheet::FixedRowCount + static_cast<int>(rows.size()) + 5);
    const auto& cols = sheet.DisplayColTable()[effectsize::Ix::LogOddsRatio];
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const int r = sheet::FixedRowCount + static_cast<int>(i);
        sheet.SetText(r, studyCol, rows[i].study);
        for (std::size_t k = 0; k < levelCols.size(); ++k)
            if (levelCols[k] >= 0) sheet.SetText(r, levelCols[k], rows[i].levels[k]);
        if (rows[i].point) sheet.SetNumber(r, cols[sheet::AttrPoint], *rows[i].point);
        if (rows[i].variance) {
            sheet.SetNumber(r, cols[sheet::AttrVariance], *rows[i].variance);
            sheet.SetNumber(r, cols[sheet::AttrStdErr], std::sqrt(*rows[i].variance));
        }
        if (rows[i].cells) {
            const auto& mh = sheet.DisplayColTable()[effectsize::Ix::MHLogOddsRatio];
            sheet.SetNumber(r, mh[sheet::AttrPoint], *rows[i].point);
            sheet.SetNumber(r, mh[sheet::AttrVariance], *rows[i].variance);
            sheet.SetNumber(r, mh[sheet::AttrStdErr], std::sqrt(*rows[i].variance));
            for (int k = 0; k < 4; ++k) {
                const auto& cell = sheet.DisplayColTable()[effectsize::Ix::MHCellA + k];
                sheet.SetNumber(r, cell[sheet::AttrPoint],
                                (*rows[i].cells)[static_cast<std::size_t>(k)]);
            }
        }
    }
    bool grouped = false;
    for (const RowValues& row : rows)
        grouped = grouped || !row.group.empty();
    if (!grouped) return;
    int col = sheet.Flex().FixedCols();
    while (!sheet.MetaIs(col, sheet::MetaRow::Function, "Empty") || !sheet.isColEmpty(col))
        ++col;
    sheet.SetMeta(col, sheet::MetaRow::ColumnHeader, "Arm");
    sheet.SetMeta(col, sheet::MetaRow::DataType, "Categorical");
    sheet.SetMeta(col, sheet::MetaRow::Function, "Moderator");
    for (std::size_t i = 0; i < rows.size(); ++i)
        sheet.SetText(sheet::FixedRowCount + static_cast<int>(i), col, rows[i].group);
}

}  // namespace synthara::testing
