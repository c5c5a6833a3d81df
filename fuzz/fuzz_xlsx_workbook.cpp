// Any bytes as an .xlsx workbook: read its first sheet, import it with a
// fixed default format, and compute what imported. Nothing may crash, hang,
// throw or pass the limits. An input that starts with "<" is taken as the
// sheet's XML and packed into a sound workbook first, whose shared texts are
// the titles of a table of events: the archive's checksums would otherwise
// turn away nearly every change the fuzzer makes to the XML.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ImportAndCompute.h"
#include "sheet/import/XlsxWorkbook.h"
#include "support/WorkbookMaker.h"

using namespace synthara;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    // Small bounds keep each run quick; the reading code is the same.
    sheet::WorkbookRequest request;
    request.limits.unpackedBytes = 8 << 20;
    request.limits.tableCells = 1 << 16;
    request.limits.sharedTexts = 1 << 12;
    request.limits.cellCharacters = 1 << 10;
    std::string packed;
    if (size > 0 && data[0] == '<') {
        auto parts = testsupport::XlsxPartsOf(
            {{"Sheet1", ""}},
            {"Study name", "Group-A Events", "Group-A Total N", "Group-B Events", "Group-B Total N",
             "Data format", "Events and sample size in each group"});
        parts["xl/worksheets/sheet1.xml"] = std::string(bytes);
        packed = testsupport::Zipped(parts);
    }
    const auto read =
        sheet::ReadXlsxBytes(packed.empty() ? bytes : std::string_view(packed), request);
    if (!read.ok) {
        if (read.message.empty()) __builtin_trap();
        return 0;
    }
    std::size_t cells = 0;
    for (const auto& row : read.table.rows)
        cells += row.size();
    if (cells > request.limits.tableCells || read.table.places != sheet::PlaceNames::Cells)
        __builtin_trap();
    fuzz::ImportAndCompute(read.table, "fuzz.xlsx");
    return 0;
}
