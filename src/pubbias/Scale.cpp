#include "pubbias/Scale.h"

#include <cctype>
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

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lower;
}

std::string Fixed(double value, int digits) {
    return effectsize::FormatDecimals(value, digits);
}

}  // namespace synthara::pubbias
