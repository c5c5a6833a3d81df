// The "Effect size indices" dialog on the example: the primary index's tick
// that it refuses to clear, and its Ok.
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QRadioButton>

#include "ProgramFixture.h"
#include "app/IndicesDialog.h"
#include "support/Screenshot.h"

namespace synthara::ui {
namespace {

TEST_F(ProgramFixture, IndicesDialogKeepsThePrimaryTickedAndAppliesOnOk) {
    Make([&](QDialog& dialog) {
        auto& indices = dynamic_cast<IndicesDialog&>(dialog);
        const auto items = indices.Display().findItems("Odds ratio", Qt::MatchExactly);
        EXPECT_EQ(items.size(), 1);
        if (items.size() != 1) return int(QDialog::Rejected);
        QListWidgetItem* primary = items.front();
        EXPECT_EQ(indices.Primary().currentText(), "Odds ratio");
        primary->setCheckState(Qt::Unchecked);
        EXPECT_EQ(prompter.Only(),
                  "Effect size indices|Please change the primary index in the drop-down box|"
                  "Otherwise, this index will continue to display");
        EXPECT_EQ(primary->checkState(), Qt::Checked);

        indices.Primary().setCurrentText("Risk ratio");
        primary->setCheckState(Qt::Unchecked);
        EXPECT_EQ(primary->checkState(), Qt::Unchecked);
        indices.StdErr().setChecked(true);
        indices.show();
        EXPECT_TRUE(SaveScreenshot(indices, "indices-dialog.png"));
        indices.accept();
        return indices.result();
    });
    OpenExample();
    program->Window().Command("Customize display")->trigger();
    const shell::IndexSelection selection = program->Document().IndexChoices();
    EXPECT_EQ(selection.primary, "Risk ratio");
    EXPECT_TRUE(selection.showStdErr);
}

}  // namespace
}  // namespace synthara::ui
