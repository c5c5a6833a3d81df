#pragma once
// Reading a command's INPUT into a sheet, with the refusals every command shares.
#include <iosfwd>
#include <string>

#include "sheet/grid/Sheet.h"
#include "sheet/import/ImportTable.h"

namespace synthara::cli {

inline constexpr const char* kInputHelp =
    "A delimited text file (.csv, .tsv, .txt) or a project (.syn) or template (.syt)";

// A project (.syn) or template (.syt) file, by its name's ending.
bool IsProjectFile(const std::string& path);

// Fills `sheet` from the file at `path`; `format` is --format ("" when not
// given). Returns the exit status: ExitDone when the sheet is ready, otherwise
// the reason has been written to `err`.
int LoadInput(const std::string& path, const std::string& format, sheet::Sheet& sheet,
              sheet::ImportResult& imported, std::ostream& err);

}  // namespace synthara::cli
