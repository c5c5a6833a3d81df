#include "analysis/IndexChoice.h"

#include <array>
#include <string>

#include "analysis/Analysis.h"
#include "sheet/grid/Sheet.h"

namespace synthara::analysis {

namespace {

struct IndexRow {
    std::string_view display;
    IndexMapping mapping;
};

// Ratios are computed on logs, correlations on Fisher's Z, event rates on
// logits; nothing is transformed again until display.
constexpr std::array<IndexRow, 30> kIndexTable = {{
    {"Event rate", {"Logit event rate", Transform::Logit, false}},
    {"Logit event rate", {"Logit event rate", Transform::None, false}},
    {"Mean", {"Mean", Transform::None, false}},
    {"Log odds ratio", {"Log odds ratio", Transform::None, false}},
    {"Log Peto odds ratio", {"Log Peto odds ratio", Transform::None, false}},
    {"Log risk ratio", {"Log risk ratio", Transform::None, false}},
    {"Risk difference", {"Risk difference", Transform::None, false}},
    {"Std diff in means", {"Std diff in means", Transform::None, false}},
    {"Hedges's g", {"Hedges's g", Transform::None, false}},
    {"Difference in means", {"Difference in means", Transform::None, false}},
    {"Std Paired Difference", {"Std Paired Difference", Transform::None, false}},
    {"Fisher's Z", {"Fisher's Z", Transform::None, false}},
    {"Log rate ratio", {"Log rate ratio", Transform::None, false}},
    {"Rate difference", {"Rate difference", Transform::None, false}},
    {"Log hazard ratio", {"Log hazard ratio", Transform::None, false}},
    {"Point estimate", {"Point estimate", Transform::None, false}},
    {"Point (log)", {"Point (log)", Transform::None, false}},
    {"Point (raw)", {"Point (raw)", Transform::None, false}},
    {"Rate", {"Rate", Transform::None, false}},
    {"Odds ratio", {"Log odds ratio", Transform::Log, false}},
    {"Peto odds ratio", {"Log Peto odds ratio", Transform::Log, false}},
    {"Risk ratio", {"Log risk ratio", Transform::Log, false}},
    {"Rate ratio", {"Log rate ratio", Transform::Log, false}},
    {"Hazard ratio", {"Log hazard ratio", Transform::Log, false}},
    {"Correlation", {"Fisher's Z", Transform::Fisher, false}},
    {"MH log odds ratio", {"MH log odds ratio", Transform::None, true}},
    {"MH log risk ratio", {"MH log risk ratio", Transform::None, true}},
    {"MH risk difference", {"MH risk difference", Transform::None, true}},
    {"MH odds ratio", {"MH log odds ratio", Transform::Log, true}},
    {"MH risk ratio", {"MH log risk ratio", Transform::Log, true}},
}};

}  // namespace

IndexColumns FindIndexColumns(const sheet::Grid& g, std::string_view computationIndex) {
    using sheet::MetaRow;
    IndexColumns cols;
    for (int c = 0; c < g.Cols(); ++c) {
        if (!g.TextIs(MetaRow::Function, c, "Display") ||
            !g.TextIs(MetaRow::IndexName, c, computationIndex))
            continue;
        int* col = nullptr;
        if (g.TextIs(MetaRow::Attribute, c, "Point"))
            col = &cols.point;
        else if (g.TextIs(MetaRow::Attribute, c, "StdErr"))
            col = &cols.se;
        else if (g.TextIs(MetaRow::Attribute, c, "Variance"))
            col = &cols.variance;
        if (col != nullptr && *col < 0) *col = c;
    }
    return cols;
}

std::optional<IndexMapping> MapIndex(std::string_view displayIndex) {
    for (const IndexRow& row : kIndexTable) {
        if (row.display == displayIndex) return row.mapping;
    }
    return std::nullopt;
}

ComputeStatus Analysis::FindIndex() {
    const std::optional<IndexMapping> mapping = MapIndex(DisplayIndex);
    if (!mapping) {
        prompter_.Message(
            {"Oops!",
             {"The effect size index \"" + DisplayIndex + "\" is not one that can be analyzed."},
             ports::Icon::Warning});
        return ComputeStatus::UnknownIndex;
    }
    ComputationIndex = std::string(mapping->computation);
    DisplayTransform = mapping->transform;
    UseMH = mapping->useMH;

    if (sheet_ == nullptr) return ComputeStatus::NoIndexColumns;
    const IndexColumns cols = FindIndexColumns(sheet_->Flex(), ComputationIndex);
    if (!(cols == sources_)) {
        sources_ = cols;
        LoadSources();
    }
    const bool found = cols.point >= 0 || cols.se >= 0 || cols.variance >= 0;
    return found ? ComputeStatus::Done : ComputeStatus::NoIndexColumns;
}

}  // namespace synthara::analysis
