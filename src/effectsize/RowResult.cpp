#include "effectsize/RowResult.h"

#include "effectsize/Compute.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::effectsize {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

std::optional<double> Number(const WorkingSet& ws, int attr, int index) {
    const double value = ws.Es(attr, index);
    if (value != value) return std::nullopt;  // never set: the index has no such number
    return value;
}

// The column of each role of the format, found as the sheet's own lookup
// finds them (the last column that matches), without touching the sheet.
std::array<int, MaxRoles> RoleColumns(const sheet::Sheet& sheet, const sheet::FormatDef& format) {
    std::array<int, MaxRoles> cols;
    cols.fill(-1);
    const int count = sheet.Flex().Cols();
    for (int c = 1; c < count; ++c) {
        if (!sheet.MetaIs(c, sheet::MetaRow::Function, "Data Entry") ||
            !sheet.MetaIs(c, sheet::MetaRow::FormatName, format.longName))
            continue;
        for (std::size_t r = 0; r < format.roles.size() && r < cols.size(); ++r)
            if (sheet.MetaIs(c, sheet::MetaRow::Attribute, format.roles[r].name)) cols[r] = c;
    }
    return cols;
}

}  // namespace

const IndexResult* RowResult::Find(int index) const {
    for (const IndexResult& result : indices)
        if (result.index == index) return &result;
    return nullptr;
}

RowResult ResultOf(const WorkingSet& ws) {
    RowResult result;
    result.hasEntry = true;
    result.errors = ws.RowErrors;
    for (std::size_t role = 0; role < At(MaxRoles); ++role)
        if (!ws.EntryMissing[role]) result.marks[role] = ws.EntryMarks[role];
    for (int i = 1; i <= IndexCount; ++i) {
        const bool valid = ws.IsValid(i);
        const std::string& trail = ws.EsFormula[At(i)];
        if (!valid && trail.empty()) continue;
        IndexResult index{i, valid, std::nullopt, std::nullopt, std::nullopt, trail};
        if (valid) {
            index.point = Number(ws, 1, i);
            index.stdErr = Number(ws, 2, i);
            index.variance = Number(ws, 3, i);
        }
        result.indices.push_back(std::move(index));
    }
    return result;
}

RowResult EvaluateRow(const sheet::Sheet& sheet, int row, const ComputeOptions& options,
                      ports::Prompter& prompter) {
    const int formatCol = sheet.FormatCol();
    const std::string format = formatCol >= 0 ? sheet.Flex().Text(row, formatCol) : std::string();
    const sheet::FormatDef* definition = sheet::FindComputedFormat(format);
    WorkingSet ws;
    ws.Reset();
    std::array<int, MaxRoles> roleCol;
    roleCol.fill(-1);
    if (definition != nullptr) roleCol = RoleColumns(sheet, *definition);
    RowResult result;
    if (!format.empty() && ReadEntries(sheet.Flex(), sheet.Separators, row, roleCol, ws)) {
        for (std::size_t role = 0; role < At(MaxRoles); ++role)
            if (roleCol[role] > 0) ws.EntryLabels[role] = sheet.ColumnLabel(roleCol[role]);
        ComputeOptions rowOptions = options;
        ComputeContext context{rowOptions, prompter};
        RunProcedure(definition, ws, context);
        result = ResultOf(ws);
    }
    result.format = format;
    result.definition = definition;
    return result;
}

void KeepShownIndices(const sheet::Sheet& sheet, RowResult& result) {
    const auto& names = sheet::IndexNameTable();
    const auto& table = sheet.DisplayColTable();
    std::vector<IndexResult> shown;
    for (IndexResult& index : result.indices) {
        const auto at = static_cast<std::size_t>(index.index);
        const auto& cols = table[at];
        if (!index.valid || names[at].empty() || cols[sheet::AttrPoint] <= 0 ||
            cols[sheet::AttrValid] <= 0)
            continue;
        if (cols[sheet::AttrStdErr] <= 0) index.stdErr.reset();
        if (cols[sheet::AttrVariance] <= 0) index.variance.reset();
        shown.push_back(std::move(index));
    }
    result.indices = std::move(shown);
}

}  // namespace synthara::effectsize
