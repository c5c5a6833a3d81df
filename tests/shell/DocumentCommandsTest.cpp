// The menu commands on the open project: what they change, what they tell
// the listeners, and the file commands' questions.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ports/SettingsStore.h"
#include "sheet/files/Backup.h"
#include "sheet/grid/MetaRows.h"
#include "shell/Document.h"
#include "support/ScriptedFileChooser.h"
#include "support/ScriptedPrompter.h"

namespace synthara::shell {
namespace {

namespace fs = std::filesystem;

class Recorder final : public DocumentListener {
  public:
    void SheetChanged(const SheetChange& change) override { kinds.push_back(change.kind); }
    void DirtyChanged(bool dirty) override { dirty_.push_back(dirty); }
    std::vector<ChangeKind> kinds;
    std::vector<bool> dirty_;
};

class DocumentCommandsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        folder = fs::path(::testing::TempDir()) /
                 ("DocumentCommandsTest." +
                  std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(folder);
        fs::create_directories(folder);
        files.tempFolder = folder;
        std::ofstream(folder / "trials.csv")
            << "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n"
               "Aronson,4,123,11,139\n"
               "Ferguson,6,306,29,303\n"
               "Rosenthal,3,231,11,220\n";
        OpenSettings settings;
        settings.defaultFormat = "Events and sample size in each group";
        ASSERT_TRUE(document.Open(folder / "trials.csv", settings).ok());
        document.AddListener(recorder);
    }
    std::string Study(int i) const { return document.StudyName(i); }

    testing::ScriptedPrompter prompter;
    testing::ScriptedFileChooser chooser;
    ports::MemorySettingsStore store;
    sheet::RecentFiles recent{store};
    Document document{prompter};
    Recorder recorder;
    fs::path folder;
    FileServices files{recent, chooser};
};

TEST_F(DocumentCommandsTest, AddingAStudyChangesTheStructureAndMarksTheProject) {
    chooser.answers = {(folder / "trials.syn").string()};
    ASSERT_TRUE(document.FileSave(files, 0));  // a clean start
    recorder.kinds.clear();
    recorder.dirty_.clear();
    const sheet::AddStudyOutcome added = document.AddStudy("Hart", false);
    EXPECT_TRUE(added.inserted);
    EXPECT_EQ(document.DataRows(), 4);
    EXPECT_EQ(recorder.kinds, std::vector<ChangeKind>{ChangeKind::Structure});
    EXPECT_EQ(recorder.dirty_, std::vector<bool>{true});
    // A name already used is refused with a box, and nothing changes.
    recorder.kinds.clear();
    EXPECT_FALSE(document.AddStudy("Hart", false).inserted);
    EXPECT_TRUE(recorder.kinds.empty());
    EXPECT_EQ(prompter.Last(), "Synthara|You already have a study with this name.  ");
}

TEST_F(DocumentCommandsTest, SortingAndDeletingAStudyMoveTheRows) {
    const int studyCol = document.Sheet().GetCol(0, 1);
    document.SortBy(studyCol, true);
    EXPECT_EQ(Study(0), "Rosenthal");
    EXPECT_EQ(Study(2), "Aronson");
    prompter.answers = {ports::Answer::Yes};
    EXPECT_TRUE(document.DeleteStudy(sheet::FixedRowCount, folder));
    EXPECT_EQ(Study(0), "Ferguson");
    EXPECT_EQ(document.DataRows(), 2);
    EXPECT_TRUE(document.Dirty());
}

TEST_F(DocumentCommandsTest, FreezingKeepsColumnsInViewUntilUnfrozen) {
    const int fixed = document.Sheet().Flex().FixedCols();
    document.FreezeColumns(fixed + 3);
    EXPECT_TRUE(document.Frozen());
    EXPECT_EQ(document.Sheet().Flex().FixedCols(), fixed + 3);
    document.FreezeColumns(fixed + 1);
    document.UnfreezeColumns();
    EXPECT_FALSE(document.Frozen());
    EXPECT_EQ(document.Sheet().Flex().FixedCols(), fixed);
    EXPECT_EQ(recorder.kinds.size(), 3u);
}

TEST_F(DocumentCommandsTest, ComputeEffectsOnASheetWithoutABlockSaysWhatIsMissing) {
    // The imported rows are unsaved; they are let go.
    prompter.answers = {ports::Answer::No};
    ASSERT_TRUE(document.FileNew(files));
    prompter.shown.clear();
    EXPECT_FALSE(document.ComputeEffects());
    EXPECT_EQ(
        prompter.Only(),
        "Columns for effect size missing|Please identify the columns with effect size "
        "data.      |If these columns exist, select 'Identify ... Column for ... Effect "
        "size data'.     |Otherwise, select 'Insert ... Column for... Effect size data'.     ");
}

TEST_F(DocumentCommandsTest, SavingThenOpeningPutsTheFileAtTheTopOfTheRecentList) {
    const std::string path = (folder / "trials.syn").string();
    chooser.answers = {path};
    ASSERT_TRUE(document.FileSave(files, 0));
    EXPECT_FALSE(document.Dirty());
    EXPECT_EQ(document.Caption(), "trials.syn");
    ASSERT_TRUE(document.FileNew(files));
    EXPECT_EQ(document.Caption(), "Data");
    recorder.kinds.clear();
    ASSERT_TRUE(document.FileOpen(files, sheet::OpenKind::File, path));
    EXPECT_EQ(recorder.kinds, std::vector<ChangeKind>{ChangeKind::Reset});
    EXPECT_EQ(document.DataRows(), 3);
    EXPECT_EQ(recent.Files().Entries()[0], path);
    EXPECT_EQ(store.GetOr("Recent", "0", ""), path);
}

TEST_F(DocumentCommandsTest, ClosingAsksAboutUnsavedWorkAndRemovesTheTemporaryFiles) {
    ASSERT_TRUE(document.Bookmark(folder));
    EXPECT_TRUE(fs::exists(folder / sheet::BookmarkFileName));
    prompter.answers = {ports::Answer::Cancel};
    EXPECT_FALSE(document.Close(files));
    EXPECT_EQ(prompter.Last(),
              "Synthara|Do you want to save the changes you made to the spreadsheet?       ");
    EXPECT_TRUE(fs::exists(folder / sheet::BookmarkFileName));
    prompter.answers = {ports::Answer::No};
    EXPECT_TRUE(document.Close(files));
    EXPECT_FALSE(fs::exists(folder / sheet::BookmarkFileName));
}

}  // namespace
}  // namespace synthara::shell
