#include "analysis/Collapse.h"

#include <cmath>
#include <cstdio>
#include <vector>

#include "analysis/IndexChoice.h"
#include "effectsize/Compute.h"
#include "sheet/grid/Sheet.h"

namespace synthara::analysis {

namespace {

// The raw display columns of a code and the format the study is computed under.
struct CodePlan {
    std::string_view format;
    std::array<std::string_view, 6> cells;
    int count = 0;
};

constexpr std::array<CodePlan, 8> kPlans = {{
    {},
    {"Events and non-events", {"One Cell A", "One Cell B"}, 2},
    {"Mean, SD and sample size", {"N(0)", "Mean(0)", "SD(0)"}, 3},
    {"Events and person years", {"NPY(0)", "EventsPY(0)"}, 2},
    {"Events and non-events in each group", {"MHCellA", "MHCellB", "MHCellC", "MHCellD"}, 4},
    {"Exposed and unexposed for cases and controls",
     {"MHCellA", "MHCellB", "MHCellC", "MHCellD"},
     4},
    {"Mean, SD and sample size in each group",
     {"N(1)", "N(2)", "Mean(1)", "Mean(2)", "SD(1)", "SD(2)"},
     6},
    {"Events and person years in each group", {"PYCellA", "PYCellB", "PYCellC", "PYCellD"}, 4},
}};

std::string NumberText(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

}  // namespace

PointVariance FastMeta(std::span<const double> points, std::span<const double> variances) {
    double sumW = 0;
    double sumWY = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double w = 1.0 / variances[i];
        sumW += w;
        sumWY += w * points[i];
    }
    return {sumWY / sumW, 1.0 / sumW};
}

std::optional<SampleStats> ReverseAnova(std::span<const SampleStats> groups) {
    SampleStats whole;
    double weighted = 0;
    for (const SampleStats& g : groups) {
        whole.n += g.n;
        weighted += g.n * g.mean;
    }
    if (whole.n <= 1) return std::nullopt;
    whole.mean = weighted / whole.n;
    double within = 0;
    double between = 0;
    for (const SampleStats& g : groups) {
        within += (g.n - 1) * g.sd * g.sd;
        between += g.n * (whole.mean - g.mean) * (whole.mean - g.mean);
    }
    whole.sd = std::sqrt((between + within) / (whole.n - 1));
    return whole;
}

bool RebuildsCells(int mergeCode) {
    return mergeCode >= MergeCode::CollapseCellsOneGroup &&
           mergeCode <= MergeCode::CollapsePYTwoGroup;
}

CellCollapser::CellCollapser(const sheet::Sheet& sheet, std::string_view computationIndex,
                             const effectsize::ComputeOptions& options, ports::Prompter& prompter)
    : sheet_(sheet),
      index_(sheet::IndexNumber(computationIndex)),
      options_(options),
      prompter_(prompter) {}

bool CellCollapser::ReadCells(int mergeCode, int sheetRow, std::array<double, 6>& cells) {
    const auto code = static_cast<std::size_t>(mergeCode);
    const CodePlan& plan = kPlans[code];
    const sheet::Grid& g = sheet_.Flex();
    if (!found_[code]) {
        for (int i = 0; i < plan.count; ++i) {
            const auto at = static_cast<std::size_t>(i);
            columns_[code][at] = FindIndexColumns(g, plan.cells[at]).point;
        }
        found_[code] = true;
    }
    for (int i = 0; i < plan.count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const int col = columns_[code][at];
        if (col < 0 || g.IsBlank(sheetRow, col) || !g.At(sheetRow, col).TryNumber(cells[at]))
            return false;
    }
    return true;
}

std::optional<PointVariance> CellCollapser::Recompute(int mergeCode,
                                                      std::span<const int> sheetRows) {
    if (!RebuildsCells(mergeCode) || index_ <= 0) return std::nullopt;
    std::array<double, 6> sums{};
    std::array<double, 6> cells{};
    std::vector<SampleStats> one, two;
    for (const int r : sheetRows) {
        if (!ReadCells(mergeCode, r, cells)) return std::nullopt;
        for (std::size_t i = 0; i < sums.size(); ++i)
            sums[i] += cells[i];
        if (mergeCode == MergeCode::RecreateMeansOneGroup)
            one.push_back({cells[0], cells[1], cells[2]});
        if (mergeCode == MergeCode::RecreateMeansTwoGroup) {
            one.push_back({cells[0], cells[2], cells[4]});
            two.push_back({cells[1], cells[3], cells[5]});
        }
    }

    // The entries in the order of the format's roles.
    std::vector<double> entries;
    const auto [A, B, C, D, E, F] = sums;
    (void)E, (void)F;
    switch (mergeCode) {
        case MergeCode::CollapseCellsOneGroup:
            entries = {A, B};
            break;
        case MergeCode::CollapsePYOneGroup:
            entries = {B, A};  // events, person years
            break;
        case MergeCode::CollapseCellsTwoGroupCohort:
        case MergeCode::CollapsePYTwoGroup:
            entries = {A, B, C, D};
            break;
        case MergeCode::CollapseCellsTwoGroupCaseControl:
            // Exposed and unexposed cases, then exposed and unexposed controls.
            entries = {A, C, B, D};
            break;
        case MergeCode::RecreateMeansOneGroup: {
            const std::optional<SampleStats> s = ReverseAnova(one);
            if (!s) return std::nullopt;
            entries = {s->mean, s->sd, s->n};
            break;
        }
        default: {
            const std::optional<SampleStats> a = ReverseAnova(one);
            const std::optional<SampleStats> b = ReverseAnova(two);
            if (!a || !b) return std::nullopt;
            entries = {a->mean, a->sd, a->n, b->mean, b->sd, b->n, 1.0};  // direction: as entered
            break;
        }
    }

    effectsize::WorkingSet ws;
    ws.BuildTrails = false;
    ws.Reset();
    for (std::size_t i = 0; i < ws.EntryVals.size(); ++i) {
        ws.EntryMissing[i] = i >= entries.size();
        ws.EntryVals[i] = i < entries.size() ? entries[i] : 0;
        ws.EntryText[i] = i < entries.size() ? NumberText(entries[i]) : std::string();
    }
    effectsize::ComputeContext context{options_, prompter_};
    effectsize::Dispatch(kPlans[static_cast<std::size_t>(mergeCode)].format, ws, context);
    if (!ws.IsValid(index_) || !ws.HasSpread[static_cast<std::size_t>(index_)]) return std::nullopt;
    return PointVariance{ws.Es(1, index_), ws.Es(3, index_)};
}

}  // namespace synthara::analysis
