#pragma once
// The regression's working table: one row per study and a totals row, in
// keyed columns of doubles (the study names apart). A step fills the weights
// and their products, sums them into the totals row, and `GetBeta` turns the
// totals into the line, its Q statistics and the moments tau-squared.
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace synthara::regression {

// The table's columns in their order.
enum class Key : std::size_t {
    ID,
    Numstudies,
    T,
    V,
    X,
    w,
    w2,
    wx,
    wx2,
    wT,
    wT2,
    w2x,
    w2T,
    wxT,
    w2x2,
    h,
    e,
    eStud,
    pvalStud,
    eStan,
    pvalStan,
    Dummy,
};
inline constexpr std::size_t KeyCount = static_cast<std::size_t>(Key::Dummy) + 1;
inline constexpr std::array<std::string_view, KeyCount> KeyNames = {
    "ID",   "Numstudies", "T",        "V",     "X",        "w",    "w^2",    "wx",
    "wx^2", "wT",         "wT^2",     "w^2x",  "w^2T",     "wxT",  "w^2x^2", "h",
    "e",    "eStud",      "pvalStud", "eStan", "pvalStan", "Dummy"};
// A key's name as the table's header shows it.
inline std::string_view KeyName(Key key) {
    return KeyNames[static_cast<std::size_t>(key)];
}

// 2 * (1 - F(|z|)) of the standard normal F: the p-values the tables show.
double TwoTailedP(double z);

// What GetBeta makes of the totals: one row of the model table but its name.
struct Beta {
    double B1 = 0, seb1 = 0, z1 = 0;
    double B0 = 0, seb0 = 0, z0 = 0;
    double QT = 0, dfT = 0, QM = 0, dfM = 0, QE = 0, dfE = 0;
    double C = 0;
    double tau2 = 0;
};

class RegressionTable {
  public:
    // The studies' names, effects, variances and predictor values.
    void SetStudies(std::vector<std::string> names, std::vector<double> T, std::vector<double> V,
                    std::vector<double> X);

    int Rows() const { return static_cast<int>(ID.size()); }
    // A numeric column (any key but ID); an empty cell holds NaN.
    const std::vector<double>& Col(Key key) const { return cols_[static_cast<std::size_t>(key)]; }
    // The cell of the totals row; NaN where the column is not summed.
    double Total(Key key) const { return totals_[static_cast<std::size_t>(key)]; }

    // Step 1 of a step: w = 1 / (V + tau2) and its products for every study,
    // and their sums (with Numstudies') in the totals row.
    void FillWeights(double tau2);
    // The totals' coefficients; false on an arithmetic failure (a zero
    // determinant, the root of a negative number, a number out of range).
    bool GetBeta(Beta& beta) const;
    // The maximum-likelihood term of each study around the line, summed.
    void FillDummy(double B0, double B1);
    // Leverage and residuals of each study around the line.
    void FillResiduals(double B0, double B1);

    std::vector<std::string> ID;

  private:
    std::vector<double>& Mutable(Key key) { return cols_[static_cast<std::size_t>(key)]; }
    // Writes a column's sum into the totals row.
    void ColSum(Key key, double sum);

    std::array<std::vector<double>, KeyCount> cols_{};
    std::array<double, KeyCount> totals_{};
};

}  // namespace synthara::regression
