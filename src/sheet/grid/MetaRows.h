#pragma once
// The fixed rows above the data. Each column's metadata record lives in the
// cells of these rows in that same column; the row number is the field's
// address and the project file stores it in place.

namespace synthara::sheet {

inline constexpr int FixedRowCount = 150;  // first data row
inline constexpr int NewSheetColumns = 40;
inline constexpr int NewSheetFixedColumns = 10;
inline constexpr int NewSheetRows = 230;

struct MetaRow {
    static constexpr int ColumnHeader = 0;
    static constexpr int DataType = 2;
    static constexpr int Function = 3;
    static constexpr int ValueList = 4;
    static constexpr int NumDecs = 5;
    static constexpr int Missing = 6;
    static constexpr int ColWidth = 7;
    static constexpr int Align = 8;
    static constexpr int Hidden = 9;
    static constexpr int Renamed = 10;
    static constexpr int Numvals = 12;
    static constexpr int Attribute = 13;
    static constexpr int IndexName = 14;
    static constexpr int FormatName = 15;
    static constexpr int BlockSeq = 16;
    static constexpr int BlockName = 17;
    static constexpr int DisplayClass = 18;
    static constexpr int VarName = 22;
    static constexpr int PopulationMark = 23;
    static constexpr int SelectionFirst = 58;  // 58 to 62: kept for the row-selection dialog
    static constexpr int SelectionLast = 62;
    static constexpr int LabelPart1 = 63;
    static constexpr int LabelPart2 = 64;
    static constexpr int LabelPart3 = 65;
    static constexpr int SavedWidth = 84;
};

// Per-project words and stored numbers, in the fixed rows of the Settings column.
struct SettingsRow {
    static constexpr int GroupA = 66;
    static constexpr int GroupB = 67;
    static constexpr int Events = 68;
    static constexpr int NonEvents = 69;
    static constexpr int Exposed = 70;
    static constexpr int Unexposed = 71;
    static constexpr int Cases = 72;
    static constexpr int Controls = 73;
    static constexpr int PersonYears1 = 74;
    static constexpr int PersonYears2 = 75;
    static constexpr int Pre = 76;
    static constexpr int Post = 77;
    static constexpr int ConditionA = 78;
    static constexpr int ConditionB = 79;
    static constexpr int ImputedR = 80;
    static constexpr int FudgeFactor = 81;
    static constexpr int PoolVarianceMethod = 82;
    static constexpr int GVarianceMethod = 83;
    // The random model's estimator of tau-squared ("REML", ...; blank for the
    // classic one) and "1" for its adjusted limits.
    static constexpr int Tau2Method = 85;
    static constexpr int Hksj = 86;
};

// Keys of the system columns; the columns are found by key, never by number.
namespace ColumnKey {
inline constexpr const char* FormatCol = "cFormatCol";
inline constexpr const char* NickNameCol = "cNickNameCol";
inline constexpr const char* MergeTypeCol = "cMergeTypeCol";
inline constexpr const char* EntrySeq = "EntrySeq";
inline constexpr const char* TempSeq = "TempSeq";
inline constexpr const char* Settings = "Settings";
inline constexpr const char* Error = "colError";
}  // namespace ColumnKey

// Display attributes of an effect-size index, numbered as the computation uses them.
enum Attr : int { AttrPoint = 1, AttrStdErr = 2, AttrVariance = 3, AttrValid = 4, AttrFormula = 5 };
inline constexpr const char* AttrNames[6] = {"", "Point", "StdErr", "Variance", "Valid", "Formula"};

inline constexpr int IndexCount = 100;

}  // namespace synthara::sheet
