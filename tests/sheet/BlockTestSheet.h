#pragma once
// A new sheet with a study-name column, and blocks made through the wizard as
// a user would make them.
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "sheet/blocks/BlockWizard.h"
#include "sheet/grid/Sheet.h"
#include "support/ScriptedPrompter.h"

namespace synthara::sheet {

class BlockTestSheet : public ::testing::Test {
  protected:
    BlockTestSheet() : sheet(prompter) {
        sheet.InitializeGrid();
        sheet.MakePop(1);
    }

    // Every role of the format gets a new column; the boxes shown are dropped.
    void AddBlock(std::string_view format) {
        BlockWizard wizard(sheet);
        wizard.optDatatypes = static_cast<int>(FindFormat(format)->branch);
        wizard.commonOnly = false;
        ASSERT_TRUE(wizard.ChooseFormat(format)) << format;
        ASSERT_TRUE(wizard.Finish()) << format;
        prompter.shown.clear();
    }

    std::vector<int> BlockCols(std::string_view block) const {
        std::vector<int> cols;
        for (int c = 0; c < sheet.Flex().Cols(); ++c) {
            if (sheet.MetaIs(c, MetaRow::Function, "Data Entry") &&
                sheet.MetaIs(c, MetaRow::BlockName, block))
                cols.push_back(c);
        }
        return cols;
    }
    int DisplayCol(std::string_view index, int attr) const {
        return sheet.DisplayColTable()[static_cast<std::size_t>(IndexNumber(index))]
                                      [static_cast<std::size_t>(attr)];
    }
    bool Shown(int col) const { return !sheet.Flex().Col(col).hidden; }
    std::string LastBox() const { return prompter.Last(); }

    testing::ScriptedPrompter prompter;
    Sheet sheet;
};

inline constexpr std::string_view kCohort = "Events and sample size in each group";
inline constexpr std::string_view kCohortBlock = "Cohort 2x2 (Events)";
inline constexpr std::string_view kMeans = "Mean, SD and sample size in each group";

}  // namespace synthara::sheet
