#pragma once
// What the commands share: opening the input and the layout of readable tables.
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

// --option NAME=VALUE, repeatable: a computation option for this run.
void AddOptionArg(CLI::App& command, std::vector<std::string>& options);

// Opens INPUT into the document, which computes every row; `format` is
// --format ("" when not given), `separators` those of --locale, `options`
// the values of --option, which take the place of the project's. Returns the
// exit status; on a refusal the reason has been written to `err` (an option
// out of range in the options dialog's words).
int OpenInput(const std::string& input, const std::string& format,
              const sheet::NumberSeparators& separators, shell::Document& document,
              std::ostream& err, const std::vector<std::string>& options = {});

// Set by the program's main: a command's project and analysis are then left
// for the system to take back when the process ends, instead of being freed
// cell by cell (a noticeable part of a second at a million rows). Callers
// that run commands in their own process (the tests) free them as usual.
void LeaveToExit(bool leave);
bool LeavingToExit();
// Keeps `object` reachable until the process ends, never freeing it.
void KeepToExit(const void* object);

// A command's project or analysis: freed at the end of the command, or left
// for the process's end (LeaveToExit).
template <typename T>
class CommandObject {
  public:
    template <typename... Args>
    explicit CommandObject(Args&&... args)
        : object_(std::make_unique<T>(std::forward<Args>(args)...)) {}
    CommandObject(const CommandObject&) = delete;
    CommandObject& operator=(const CommandObject&) = delete;
    ~CommandObject() {
        if (LeavingToExit()) KeepToExit(object_.release());
    }
    T& operator*() const { return *object_; }
    T* operator->() const { return object_.get(); }

  private:
    std::unique_ptr<T> object_;
};

// A number with `digits` decimals, "" for none.
std::string Decimals(const std::optional<double>& value, int digits);

// The column indices first..end - 1, as PrintColumns takes those it aligns right.
std::vector<std::size_t> ColumnRange(std::size_t first, std::size_t end);

// `text` filled with blanks to `width` characters.
std::string Pad(std::string text, std::size_t width);

// Lines of cells in columns two blanks apart, each as wide as its widest cell.
// Columns listed in `rightAligned` (by index) are aligned to the right.
void PrintColumns(const std::vector<std::vector<std::string>>& lines, std::ostream& out,
                  const std::vector<std::size_t>& rightAligned = {});

// PrintColumns in two steps, for lines that have more to print beneath them:
// the width of each column, that of its widest cell; then each line.
std::vector<std::size_t> ColumnWidths(const std::vector<std::vector<std::string>>& lines);
void PrintLine(const std::vector<std::string>& line, const std::vector<std::size_t>& widths,
               std::ostream& out, const std::vector<std::size_t>& rightAligned = {});

}  // namespace synthara::cli
