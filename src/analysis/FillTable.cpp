// "Run analyses": how the working table is filled from the sheet.
#include <cstdio>

#include "analysis/Analysis.h"
#include "analysis/ColumnKeys.h"
#include "sheet/grid/Sheet.h"
#include "sheet/rows/SheetCheck.h"

namespace synthara::analysis {

namespace {

using sheet::MetaRow;

// "00001": the entry order as five-digit text.
std::string EntrySeqText(int n) {
    char text[16];
    std::snprintf(text, sizeof text, "%05d", n);
    return text;
}

// The index of the first column marked as the primary index; "" when none.
std::string PrimaryIndex(const sheet::Sheet& sheet) {
    const sheet::Grid& g = sheet.Flex();
    for (int c = 0; c < g.Cols(); ++c) {
        if (g.TextIs(MetaRow::Function, c, "Display") && g.TextIs(MetaRow::Attribute, c, "Point") &&
            g.TextIs(MetaRow::DisplayClass, c, "Primary"))
            return g.Text(MetaRow::IndexName, c);
    }
    return {};
}

// A copy of the grid whose columns have room for the total's summary block,
// so that adding it later moves no cells.
void CopyGrid(const sheet::Grid& from, sheet::Grid& to) {
    to.Clear();
    to.SetFixedRows(from.FixedRows());
    to.SetFixedCols(from.FixedCols());
    to.SetDefaultRowHeight(from.RowHeight(-1));
    to.SetCols(from.Cols());
    for (int c = 0; c < from.Cols(); ++c) {
        const sheet::Column& source = from.Col(c);
        sheet::Column& column = to.Col(c);
        column.key = source.key;
        column.width = source.width;
        column.hidden = source.hidden;
        column.alignment = source.alignment;
        column.numberFormat = source.numberFormat;
        column.cells = source.cells;
        column.back = source.back;
        column.dataBack = source.dataBack;
        column.dataBackEnd = source.dataBackEnd;
        column.shade = source.shade;
        column.dataWritten = source.dataWritten;
    }
    to.SetRows(from.Rows());
    for (int r = 0; r < from.Rows(); ++r) {
        if (from.RowHidden(r)) to.SetRowHidden(r, true);
        if (from.RowHeight(r) != from.RowHeight(-1)) to.SetRowHeight(r, from.RowHeight(r));
    }
}

}  // namespace

void Analysis::FillFromSheet(sheet::Sheet& sheet) {
    const int first = WorkingTable::FirstDataRow;
    if (const int seq = sheet.EntrySeqCol(); seq >= 0) {
        const int last = sheet.GetLastRow();
        for (int r = first; r < sheet.Flex().Rows(); ++r)
            sheet.ClearCell(r, seq);
        for (int r = first; r <= last; ++r)
            sheet.SetText(r, seq, EntrySeqText(r - first + 1));
    }
    if (DisplayIndex.empty()) DisplayIndex = PrimaryIndex(sheet);

    // The whole sheet in one copy: every view of the analysis reads the
    // sheet's own columns (populations, moderators, counts) from here.
    vs = WorkingTable();
    CopyGrid(sheet.Flex(), vs.grid);
    sheet::Grid& g = vs.grid;
    for (int r = 1; r < g.FixedRows() && r < g.Rows(); ++r)
        g.SetRowHidden(r, true);
    for (int c = 0; c < g.Cols(); ++c) {
        if (g.TextIs(TableRow::ForestMark, c, "Forest")) {
            g.SetColWidth(c, ForestWidth);
            g.ClearCell(MetaRow::ColumnHeader, c);
        }
        if (g.TextIs(MetaRow::VarName, c, Key::OriginalRow))
            vs.SetKey(c, std::string(Key::OriginalRow));
        else if (g.TextIs(MetaRow::VarName, c, Key::ValidRow))
            vs.SetKey(c, std::string(Key::ValidRow));
    }

    // Bookkeeping columns live in the working table only, never in the sheet.
    for (std::string_view key : BookkeepingKeys)
        vs.Ensure(key, key, "");

    ColRef original = vs.Ref(Key::OriginalRow);
    const sheet::Cell word = sheet::Cell::FromText(std::string(Word::Original));
    for (int r = first; r < g.Rows(); ++r)
        original.Assign(r, word);

    IndexLabel = "Effect measure:  " + DisplayIndex;
    computed_ = false;
}

bool Analysis::SetConfidenceLevel(std::string_view level) {
    const std::optional<double> fraction = ParseConfidenceLevel(level);
    if (!fraction) return false;
    CILevel = *fraction;
    return true;
}

ComputeStatus RunAnalyses(sheet::Sheet& sheet, Analysis& analysis) {
    // Nothing of the sheet reaches the working table before it is proved
    // usable: a duplicate row or a row without a study name would be merged
    // or grouped as if it were sound.
    if (!sheet::CheckData(sheet)) return ComputeStatus::SheetRefused;
    sheet.SynchData();
    analysis.FillFromSheet(sheet);
    return analysis.Compute();
}

}  // namespace synthara::analysis
