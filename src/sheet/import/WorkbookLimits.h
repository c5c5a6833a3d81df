#pragma once
// What the import takes from a workbook (.xlsx, .xls) at most. A workbook is
// packed, and a few bytes of it can claim a huge sheet, so every reader holds
// to these bounds as it goes instead of trusting what the file says about
// itself. The defaults are beyond any real study table; the tests and the
// fuzzer lower them to reach them quickly.
#include <cstddef>
#include <cstdint>

namespace synthara::sheet {

struct WorkbookLimits {
    // Bytes of the workbook's parts read, unpacked, all parts together (a
    // packed archive can unpack a thousandfold). An .xls file is read whole,
    // so this bounds its size too.
    std::uint64_t unpackedBytes = std::uint64_t{1} << 30;
    // A sheet's greatest size in the spreadsheet programs of today.
    std::size_t rows = 1048576;
    std::size_t columns = 16384;
    // The longest text a cell holds, in characters, as spreadsheets allow.
    std::size_t cellCharacters = 32767;
    // Cells the table keeps, the empty ones before a cell with text counted
    // too: a cell far to the right costs every cell before it on its row.
    std::size_t tableCells = std::size_t{32} << 20;
    // Texts in the workbook's table of shared texts.
    std::size_t sharedTexts = std::size_t{16} << 20;
};

}  // namespace synthara::sheet
