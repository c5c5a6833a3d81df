// The "Effect size indices" dialog's fields: what it offers, the tick it
// refuses to clear, and the display columns its Ok lays out.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "sheet/grid/MetaRows.h"
#include "shell/Document.h"
#include "shell/IndexSelection.h"
#include "support/ScriptedPrompter.h"

namespace synthara::shell {
namespace {

class IndexSelectionTest : public ::testing::Test {
  protected:
    void SetUp() override {
        // A file of each test's own: ctest runs the tests side by side.
        const std::string path = ::testing::TempDir() + "IndexSelectionTest." +
                                 ::testing::UnitTest::GetInstance()->current_test_info()->name() +
                                 ".csv";
        std::ofstream(path, std::ios::binary)
            << "Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N\n"
               "Aronson,4,123,11,139\n";
        ASSERT_TRUE(
            document.Open(path, OpenSettings::ForFormat("Events and sample size in each group"))
                .ok());
        std::filesystem::remove(path);
    }
    // Whether the column of `attr` of the index named `name` is in view.
    bool Visible(const std::string& name, int attr) const {
        const sheet::Sheet& sheet = document.Sheet();
        const int col = sheet.DisplayColTable()[static_cast<std::size_t>(sheet::IndexNumber(name))]
                                               [static_cast<std::size_t>(attr)];
        return col > 0 && !sheet.Flex().Col(col).hidden;
    }
    std::size_t Position(const IndexSelection& selection, const std::string& name) const {
        const auto it = std::find_if(selection.indices.begin(), selection.indices.end(),
                                     [&](const IndexChoice& c) { return c.name == name; });
        return static_cast<std::size_t>(it - selection.indices.begin());
    }

    testing::ScriptedPrompter prompter;
    Document document{prompter};
};

TEST_F(IndexSelectionTest, OffersTheBlocksIndicesWithTheShownOnesTicked) {
    const IndexSelection selection = document.IndexChoices();
    EXPECT_EQ(selection.primary, "Odds ratio");
    EXPECT_EQ(selection.mode, sheet::ShowSelectedIndices);
    std::vector<std::string> names;
    for (const IndexChoice& choice : selection.indices)
        names.push_back(choice.name);
    EXPECT_NE(std::find(names.begin(), names.end(), "Risk ratio"), names.end());
    // The numbers the computation keeps aside are no choice.
    for (const char* hidden : {"MHCellA", "Events(1)", "Peto V", "One Cell A"})
        EXPECT_EQ(std::find(names.begin(), names.end(), hidden), names.end()) << hidden;
    for (const IndexChoice& choice : selection.indices)
        EXPECT_EQ(choice.shown, Visible(choice.name, sheet::AttrPoint)) << choice.name;
}

TEST_F(IndexSelectionTest, ThePrimaryIndexStaysTicked) {
    IndexSelection selection = document.IndexChoices();
    const std::size_t primary = Position(selection, "Odds ratio");
    const auto refused = selection.SetShown(primary, false);
    ASSERT_TRUE(refused);
    EXPECT_EQ(testing::ScriptedPrompter::Text(*refused),
              "Effect size indices|Please change the primary index in the drop-down box|"
              "Otherwise, this index will continue to display");
    EXPECT_TRUE(selection.indices[primary].shown);

    const std::size_t risk = Position(selection, "Risk ratio");
    EXPECT_FALSE(selection.SetShown(risk, false));
    EXPECT_FALSE(selection.indices[risk].shown);
    // Choosing it as the primary ticks it again, and the old one may go.
    selection.SetPrimary("Risk ratio");
    EXPECT_TRUE(selection.indices[risk].shown);
    EXPECT_FALSE(selection.SetShown(primary, false));
}

TEST_F(IndexSelectionTest, OkLaysOutTheDisplayColumns) {
    IndexSelection selection = document.IndexChoices();
    selection.SetPrimary("Risk ratio");
    ASSERT_FALSE(selection.SetShown(Position(selection, "Odds ratio"), false));
    selection.showStdErr = true;
    document.SetIndexSelection(selection);

    EXPECT_FALSE(Visible("Odds ratio", sheet::AttrPoint));
    EXPECT_TRUE(Visible("Risk ratio", sheet::AttrPoint));
    EXPECT_TRUE(Visible("Risk ratio", sheet::AttrStdErr));
    EXPECT_FALSE(Visible("Risk ratio", sheet::AttrVariance));
    EXPECT_EQ(document.Sheet().View.PrimaryIndex, "Risk ratio");
    EXPECT_TRUE(document.Dirty());
    // Read back, the fields are as they were set.
    const IndexSelection again = document.IndexChoices();
    EXPECT_EQ(again.primary, "Risk ratio");
    EXPECT_EQ(again.indices, selection.indices);
    EXPECT_TRUE(again.showStdErr);

    selection.mode = sheet::ShowPrimaryIndex;
    document.SetIndexSelection(selection);
    EXPECT_TRUE(Visible("Risk ratio", sheet::AttrPoint));
    EXPECT_FALSE(Visible("Risk difference", sheet::AttrPoint));
}

}  // namespace
}  // namespace synthara::shell
