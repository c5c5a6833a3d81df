#include "cli/LocaleSeparators.h"

#include <langinfo.h>
#include <locale.h>

#include <string>
#include <vector>

namespace synthara::cli {
namespace {

bool IsCLocale(std::string_view name) {
    return name.empty() || name == "C" || name == "POSIX" || name.starts_with("C.");
}

// The separators as the locale has them, when it exists and writes UTF-8 (or
// plain ASCII separators, which read the same in any codeset).
std::optional<sheet::NumberSeparators> Lookup(const std::string& name) {
    locale_t locale = newlocale(LC_NUMERIC_MASK | LC_CTYPE_MASK, name.c_str(), locale_t{});
    if (locale == locale_t{}) return std::nullopt;
    sheet::NumberSeparators separators{nl_langinfo_l(RADIXCHAR, locale),
                                       nl_langinfo_l(THOUSEP, locale)};
    const std::string codeset = nl_langinfo_l(CODESET, locale);
    freelocale(locale);
    const auto ascii = [](const std::string& text) {
        for (const char c : text)
            if (static_cast<unsigned char>(c) >= 0x80) return false;
        return true;
    };
    if (codeset != "UTF-8" && !(ascii(separators.decimal) && ascii(separators.group)))
        return std::nullopt;
    if (separators.decimal.empty()) return std::nullopt;
    return separators;
}

}  // namespace

std::optional<sheet::NumberSeparators> LocaleSeparators(std::string_view name) {
    if (IsCLocale(name)) return sheet::NumberSeparators{};
    const std::string given(name);
    std::vector<std::string> candidates;
    if (given.find('.') == std::string::npos) {
        // "de_DE" or "de_DE@euro": the UTF-8 variant, then the name as given.
        const std::size_t at = given.find('@');
        const std::string base = given.substr(0, at);
        const std::string modifier = at == std::string::npos ? "" : given.substr(at);
        candidates = {base + ".UTF-8" + modifier, base + ".utf8" + modifier};
    }
    candidates.push_back(given);
    for (const std::string& candidate : candidates) {
        if (auto separators = Lookup(candidate)) return separators;
    }
    return std::nullopt;
}

}  // namespace synthara::cli
