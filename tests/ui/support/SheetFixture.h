#pragma once
// The sheet widget over the bundled example, opened as two-group events, with
// a recorder of the boxes shown and the undo stack the widget edits through.
#include <gtest/gtest.h>

#include <QString>
#include <QUndoStack>
#include <ostream>
#include <string>

#include "sheet/SheetModel.h"
#include "sheet/SheetView.h"
#include "sheet/SheetWidget.h"
#include "sheet/grid/MetaRows.h"
#include "shell/Document.h"
#include "support/ScriptedPrompter.h"

// Failures print texts as texts.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace synthara::ui {

inline constexpr const char* kTwoGroupEvents = "Events and sample size in each group";

class SheetFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(document
                        .Open(SYNTHARA_EXAMPLES "/bcg-vaccine-trials.csv",
                              shell::OpenSettings::ForFormat(kTwoGroupEvents))
                        .ok());
        widget = std::make_unique<SheetWidget>(document, undo);
        widget->resize(1100, 600);
    }

    SheetModel& Model() { return widget->Model(); }
    const sheet::Sheet& Sheet() const { return document.Sheet(); }

    // The grid column titled so (the `nth` from the left, from 0); -1 when none.
    int ColumnTitled(const std::string& title, int nth = 0) const {
        const sheet::Grid& flex = Sheet().Flex();
        for (int c = 0; c < flex.Cols(); ++c)
            if (flex.Text(sheet::MetaRow::ColumnHeader, c) == title && nth-- == 0) return c;
        return -1;
    }
    int DisplayCol(int index, int attr) const {
        return Sheet()
            .DisplayColTable()[static_cast<std::size_t>(index)][static_cast<std::size_t>(attr)];
    }
    QString Shown(int gridRow, int col) {
        return Model()
            .data(Model().index(Model().ModelRow(gridRow), col), Qt::DisplayRole)
            .toString();
    }
    QModelIndex At(int gridRow, int col) { return Model().index(Model().ModelRow(gridRow), col); }
    // The first row after the example's trials.
    int FreeRow() const { return sheet::FixedRowCount + document.DataRows(); }

    testing::ScriptedPrompter prompter;
    shell::Document document{prompter};
    QUndoStack undo;
    std::unique_ptr<SheetWidget> widget;
};

}  // namespace synthara::ui
