#include "shell/CellDisplay.h"

#include <cmath>
#include <cstdio>

#include "sheet/grid/Cell.h"

namespace synthara::shell {

std::string FormatCellNumber(double value, std::string_view format) {
    // Beyond the digits a double holds, fixed decimals would only print noise.
    constexpr double kLargestFixed = 1e15;
    if (format.empty() || !std::isfinite(value) || std::fabs(value) >= kLargestFixed)
        return sheet::FormatNumber(value);
    int decimals = 0;
    if (format.size() > 2 && format.substr(0, 2) == "0.") {
        for (char c : format.substr(2)) {
            if (c != '0') return sheet::FormatNumber(value);
            ++decimals;
        }
    } else if (format != "0") {
        return sheet::FormatNumber(value);
    }
    constexpr int kMostDecimals = 20;
    if (decimals > kMostDecimals) return sheet::FormatNumber(value);
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    std::string out = text;
    // A value that rounds to zero reads as zero, without a sign.
    if (out[0] == '-' && out.find_first_not_of("-0.") == std::string::npos) out.erase(0, 1);
    return out;
}

}  // namespace synthara::shell
