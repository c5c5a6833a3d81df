// The column commands: properties, visibility, widths, decimals, drop-down
// boxes and the auto format. Each changes the sheet through one operation of
// the open project.
#include <QInputDialog>
#include <vector>

#include "app/ColumnPropertiesDialog.h"
#include "app/ColumnVisibilityDialog.h"
#include "app/MainWindow.h"
#include "app/QtTextMeasurer.h"
#include "sheet/SheetView.h"
#include "sheet/SheetWidget.h"

namespace synthara::ui {

void MainWindow::RegisterColumnCommands() {
    auto& h = handlers_;
    // The columns a command acts on: the shown columns of the selection, or
    // the current one; empty, after a box, with neither.
    const auto selected = [this]() -> std::vector<int> {
        std::vector<int> cols;
        if (const auto selection = sheet_->Selection()) {
            const sheet::Grid& flex = document_.Sheet().Flex();
            for (int c = selection->cells.firstCol; c <= selection->cells.lastCol; ++c)
                if (!flex.Col(c).hidden) cols.push_back(c);
        }
        if (!cols.empty()) return cols;
        const int col = sheet_->CurrentColumn();
        if (col >= 0) return {col};
        document_.Prompts().Message({"No cell selected",
                                     {"Please click on cell, then try again    "},
                                     ports::Icon::Information});
        return {};
    };

    h["Rename column"] = [this] {
        document_.Prompts().Message({" Rename column",
                                     {"To edit a column's name, double-click on its header row"},
                                     ports::Icon::Information});
    };
    h["Modify column properties"] = [this, selected] {
        const std::vector<int> cols = selected();
        if (cols.empty()) return;
        if (shell::KindOfColumn(document_.Sheet(), cols.front()) == shell::ColumnKind::System) {
            document_.Prompts().Message(
                {" Column properties",
                 {"The properties of this column are kept by the program     "},
                 ports::Icon::Information});
            return;
        }
        ColumnPropertiesDialog dialog(document_, cols.front(), this);
        execDialog(dialog);
    };
    h["Column properties"] = h["Modify column properties"];
    h["Hide or display columns"] = [this] {
        ColumnVisibilityDialog dialog(document_, this);
        execDialog(dialog);
    };
    h["Width Col"] = [this, selected] {
        const std::vector<int> cols = selected();
        if (cols.empty()) return;
        const QFont font = sheet_->View().font();
        const QtTextMeasurer measurer;
        document_.AutoSize(cols, measurer, {font.family().toStdString(), font.pointSizeF()});
    };
    h["Decimals displayed"] = [this, selected] {
        const std::vector<int> cols = selected();
        if (cols.empty()) return;
        const int now = document_.PropertiesOf(cols.front()).decimals;
        QInputDialog dialog(this);
        dialog.setWindowTitle("Decimals displayed");
        dialog.setInputMode(QInputDialog::IntInput);
        dialog.setLabelText("Digits after the decimal point (0 to 9):");
        dialog.setIntRange(0, shell::kMaxDecimals);
        dialog.setIntValue(now >= 0 ? now : document_.Sheet().Decimals);
        if (execDialog(dialog) == QDialog::Accepted) document_.SetDecimals(cols, dialog.intValue());
    };
    for (const auto& [key, step] : {std::pair{"Increase Decimal", +1}, {"Decrease Decimal", -1}})
        h[key] = [this, selected, step] {
            if (const std::vector<int> cols = selected(); !cols.empty())
                document_.StepDecimals(cols, step);
        };
    h["Drop down box"] = [this, selected] {
        if (const std::vector<int> cols = selected(); !cols.empty())
            document_.DropDown(cols.front());
    };
    h["Apply auto format"] = [this] { document_.AutoFormat(); };
}

}  // namespace synthara::ui
