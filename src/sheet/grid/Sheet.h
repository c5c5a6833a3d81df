#pragma once
// The study sheet: the grid `flex` with its column metadata in the fixed rows,
// the system columns, and the lookup tables rebuilt by FindCols.
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "ports/Prompter.h"
#include "sheet/blocks/BlockView.h"
#include "sheet/catalogue/FormatCatalogue.h"
#include "sheet/grid/Grid.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::sheet {

inline constexpr std::array<std::string_view, 5> PopulationNames = {
    "Study name", "Subgroup within study", "Comparison", "Outcome", "Time point"};

// Names of the effect-size indices by number, 1 to 100; "" where a number has no index.
const std::array<std::string, IndexCount + 1>& IndexNameTable();
// The number of an index name, 0 when none.
int IndexNumber(std::string_view name);

class Sheet {
  public:
    explicit Sheet(ports::Prompter& prompter);

    Grid flex;
    // Tabs, display modes and outlines of the blocks (AdjustBlocks, ShowBlocks, ...).
    BlockView View;

    // Program-wide decimals setting: number format of new columns.
    int Decimals = 3;
    // How numbers the user types into cells are read: the separators of the
    // user's locale. The program's own numbers never depend on them.
    NumberSeparators Separators;

    // Lookup tables, refreshed by FindCols / FindESCols / DefineFormat.
    std::array<std::string, IndexCount + 1> IndexNames;  // 1-based
    // DisplayColTable[index][attr]: column, 0 when absent (index 1..100, attr 1..5).
    std::array<std::array<int, 6>, IndexCount + 1> DisplayColTable{};
    DefinedFormat Defined;  // EntryColNames, EntryColInteger, LabelPieces, CurrentFormat*
    std::array<int, MaxRoles> EntryColIndex{};
    std::array<int, MaxRoles> EntryColCount{};

    // The grid of a new sheet, with its system columns.
    void InitializeGrid();
    // Creates the system columns 1 to 6 (and the row-error column) in order.
    void CreateFormatCol();
    void FindCols();
    void FindESCols(std::string_view formatName);
    // Gives each non-empty row in range its format (0 means the whole sheet).
    void FindFormats(int firstRow = 0, int lastRow = 0);
    // The first column from firstCol with Function "Populations" and that population; -1 if none.
    int GetCol(int firstCol, int populationIndex) const;  // populationIndex 1..5
    void AddLetters();
    void AddRowNumbers();
    void SynchData();
    int GetLastRow() const;
    int FindLastRow() const;
    bool isRowEmpty(int row) const;
    bool isColEmpty(int col) const;
    // Greys the entry cells of other blocks on each row with a format (flex's
    // CellShade, 1 to 8 by block); 0 means the whole sheet.
    void GrayBlocks(int firstRow, int lastRow);

    // System columns by key; -1 when absent.
    int FormatCol() const { return flex.ColIndex(ColumnKey::FormatCol); }
    int NickNameCol() const { return flex.ColIndex(ColumnKey::NickNameCol); }
    int MergeTypeCol() const { return flex.ColIndex(ColumnKey::MergeTypeCol); }
    int EntrySeqCol() const { return flex.ColIndex(ColumnKey::EntrySeq); }
    int TempSeqCol() const { return flex.ColIndex(ColumnKey::TempSeq); }
    int SettingsCol() const { return flex.ColIndex(ColumnKey::Settings); }
    int ErrorCol() const { return flex.ColIndex(ColumnKey::Error); }

    // Metadata of a column.
    std::string Meta(int col, int metaRow) const { return flex.Text(metaRow, col); }
    void SetMeta(int col, int metaRow, std::string value) {
        flex.SetText(metaRow, col, std::move(value));
    }
    bool MetaIs(int col, int metaRow, std::string_view value) const {
        return flex.TextIs(metaRow, col, value);
    }
    // A word of the Settings column ("Group-A" at row 66, ...).
    std::string SettingsWord(int settingsRow) const;

    // Data-entry blocks and display columns.
    // Makes each role of the format in hand (Defined) into a new column at the right end.
    void CreateAll();
    // Creates the display columns for the format (or, when they exist, resets
    // the primary index to the format's).
    void CreateDisplayCols(std::string_view formatName);
    // Creates a population column of that name (1..5) right of the last one.
    // When the population has a column, says so and gives it; when another
    // column has the name as its title, says so and gives -1.
    int MakePop(int populationIndex);
    // Rebuilds the titles of data-entry and display columns from their label
    // pieces and the project's words.
    void ApplyGroupNames();

    // The label of a column as validators and trails quote it: the title with line breaks removed.
    std::string ColumnLabel(int col) const;

    ports::Prompter& Prompts() { return *prompter_; }
    // Routes the sheet's boxes elsewhere (an import silences the wizard's
    // confirmations); returns the prompter that was in use.
    ports::Prompter& SetPrompter(ports::Prompter& prompter) {
        ports::Prompter& old = *prompter_;
        prompter_ = &prompter;
        return old;
    }

  private:
    // The default record of rows 2 to 13 on a column, as a new sheet has it.
    void WriteDefaultRecord(int col);
    // The number format of a column from Decimals.
    std::string NumberFormat() const;
    // Puts EntrySeq and the population columns, in the order of
    // PopulationNames, side by side from column `anchor` on.
    void GatherIdentifyingCols(int anchor);
    // The title of one data-entry column from its label pieces and the project's words.
    void TitleEntryColumn(int col);
    // Creates the five columns of one index at the right end.
    void AppendDisplayIndex(std::string_view indexName, std::string_view primary, bool inSet);

    ports::Prompter* prompter_;
};

// Title text with line breaks taken out.
std::string RemoveCR(std::string_view text);

}  // namespace synthara::sheet
