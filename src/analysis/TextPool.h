#pragma once
// The texts of the working table's text columns (identifying cells, group
// labels), each kept once and named by a small code: a table of a million
// rows holds four bytes per cell, and equal texts compare as equal codes.
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include <absl/container/flat_hash_map.h>

namespace synthara::analysis {

using Code = std::uint32_t;
inline constexpr Code EmptyText = 0;  // the code of "", an empty cell

class TextPool {
  public:
    TextPool();

    Code Intern(std::string_view text);
    // Room for this many texts without rehashing the index.
    void Reserve(std::size_t texts) { index_.reserve(texts); }
    std::string_view Text(Code code) const { return texts_[code]; }
    std::size_t Size() const { return texts_.size(); }

    // Each code's place in the sheet's ascending order (empty first, then
    // numbers by value, then text without regard to case); equal places for
    // texts that sort as equal. Worked out again only when texts were added.
    const std::vector<std::uint32_t>& SortRanks() const;

  private:
    std::deque<std::string> texts_;  // a deque: the index's views stay valid as it grows
    absl::flat_hash_map<std::string_view, Code> index_;
    mutable std::vector<std::uint32_t> ranks_;
};

}  // namespace synthara::analysis
