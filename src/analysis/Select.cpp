// Which rows enter a run: the user's exclusions and the rows without data.
#include <vector>

#include "analysis/Analysis.h"
#include "sheet/grid/Sheet.h"

namespace synthara::analysis {

std::vector<Code> Analysis::CodesOf(const std::vector<std::string>& texts) {
    std::vector<Code> codes;
    codes.reserve(texts.size());
    for (const std::string& t : texts)
        codes.push_back(vs.texts.Intern(t));
    return codes;
}

// Every row goes in again; the user's exclusions go out, then the rows
// without a point or a variance. A row out for two reasons shows the last.
void Analysis::RemoveStudies() {
    vs.hide.Fill(HideReason::None);
    ExcludeValues();
    constexpr std::uint8_t needed = Source::Point | Source::Variance;
    for (int r = 0; r < vs.Rows(); ++r) {
        if ((vs.sources[r] & needed) != needed) {
            vs.hidden[r] = 1;
            vs.hide[r] = HideReason::MissingData;
        }
    }
}

void Analysis::ExcludeValues() {
    const auto exclude = [&](int r) {
        vs.hidden[r] = 1;
        vs.hide[r] = HideReason::ExcludedByUser;
    };
    std::vector<std::uint8_t> out;  // by text code: 1 where the value is left out
    for (int level = 1; level <= SelectionLevels; ++level) {
        const auto at = static_cast<std::size_t>(level - 1);
        const std::vector<std::string>& excluded = selection.Level(level).excluded;
        if (!vs.levelPresent[at] || excluded.empty()) continue;
        const std::vector<Code> codes = CodesOf(excluded);
        out.assign(vs.texts.Size(), 0);
        for (const Code c : codes)
            out[c] = 1;
        const Column<Code>& col = vs.population[at];
        for (int r = 0; r < vs.Rows(); ++r)
            if (out[col[r]] != 0) exclude(r);
    }
    if (sheet_ == nullptr) return;
    const sheet::Grid& g = sheet_->Flex();
    for (const ModeratorFilter& f : selection.moderators) {
        const int col = ModeratorColumn(g, f.column);
        if (col < 0 || f.excluded.empty()) continue;
        for (int r = 0; r < vs.Rows(); ++r) {
            const sheet::Cell& cell = g.At(vs.sheetRow[r], col);
            const std::string text = cell.IsText() ? std::string(cell.TextView()) : cell.Text();
            for (const std::string& value : f.excluded) {
                if (value == text) {
                    exclude(r);
                    break;
                }
            }
        }
    }
}

}  // namespace synthara::analysis
