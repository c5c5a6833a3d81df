#include "effectsize/ComputeFromEvents.h"

#include <cmath>
#include <string>

#include "effectsize/Compute.h"
#include "effectsize/EventsSteps.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"

namespace synthara::effectsize {

namespace {

constexpr std::string_view kAdded = "One or more cells was empty, so 0.5 was added to each cell";

// What the format entered, and so how the table is built from the roles.
enum class Layout { EventsAndN, NonEventsAndN, EventsNonEvents, RateAndN, Matched, None };

struct FormatKind {
    Layout layout = Layout::None;
    bool paired = false;
};

FormatKind Classify(std::string_view format) {
    struct Known {
        std::string_view name;
        FormatKind kind;
    };
    static constexpr Known kKnown[] = {
        {"Events and sample size in each group", {Layout::EventsAndN, false}},
        {"Non-events and sample size in each group", {Layout::NonEventsAndN, false}},
        {"Events and non-events in each group", {Layout::EventsNonEvents, false}},
        {"Event rate and sample size in each group", {Layout::RateAndN, false}},
        {"Events and sample size in each treatment, and external correlation",
         {Layout::EventsAndN, true}},
        {"Non-events and sample size in each treatment, and external correlation",
         {Layout::NonEventsAndN, true}},
        {"Events and non-events in each treatment, and external correlation",
         {Layout::EventsNonEvents, true}},
        {"Event rate and sample size in each treatment, and external correlation",
         {Layout::RateAndN, true}},
        {"Matched 2x2 table", {Layout::Matched, true}},
    };
    for (const auto& known : kKnown)
        if (known.name == format) return known.kind;
    return {};
}

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

using events::EventsRow;

double Val(const EventsRow& row, int role) {
    return row.ws.EntryVals[At(role)];
}
const std::string& Label(const EventsRow& row, int role) {
    return row.ws.EntryLabels[At(role)];
}

// Validates the entries and fills the table and its trail; false when the
// row was refused.
bool BuildTable(EventsRow& ev, Layout layout) {
    WorkingSet& ws = ev.ws;
    switch (layout) {
        case Layout::EventsAndN:
            CheckEventsAndN(0, 1, ws);
            CheckEventsAndN(2, 3, ws);
            break;
        case Layout::NonEventsAndN:
            CheckNonEventsAndN(0, 1, ws);
            CheckNonEventsAndN(2, 3, ws);
            break;
        case Layout::EventsNonEvents:
            CheckEventsNonEvents(0, 1, ws);
            CheckEventsNonEvents(2, 3, ws);
            break;
        case Layout::RateAndN:
            CheckEventRateN(0, 1, ws);
            CheckEventRateN(2, 3, ws);
            break;
        case Layout::Matched:
            CheckSTUV(0, ws);
            break;
        case Layout::None:
            return false;
    }
    if (ev.paired && layout != Layout::Matched) CheckR(4, ws);
    if (!ws.RowErrors.empty()) return false;

    auto& c = ev.cells;
    double& A = c[1][1];
    double& B = c[1][2];
    double& C = c[2][1];
    double& D = c[2][2];
    double& N1 = c[1][3];
    double& N2 = c[2][3];
    switch (layout) {
        case Layout::EventsAndN:
            A = Val(ev, 0), N1 = Val(ev, 1), C = Val(ev, 2), N2 = Val(ev, 3);
            B = N1 - A, D = N2 - C;
            break;
        case Layout::NonEventsAndN:
            B = Val(ev, 0), N1 = Val(ev, 1), D = Val(ev, 2), N2 = Val(ev, 3);
            A = N1 - B, C = N2 - D;
            break;
        case Layout::EventsNonEvents:
            A = Val(ev, 0), B = Val(ev, 1), C = Val(ev, 2), D = Val(ev, 3);
            N1 = A + B, N2 = C + D;
            break;
        case Layout::RateAndN:
            // A rate is a proportion and the cells keep its fractions.
            N1 = Val(ev, 1), A = Val(ev, 0) * N1, B = N1 - A;
            N2 = Val(ev, 3), C = Val(ev, 2) * N2, D = N2 - C;
            break;
        case Layout::Matched: {
            const double S = Val(ev, 0), T = Val(ev, 1), U = Val(ev, 2), V = Val(ev, 3);
            A = S + T, B = S + U, C = U + V, D = T + V;
            N1 = A + B, N2 = C + D;
            break;
        }
        case Layout::None:
            break;
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
    static constexpr std::string_view kPairs[] = {"S = ", "T = ", "U = ", "V = "};
    for (int role = 0; role < 4; ++role)
        AddStep(t, {kPairs[role], Label(ev, role), " = ", G1(Val(ev, role))});
    AddFormula(t, "And may be reconfigured as", "T");
    const std::string S = G1(Val(ev, 0)), T = G1(Val(ev, 1)), U = G1(Val(ev, 2)),
                      V = G1(Val(ev, 3));
    AddStep(t, {"A = S + T = ", S, " + ", T, " = ", G1(c[1][1])});
    AddStep(t, {"B = S + U = ", S, " + ", U, " = ", G1(c[1][2])});
    AddStep(t, {"C = U + V = ", U, " + ", V, " = ", G1(c[2][1])});
    AddStep(t, {"D = T + V = ", T, " + ", V, " = ", G1(c[2][2])});
}

void CellsTrail(EventsRow& ev, Layout layout) {
    std::string& t = ev.head;
    t.reserve(1024);
    if (layout == Layout::Matched) {
        MatchedCellsTrail(ev);
        return;
    }
    const auto& c = ev.cells;
    const double A = c[1][1], B = c[1][2], C = c[2][1], D = c[2][2], N1 = c[1][3], N2 = c[2][3];
    AddFormula(t, "Cells in 2x2 table", "A");
    AddFormula(t, "Where cells are given as", "T");
    switch (layout) {
        case Layout::EventsAndN:
            AddStep(t, {"A = ", Label(ev, 0)});
            AddStep(t, {"B = ", Label(ev, 1), " - A"});
            AddStep(t, {"C = ", Label(ev, 2)});
            AddStep(t, {"D = ", Label(ev, 3), " - C"});
            AddFormula(t, "", "S");
            AddStep(t, {"A = ", G1(A)});
            AddStep(t, {"B = ", G1(N1), " - ", G1(A), " = ", G1(B)});
            AddStep(t, {"C = ", G1(C)});
            AddStep(t, {"D = ", G1(N2), " - ", G1(C), " = ", G1(D)});
            break;
        case Layout::NonEventsAndN:
            AddStep(t, {"A = ", Label(ev, 1), " - B"});
            AddStep(t, {"B = ", Label(ev, 0)});
            AddStep(t, {"C = ", Label(ev, 3), " - D"});
            AddStep(t, {"D = ", Label(ev, 2)});
            AddFormula(t, "", "S");
            AddStep(t, {"A = ", G1(N1), " - ", G1(B), " = ", G1(A)});
            AddStep(t, {"B = ", G1(B)});
            AddStep(t, {"C = ", G1(N2), " - ", G1(D), " = ", G1(C)});
            AddStep(t, {"D = ", G1(D)});
            break;
        case Layout::EventsNonEvents:
            AddStep(t, {"A = ", Label(ev, 0)});
            AddStep(t, {"B = ", Label(ev, 1)});
            AddStep(t, {"C = ", Label(ev, 2)});
            AddStep(t, {"D = ", Label(ev, 3)});
            AddFormula(t, "", "S");
            AddStep(t, {"A = ", G1(A)});
            AddStep(t, {"B = ", G1(B)});
            AddStep(t, {"C = ", G1(C)});
            AddStep(t, {"D = ", G1(D)});
            break;
        case Layout::RateAndN:
            AddStep(t, {"A = ", Label(ev, 0), " * ", Label(ev, 1)});
            AddStep(t, {"B = ", Label(ev, 1), " - A"});
            AddStep(t, {"C = ", Label(ev, 2), " * ", Label(ev, 3)});
            AddStep(t, {"D = ", Label(ev, 3), " - C"});
            AddFormula(t, "", "S");
            AddStep(t, {"A = ", G1(Val(ev, 0)), " * ", G1(N1), " = ", G1(A)});
            AddStep(t, {"B = ", G1(N1), " - ", G1(A), " = ", G1(B)});
            AddStep(t, {"C = ", G1(Val(ev, 2)), " * ", G1(N2), " = ", G1(C)});
            AddStep(t, {"D = ", G1(N2), " - ", G1(C), " = ", G1(D)});
            break;
        case Layout::Matched:
        case Layout::None:
            break;
    }
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
    double S = Val(ev, 0);
    if (added) S += 0.25;
    const double product = A * B * C * D;
    const double rho = (nTot * S - A * B) / std::sqrt(product);
    const double delta = nTot * nTot * (nTot * S - A * B) / product;
    ev.deltaOverN = delta / nTot;
    AddFormula(t, "NTot = NTot/2", "S");
    AddFormula(t, "Rho = (NTot * S - A * B) / Sqr(A * B * C * D)", "S");
    AddFormula(t, "Delta = NTot * NTot * (NTot * S - A * B) / (A * B * C * D)", "S");
    AddFormula(t, "DeltaOverN = Delta / NTot", "S");
    AddFormula(t, "", "S");
    if (added) {
        AddFormula(t, kAdded, "S");
        AddFormula(t, "for computation of Rho and DeltaOverN", "S");
    }
    const std::string a = G1(A), b = G1(B), c = G1(C), d = G1(D), n = G1(nTot), s = G1(S);
    AddStep(t, {"NTot = ", G1(nTot * 2), "/2 = ", n});
    AddStep(t, {"Rho = (", n, " * ", s, " - ", a, " * ", b, ") / Sqr(", a, " * ", b, " * ", c,
                " * ", d, ") = ", G3(rho)});
    AddStep(t, {"Delta = ", n, " * ", n, " * (", n, " * ", s, " - ",  a,        " * ", b,
                ") / (",    a, " * ", b, " * ",  c, " * ", d, ") = ", G3(delta)});
    AddStep(t, {"DeltaOverN = ", G3(delta), " / ", n, " = ", G3(ev.deltaOverN)});
}

// The correlation the user entered for the two treatments.
void ExternalCorrelation(EventsRow& ev) {
    double A, B, C, D;
    bool added;
    ev.Restore(A, B, C, D, true, added);
    std::string& t = ev.head;
    const double nTot = (A + B + C + D) / 2;
    const double rho = Val(ev, 4);
    ev.deltaOverN = (rho * nTot) / std::sqrt(A * B * C * D);
    AddFormula(t, "Rho = External correlation", "S");
    AddFormula(t, "", "S");
    AddFormula(t, "NTot = (A + B + C + D) / 2", "S");
    AddFormula(t, "DeltaOverN = (NTot * Rho) / Sqr(A * B * C * D)", "S");
    if (added) {
        AddFormula(t, kAdded, "S");
        AddFormula(t, "for computation of Rho and DeltaOverN", "S");
    }
    const std::string a = G1(A), b = G1(B), c = G1(C), d = G1(D);
    AddStep(t, {"Rho = ", G3(rho)});
    AddStep(t, {"NTot = (", a, " + ", b, " + ", c, " + ", d, ") / 2 = ", G1(nTot)});
    AddStep(t, {"DeltaOverN = (", G1(nTot), " * ", G3(rho), ") / Sqr(", a, " * ", b, " * ", c,
                " * ", d, ") = ", G3(ev.deltaOverN)});
}

}  // namespace

void ComputeFromEvents(std::string_view format, WorkingSet& ws, ComputeContext& context) {
    static constexpr int kTrails[] = {1,  2, 23, 24, 25, 26, 27, 28, 29,
                                      30, 3, 4,  9,  13, 12, 14, 15, 16};
    for (int index : kTrails)
        ws.EsFormula[At(index)].clear();
    ws.RowErrors.clear();
    for (int role = 0; role < 4; ++role)
        if (ws.EntryMissing[At(role)])
            AddErr(ws.RowErrors, "One of the required values is missing");
    if (!ws.RowErrors.empty()) return;

    const FormatKind kind = Classify(format);
    if (kind.layout == Layout::None) {
        // A name routed here that has no table of its own: say so and leave
        // every index invalid rather than compute from empty cells.
        context.prompter.Message(ports::Box{"Error", {"Error"}, ports::Icon::None});
        return;
    }
    EventsRow row(ws, context, kind.paired);
    if (!BuildTable(row, kind.layout)) return;
    CellsTrail(row, kind.layout);
    StoreCounts(row);
    if (kind.layout == Layout::Matched)
        MatchedCorrelation(row);
    else if (row.paired)
        ExternalCorrelation(row);

    double A, B, C, D;
    bool added;
    row.Restore(A, B, C, D, false, added);
    const bool undefinedTable = (A == 0 && C == 0) || (B == 0 && D == 0);
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
