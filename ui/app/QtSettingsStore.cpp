#include "app/QtSettingsStore.h"

#include <QSettings>
#include <QString>

namespace synthara::ui {

namespace {

QString Path(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + "/" + QString::fromStdString(key);
}

}  // namespace

QtSettingsStore::QtSettingsStore(const std::string& application)
    : settings_(std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                            QString::fromStdString(application),
                                            QString::fromStdString(application))) {}

QtSettingsStore::QtSettingsStore(const std::string& folder, const std::string& application)
    : settings_(std::make_unique<QSettings>(
          QString::fromStdString(folder + "/" + application + ".conf"), QSettings::IniFormat)) {}

QtSettingsStore::~QtSettingsStore() = default;

std::optional<std::string> QtSettingsStore::Get(const std::string& section,
                                                const std::string& key) const {
    const QVariant value = settings_->value(Path(section, key));
    if (!value.isValid()) return std::nullopt;
    return value.toString().toStdString();
}

void QtSettingsStore::Set(const std::string& section, const std::string& key,
                          const std::string& value) {
    settings_->setValue(Path(section, key), QString::fromStdString(value));
}

void QtSettingsStore::Remove(const std::string& section, const std::string& key) {
    settings_->remove(Path(section, key));
}

void QtSettingsStore::Sync() {
    settings_->sync();
}

}  // namespace synthara::ui
