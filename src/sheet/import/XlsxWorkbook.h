#pragma once
// Reading a sheet of an .xlsx workbook: a ZIP archive of XML parts. The
// parts are inflated and parsed as they stream, within the limits, so that
// neither a packed bomb nor a huge sheet can take more than its bound.
#include <string>
#include <string_view>

#include "sheet/import/WorkbookTable.h"

namespace synthara::sheet {

WorkbookResult ReadXlsxFile(const std::string& path, const WorkbookRequest& request);
// The same from the file's bytes in memory.
WorkbookResult ReadXlsxBytes(std::string_view bytes, const WorkbookRequest& request);

}  // namespace synthara::sheet
