#include <gtest/gtest.h>

#include "pubbias/BiasData.h"

namespace synthara::pubbias {
namespace {

DataRow Row(DataCell point, DataCell se, std::string tag = "") {
    return {"S", std::move(point), std::move(se), std::move(tag)};
}

TEST(CheckVals, RefusalsAndTheirMessages) {
    const std::string notValid = "One of the effect sizes or standard errors is not isValid  ";
    const std::string highlighted = "Problems in data are highlighted  ";
    const std::string notPositive = "One of the standard errors is not positive  ";
    const struct {
        const char* name;
        std::vector<DataRow> rows;
        std::vector<int> marked;
        std::vector<std::string> messages;
    } cases[] = {
        {"point not a number", {Row(0.1, 0.2), Row("x", 0.2)}, {1}, {highlighted}},
        {"se not a number", {Row(0.1, "", ""), Row(0.3, 0.2)}, {0}, {notValid, highlighted}},
        {"se zero or below",
         {Row(0.1, 0.0), Row(0.2, 0.1), Row(0.3, -1.0)},
         {0, 2},
         {notPositive, notPositive}},
        {"no data",
         {Row({}, {}), Row({}, 0.3)},
         {},
         {"Please enter data prior to running this "
          "procedure   "}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const CheckValsResult r = CheckVals(c.rows);
        EXPECT_FALSE(r.ok);
        EXPECT_EQ(r.marked, c.marked);
        EXPECT_EQ(r.messages, c.messages);
    }
}

// Rows tagged by an earlier run's imputation go, and so does all below them;
// trailing rows without an effect are not counted.
TEST(CheckVals, StartsFromTheObservedRows) {
    const CheckValsResult clean =
        CheckVals({Row(0.1, 0.2, "Observed"), Row(0.4, 0.5, "Observed"), Row(-0.3, 0.2, "Imputed"),
                   Row(9.0, 9.0), Row({}, {})});
    ASSERT_TRUE(clean.ok);
    EXPECT_EQ(clean.N, 2);
    EXPECT_EQ(clean.data.point, (std::vector<double>{0.1, 0.4}));
    EXPECT_DOUBLE_EQ(clean.data.variance[1], 0.25);
    EXPECT_DOUBLE_EQ(clean.data.weight[1], 4);
}

}  // namespace
}  // namespace synthara::pubbias
