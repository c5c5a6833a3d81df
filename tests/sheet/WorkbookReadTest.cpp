// Workbooks read into tables of text: what a cell shows, which sheet, how
// many rows, and the refusals of damaged and hostile files.
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sheet/import/TableFile.h"
#include "support/WorkbookMaker.h"

namespace synthara::sheet {
namespace {

using testsupport::Parts;
using testsupport::XlsxBytes;
using testsupport::XlsxPartsOf;
using testsupport::XlsxSheet;
using testsupport::Zipped;
using Rows = std::vector<std::vector<std::string>>;

const std::string kXls = std::string(SYNTHARA_TEST_DATA) + "/bcg-vaccine-trials.xls";

std::string Written(const std::string& name, const std::string& bytes) {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    const std::string path = ::testing::TempDir() + test->name() + "-" + name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

std::string OneSheet(const std::string& sheetData) {
    return XlsxBytes({{"Data", sheetData}});
}

TEST(WorkbookRead, CellsReadAsTheUserSeesThem) {
    Parts parts =
        XlsxPartsOf({{"Data",
                      "<dimension ref=\"A1:XFD1048576\"/>"
                      "<row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c>"
                      "<c r=\"B1\" t=\"inlineStr\"><is><r><t>Dose </t></r><r><t "
                      "xml:space=\"preserve\">mg</t></r><rPh><t>ignored</t></rPh></is></c>"
                      "<c r=\"C1\" t=\"b\"><v>1</v></c><c r=\"D1\"><v>12.000</v></c>"
                      "<c r=\"E1\"><v>1.5E-3</v></c><c r=\"F1\" t=\"e\"><v>#DIV/0!</v></c>"
                      "<c r=\"G1\" t=\"str\"><f>A1&amp;\"x\"</f><v>calc</v></c></row>"
                      "<row r=\"3\"><c r=\"D3\"><v>2.50</v></c><c r=\"B3\"/>"
                      "<c r=\"C3\" t=\"s\"><v>1</v></c><c r=\"E3\" t=\"b\"><v>0</v></c></row>"}});
    parts["xl/sharedStrings.xml"] =
        "<sst xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
        "<si><t>Study name</t></si><si><r><t>Z&#252;</t></r><r><t>rich</t></r>"
        "<rPh sb=\"0\" eb=\"1\"><t>phonetic</t></rPh></si></sst>";
    const auto read = ReadTableFile(Written("cells.xlsx", Zipped(parts)));
    ASSERT_TRUE(read.ok) << read.message;
    EXPECT_EQ(read.table.rows,
              (Rows{{"Study name", "Dose mg", "TRUE", "12", "0.0015", "#DIV/0!", "calc"},
                    {"", "", "Z\xC3\xBCrich", "2.5", "FALSE"}}));
    EXPECT_EQ(read.table.lines, (std::vector<int>{1, 3}));
    EXPECT_EQ(read.table.places, PlaceNames::Cells);
}

TEST(WorkbookRead, APartMayBeInUtf16) {
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"UTF-16\"?><worksheet><sheetData><row><c "
        "t=\"inlineStr\"><is><t>wide</t></is></c></row></sheetData></worksheet>";
    std::string wide = "\xFF\xFE";
    for (const char c : xml)
        wide += std::string{c, '\0'};
    Parts parts = XlsxPartsOf({{"Data", ""}});
    parts["xl/worksheets/sheet1.xml"] = wide;
    const auto read = ReadTableFile(Written("wide.xlsx", Zipped(parts)));
    ASSERT_TRUE(read.ok) << read.message;
    EXPECT_EQ(read.table.rows, (Rows{{"wide"}}));
}

TEST(WorkbookRead, ASheetIsChosenByNameOrNumber) {
    const std::string path =
        Written("sheets.xlsx",
                XlsxBytes({{"Trials", "<row><c t=\"inlineStr\"><is><t>first</t></is></c></row>"},
                           {"Notes \"2\"", "<row><c><v>2</v></c></row>"}}));
    const auto list = ListSheets(path);
    ASSERT_TRUE(list.ok) << list.message;
    EXPECT_EQ(list.names, (std::vector<std::string>{"Trials", "Notes \"2\""}));

    struct Case {
        SheetChoice choice;
        std::string cell;  // A1 of the sheet read, or the refusal
    };
    for (const Case& c :
         std::vector<Case>{{{}, "first"},
                           {{"Notes \"2\"", 0}, "2"},
                           {{"", 2}, "2"},
                           {{"Trials", 2}, "first"},  // the name goes first
                           {{"Notes", 0}, "the workbook has no sheet named \"Notes\""},
                           {{"", 3}, "the workbook has no sheet 3 (it has 2)"},
                           {{"", -1}, "the workbook has no sheet -1 (it has 2)"}}) {
        TableOptions options;
        options.sheet = c.choice;
        const auto read = ReadTableFile(path, options);
        EXPECT_EQ(read.ok ? read.table.rows.at(0).at(0) : read.message, c.cell)
            << c.choice.name << " " << c.choice.number;
    }
}

TEST(WorkbookRead, APreviewReadsOnlyItsRows) {
    // Past its second row the sheet is not even well-formed: a preview of two
    // rows never reads that far, a whole read refuses it.
    Parts parts = XlsxPartsOf({{"Data", ""}});
    parts["xl/worksheets/sheet1.xml"] =
        "<worksheet><sheetData><row r=\"2\"><c><v>1</v></c></row><row r=\"4\"><c><v>2</v></c>"
        "</row><row r=\"5\"><c><v>3</v></c></row><row r=\"6\"><c><v>4</v>";
    const std::string path = Written("preview.xlsx", Zipped(parts));
    const auto preview = PreviewTableFile(path, {}, 2);
    ASSERT_TRUE(preview.ok) << preview.message;
    EXPECT_EQ(preview.table.rows, (Rows{{"1"}, {"2"}}));
    EXPECT_EQ(preview.table.lines, (std::vector<int>{2, 4}));
    EXPECT_FALSE(ReadTableFile(path).ok);

    const auto text = PreviewTableFile(Written("preview.csv", "a,b\n1,2\n\n3,4\n"), {}, 2);
    EXPECT_EQ(text.table.rows, (Rows{{"a", "b"}, {"1", "2"}}));
}

TEST(WorkbookRead, WithoutATitlesRowColumnsAreTitledByLetters) {
    TableOptions options;
    options.firstRowTitles = false;
    const auto read = ReadTableFile(
        Written("letters.xlsx", OneSheet("<row r=\"2\"><c r=\"B2\"><v>1</v></c></row>"
                                         "<row r=\"3\"><c r=\"C3\"><v>2</v></c></row>")),
        options);
    ASSERT_TRUE(read.ok) << read.message;
    EXPECT_EQ(read.table.rows, (Rows{{"A", "B", "C"}, {"", "1"}, {"", "", "2"}}));
    EXPECT_EQ(read.table.lines, (std::vector<int>{0, 2, 3}));

    const auto text = ReadTableFile(Written("letters.csv", "x,y\n"), options);
    EXPECT_EQ(text.table.rows, (Rows{{"A", "B"}, {"x", "y"}}));
    const auto empty = ReadTableFile(Written("empty.csv", "\n"), options);
    EXPECT_TRUE(empty.table.rows.empty());
}

TEST(WorkbookRead, DamagedAndHostileWorkbooksAreRefused) {
    const auto without = [](const char* part) {
        Parts parts = XlsxPartsOf({{"Data", "<row><c><v>1</v></c></row>"}});
        parts.erase(part);
        return Zipped(parts);
    };
    const auto withSheet = [](const std::string& xml) {
        Parts parts = XlsxPartsOf({{"Data", ""}});
        parts["xl/worksheets/sheet1.xml"] = xml;
        return Zipped(parts);
    };
    const std::string laughs =
        "<?xml version=\"1.0\"?><!DOCTYPE w [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b "
        "\"&a;&a;&a;&a;&a;&a;&a;&a;\">]><worksheet><sheetData><row><c t=\"inlineStr\"><is><t>&b;"
        "</t></is></c></row></sheetData></worksheet>";
    struct Case {
        const char* what;
        std::string bytes;
        std::function<void(WorkbookLimits&)> limit;
        std::string message;
    };
    const std::vector<Case> cases{
        {"not an archive",
         "Study name,Events\n",
         {},
         "it is not an .xlsx workbook, or the workbook is damaged"},
        {"a compound document",
         std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8) + "rest",
         {},
         "the workbook is password-protected, or it is an older .xls workbook under an .xlsx "
         "name; save it as .xlsx without a password and try again"},
        {"no workbook part",
         without("xl/workbook.xml"),
         {},
         "the workbook is damaged: it lacks its part \"xl/workbook.xml\""},
        {"no sheet part",
         without("xl/worksheets/sheet1.xml"),
         {},
         "the workbook is damaged: it lacks its part \"xl/worksheets/sheet1.xml\""},
        {"no sheets", XlsxBytes({}), {}, "the workbook has no sheets"},
        {"bad XML",
         withSheet("<worksheet><sheetData><row></sheetData>"),
         {},
         "the workbook is damaged: its part \"xl/worksheets/sheet1.xml\" is not well-formed XML"},
        {"entities",
         withSheet(laughs),
         {},
         "the workbook is damaged: a part declares a document type"},
        {"a packed bomb", withSheet("<worksheet>" + std::string(3 << 20, ' ') + "</worksheet>"),
         [](WorkbookLimits& l) { l.unpackedBytes = 2 << 20; },
         "the workbook unpacks to more than 2 MB, more than the import takes"},
        {"a column too far",
         OneSheet("<row><c r=\"XFE1\"><v>1</v></c></row>"),
         {},
         "row 1 has a cell beyond the last column (XFD)"},
        {"a row too far",
         OneSheet("<row r=\"99999999999999999999999\"><c><v>1</v></c></row>"),
         {},
         "the sheet has a row 1048577, beyond the last row (1048576)"},
        {"a cell name",
         OneSheet("<row><c r=\"A1x\"><v>1</v></c></row>"),
         {},
         "the workbook is damaged: a cell of row 1 is named \"A1x\""},
        {"a row number",
         OneSheet("<row r=\"-2\"/>"),
         {},
         "the workbook is damaged: a row's number is \"-2\""},
        {"rows backwards",
         OneSheet("<row r=\"3\"><c><v>1</v></c></row><row r=\"2\"><c><v>1</v></c></row>"),
         {},
         "the workbook is damaged: row 2 comes after row 3"},
        {"too many cells",
         OneSheet("<row><c r=\"E1\"><v>1</v></c></row><row><c r=\"F2\"><v>1</v></c></row>"),
         [](WorkbookLimits& l) { l.tableCells = 10; },
         "the sheet holds more than 10 cells, more than the import takes"},
        {"a long inline text", OneSheet("<row><c t=\"inlineStr\"><is><t>abcdef</t></is></c></row>"),
         [](WorkbookLimits& l) { l.cellCharacters = 5; },
         "cell A1 holds more than 5 characters of text, more than the import takes"},
        {"a long number", OneSheet("<row><c r=\"B1\"><v>1234567</v></c></row>"),
         [](WorkbookLimits& l) { l.cellCharacters = 5; },
         "cell B1 holds more than 5 characters of text, more than the import takes"},
        {"a long shared text", XlsxBytes({{"Data", ""}}, {"abcdef"}),
         [](WorkbookLimits& l) { l.cellCharacters = 5; },
         "the workbook holds a text of more than 5 characters, more than the import takes"},
        {"too many shared texts", XlsxBytes({{"Data", ""}}, {"a", "b", "c"}),
         [](WorkbookLimits& l) { l.sharedTexts = 2; },
         "the workbook holds more than 2 texts, more than the import takes"},
        {"a missing shared text",
         OneSheet("<row><c t=\"s\"><v>7</v></c></row>"),
         {},
         "the workbook is damaged: cell A1 refers to a text the workbook lacks"},
    };
    for (const Case& c : cases) {
        TableOptions options;
        if (c.limit) c.limit(options.limits);
        const std::string path = Written("hostile.xlsx", c.bytes);
        const auto read = ReadTableFile(path, options);
        EXPECT_FALSE(read.ok) << c.what;
        EXPECT_EQ(read.Describe("data.xlsx"), "data.xlsx: " + c.message) << c.what;
    }
}

TEST(WorkbookRead, AnXlsWorkbooksSheetsAndCells) {
    const auto list = ListSheets(kXls);
    ASSERT_TRUE(list.ok) << list.message;
    EXPECT_EQ(list.names, (std::vector<std::string>{"Trials", "First three"}));

    const auto first = ReadTableFile(kXls);
    ASSERT_TRUE(first.ok) << first.message;
    ASSERT_EQ(first.table.rows.size(), 14u);
    EXPECT_EQ(first.table.rows[1],
              (std::vector<std::string>{"Aronson 1948", "4", "123", "11", "139", "44", "random"}));

    TableOptions options;
    options.sheet.name = "First three";
    const auto chosen = ReadTableFile(kXls, options);
    ASSERT_TRUE(chosen.ok) << chosen.message;
    EXPECT_EQ(chosen.table.lines, (std::vector<int>{3, 4, 5, 6, 10}));
    EXPECT_EQ(chosen.table.rows[0].at(1), "Study name");
    EXPECT_EQ(chosen.table.rows[4],
              // FreeXL gives a TRUE as the number 1.
              (std::vector<std::string>{"", "Dose", "0.1", "2.5", "1", "Z\xC3\xBCrich"}));
    EXPECT_EQ(PreviewTableFile(kXls, options, 2).table.lines, (std::vector<int>{3, 4}));
}

// The shipped workbook with its record of who wrote it turned into the
// record that says the rest is encrypted (both are 112 bytes long).
std::string ProtectedXls() {
    std::ifstream in(kXls, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const auto at = bytes.find(std::string("\x5C\x00\x70\x00", 4));
    EXPECT_NE(at, std::string::npos);
    if (at != std::string::npos) bytes.replace(at, 2, std::string("\x2F\x00", 2));
    return bytes;
}

TEST(WorkbookRead, XlsFilesThatCannotBeReadAreRefused) {
    const std::string notXls = "it is not an .xls workbook (a newer workbook is read as .xlsx)";
    struct Case {
        std::string bytes, message;
    };
    for (const Case& c : std::vector<Case>{
             {"Study name,Events\n", notXls},
             {OneSheet(""), notXls},
             {std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8) + std::string(600, '\x01'),
              "the workbook is damaged, or it is in a form of .xls that cannot be read"},
             {ProtectedXls(),
              "the workbook is password-protected; save it without a password and try again"}}) {
        const auto read = ReadTableFile(Written("bad.xls", c.bytes));
        EXPECT_FALSE(read.ok);
        EXPECT_EQ(read.message, c.message);
    }
    // The file's two sheets claim to span 14 by 7 and 10 by 6 cells.
    TableOptions options;
    options.limits.tableCells = 157;
    EXPECT_EQ(ReadTableFile(kXls, options).message,
              "the workbook's sheets span more than 157 cells, more than the import takes");
    options.limits.tableCells = 158;
    EXPECT_TRUE(ReadTableFile(kXls, options).ok);

    const auto missing = ListSheets(::testing::TempDir() + "no-such-file.xls");
    EXPECT_EQ(missing.message,
              ::testing::TempDir() + "no-such-file.xls: the file cannot be opened");
}

}  // namespace
}  // namespace synthara::sheet
