#pragma once
// The data-entry formats: one table of data. The long name is the key of
// everything and is compared exactly, misspellings included.
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "sheet/catalogue/FormatLayouts.h"

namespace synthara::sheet {

inline constexpr int MaxRoles = 13;

// The procedure that computes a row of a format.
enum class Procedure {
    None,
    ComputeFromEvents,
    ComputeFromEventsCaseControl,
    ComputeFromEventsPersonYears,
    ComputeFromPeto,
    ComputeFromChiSquare,
    ComputeFromEventsOneGroup,
    ComputeFromEventsPYOneGroup,
    ComputeFromMeansOneGroup,
    ComputeFromMeans,
    ComputeFromMeansTest,
    ComputeFromPairedMeans,
    ComputeFromPairedMeansTest,
    ComputeFromPrePostMeans,
    ComputePointLog,
    ComputePoint,
    ComputePointTIndep,
    ComputePointTPaired,
    ComputePointCorr,
};
std::string_view ProcedureName(Procedure p);

struct RoleDef {
    std::string_view name;
    bool whole = false;                        // takes whole numbers: NumDecs starts as "0"
    std::array<std::string_view, 3> labels{};  // LabelPart1..3, "" where none
    RoleKind kind = RoleKind::None;            // what the value means to the procedure
};

// The wizard's study types (optDatatypes 0 to 3).
enum class Branch { OneGroup, TwoGroups, GenericRaw, GenericLog, NotInWizard };

struct FormatDef {
    std::string_view longName;
    std::string_view shortName;
    std::span<const RoleDef> roles;
    Procedure procedure = Procedure::None;
    std::span<const std::string_view> displaySet;  // first entry is the primary index
    Branch branch = Branch::NotInWizard;
    std::string_view family;      // "Dichotomous (number of events)"; "" when not in the wizard
    std::string_view design;      // "Raw data", "Computed effect sizes", ...
    bool allFormatsOnly = false;  // left out under "Show common formats only"
    FormatLayout layout{};        // the variant of the procedure's family

    // The place of the role that means `kind`; -1 when the format has none.
    constexpr int RoleOf(RoleKind kind) const {
        for (std::size_t i = 0; i < roles.size(); ++i)
            if (roles[i].kind == kind) return static_cast<int>(i);
        return -1;
    }
};

// All formats DefineFormat knows (103), in the wizard's order, those outside
// the wizard last.
std::span<const FormatDef> AllFormats();
// The format of that exact long name, or nullptr.
const FormatDef* FindFormat(std::string_view longName);
// Looks a format up by long or short name, exactly.
const FormatDef* FindFormatByAnyName(std::string_view name);

// Names only old files hold: Compute, CreateDisplayCols and MergeType accept
// them, DefineFormat does not. Each has a long name and a procedure only.
std::span<const FormatDef> LegacyFormats();
// The format a row of this name is computed by: a catalogue format, or a
// legacy name; nullptr when unknown.
const FormatDef* FindComputedFormat(std::string_view longName);

// The procedure for a row of this format, legacy names included; None when unknown.
Procedure ProcedureFor(std::string_view longName);

// 0 to 7: which rows may be pooled by summing.
int MergeType(std::string_view longName);

// What DefineFormat leaves for the format in hand.
struct DefinedFormat {
    std::array<std::string, MaxRoles> EntryColNames;
    std::array<bool, MaxRoles> EntryColInteger{};
    std::array<std::array<std::string, MaxRoles>, 3> LabelPieces;
    std::string CurrentFormatLong;
    std::string CurrentFormatShort;
};
// Blanks all slots, then fills them for the format. An unknown name leaves
// the slots blank and CurrentFormatShort/Long as they were.
void DefineFormat(std::string_view longName, DefinedFormat& out);

// The three roles whose column is a fixed drop-down list.
struct DropDownRole {
    std::string_view role;
    std::string_view valueList;               // "#0;Not specified|#1;Paired study|..."
    std::span<const std::string_view> words;  // words shown, indexed by stored code
};
const DropDownRole* FindDropDown(std::string_view role);
// A cell of a drop-down role as its stored code: "2" or the word shown; -1 when neither.
int DropDownCode(const DropDownRole& role, std::string_view cell);

// The wizard tree.
struct WizardCaptions {
    static constexpr std::array<std::string_view, 4> StudyTypes = {
        "Estimate of means, proportions or rates in one group at one time-point",
        "Comparison of two groups, time-points, or exposures (includes correlations)",
        "Generic point estimates", "Generic point estimates, log scale"};
    static constexpr std::array<std::string_view, 4> Branches = {
        "One Group", "Two groups or correlation", "Generic, raw units", "Generic, log scale"};
    static constexpr std::string_view CommonOnly = "Show common formats only";
    static constexpr std::string_view AllFormats = "Show all 100 formats";
};

}  // namespace synthara::sheet
