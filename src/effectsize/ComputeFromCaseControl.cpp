#include "effectsize/ComputeFromCaseControl.h"

#include <array>
#include <string>
#include <variant>

#include "effectsize/EventsSteps.h"
#include "effectsize/FormatRoles.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"

namespace synthara::effectsize {

namespace {

using sheet::CaseControlEntry;
using sheet::RoleKind;

using events::CellLine;
using events::CellLines;

constexpr CellLines CellLinesOf(CaseControlEntry entry) {
    switch (entry) {
        case CaseControlEntry::ExposedAndUnexposed:
            return {{{Formula{"A = {ExposedCases}"}, false},
                     {Formula{"B = {ExposedControls}"}, false},
                     {Formula{"C = {UnexposedCases}"}, false},
                     {Formula{"D = {UnexposedControls}"}, false}}};
        case CaseControlEntry::ExposedAndTotal:
            return {{{Formula{"A = {ExposedCases}"}, false},
                     {Formula{"B = {ExposedControls}"}, false},
                     {Formula{"C = {TotalCases} - {A}"}, true},
                     {Formula{"D = {TotalControls} - {B}"}, true}}};
        case CaseControlEntry::ProportionAndTotal:
            break;
    }
    return {{{Formula{"A = {PropnCasesExposed} * {TotalCases}"}, true},
             {Formula{"B = {PropnControlsExposed} * {TotalControls}"}, true},
             {Formula{"C = {TotalCases} - {A}"}, true},
             {Formula{"D = {TotalControls} - {B}"}, true}}};
}

// Validates the entries and fills the table, read down its columns: A
// exposed cases, B exposed controls, C unexposed cases, D unexposed controls.
bool BuildTable(events::EventsRow& row, CaseControlEntry entry) {
    WorkingSet& ws = row.ws;
    const FormatRoles roles(row.format, ws);
    auto role = [&](RoleKind kind) { return roles.Role(kind); };
    switch (entry) {
        case CaseControlEntry::ExposedAndUnexposed:
            CheckEventsNonEvents(role(RoleKind::ExposedCases), role(RoleKind::UnexposedCases), ws);
            CheckEventsNonEvents(role(RoleKind::ExposedControls), role(RoleKind::UnexposedControls),
                                 ws);
            break;
        case CaseControlEntry::ExposedAndTotal:
            CheckEventsAndN(role(RoleKind::ExposedCases), role(RoleKind::TotalCases), ws);
            CheckEventsAndN(role(RoleKind::ExposedControls), role(RoleKind::TotalControls), ws);
            break;
        case CaseControlEntry::ProportionAndTotal:
            CheckEventRateN(role(RoleKind::PropnCasesExposed), role(RoleKind::TotalCases), ws);
            CheckEventRateN(role(RoleKind::PropnControlsExposed), role(RoleKind::TotalControls),
                            ws);
            break;
    }
    if (!ws.RowErrors.empty()) return false;
    auto& c = row.cells;
    double &A = c[1][1], &B = c[1][2], &C = c[2][1], &D = c[2][2];
    auto value = [&](RoleKind kind) { return roles.Value(kind); };
    switch (entry) {
        case CaseControlEntry::ExposedAndUnexposed:
            A = value(RoleKind::ExposedCases), C = value(RoleKind::UnexposedCases);
            B = value(RoleKind::ExposedControls), D = value(RoleKind::UnexposedControls);
            break;
        case CaseControlEntry::ExposedAndTotal:
            A = value(RoleKind::ExposedCases), B = value(RoleKind::ExposedControls);
            C = value(RoleKind::TotalCases) - A, D = value(RoleKind::TotalControls) - B;
            break;
        case CaseControlEntry::ProportionAndTotal:
            A = value(RoleKind::PropnCasesExposed) * value(RoleKind::TotalCases);
            B = value(RoleKind::PropnControlsExposed) * value(RoleKind::TotalControls);
            C = value(RoleKind::TotalCases) - A, D = value(RoleKind::TotalControls) - B;
            break;
    }
    c[1][3] = A + B;
    c[2][3] = C + D;
    return true;
}

void CellsTrail(events::EventsRow& row, CaseControlEntry entry) {
    const FormatRoles roles(row.format, row.ws);
    static constexpr std::pair<std::string_view, RoleKind> kRoles[] = {
        {"ExposedCases", RoleKind::ExposedCases},
        {"UnexposedCases", RoleKind::UnexposedCases},
        {"TotalCases", RoleKind::TotalCases},
        {"PropnCasesExposed", RoleKind::PropnCasesExposed},
        {"ExposedControls", RoleKind::ExposedControls},
        {"UnexposedControls", RoleKind::UnexposedControls},
        {"TotalControls", RoleKind::TotalControls},
        {"PropnControlsExposed", RoleKind::PropnControlsExposed},
    };
    std::array<std::string, std::size(kRoles)> printed;
    std::array<Slot, std::size(kRoles)> labelSlots, valueSlots;
    for (std::size_t k = 0; k < std::size(kRoles); ++k) {
        printed[k] = G1(roles.Value(kRoles[k].second));
        labelSlots[k] = {kRoles[k].first, roles.Label(kRoles[k].second)};
        valueSlots[k] = {kRoles[k].first, printed[k]};
    }
    const Slots labels{labelSlots[0], labelSlots[1], labelSlots[2], labelSlots[3],
                       labelSlots[4], labelSlots[5], labelSlots[6], labelSlots[7]};
    const Slots values{valueSlots[0], valueSlots[1], valueSlots[2], valueSlots[3],
                       valueSlots[4], valueSlots[5], valueSlots[6], valueSlots[7]};
    events::AddCellsTrail(row, CellLinesOf(entry), labels, values);
}

}  // namespace

void ComputeFromEventsCaseControl(const sheet::FormatDef& format, WorkingSet& ws,
                                  ComputeContext& context) {
    if (!RequireFirstRoles(4, ws)) return;
    events::EventsRow row(format, ws, context);
    // The names with a correlation or a matched table have no table of their
    // own: their cells stay 0 and the table is undefined.
    const auto* layout = std::get_if<sheet::CaseControlLayout>(&format.layout);
    if (layout != nullptr) {
        if (!BuildTable(row, layout->entry)) return;
        if (row.trails) CellsTrail(row, layout->entry);
    }
    double A, B, C, D;
    bool added;
    row.Restore(A, B, C, D, false, added);
    ws.SetPoint(Ix::CcN1, A + C);
    ws.SetPoint(Ix::CcN2, B + D);
    ws.SetPoint(Ix::CcN3, A + B + C + D);
    ws.SetPoint(Ix::Exposed1, A);
    ws.SetPoint(Ix::Exposed2, B);
    ws.SetPoint(Ix::Exposed3, A + B);
    if (row.trails)
        for (int index : {Ix::LogOddsRatio, Ix::MHCellA, Ix::MHCellB, Ix::MHCellC, Ix::MHCellD})
            row.Trail(index) = row.head;

    const bool undefinedTable = (A == 0 && B == 0) || (C == 0 && D == 0);
    if (undefinedTable) {
        events::UndefinedTableStep(row);
    } else {
        events::LogOddsStep(row);
        // The cases and the controls are the two groups the correlation counts.
        double a, b, c, d;
        row.Restore(a, b, c, d, true, added);
        row.n1 = a + c;
        row.n2 = b + d;
        events::StdDiffStep(row);
        events::PairedStdDiffStep(row);
        events::HedgesGStep(row);
        events::CorrelationStep(row);
    }
    if (row.trails) {
        events::TitledNote(row.Trail(Ix::LogPetoOddsRatio), &row.head, "Peto Odds ratio",
                           "Peto odds ratio is not computed for case control studies");
        events::TitledNote(row.Trail(Ix::LogRiskRatio), &row.head, "Risk ratio",
                           "Is not computed for case control studies");
        events::TitledNote(row.Trail(Ix::RiskDifference), &row.head, "Risk difference",
                           "Is not computed for case control studies");
    }
    ws.SetPoint(Ix::MHCellA, A);
    ws.SetPoint(Ix::MHCellB, B);
    ws.SetPoint(Ix::MHCellC, C);
    ws.SetPoint(Ix::MHCellD, D);
}

}  // namespace synthara::effectsize
