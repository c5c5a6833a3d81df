#pragma once
// The "Data entry assistant" for one data row: its format, each of the
// format's roles with the column that holds it and the value typed there,
// and what is missing or refused, in the words the row's checks use.
#include <optional>
#include <string>
#include <vector>

namespace synthara::shell {

class Document;

struct EntryRole {
    std::string label;  // the column's title on one line, or the role's words without one
    std::string value;  // the text typed; "" when none
    int col = -1;       // -1 when the sheet has no column for the role
    bool missing = true;
    std::string fault;  // why the cell is refused; "" when it is not
};

struct RowEntries {
    std::string study;
    std::string format;
    std::vector<EntryRole> roles;
    std::string errors;  // the row's error text, as the Errors column has it
    // How many roles hold a number, and how many the format has.
    int Entered() const;
};

// The entries of the data row at grid row `row`; nothing when the row has no
// format (the same refusal as the other row dialogs).
std::optional<RowEntries> ReadRowEntries(const Document& document, int row);

}  // namespace synthara::shell
