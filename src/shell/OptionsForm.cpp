#include "shell/OptionsForm.h"

#include <limits>

namespace synthara::shell {

OptionsForm OptionsForm::Of(const effectsize::ComputeOptions& options) {
    return {sheet::FormatNumber(options.ImputedR), sheet::FormatNumber(options.FudgeFactor),
            options.PoolVarianceMethod, options.GVarianceMethod};
}

effectsize::ComputeOptions OptionsForm::Read(const sheet::NumberSeparators& separators) const {
    const auto number = [&](const std::string& text) {
        double value = 0;
        return sheet::ParseTypedNumber(text, separators, value)
                   ? value
                   : std::numeric_limits<double>::quiet_NaN();
    };
    effectsize::ComputeOptions options;
    options.ImputedR = number(imputedR);
    options.FudgeFactor = number(fudgeFactor);
    options.PoolVarianceMethod = poolVarianceMethod == 2 ? 2 : 1;
    options.GVarianceMethod = gVarianceMethod == 2 ? 2 : 1;
    return options;
}

}  // namespace synthara::shell
