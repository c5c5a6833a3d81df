#pragma once
// Where a format's roles stand on the sheet, looked up once for a run of rows
// of one format rather than once per row.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "effectsize/WorkingSet.h"
#include "sheet/grid/Sheet.h"

namespace synthara::effectsize {

struct RolePlan {
    bool loaded = false;
    std::string format;
    const sheet::FormatDef* definition = nullptr;  // nullptr for a name no procedure knows
    std::array<int, MaxRoles> col{};               // -1: the role has no column
    std::array<std::string, MaxRoles> labels;      // the columns' labels, for messages and trails
    std::uint64_t builtAt = 0;                     // the sheet's structure revision then

    // True while the plan still describes the format's columns on the sheet.
    bool Fits(const sheet::Sheet& sheet, std::string_view formatName) const {
        return loaded && formatName == format && builtAt == sheet.Flex().StructureRevision();
    }
};

// The plan from the role columns found for the format (by FindESCols, or by
// the sheet's LocateRoles).
RolePlan MakePlan(const sheet::Sheet& sheet, std::string_view format,
                  const sheet::Sheet::RoleColumns& found);

// The plan of a format, found without changing anything in the sheet.
RolePlan PlanFor(const sheet::Sheet& sheet, std::string_view format);

}  // namespace synthara::effectsize
