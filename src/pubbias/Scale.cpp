#include "pubbias/Scale.h"

#include <cmath>

#include "effectsize/Trail.h"
#include "stats/Formulas.h"

namespace synthara::pubbias {

double BackTransform(double value, analysis::Transform transform) {
    switch (transform) {
        case analysis::Transform::Log:
            return std::exp(value);
        case analysis::Transform::Logit:
            return stats::InverseLogit(value);
        case analysis::Transform::Fisher:
            return stats::InverseFisher(value);
        case analysis::Transform::None:
            break;
    }
    return value;
}

std::string Shown(double value, analysis::Transform transform) {
    return Fixed(BackTransform(value, transform), 5);
}

std::string Fixed(double value, int digits) {
    return effectsize::FormatDecimals(value, digits);
}

}  // namespace synthara::pubbias
