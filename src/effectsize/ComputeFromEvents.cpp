#include "effectsize/ComputeFromEvents.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <variant>

#include "effectsize/Compute.h"
#include "effectsize/EventsSteps.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"

namespace synthara::effectsize {

namespace {

constexpr std::string_view kAdded = "One or more cells was empty, so 0.5 was added to each cell";

constexpr Formula kMatchedNTot{"NTot = {NTot}/2"};
constexpr Formula kMatchedRho{"Rho = ({NTot} * {S} - {A} * {B}) / Sqr({A} * {B} * {C} * {D})"};
constexpr Formula kMatchedDelta{
    "Delta = {NTot} * {NTot} * ({NTot} * {S} - {A} * {B}) / ({A} * {B} * {C} * {D})"};
constexpr Formula kMatchedDeltaOverN{"DeltaOverN = {Delta} / {NTot}"};

constexpr Formula kExternalRho{"Rho = {Rho}"};
constexpr Formula kExternalNTot{"NTot = ({A} + {B} + {C} + {D}) / 2"};
constexpr Formula kExternalDeltaOverN{"DeltaOverN = ({NTot} * {Rho}) / Sqr({A} * {B} * {C} * {D})"};

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

using events::EventsRow;
using sheet::EventsEntry;
using sheet::RoleKind;

// Validates the entries and fills the table; false when the row was refused.
bool BuildTable(EventsRow& ev) {
    WorkingSet& ws = ev.ws;
    const EventsEntry entry = ev.layout.entry;
    const auto roles = sheet::TableRoles(entry);
    // Each group's pair of roles goes through the same validator, group A first.
    for (std::size_t first : {0u, 2u}) {
        const int count = ev.Role(roles[first]), other = ev.Role(roles[first + 1]);
        switch (entry) {
            case EventsEntry::EventsAndN:
                CheckEventsAndN(count, other, ws);
                break;
            case EventsEntry::NonEventsAndN:
                CheckNonEventsAndN(count, other, ws);
                break;
            case EventsEntry::EventsAndNonEvents:
                CheckEventsNonEvents(count, other, ws);
                break;
            case EventsEntry::RateAndN:
                CheckEventRateN(count, other, ws);
                break;
            case EventsEntry::MatchedPairs:
                if (first == 0) CheckSTUV(ev.Role(RoleKind::PairsBothEvents), ws);
                break;
        }
    }
    if (sheet::NeedsExternalCorrelation(ev.layout))
        CheckR(ev.Role(RoleKind::ExternalCorrelation), ws);
    if (!ws.RowErrors.empty()) return false;

    auto& c = ev.cells;
    double& A = c[1][1];
    double& B = c[1][2];
    double& C = c[2][1];
    double& D = c[2][2];
    double& N1 = c[1][3];
    double& N2 = c[2][3];
    switch (entry) {
        case EventsEntry::EventsAndN:
            A = ev.Value(RoleKind::EventsA), N1 = ev.Value(RoleKind::TotalNA);
            C = ev.Value(RoleKind::EventsB), N2 = ev.Value(RoleKind::TotalNB);
            B = N1 - A, D = N2 - C;
            break;
        case EventsEntry::NonEventsAndN:
            B = ev.Value(RoleKind::NonEventsA), N1 = ev.Value(RoleKind::TotalNA);
            D = ev.Value(RoleKind::NonEventsB), N2 = ev.Value(RoleKind::TotalNB);
            A = N1 - B, C = N2 - D;
            break;
        case EventsEntry::EventsAndNonEvents:
            A = ev.Value(RoleKind::EventsA), B = ev.Value(RoleKind::NonEventsA);
            C = ev.Value(RoleKind::EventsB), D = ev.Value(RoleKind::NonEventsB);
            N1 = A + B, N2 = C + D;
            break;
        case EventsEntry::RateAndN:
            // A rate is a proportion and the cells keep its fractions.
            N1 = ev.Value(RoleKind::TotalNA), A = ev.Value(RoleKind::RateA) * N1, B = N1 - A;
            N2 = ev.Value(RoleKind::TotalNB), C = ev.Value(RoleKind::RateB) * N2, D = N2 - C;
            break;
        case EventsEntry::MatchedPairs: {
            const double S = ev.Value(RoleKind::PairsBothEvents);
            const double T = ev.Value(RoleKind::PairsOnlyA);
            const double U = ev.Value(RoleKind::PairsOnlyB);
            const double V = ev.Value(RoleKind::PairsBothNonEvents);
            A = S + T, B = S + U, C = U + V, D = T + V;
            N1 = A + B, N2 = C + D;
            break;
        }
    }
    c[3][1] = A + C;
    c[3][2] = B + D;
    c[3][3] = N1 + N2;
    return true;
}

void MatchedCellsTrail(EventsRow& ev) {
    std::string& t = ev.head;
    const auto& c = ev.cells;
    AddFormula(t, "Cells in matched 2x2 table (event pairs)", "A");
    AddFormula(t, "Where cells are given as", "T");
    static constexpr std::pair<std::string_view, RoleKind> kPairs[] = {
        {"S = ", RoleKind::PairsBothEvents},
        {"T = ", RoleKind::PairsOnlyA},
        {"U = ", RoleKind::PairsOnlyB},
        {"V = ", RoleKind::PairsBothNonEvents},
    };
    for (const auto& [symbol, kind] : kPairs)
        AddStep(t, {symbol, ev.Label(kind), " = ", G1(ev.Value(kind))});
    AddFormula(t, "And may be reconfigured as", "T");
    const std::string S = G1(ev.Value(RoleKind::PairsBothEvents)),
                      T = G1(ev.Value(RoleKind::PairsOnlyA)),
                      U = G1(ev.Value(RoleKind::PairsOnlyB)),
                      V = G1(ev.Value(RoleKind::PairsBothNonEvents));
    AddStep(t, {"A = S + T = ", S, " + ", T, " = ", G1(c[1][1])});
    AddStep(t, {"B = S + U = ", S, " + ", U, " = ", G1(c[1][2])});
    AddStep(t, {"C = U + V = ", U, " + ", V, " = ", G1(c[2][1])});
    AddStep(t, {"D = T + V = ", T, " + ", V, " = ", G1(c[2][2])});
}

using events::CellLine;
using events::CellLines;

constexpr CellLines CellLinesOf(EventsEntry entry) {
    switch (entry) {
        case EventsEntry::EventsAndN:
            return {{{Formula{"A = {EventsA}"}, false},
                     {Formula{"B = {TotalNA} - {A}"}, true},
                     {Formula{"C = {EventsB}"}, false},
                     {Formula{"D = {TotalNB} - {C}"}, true}}};
        case EventsEntry::NonEventsAndN:
            return {{{Formula{"A = {TotalNA} - {B}"}, true},
                     {Formula{"B = {NonEventsA}"}, false},
                     {Formula{"C = {TotalNB} - {D}"}, true},
                     {Formula{"D = {NonEventsB}"}, false}}};
        case EventsEntry::EventsAndNonEvents:
            return {{{Formula{"A = {EventsA}"}, false},
                     {Formula{"B = {NonEventsA}"}, false},
                     {Formula{"C = {EventsB}"}, false},
                     {Formula{"D = {NonEventsB}"}, false}}};
        case EventsEntry::RateAndN:
        case EventsEntry::MatchedPairs:
            break;
    }
    return {{{Formula{"A = {RateA} * {TotalNA}"}, true},
             {Formula{"B = {TotalNA} - {A}"}, true},
             {Formula{"C = {RateB} * {TotalNB}"}, true},
             {Formula{"D = {TotalNB} - {C}"}, true}}};
}

void CellsTrail(EventsRow& ev) {
    if (ev.layout.entry == EventsEntry::MatchedPairs) {
        ev.head.reserve(1024);
        MatchedCellsTrail(ev);
        return;
    }
    const auto& c = ev.cells;
    const std::string a = G1(c[1][1]), b = G1(c[1][2]), cText = G1(c[2][1]), d = G1(c[2][2]),
                      n1 = G1(c[1][3]), n2 = G1(c[2][3]), rateA = G1(ev.Value(RoleKind::RateA)),
                      rateB = G1(ev.Value(RoleKind::RateB));
    // Symbolic lines name the roles by their columns' labels.
    const Slots labels{
        {"EventsA", ev.Label(RoleKind::EventsA)}, {"NonEventsA", ev.Label(RoleKind::NonEventsA)},
        {"TotalNA", ev.Label(RoleKind::TotalNA)}, {"RateA", ev.Label(RoleKind::RateA)},
        {"EventsB", ev.Label(RoleKind::EventsB)}, {"NonEventsB", ev.Label(RoleKind::NonEventsB)},
        {"TotalNB", ev.Label(RoleKind::TotalNB)}, {"RateB", ev.Label(RoleKind::RateB)}};
    const Slots values{{"EventsA", a},     {"NonEventsA", b}, {"TotalNA", n1}, {"RateA", rateA},
                       {"EventsB", cText}, {"NonEventsB", d}, {"TotalNB", n2}, {"RateB", rateB}};
    events::AddCellsTrail(ev, CellLinesOf(ev.layout.entry), labels, values);
}

// The raw counts of the table, whatever follows.
void StoreCounts(EventsRow& ev) {
    double A, B, C, D;
    bool added;
    ev.Restore(A, B, C, D, false, added);
    WorkingSet& ws = ev.ws;
    ws.SetPoint(Ix::N1, A + B);
    ws.SetPoint(Ix::N2, C + D);
    ws.SetPoint(Ix::N3, A + B + C + D);
    ws.SetPoint(Ix::Events1, A);
    ws.SetPoint(Ix::Events2, C);
    ws.SetPoint(Ix::Events3, A + C);
}

// The arms of a paired table are correlated, and the log odds variance gives
// back 2 x DeltaOverN for it. A matched table takes the correlation from its
// pairs with both events.
void MatchedCorrelation(EventsRow& ev) {
    double A, B, C, D;
    bool added;
    ev.Restore(A, B, C, D, true, added);
    std::string& t = ev.head;
    const double nTot = (A + B + C + D) / 2;
    double S = ev.Value(RoleKind::PairsBothEvents);
    if (added) S += 0.25;
    const double product = A * B * C * D;
    const double rho = (nTot * S - A * B) / std::sqrt(product);
    const double delta = nTot * nTot * (nTot * S - A * B) / product;
    ev.deltaOverN = delta / nTot;
    if (!ev.trails) return;
    for (const Formula* f : {&kMatchedNTot, &kMatchedRho, &kMatchedDelta, &kMatchedDeltaOverN})
        f->AddSymbols(t);
    AddFormula(t, "", "S");
    if (added) {
        AddFormula(t, kAdded, "S");
        AddFormula(t, "for computation of Rho and DeltaOverN", "S");
    }
    const std::string a = G1(A), b = G1(B), c = G1(C), d = G1(D), n = G1(nTot), s = G1(S),
                      deltaText = G3(delta);
    const Slots values{
        {"A", a}, {"B", b}, {"C", c}, {"D", d}, {"S", s}, {"NTot", n}, {"Delta", deltaText}};
    // The pairs count each subject twice; the first line shows the count before halving.
    kMatchedNTot.AddNumbers(t, Slots{{{"NTot", G1(nTot * 2)}}}, n);
    kMatchedRho.AddNumbers(t, values, G3(rho));
    kMatchedDelta.AddNumbers(t, values, deltaText);
    kMatchedDeltaOverN.AddNumbers(t, values, G3(ev.deltaOverN));
}

// The correlation the user entered for the two treatments.
void ExternalCorrelation(EventsRow& ev) {
    double A, B, C, D;
    bool added;
    ev.Restore(A, B, C, D, true, added);
    std::string& t = ev.head;
    const double nTot = (A + B + C + D) / 2;
    const double rho = ev.Value(RoleKind::ExternalCorrelation);
    ev.deltaOverN = (rho * nTot) / std::sqrt(A * B * C * D);
    if (!ev.trails) return;
    const Slots names{{"Rho", "External correlation"}};
    kExternalRho.AddSymbols(t, &names);
    AddFormula(t, "", "S");
    kExternalNTot.AddSymbols(t);
    kExternalDeltaOverN.AddSymbols(t);
    if (added) {
        AddFormula(t, kAdded, "S");
        AddFormula(t, "for computation of Rho and DeltaOverN", "S");
    }
    const std::string a = G1(A), b = G1(B), c = G1(C), d = G1(D), n = G1(nTot), r = G3(rho);
    const Slots values{{"A", a}, {"B", b}, {"C", c}, {"D", d}, {"NTot", n}, {"Rho", r}};
    kExternalRho.AddNumbers(t, values);
    kExternalNTot.AddNumbers(t, values, n);
    kExternalDeltaOverN.AddNumbers(t, values, G3(ev.deltaOverN));
}

}  // namespace

void ComputeFromEvents(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context) {
    static constexpr int kTrails[] = {1,  2, 23, 24, 25, 26, 27, 28, 29,
                                      30, 3, 4,  9,  13, 12, 14, 15, 16};
    for (int index : kTrails)
        ws.EsFormula[At(index)].clear();
    ws.RowErrors.clear();
    const auto* layout = std::get_if<sheet::EventsLayout>(&format.layout);
    if (layout == nullptr) {
        // A name routed here that has no table of its own: say so and leave
        // every index invalid rather than compute from empty cells.
        context.prompter.Message(ports::Box{"Error", {"Error"}, ports::Icon::None});
        return;
    }
    for (RoleKind kind : sheet::TableRoles(layout->entry)) {
        const int role = format.RoleOf(kind);
        if (role < 0 || ws.EntryMissing[At(role)])
            AddErr(ws.RowErrors, "One of the required values is missing");
    }
    if (!ws.RowErrors.empty()) return;

    EventsRow row(format, *layout, ws, context);
    if (!BuildTable(row)) return;
    if (row.trails) CellsTrail(row);
    StoreCounts(row);
    if (layout->entry == EventsEntry::MatchedPairs)
        MatchedCorrelation(row);
    else if (row.paired)
        ExternalCorrelation(row);

    double A, B, C, D;
    bool added;
    row.Restore(A, B, C, D, false, added);
    const bool undefinedTable = (A == 0 && C == 0) || (B == 0 && D == 0);
    if (row.trails)
        for (int index : {Ix::LogOddsRatio, Ix::MHCellA, Ix::MHCellB, Ix::MHCellC, Ix::MHCellD})
            row.Trail(index) = row.head;

    if (undefinedTable) {
        events::UndefinedTableStep(row);
    } else {
        if (!events::LogOddsStep(row)) return;
        events::StdDiffStep(row);
        events::PairedStdDiffStep(row);
        events::HedgesGStep(row);
        events::CorrelationStep(row);
    }
    events::PetoStep(row, undefinedTable);
    events::RiskRatioStep(row, undefinedTable);
    events::RiskDifferenceStep(row);
    if (!row.paired) events::MantelHaenszelStep(row, undefinedTable);
}

}  // namespace synthara::effectsize
