#include "shell/RowEntries.h"

#include <algorithm>

#include "effectsize/RolePlan.h"
#include "effectsize/RowResult.h"
#include "sheet/catalogue/FormatCatalogue.h"
#include "shell/Document.h"

namespace synthara::shell {

namespace {

// The words of a role's column title, for a role the sheet has no column for.
std::string RoleWords(const sheet::RoleDef& role) {
    std::string words;
    for (std::string_view piece : role.labels) {
        if (piece.empty()) continue;
        if (!words.empty()) words += ' ';
        words += piece;
    }
    return words.empty() ? std::string(role.name) : words;
}

}  // namespace

int RowEntries::Entered() const {
    return static_cast<int>(
        std::count_if(roles.begin(), roles.end(), [](const EntryRole& r) { return !r.missing; }));
}

std::optional<RowEntries> ReadRowEntries(const Document& document, int row) {
    const int first = sheet::FixedRowCount;
    if (row < first || row >= first + document.DataRows()) return std::nullopt;
    const std::string format = document.RowFormat(row - first);
    const sheet::FormatDef* definition = sheet::FindFormatByAnyName(format);
    if (format.empty() || definition == nullptr) return std::nullopt;

    // The row's boxes were shown when it was computed; this reading is quiet.
    ports::SilentPrompter silent;
    const sheet::Sheet& sheet = document.Sheet();
    const effectsize::RowResult result =
        effectsize::EvaluateRow(sheet, row, document.Options(), silent, effectsize::Trails::Off);
    const effectsize::RolePlan plan = effectsize::PlanFor(sheet, definition->longName);

    RowEntries entries;
    entries.study = document.StudyName(row - first);
    entries.format = std::string(definition->longName);
    entries.errors = result.errors;
    for (std::size_t role = 0; role < definition->roles.size(); ++role) {
        EntryRole entry;
        entry.col = plan.col[role];
        entry.label = plan.labels[role];
        if (entry.label.empty()) entry.label = RoleWords(definition->roles[role]);
        if (entry.col >= 0) {
            entry.value = sheet.Flex().Text(row, entry.col);
            double number = 0;
            entry.missing = !sheet::ParseTypedNumber(entry.value, sheet.Separators, number);
        }
        entry.fault = result.marks[role];
        entries.roles.push_back(std::move(entry));
    }
    return entries;
}

}  // namespace synthara::shell
