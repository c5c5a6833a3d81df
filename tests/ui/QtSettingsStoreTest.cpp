// The settings store on disk: what the program writes is read back, keyed by
// the application name and by the exact spelling of the section.
#include <gtest/gtest.h>

#include <QDir>
#include <filesystem>

#include "app/QtSettingsStore.h"
#include "shell/Settings.h"

namespace synthara::ui {
namespace {

TEST(QtSettingsStoreTest, SettingsTravelThroughTheFileUnderTheApplicationName) {
    const std::string folder = ::testing::TempDir() + "QtSettingsStoreTest";
    std::filesystem::remove_all(folder);
    {
        QtSettingsStore store(folder, "Synthara V2");
        shell::StoredSettings settings;
        settings.Set("FudgeFactor", "1.1");
        settings.Set("gHeaderText", "Trials, 1948-1980");
        settings.SetInteger("mShowGuide", 0);
        settings.Save(store);
        store.Sync();
    }
    QtSettingsStore again(folder, "Synthara V2");
    shell::StoredSettings read;
    EXPECT_TRUE(read.Load(again).empty());
    EXPECT_EQ(read.Text("gHeaderText"), "Trials, 1948-1980");
    EXPECT_EQ(read.Integer("mShowGuide"), 0);
    EXPECT_EQ(again.GetOr("StartUp", "mShowGuide", "-"), "0");
    EXPECT_FALSE(again.Get("Startup", "mShowGuide"));
    EXPECT_EQ(again.GetOr("Settings", "CompModelA(1,1)", "-"), "-");
    EXPECT_EQ(again.GetOr("Startup", "CompModelA(1,1)", "-"), "1");

    QtSettingsStore other(folder, "Another program");
    EXPECT_FALSE(other.Get("Settings", "gHeaderText"));
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace synthara::ui
