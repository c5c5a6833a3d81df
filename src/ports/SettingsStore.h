#pragma once
// Per-user settings, keyed by section and key under the application name
// "Synthara V2". The desktop backs this with QSettings, tests with a map.
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace synthara::ports {

inline constexpr const char* kSettingsApplication = "Synthara V2";

class SettingsStore {
  public:
    virtual ~SettingsStore() = default;
    virtual std::optional<std::string> Get(const std::string& section,
                                           const std::string& key) const = 0;
    virtual void Set(const std::string& section, const std::string& key,
                     const std::string& value) = 0;
    virtual void Remove(const std::string& section, const std::string& key) = 0;

    std::string GetOr(const std::string& section, const std::string& key,
                      const std::string& fallback) const {
        auto value = Get(section, key);
        return value ? *value : fallback;
    }
};

class MemorySettingsStore final : public SettingsStore {
  public:
    std::optional<std::string> Get(const std::string& section,
                                   const std::string& key) const override {
        auto it = values_.find({section, key});
        if (it == values_.end()) return std::nullopt;
        return it->second;
    }
    void Set(const std::string& section, const std::string& key,
             const std::string& value) override {
        values_[{section, key}] = value;
    }
    void Remove(const std::string& section, const std::string& key) override {
        values_.erase({section, key});
    }

  private:
    std::map<std::pair<std::string, std::string>, std::string> values_;
};

}  // namespace synthara::ports
