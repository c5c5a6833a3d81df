#pragma once
// The computation options dialog's fields as the user fills them in: the
// two numbers as typed and the choice of each pair of buttons.
#include <string>

#include "effectsize/WorkingSet.h"
#include "sheet/grid/Cell.h"

namespace synthara::shell {

struct OptionsForm {
    std::string imputedR;
    std::string fudgeFactor;
    int poolVarianceMethod = 1;  // 1 pools the variance, 2 doesn't
    int gVarianceMethod = 1;     // 1 recommended, 2 the alternative formula

    // The fields as the dialog opens them on the project's options.
    static OptionsForm Of(const effectsize::ComputeOptions& options);

    // The options the fields give. A text that is no number reads as
    // not-a-number, so the range check refuses it with its own box rather
    // than taking a value the user never typed.
    effectsize::ComputeOptions Read(const sheet::NumberSeparators& separators) const;
};

}  // namespace synthara::shell
