// Which rows enter a run: the user's exclusions and the rows without data.
#include <vector>

#include "analysis/Analysis.h"

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
    std::vector<std::uint8_t> out;  // by text code: 1 where the value is left out
    const auto excludeIn = [&](const Column<Code>& col, const std::vector<std::string>& values) {
        if (values.empty()) return;
        const std::vector<Code> codes = CodesOf(values);
        out.assign(vs.texts.Size(), 0);
        for (const Code c : codes)
            out[c] = 1;
        for (int r = 0; r < vs.Rows(); ++r) {
            if (out[col[r]] == 0) continue;
            vs.hidden[r] = 1;
            vs.hide[r] = HideReason::ExcludedByUser;
        }
    };
    for (int level = 1; level <= SelectionLevels; ++level) {
        const auto at = static_cast<std::size_t>(level - 1);
        if (vs.levelPresent[at]) excludeIn(vs.population[at], selection.Level(level).excluded);
    }
    // Moderator values compare as the identifying ones do: empty cells are
    // a value that may be left out too.
    for (const ModeratorFilter& f : selection.moderators) {
        if (const int m = vs.FindModerator(f.column); m >= 0)
            excludeIn(vs.Moderator(m), f.excluded);
    }
}

}  // namespace synthara::analysis
