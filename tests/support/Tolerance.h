#pragma once
// The one place for numeric tolerances and the fuzzy compare the tests share.
#include <cmath>

#include <gtest/gtest.h>

namespace synthara::testing {

// Formulas evaluated in another order agree to this relative tolerance.
inline constexpr double kRelTol = 1e-9;
inline constexpr double kAbsTol = 1e-12;
// Published values printed to a few digits.
inline constexpr double kPrintedTol = 5e-4;

inline bool Near(double got, double want, double rtol = kRelTol, double atol = kAbsTol) {
    return std::fabs(got - want) <= atol + rtol * std::fabs(want);
}

inline ::testing::AssertionResult IsNear(double got, double want, double rtol = kRelTol,
                                         double atol = kAbsTol) {
    if (Near(got, want, rtol, atol)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "got " << got << ", want " << want << " (rtol " << rtol << ", atol " << atol << ")";
}

}  // namespace synthara::testing
