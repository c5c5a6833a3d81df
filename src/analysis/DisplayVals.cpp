#include "analysis/DisplayVals.h"

#include <cmath>
#include <string>

#include "stats/Distributions.h"
#include "stats/Formulas.h"

namespace synthara::analysis {

std::string_view TransformWord(Transform transform) {
    switch (transform) {
        case Transform::None:
            return "None";
        case Transform::Log:
            return "Log";
        case Transform::Logit:
            return "Logit";
        case Transform::Fisher:
            return "Fisher";
    }
    return "None";
}

DisplayVals RawVals(double variance, double point, double critical) {
    DisplayVals d;
    if (variance < 0) variance = 0;
    d.variance = variance;
    d.se = std::sqrt(variance);
    d.point = point;
    d.lower = point - critical * d.se;
    d.upper = point + critical * d.se;
    d.z = 0;
    d.p = 1;
    if (variance == 0) {
        d.se = 0;
        d.lower = d.point;
        d.upper = d.point;
    } else if (d.se > 0) {
        d.z = point / d.se;
        // 2 x (1 - F(|z|)), taken from the lower tail so that a large |z|
        // keeps its small p instead of rounding to 0.
        d.p = 2 * stats::VBDNORDF(-std::fabs(d.z));
    }
    return d;
}

DisplayVals ToDisplay(DisplayVals d, Transform transform) {
    const auto toDisplay = [transform](double x) {
        switch (transform) {
            case Transform::Log:
                return std::exp(x);
            case Transform::Logit:
                return stats::InverseLogit(x);
            case Transform::Fisher:
                return stats::InverseFisher(x);
            case Transform::None:
                break;
        }
        return x;
    };
    if (transform != Transform::None) {
        d.point = toDisplay(d.point);
        d.lower = toDisplay(d.lower);
        d.upper = toDisplay(d.upper);
        d.se = 0;
        d.variance = 0;
    }
    return d;
}

DisplayVals GetDisplayVals(double variance, double point, Transform transform, double critical) {
    return ToDisplay(RawVals(variance, point, critical), transform);
}

std::optional<double> ParseConfidenceLevel(std::string_view text) {
    for (std::string_view level : ConfidenceLevels) {
        const std::string_view digits = level.substr(0, level.size() - 1);
        if (text == level || text == digits) return std::stoi(std::string(digits)) / 100.0;
    }
    return std::nullopt;
}

double CICritical(double level) {
    return stats::ZFromP(1 - level, 2);
}

}  // namespace synthara::analysis
