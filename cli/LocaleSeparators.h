#pragma once
// The separators of numbers in one of the system's locales, for reading what
// the user typed into cells (--locale).
#include <optional>
#include <string_view>

#include "sheet/grid/Cell.h"

namespace synthara::cli {

// The decimal and group separators of the locale `name` ("de_DE",
// "de_DE.UTF-8", "C"), as UTF-8 text; nullopt when the system has no such
// locale. A name without a codeset is looked up as UTF-8 first. The C locale
// reads as the program's default: decimal point, comma between groups.
std::optional<sheet::NumberSeparators> LocaleSeparators(std::string_view name);

}  // namespace synthara::cli
