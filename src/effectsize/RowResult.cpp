#include "effectsize/RowResult.h"

#include "effectsize/Compute.h"
#include "sheet/catalogue/FormatCatalogue.h"
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

// The display columns of an index the sheet shows: one with a name and
// "Point" and "Valid" columns; nullptr for any other.
const auto* ShownColumns(const sheet::Sheet& sheet, int index) {
    const auto& cols = sheet.DisplayColTable()[At(index)];
    const bool shown = !sheet::IndexNameTable()[At(index)].empty() && cols[sheet::AttrPoint] > 0 &&
                       cols[sheet::AttrValid] > 0;
    return shown ? &cols : nullptr;
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

RowEvaluator::RowEvaluator(const sheet::Sheet& sheet, const ComputeOptions& options,
                           ports::Prompter& prompter, Trails trails)
    : sheet_(sheet), options_(options), prompter_(prompter), trails_(trails) {}

RowResult RowEvaluator::Evaluate(int row) {
    const int formatCol = sheet_.FormatCol();
    const std::string format = formatCol >= 0 ? sheet_.Flex().Text(row, formatCol) : std::string();
    if (!plan_.Fits(sheet_, format)) plan_ = PlanFor(sheet_, format);
    WorkingSet ws;
    ws.Reset();
    ws.BuildTrails = trails_ == Trails::On;
    RowResult result;
    if (!format.empty() && ReadEntries(sheet_.Flex(), sheet_.Separators, row, plan_.col, ws)) {
        ws.EntryLabels = plan_.labels;
        ComputeOptions rowOptions = options_;
        ComputeContext context{rowOptions, prompter_};
        RunProcedure(plan_.definition, ws, context);
        result = ResultOf(ws);
    }
    result.format = format;
    result.definition = plan_.definition;
    return result;
}

RowResult EvaluateRow(const sheet::Sheet& sheet, int row, const ComputeOptions& options,
                      ports::Prompter& prompter, Trails trails) {
    return RowEvaluator(sheet, options, prompter, trails).Evaluate(row);
}

std::string FormulaText(const sheet::Sheet& sheet, int row, int index,
                        const ComputeOptions& options, ports::Prompter& prompter) {
    if (index < 1 || index > IndexCount) return {};
    const auto& cols = sheet.DisplayColTable()[At(index)];
    const int formulaCol = cols[sheet::AttrFormula];
    // Without a "Point" column the computation leaves the cell to the user.
    if (formulaCol > 0 && cols[sheet::AttrPoint] <= 0) return sheet.Flex().Text(row, formulaCol);
    const RowResult result = EvaluateRow(sheet, row, options, prompter, Trails::On);
    if (!result.hasEntry) return {};
    const IndexResult* found = result.Find(index);
    if ((found == nullptr || !found->valid) && !result.errors.empty()) return result.errors;
    return found != nullptr ? found->trail : std::string();
}

ShownReader::ShownReader(const sheet::Sheet& sheet) : sheet_(sheet) {
    for (int i = 1; i <= IndexCount; ++i)
        if (const auto* cols = ShownColumns(sheet, i))
            shown_.push_back({i, (*cols)[sheet::AttrPoint], (*cols)[sheet::AttrStdErr],
                              (*cols)[sheet::AttrVariance], (*cols)[sheet::AttrValid]});
}

RowResult ShownReader::Read(int row) {
    const sheet::Grid& flex = sheet_.Flex();
    RowResult result;
    if (const int col = sheet_.FormatCol(); col >= 0) result.format = flex.Text(row, col);
    if (const int col = sheet_.ErrorCol(); col >= 0) result.errors = flex.Text(row, col);
    if (result.format != lastFormat_ || lastDefinition_ == nullptr) {
        lastFormat_ = result.format;
        lastDefinition_ = sheet::FindComputedFormat(result.format);
    }
    result.definition = lastDefinition_;
    const auto number = [&](int col) -> std::optional<double> {
        if (col <= 0) return std::nullopt;
        const sheet::Cell& cell = flex.At(row, col);
        if (!cell.IsNumber()) return std::nullopt;
        return cell.Number();
    };
    result.indices.reserve(shown_.size());
    for (const Columns& c : shown_) {
        const std::optional<double> valid = number(c.valid);
        if (!valid || *valid == 0) continue;
        result.hasEntry = true;
        result.indices.push_back(
            {c.index, true, number(c.point), number(c.stdErr), number(c.variance), {}});
    }
    return result;
}

void KeepShownIndices(const sheet::Sheet& sheet, RowResult& result) {
    std::vector<IndexResult> shown;
    for (IndexResult& index : result.indices) {
        const auto* cols = ShownColumns(sheet, index.index);
        if (!index.valid || cols == nullptr) continue;
        if ((*cols)[sheet::AttrStdErr] <= 0) index.stdErr.reset();
        if ((*cols)[sheet::AttrVariance] <= 0) index.variance.reset();
        shown.push_back(std::move(index));
    }
    result.indices = std::move(shown);
}

}  // namespace synthara::effectsize
