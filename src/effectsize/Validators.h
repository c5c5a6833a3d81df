#pragma once
// Validators: the only barrier between the user's cells and the formulas.
// Each appends its messages to RowErrors through AddErr and marks the cell it
// blames in EntryMarks. They never stop one another.
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

// The largest sample size accepted, and its printed form.
inline constexpr double MaxSampleSize = 100000000.0;

void CheckEventsAndN(int eventsRole, int nRole, WorkingSet& ws);
void CheckNonEventsAndN(int nonEventsRole, int nRole, WorkingSet& ws);
void CheckEventsNonEvents(int eventsRole, int nonEventsRole, WorkingSet& ws);
void CheckEventRateN(int rateRole, int nRole, WorkingSet& ws);
void CheckR(int role, WorkingSet& ws);
// The four pair counts S, T, U, V of a matched table, in roles firstRole..firstRole + 3.
void CheckSTUV(int firstRole, WorkingSet& ws);

}  // namespace synthara::effectsize
