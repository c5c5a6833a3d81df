#include "JsonPath.h"

#include <charconv>
#include <vector>

namespace synthara::testing {
namespace {

using nlohmann::json;

const json* Stop(std::string* why, std::string text) {
    if (why != nullptr) *why = std::move(text);
    return nullptr;
}

bool ParseIndex(std::string_view text, std::size_t& index) {
    if (text.empty()) return false;
    const auto* end = text.data() + text.size();
    const auto [ptr, ec] = std::from_chars(text.data(), end, index);
    return ec == std::errc() && ptr == end;
}

// Numbers compare as numbers, anything else as its text.
bool FieldMatches(const json& field, std::string_view want) {
    if (field.is_string()) return field.get<std::string>() == want;
    if (field.is_number()) {
        try {
            std::size_t used = 0;
            const double w = std::stod(std::string(want), &used);
            return used == want.size() && field.get<double>() == w;
        } catch (const std::exception&) {
            return false;
        }
    }
    return field.dump() == want;
}

bool ElementMatches(const json& element, std::string_view selector) {
    if (!element.is_object()) return false;
    while (!selector.empty()) {
        const auto comma = selector.find(',');
        const std::string_view pair = selector.substr(0, comma);
        const auto eq = pair.find('=');
        if (eq == std::string_view::npos) return false;
        const auto it = element.find(std::string(pair.substr(0, eq)));
        if (it == element.end() || !FieldMatches(*it, pair.substr(eq + 1))) return false;
        selector =
            comma == std::string_view::npos ? std::string_view() : selector.substr(comma + 1);
    }
    return true;
}

const json* Select(const json& list, std::string_view selector, std::string* why) {
    if (!list.is_array()) return Stop(why, "not a list before [" + std::string(selector) + "]");
    std::size_t index = 0;
    if (ParseIndex(selector, index)) {
        if (index >= list.size()) return Stop(why, "no element [" + std::string(selector) + "]");
        return &list[index];
    }
    const json* found = nullptr;
    for (const auto& element : list) {
        if (!ElementMatches(element, selector)) continue;
        if (found != nullptr)
            return Stop(why, "several elements match [" + std::string(selector) + "]");
        found = &element;
    }
    if (found == nullptr) return Stop(why, "no element matches [" + std::string(selector) + "]");
    return found;
}

}  // namespace

const json* ResolvePath(const json& root, std::string_view path, std::string* why) {
    const json* at = &root;
    std::size_t pos = 0;
    while (pos < path.size()) {
        const auto stop = path.find_first_of(".[", pos);
        const std::string key(path.substr(pos, stop - pos));
        if (!key.empty()) {
            if (!at->is_object()) return Stop(why, "not an object before \"" + key + "\"");
            const auto it = at->find(key);
            if (it == at->end()) return Stop(why, "no key \"" + key + "\"");
            at = &*it;
        }
        pos = stop == std::string_view::npos ? path.size() : stop;
        while (pos < path.size() && path[pos] == '[') {
            const auto close = path.find(']', pos);
            if (close == std::string_view::npos) return Stop(why, "unclosed [ in the path");
            at = Select(*at, path.substr(pos + 1, close - pos - 1), why);
            if (at == nullptr) return nullptr;
            pos = close + 1;
        }
        if (pos < path.size()) {
            if (path[pos] != '.') return Stop(why, "unexpected text after ]");
            ++pos;
        }
    }
    return at;
}

}  // namespace synthara::testing
