#include "sheet/import/TableFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <new>
#include <system_error>

#include "sheet/files/Project.h"
#include "sheet/grid/Sheet.h"
#include "sheet/import/XlsWorkbook.h"
#include "sheet/import/XlsxWorkbook.h"

namespace synthara::sheet {
namespace {

std::string LowerExtension(std::string_view path) {
    std::string ext = std::filesystem::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext;
}

WorkbookResult ReadWorkbookFile(const std::string& path, const WorkbookRequest& request) {
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec)) return WorkbookFault("it is a folder, not a file");
    if (!std::ifstream(path, std::ios::binary)) return WorkbookFault("the file cannot be opened");
    try {
        return LowerExtension(path) == ".xls" ? ReadXlsFile(path, request)
                                              : ReadXlsxFile(path, request);
    } catch (const std::bad_alloc&) {
        return WorkbookFault(NotEnoughMemoryToRead);
    }
}

DelimitedResult AsDelimited(WorkbookResult read) {
    DelimitedResult result;
    result.ok = read.ok;
    result.message = std::move(read.message);
    result.table = std::move(read.table);
    return result;
}

DelimitedResult Read(const std::string& path, const TableOptions& options, std::size_t rows) {
    if (!IsWorkbookFile(path)) {
        DelimitedResult text = ReadDelimitedFile(path);
        if (rows > 0 && text.table.rows.size() > rows) {
            text.table.rows.resize(rows);
            text.table.lines.resize(rows);
        }
        return text;
    }
    WorkbookRequest request;
    request.sheet = options.sheet;
    request.limits = options.limits;
    request.rowLimit = rows;
    return AsDelimited(ReadWorkbookFile(path, request));
}

}  // namespace

bool IsWorkbookFile(std::string_view path) {
    const std::string ext = LowerExtension(path);
    return ext == ".xlsx" || ext == ".xls";
}

SheetList ListSheets(const std::string& path, const WorkbookLimits& limits) {
    WorkbookRequest request;
    request.limits = limits;
    request.namesOnly = true;
    WorkbookResult read = ReadWorkbookFile(path, request);
    SheetList list;
    list.ok = read.ok;
    list.message = read.ok ? std::string() : path + ": " + read.message;
    list.names = std::move(read.sheetNames);
    return list;
}

DelimitedResult ReadTableFile(const std::string& path, const TableOptions& options) {
    DelimitedResult result = Read(path, options, 0);
    if (result.ok && !options.firstRowTitles) TitleByLetters(result.table);
    return result;
}

DelimitedResult PreviewTableFile(const std::string& path, const TableOptions& options,
                                 std::size_t rows) {
    if (rows == 0) {
        DelimitedResult none;
        none.ok = true;
        return none;
    }
    return Read(path, options, rows);
}

void TitleByLetters(DelimitedTable& table) {
    if (table.rows.empty()) return;  // an empty file stays one
    std::size_t width = 0;
    for (const auto& row : table.rows)
        width = std::max(width, row.size());
    std::vector<std::string> titles;
    titles.reserve(width);
    for (std::size_t c = 1; c <= width; ++c)
        titles.push_back(AutoLetters(static_cast<int>(c)));
    table.rows.insert(table.rows.begin(), std::move(titles));
    table.lines.insert(table.lines.begin(), 0);
}

}  // namespace synthara::sheet
