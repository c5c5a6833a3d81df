#pragma once
// The computation options as the user sets them: their ranges, and the
// values a single run gives in place of the project's.
#include <optional>
#include <string_view>

#include "effectsize/WorkingSet.h"
#include "ports/Prompter.h"

namespace synthara::effectsize {

// The box that refuses an ImputedR or FudgeFactor outside its range, as the
// options dialog shows it; nothing when both are in range.
std::optional<ports::Box> CheckVals(const ComputeOptions& options);

// Options given for one run; those not given keep the project's values.
struct OptionOverrides {
    std::optional<double> ImputedR;
    std::optional<double> FudgeFactor;
    std::optional<int> PoolVarianceMethod;
    std::optional<int> GVarianceMethod;

    bool Empty() const {
        return !ImputedR && !FudgeFactor && !PoolVarianceMethod && !GVarianceMethod;
    }
    void ApplyTo(ComputeOptions& options) const;
};

// Reads "NAME=VALUE" into `overrides`. Returns the fault in words, or nothing
// when the value was taken: an unknown name, a value that is not a number,
// a method other than 1 or 2. The range of ImputedR and FudgeFactor is
// CheckVals's to tell.
std::optional<std::string> ReadOption(std::string_view nameValue, OptionOverrides& overrides);

}  // namespace synthara::effectsize
