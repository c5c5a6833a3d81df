#include "analysis/WorkingTable.h"

#include <cmath>
#include <limits>
#include <string>

namespace synthara::analysis {

namespace {

constexpr double kEmpty = std::numeric_limits<double>::quiet_NaN();

char Fold(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameFolded(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (Fold(a[i]) != Fold(b[i])) return false;
    return true;
}

// "1,2)" after the stem: a run and a model of one digit each.
std::optional<std::pair<int, int>> RunAndModel(std::string_view rest) {
    if (rest.size() != 4 || rest[1] != ',' || rest[3] != ')') return std::nullopt;
    const int run = rest[0] - '0';
    const int model = rest[2] - '0';
    if (run < 1 || run > MaxRuns || model < 1 || model > MaxModels) return std::nullopt;
    return std::pair{run, model};
}

}  // namespace

std::string RunModelKey(Stat stat, int run, int model) {
    std::string key(StatNames[static_cast<std::size_t>(stat)].stem);
    key += std::to_string(run);
    key += ',';
    key += std::to_string(model);
    key += ')';
    return key;
}

std::optional<StatKey> ParseStatKey(std::string_view key) {
    for (int s = 0; s < StatCount; ++s) {
        const std::string_view stem = StatNames[static_cast<std::size_t>(s)].stem;
        if (key.size() <= stem.size() || !SameFolded(key.substr(0, stem.size()), stem)) continue;
        if (const auto rm = RunAndModel(key.substr(stem.size())))
            return StatKey{static_cast<Stat>(s), rm->first, rm->second};
    }
    return std::nullopt;
}

std::string_view HideWord(HideReason reason) {
    switch (reason) {
        case HideReason::None:
            return {};
        case HideReason::MissingData:
            return Word::MissingData;
        case HideReason::NoData:
            return "No Data";
        case HideReason::Combined:
            return Word::Combined;
        case HideReason::ExcludedByUser:
            return "Excluded by user";
        case HideReason::ExcludedBySequence:
            return "Excluded by sequence";
        case HideReason::NotSpecified:
            return "Not specified";
    }
    return {};
}

std::string_view MergeWord(MergeKind kind) {
    switch (kind) {
        case MergeKind::None:
            return {};
        case MergeKind::MiniMeta:
            return "Mini Meta";
        case MergeKind::OneSubgroup:
            return "One subgroup";
        case MergeKind::CollapseCells:
            return "Collapse cells";
        case MergeKind::ReverseAnova:
            return "Reverse anova";
    }
    return {};
}

double StatRef::Value(int row) const {
    if (column_ == nullptr || row < 0 || row >= column_->Size()) return kEmpty;
    return (*column_)[row];
}

double StatRef::Get(int row) const {
    const double value = Value(row);
    return std::isnan(value) ? 0 : value;
}

void WorkingTable::Clear() {
    SetRows(0);
    DropStats();
    texts = TextPool();
    sheetColumns_.clear();
    moderators_.clear();
    moderatorTitles_.clear();
    for (auto& column : counts_)
        column.reset();
    levelPresent = {};
    hasEntrySeq = false;
}

void WorkingTable::SetRows(int rows) {
    rows_ = rows;
    list_.Resize(rows);
    for (Column<double>* column : made_)
        column->Resize(rows);
    for (ColumnBase* column : sheetColumns_)
        column->Resize(rows);
}

void WorkingTable::RebuildRows(const std::vector<int>& source) {
    rows_ = static_cast<int>(source.size());
    list_.Rebuild(source);
    for (Column<double>* column : made_)
        column->Rebuild(source);
    for (ColumnBase* column : sheetColumns_)
        column->Rebuild(source);
}

int WorkingTable::FindModerator(std::string_view title) const {
    for (std::size_t m = 0; m < moderatorTitles_.size(); ++m)
        if (moderatorTitles_[m] == title) return static_cast<int>(m);
    return -1;
}

Column<Code>& WorkingTable::AddModerator(std::string title) {
    moderators_.push_back(std::make_unique<Column<Code>>(rows_, EmptyText));
    moderatorTitles_.push_back(std::move(title));
    sheetColumns_.push_back(moderators_.back().get());
    return *moderators_.back();
}

Column<double>& WorkingTable::EnsureCount(int count) {
    auto& column = counts_[Index(count)];
    if (!column) {
        column = std::make_unique<Column<double>>(rows_, kEmpty);
        sheetColumns_.push_back(column.get());
    }
    return *column;
}

std::size_t WorkingTable::Slot(Stat stat, int run, int model) {
    return (static_cast<std::size_t>(run - 1) * MaxModels + static_cast<std::size_t>(model - 1)) *
               StatCount +
           static_cast<std::size_t>(stat);
}

Column<double>* WorkingTable::Find(Stat stat, int run, int model) {
    if (run < 1 || run > MaxRuns || model < 1 || model > MaxModels) return nullptr;
    return stats_[Slot(stat, run, model)].get();
}

const Column<double>* WorkingTable::Find(Stat stat, int run, int model) const {
    return const_cast<WorkingTable*>(this)->Find(stat, run, model);
}

const Column<double>* WorkingTable::Find(std::string_view key) const {
    const std::optional<StatKey> k = ParseStatKey(key);
    return k ? Find(k->stat, k->run, k->model) : nullptr;
}

Column<double>& WorkingTable::Ensure(Stat stat, int run, int model) {
    auto& column = stats_[Slot(stat, run, model)];
    if (!column) {
        column = std::make_unique<Column<double>>(rows_, kEmpty);
        made_.push_back(column.get());
    }
    return *column;
}

void WorkingTable::DropStats() {
    made_.clear();
    for (auto& column : stats_)
        column.reset();
}

}  // namespace synthara::analysis
