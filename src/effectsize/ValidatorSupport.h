#pragma once
// What the validators share: reading a role and blaming its cell.
#include <string>
#include <string_view>

#include "effectsize/Trail.h"
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize::validate {

inline std::size_t At(int role) {
    return static_cast<std::size_t>(role);
}
inline bool Missing(const WorkingSet& ws, int role) {
    return ws.EntryMissing[At(role)];
}
inline double Val(const WorkingSet& ws, int role) {
    return ws.EntryVals[At(role)];
}

// Reports a fault of one cell: the message goes to the row's errors and the
// cell is marked with it.
inline void Blame(WorkingSet& ws, int role, std::string_view message) {
    AddErr(ws.RowErrors, message);
    ws.EntryMarks[At(role)] = message;
}

inline void BlameBoth(WorkingSet& ws, int first, int second, std::string_view message) {
    AddErr(ws.RowErrors, message);
    ws.EntryMarks[At(first)] = message;
    ws.EntryMarks[At(second)] = message;
}

// The label of the role's column followed by `tail`.
inline std::string Labelled(const WorkingSet& ws, int role, std::string_view tail) {
    std::string text = ws.EntryLabels[At(role)];
    text += tail;
    return text;
}

}  // namespace synthara::effectsize::validate
