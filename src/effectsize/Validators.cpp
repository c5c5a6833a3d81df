// The validators of event counts, for one group or one arm of a table.
#include "effectsize/Validators.h"

#include <string>
#include <string_view>

#include "effectsize/FormatRoles.h"
#include "effectsize/ValidatorSupport.h"

namespace synthara::effectsize {

using namespace validate;

namespace {

// The least size of a group: 1 in an arm of a table, 2 for one group alone,
// with the words that say so.
struct Least {
    double n;
    std::string_view digits;  // " cannot be less than 1"
    std::string_view words;   // " cannot be less than one"
};
constexpr Least kArm{1, " cannot be less than 1", " cannot be less than one"};
constexpr Least kOneGroup{2, " cannot be less than 2", " cannot be less than two"};

// The shared body of the count-and-size validators; they differ in the
// wording for a missing count and in the least size.
void CheckCountAndN(int countRole, int nRole, WorkingSet& ws, std::string_view missingCount,
                    const Least& least) {
    const bool haveCount = !Missing(ws, countRole);
    const bool haveN = !Missing(ws, nRole);
    if (!haveCount) Blame(ws, countRole, missingCount);
    if (!haveN) Blame(ws, nRole, "The total N is missing");
    if (haveCount && Val(ws, countRole) < 0)
        Blame(ws, countRole, Labelled(ws, countRole, " cannot be less than zero"));
    if (haveN && Val(ws, nRole) < least.n) Blame(ws, nRole, Labelled(ws, nRole, least.digits));
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

void CheckEventsNonEventsFor(int eventsRole, int nonEventsRole, WorkingSet& ws,
                             std::string_view tooFew, double least) {
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
    if (total < least) BlameBoth(ws, eventsRole, nonEventsRole, tooFew);
    if (total > MaxSampleSize)
        BlameBoth(ws, eventsRole, nonEventsRole,
                  "The sample size cannot be greater than 100,000,000");
}

void CheckEventRateNFor(int rateRole, int nRole, WorkingSet& ws, const Least& least) {
    const bool haveRate = !Missing(ws, rateRole);
    const bool haveN = !Missing(ws, nRole);
    if (!haveRate) Blame(ws, rateRole, Labelled(ws, rateRole, " is missing"));
    if (!haveN) Blame(ws, nRole, Labelled(ws, nRole, " is missing"));
    if (haveRate && Val(ws, rateRole) < 0)
        Blame(ws, rateRole, Labelled(ws, rateRole, " cannot be less than zero"));
    if (haveRate && Val(ws, rateRole) > 1)
        Blame(ws, rateRole, Labelled(ws, rateRole, " cannot be greater than one"));
    if (haveN && Val(ws, nRole) < least.n) Blame(ws, nRole, Labelled(ws, nRole, least.words));
    if (haveN && Val(ws, nRole) > MaxSampleSize)
        Blame(ws, nRole, Labelled(ws, nRole, " cannot be greater than 100,000,000"));
}

}  // namespace

void CheckEventsAndN(int eventsRole, int nRole, WorkingSet& ws) {
    CheckCountAndN(eventsRole, nRole, ws, "The number of events is missing", kArm);
}

void CheckNonEventsAndN(int nonEventsRole, int nRole, WorkingSet& ws) {
    CheckCountAndN(nonEventsRole, nRole, ws, "The number of non-events is missing", kArm);
}

void CheckEventsAndNOneGroup(int eventsRole, int nRole, WorkingSet& ws) {
    CheckCountAndN(eventsRole, nRole, ws, "The number of events is missing", kOneGroup);
}

void CheckNonEventsAndNOneGroup(int nonEventsRole, int nRole, WorkingSet& ws) {
    CheckCountAndN(nonEventsRole, nRole, ws, "The number of non-events is missing", kOneGroup);
}

void CheckEventsNonEvents(int eventsRole, int nonEventsRole, WorkingSet& ws) {
    CheckEventsNonEventsFor(eventsRole, nonEventsRole, ws, "Total N cannot be less than 1", 1);
}

void CheckEventsNonEventsOneGroup(int eventsRole, int nonEventsRole, WorkingSet& ws) {
    CheckEventsNonEventsFor(eventsRole, nonEventsRole, ws, "Total N cannot be less than 2", 2);
}

void CheckEventRateN(int rateRole, int nRole, WorkingSet& ws) {
    CheckEventRateNFor(rateRole, nRole, ws, kArm);
}

void CheckEventRateNOneGroup(int rateRole, int nRole, WorkingSet& ws) {
    CheckEventRateNFor(rateRole, nRole, ws, kOneGroup);
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

bool RequireFirstRoles(int count, WorkingSet& ws) {
    bool all = true;
    for (int role = 0; role < count; ++role) {
        if (!Missing(ws, role)) continue;
        AddErr(ws.RowErrors, "One of the required values is missing");
        all = false;
    }
    return all;
}

}  // namespace synthara::effectsize
