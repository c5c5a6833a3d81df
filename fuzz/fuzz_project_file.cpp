// Any bytes as a project file. A damaged or hostile archive must fail with a
// reason and leave the open sheet exactly as it was; one that loads must be
// usable by the sheet's commands and write and read back to the same cells.
// An input that starts with "{" is taken as the member's text and packed
// into a sound archive first: the archive's checksum would otherwise turn
// away nearly every change the fuzzer makes to the text. Archives are
// inflated as they are read, within a bound the fuzzer's small limits reach.
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ports/Prompter.h"
#include "sheet/files/GridArchive.h"
#include "sheet/files/ProjectFile.h"
#include "sheet/rows/SheetCheck.h"
#include "sheet/rows/StudyRows.h"

using namespace synthara::sheet;

namespace {

bool SameCells(const Grid& a, const Grid& b) {
    if (a.Rows() != b.Rows() || a.Cols() != b.Cols() || a.FixedRows() != b.FixedRows() ||
        a.FixedCols() != b.FixedCols())
        return false;
    for (int c = 0; c < a.Cols(); ++c) {
        if (a.Col(c).key != b.Col(c).key || a.Col(c).width != b.Col(c).width) return false;
        for (int r = 0; r < a.Rows(); ++r) {
            const Cell& x = a.At(r, c);
            const Cell& y = b.At(r, c);
            if (x.IsNumber() != y.IsNumber()) return false;
            if (x.IsNumber()) {
                const bool same = std::bit_cast<std::uint64_t>(x.Number()) ==
                                  std::bit_cast<std::uint64_t>(y.Number());
                if (!same && !(std::isnan(x.Number()) && std::isnan(y.Number()))) return false;
            } else if (x.TextView() != y.TextView()) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    synthara::ports::SilentPrompter prompter;
    Sheet sheet(prompter);
    sheet.InitializeGrid();
    sheet.SetText(FixedRowCount, 12, "the open sheet");
    const Grid before = sheet.Flex();

    // Small bounds keep each run quick; the reading code is the same.
    ReadLimits limits;
    limits.maxMemberBytes = 1 << 20;
    limits.maxPages = 1 << 12;
    limits.maxRows = 1 << 16;
    limits.maxCols = 1 << 10;
    std::vector<std::uint8_t> packed;
    std::span<const std::uint8_t> archive(data, size);
    if (size > 0 && data[0] == '{') {
        const std::string_view text(reinterpret_cast<const char*>(data), size);
        if (!PackMember("C01fuzz.", text, packed).ok) __builtin_trap();
        archive = packed;
    }
    const FileResult result = LoadProjectArchive(sheet, archive, limits);
    // Read from text in memory or inflated as it streams, a member is the same sheet.
    if (!packed.empty() && size <= limits.maxMemberBytes) {
        Grid direct;
        const std::string_view text(reinterpret_cast<const char*>(data), size);
        if (DecodeGrid(text, direct, limits).ok != result.ok) __builtin_trap();
    }
    if (!result.ok) {
        if (result.message.empty() || !SameCells(before, sheet.Flex())) __builtin_trap();
        return 0;
    }

    Grid back;
    if (!DecodeGrid(EncodeGrid(sheet.Flex()), back).ok || !SameCells(sheet.Flex(), back))
        __builtin_trap();
    CheckData(sheet);
    MergeRows(sheet, true);
    return 0;
}
