// Any bytes as a delimited file: read, import with a fixed default format,
// and compute what imported. Nothing may crash, hang or throw.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "effectsize/Compute.h"
#include "ports/Prompter.h"
#include "sheet/import/DelimitedText.h"
#include "sheet/import/ImportTable.h"

using namespace synthara;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto read = sheet::ReadDelimitedText(bytes, ',');
    // Large tables only repeat what small ones find, slowly.
    if (!read.ok || read.table.rows.size() > 64) return 0;
    ports::SilentPrompter prompter;
    sheet::Sheet sheet(prompter);
    const auto imported =
        sheet::ImportTable(sheet, read.table, "Events and sample size in each group", "fuzz.csv");
    if (!imported.ok || imported.dataRows == 0) return 0;
    effectsize::ComputeOptions options;
    effectsize::ComputeContext context{options, prompter};
    int first = sheet::FixedRowCount;
    int last = sheet::FixedRowCount + imported.dataRows - 1;
    effectsize::Compute(sheet, first, last, context);
    return 0;
}
