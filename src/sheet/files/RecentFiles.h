#pragma once
// The recent lists: up to 11 data files and 11 templates, most recent first,
// kept in the settings store under "Recent" and "Templates" with the index
// as the key.
#include <array>
#include <string>
#include <string_view>

#include "ports/SettingsStore.h"

namespace synthara::sheet {

inline constexpr int RecentListSize = 11;

class RecentList {
  public:
    explicit RecentList(std::string section) : section_(std::move(section)) {}

    // Reads the 11 keys, "" where a key is absent.
    void Load(const ports::SettingsStore& store);
    // Puts `path` at the top; an entry naming the same file, regardless of
    // case, is dropped rather than listed twice.
    void Promote(const std::string& path);
    void Save(ports::SettingsStore& store) const;

    const std::array<std::string, RecentListSize>& Entries() const { return entries_; }
    // Whether anything was found by the last Load (off when the first entry is "").
    bool Found() const { return found_; }
    const std::string& Section() const { return section_; }

  private:
    std::string section_;
    std::array<std::string, RecentListSize> entries_;
    bool found_ = false;
};

// Both lists, with the names the menus and the start dialog call them by.
class RecentFiles {
  public:
    explicit RecentFiles(ports::SettingsStore& store) : store_(store) {}

    void GetFiles() { files_.Load(store_); }
    void SetFlex(const std::string& currentPath) { files_.Promote(currentPath); }
    void SaveFiles() const { files_.Save(store_); }
    void GetTemplates() { templates_.Load(store_); }
    void SetTemplates(const std::string& templatePath) { templates_.Promote(templatePath); }
    void SaveTemplates() const { templates_.Save(store_); }

    const RecentList& Files() const { return files_; }
    const RecentList& Templates() const { return templates_; }

  private:
    ports::SettingsStore& store_;
    RecentList files_{"Recent"};
    RecentList templates_{"Templates"};
};

// Paths compared as the file system of the user's documents does: without
// regard to case.
bool SamePathIgnoringCase(std::string_view a, std::string_view b);

}  // namespace synthara::sheet
