#pragma once
// A row's results as data: each index with its numbers and trail, the row's
// errors and the cells at fault. The sheet's display columns, the command
// line and the views only format these.
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "effectsize/RolePlan.h"
#include "effectsize/WorkingSet.h"
#include "ports/Prompter.h"
#include "sheet/grid/Sheet.h"

namespace synthara::effectsize {

struct IndexResult {
    int index = 0;
    bool valid = false;
    // Absent when the index is invalid, and where it has no such number (the
    // ratios have a point only).
    std::optional<double> point;
    std::optional<double> stdErr;
    std::optional<double> variance;
    std::string trail;  // lines end in CR LF
};

struct RowResult {
    std::string format;                            // the row's format name; "" when it has none
    const sheet::FormatDef* definition = nullptr;  // nullptr when no format of that name is known
    bool hasEntry = false;                    // false: no role holds a number, nothing computed
    std::string errors;                       // the row's error text (RowErrors)
    std::array<std::string, MaxRoles> marks;  // per role, the fault its cell is red for
    // Every index the procedure made valid or explained, by index number.
    std::vector<IndexResult> indices;

    const IndexResult* Find(int index) const;
};

// The results a working set holds after its procedure ran. A role that is
// missing is never marked.
RowResult ResultOf(const WorkingSet& ws);

// Whether an evaluation writes the indices' trails; numbers only is several
// times faster.
enum class Trails { Off, On };

// Reads data rows of the sheet by role and computes them, changing nothing in
// the sheet: Compute writes the same results into the rows' cells. Where the
// roles stand is looked up once for a run of rows of one format.
class RowEvaluator {
  public:
    RowEvaluator(const sheet::Sheet& sheet, const ComputeOptions& options,
                 ports::Prompter& prompter, Trails trails = Trails::On);
    RowResult Evaluate(int row);

  private:
    const sheet::Sheet& sheet_;
    const ComputeOptions& options_;
    ports::Prompter& prompter_;
    Trails trails_;
    RolePlan plan_;
};

// One row, as RowEvaluator computes it.
RowResult EvaluateRow(const sheet::Sheet& sheet, int row, const ComputeOptions& options,
                      ports::Prompter& prompter, Trails trails = Trails::On);

// The text of an index's "Formula" cell, built from the row's entries as the
// computation left it: the index's trail, or the row's errors where the
// index failed because of them; "" for a row without entries. Computing a
// sheet keeps no trail text, so screens, files and the clipboard read it here.
std::string FormulaText(const sheet::Sheet& sheet, int row, int index,
                        const ComputeOptions& options, ports::Prompter& prompter);

// What computed rows show, read from their cells without computing again:
// the format, the errors and the valid indices that have "Point" and "Valid"
// columns with the numbers their columns hold; no trails and no marks. The
// columns are looked up once for all rows read.
class ShownReader {
  public:
    explicit ShownReader(const sheet::Sheet& sheet);
    RowResult Read(int row);

  private:
    struct Columns {
        int index = 0;
        int point = -1, stdErr = -1, variance = -1, valid = -1;
    };
    const sheet::Sheet& sheet_;
    std::vector<Columns> shown_;
    std::string lastFormat_;
    const sheet::FormatDef* lastDefinition_ = nullptr;
};

// Keeps what the sheet shows of a row's results: the valid indices that have
// "Point" and "Valid" columns, each number only where its column exists.
void KeepShownIndices(const sheet::Sheet& sheet, RowResult& result);

}  // namespace synthara::effectsize
