// The column commands on the example as the window runs them: the column
// properties dialog with its refusal, the hide or display dialog, the title
// edited over the header, and the decimals.
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QInputDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTest>

#include "ProgramFixture.h"
#include "app/ColumnPropertiesDialog.h"
#include "app/ColumnVisibilityDialog.h"
#include "app/MainWindow.h"
#include "sheet/SheetModel.h"
#include "sheet/SheetView.h"
#include "sheet/SheetWidget.h"
#include "sheet/grid/MetaRows.h"
#include "support/Screenshot.h"

namespace synthara::ui {
namespace {

using sheet::MetaRow;

class ColumnCommandsTest : public ProgramFixture {
  protected:
    // The program on the example with the cursor in the column titled so.
    int OpenAt(const std::string& title) {
        OpenExample();
        const sheet::Grid& flex = program->Document().Sheet().Flex();
        for (int c = 0; c < flex.Cols(); ++c)
            if (flex.TextIs(MetaRow::ColumnHeader, c, title)) {
                program->Window().Sheet().SetCurrentCell(sheet::FixedRowCount, c);
                return c;
            }
        ADD_FAILURE() << "no column " << title;
        return -1;
    }
    std::string Meta(int col, int row) { return program->Document().Sheet().Meta(col, row); }
};

TEST_F(ColumnCommandsTest, PropertiesDialogStaysOpenOnARefusalAndAppliesOnOk) {
    bool refusedFirst = false;
    Make([&](QDialog& shown) {
        auto& dialog = dynamic_cast<ColumnPropertiesDialog&>(shown);
        EXPECT_EQ(dialog.windowTitle(), "Column properties");
        EXPECT_EQ(dialog.Title().text(), "Latitude");
        EXPECT_TRUE(dialog.DataType().isEnabled());
        EXPECT_TRUE(dialog.AutoWidth().isChecked());

        dialog.Title().setText("Allocation");
        dialog.accept();
        refusedFirst = dialog.result() != QDialog::Accepted &&
                       prompter.Only() == " Name in use|The variable name already exists     ";

        dialog.Title().setText("Degrees north");
        dialog.Decimals().setValue(1);
        dialog.Align().setCurrentText("Right");
        dialog.AutoWidth().setChecked(false);
        dialog.Width().setValue(90);
        dialog.DataType().setCurrentText("Drop down box");
        // The values the column holds are offered at once.
        EXPECT_TRUE(dialog.Values().isEnabled());
        EXPECT_TRUE(dialog.Values().toPlainText().startsWith("44\n55\n42"));
        dialog.show();
        EXPECT_TRUE(SaveScreenshot(dialog, "column-properties-dialog.png"));
        dialog.accept();
        return dialog.result();
    });
    const int col = OpenAt("Latitude");
    ASSERT_TRUE(program->Window().Run("Column properties"));
    EXPECT_TRUE(refusedFirst);
    EXPECT_EQ(Meta(col, MetaRow::ColumnHeader), "Degrees north");
    EXPECT_EQ(Meta(col, MetaRow::NumDecs), "1");
    EXPECT_EQ(Meta(col, MetaRow::Align), "Right");
    EXPECT_EQ(Meta(col, MetaRow::ColWidth), "1800");
    EXPECT_EQ(Meta(col, MetaRow::DataType), "Drop down box");
    EXPECT_EQ(Meta(col, MetaRow::Numvals), "9");
    EXPECT_EQ(
        program->Window().Sheet().View().columnWidth(col),
        static_cast<int>(1800 * program->Window().Sheet().View().logicalDpiX() / 1440.0 + 0.5));
    EXPECT_TRUE(program->Document().Dirty());

    // Its cells are edited in a box of its values.
    SheetView& view = program->Window().Sheet().View();
    std::unique_ptr<QWidget> editor(view.itemDelegate()->createEditor(
        view.viewport(), {}, program->Window().Sheet().Model().index(0, col)));
    auto* box = qobject_cast<QComboBox*>(editor.get());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->count(), 9);
    EXPECT_EQ(box->itemText(0), "44");
}

TEST_F(ColumnCommandsTest, PropertiesOfAComputedColumnKeepTheirTypeAndVisibility) {
    Make([&](QDialog& shown) {
        auto& dialog = dynamic_cast<ColumnPropertiesDialog&>(shown);
        EXPECT_FALSE(dialog.DataType().isEnabled());
        EXPECT_FALSE(dialog.Hidden().isEnabled());
        EXPECT_FALSE(dialog.Values().isEnabled());
        dialog.Decimals().setValue(4);
        dialog.accept();
        return dialog.result();
    });
    const int col = OpenAt("Odds ratio");
    ASSERT_TRUE(program->Window().Run("Modify column properties"));
    EXPECT_EQ(Meta(col, MetaRow::NumDecs), "4");
    EXPECT_EQ(program->Document().Sheet().Flex().Col(col).numberFormat, "0.0000");
}

TEST_F(ColumnCommandsTest, HideOrDisplayListsTheUsersColumns) {
    Make([&](QDialog& shown) {
        auto& dialog = dynamic_cast<ColumnVisibilityDialog&>(shown);
        const auto items = dialog.Columns().findItems("Latitude", Qt::MatchExactly);
        EXPECT_EQ(items.size(), 1);
        EXPECT_TRUE(dialog.Columns().findItems("Odds ratio", Qt::MatchExactly).isEmpty());
        if (items.size() != 1) return int(QDialog::Rejected);
        EXPECT_EQ(items.front()->checkState(), Qt::Checked);
        items.front()->setCheckState(Qt::Unchecked);
        dialog.accept();
        return dialog.result();
    });
    const int col = OpenAt("Latitude");
    ASSERT_TRUE(program->Window().Run("Hide or display columns"));
    EXPECT_TRUE(program->Window().Sheet().View().isColumnHidden(col));
    EXPECT_EQ(Meta(col, MetaRow::Hidden), "Hide");
}

TEST_F(ColumnCommandsTest, TitleIsEditedByDoubleClickingTheHeader) {
    Make();
    const int col = OpenAt("Latitude");
    ASSERT_TRUE(program->Window().Run("Rename column"));
    EXPECT_EQ(prompter.Only(),
              " Rename column|To edit a column's name, double-click on its header row");
    prompter.shown.clear();

    SheetView& view = program->Window().Sheet().View();
    program->Window().resize(1200, 700);
    program->Window().show();
    view.ScrollToColumn(col);
    QHeaderView& header = *view.horizontalHeader();
    const QPoint at(header.sectionViewportPosition(col) + header.sectionSize(col) / 2,
                    header.height() / 2);
    QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, at);
    auto* editor = header.viewport()->findChild<QLineEdit*>("titleEditor");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), "Latitude");

    // A title in use is refused and the line stays open to correct.
    editor->setText("Allocation");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(prompter.Only(), " Name in use|The variable name already exists     ");
    EXPECT_TRUE(editor->isVisible());

    editor->setText("Degrees north");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(Meta(col, MetaRow::ColumnHeader), "Degrees north");
    EXPECT_EQ(Meta(col, MetaRow::Renamed), "Manual");
    EXPECT_EQ(header.model()->headerData(col, Qt::Horizontal).toString(), "Degrees north");
    // One undoable edit.
    program->Window().Undo().undo();
    EXPECT_EQ(Meta(col, MetaRow::ColumnHeader), "Latitude");
}

TEST_F(ColumnCommandsTest, DecimalsAreAskedAndStepped) {
    Make([&](QDialog& shown) {
        auto& dialog = dynamic_cast<QInputDialog&>(shown);
        EXPECT_EQ(dialog.intMaximum(), 9);
        dialog.setIntValue(2);
        return int(QDialog::Accepted);
    });
    const int col = OpenAt("Latitude");
    ASSERT_TRUE(program->Window().Run("Decimals displayed"));
    EXPECT_EQ(Meta(col, MetaRow::NumDecs), "2");
    ASSERT_TRUE(program->Window().Run("Increase Decimal"));
    EXPECT_EQ(Meta(col, MetaRow::NumDecs), "3");
    ASSERT_TRUE(program->Window().Run("Decrease Decimal"));
    ASSERT_TRUE(program->Window().Run("Decrease Decimal"));
    EXPECT_EQ(Meta(col, MetaRow::NumDecs), "1");
}

}  // namespace
}  // namespace synthara::ui
