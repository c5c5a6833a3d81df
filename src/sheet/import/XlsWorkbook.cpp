#include "sheet/import/XlsWorkbook.h"

#include <cstdint>
#include <filesystem>
#include <system_error>

#include <freexl.h>

namespace synthara::sheet {
namespace {

class Handle {
  public:
    Handle() = default;
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    // FreeXL asks to be closed even after a failed open.
    ~Handle() { freexl_close(handle_); }
    const void** Out() { return &handle_; }
    const void* Get() const { return handle_; }

  private:
    const void* handle_ = nullptr;
};

std::string OpenFault(int code) {
    switch (code) {
        case FREEXL_FILE_NOT_FOUND:
            return "the file cannot be opened";
        case FREEXL_INSUFFICIENT_MEMORY:
            return "there is not enough memory to read the workbook";
        case FREEXL_INVALID_CFBF_HEADER:
            return "it is not an .xls workbook (a newer workbook is read as .xlsx)";
        default:
            return "the workbook is damaged, or it is in a form of .xls that cannot be read";
    }
}

// The cell's text as the user sees it: numbers in their shortest form, dates
// and times as FreeXL writes them out (2024-03-01, 12:30:00).
std::string Shown(const FreeXL_CellValue& cell) {
    switch (cell.type) {
        case FREEXL_CELL_INT:
            return std::to_string(cell.value.int_value);
        case FREEXL_CELL_DOUBLE:
            return NumberText(cell.value.double_value);
        case FREEXL_CELL_TEXT:
        case FREEXL_CELL_SST_TEXT:
        case FREEXL_CELL_DATE:
        case FREEXL_CELL_DATETIME:
        case FREEXL_CELL_TIME:
            return cell.value.text_value != nullptr ? cell.value.text_value : "";
        default:
            return {};
    }
}

// The password check and the sheets' names, of a file opened whole or only
// for what it says about itself.
bool ReadNames(const Handle& handle, std::vector<std::string>& names, std::string& fault) {
    unsigned int protection = 0, sheets = 0;
    if (freexl_get_info(handle.Get(), FREEXL_BIFF_PASSWORD, &protection) == FREEXL_OK &&
        protection == FREEXL_BIFF_OBFUSCATED) {
        fault = "the workbook is password-protected; save it without a password and try again";
        return false;
    }
    if (freexl_get_info(handle.Get(), FREEXL_BIFF_SHEET_COUNT, &sheets) != FREEXL_OK) {
        fault = OpenFault(FREEXL_CRAFTED_FILE);
        return false;
    }
    names.clear();
    for (unsigned int k = 0; k < sheets && k <= 0xFFFF; ++k) {
        const char* name = nullptr;
        if (freexl_get_worksheet_name(handle.Get(), static_cast<unsigned short>(k), &name) !=
            FREEXL_OK) {
            fault = OpenFault(FREEXL_CRAFTED_FILE);
            return false;
        }
        names.emplace_back(name != nullptr ? name : "");
    }
    return true;
}

// Opening a file whole, FreeXL sets aside room for every cell that each
// sheet claims to span, so the claims are added up first, from a quick
// reading that sets aside nothing.
bool CheckClaims(const std::string& path, const WorkbookLimits& limits,
                 std::vector<std::string>& names, std::string& fault) {
    Handle info;
    if (const int opened = freexl_open_info(path.c_str(), info.Out()); opened != FREEXL_OK) {
        fault = OpenFault(opened);
        return false;
    }
    if (!ReadNames(info, names, fault)) return false;
    std::uint64_t claimed = 0;
    for (std::size_t k = 0; k < names.size(); ++k) {
        unsigned int rows = 0;
        unsigned short columns = 0;
        if (freexl_select_active_worksheet(info.Get(), static_cast<unsigned short>(k)) !=
                FREEXL_OK ||
            freexl_worksheet_dimensions(info.Get(), &rows, &columns) != FREEXL_OK) {
            fault = OpenFault(FREEXL_CRAFTED_FILE);
            return false;
        }
        claimed += std::uint64_t{rows} * columns;
    }
    if (claimed <= limits.tableCells) return true;
    fault = "the workbook's sheets span more than " + std::to_string(limits.tableCells) +
            " cells, more than the import takes";
    return false;
}

}  // namespace

WorkbookResult ReadXlsFile(const std::string& path, const WorkbookRequest& request) {
    // The whole file is read into memory, so its size is held to the bound
    // on what a workbook unpacks to.
    std::error_code ec;
    const auto size = std::filesystem::file_size(path, ec);
    if (!ec && size > request.limits.unpackedBytes)
        return WorkbookFault("the workbook is larger than " +
                             std::to_string(request.limits.unpackedBytes >> 20) +
                             " MB, more than the import takes");
    if (!IsCompoundDocument(FileHead(path)))
        return WorkbookFault(OpenFault(FREEXL_INVALID_CFBF_HEADER));
    std::string fault;
    WorkbookResult result;
    if (!CheckClaims(path, request.limits, result.sheetNames, fault)) return WorkbookFault(fault);
    if (request.namesOnly) {
        result.ok = true;
        return result;
    }
    Handle handle;
    if (const int opened = freexl_open(path.c_str(), handle.Out()); opened != FREEXL_OK)
        return WorkbookFault(OpenFault(opened));
    if (!ReadNames(handle, result.sheetNames, fault)) return WorkbookFault(fault);
    const int picked = PickSheet(result.sheetNames, request.sheet, fault);
    if (picked < 0) return WorkbookFault(fault);
    unsigned int rows = 0;
    unsigned short columns = 0;
    if (freexl_select_active_worksheet(handle.Get(), static_cast<unsigned short>(picked)) !=
            FREEXL_OK ||
        freexl_worksheet_dimensions(handle.Get(), &rows, &columns) != FREEXL_OK)
        return WorkbookFault(OpenFault(FREEXL_CRAFTED_FILE));

    SheetCells cells(request.limits, request.rowLimit);
    for (unsigned int r = 0; r < rows; ++r) {
        if (cells.Enough(r + 1)) break;
        for (unsigned short c = 0; c < columns; ++c) {
            FreeXL_CellValue cell;
            if (freexl_get_cell_value(handle.Get(), r, c, &cell) != FREEXL_OK)
                return WorkbookFault(OpenFault(FREEXL_CRAFTED_FILE));
            if (!cells.Put(r + 1, static_cast<std::size_t>(c) + 1, Shown(cell)))
                return WorkbookFault(cells.Fault());
        }
    }
    result.table = cells.Take();
    result.ok = true;
    return result;
}

}  // namespace synthara::sheet
