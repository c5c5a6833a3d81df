#pragma once
// The bias dataset: one row per study with its effect and standard error on
// the computation scale, taken from an analysis, and the two gates before the
// procedures run (the analysis's state, then the values themselves).
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace synthara::analysis {
class Analysis;
}

namespace synthara::pubbias {

inline constexpr std::string_view kBiasTitle = "Publication bias";

// The studies the procedures read, in the analysis's order.
struct BiasDataset {
    std::vector<std::string> names;
    std::vector<double> point;
    std::vector<double> se;
    std::vector<double> variance;  // se squared
    std::vector<double> weight;    // 1 / variance

    int N() const { return static_cast<int>(point.size()); }
    void Add(std::string name, double effect, double stdErr);
};

// Why the analysis cannot go to publication bias, in the words of its box
// (title kBiasTitle); nothing when it can. `showAllStudies` is the view's
// "Show all studies".
std::optional<std::string> CheckPubValid(const analysis::Analysis& analysis, bool showAllStudies);

// The study rows of the last run that take part: a valid row number and not
// a summary row. Their point, and the square root of their variance.
BiasDataset BiasRows(const analysis::Analysis& analysis);

// One cell of the dataset as typed: empty, a number, or text that is not one.
using DataCell = std::variant<std::monostate, double, std::string>;

struct DataRow {
    std::string name;
    DataCell point;
    DataCell se;
    std::string tag;  // "", "Observed" or "Imputed"
};

struct CheckValsResult {
    bool ok = false;
    int N = 0;                          // rows with data
    std::vector<int> marked;            // rows shown in the failure colour
    std::vector<std::string> messages;  // in the order they are shown
    BiasDataset data;                   // the rows, when ok
};

// The checks of the values before a run: rows tagged "Imputed" by an earlier
// run and all below them go; every number must be there and every standard
// error positive.
CheckValsResult CheckVals(std::vector<DataRow> rows);

}  // namespace synthara::pubbias
