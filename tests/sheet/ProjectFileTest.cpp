#include "sheet/files/ProjectFile.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "SampleProject.h"
#include "sheet/files/Backup.h"
#include "support/ScriptedFileChooser.h"
#include "support/ScriptedPrompter.h"

namespace synthara::sheet {
namespace {

namespace fs = std::filesystem;
using ports::Answer;

std::string ReadBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteBytes(const fs::path& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

class ProjectFileTest : public ::testing::Test {
  protected:
    ProjectFileTest()
        : folder(fs::temp_directory_path() /
                 ("synthara-files-" + std::to_string(::getpid()) + "-" +
                  ::testing::UnitTest::GetInstance()->current_test_info()->name())),
          sheet(prompter),
          recent(settings),
          files(sheet, project, recent, chooser) {
        fs::remove_all(folder);
        fs::create_directories(folder);
        sample::Build(sheet);
    }
    ~ProjectFileTest() override { fs::remove_all(folder); }

    std::string Path(const std::string& name) const { return (folder / name).string(); }
    const ports::Box& LastBox() const { return prompter.shown.back().box; }

    fs::path folder;
    testing::ScriptedPrompter prompter;
    testing::ScriptedFileChooser chooser;
    ports::MemorySettingsStore settings;
    OpenProject project;
    Sheet sheet;
    RecentFiles recent;
    ProjectFiles files;
};

TEST_F(ProjectFileTest, SavedProjectReopensCellForCellAndKeyForKey) {
    ASSERT_TRUE(SaveProjectFile(sheet, Path("trial.syn")).ok);
    testing::ScriptedPrompter otherPrompter;
    Sheet reopened(otherPrompter);
    reopened.InitializeGrid();
    const FileResult loaded = LoadProjectFile(reopened, Path("trial.syn"));
    ASSERT_TRUE(loaded.ok) << loaded.message;
    sample::ExpectSameGrid(sheet.Flex(), reopened.Flex());
    EXPECT_EQ(reopened.DisplayColTable(), sheet.DisplayColTable());
    EXPECT_EQ(ReadStoredNumbers(reopened).ImputedR, 0.25);
    EXPECT_EQ(ReadStoredNumbers(reopened).FudgeFactor, 1.1);
}

TEST_F(ProjectFileTest, ArchiveKeepsTheWholeLayoutAndNamesItsMember) {
    const Grid& g = sheet.Flex();
    sheet.SetRowHeight(FixedRowCount + 3, 777);  // a load puts heights back; the archive keeps them
    sheet.SetRowHidden(FixedRowCount + 4, true);
    sheet.SetColAlignment(12, Alignment::Right);
    std::vector<std::uint8_t> bytes;
    ASSERT_TRUE(PackGrid(g, MemberNameFor("/data/trial.syn"), bytes).ok);
    Grid back;
    const FileResult result = UnpackGrid(bytes, back);
    ASSERT_TRUE(result.ok) << result.message;
    sample::ExpectSameGrid(g, back, false);
    EXPECT_EQ(MemberNameFor("/data/trial.syn"), "C01trial.");
    // The member's name is read from the archive, not worked out from the path.
    ASSERT_TRUE(PackGrid(g, "C01somewhere else.", bytes).ok);
    EXPECT_TRUE(UnpackGrid(bytes, back).ok);
}

// A sheet's shape costs a pointer per page of rows and column: a million
// studies on a full sheet's columns are read, a shape no memory holds is not.
TEST_F(ProjectFileTest, AMillionRowsOfAFullSheetAreRead) {
    const auto shaped = [](int rows, int cols) {
        std::string text = R"({"format":"synthara-grid","version":1,"rows":)" +
                           std::to_string(rows) + R"(,"cols":)" + std::to_string(cols) +
                           R"(,"fixedRows":1,"fixedCols":0,"rowHeights":[[)" +
                           std::to_string(rows) + R"(,250]],"rowHidden":[[)" +
                           std::to_string(rows) + R"(,0]],"columns":[)";
        for (int c = 0; c < cols; ++c)
            text += std::string(c > 0 ? "," : "") +
                    R"({"width":9,"hidden":false,"align":"left","cells":[[999999,"last"]]})";
        return text + "]}";
    };
    Grid g;
    const FileResult read = DecodeGrid(shaped(1'000'000, 400), g);
    ASSERT_TRUE(read.ok) << read.message;
    EXPECT_EQ(g.Text(999'999, 399), "last");
    EXPECT_EQ(DecodeGrid(shaped(16'000'000, 300), g).message,
              "The file is not a readable sheet: the sheet is larger than the program can hold.");
}

TEST_F(ProjectFileTest, EntriesALaterVersionMayAddArePassedOver) {
    const std::string text =
        R"({"format":"synthara-grid","version":1,"note":{"by":["a",{"b":null}]},"rows":2,)"
        R"("cols":1,"fixedRows":1,"fixedCols":0,"rowHeights":[[2,250]],"rowHidden":[[2,0]],)"
        R"("columns":[{"width":9,"hidden":true,"align":"center","colour":[1,2],)"
        R"("cells":[[0,"head",7]]}],"more":1})";
    Grid g;
    const FileResult result = DecodeGrid(text, g);
    ASSERT_TRUE(result.ok) << result.message;
    EXPECT_EQ(g.Text(0, 0), "head");
    EXPECT_TRUE(g.At(1, 0).IsNumber());
    EXPECT_EQ(g.At(1, 0).Number(), 7.0);
    EXPECT_TRUE(g.Col(0).hidden);
    EXPECT_EQ(g.Col(0).alignment, Alignment::Center);
}

TEST_F(ProjectFileTest, UnreadableFilesLeaveTheOpenSheetAsItWas) {
    std::vector<std::uint8_t> good;
    ASSERT_TRUE(PackGrid(sheet.Flex(), "C01x.", good).ok);
    const std::string whole(good.begin(), good.end());
    std::string flipped = whole;
    flipped[flipped.size() / 3] = static_cast<char>(flipped[flipped.size() / 3] ^ 0x5A);

    const auto packed = [](std::string_view json) {
        std::vector<std::uint8_t> bytes;
        EXPECT_TRUE(PackMember("C01x.", json, bytes).ok);
        return std::string(bytes.begin(), bytes.end());
    };
    const std::string header =
        R"({"format":"synthara-grid","version":1,"rows":2,"cols":1,"fixedRows":0,"fixedCols":0,)"
        R"("rowHeights":[[2,250]],"rowHidden":[[2,0]],)";
    const struct {
        const char* name;
        std::string bytes;
        const char* why;
    } cases[] = {
        {"missing", "", "The file does not exist."},
        {"empty", "", "The file is empty."},
        {"text", "Study,Events\nA,1\n", "The file is not a project file."},
        {"truncated", whole.substr(0, whole.size() / 2), "The file is damaged or incomplete."},
        {"last byte gone", whole.substr(0, whole.size() - 1), "The file is damaged or incomplete."},
        // Where the flipped byte falls decides which check notices: the
        // archive's or the member's as it inflates (nullptr: either).
        {"flipped", flipped, nullptr},
        {"not json", packed("{\"format\": "), "The file's contents are damaged."},
        {"foreign json", packed(R"({"format":"spreadsheet"})"),
         "The file is not a readable sheet: the contents are not a sheet."},
        {"later version", packed(R"({"format":"synthara-grid","version":2})"),
         "The file is not a readable sheet: the file was written by a later version of the "
         "program."},
        {"huge",
         packed(R"({"format":"synthara-grid","version":1,"rows":16000000,"cols":60000,)"
                R"("fixedRows":0,"fixedCols":0})"),
         "The file is not a readable sheet: the sheet is larger than the program can hold."},
        {"cell outside",
         packed(header +
                R"("columns":[{"width":9,"hidden":false,"align":"left","cells":[[1,"a","b"]]}]})"),
         "The file is not a readable sheet: a cell lies outside the sheet."},
        {"rows short", packed(header + R"("columns":[]})"),
         "The file is not a readable sheet: the columns don't match the number of columns."},
    };
    const Grid before = sheet.Flex();
    project.CurrentFilePath = Path("open.syn");
    project.CurrentFileTitle = "open.syn";
    project.SheetDirty = true;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = Path(std::string(c.name) + ".syn");
        if (std::string_view(c.name) != "missing") WriteBytes(path, c.bytes);
        const std::string message = LoadProjectFile(sheet, path).message;
        if (c.why != nullptr)
            EXPECT_EQ(message, c.why);
        else
            EXPECT_THAT(message, ::testing::AnyOf("The file's contents are damaged.",
                                                  "The file is damaged or incomplete."));
        prompter.shown.clear();
        chooser.answers = {path};
        project.SheetDirty = false;
        EXPECT_FALSE(files.OpenTable(OpenKind::File));
        EXPECT_EQ(prompter.Only(),
                  " File not opened |Sorry, that file could not be opened         ");
        sample::ExpectSameGrid(before, sheet.Flex());
        EXPECT_EQ(project.CurrentFilePath, Path("open.syn"));
        EXPECT_EQ(files.Caption(), "open.syn");
    }
}

TEST_F(ProjectFileTest, FailedSaveLeavesThePreviousFileIntact) {
    chooser.answers = {Path("kept")};
    ASSERT_TRUE(files.FileSave(0));
    EXPECT_EQ(project.CurrentFilePath, Path("kept.syn"));  // the filter's extension
    const std::string before = ReadBytes(Path("kept.syn"));

    // The sheet grows past what the process may write: the write fails midway.
    sheet.SetRows(FixedRowCount + 5000);
    for (int r = FixedRowCount; r < sheet.Flex().Rows(); ++r)
        sheet.SetText(r, sheet.GetCol(0, 1), "Study " + std::to_string(r));
    project.SheetDirty = true;
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit saved{};
    ::getrlimit(RLIMIT_FSIZE, &saved);
    rlimit small = saved;
    small.rlim_cur = before.size() + 100;
    ::setrlimit(RLIMIT_FSIZE, &small);
    const bool ok = files.FileSave(0);
    ::setrlimit(RLIMIT_FSIZE, &saved);

    EXPECT_FALSE(ok);
    EXPECT_TRUE(project.SheetDirty);
    EXPECT_EQ(LastBox().title, " File not saved ");
    EXPECT_EQ(LastBox().lines.front(), "Sorry, that file could not be saved         ");
    EXPECT_EQ(ReadBytes(Path("kept.syn")), before);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1)
        << "the temporary file was left behind";
}

TEST_F(ProjectFileTest, TemplateOpensUnnamedAndItsNextSaveAsksForAName) {
    ASSERT_TRUE(SaveProjectFile(sheet, Path("design.syt")).ok);
    const std::string templateBytes = ReadBytes(Path("design.syt"));
    project.RestoreEnabled = true;
    chooser.answers = {Path("design.syt")};
    ASSERT_TRUE(files.OpenTable(OpenKind::Template));
    EXPECT_EQ(chooser.asked.back().title, "Open template");
    EXPECT_EQ(project.State(), ProjectState::FromTemplate);
    EXPECT_EQ(project.CurrentTemplatePath, Path("design.syt"));
    EXPECT_EQ(files.Caption(), "Data");
    EXPECT_FALSE(project.RestoreEnabled);
    EXPECT_EQ(recent.Templates().Entries()[0], Path("design.syt"));
    EXPECT_EQ(settings.GetOr("Templates", "0", ""), Path("design.syt"));
    EXPECT_EQ(recent.Files().Entries()[0], "");

    chooser.answers = {""};  // cancelled: nothing is written
    EXPECT_FALSE(files.FileSave(0));
    ASSERT_EQ(chooser.asked.size(), 2u);
    EXPECT_TRUE(chooser.asked.back().save);
    EXPECT_EQ(chooser.asked.back().title, "Save file");
    EXPECT_EQ(chooser.asked.back().filter.pattern, "*.syn");

    chooser.answers = {Path("review.syn")};
    ASSERT_TRUE(files.FileSave(0));
    EXPECT_EQ(files.Caption(), "review.syn");
    EXPECT_EQ(project.State(), ProjectState::NamedClean);
    EXPECT_EQ(ReadBytes(Path("design.syt")), templateBytes);
    EXPECT_EQ(settings.GetOr("Recent", "0", ""), Path("review.syn"));

    // A plain save goes to the same file without a dialog.
    project.SheetDirty = true;
    ASSERT_TRUE(files.FileSave(0));
    EXPECT_EQ(chooser.asked.size(), 3u);
    EXPECT_FALSE(project.SheetDirty);

    // The template stays the last one used when a data file is opened.
    ASSERT_TRUE(files.OpenTable(OpenKind::File, Path("review.syn")));
    EXPECT_EQ(project.CurrentTemplatePath, Path("design.syt"));
    EXPECT_EQ(project.State(), ProjectState::NamedClean);
}

TEST_F(ProjectFileTest, OpeningAFileNamesItAndRestoresWhatTheFileDoesNotHold) {
    ASSERT_TRUE(SaveProjectFile(sheet, Path("trial.syn")).ok);
    sheet.View.BlockDisplay = HideAllBlocks;
    sheet.View.IndexDisplay = ShowNoIndices;
    sheet.InitializeGrid();
    ASSERT_TRUE(files.OpenTable(OpenKind::File, Path("trial.syn")));
    EXPECT_TRUE(chooser.asked.empty());
    EXPECT_EQ(sheet.View.BlockDisplay, ShowCurrentBlock);
    EXPECT_EQ(sheet.View.IndexDisplay, ShowPrimaryIndex);
    EXPECT_EQ(sheet.View.Tabs.size(), 2u);
    EXPECT_EQ(files.Caption(), "trial.syn");
    EXPECT_EQ(project.State(), ProjectState::NamedClean);
    EXPECT_EQ(files.Numbers().ImputedR, 0.25);
    EXPECT_EQ(files.Numbers().PoolVarianceMethod, 1);
    EXPECT_EQ(sheet.Flex().Col(sheet.GetCol(0, 1)).width, 1800);
    EXPECT_EQ(sheet.Meta(sheet.GetCol(0, 1), MetaRow::SavedWidth), "1800");
}

TEST_F(ProjectFileTest, OpeningKeepsRenamedTitlesAndSetsNumberFormats) {
    const int odds = sheet.DisplayColTable()[2][AttrPoint];
    sheet.SetMeta(odds, MetaRow::ColumnHeader, "OR");
    const int study = sheet.GetCol(0, 1);
    int region = -1, year = -1;
    for (int c = 0; c < sheet.Flex().Cols(); ++c) {
        if (sheet.MetaIs(c, 0, "Region")) region = c;
        if (sheet.MetaIs(c, 0, "Year")) year = c;
    }
    ASSERT_GE(region, 0);
    ASSERT_GE(year, 0);
    sheet.SetMeta(region, MetaRow::NumDecs, "2");
    sheet.SetMeta(region, MetaRow::Align, "Right");
    sheet.SetMeta(year, MetaRow::NumDecs, "4");
    sheet.Decimals = 1;
    for (int c = 0; c < sheet.Flex().Cols(); ++c)
        sheet.SetColNumberFormat(c, "");
    ASSERT_TRUE(SaveProjectFile(sheet, Path("trial.syn")).ok);
    sheet.InitializeGrid();
    ASSERT_TRUE(files.OpenTable(OpenKind::File, Path("trial.syn")));

    EXPECT_EQ(sheet.Meta(sheet.DisplayColTable()[2][AttrPoint], 0), "OR");
    struct Case {
        int col;
        std::string format;
        Alignment alignment;
    };
    const Case cases[] = {
        {region, "0.00", Alignment::Right},  // its own decimals
        {year, "0", Alignment::General},     // an "Integer" column shows whole numbers
        {study, "0.0", Alignment::Left},     // "Auto": the program-wide decimals
        {sheet.Flex().FixedCols() - 1, "", Alignment::General},  // the fixed area is left alone
    };
    for (const Case& c : cases) {
        EXPECT_EQ(sheet.Flex().Col(c.col).numberFormat, c.format) << c.col;
        EXPECT_EQ(sheet.Flex().Col(c.col).alignment, c.alignment) << c.col;
    }
}

TEST_F(ProjectFileTest, UnsavedChangesQuestion) {
    struct Case {
        const char* name;
        std::string path;
        bool oldWording;
        Answer answer;
        bool proceeds;
        std::string text;
    };
    const std::string named = Path("named.syn");
    const Case cases[] = {
        {"unnamed", "", false, Answer::No, true,
         "Do you want to save the changes you made to the spreadsheet?       "},
        {"named", named, false, Answer::No, true,
         "Do you want to save the changes you made to " + named + "?       "},
        {"old wording", named, true, Answer::Cancel, false,
         "Do you want to save the changes you made to " + named + "?      "},
        {"yes saves", named, false, Answer::Yes, true,
         "Do you want to save the changes you made to " + named + "?       "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        prompter.shown.clear();
        prompter.answers = {c.answer};
        project.CurrentFilePath = c.path;
        project.SheetDirty = true;
        EXPECT_EQ(files.ConfirmDiscard(c.oldWording), c.proceeds);
        ASSERT_EQ(prompter.Only(), "Synthara|" + c.text);
        EXPECT_TRUE(prompter.shown[0].question);
        EXPECT_EQ(prompter.shown[0].buttons, ports::Buttons::YesNoCancel);
    }
    EXPECT_TRUE(fs::exists(named));  // Yes saved it
    EXPECT_FALSE(project.SheetDirty);

    // A clean sheet is replaced without a question; Cancel keeps the sheet.
    prompter.shown.clear();
    EXPECT_TRUE(files.FileNew());
    EXPECT_TRUE(prompter.shown.empty());
    EXPECT_EQ(project.State(), ProjectState::New);
    sheet.SetText(FixedRowCount, 12, "typed");
    project.SheetDirty = true;
    prompter.answers = {Answer::Cancel};
    EXPECT_FALSE(files.FileOpen(named));
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount, 12), "typed");
    // Yes with a save the user cancels doesn't go ahead either.
    prompter.answers = {Answer::Yes};
    chooser.answers = {""};
    EXPECT_FALSE(files.FileNew());
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount, 12), "typed");
}

TEST_F(ProjectFileTest, RecentListsMoveAPathToTheTopOnce) {
    for (int i = 0; i < RecentListSize; ++i)
        settings.Set("Recent", std::to_string(i), "/d/file" + std::to_string(i) + ".syn");
    recent.GetFiles();
    EXPECT_TRUE(recent.Files().Found());
    const auto file = [](int i) { return "/d/file" + std::to_string(i) + ".syn"; };
    recent.SetFlex("/D/FILE3.SYN");  // the same file, in other case
    // Only the first ten are carried down.
    EXPECT_EQ(recent.Files().Entries(), (std::array<std::string, RecentListSize>{
                                            "/D/FILE3.SYN", file(0), file(1), file(2), file(4),
                                            file(5), file(6), file(7), file(8), file(9), ""}));
    recent.SetFlex("/d/new.syn");
    EXPECT_EQ(recent.Files().Entries()[0], "/d/new.syn");
    EXPECT_EQ(recent.Files().Entries()[1], "/D/FILE3.SYN");
    EXPECT_EQ(recent.Files().Entries()[10], file(9));
    recent.SaveFiles();
    EXPECT_EQ(settings.GetOr("Recent", "1", ""), "/D/FILE3.SYN");
    EXPECT_EQ(settings.GetOr("Templates", "0", "absent"), "absent");

    settings.Set("Templates", "0", "");
    settings.Set("Templates", "4", "/t/a.syt");
    recent.GetTemplates();
    EXPECT_FALSE(recent.Templates().Found());  // a list whose first entry is "" counts as none
}

TEST_F(ProjectFileTest, BookmarkAndRestore) {
    ASSERT_TRUE(BackupFile(sheet, project, folder).ok);
    EXPECT_TRUE(project.RestoreEnabled);
    const Grid withWidths = sheet.Flex();  // PreSave wrote SavedWidth
    sheet.SetText(FixedRowCount, sheet.GetCol(0, 1), "changed");

    prompter.answers = {Answer::Cancel};
    EXPECT_FALSE(RestoreFile(sheet, project, true, folder));
    EXPECT_EQ(sheet.Flex().Text(FixedRowCount, sheet.GetCol(0, 1)), "changed");
    EXPECT_EQ(prompter.Last(),
              "Confirm selection |Any changes made since the last bookmark will be lost.  |Click "
              "'Ok' to proceed, and abandon those changes.   ");
    EXPECT_EQ(LastBox().icon, ports::Icon::Warning);
    EXPECT_EQ(prompter.shown.back().buttons, ports::Buttons::OkCancel);
    EXPECT_EQ(prompter.shown.back().byDefault, Answer::Cancel);

    prompter.answers = {Answer::Ok};
    EXPECT_TRUE(RestoreFile(sheet, project, true, folder));
    sample::ExpectSameCells(withWidths, sheet.Flex());

    // Opening another file disables Restore though the bookmark is still there.
    ASSERT_TRUE(SaveProjectFile(sheet, Path("other.syn")).ok);
    ASSERT_TRUE(files.OpenTable(OpenKind::File, Path("other.syn")));
    EXPECT_FALSE(project.RestoreEnabled);
    EXPECT_TRUE(fs::exists(folder / "SYNBookMark"));

    // Closing removes the bookmark and the undo copy.
    WriteBytes(folder / "SYNSystemBackup", "x");
    EXPECT_TRUE(files.Close(folder));
    EXPECT_FALSE(fs::exists(folder / "SYNBookMark"));
    EXPECT_FALSE(fs::exists(folder / "SYNSystemBackup"));
}

}  // namespace
}  // namespace synthara::sheet
