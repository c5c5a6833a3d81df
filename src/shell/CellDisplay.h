#pragma once
// How a computed number reads in a column with a number format.
#include <string>
#include <string_view>

namespace synthara::shell {

// `format` is the column's number format: "0" for whole numbers, "0." and a
// run of zeros for that many digits after the point, "" for the number as it
// is (its shortest form that reads back to the same double).
std::string FormatCellNumber(double value, std::string_view format);

}  // namespace synthara::shell
