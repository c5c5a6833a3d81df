#include "effectsize/RolePlan.h"

#include "sheet/catalogue/FormatCatalogue.h"

namespace synthara::effectsize {

RolePlan MakePlan(const sheet::Sheet& sheet, std::string_view format,
                  const sheet::Sheet::RoleColumns& found) {
    RolePlan plan;
    plan.loaded = true;
    plan.format.assign(format);
    plan.definition = sheet::FindComputedFormat(format);
    plan.builtAt = sheet.Flex().StructureRevision();
    for (std::size_t role = 0; role < MaxRoles; ++role) {
        const int col = found.count[role] > 0 ? found.index[role] : 0;
        plan.col[role] = col > 0 && col < sheet.Flex().Cols() ? col : -1;
        if (plan.col[role] > 0) plan.labels[role] = sheet.ColumnLabel(plan.col[role]);
    }
    return plan;
}

RolePlan PlanFor(const sheet::Sheet& sheet, std::string_view format) {
    sheet::DefinedFormat defined;
    sheet::DefineFormat(format, defined);
    return MakePlan(sheet, format, sheet.LocateRoles(format, defined.EntryColNames));
}

}  // namespace synthara::effectsize
