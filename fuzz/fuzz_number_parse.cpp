// Any text as a typed cell. The program's own parse and a text cell's
// conversion must agree, and a parsed number must survive being written and
// read back. The parse of typed text must read the same number whichever
// locale's separators the text is written with, and without groups it must
// agree with the program's own parse.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "sheet/grid/Cell.h"

using namespace synthara::sheet;

namespace {

bool SameResult(bool okA, double a, bool okB, double b) {
    return okA == okB && (!okA || a == b || (std::isnan(a) && std::isnan(b)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    double parsed = 0;
    const bool isNumber = ParseNumber(text, parsed);
    double fromCell = 0;
    const bool cellNumber = Cell::FromText(text).TryNumber(fromCell);
    if (isNumber != cellNumber) __builtin_trap();
    if (isNumber && std::isfinite(parsed)) {
        if (fromCell != parsed) __builtin_trap();
        double back = 0;
        if (!ParseNumber(FormatNumber(parsed), back) || back != parsed) __builtin_trap();
    }

    const NumberSeparators c;
    const NumberSeparators german{",", "."};
    double typed = 0;
    const bool isTyped = ParseTypedNumber(text, c, typed);
    // Without a comma there is nothing to tell the two parses apart.
    if (text.find(',') == std::string::npos && !SameResult(isTyped, typed, isNumber, parsed))
        __builtin_trap();
    // The same text with point and comma swapped, read the German way.
    std::string swapped = text;
    for (char& ch : swapped)
        ch = ch == '.' ? ',' : ch == ',' ? '.' : ch;
    double germanTyped = 0;
    const bool isGerman = ParseTypedNumber(swapped, german, germanTyped);
    if (!SameResult(isGerman, germanTyped, isTyped, typed)) __builtin_trap();
    return 0;
}
