// The computation options dialog on the example: its range boxes keep it
// open, Ok computes every row, and the change undoes as one step.
#include <QAbstractButton>
#include <QButtonGroup>
#include <QLineEdit>
#include <cmath>

#include "ProgramFixture.h"
#include "app/OptionsDialog.h"
#include "sheet/grid/Sheet.h"
#include "support/Screenshot.h"

namespace synthara::ui {
namespace {

class OptionsDialogTest : public ProgramFixture {
  protected:
    // The point of index `index` in the example's second row.
    double Point(int index) const {
        const sheet::Sheet& sheet = program->Document().Sheet();
        const int col = sheet.DisplayColTable()[static_cast<std::size_t>(index)][sheet::AttrPoint];
        return sheet.Flex().At(sheet::FixedRowCount + 1, col).Number();
    }
    static constexpr int kStdDiff = 12, kPairedDiff = 14;
};

TEST_F(OptionsDialogTest, RangeBoxesKeepTheDialogOpen) {
    struct Case {
        const char* imputedR;
        const char* fudgeFactor;
        const char* box;
    };
    const Case cases[] = {
        {"0.5", "2.5",
         "Option outside range|The allowed error must fall in range of 1 to 2    |"
         "(recommended range is 1.01 to 1.20)"},
        {"0.5", "0.99",
         "Option outside range|The allowed error must fall in range of 1 to 2    |"
         "(recommended range is 1.01 to 1.20)"},
        {"-1", "1.1",
         "Option outside range|The assumed correlation    |"
         "must fall in the range of -0.999 to +0.999"},
        {"abc", "1.1",
         "Option outside range|The assumed correlation    |"
         "must fall in the range of -0.999 to +0.999"},
    };
    Make([&](QDialog& dialog) {
        auto& options = dynamic_cast<OptionsDialog&>(dialog);
        for (const Case& c : cases) {
            SCOPED_TRACE(c.box);
            prompter.shown.clear();
            options.ImputedR().setText(c.imputedR);
            options.FudgeFactor().setText(c.fudgeFactor);
            options.accept();
            EXPECT_EQ(prompter.Only(), c.box);
            EXPECT_NE(options.result(), QDialog::Accepted);
        }
        return options.result();
    });
    OpenExample();
    const double paired = Point(kPairedDiff);
    program->Window().Command("Symmetry for confidence intervals")->trigger();
    EXPECT_EQ(program->Document().Options().FudgeFactor, 1.1);
    EXPECT_EQ(Point(kPairedDiff), paired);
    EXPECT_EQ(program->Window().Undo().count(), 0);
}

TEST_F(OptionsDialogTest, OkComputesEveryRowAsOneUndoableChange) {
    Make([&](QDialog& dialog) {
        auto& options = dynamic_cast<OptionsDialog&>(dialog);
        EXPECT_EQ(options.ImputedR().text(), "0.5");
        options.ImputedR().setText("0.3");
        options.FudgeFactor().setText("1");
        options.GVarianceMethod().button(2)->setChecked(true);
        EXPECT_TRUE(SaveScreenshot(options, "options-dialog.png"));
        options.accept();
        return options.result();
    });
    OpenExample();
    MainWindow& window = program->Window();
    shell::Document& document = program->Document();
    const double d = Point(kStdDiff);
    ASSERT_DOUBLE_EQ(Point(kPairedDiff), d);

    window.Command("Correlation for imputing paired SD")->trigger();
    EXPECT_TRUE(prompter.shown.empty());
    EXPECT_EQ(document.Options().ImputedR, 0.3);
    EXPECT_EQ(document.Options().FudgeFactor, 1);
    EXPECT_EQ(document.Options().GVarianceMethod, 2);
    EXPECT_DOUBLE_EQ(Point(kPairedDiff), d / std::sqrt(1.4));
    ASSERT_EQ(window.Undo().count(), 1);

    window.Undo().undo();
    EXPECT_EQ(document.Options().ImputedR, 0.5);
    EXPECT_EQ(document.Options().GVarianceMethod, 1);
    EXPECT_DOUBLE_EQ(Point(kPairedDiff), d);
    window.Undo().redo();
    EXPECT_EQ(document.Options().ImputedR, 0.3);
    EXPECT_DOUBLE_EQ(Point(kPairedDiff), d / std::sqrt(1.4));
    EXPECT_TRUE(prompter.shown.empty());
}

TEST_F(OptionsDialogTest, UnchangedOptionsPushNothing) {
    Make([](QDialog& dialog) {
        dialog.accept();
        return dialog.result();
    });
    OpenExample();
    program->Window().Command("Variance for Hedges's g")->trigger();
    EXPECT_EQ(program->Window().Undo().count(), 0);
    EXPECT_TRUE(prompter.shown.empty());
}

}  // namespace
}  // namespace synthara::ui
