#include "analysis/DisplayVals.h"

#include <cmath>

#include <gtest/gtest.h>

#include "stats/Formulas.h"
#include "support/Tolerance.h"

namespace synthara::analysis {
namespace {

using testing::IsNear;

TEST(GetDisplayVals, LimitsAndTestOnTheComputationScale) {
    const DisplayVals d = GetDisplayVals(0.25, 0.98, Transform::None, 1.96);
    EXPECT_TRUE(IsNear(d.point, 0.98));
    EXPECT_TRUE(IsNear(d.se, 0.5));
    EXPECT_TRUE(IsNear(d.variance, 0.25));
    EXPECT_TRUE(IsNear(d.lower, 0.0));
    EXPECT_TRUE(IsNear(d.upper, 1.96));
    EXPECT_TRUE(IsNear(d.z, 1.96));
    EXPECT_TRUE(IsNear(d.p, 0.049995790296440745, 1e-9));
}

TEST(GetDisplayVals, TransformsTakePointAndLimitsToTheDisplayScale) {
    struct Case {
        Transform transform;
        double (*inverse)(double);
    } cases[] = {
        {Transform::Log, [](double x) { return std::exp(x); }},
        {Transform::Logit, stats::InverseLogit},
        {Transform::Fisher, stats::InverseFisher},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(TransformWord(c.transform)));
        const DisplayVals raw = GetDisplayVals(0.04, -0.3, Transform::None, 1.96);
        const DisplayVals d = GetDisplayVals(0.04, -0.3, c.transform, 1.96);
        EXPECT_TRUE(IsNear(d.point, c.inverse(-0.3)));
        EXPECT_TRUE(IsNear(d.lower, c.inverse(raw.lower)));
        EXPECT_TRUE(IsNear(d.upper, c.inverse(raw.upper)));
        EXPECT_EQ(d.se, 0);
        EXPECT_EQ(d.variance, 0);
        EXPECT_TRUE(IsNear(d.z, raw.z));
        EXPECT_TRUE(IsNear(d.p, raw.p));
    }
}

TEST(GetDisplayVals, NoVarianceGivesAPointWithoutInterval) {
    for (Transform t : {Transform::None, Transform::Log, Transform::Logit, Transform::Fisher}) {
        for (double variance : {0.0, -0.5}) {
            SCOPED_TRACE(std::string(TransformWord(t)) + " " + std::to_string(variance));
            const DisplayVals d = GetDisplayVals(variance, 0.4, t, 1.96);
            EXPECT_EQ(d.se, 0);
            EXPECT_EQ(d.variance, 0);
            EXPECT_EQ(d.lower, d.point);
            EXPECT_EQ(d.upper, d.point);
            EXPECT_EQ(d.z, 0);
            EXPECT_EQ(d.p, 1);
        }
    }
}

TEST(ConfidenceLevel, EachLevelOfferedHasItsTwoTailedDeviate) {
    const struct {
        const char* text;
        double level, critical;
    } levels[] = {
        {"99%", 0.99, 2.5758293035489},    {"95%", 0.95, 1.9599639845400536},
        {"90%", 0.90, 1.6448536269514715}, {"85%", 0.85, 1.439531470938456},
        {"80%", 0.80, 1.2815515655446008}, {"75%", 0.75, 1.1503493803760079},
        {"70%", 0.70, 1.0364333894937894}, {"68%", 0.68, 0.9944578832097535},
    };
    ASSERT_EQ(std::size(levels), ConfidenceLevels.size());
    for (const auto& l : levels) {
        SCOPED_TRACE(l.text);
        ASSERT_TRUE(ParseConfidenceLevel(l.text).has_value());
        EXPECT_EQ(*ParseConfidenceLevel(l.text), l.level);
        EXPECT_TRUE(IsNear(CICritical(l.level), l.critical));
    }
    EXPECT_EQ(ParseConfidenceLevel("90"), 0.90);
    for (const char* refused : {"", "96", "95 %", "0.95", "100%"})
        EXPECT_FALSE(ParseConfidenceLevel(refused).has_value()) << refused;
}

}  // namespace
}  // namespace synthara::analysis
