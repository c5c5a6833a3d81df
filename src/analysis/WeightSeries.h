#pragma once
// The sums of a set of rows under the weights 1 / (v + t), for many t near
// one t0, without a walk of the rows for each t: with x = v + t0 and
// d = t - t0, 1 / (x + d) is the series of (-d)^n / x^(n+1), so the sums are
// series in d over the moments of 1 / x. It serves the passes of the
// omit-one and cumulative runs whose tau-squared moves a little from pass to
// pass; where d is not small against every x it declines, and the rows are
// summed as they are.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace synthara::analysis {

class WeightSeries {
  public:
    static constexpr int Terms = 16;
    // |d| / min(x) up to this: the series is then exact to well below the
    // rounding of a double (0.05^16 x 136, for the sum of the cubes).
    static constexpr double MaxRatio = 0.05;

    struct Sums {
        double K = 0, W = 0, Wsq = 0, Wcu = 0, TW = 0, T2W = 0;
    };

    explicit WeightSeries(double t0 = 0) : t0_(t0) {}

    // A row with variance v and point y joins (sign 1) or leaves (sign -1).
    void Add(double v, double y, double sign) {
        const double x = v + t0_;
        const double inv = 1 / x;
        double p = inv;
        for (int j = 0; j < Terms + 2; ++j) {
            m_[static_cast<std::size_t>(j)] += sign * p;
            if (j < Terms) {
                my_[static_cast<std::size_t>(j)] += sign * y * p;
                my2_[static_cast<std::size_t>(j)] += sign * y * y * p;
            }
            p *= inv;
        }
        k_ += sign;
        if (sign > 0) xmin_ = std::min(xmin_, x);
    }

    // The sums at tau-squared t; nullopt when t is too far from t0.
    std::optional<Sums> At(double t) const {
        const double d = t - t0_;
        if (std::fabs(d) > MaxRatio * xmin_) return std::nullopt;
        Sums s;
        s.K = k_;
        double p = 1;  // (-d)^n
        for (int n = 0; n < Terms; ++n) {
            const auto i = static_cast<std::size_t>(n);
            s.W += p * m_[i];
            s.Wsq += p * (n + 1) * m_[i + 1];
            s.Wcu += p * ((n + 1) * (n + 2) / 2) * m_[i + 2];
            s.TW += p * my_[i];
            s.T2W += p * my2_[i];
            p *= -d;
        }
        return s;
    }

  private:
    double t0_;
    double k_ = 0;
    double xmin_ = std::numeric_limits<double>::infinity();
    std::array<double, Terms + 2> m_{};  // sums of x^-(j+1)
    std::array<double, Terms> my_{}, my2_{};
};

}  // namespace synthara::analysis
