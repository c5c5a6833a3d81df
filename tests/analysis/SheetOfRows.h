#pragma once
// A sheet whose rows carry a log odds ratio, its standard error and variance
// as computed rows do, set directly so that the analysis is tested alone.
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
};

inline void FillSheet(sheet::Sheet& sheet, const std::vector<RowValues>& rows) {
    constexpr const char* kFormat = "Events and non-events in each group";
    sheet.InitializeGrid();
    const int studyCol = sheet.MakePop(1);
    sheet::DefineFormat(kFormat, sheet.Defined);
    sheet.CreateAll();
    sheet.CreateDisplayCols(kFormat);
    sheet.FindCols();
    sheet.SetRows(sheet::FixedRowCount + static_cast<int>(rows.size()) + 5);
    const auto& cols = sheet.DisplayColTable()[effectsize::Ix::LogOddsRatio];
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const int r = sheet::FixedRowCount + static_cast<int>(i);
        sheet.SetText(r, studyCol, rows[i].study);
        if (rows[i].point) sheet.SetNumber(r, cols[sheet::AttrPoint], *rows[i].point);
        if (rows[i].variance) {
            sheet.SetNumber(r, cols[sheet::AttrVariance], *rows[i].variance);
            sheet.SetNumber(r, cols[sheet::AttrStdErr], std::sqrt(*rows[i].variance));
        }
    }
}

}  // namespace synthara::testing
