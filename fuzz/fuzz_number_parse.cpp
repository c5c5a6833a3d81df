// Any text as a typed cell: the strict parse and a text cell's conversion
// must agree, and a parsed number must survive being written and read back.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "sheet/grid/Cell.h"

using namespace synthara::sheet;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    double parsed = 0;
    const bool isNumber = ParseNumber(text, parsed);
    double fromCell = 0;
    const bool cellNumber = Cell::FromText(text).TryNumber(fromCell);
    if (isNumber != cellNumber) __builtin_trap();
    if (!isNumber || !std::isfinite(parsed)) return 0;
    if (cellNumber && fromCell != parsed) __builtin_trap();
    double back = 0;
    if (!ParseNumber(FormatNumber(parsed), back) || back != parsed) __builtin_trap();
    return 0;
}
