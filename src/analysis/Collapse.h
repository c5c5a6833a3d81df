#pragma once
// A study's subgroups rebuilt as one sample: their raw cells summed (or,
// for means, put together again by a reverse analysis of variance) and the
// study's effect computed from them under the format the cells belong to.
#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "effectsize/WorkingSet.h"
#include "ports/Prompter.h"

namespace synthara::sheet {
class Sheet;
}

namespace synthara::analysis {

// Merge codes of the sheet's rows, by the format their raw cells belong to.
namespace MergeCode {
inline constexpr int MiniMeta = 0;
inline constexpr int CollapseCellsOneGroup = 1;
inline constexpr int RecreateMeansOneGroup = 2;
inline constexpr int CollapsePYOneGroup = 3;
inline constexpr int CollapseCellsTwoGroupCohort = 4;
inline constexpr int CollapseCellsTwoGroupCaseControl = 5;
inline constexpr int RecreateMeansTwoGroup = 6;
inline constexpr int CollapsePYTwoGroup = 7;
inline constexpr int NotSpecified = 10;
}  // namespace MergeCode

struct PointVariance {
    double point = 0;
    double variance = 0;
};

// The inverse-variance fixed-effect mean and variance of n pairs.
PointVariance FastMeta(std::span<const double> points, std::span<const double> variances);

// Size, mean and standard deviation of one sample split into groups, as if
// it had never been split; nothing when the sample has fewer than two.
struct SampleStats {
    double n = 0;
    double mean = 0;
    double sd = 0;
};
std::optional<SampleStats> ReverseAnova(std::span<const SampleStats> groups);

// True for the codes whose rows are rebuilt from their raw cells.
bool RebuildsCells(int mergeCode);

class CellCollapser {
  public:
    CellCollapser(const sheet::Sheet& sheet, std::string_view computationIndex,
                  const effectsize::ComputeOptions& options, ports::Prompter& prompter);

    // The computation index's point and variance of the rows (sheet rows)
    // taken as one; nothing when a raw cell is missing or the format yields
    // no such index.
    std::optional<PointVariance> Recompute(int mergeCode, std::span<const int> sheetRows);

  private:
    // The raw cells of one sheet row of the code, in the code's order;
    // false when one is empty or not a number.
    bool ReadCells(int mergeCode, int sheetRow, std::array<double, 6>& cells);

    const sheet::Sheet& sheet_;
    int index_ = 0;
    effectsize::ComputeOptions options_;
    ports::Prompter& prompter_;
    // The raw columns of each code, found on first use; -1 where none.
    std::array<std::array<int, 6>, 8> columns_{};
    std::array<bool, 8> found_{};
};

}  // namespace synthara::analysis
