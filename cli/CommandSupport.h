#pragma once
// What the commands share: the computation of the loaded rows, JSON output and
// the layout of readable tables.
#include <iosfwd>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "ports/Prompter.h"
#include "sheet/grid/Sheet.h"
#include "sheet/import/ImportTable.h"

namespace CLI {
class App;
}

namespace synthara::cli {

// The INPUT argument and the --format and --locale options every command that
// reads a file takes. --locale puts the separators of the locale it names into
// `separators`, and refuses a locale the system does not have.
void AddInputOptions(CLI::App& command, std::string& input, std::string& format,
                     sheet::NumberSeparators& separators);

// Reads INPUT into `sheet` and computes every row. Returns the exit status;
// on a refusal the reason has been written to `err`.
int LoadAndCompute(const std::string& input, const std::string& format, sheet::Sheet& sheet,
                   sheet::ImportResult& imported, ports::Prompter& prompter, std::ostream& err);

// Computes every imported row, as typing the cells would, and refreshes the
// sheet's column tables.
void ComputeRows(sheet::Sheet& sheet, const sheet::ImportResult& imported,
                 ports::Prompter& prompter);

// Says, for each data format of the rows read whose computation is not built
// yet, that its rows compute nothing; the command goes on.
void ReportUnbuiltFormats(const sheet::Sheet& sheet, const sheet::ImportResult& imported,
                          std::ostream& err);

// One JSON object on one line; text that is not valid UTF-8 is replaced, not refused.
std::string Dump(const nlohmann::json& value);

// `text` filled with blanks to `width` characters.
std::string Pad(std::string text, std::size_t width);

// Lines of cells in columns two blanks apart, each as wide as its widest cell.
// Columns listed in `rightAligned` (by index) are aligned to the right.
void PrintColumns(const std::vector<std::vector<std::string>>& lines, std::ostream& out,
                  const std::vector<std::size_t>& rightAligned = {});

}  // namespace synthara::cli
