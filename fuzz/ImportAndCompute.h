#pragma once
// What the fuzz targets of the readers do with a table read: import it with
// a fixed default format and compute what imported.
#include "effectsize/Compute.h"
#include "ports/Prompter.h"
#include "sheet/import/ImportTable.h"

namespace synthara::fuzz {

inline void ImportAndCompute(const sheet::DelimitedTable& table, const char* fileName) {
    // Large tables only repeat what small ones find, slowly.
    if (table.rows.size() > 64) return;
    ports::SilentPrompter prompter;
    sheet::Sheet sheet(prompter);
    const auto imported =
        sheet::ImportTable(sheet, table, "Events and sample size in each group", fileName);
    if (!imported.ok || imported.dataRows == 0) return;
    effectsize::ComputeOptions options;
    effectsize::ComputeContext context{options, prompter};
    int first = sheet::FixedRowCount;
    int last = sheet::FixedRowCount + imported.dataRows - 1;
    effectsize::Compute(sheet, first, last, context);
}

}  // namespace synthara::fuzz
