#pragma once
// The result tables of the bias window's tabs: labels and values as shown.
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/DisplayVals.h"
#include "pubbias/FailSafe.h"
#include "pubbias/Intercept.h"
#include "pubbias/RankCorrelation.h"
#include "pubbias/TrimFill.h"

namespace synthara::pubbias {

// One row of a table of a label and a value; `row` is its row in the tab's
// grid (rows left out stand empty).
struct TableRow {
    int row = 0;
    std::string label;
    std::string value;
    bool bold = false;  // a section's heading
    bool red = false;   // a value that cannot be had, said in words
};

std::vector<TableRow> FailSafeTable(const FailSafeResult& r, std::string_view indexName,
                                    analysis::Transform transform);
std::vector<TableRow> TauTable(const TauResult& r);
std::vector<TableRow> InterceptTable(const InterceptResult& r);

// The trim tab: "Studies Trimmed", the fixed point and limits, the random
// point and limits, and Q. Rows "Initial (Log)" and "Adjusted (L)" hold the
// computation scale and are hidden; "Observed values" and "Adjusted values"
// are shown back-transformed.
struct TrimTableRow {
    int row = 0;
    std::string label;
    std::array<std::string, 8> cells;  // columns 2 to 9
    bool hidden = false;
};
std::vector<TrimTableRow> TrimTable(const TrimFillResult& r, analysis::Transform transform);

// Over the trim table when an option is not set, in red.
inline constexpr std::string_view kTrimOptionsNotSet = "Please select options for side and model";

}  // namespace synthara::pubbias
