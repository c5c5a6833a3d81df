#include "regression/RegressionTable.h"

#include <cmath>
#include <limits>
#include <utility>

#include "stats/Distributions.h"

namespace synthara::regression {
namespace {

constexpr double Empty = std::numeric_limits<double>::quiet_NaN();

bool AllFinite(std::initializer_list<double> values) {
    for (const double v : values)
        if (!std::isfinite(v)) return false;
    return true;
}

}  // namespace

double TwoTailedP(double z) {
    return 2 * (1 - stats::VBDNORDF(std::fabs(z)));
}

void RegressionTable::SetStudies(std::vector<std::string> names, std::vector<double> T,
                                 std::vector<double> V, std::vector<double> X) {
    ID = std::move(names);
    const std::size_t k = ID.size();
    for (std::vector<double>& col : cols_)
        col.assign(k, Empty);
    Mutable(Key::T) = std::move(T);
    Mutable(Key::V) = std::move(V);
    Mutable(Key::X) = std::move(X);
    Mutable(Key::Numstudies).assign(k, 1.0);
    totals_.fill(Empty);
}

void RegressionTable::ColSum(Key key, double sum) {
    totals_[static_cast<std::size_t>(key)] = sum;
}

// The sums are kept as the rows are filled, adding in row order: the same
// numbers as summing each column afterwards, at a tenth of the sweeps.
void RegressionTable::FillWeights(double tau2) {
    const std::vector<double>& T = Col(Key::T);
    const std::vector<double>& V = Col(Key::V);
    const std::vector<double>& X = Col(Key::X);
    double* w = Mutable(Key::w).data();
    double* w2 = Mutable(Key::w2).data();
    double* wx = Mutable(Key::wx).data();
    double* wx2 = Mutable(Key::wx2).data();
    double* wT = Mutable(Key::wT).data();
    double* wT2 = Mutable(Key::wT2).data();
    double* w2x = Mutable(Key::w2x).data();
    double* w2T = Mutable(Key::w2T).data();
    double* wxT = Mutable(Key::wxT).data();
    double* w2x2 = Mutable(Key::w2x2).data();
    double n = 0, Sw = 0, Sw2 = 0, Swx = 0, Swx2 = 0, SwT = 0, SwT2 = 0, Sw2x = 0, Sw2T = 0,
           SwxT = 0, Sw2x2 = 0;
    for (std::size_t i = 0; i < T.size(); ++i) {
        const double wi = 1 / (V[i] + tau2);
        const double x = X[i];
        const double t = T[i];
        w[i] = wi;
        w2[i] = wi * wi;
        wx[i] = wi * x;
        wx2[i] = wi * x * x;
        wT[i] = wi * t;
        wT2[i] = wi * t * t;
        w2x[i] = wi * wi * x;
        w2T[i] = wi * wi * t;
        wxT[i] = wi * x * t;
        w2x2[i] = wi * wi * x * x;
        n += 1;
        Sw += w[i];
        Sw2 += w2[i];
        Swx += wx[i];
        Swx2 += wx2[i];
        SwT += wT[i];
        SwT2 += wT2[i];
        Sw2x += w2x[i];
        Sw2T += w2T[i];
        SwxT += wxT[i];
        Sw2x2 += w2x2[i];
    }
    ColSum(Key::Numstudies, n);
    ColSum(Key::w, Sw);
    ColSum(Key::w2, Sw2);
    ColSum(Key::wx, Swx);
    ColSum(Key::wx2, Swx2);
    ColSum(Key::wT, SwT);
    ColSum(Key::wT2, SwT2);
    ColSum(Key::w2x, Sw2x);
    ColSum(Key::w2T, Sw2T);
    ColSum(Key::wxT, SwxT);
    ColSum(Key::w2x2, Sw2x2);
}

bool RegressionTable::GetBeta(Beta& b) const {
    const double N = Total(Key::Numstudies);
    const double Sw = Total(Key::w);
    const double Sw2 = Total(Key::w2);
    const double Swx = Total(Key::wx);
    const double Swx2 = Total(Key::wx2);
    const double SwT = Total(Key::wT);
    const double SwT2 = Total(Key::wT2);
    const double Sw2x = Total(Key::w2x);
    const double Sw2x2 = Total(Key::w2x2);
    const double SwxT = Total(Key::wxT);

    const double Dn = Sw * Swx2 - Swx * Swx;
    if (Dn == 0 || Sw == 0) return false;
    b.B1 = (Sw * SwxT - Swx * SwT) / Dn;
    b.seb1 = std::sqrt(Sw / Dn);
    b.z1 = b.B1 / b.seb1;
    b.B0 = (SwT * Swx2 - Swx * SwxT) / Dn;
    b.seb0 = std::sqrt(Swx2 / Dn);
    b.z0 = b.B0 / b.seb0;
    b.QT = SwT2 - SwT * SwT / Sw;
    b.dfT = N - 1;
    b.QM = b.z1 * b.z1;
    b.dfM = 1;
    b.QE = b.QT - b.QM;
    b.dfE = N - 2;
    b.C = Sw - (Sw * Sw2x2 + Sw2 * Swx2 - 2 * Swx * Sw2x) / Dn;
    b.tau2 = (b.QE - b.dfE) / b.C;
    // A root of a negative number, a division by zero or an overflow shows
    // as a number that is not finite.
    if (!AllFinite({Dn, b.B1, b.seb1, b.z1, b.B0, b.seb0, b.z0, b.QT, b.QE, b.C, b.tau2}))
        return false;
    if (b.tau2 < 0) b.tau2 = 0;
    return true;
}

void RegressionTable::FillDummy(double B0, double B1) {
    const std::vector<double>& T = Col(Key::T);
    const std::vector<double>& V = Col(Key::V);
    const std::vector<double>& X = Col(Key::X);
    const std::vector<double>& w2 = Col(Key::w2);
    double* dummy = Mutable(Key::Dummy).data();
    double sum = 0;
    for (std::size_t i = 0; i < T.size(); ++i) {
        const double e = T[i] - B0 - B1 * X[i];
        dummy[i] = w2[i] * (e * e - V[i]);
        sum += dummy[i];
    }
    ColSum(Key::Dummy, sum);
}

void RegressionTable::FillResiduals(double B0, double B1) {
    const double Sw = Total(Key::w);
    const double Swx = Total(Key::wx);
    const double Swx2 = Total(Key::wx2);
    const double Dn = Sw * Swx2 - Swx * Swx;
    const std::vector<double>& T = Col(Key::T);
    const std::vector<double>& X = Col(Key::X);
    const std::vector<double>& w = Col(Key::w);
    const std::vector<double>& wx = Col(Key::wx);
    const std::vector<double>& wx2 = Col(Key::wx2);
    std::vector<double>& h = Mutable(Key::h);
    std::vector<double>& e = Mutable(Key::e);
    std::vector<double>& eStud = Mutable(Key::eStud);
    std::vector<double>& pvalStud = Mutable(Key::pvalStud);
    std::vector<double>& eStan = Mutable(Key::eStan);
    std::vector<double>& pvalStan = Mutable(Key::pvalStan);
    for (std::size_t i = 0; i < T.size(); ++i) {
        h[i] = (w[i] * Swx2 + wx2[i] * Sw - 2 * wx[i] * Swx) / Dn;
        e[i] = T[i] - B0 - B1 * X[i];
        // A study that carries the whole line at its point has no
        // studentised residual.
        if (1 > h[i]) {
            eStud[i] = e[i] / std::sqrt((1 / w[i]) * (1 - h[i]));
            pvalStud[i] = TwoTailedP(eStud[i]);
        } else {
            eStud[i] = Empty;
            pvalStud[i] = Empty;
        }
        eStan[i] = e[i] / std::sqrt(1 / w[i]);
        pvalStan[i] = TwoTailedP(eStan[i]);
    }
}

}  // namespace synthara::regression
