#include "shell/RowFormulas.h"

#include "effectsize/RowResult.h"
#include "shell/Document.h"
#include "shell/IndexSelection.h"

namespace synthara::shell {

namespace {

// Trails end their lines in CR LF, as the sheet's cells keep them.
std::string WithLineFeeds(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text)
        if (c != '\r') out += c;
    return out;
}

}  // namespace

std::string RowFormulas::Text() const {
    std::string text = study.empty() ? std::string() : "Study: " + study + "\n";
    text += "Format: " + format + "\n";
    if (!errors.empty()) text += WithLineFeeds(errors) + "\n";
    for (const IndexFormula& formula : indices) {
        text += "\n" + formula.name + "\n" + formula.trail;
        if (!formula.trail.empty() && formula.trail.back() != '\n') text += "\n";
    }
    return text;
}

ports::Box CannotOpenForEmptyRow() {
    return {"Cannot open dialog box",
            {"Please enter data for this row and then try again      "},
            ports::Icon::Information};
}

std::optional<RowFormulas> ReadRowFormulas(const Document& document, int row, int col) {
    const int first = sheet::FixedRowCount;
    if (row < first || row >= first + document.DataRows()) return std::nullopt;
    // The row's boxes were shown when it was computed; this reading is quiet.
    ports::SilentPrompter silent;
    const sheet::Sheet& sheet = document.Sheet();
    const effectsize::RowResult result =
        effectsize::EvaluateRow(sheet, row, document.Options(), silent, effectsize::Trails::On);
    if (!result.hasEntry) return std::nullopt;

    RowFormulas formulas;
    formulas.study = document.StudyName(row - first);
    formulas.format = result.format;
    formulas.errors = result.errors;
    const int wanted = document.TrailIndex(col);
    for (const effectsize::IndexResult& index : result.indices) {
        if (!IsEffectSizeIndex(index.index)) continue;
        if (index.index == wanted) formulas.current = static_cast<int>(formulas.indices.size());
        formulas.indices.push_back({index.index,
                                    sheet.IndexNames()[static_cast<std::size_t>(index.index)],
                                    index.valid, WithLineFeeds(index.trail)});
    }
    return formulas;
}

}  // namespace synthara::shell
