#pragma once
// The indices that a 2-by-2 table yields, one step each, shared by the
// two-group event formats and their paired variants.
#include <array>
#include <string>

#include "effectsize/Compute.h"
#include "effectsize/Trail.h"
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize::events {

// A row's table while its indices are computed. Later steps read what
// earlier ones left (the log odds ratio feeds d, d feeds g and r).
struct EventsRow {
    EventsRow(const sheet::FormatDef& formatDef, const sheet::EventsLayout& eventsLayout,
              WorkingSet& workingSet, ComputeContext& computeContext)
        : format(formatDef),
          layout(eventsLayout),
          ws(workingSet),
          context(computeContext),
          paired(eventsLayout.paired),
          trails(workingSet.BuildTrails) {}
    // A case-control table: no two-group layout, and never paired.
    EventsRow(const sheet::FormatDef& formatDef, WorkingSet& workingSet,
              ComputeContext& computeContext)
        : format(formatDef),
          ws(workingSet),
          context(computeContext),
          caseControl(true),
          trails(workingSet.BuildTrails) {}

    const sheet::FormatDef& format;
    sheet::EventsLayout layout;
    WorkingSet& ws;
    ComputeContext& context;
    bool paired = false;
    bool caseControl = false;  // the table counts exposure among cases and controls
    bool trails = true;        // false: the steps compute numbers only
    Table2x2 cells{};  // 1-based: [1][1] A, [1][2] B, [2][1] C, [2][2] D, [1][3] N1, [2][3] N2
    std::string head;  // the trail of the cells, which opens most trails
    double deltaOverN = 0;

    double nTot = 0, n1 = 0, n2 = 0;  // with 0.5 added where the log odds ratio needed it
    double logOdds = 0, logOddsSE = 0;
    double stdDiff = 0, stdDiffSE = 0;

    std::string& Trail(int index) { return ws.EsFormula[static_cast<std::size_t>(index)]; }
    // The entry of the role that means `kind`, by the format's catalogue entry.
    int Role(sheet::RoleKind kind) const { return format.RoleOf(kind); }
    double Value(sheet::RoleKind kind) const;
    const std::string& Label(sheet::RoleKind kind) const;
    void Restore(double& A, double& B, double& C, double& D, bool addFudge, bool& added) const {
        RestoreVals(A, B, C, D, cells, addFudge, added, paired);
    }
};

// Peto's log odds ratio is refused above this: its ratio would overflow.
inline constexpr double PetoLimit = 620;
inline bool PetoComputable(double logPeto) {
    return logPeto <= PetoLimit;
}

// How each cell of a table arises from the roles; a cell entered as it is
// shows no result.
struct CellLine {
    Formula formula;
    bool computed;
};
using CellLines = std::array<CellLine, 4>;

// The head of a table's trails: "Cells in 2x2 table", how each cell arises
// (its roles named by `labels`), a blank line, and each cell's line with
// numbers (`values` gives the roles'; the cells' own are added here).
void AddCellsTrail(EventsRow& row, const CellLines& lines, const Slots& labels,
                   const Slots& values);

// A trail of a title and one step, after the head of the cells when given.
void TitledNote(std::string& trail, const std::string* head, std::string_view title,
                std::string_view step);
// The text of Hedges' g, which names the default method's formula whichever
// is set; `titled` puts its title above it.
void AddHedgesGText(std::string& trail, bool titled = true);

// False when a paired table's variance came out negative (NegativeVariance set).
bool LogOddsStep(EventsRow& row);
void StdDiffStep(EventsRow& row);
void PairedStdDiffStep(EventsRow& row);
void HedgesGStep(EventsRow& row);
void CorrelationStep(EventsRow& row);
// Trails of the indices that need events and non-events in some arm.
void UndefinedTableStep(EventsRow& row);
void PetoStep(EventsRow& row, bool undefinedTable);
void RiskRatioStep(EventsRow& row, bool undefinedTable);
void RiskDifferenceStep(EventsRow& row);
void MantelHaenszelStep(EventsRow& row, bool undefinedTable);

}  // namespace synthara::effectsize::events
