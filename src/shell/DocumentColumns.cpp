// The column properties commands on the open project: each checks, changes
// the sheet through the column operations and settles what changed.
#include <string>
#include <utility>
#include <vector>

#include "shell/Document.h"

namespace synthara::shell {

bool Document::SetColumnProperties(int col, const ColumnProperties& properties) {
    if (auto refusal = CheckColumnProperties(sheet_, col, properties)) {
        prompter_.Message(*refusal);
        return false;
    }
    Settled([&] { ApplyColumnProperties(sheet_, col, properties); });
    return true;
}

bool Document::ShowColumns(const std::vector<std::pair<int, bool>>& shown) {
    const auto refusal = Settled([&] { return SetColumnsShown(sheet_, shown); });
    if (refusal) prompter_.Message(*refusal);
    return !refusal;
}

bool Document::DropDown(int col) {
    const auto refusal = Settled([&] { return MakeDropDown(sheet_, col); });
    if (refusal) prompter_.Message(*refusal);
    return !refusal;
}

void Document::SetDecimals(const std::vector<int>& cols, int decimals) {
    Settled([&] { shell::SetDecimals(sheet_, cols, decimals); });
}

void Document::StepDecimals(const std::vector<int>& cols, int step) {
    Settled([&] { shell::StepDecimals(sheet_, cols, step); });
}

void Document::AutoFormat() {
    Settled([&] { shell::AutoFormat(sheet_); });
}

void Document::AutoSize(const std::vector<int>& cols, const ports::TextMeasurer& measurer,
                        const ports::FontSpec& font) {
    Settled([&] {
        shell::AutoSize(sheet_, cols, measurer, font,
                        [this](int row, int col) { return DisplayText(row, col); });
    });
}

}  // namespace synthara::shell
