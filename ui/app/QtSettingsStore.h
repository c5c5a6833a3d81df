#pragma once
// The per-user settings store: the user's configuration file of the
// application name, one group per section.
#include <memory>
#include <string>

#include "ports/SettingsStore.h"

class QSettings;

namespace synthara::ui {

class QtSettingsStore final : public ports::SettingsStore {
  public:
    // The user's store of that application name.
    explicit QtSettingsStore(const std::string& application = ports::kSettingsApplication);
    // A store in one file of the application name, kept in `folder`.
    QtSettingsStore(const std::string& folder, const std::string& application);
    ~QtSettingsStore() override;

    std::optional<std::string> Get(const std::string& section,
                                   const std::string& key) const override;
    void Set(const std::string& section, const std::string& key, const std::string& value) override;
    void Remove(const std::string& section, const std::string& key) override;
    // Writes what was set to the file now.
    void Sync();

  private:
    std::unique_ptr<QSettings> settings_;
};

}  // namespace synthara::ui
