#include <gtest/gtest.h>

#include "JsonPath.h"

namespace synthara::testing {
namespace {

using nlohmann::json;

const json kDoc = json::parse(R"js({
  "rows": [{"row": 1, "study": "A", "indices": {"Hedges's g": {"point": 0.5, "se": null}}},
           {"row": 2, "study": "B, C", "indices": {"N(1)": {
    "point" : 12}
}
}],
  "summaries": [{"model": "Fixed", "group": "Overall", "k": 3},
                {"model": "Random", "group": "Overall", "k": 3},
                {"model": "Fixed", "group": "x", "k": 1}],
  "twin": [{"m": "a"}, {"m": "a"}]
})js");

TEST(JsonPath, ResolvesKeysSelectorsAndIndices) {
    struct Case {
        const char* path;
        json want;
    } cases[] = {
        {"rows[row=1].indices.Hedges's g.point", 0.5},
        {"rows[row=2].indices.N(1).point", 12},
        {"rows[1].study", "B, C"},
        {"summaries[model=Random,group=Overall].k", 3},
        {"summaries[group=x].model", "Fixed"},
        {"rows[row=1].indices.Hedges's g.se", nullptr},
    };
    for (const auto& c : cases) {
        const json* got = ResolvePath(kDoc, c.path);
        ASSERT_NE(got, nullptr) << c.path;
        EXPECT_EQ(*got, c.want) << c.path;
    }
}

TEST(JsonPath, UnresolvedPathsSayWhere) {
    const char* paths[] = {
        "rows[row=3].study",         // no element matches
        "rows[5]",                   // beyond the list
        "rows[row=1].indices.Odds",  // no such key
        "summaries[model=Fixed].k",  // two elements match
        "rows.row",                  // a list is not an object
        "rows[row=1].study.name",    // a text has no keys
        "rows[row=1",                // unclosed
    };
    for (const char* path : paths) {
        std::string why;
        EXPECT_EQ(ResolvePath(kDoc, path, &why), nullptr) << path;
        EXPECT_FALSE(why.empty()) << path;
    }
}

}  // namespace
}  // namespace synthara::testing
