#pragma once
// Rows of a test as tables: a row with the numbers each index must hold, or
// a refused row with its exact messages and no index valid.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "OneRow.h"
#include "support/Tolerance.h"

namespace synthara::effectsize {

using Row = OneRow;

// An index's expected numbers; a spread of nullopt is not checked.
struct Expect {
    int index;
    double point;
    std::optional<double> se = std::nullopt;
};

struct ValidCase {
    const char* what;
    const char* format;
    std::vector<std::optional<double>> values;
    std::vector<Expect> expect;
};

inline void CheckValid(const ValidCase& c) {
    const Row row(c.format, c.values);
    EXPECT_EQ(row.ws.RowErrors, "") << c.what;
    for (const Expect& e : c.expect) {
        EXPECT_TRUE(row.ws.IsValid(e.index)) << c.what << ", index " << e.index;
        EXPECT_TRUE(synthara::testing::IsNear(row.ws.Es(1, e.index), e.point))
            << c.what << ", index " << e.index;
        if (e.se) {
            EXPECT_TRUE(synthara::testing::IsNear(row.ws.Es(2, e.index), *e.se))
                << c.what << ", index " << e.index;
            EXPECT_TRUE(synthara::testing::IsNear(row.ws.Es(3, e.index), *e.se * *e.se)) << c.what;
        }
    }
}

struct RefusedCase {
    const char* what;
    const char* format;
    std::vector<std::optional<double>> values;
    std::vector<std::string> errors;
};

inline void CheckRefused(const RefusedCase& c) {
    const Row row(c.format, c.values);
    EXPECT_EQ(row.Errors(), c.errors) << c.what;
    EXPECT_TRUE(row.ValidIndices().empty()) << c.what;
}

}  // namespace synthara::effectsize
