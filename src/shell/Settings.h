#pragma once
// The program's stored settings: every key it reads at start and writes at
// the close, with its section, its kind and the value it takes when the store
// has none. Values travel as text; the typed getters convert them.
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ports/SettingsStore.h"

namespace synthara::shell {

enum class SettingKind { Integer, Number, Text, Color };

struct SettingKey {
    std::string_view name;     // how the program calls the value
    std::string_view section;  // "Startup", "StartUp", "Settings"
    // The key it is read from and the key it is written to. They differ for
    // a few keys whose reader and writer never agreed on the spelling; both
    // spellings stay so that stores written before keep being read the same.
    // An empty readKey: written, never read.
    std::string_view readKey;
    std::string_view writeKey;
    SettingKind kind = SettingKind::Text;
    // The value read when the key is absent; nullopt: none, the value stays
    // unset until the program sets it.
    std::optional<std::string_view> byDefault;
    // For a key written but never read: the value it is written with.
    std::string_view writtenFrom = {};
};

// Every key, in the order the close writes them.
std::span<const SettingKey> SettingsTable();
// The entry of that name; nullptr for an unknown name.
const SettingKey* FindSetting(std::string_view name);

// A colour as the store keeps it: red + 256 * green + 65536 * blue.
constexpr long RgbValue(int red, int green, int blue) {
    return red + 256L * green + 65536L * blue;
}

class StoredSettings {
  public:
    // Every value at its default.
    StoredSettings();

    // Reads every key; an absent key keeps its default. A value that is not
    // a number where one is wanted keeps the default too, and its name is
    // given back so the caller can say so.
    std::vector<std::string> Load(const ports::SettingsStore& store);
    // Writes every key, in the table's order; unset values are skipped.
    void Save(ports::SettingsStore& store) const;

    // "" for an unknown or unset name.
    std::string Text(std::string_view name) const;
    long Integer(std::string_view name) const;
    double Number(std::string_view name) const;
    bool IsSet(std::string_view name) const;

    void Set(std::string_view name, std::string value);
    void SetInteger(std::string_view name, long value) { Set(name, std::to_string(value)); }

  private:
    std::unordered_map<std::string, std::string> values_;
};

}  // namespace synthara::shell
