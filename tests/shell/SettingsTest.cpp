// The stored settings: defaults on an empty store, the keys whose reader and
// writer spell them differently, a round trip, and the start dialog's choices.
#include <gtest/gtest.h>

#include "ports/SettingsStore.h"
#include "shell/Settings.h"
#include "shell/StartChoices.h"

namespace synthara::shell {
namespace {

TEST(SettingsTest, AnEmptyStoreGivesEveryDefault) {
    ports::MemorySettingsStore store;
    StoredSettings settings;
    EXPECT_TRUE(settings.Load(store).empty());
    struct Case {
        const char* name;
        const char* text;
    };
    for (const Case& c : std::initializer_list<Case>{{"ShowWizard01", "1"},
                                                     {"CompModelA(1,4)", "1"},
                                                     {"CompModelA(2,5)", "0"},
                                                     {"mShowGuide", "1"},
                                                     {"ShowAllIndices", "2"},
                                                     {"LogScaleL", "0.01"},
                                                     {"gFontName", "Arial"},
                                                     {"gPrinterPageType", ""},
                                                     {"gHeaderText", "Meta Analysis"},
                                                     {"gFooterText(2)", "Favours B"},
                                                     {"gPrinterMarginTop", "2160"},
                                                     {"dBackColor(1)", "16777215"},
                                                     {"dBackColor(2)", "9175040"},
                                                     {"dTextColor(2)", "16777215"},
                                                     {"dBorderOn(2)", "1"}})
        EXPECT_EQ(settings.Text(c.name), c.text) << c.name;
    EXPECT_EQ(settings.Number("gtxtColBuffer"), 1.2);
    EXPECT_EQ(settings.Integer("gPrinterMarginBottom"), 1440);
    // The fudge factor has no default: it is what the last close wrote.
    EXPECT_FALSE(settings.IsSet("FudgeFactor"));
    EXPECT_EQ(RgbValue(0, 0, 140), settings.Integer("dBackColor(2)"));
}

TEST(SettingsTest, KeysSpelledTwoWaysAreReadAndWrittenEachUnderItsOwn) {
    ports::MemorySettingsStore store;
    store.Set("Settings", "gSpnSpaceAddcols", "3");
    store.Set("Settings", "gSpnSpaceAddCols", "9");
    store.Set("Settings", "dBorderOn(1)", "0");
    store.Set("Settings", "dFooterColor(2)", "255");
    StoredSettings settings;
    settings.Load(store);
    EXPECT_EQ(settings.Integer("gSpnSpaceAddcols"), 3);
    // The second scheme's border switch is read from the first one's key.
    EXPECT_EQ(settings.Integer("dBorderOn(2)"), 0);
    EXPECT_EQ(settings.Integer("dFooterColor(2)"), 255);

    settings.SetInteger("dBorderOn(2)", 1);
    settings.SetInteger("mFooterBold", 0);
    ports::MemorySettingsStore written;
    settings.Save(written);
    EXPECT_EQ(written.GetOr("Settings", "gSpnSpaceAddCols", "-"), "3");
    EXPECT_FALSE(written.Get("Settings", "gSpnSpaceAddcols"));
    EXPECT_EQ(written.GetOr("Settings", "dFooterTitle(2)", "-"), "255");
    EXPECT_EQ(written.GetOr("Settings", "dBorderOn(2)", "-"), "1");
    EXPECT_EQ(written.GetOr("Settings", "dBorderOn(1)", "-"), "0");
    // Written, never read.
    EXPECT_EQ(written.GetOr("Settings", "gFooterBold", "-"), "0");
    EXPECT_EQ(written.GetOr("Settings", "gLabelText(1)", "-"), "Favours A");
    EXPECT_FALSE(written.Get("Startup", "FudgeFactor"));
}

TEST(SettingsTest, WhatIsSavedLoadsBackTheSame) {
    StoredSettings settings;
    settings.Set("FudgeFactor", "1.25");
    settings.SetInteger("ShowWizard01", 0);
    settings.Set("gHeaderText", "Trials of BCG");
    settings.Set("LogScaleR", "50");
    ports::MemorySettingsStore store;
    settings.Save(store);
    StoredSettings loaded;
    EXPECT_TRUE(loaded.Load(store).empty());
    for (const SettingKey& key : SettingsTable())
        if (!key.readKey.empty() && key.readKey == key.writeKey) {
            EXPECT_EQ(loaded.Text(key.name), settings.Text(key.name)) << key.name;
        }
    EXPECT_EQ(loaded.Number("FudgeFactor"), 1.25);
}

TEST(SettingsTest, ANumberThatDoesNotReadKeepsItsDefaultAndIsNamed) {
    ports::MemorySettingsStore store;
    store.Set("Settings", "gCILine", "wide");
    store.Set("Settings", "gFontName", "12");
    StoredSettings settings;
    EXPECT_EQ(settings.Load(store), std::vector<std::string>{"gCILine"});
    EXPECT_EQ(settings.Integer("gCILine"), 20);
    EXPECT_EQ(settings.Text("gFontName"), "12");
}

TEST(StartChoicesTest, OptionsListAndTheOptionSelectedFirst) {
    ports::MemorySettingsStore store;
    sheet::RecentFiles recent(store);
    StoredSettings settings;
    ASSERT_EQ(StartOptions(false).size(), 3u);
    EXPECT_EQ(StartOptions(false)[1].caption, "Start a new spreadsheet using a template");
    EXPECT_EQ(StartOptions(true).back().caption, "Run the tutorial");

    EXPECT_EQ(FirstStartOption(settings, recent, false), StartOption::Blank);
    store.Set("Recent", "0", "/data/trials.syn");
    recent.GetFiles();
    EXPECT_EQ(FirstStartOption(settings, recent, false), StartOption::File);
    settings.SetInteger("OptCurrentNameSelection", 2);
    EXPECT_EQ(FirstStartOption(settings, recent, false), StartOption::Template);
    // The tutorial is not offered, so it can't be the choice.
    settings.SetInteger("OptCurrentNameSelection", 4);
    EXPECT_EQ(FirstStartOption(settings, recent, false), StartOption::File);

    EXPECT_EQ(StartList(StartOption::File, recent),
              (std::vector<std::string>{"/data/trials.syn", "More files ..."}));
    EXPECT_EQ(StartList(StartOption::Template, recent), std::vector<std::string>{"More files ..."});
    EXPECT_TRUE(StartList(StartOption::Blank, recent).empty());
}

}  // namespace
}  // namespace synthara::shell
