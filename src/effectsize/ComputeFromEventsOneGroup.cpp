// One proportion: the logit of the event rate and the event rate.
#include <cmath>
#include <string>
#include <variant>

#include "effectsize/ComputeFromOneGroup.h"
#include "effectsize/FormatRoles.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"
#include "stats/Formulas.h"

namespace synthara::effectsize {

namespace {

using sheet::EventsEntry;
using sheet::RoleKind;

constexpr Formula kP{"p = {Events} / {Total}"};
constexpr Formula kLogit{"LogitEventRate = Log({p} / (1 - {p}))"};
constexpr Formula kLogitSE{"LogitEventSE = Sqr(1 / ({p} * {Total}) + 1 / ((1 - {p}) * {Total}))"};
constexpr Formula kRate{"EventRate = ({e} ^ {LogitEventRate}) / ({e} ^ {LogitEventRate} + 1)"};

// How the two counts arise from the entries, as the trail says it.
constexpr std::string_view HowCounted(EventsEntry entry) {
    switch (entry) {
        case EventsEntry::NonEventsAndN:
            return "Events = Total - Non-events";
        case EventsEntry::EventsAndNonEvents:
            return "Total = Events + Non-events";
        case EventsEntry::RateAndN:
            return "Events = Event rate * Total";
        case EventsEntry::EventsAndN:
        case EventsEntry::MatchedPairs:
            break;
    }
    return {};
}

// Validates the entries and reads events and non-events; false when refused.
bool ReadCounts(const sheet::FormatDef& format, EventsEntry entry, WorkingSet& ws, double& events,
                double& nonEvents) {
    const FormatRoles roles(format, ws);
    const int eventsRole = roles.Role(RoleKind::Events),
              nonEventsRole = roles.Role(RoleKind::NonEvents),
              nRole = roles.Role(RoleKind::SampleSize), rateRole = roles.Role(RoleKind::EventRate);
    switch (entry) {
        case EventsEntry::EventsAndN:
            CheckEventsAndNOneGroup(eventsRole, nRole, ws);
            events = roles.Value(RoleKind::Events);
            nonEvents = roles.Value(RoleKind::SampleSize) - events;
            break;
        case EventsEntry::NonEventsAndN:
            CheckNonEventsAndNOneGroup(nonEventsRole, nRole, ws);
            nonEvents = roles.Value(RoleKind::NonEvents);
            events = roles.Value(RoleKind::SampleSize) - nonEvents;
            break;
        case EventsEntry::EventsAndNonEvents:
            CheckEventsNonEventsOneGroup(eventsRole, nonEventsRole, ws);
            events = roles.Value(RoleKind::Events);
            nonEvents = roles.Value(RoleKind::NonEvents);
            break;
        case EventsEntry::RateAndN:
        case EventsEntry::MatchedPairs:
            CheckEventRateNOneGroup(rateRole, nRole, ws);
            events = roles.Value(RoleKind::SampleSize) * roles.Value(RoleKind::EventRate);
            nonEvents = roles.Value(RoleKind::SampleSize) - events;
            break;
    }
    return ws.RowErrors.empty();
}

}  // namespace

void ComputeFromEventsOneGroup(const sheet::FormatDef& format, WorkingSet& ws,
                               ComputeContext& /*context*/) {
    if (ws.BuildTrails) {
        ws.EsFormula[Ix::OneCellA].clear();
        ws.EsFormula[Ix::OneCellB].clear();
    }
    const auto* layout = std::get_if<sheet::OneGroupEventsLayout>(&format.layout);
    if (layout == nullptr || !RequireFirstRoles(2, ws)) return;
    double events = 0, nonEvents = 0;
    if (!ReadCounts(format, layout->entry, ws, events, nonEvents)) return;

    // An empty cell has no logit: both counts grow by 0.5, and the total by one.
    const bool added = events == 0 || nonEvents == 0;
    if (added) {
        events += 0.5;
        nonEvents += 0.5;
    }
    const double total = events + nonEvents;
    if (total > MaxSampleSize) {
        std::string message = "The sample size cannot be greater than ";
        message += MaxSampleSizeText;
        AddErr(ws.RowErrors, message);
        return;
    }
    const double p = events / total;
    const double logit = stats::Logit(p);
    const double se = std::sqrt(1 / ((1 - p) * total) + 1 / (total * p));
    ws.SetResult(Ix::LogitEventRate, logit, se, se * se);
    ws.SetPoint(Ix::EventRate, stats::InverseLogit(logit));
    ws.SetPoint(Ix::N0, total);
    ws.SetPoint(Ix::Events0, events);
    ws.SetPoint(Ix::OneCellA, events);
    ws.SetPoint(Ix::OneCellB, nonEvents);
    if (!ws.BuildTrails) return;

    std::string& t = ws.EsFormula[Ix::LogitEventRate];
    AddFormula(t, "Event rate", "T");
    if (const std::string_view how = HowCounted(layout->entry); !how.empty())
        AddFormula(t, how, "S");
    for (const Formula* f : {&kP, &kLogit, &kLogitSE, &kRate})
        f->AddSymbols(t);
    // The printed e has ten digits; the computation uses the exponential itself.
    AddFormula(t, "where e =  2.718281828", "S");
    AddFormula(t, "", "S");
    if (added) {
        AddFormula(t, "Event rate was equal to 0, so 0.5 was added", "S");
        AddFormula(t, "to event and non-event values", "S");
        AddFormula(t, "for computation of Logit event rate and its variance.", "S");
    }
    const std::string eventsText = G1(events), totalText = G1(total), pText = G3(p),
                      logitText = G3(logit);
    const Slots values{{"Events", eventsText},
                       {"Total", totalText},
                       {"p", pText},
                       {"e", "2.718281828"},
                       {"LogitEventRate", logitText}};
    kP.AddNumbers(t, values, pText);
    kLogit.AddNumbers(t, values, logitText);
    kLogitSE.AddNumbers(t, values, G3(se));
    kRate.AddNumbers(t, values, G3(stats::InverseLogit(logit)));
    ws.EsFormula[Ix::EventRate] = t;
}

}  // namespace synthara::effectsize
