#pragma once
// Reading a sheet of an .xls workbook (the binary format of older
// spreadsheets, BIFF) through FreeXL.
#include <string>

#include "sheet/import/WorkbookTable.h"

namespace synthara::sheet {

WorkbookResult ReadXlsFile(const std::string& path, const WorkbookRequest& request);

}  // namespace synthara::sheet
