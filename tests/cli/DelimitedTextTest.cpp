#include <filesystem>

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
        {"empty fields and lines", "a,,\n\n,b", ',', {{"a"}, {"", "b"}}, {1, 3}},
        {"blank and empty-field lines are no rows",
         "\n\r\n,,,\n\"\",\nx\n\n\ny,,z\n\n",
         ',',
         {{"x"}, {"y", "", "z"}},
         {5, 8}},
        {"a quoted break keeps the line count",
         "\"a\n\nb\"\n\n\nc",
         ',',
         {{"a\n\nb"}, {"c"}},
         {1, 6}},
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

// Blank lines and empty fields are passed over as they are read, so the
// table holds only what the text holds, whatever its shape.
TEST(DelimitedText, EmptinessCostsNothing) {
    std::string blank = "Study name\n";
    blank.append(1'000'000, '\n');
    blank += "A\n";
    const auto lines = ReadDelimitedText(blank, ',');
    ASSERT_TRUE(lines.ok);
    ASSERT_EQ(lines.table.rows.size(), 2u);
    EXPECT_EQ(lines.table.lines, (std::vector<int>{1, 1'000'002}));

    std::string wide(5'000'000, ',');
    const auto empty = ReadDelimitedText("t\n" + wide + "\n", ',');
    ASSERT_TRUE(empty.ok);
    EXPECT_EQ(empty.table.rows, (Rows{{"t"}}));
    EXPECT_EQ(empty.table.rows.front().capacity(), 1u);

    // Text far out on a row is refused at the bound, not stored.
    const auto far = ReadDelimitedText(wide + "x", ',');
    ASSERT_FALSE(far.ok);
    EXPECT_EQ(far.column, static_cast<int>(MaxDelimitedFields) + 1);
    EXPECT_EQ(far.message, "the row has more than 16384 fields");
    const std::string atBound = std::string(MaxDelimitedFields - 1, ',') + "x";
    const auto last = ReadDelimitedText(atBound, ',');
    ASSERT_TRUE(last.ok) << last.message;
    EXPECT_EQ(last.table.rows.front().size(), MaxDelimitedFields);
}

TEST(DelimitedText, DelimiterFollowsTheExtension) {
    EXPECT_EQ(DelimiterForPath("/tmp/a.csv"), ',');
    EXPECT_EQ(DelimiterForPath("A.CSV"), ',');
    EXPECT_EQ(DelimiterForPath("a.tsv"), '\t');
    EXPECT_EQ(DelimiterForPath("a.txt"), '\t');
    EXPECT_EQ(DelimiterForPath("dir.csv/file"), '\t');
}

TEST(DelimitedText, MissingFileOrFolderIsAFaultWithoutPlace) {
    const auto result = ReadDelimitedFile("/nonexistent/dir/file.csv");
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.Describe("file.csv"), "file.csv: the file cannot be opened");
    const auto folder = ReadDelimitedFile(std::filesystem::temp_directory_path().string());
    EXPECT_FALSE(folder.ok);
    EXPECT_EQ(folder.Describe("tmp"), "tmp: it is a folder, not a file");
}

}  // namespace
}  // namespace synthara::sheet
