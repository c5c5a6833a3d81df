#include "effectsize/Validators.h"

#include <string>
#include <string_view>

#include "effectsize/Trail.h"

namespace synthara::effectsize {

namespace {

std::size_t At(int role) {
    return static_cast<std::size_t>(role);
}

// Reports a fault of one cell: the message goes to the row's errors and the
// cell is marked with it.
void Blame(WorkingSet& ws, int role, std::string_view message) {
    AddErr(ws.RowErrors, message);
    ws.EntryMarks[At(role)] = message;
}

void BlameBoth(WorkingSet& ws, int first, int second, std::string_view message) {
    AddErr(ws.RowErrors, message);
    ws.EntryMarks[At(first)] = message;
    ws.EntryMarks[At(second)] = message;
}

std::string Labelled(const WorkingSet& ws, int role, std::string_view tail) {
    std::string text = ws.EntryLabels[At(role)];
    text += tail;
    return text;
}

bool Missing(const WorkingSet& ws, int role) {
    return ws.EntryMissing[At(role)];
}
double Val(const WorkingSet& ws, int role) {
    return ws.EntryVals[At(role)];
}

// The shared body of the two count-and-size validators; they differ in the
// wording for a missing count.
void CheckCountAndN(int countRole, int nRole, WorkingSet& ws, std::string_view missingCount) {
    const bool haveCount = !Missing(ws, countRole);
    const bool haveN = !Missing(ws, nRole);
    if (!haveCount) Blame(ws, countRole, missingCount);
    if (!haveN) Blame(ws, nRole, "The total N is missing");
    if (haveCount && Val(ws, countRole) < 0)
        Blame(ws, countRole, Labelled(ws, countRole, " cannot be less than zero"));
    if (haveN && Val(ws, nRole) < 1)
        Blame(ws, nRole, Labelled(ws, nRole, " cannot be less than 1"));
    if (haveCount && haveN && Val(ws, countRole) > Val(ws, nRole)) {
        std::string message = Labelled(ws, countRole, " cannot exceed ");
        message += ws.EntryLabels[At(nRole)];
        BlameBoth(ws, countRole, nRole, message);
    }
    if (haveN && Val(ws, nRole) > MaxSampleSize) {
        std::string message = "The ";
        message += Labelled(ws, nRole, " cannot be greater than 100,000,000");
        Blame(ws, nRole, message);
    }
}

}  // namespace

void CheckEventsAndN(int eventsRole, int nRole, WorkingSet& ws) {
    CheckCountAndN(eventsRole, nRole, ws, "The number of events is missing");
}

void CheckNonEventsAndN(int nonEventsRole, int nRole, WorkingSet& ws) {
    CheckCountAndN(nonEventsRole, nRole, ws, "The number of non-events is missing");
}

void CheckEventsNonEvents(int eventsRole, int nonEventsRole, WorkingSet& ws) {
    const bool haveEvents = !Missing(ws, eventsRole);
    const bool haveNonEvents = !Missing(ws, nonEventsRole);
    if (!haveEvents) Blame(ws, eventsRole, "The number of events is missing");
    if (!haveNonEvents) Blame(ws, nonEventsRole, "The number of non-events is missing");
    if (haveEvents && Val(ws, eventsRole) < 0)
        Blame(ws, eventsRole, Labelled(ws, eventsRole, " cannot be less than zero"));
    if (haveNonEvents && Val(ws, nonEventsRole) < 0)
        Blame(ws, nonEventsRole, Labelled(ws, nonEventsRole, " cannot be less than zero"));
    if (!haveEvents || !haveNonEvents) return;
    const double total = Val(ws, eventsRole) + Val(ws, nonEventsRole);
    if (total < 1) BlameBoth(ws, eventsRole, nonEventsRole, "Total N cannot be less than 1");
    if (total > MaxSampleSize)
        BlameBoth(ws, eventsRole, nonEventsRole,
                  "The sample size cannot be greater than 100,000,000");
}

void CheckEventRateN(int rateRole, int nRole, WorkingSet& ws) {
    const bool haveRate = !Missing(ws, rateRole);
    const bool haveN = !Missing(ws, nRole);
    if (!haveRate) Blame(ws, rateRole, Labelled(ws, rateRole, " is missing"));
    if (!haveN) Blame(ws, nRole, Labelled(ws, nRole, " is missing"));
    if (haveRate && Val(ws, rateRole) < 0)
        Blame(ws, rateRole, Labelled(ws, rateRole, " cannot be less than zero"));
    if (haveRate && Val(ws, rateRole) > 1)
        Blame(ws, rateRole, Labelled(ws, rateRole, " cannot be greater than one"));
    if (haveN && Val(ws, nRole) < 1)
        Blame(ws, nRole, Labelled(ws, nRole, " cannot be less than one"));
    if (haveN && Val(ws, nRole) > MaxSampleSize)
        Blame(ws, nRole, Labelled(ws, nRole, " cannot be greater than 100,000,000"));
}

void CheckR(int role, WorkingSet& ws) {
    if (Missing(ws, role)) {
        Blame(ws, role, "Correlation is missing");
        return;
    }
    const double r = Val(ws, role);
    if (r < -0.9999 || r > 0.9999)
        Blame(ws, role, "Correlation must fall in the range of -.9999 to +.9999");
}

void CheckSTUV(int firstRole, WorkingSet& ws) {
    const int last = firstRole + 3;
    for (int role = firstRole; role <= last; ++role) {
        if (Missing(ws, role)) {
            AddErr(ws.RowErrors, "One of the values is missing");
            return;
        }
    }
    double total = 0;
    for (int role = firstRole; role <= last; ++role) {
        if (Val(ws, role) < 0) Blame(ws, role, Labelled(ws, role, " cannot be less than zero"));
        total += Val(ws, role);
    }
    auto blameAll = [&](std::string_view message) {
        AddErr(ws.RowErrors, message);
        for (int role = firstRole; role <= last; ++role)
            ws.EntryMarks[At(role)] = message;
    };
    if (total < 1) blameAll("Total N cannot be less than 1");
    if (total > MaxSampleSize) blameAll("The sample size cannot be greater than 100,000,000");
}

}  // namespace synthara::effectsize
