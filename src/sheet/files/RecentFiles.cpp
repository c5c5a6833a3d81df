#include "sheet/files/RecentFiles.h"

#include <algorithm>

namespace synthara::sheet {

namespace {

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

bool SamePathIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](char x, char y) { return Upper(x) == Upper(y); });
}

void RecentList::Load(const ports::SettingsStore& store) {
    found_ = false;
    for (int i = 0; i < RecentListSize; ++i) {
        auto& entry = entries_[static_cast<std::size_t>(i)];
        entry = store.GetOr(section_, std::to_string(i), "");
        if (!entry.empty()) found_ = true;
    }
    if (entries_[0].empty()) found_ = false;
}

void RecentList::Promote(const std::string& path) {
    const auto previous = entries_;
    entries_.fill(std::string());
    entries_[0] = path;
    // The last entry falls off whether or not the path was listed before.
    std::size_t next = 1;
    for (std::size_t i = 0; i + 1 < previous.size(); ++i) {
        if (SamePathIgnoringCase(previous[i], path)) continue;
        entries_[next++] = previous[i];
    }
}

void RecentList::Save(ports::SettingsStore& store) const {
    for (int i = 0; i < RecentListSize; ++i)
        store.Set(section_, std::to_string(i), entries_[static_cast<std::size_t>(i)]);
}

}  // namespace synthara::sheet
