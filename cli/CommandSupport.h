#pragma once
// What the commands share: the computation of the loaded rows, JSON output and
// the layout of readable tables.
#include <iosfwd>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "shell/Document.h"

namespace CLI {
class App;
}

namespace synthara::cli {

inline constexpr const char* kInputHelp =
    "A delimited text file (.csv, .tsv, .txt) or a project (.syn) or template (.syt)";

// The INPUT argument and the --format and --locale options every command that
// reads a file takes. --locale puts the separators of the locale it names into
// `separators`, and refuses a locale the system does not have.
void AddInputOptions(CLI::App& command, std::string& input, std::string& format,
                     sheet::NumberSeparators& separators);

// Opens INPUT into the document, which computes every row; `format` is
// --format ("" when not given), `separators` those of --locale. Returns the exit status; on a
// refusal the reason has been written to `err`.
int OpenInput(const std::string& input, const std::string& format,
              const sheet::NumberSeparators& separators, shell::Document& document,
              std::ostream& err);

// Says, for each data format of the rows read whose computation is not built
// yet, that its rows compute nothing; the command goes on.
void ReportUnbuiltFormats(const shell::Document& document, std::ostream& err);

// One JSON object on one line; text that is not valid UTF-8 is replaced, not refused.
std::string Dump(const nlohmann::json& value);

// `text` filled with blanks to `width` characters.
std::string Pad(std::string text, std::size_t width);

// Lines of cells in columns two blanks apart, each as wide as its widest cell.
// Columns listed in `rightAligned` (by index) are aligned to the right.
void PrintColumns(const std::vector<std::vector<std::string>>& lines, std::ostream& out,
                  const std::vector<std::size_t>& rightAligned = {});

}  // namespace synthara::cli
