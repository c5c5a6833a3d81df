#include "effectsize/Compute.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "effectsize/ComputeFromCaseControl.h"
#include "effectsize/ComputeFromChiSquare.h"
#include "effectsize/ComputeFromEvents.h"
#include "effectsize/ComputeFromMeans.h"
#include "effectsize/ComputeFromOneGroup.h"
#include "effectsize/ComputeFromPersonYears.h"
#include "effectsize/ComputeFromPeto.h"
#include "effectsize/ComputePoint.h"
#include "effectsize/RolePlan.h"
#include "effectsize/Trail.h"
#include "sheet/catalogue/FormatCatalogue.h"
#include "sheet/grid/Cell.h"

namespace synthara::effectsize {

namespace {

using sheet::Procedure;
using ProcedureFn = void (*)(const sheet::FormatDef&, WorkingSet&, ComputeContext&);

constexpr std::size_t kProcedureCount = static_cast<std::size_t>(Procedure::ComputePointCorr) + 1;

// The family procedures, by the catalogue's procedure of a format. Whether
// each entry was set is kept beside it: a function's address is not a
// constant the compiler may compare under every build's instrumentation.
struct ProcedureTable {
    std::array<ProcedureFn, kProcedureCount> fns{};
    std::array<bool, kProcedureCount> made{};
};
constexpr ProcedureTable MakeProcedureTable() {
    ProcedureTable table;
    auto set = [&table](Procedure procedure, ProcedureFn fn) {
        table.fns[static_cast<std::size_t>(procedure)] = fn;
        table.made[static_cast<std::size_t>(procedure)] = true;
    };
    set(Procedure::ComputeFromEvents, &ComputeFromEvents);
    set(Procedure::ComputeFromEventsCaseControl, &ComputeFromEventsCaseControl);
    set(Procedure::ComputeFromEventsPersonYears, &ComputeFromEventsPersonYears);
    set(Procedure::ComputeFromPeto, &ComputeFromPeto);
    set(Procedure::ComputeFromChiSquare, &ComputeFromChiSquare);
    set(Procedure::ComputeFromEventsOneGroup, &ComputeFromEventsOneGroup);
    set(Procedure::ComputeFromEventsPYOneGroup, &ComputeFromEventsPYOneGroup);
    set(Procedure::ComputeFromMeansOneGroup, &ComputeFromMeansOneGroup);
    set(Procedure::ComputeFromMeans, &ComputeFromMeans);
    set(Procedure::ComputeFromMeansTest, &ComputeFromMeansTest);
    set(Procedure::ComputeFromPairedMeans, &ComputeFromPairedMeans);
    set(Procedure::ComputeFromPairedMeansTest, &ComputeFromPairedMeansTest);
    set(Procedure::ComputeFromPrePostMeans, &ComputeFromPrePostMeans);
    set(Procedure::ComputePointLog, &ComputePointLog);
    set(Procedure::ComputePoint, &ComputePoint);
    set(Procedure::ComputePointTIndep, &ComputePointTIndep);
    set(Procedure::ComputePointTPaired, &ComputePointTPaired);
    set(Procedure::ComputePointCorr, &ComputePointCorr);
    return table;
}
constexpr ProcedureTable kProcedureTable = MakeProcedureTable();
static_assert(std::all_of(kProcedureTable.made.begin() + 1, kProcedureTable.made.end(),
                          [](bool made) { return made; }),
              "a procedure of the catalogue has no function");
constexpr const std::array<ProcedureFn, kProcedureCount>& kProcedures = kProcedureTable.fns;

ProcedureFn ProcedureOf(Procedure procedure) {
    const auto at = static_cast<std::size_t>(procedure);
    return at < kProcedures.size() ? kProcedures[at] : nullptr;
}

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();

constexpr std::string_view kNotFinite = "Cannot be computed: the result is not a finite number";

// A count so small or so large that a formula overflows passes the
// validators; its index must not then read as valid with an infinite or
// undefined number.
void RefuseNonFinite(WorkingSet& ws) {
    for (int i = 1; i <= IndexCount; ++i) {
        if (!ws.IsValid(i)) continue;
        const bool finite =
            std::isfinite(ws.Es(1, i)) &&
            (!ws.HasSpread[At(i)] || (std::isfinite(ws.Es(2, i)) && std::isfinite(ws.Es(3, i))));
        if (finite) continue;
        ws.Es(4, i) = 0.0;
        if (ws.BuildTrails) AddFormula(ws.EsFormula[At(i)], kNotFinite, "T");
    }
}

// The display columns of one index; col[attr] is -1 where the sheet has none.
struct IndexColumns {
    int index = 0;
    std::array<int, 6> col{};
};

std::vector<IndexColumns> CollectDisplayColumns(const sheet::Sheet& sheet) {
    std::vector<IndexColumns> found;
    for (int i = 1; i <= IndexCount; ++i) {
        IndexColumns entry{i, {-1, -1, -1, -1, -1, -1}};
        bool any = false;
        for (int attr = 1; attr <= 5; ++attr) {
            const int col = sheet.DisplayColTable()[At(i)][At(attr)];
            if (col > 0) {
                entry.col[At(attr)] = col;
                any = true;
            }
        }
        if (any) found.push_back(entry);
    }
    return found;
}

void ClearIfSet(sheet::Sheet& sheet, int row, int col) {
    const sheet::Grid& flex = sheet.Flex();
    if (!flex.DataRowsBlank(col) && !flex.IsBlank(row, col)) sheet.ClearCell(row, col);
}

// One row between its computation and the writing of its cells.
struct PendingRow {
    int row = 0;
    bool hasEntry = false;
    std::array<int, MaxRoles> roleCol{};
    std::string labelsFormat;
    WorkingSet ws;
};

// The grid keeps each column's cells together, so results are written for a
// block of rows one column at a time rather than row by row across hundreds
// of columns.
void WriteBlock(sheet::Sheet& sheet, std::vector<PendingRow>& block, std::size_t count,
                const std::vector<IndexColumns>& display) {
    const sheet::Grid& flex = sheet.Flex();
    for (const auto& index : display) {
        const int i = index.index;
        const bool hasPoint = index.col[1] > 0;
        // Most of a sheet's indices are not yielded by a block's rows, and
        // their columns hold nothing to clear: nothing to visit row by row.
        bool anyValid = false;
        for (std::size_t k = 0; k < count && !anyValid; ++k)
            anyValid = block[k].hasEntry && block[k].ws.IsValid(i);
        bool anyToClear = false;
        for (int attr = 1; attr <= 5 && !anyToClear; ++attr)
            anyToClear = index.col[At(attr)] > 0 && !flex.DataRowsBlank(index.col[At(attr)]);
        if (!anyValid && !anyToClear) continue;
        for (int attr = 1; attr <= 4; ++attr) {
            const int col = index.col[At(attr)];
            if (col <= 0) continue;
            for (std::size_t k = 0; k < count; ++k) {
                const PendingRow& p = block[k];
                if (p.hasEntry && !hasPoint) continue;
                // An attribute the procedure never set (the ratios have a
                // point only) leaves its cell empty.
                const double value = p.hasEntry && p.ws.IsValid(i) ? p.ws.Es(attr, i) : kNoValue;
                if (value == value)
                    sheet.SetNumber(p.row, col, value);
                else
                    ClearIfSet(sheet, p.row, col);
            }
        }
        // A trail is built when it is read (FormulaText), never kept: the
        // cell stays empty, and text left by an older computation goes.
        const int formulaCol = index.col[5];
        if (formulaCol <= 0) continue;
        for (std::size_t k = 0; k < count; ++k)
            if (!block[k].hasEntry || hasPoint) ClearIfSet(sheet, block[k].row, formulaCol);
    }
}

// The row's error text and the colours of its entry cells. A row without
// entries keeps both as they were.
void WriteEntryState(sheet::Sheet& sheet, int errorCol, PendingRow& p) {
    const sheet::Grid& flex = sheet.Flex();
    WorkingSet& ws = p.ws;
    for (std::size_t role = 0; role < At(MaxRoles); ++role)
        if (ws.EntryMissing[role]) ws.EntryMarks[role].clear();
    if (errorCol >= 0) {
        if (ws.RowErrors.empty())
            ClearIfSet(sheet, p.row, errorCol);
        else if (!flex.TextIs(p.row, errorCol, ws.RowErrors))
            sheet.SetText(p.row, errorCol, ws.RowErrors);
    }
    // The entered text stays in its cell as typed; only the colour changes.
    for (std::size_t role = 0; role < At(MaxRoles); ++role) {
        const int col = p.roleCol[role];
        if (col < 0) continue;
        const sheet::BackColor wanted =
            ws.EntryMarks[role].empty() ? sheet::kNoBackColor : sheet::kRed;
        if (flex.CellBackColor(p.row, col) != wanted) sheet.SetCellBackColor(p.row, col, wanted);
    }
}

// Reads and computes one row into its slot of the block.
void ComputeRow(sheet::Sheet& sheet, int row, int formatCol, RolePlan& plan, PendingRow& p,
                ComputeContext& context) {
    const sheet::Grid& flex = sheet.Flex();
    p.row = row;
    p.hasEntry = false;
    p.ws.Reset();
    const std::string_view format =
        formatCol >= 0 ? flex.At(row, formatCol).TextView() : std::string_view();
    if (format.empty()) return;
    if (!plan.Fits(sheet, format)) {
        // The sheet's own lookup says when a role's columns are not as they should be.
        sheet.FindESCols(format);
        plan = MakePlan(sheet, format, {sheet.EntryColIndex(), sheet.EntryColCount()});
    }
    p.roleCol = plan.col;
    if (!ReadEntries(flex, sheet.Separators, row, p.roleCol, p.ws)) return;
    p.hasEntry = true;
    if (p.labelsFormat != plan.format) {
        p.labelsFormat = plan.format;
        p.ws.EntryLabels = plan.labels;
    }
    RunProcedure(plan.definition, p.ws, context);
}

}  // namespace

bool ReadEntries(const sheet::Grid& flex, const sheet::NumberSeparators& separators, int row,
                 const std::array<int, MaxRoles>& roleCol, WorkingSet& ws) {
    bool any = false;
    for (std::size_t role = 0; role < At(MaxRoles); ++role) {
        ws.EntryVals[role] = 0;
        ws.EntryMissing[role] = true;
        ws.EntryText[role].clear();
        if (roleCol[role] < 0) continue;
        const sheet::Cell& cell = flex.At(row, roleCol[role]);
        double value = 0;
        bool numeric = false;
        if (cell.IsNumber()) {
            value = cell.Number();
            numeric = true;
            ws.EntryText[role] = cell.Text();
        } else if (cell.IsText()) {
            const std::string_view text = cell.TextView();
            ws.EntryText[role].assign(text);
            numeric = !text.empty() && sheet::ParseTypedNumber(text, separators, value);
        }
        if (numeric) {
            ws.EntryVals[role] = value;
            ws.EntryMissing[role] = false;
            any = true;
        }
    }
    return any;
}

void RunProcedure(const sheet::FormatDef* format, WorkingSet& ws, ComputeContext& context) {
    if (format == nullptr) return;
    if (ProcedureFn procedure = ProcedureOf(format->procedure)) {
        procedure(*format, ws, context);
        RefuseNonFinite(ws);
    }
}

bool ComputesFormat(std::string_view format) {
    return ProcedureOf(sheet::ProcedureFor(format)) != nullptr;
}

void Dispatch(std::string_view format, WorkingSet& ws, ComputeContext& context) {
    RunProcedure(sheet::FindComputedFormat(format), ws, context);
}

void Compute(sheet::Sheet& sheet, int& firstRow, int& lastRow, ComputeContext& context) {
    const sheet::Grid& flex = sheet.Flex();
    if (firstRow == 0) firstRow = flex.FixedRows();
    if (lastRow == 0) lastRow = flex.Rows() - 1;
    sheet.FindCols();
    sheet.FindFormats(firstRow, lastRow);
    if (firstRow > lastRow) return;

    const int first = std::max(firstRow, flex.FixedRows());
    const int last = std::min(lastRow, flex.Rows() - 1);
    const std::vector<IndexColumns> display = CollectDisplayColumns(sheet);
    const int formatCol = sheet.FormatCol();
    const int errorCol = sheet.ErrorCol();

    constexpr std::size_t kBlockRows = 64;
    std::vector<PendingRow> block(kBlockRows);
    for (PendingRow& p : block)
        p.ws.BuildTrails = false;
    RolePlan plan;
    for (int blockStart = first; blockStart <= last; blockStart += static_cast<int>(kBlockRows)) {
        const std::size_t count =
            std::min(kBlockRows, static_cast<std::size_t>(last - blockStart + 1));
        for (std::size_t k = 0; k < count; ++k)
            ComputeRow(sheet, blockStart + static_cast<int>(k), formatCol, plan, block[k], context);
        WriteBlock(sheet, block, count, display);
        for (std::size_t k = 0; k < count; ++k)
            if (block[k].hasEntry) WriteEntryState(sheet, errorCol, block[k]);
    }
}

void RestoreVals(double& A, double& B, double& C, double& D, const Table2x2& cells, bool addFudge,
                 bool& added, bool paired) {
    A = cells[1][1];
    B = cells[1][2];
    C = cells[2][1];
    D = cells[2][2];
    added = false;
    // The same 0.5 serves paired and independent tables alike.
    const double fudge = paired ? 0.5 : 0.5;
    if (addFudge && A * B * C * D == 0) {
        A += fudge;
        B += fudge;
        C += fudge;
        D += fudge;
        added = true;
    }
}

}  // namespace synthara::effectsize
