#include "pubbias/FailSafe.h"

#include <cmath>

#include "pubbias/Scale.h"
#include "stats/Distributions.h"
#include "stats/Formulas.h"

namespace synthara::pubbias {

double RoundUpFailSafe(double x) {
    return std::trunc(x + 0.9999);
}

FailSafeResult RunFailSafe(const BiasDataset& data, const FailSafeSettings& settings) {
    FailSafeResult r;
    r.n = data.N();
    r.alpha = settings.alpha;
    r.tails = settings.tails;
    double sumZ = 0;
    for (int i = 0; i < r.n; ++i)
        sumZ += data.point[static_cast<std::size_t>(i)] / data.se[static_cast<std::size_t>(i)];
    r.zc = sumZ / std::sqrt(static_cast<double>(r.n));
    // The lower tail at -|z| is the upper tail at |z| without its loss to 0.
    r.p = stats::VBDNORDF(-std::fabs(r.zc)) * settings.tails;
    r.zAlpha = stats::ZFromP(settings.alpha, settings.tails);
    const double za2 = r.zAlpha * r.zAlpha;
    double f = r.n * (r.zc * r.zc - za2) / za2;
    if (f < 0) f = 0;
    r.failSafeN = RoundUpFailSafe(f);

    const double m = settings.orwinObservedMean;
    const double c = settings.orwinCriterion;
    const double d = settings.orwinMeanNew;
    r.observedMean = m;
    r.criterion = c;
    r.meanNew = d;
    double orwin = 0;
    if (d < c && c < m) {
        r.orwin = OrwinCase::Under;
        orwin = (m - c) * r.n / (c - d);
    } else if (d > c && c > m) {
        r.orwin = OrwinCase::Over;
        orwin = (c - m) * r.n / (d - c);
    } else {
        return r;
    }
    r.orwinN = static_cast<std::int32_t>(RoundUpFailSafe(orwin));
    return r;
}

std::optional<std::string> CheckAlpha(double alpha, double stored) {
    if (alpha >= 0.000001 && alpha <= 0.4999999) return std::nullopt;
    return "Alpha must fall in the range of 0.000001 to .4999999      \nValue will be reset to " +
           Fixed(stored, 5) + "    ";
}

std::optional<std::string> CheckTails(double tails, int stored) {
    if (tails == 1 || tails == 2) return std::nullopt;
    return "Tails must be either 1 or 2      \nValue will be reset to " + std::to_string(stored);
}

std::optional<double> OrwinValue(double shown, analysis::Transform transform) {
    switch (transform) {
        case analysis::Transform::None:
            return shown;
        case analysis::Transform::Fisher:
            if (shown < -0.9999 || shown > 0.9999) return std::nullopt;
            return stats::FisherZ(shown);
        case analysis::Transform::Logit:
            if (shown < 0 || shown > 1) return std::nullopt;
            return stats::Logit(shown);
        case analysis::Transform::Log:
            if (shown < 0 || shown > 500) return std::nullopt;
            return std::log(shown);
    }
    return shown;
}

}  // namespace synthara::pubbias
