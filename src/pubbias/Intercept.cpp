#include "pubbias/Intercept.h"

#include <cmath>
#include <vector>

#include "stats/Distributions.h"

namespace synthara::pubbias {

InterceptResult RunIntercept(const BiasDataset& data, int tails) {
    std::vector<double> x(data.se.size());
    std::vector<double> y(data.se.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        y[i] = data.point[i] / data.se[i];
        x[i] = 1 / data.se[i];
    }
    const stats::RegressionLine line = stats::VBDRLINE(x, y);
    InterceptResult r;
    r.valid = line.valid;
    if (!line.valid) return r;
    r.intercept = line.intercept;
    r.se = line.interceptSE;
    r.df = line.df;
    const double a = 0.05 / tails;
    const double t95 = std::fabs(stats::VBDTIN(a, r.df));
    r.lower = r.intercept - t95 * r.se;
    r.upper = r.intercept + t95 * r.se;
    if (r.se > 1E-07) {
        r.t = r.intercept / r.se;
        const double q = stats::VBDTDF(std::fabs(*r.t), r.df);
        r.p1 = 1 - q;
        r.p2 = 2 * *r.p1;
    }
    return r;
}

}  // namespace synthara::pubbias
