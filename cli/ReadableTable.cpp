#include "cli/ReadableTable.h"

#include <utility>

#include "cli/CommandSupport.h"

namespace synthara::cli {

ReadableTable::ReadableTable(std::vector<std::string> head, std::size_t firstNumber, bool grouped)
    : firstNumber_(grouped ? firstNumber + 1 : firstNumber), grouped_(grouped) {
    if (grouped_) head.insert(head.begin() + 1, "Group");
    lines_.push_back(std::move(head));
}

void ReadableTable::Add(std::vector<std::string> row, const std::string& group) {
    if (grouped_) row.insert(row.begin() + 1, group);
    lines_.push_back(std::move(row));
}

void ReadableTable::Print(std::ostream& out) const {
    PrintColumns(lines_, out, ColumnRange(firstNumber_, lines_.front().size()));
}

}  // namespace synthara::cli
