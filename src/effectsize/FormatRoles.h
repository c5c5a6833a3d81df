#pragma once
// A row's entries read by what they mean in the row's format.
#include <string>

#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

class FormatRoles {
  public:
    FormatRoles(const sheet::FormatDef& format, const WorkingSet& ws) : format_(format), ws_(ws) {}

    // The place of the role that means `kind`; -1 when the format has none.
    int Role(sheet::RoleKind kind) const { return format_.RoleOf(kind); }
    // The value entered for `kind`; 0 where the format has no such role.
    double Value(sheet::RoleKind kind) const {
        const int role = Role(kind);
        return role >= 0 ? ws_.EntryVals[static_cast<std::size_t>(role)] : 0.0;
    }
    // The label of the role's column; "" where the format has no such role.
    const std::string& Label(sheet::RoleKind kind) const {
        static const std::string kNone;
        const int role = Role(kind);
        return role >= 0 ? ws_.EntryLabels[static_cast<std::size_t>(role)] : kNone;
    }

  private:
    const sheet::FormatDef& format_;
    const WorkingSet& ws_;
};

// Says "One of the required values is missing" once for each of the first
// `count` roles that is missing; true when none is.
bool RequireFirstRoles(int count, WorkingSet& ws);

}  // namespace synthara::effectsize
