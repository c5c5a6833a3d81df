#include <gtest/gtest.h>

#include "sheet/import/DelimitedText.h"

namespace synthara::sheet {
namespace {

using Rows = std::vector<std::vector<std::string>>;

TEST(DelimitedText, SplitsRowsAndFields) {
    struct Case {
        const char* name;
        std::string_view text;
        char delimiter;
        Rows rows;
        std::vector<int> lines;
    } cases[] = {
        {"plain, final break", "a,b\n1,2\n", ',', {{"a", "b"}, {"1", "2"}}, {1, 2}},
        {"CR LF, CR", "a,b\r\n1,2\r3,4", ',', {{"a", "b"}, {"1", "2"}, {"3", "4"}}, {1, 2, 3}},
        {"byte-order mark", "\xEF\xBB\xBFStudy name\nX", ',', {{"Study name"}, {"X"}}, {1, 2}},
        {"quoted , and \"", "\"a,b\",\"say \"\"hi\"\"\"\n", ',', {{"a,b", "say \"hi\""}}, {1}},
        {"breaks in quotes", "\"x\r\ny\",z\nnext\n", ',', {{"x\r\ny", "z"}, {"next"}}, {1, 3}},
        {"empty fields and lines", "a,,\n\n,b", ',', {{"a", "", ""}, {""}, {"", "b"}}, {1, 2, 3}},
        {"text after a closing quote", "\"ab\"c,d", ',', {{"abc", "d"}}, {1}},
        {"quote inside a plain field", "5\" wide,x", ',', {{"5\" wide", "x"}}, {1}},
        {"tab keeps commas", "a,b\tc\n", '\t', {{"a,b", "c"}}, {1}},
        {"nothing at all", "", ',', {}, {}},
        {"UTF-8 text", "Jos\xC3\xA9,\xE2\x82\xAC", ',', {{"Jos\xC3\xA9", "\xE2\x82\xAC"}}, {1}},
    };
    for (const auto& c : cases) {
        const auto result = ReadDelimitedText(c.text, c.delimiter);
        ASSERT_TRUE(result.ok) << c.name << ": " << result.message;
        EXPECT_EQ(result.table.rows, c.rows) << c.name;
        EXPECT_EQ(result.table.lines, c.lines) << c.name;
    }
}

TEST(DelimitedText, FaultsNameLineAndColumn) {
    struct Case {
        const char* name;
        std::string_view text;
        int line, column;
        const char* message;
    } cases[] = {
        {"unclosed quote", "a,b\n1,\"open\n2,3\n", 2, 2,
         "the quote that opens this field is never closed"},
        {"stray byte", "a,b\n1,\xFF\n", 2, 2, "not valid text"},
        {"cut sequence", "a,\xC3", 1, 2, "not valid text"},
        {"overlong form", "\xC0\xAF", 1, 1, "not valid text"},
        {"surrogate", "x,y,\xED\xA0\x80", 1, 3, "not valid text"},
        {"bad byte on a quoted field's second line", "a\n\"x\ny\xFE\"", 3, 1, "not valid text"},
        {"NUL", std::string_view("a,b\nc\0d,e", 9), 2, 1, "not valid text: it holds a NUL byte"},
    };
    for (const auto& c : cases) {
        const auto result = ReadDelimitedText(c.text, ',');
        ASSERT_FALSE(result.ok) << c.name;
        EXPECT_EQ(result.line, c.line) << c.name;
        EXPECT_EQ(result.column, c.column) << c.name;
        EXPECT_EQ(result.message, c.message) << c.name;
        EXPECT_TRUE(result.table.rows.empty()) << c.name;
    }
    const auto result = ReadDelimitedText("\"", ',');
    EXPECT_EQ(result.Describe("data.csv"),
              "data.csv, line 1, column 1: the quote that opens this field is never closed");
}

TEST(DelimitedText, DelimiterFollowsTheExtension) {
    EXPECT_EQ(DelimiterForPath("/tmp/a.csv"), ',');
    EXPECT_EQ(DelimiterForPath("A.CSV"), ',');
    EXPECT_EQ(DelimiterForPath("a.tsv"), '\t');
    EXPECT_EQ(DelimiterForPath("a.txt"), '\t');
    EXPECT_EQ(DelimiterForPath("dir.csv/file"), '\t');
}

TEST(DelimitedText, MissingFileIsAFaultWithoutPlace) {
    const auto result = ReadDelimitedFile("/nonexistent/dir/file.csv");
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.Describe("file.csv"), "file.csv: the file cannot be opened");
}

}  // namespace
}  // namespace synthara::sheet
