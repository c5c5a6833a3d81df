#pragma once
// The block wizard without its windows: the study type and the format tree,
// the choice of a format, the column panel's combos, creating the block, and
// finishing or abandoning. Entering keeps a copy of the sheet, which leaving
// without finishing can bring back.
#include <string>
#include <string_view>
#include <vector>

#include "sheet/blocks/BlockCombos.h"
#include "sheet/blocks/BlockView.h"
#include "sheet/blocks/WizardTree.h"
#include "sheet/catalogue/FormatCatalogue.h"
#include "sheet/grid/Grid.h"

namespace synthara::sheet {

class Sheet;

class BlockWizard {
  public:
    explicit BlockWizard(Sheet& sheet);

    // The study type panel: optDatatypes (0 to 3) and optCommon.
    int optDatatypes = 1;
    bool commonOnly = true;

    // The format tree of the study type panel's choices.
    WizardNode Tree() const { return InitializeES(optDatatypes, commonOnly); }

    // Takes a format of the tree as the one in hand and loads the combos,
    // preselecting the columns of that format already on the sheet. False
    // when the tree does not offer it.
    bool ChooseFormat(std::string_view longName);
    const std::string& Format() const { return format_; }

    std::vector<RoleCombo>& Combos() { return combos_; }
    // The combo of a role of the format in hand; nullptr when it has none.
    RoleCombo* ComboOf(std::string_view role);

    // Makes the block: roles on "Not specified" or "Create new column" get
    // new columns, the others take over the column chosen. Says so in a box.
    bool CreateBlock();

    // Creates the block if not done yet, then the display columns, and lays
    // out and shows the sheet. The wizard is done.
    bool Finish();

    // Leaving without finishing: asks, and on Yes puts the sheet back as it
    // was on entry. True when the wizard may close.
    bool Leave();

    bool Created() const { return created_; }

  private:
    // Makes column `col` the column of role `r` of the format in hand.
    void PointRoleAt(int col, std::size_t r);
    // Columns of the format's block that no role points at any more.
    void ReleaseUnchosenCols(const std::vector<int>& chosen);
    void BackupFile();
    void RestoreFile();

    Sheet& sheet_;
    Grid savedGrid_;
    BlockView savedView_;
    DefinedFormat savedDefined_;

    std::string format_;
    std::vector<RoleCombo> combos_;
    bool created_ = false;
    bool finished_ = false;
};

}  // namespace synthara::sheet
