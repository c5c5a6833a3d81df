#pragma once
// Values of the computation scale as the bias tables show them.
#include <string>
#include <string_view>

#include "analysis/DisplayVals.h"

namespace synthara::pubbias {

// The value on the index's display scale: itself, its exponential, or the
// inverse of the logit or of Fisher's z.
double BackTransform(double value, analysis::Transform transform);

// The display scale's value in the tables' format "0.00000".
std::string Shown(double value, analysis::Transform transform);

// The index name as the texts use it inside a sentence ("odds ratio").
std::string LowerCase(std::string_view text);

// A number in a decimal format with `digits` places ("0", "0.0", "0.00000").
std::string Fixed(double value, int digits);

}  // namespace synthara::pubbias
