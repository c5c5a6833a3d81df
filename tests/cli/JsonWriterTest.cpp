#include "cli/JsonWriter.h"

#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <optional>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace synthara::cli {
namespace {

// What the compact dump the output used to come from prints for `value`.
std::string Dumped(const nlohmann::json& value) {
    return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string Written(const std::function<void(JsonWriter&)>& write) {
    std::ostringstream out;
    {
        JsonWriter json(out);
        write(json);
    }
    return out.str();
}

TEST(JsonWriter, StringsAreEscapedAsTheDumpEscapedThem) {
    const struct {
        std::string text;
        const char* expected;  // nullptr: as the dump has it
    } cases[] = {
        {"plain", "\"plain\""},
        {"say \"hi\" \\ bye", R"("say \"hi\" \\ bye")"},
        {"tab\there\nnew\rret\bback\fform", R"("tab\there\nnew\rret\bback\fform")"},
        {std::string("nul\0one\x01unit\x1f"
                     "del\x7f",
                     17),
         "\"nul\\u0000one\\u0001unit\\u001fdel\x7f\""},
        {"M\xC3\xBCller \xE2\x82\xAC \xF0\x9F\x98\x80",
         "\"M\xC3\xBCller \xE2\x82\xAC \xF0\x9F\x98\x80\""},
        {"bad \xFF end", "\"bad \xEF\xBF\xBD end\""},
        {"", "\"\""},
        // Bytes that are not UTF-8, each replaced as the dump replaced it.
        {"lone \x80 continuation", nullptr},
        {"overlong \xC0\x80 and \xE0\x80\x80", nullptr},
        {"surrogate \xED\xA0\x80", nullptr},
        {"beyond \xF4\x90\x80\x80 and \xF5\x80", nullptr},
        {"cut \xE2\x82 short", nullptr},
        {"cut at the end \xF0\x9F\x98", nullptr},
        {"\xC3", nullptr},
        {"edges \xC2\x80 \xDF\xBF \xEF\xBF\xBF \xF4\x8F\xBF\xBF \xED\x9F\xBF \xEE\x80\x80",
         nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const std::string written = Written([&](JsonWriter& json) { json.String(c.text); });
        EXPECT_EQ(written, Dumped(c.text));
        if (c.expected != nullptr) {
            EXPECT_EQ(written, c.expected);
        }
    }
}

TEST(JsonWriter, NumbersReadBackAndLookAsTheDumpPrintedThem) {
    const double cases[] = {0.0,
                            -0.0,
                            1.0,
                            4.0,
                            -2.5,
                            0.1,
                            0.30000000000000004,
                            1.0 / 3.0,
                            -0.93869414087039216,
                            1e-300,
                            1e300,
                            1e15,
                            1e16,
                            123456789012345678.0,
                            0.0001,
                            0.00001,
                            std::numeric_limits<double>::max(),
                            std::numeric_limits<double>::denorm_min(),
                            std::numeric_limits<double>::lowest()};
    for (const double value : cases) {
        SCOPED_TRACE(value);
        const std::string written = Written([&](JsonWriter& json) { json.Number(value); });
        EXPECT_EQ(written, Dumped(value));
        EXPECT_EQ(std::strtod(written.c_str(), nullptr), value);
    }
    EXPECT_EQ(Written([](JsonWriter& json) { json.Number(0.1); }), "0.1");
    EXPECT_EQ(Written([](JsonWriter& json) { json.Number(4.0); }), "4.0");
    EXPECT_EQ(Written([](JsonWriter& json) { json.Number(1e-300); }), "1e-300");
    EXPECT_EQ(Written([](JsonWriter& json) { json.Number(-0.0); }), "-0.0");
    EXPECT_EQ(Written([](JsonWriter& json) { json.Number(-0.93869414087039216); }),
              "-0.9386941408703922");
}

TEST(JsonWriter, WhatIsNotANumberIsNull) {
    const std::string written = Written([](JsonWriter& json) {
        json.BeginArray();
        json.Number(std::numeric_limits<double>::quiet_NaN());
        json.Number(std::numeric_limits<double>::infinity());
        json.Number(-std::numeric_limits<double>::infinity());
        json.Number(std::optional<double>());
        json.Number(std::optional<double>(2.0));
        json.Integer(-7);
        json.Integer(std::numeric_limits<std::int64_t>::max());
        json.EndArray();
    });
    EXPECT_EQ(written, "[null,null,null,null,2.0,-7,9223372036854775807]\n");
}

TEST(JsonWriter, ContainersNestWithTheirCommas) {
    const std::string written = Written([](JsonWriter& json) {
        json.BeginObject();
        json.Key("a").BeginArray();
        json.Integer(1);
        json.BeginObject();
        json.Key("b").Null();
        json.Key("c").Bool(true);
        json.EndObject();
        json.BeginArray();
        json.EndArray();
        json.EndArray();
        json.Key("d").BeginObject();
        json.EndObject();
        json.Key("e \"quoted\"").Bool(false);
        json.EndObject();
    });
    EXPECT_EQ(written, R"({"a":[1,{"b":null,"c":true},[]],"d":{},"e \"quoted\"":false})"
                       "\n");
}

TEST(JsonWriter, TheStreamGetsTextBeforeTheDocumentEnds) {
    std::ostringstream out;
    nlohmann::json expected = nlohmann::json::array();
    JsonWriter json(out);
    json.BeginArray();
    for (int i = 0; i < 20000; ++i) {
        const std::string text = "row " + std::to_string(i) + " \xC3\xA9\t";
        json.String(text);
        json.Number(i / 7.0);
        expected.push_back(text);
        expected.push_back(i / 7.0);
    }
    const std::size_t before = out.str().size();
    EXPECT_GT(before, 0u);
    json.EndArray();
    EXPECT_LT(out.str().size() - before, std::size_t{70000});  // held back: a piece at most
    EXPECT_EQ(out.str(), Dumped(expected) + "\n");
}

}  // namespace
}  // namespace synthara::cli
