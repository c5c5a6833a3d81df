// The options dialog's fields read as options: numbers as the user types
// them, and anything else as a number the range check refuses.
#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "effectsize/Options.h"
#include "shell/OptionsForm.h"

namespace synthara::shell {
namespace {

TEST(OptionsFormTest, OpensOnTheProjectsOptions) {
    const OptionsForm form = OptionsForm::Of({0.3, 1.2, 2, 1});
    EXPECT_EQ(form.imputedR, "0.3");
    EXPECT_EQ(form.fudgeFactor, "1.2");
    EXPECT_EQ(form.poolVarianceMethod, 2);
    EXPECT_EQ(form.gVarianceMethod, 1);
}

TEST(OptionsFormTest, ReadsTypedNumbersAndRefusesTheRest) {
    struct Case {
        std::string imputedR, fudgeFactor;
        sheet::NumberSeparators separators;
        double r, fudge;      // NaN where the text is no number
        std::string refusal;  // the first line of CheckVals's box, "" when accepted
    };
    const double nan = std::nan("");
    const sheet::NumberSeparators comma{",", "."};
    const Case cases[] = {
        {"0.5", "1.1", {}, 0.5, 1.1, ""},
        {" -0.9999 ", "1", {}, -0.9999, 1, ""},
        {"0,25", "1,5", comma, 0.25, 1.5, ""},
        // With the point for decimals, "1,5" is no number at all.
        {"0.5", "1,5", {}, 0.5, nan, "The allowed error must fall in range of 1 to 2    "},
        {"", "1.1", {}, nan, 1.1, "The assumed correlation    "},
        {"half", "1.1", {}, nan, 1.1, "The assumed correlation    "},
        {"0.99991", "1.1", {}, 0.99991, 1.1, "The assumed correlation    "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.imputedR + " / " + c.fudgeFactor);
        OptionsForm form{c.imputedR, c.fudgeFactor, 1, 2};
        const effectsize::ComputeOptions options = form.Read(c.separators);
        if (std::isnan(c.r))
            EXPECT_TRUE(std::isnan(options.ImputedR));
        else
            EXPECT_DOUBLE_EQ(options.ImputedR, c.r);
        if (std::isnan(c.fudge))
            EXPECT_TRUE(std::isnan(options.FudgeFactor));
        else
            EXPECT_DOUBLE_EQ(options.FudgeFactor, c.fudge);
        EXPECT_EQ(options.GVarianceMethod, 2);
        const auto refused = effectsize::CheckVals(options);
        EXPECT_EQ(refused ? refused->lines.front() : "", c.refusal);
    }
}

}  // namespace
}  // namespace synthara::shell
