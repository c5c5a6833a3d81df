#pragma once
// The "Formulas" dialog's content for one data row: every effect size index
// the row's format computed or explained, each with the trail of how it was reached,
// and the whole as text for the clipboard.
#include <optional>
#include <string>
#include <vector>

#include "ports/Prompter.h"

namespace synthara::shell {

class Document;

struct IndexFormula {
    int index = 0;
    std::string name;  // as the display columns' titles name the index
    bool valid = false;
    std::string trail;  // lines end in a line feed
};

struct RowFormulas {
    std::string study;  // "" where the row names none
    std::string format;
    std::string errors;  // the row's error text; "" when it has none
    std::vector<IndexFormula> indices;
    // Where the dialog opens: the index of the cell the user was on, else
    // the primary index; its position in `indices`, 0 when neither is there.
    int current = 0;

    // Every index's name and trail, the row's study and format first.
    std::string Text() const;
};

// The box of a row-level command on a row without data.
ports::Box CannotOpenForEmptyRow();

// The formulas of the data row at grid row `row`, the user being on column
// `col`; nothing when the row holds no data.
std::optional<RowFormulas> ReadRowFormulas(const Document& document, int row, int col);

}  // namespace synthara::shell
