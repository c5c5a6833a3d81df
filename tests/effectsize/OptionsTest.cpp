#include "effectsize/Options.h"

#include <gtest/gtest.h>

namespace synthara::effectsize {
namespace {

std::string Words(const std::optional<ports::Box>& box) {
    if (!box) return "";
    std::string text = box->title;
    for (const std::string& line : box->lines)
        text += "|" + line;
    return text;
}

TEST(Options, CheckValsRefusesWhatTheDialogRefuses) {
    const std::string fudge =
        "Option outside range|The allowed error must fall in range of 1 to 2    |"
        "(recommended range is 1.01 to 1.20)";
    const std::string imputed =
        "Option outside range|The assumed correlation    |"
        "must fall in the range of -0.999 to +0.999";
    const struct {
        double imputedR, fudge;
        std::string words;
    } cases[] = {
        {0.5, 1, ""},      {0.5, 2, ""},       {0.5, 0.99, fudge},      {0.5, 2.01, fudge},
        {0.9999, 1.1, ""}, {-0.9999, 1.1, ""}, {0.99995, 1.1, imputed}, {-1, 3, fudge},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Words(CheckVals({c.imputedR, c.fudge, 1, 1})), c.words)
            << c.imputedR << " " << c.fudge;
}

TEST(Options, ReadOptionTakesNameAndValue) {
    OptionOverrides overrides;
    EXPECT_EQ(ReadOption("ImputedR=0.3", overrides), std::nullopt);
    EXPECT_EQ(ReadOption("GVarianceMethod=2", overrides), std::nullopt);
    // The range of the numbers is CheckVals's to tell.
    EXPECT_EQ(ReadOption("FudgeFactor=7", overrides), std::nullopt);
    ComputeOptions options;
    overrides.ApplyTo(options);
    EXPECT_EQ(options.ImputedR, 0.3);
    EXPECT_EQ(options.FudgeFactor, 7);
    EXPECT_EQ(options.PoolVarianceMethod, 1);
    EXPECT_EQ(options.GVarianceMethod, 2);

    for (const char* wrong : {"ImputedR", "ImputedR=", "ImputedR=abc", "ImputedR=0.3x",
                              "imputedr=0.3", "PoolVarianceMethod=3", "GVarianceMethod=1.5", "=1"})
        EXPECT_NE(ReadOption(wrong, overrides), std::nullopt) << wrong;
}

}  // namespace
}  // namespace synthara::effectsize
