#pragma once
// A readable table of the commands: a heading line, then a line a row, in
// columns two blanks apart with the numbers aligned right. A grouped table
// carries each row's group in a "Group" column after the first.
#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace synthara::cli {

class ReadableTable {
  public:
    // Columns from `firstNumber` on (counted without the group's) are
    // aligned right.
    ReadableTable(std::vector<std::string> head, std::size_t firstNumber, bool grouped = false);

    // A row; `group` fills the group's column of a grouped table.
    void Add(std::vector<std::string> row, const std::string& group = {});
    bool Empty() const { return lines_.size() == 1; }
    void Print(std::ostream& out) const;

  private:
    std::vector<std::vector<std::string>> lines_;
    std::size_t firstNumber_;
    bool grouped_;
};

}  // namespace synthara::cli
