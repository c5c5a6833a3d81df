#pragma once
// The study sheet: the grid `flex` with its column metadata in the fixed rows,
// the system columns, and the lookup tables rebuilt by FindCols.
#include <array>
#include <cstdint>
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

    // The grid `flex`, to read. Every change goes through the operations
    // below, so the sheet can keep its lookup tables true to the columns and
    // its owner can tell what changed.
    const Grid& Flex() const { return flex_; }

    // Cell contents and looks. A write into a metadata row changes what the
    // column is, and the lookup tables follow.
    void Set(int row, int col, Cell cell) { flex_.Set(row, col, std::move(cell)); }
    void SetText(int row, int col, std::string text) { flex_.SetText(row, col, std::move(text)); }
    void SetNumber(int row, int col, double value) { flex_.SetNumber(row, col, value); }
    void ClearCell(int row, int col) { flex_.ClearCell(row, col); }
    void SetDataBackColor(int col, BackColor color) { flex_.SetDataBackColor(col, color); }
    void SetCellBackColor(int row, int col, BackColor color) {
        flex_.SetCellBackColor(row, col, color);
    }
    void SetCellShade(int row, int col, std::uint8_t shade) { flex_.SetCellShade(row, col, shade); }
    void SetRowHidden(int row, bool hidden) { flex_.SetRowHidden(row, hidden); }
    void SetRowHeight(int row, int height) { flex_.SetRowHeight(row, height); }
    void SetDefaultRowHeight(int height) { flex_.SetDefaultRowHeight(height); }
    void SetColWidth(int col, int width) { flex_.SetColWidth(col, width); }
    void SetColHidden(int col, bool hidden) { flex_.SetColHidden(col, hidden); }
    void SetColMerged(int col, bool merged) { flex_.SetColMerged(col, merged); }
    void SetColAlignment(int col, Alignment alignment) { flex_.SetColAlignment(col, alignment); }
    void SetColNumberFormat(int col, std::string format) {
        flex_.SetColNumberFormat(col, std::move(format));
    }

    // The structure: rows and columns added, removed and moved, keys.
    void SetRows(int rows) { flex_.SetRows(rows); }
    void SetCols(int cols) { flex_.SetCols(cols); }
    void SetFixedRows(int n) { flex_.SetFixedRows(n); }
    void SetFixedCols(int n) { flex_.SetFixedCols(n); }
    void InsertColumn(int at) { flex_.InsertColumn(at); }
    void RemoveColumn(int col) { flex_.RemoveColumn(col); }
    void MoveColumn(int from, int to) { flex_.MoveColumn(from, to); }
    void MoveRow(int from, int to) { flex_.MoveRow(from, to); }
    void SortRows(int r1, int r2, int c1, int c2) { flex_.SortRows(r1, r2, c1, c2); }
    void SetColKey(int col, std::string key) { flex_.SetColKey(col, std::move(key)); }
    // No rows, no columns.
    void ClearGrid() { flex_.Clear(); }
    // Takes a whole grid read from a file or a backup in place of its own.
    void ReplaceGrid(Grid grid) { flex_ = std::move(grid); }
    // Puts column `cols[i]` at position before + i, the others keeping their order.
    void PlaceColumns(const std::vector<int>& cols, int before);
    // Puts a copy of column `col` (cells, looks and record, no key) right of it.
    void DuplicateColumn(int col);
    // Puts data rows first.. in the order given: the row at first + order[i]
    // ends at first + i, with everything it carries.
    void ReorderRows(int first, const std::vector<int>& order);
    // Tabs, display modes and outlines of the blocks (AdjustBlocks, ShowBlocks, ...).
    BlockView View;

    // Program-wide decimals setting: number format of new columns.
    int Decimals = 3;
    // How numbers the user types into cells are read: the separators of the
    // user's locale. The program's own numbers never depend on them.
    NumberSeparators Separators;

    // The format in hand (the wizard's, or the row's being computed), as
    // DefineFormat leaves it: EntryColNames, EntryColInteger, LabelPieces, CurrentFormat*.
    DefinedFormat Defined;

    // Lookup tables. They are rebuilt from the metadata rows whenever the
    // columns changed since they were last built, so no caller refreshes them.
    using DisplayTable = std::array<std::array<int, 6>, IndexCount + 1>;
    // Names of the indices, 1-based.
    const std::array<std::string, IndexCount + 1>& IndexNames() const;
    // DisplayColTable()[index][attr]: column, 0 when absent (index 1..100, attr 1..5).
    const DisplayTable& DisplayColTable() const;
    // The columns of the roles of the format last given to FindESCols, and
    // how many columns each role has.
    const std::array<int, MaxRoles>& EntryColIndex() const { return entryColIndex_; }
    const std::array<int, MaxRoles>& EntryColCount() const { return entryColCount_; }

    // The grid of a new sheet, with its system columns.
    void InitializeGrid();
    // Creates the system columns 1 to 6 (and the row-error column) in order.
    void CreateFormatCol();
    void FindCols();
    void FindESCols(std::string_view formatName);
    // Where the roles named stand, changing nothing: for each role, the last
    // "Data Entry" column of the format with that role, and how many there are.
    struct RoleColumns {
        std::array<int, MaxRoles> index{};
        std::array<int, MaxRoles> count{};
    };
    RoleColumns LocateRoles(std::string_view formatName,
                            const std::array<std::string, MaxRoles>& roleNames) const;
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
    int FormatCol() const { return flex_.ColIndex(ColumnKey::FormatCol); }
    int NickNameCol() const { return flex_.ColIndex(ColumnKey::NickNameCol); }
    int MergeTypeCol() const { return flex_.ColIndex(ColumnKey::MergeTypeCol); }
    int EntrySeqCol() const { return flex_.ColIndex(ColumnKey::EntrySeq); }
    int TempSeqCol() const { return flex_.ColIndex(ColumnKey::TempSeq); }
    int SettingsCol() const { return flex_.ColIndex(ColumnKey::Settings); }
    int ErrorCol() const { return flex_.ColIndex(ColumnKey::Error); }

    // Metadata of a column.
    std::string Meta(int col, int metaRow) const { return flex_.Text(metaRow, col); }
    void SetMeta(int col, int metaRow, std::string value) {
        flex_.SetText(metaRow, col, std::move(value));
    }
    bool MetaIs(int col, int metaRow, std::string_view value) const {
        return flex_.TextIs(metaRow, col, value);
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
    // Rebuilds the index names and the display-column table when stale.
    void RefreshLookups() const;

    Grid flex_;
    mutable std::array<std::string, IndexCount + 1> indexNames_;
    mutable DisplayTable displayColTable_{};
    // The grid's structure revision the tables were built at.
    mutable std::uint64_t lookupsBuiltAt_ = ~std::uint64_t{0};
    std::array<int, MaxRoles> entryColIndex_{};
    std::array<int, MaxRoles> entryColCount_{};

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

// The letters that name the n-th column (1-based): A..Z, AA, AB, ...
std::string AutoLetters(int n);

}  // namespace synthara::sheet
