// Workbooks as INPUT: the first sheet of an .xlsx or .xls file computes the
// rows its delimited text computes, and a damaged one is refused by name.
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CliRun.h"
#include "ports/Prompter.h"
#include "shell/Document.h"
#include "support/WorkbookMaker.h"

namespace synthara::cli {
namespace {

using clitest::RunCli;
using clitest::WriteFile;

const std::string kSource = SYNTHARA_SOURCE_DIR;
const std::string kCsv = kSource + "/examples/bcg-vaccine-trials.csv";
// The same table, written by a spreadsheet program as .xls: its first sheet.
const std::string kXls = kSource + "/tests/data/bcg-vaccine-trials.xls";
constexpr const char* kFormat = "Events and sample size in each group";

// The example's rows (it quotes no field), as the cells of a sheet.
std::vector<std::vector<std::string>> CsvRows() {
    std::ifstream in(kCsv);
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(in, line);) {
        std::vector<std::string> cells;
        std::istringstream fields(line);
        for (std::string cell; std::getline(fields, cell, ',');)
            cells.push_back(cell);
        rows.push_back(cells);
    }
    return rows;
}

std::string XlsxOf(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::string> shared;
    const std::string data = testsupport::SheetDataOf(rows, shared);
    // A second sheet, which INPUT never reads.
    return testsupport::XlsxBytes({{"Trials", data}, {"Other", "<row><c><v>1</v></c></row>"}},
                                  shared);
}

TEST(WorkbookInput, WorkbooksComputeTheRowsOfTheirText) {
    const std::string xlsx = WriteFile("trials.xlsx", XlsxOf(CsvRows()));
    for (const char* command : {"compute", "analyze"}) {
        const auto fromText = RunCli({command, kCsv, "--format", kFormat, "--json"});
        ASSERT_EQ(fromText.status, ExitDone) << fromText.err;
        for (const std::string& workbook : {xlsx, kXls}) {
            const auto ran = RunCli({command, workbook, "--format", kFormat, "--json"});
            ASSERT_EQ(ran.status, ExitDone) << ran.err;
            EXPECT_EQ(ran.out, fromText.out) << command << " " << workbook;
        }
    }
    const std::string syn = ::testing::TempDir() + "WorkbookInput-trials.syn";
    const auto converted = RunCli({"convert", xlsx, syn, "--format", kFormat});
    ASSERT_EQ(converted.status, ExitDone) << converted.err;
    EXPECT_EQ(converted.out, "Wrote " + syn + " (13 rows)\n");
    EXPECT_EQ(RunCli({"compute", syn, "--json"}).out,
              RunCli({"compute", kCsv, "--format", kFormat, "--json"}).out);
}

// What the desktop's import dialog asks of the open project: another sheet
// than the first, and the first row as data.
TEST(WorkbookInput, TheProjectOpensTheSheetChosen) {
    std::vector<std::string> shared;
    const std::string data = testsupport::SheetDataOf(CsvRows(), shared);
    const std::string path = WriteFile(
        "chosen.xlsx", testsupport::XlsxBytes(
                           {{"Notes", "<row><c><v>1</v></c></row>"}, {"Trials", data}}, shared));
    ports::SilentPrompter prompter;
    shell::Document document(prompter);
    shell::OpenSettings settings = shell::OpenSettings::ForFormat(kFormat);
    EXPECT_FALSE(document.Open(path, settings).ok());
    settings.table.sheet.name = "Trials";
    const auto opened = document.Open(path, settings);
    ASSERT_TRUE(opened.ok()) << opened.message;
    EXPECT_EQ(document.DataRows(), 13);
    // Without labels the titles row is data, and the columns wait to be identified.
    settings.table.firstRowTitles = false;
    ASSERT_TRUE(document.Open(path, settings).ok());
    EXPECT_EQ(document.DataRows(), 14);
    EXPECT_FALSE(document.HasDataEntryColumns());
}

TEST(WorkbookInput, FaultsNameTheFileAndTheCell) {
    auto rows = CsvRows();
    rows[0].push_back("Data format");
    rows[2].resize(rows[0].size());
    rows[2].back() = "No such format";
    const std::string badFormat = WriteFile("format.xlsx", XlsxOf(rows));
    const std::string damaged = WriteFile("damaged.xlsx", "Study name\n");
    const std::string notXls = WriteFile("text.xls", "Study name\n");
    struct Case {
        std::string path, err;
    };
    for (const Case& c : std::vector<Case>{
             {badFormat, badFormat + ", cell H3: unknown data format \"No such format\"\n"},
             {damaged, damaged + ": it is not an .xlsx workbook, or the workbook is damaged\n"},
             {notXls,
              notXls + ": it is not an .xls workbook (a newer workbook is read as .xlsx)\n"}}) {
        const auto ran = RunCli({"compute", c.path, "--format", kFormat});
        EXPECT_EQ(ran.status, ExitRefused);
        EXPECT_EQ(ran.err, c.err);
    }
}

}  // namespace
}  // namespace synthara::cli
