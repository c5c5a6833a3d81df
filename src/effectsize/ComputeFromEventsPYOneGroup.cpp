// One rate over person-time.
#include <cmath>
#include <string>
#include <variant>

#include "effectsize/ComputeFromOneGroup.h"
#include "effectsize/FormatRoles.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"

namespace synthara::effectsize {

namespace {

using sheet::RoleKind;

constexpr Formula kRate{"Rate = {Events} / {Person years}"};
constexpr Formula kRateSE{"RateSE = Sqr({Events}) / {Person years}"};

void RateTrail(std::string& t, bool rateEntered, bool added, double events, double py, double rate,
               double se) {
    AddFormula(t, "Rate per Person year", "A");
    AddFormula(t, rateEntered ? "From Rate and Person years" : "From Events and Person years", "T");
    if (added) {
        AddFormula(t, "'Events' was given as 0.  Therefore, 0.5 was added", "S");
        AddFormula(t, "to both 'Events' and 'Person years'.", "S");
        AddFormula(t, "Events = 0.5", "S");
        AddFormula(t, "Person years = Person years + 0.5", "S");
        AddFormula(t, "Rate = Events / Person Years", "S");
    } else if (rateEntered) {
        AddFormula(t, "Rate = Given", "S");
        AddFormula(t, "Person years = Given", "S");
        AddFormula(t, "Events = Rate * Person years", "S");
    } else {
        AddFormula(t, "Events = Given", "S");
        AddFormula(t, "Person years = Given", "S");
        kRate.AddSymbols(t);
    }
    kRateSE.AddSymbols(t);
    const std::string eventsText = G1(events), pyText = G1(py);
    const Slots values{{"Events", eventsText}, {"Person years", pyText}};
    AddStep(t, {"Events = ", eventsText});
    AddStep(t, {"Person years = ", pyText});
    kRate.AddNumbers(t, values, G3(rate));
    kRateSE.AddNumbers(t, values, G3(se));
}

}  // namespace

void ComputeFromEventsPYOneGroup(const sheet::FormatDef& format, WorkingSet& ws,
                                 ComputeContext& /*context*/) {
    const auto* layout = std::get_if<sheet::OneGroupPYLayout>(&format.layout);
    if (layout == nullptr) return;
    const FormatRoles roles(format, ws);
    const int pyRole = roles.Role(RoleKind::PersonYears);
    if (layout->rate)
        CheckRatePY(roles.Role(RoleKind::PYRate), ws);
    else
        CheckEvents(roles.Role(RoleKind::Events), ws);
    CheckPersonYears(pyRole, ws);
    if (!ws.RowErrors.empty()) return;

    const double enteredPY = roles.Value(RoleKind::PersonYears);
    double events =
        layout->rate ? roles.Value(RoleKind::PYRate) * enteredPY : roles.Value(RoleKind::Events);
    ws.SetResult(Ix::PY1CellA, events, 0, 0);
    ws.SetResult(Ix::PY1CellB, enteredPY, 0, 0);
    // No events give no spread: half an event is added, over half a person-year more.
    double py = enteredPY;
    const bool added = events == 0;
    if (added) {
        events = 0.5;
        py = enteredPY + 0.5;
    }
    const double rate = events / py;
    const double se = std::sqrt(events) / py;
    ws.SetResult(Ix::Rate, rate, se, se * se);
    ws.SetPoint(Ix::NPY0, enteredPY);
    ws.SetPoint(Ix::EventsPY0, events);
    if (ws.BuildTrails)
        RateTrail(ws.EsFormula[Ix::Rate], layout->rate, added, events, py, rate, se);
}

}  // namespace synthara::effectsize
