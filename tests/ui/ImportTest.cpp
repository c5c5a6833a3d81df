// Opening tables of rows from the desktop: the import preview, the rows it
// gives against the command line's reading of the same file, columns brought
// in without labels, "Use first row as labels", and files that can't be read.
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QPainter>
#include <QTableWidget>
#include <fstream>
#include <sstream>

#include "ProgramFixture.h"
#include "app/ImportDialog.h"
#include "app/MainWindow.h"
#include "cli/CommandSupport.h"
#include "sheet/grid/MetaRows.h"
#include "sheet/import/TableFile.h"
#include "support/WorkbookMaker.h"

namespace synthara::ui {
namespace {

constexpr const char* kFormat = "Events and sample size in each group";
const std::string kCsv = SYNTHARA_EXAMPLES "/bcg-vaccine-trials.csv";
const std::string kXls = SYNTHARA_TEST_DATA "/bcg-vaccine-trials.xls";

// Each data row's study name and its indices' values, in order.
std::string Rows(const shell::Document& document) {
    std::ostringstream out;
    out.precision(17);
    document.ForEachRowResult([&](int i, const effectsize::RowResult& row) {
        out << document.StudyName(i) << ":";
        for (const auto& index : row.indices)
            out << " " << index.index << "=" << index.point.value_or(-1e300);
        out << "\n";
    });
    return out.str();
}

// The example's rows as a workbook of two sheets, the table on the second.
std::string WriteWorkbook(const std::filesystem::path& folder) {
    const sheet::DelimitedResult csv = sheet::ReadTableFile(kCsv);
    std::vector<std::string> shared;
    const testsupport::XlsxSheet notes{"Notes", testsupport::SheetDataOf({{"Read me"}}, shared)};
    const testsupport::XlsxSheet trials{"Trials", testsupport::SheetDataOf(csv.table.rows, shared)};
    const std::string path = (folder / "trials.xlsx").string();
    std::ofstream(path, std::ios::binary) << testsupport::XlsxBytes({notes, trials}, shared);
    return path;
}

class ImportTest : public ProgramFixture {
  protected:
    // Makes the program; the import preview is answered by `answer`.
    void MakeWithPreview(std::function<int(ImportDialog&)> answer) {
        Make([answer](QDialog& dialog) {
            auto* preview = qobject_cast<ImportDialog*>(&dialog);
            return preview != nullptr ? answer(*preview) : int(QDialog::Rejected);
        });
    }
    // Opens `path` by File > Open.
    void OpenByMenu(const std::string& path) {
        chooser.answers = {path};
        ASSERT_TRUE(program->Window().Run("Open"));
    }
    shell::Document& Doc() { return program->Document(); }
};

TEST_F(ImportTest, TablesGiveTheRowsTheCommandLineGives) {
    const std::string xlsx = WriteWorkbook(folder);
    for (const auto& [path, sheet] : {std::pair{kCsv, 0}, {kXls, 0}, {xlsx, 1}}) {
        SCOPED_TRACE(path);
        prompter.shown.clear();
        std::string proposed;
        MakeWithPreview([&, sheet = sheet](ImportDialog& dialog) {
            dialog.Sheets().setCurrentIndex(sheet);
            proposed = dialog.DefaultFormat();
            return int(QDialog::Accepted);
        });
        OpenByMenu(path);
        // The titles fit one format, which the preview proposes for rows naming none.
        EXPECT_EQ(proposed, kFormat);
        ASSERT_EQ(Doc().DataRows(), 13);
        EXPECT_TRUE(prompter.shown.empty()) << prompter.Last();

        // The command line reads the table's sheet as its first; the workbook
        // made here has it second, so it reads the .csv the workbook was made of.
        testing::ScriptedPrompter quiet;
        shell::Document cli(quiet);
        std::ostringstream err;
        ASSERT_EQ(cli::OpenInput(sheet == 0 ? path : kCsv, kFormat, {}, cli, err, {}), 0)
            << err.str();
        EXPECT_EQ(Rows(Doc()), Rows(cli));
        EXPECT_NE(Rows(cli).find("Aronson 1948: "), std::string::npos);
    }
}

TEST_F(ImportTest, WithoutLabelsColumnsComeInByLettersToBeIdentified) {
    MakeWithPreview([](ImportDialog& dialog) {
        dialog.FirstRowLabels().setChecked(false);
        // The preview follows: letters over the file's own titles row.
        EXPECT_EQ(dialog.Preview().horizontalHeaderItem(0)->text(), "A");
        EXPECT_EQ(dialog.Preview().item(0, 0)->text(), "Study name");
        EXPECT_FALSE(dialog.Formats().isEnabled());
        return int(QDialog::Accepted);
    });
    prompter.answers = {ports::Answer::No};
    OpenByMenu(kCsv);
    // No refusal; the wizard's identify path is offered, as no block exists.
    ASSERT_EQ(prompter.shown.size(), 1u);
    EXPECT_EQ(prompter.shown[0].box.title, "Identify columns");
    const sheet::Sheet& sheet = Doc().Sheet();
    const int first = sheet.Flex().FixedCols();
    EXPECT_EQ(sheet.Meta(first, sheet::MetaRow::ColumnHeader), "A");
    EXPECT_EQ(sheet.Meta(first + 6, sheet::MetaRow::ColumnHeader), "G");
    EXPECT_EQ(sheet.Meta(first + 1, sheet::MetaRow::Function), "Unknown");
    EXPECT_EQ(sheet.Meta(first + 1, sheet::MetaRow::DataType), "Categorical");  // its title row
    EXPECT_EQ(Doc().DataRows(), 14);
    EXPECT_FALSE(Doc().HasDataEntryColumns());

    // The first row then titles the columns and goes.
    ASSERT_TRUE(program->Window().Run("Use first row as labels"));
    EXPECT_EQ(sheet.Meta(first, sheet::MetaRow::ColumnHeader), "Study name");
    EXPECT_EQ(sheet.Meta(first + 6, sheet::MetaRow::ColumnHeader), "Allocation");
    EXPECT_EQ(sheet.Meta(first, sheet::MetaRow::Renamed), "Manual");
    EXPECT_EQ(Doc().DataRows(), 13);
    EXPECT_EQ(Doc().CellText(sheet::FixedRowCount, first), "Aronson 1948");
    EXPECT_EQ(Doc().CellText(sheet::FixedRowCount + 12, first), "Comstock et al 1976");
    EXPECT_TRUE(Doc().Dirty());
    EXPECT_EQ(prompter.shown.size(), 1u);
}

TEST_F(ImportTest, FirstRowAsLabelsSparesDisplayColumnsAndRefusesAnEmptyRow) {
    Make();
    OpenExample();
    const sheet::Sheet& sheet = Doc().Sheet();
    // A display column keeps its title; the study column takes its first name.
    int display = -1;
    for (int c = 0; c < sheet.Flex().Cols() && display < 0; ++c)
        if (sheet.MetaIs(c, sheet::MetaRow::Function, "Display") && !sheet.Flex().Col(c).hidden)
            display = c;
    ASSERT_GE(display, 0);
    const std::string displayTitle = sheet.Meta(display, sheet::MetaRow::ColumnHeader);
    const int study = sheet.GetCol(0, 1);
    ASSERT_TRUE(program->Window().Run("Use first row as labels"));
    EXPECT_EQ(sheet.Meta(study, sheet::MetaRow::ColumnHeader), "Aronson 1948");
    EXPECT_EQ(sheet.Meta(display, sheet::MetaRow::ColumnHeader), displayTitle);
    EXPECT_EQ(Doc().DataRows(), 12);

    Make();
    prompter.shown.clear();
    ASSERT_TRUE(program->Window().Run("Use first row as labels"));
    EXPECT_EQ(prompter.Only(),
              " Use first row as labels|The first row of the sheet is empty, so there are no "
              "labels to take from it.       ");
    EXPECT_FALSE(Doc().Dirty());
}

TEST_F(ImportTest, UnreadableFilesLeaveTheProjectAsItWas) {
    const std::string damaged = (folder / "damaged.xlsx").string();
    std::ofstream(damaged, std::ios::binary) << "PK\x03\x04 not a workbook";
    const std::string binary = (folder / "binary.csv").string();
    std::ofstream(binary, std::ios::binary) << "Study name,x\n\xff\xfe,1\n";
    QString fault;
    MakeWithPreview([&](ImportDialog& dialog) {
        fault = dialog.Fault();
        return int(QDialog::Accepted);  // as if Ok were pressed all the same
    });
    OpenExample();
    const std::string before = Rows(Doc());
    for (const std::string& path : {damaged, binary}) {
        SCOPED_TRACE(path);
        prompter.shown.clear();
        prompter.answers = {ports::Answer::No};  // the unsaved rows are not saved
        OpenByMenu(path);
        EXPECT_FALSE(fault.isEmpty());
        ASSERT_EQ(prompter.shown.size(), 2u);
        EXPECT_EQ(prompter.shown[1].box.title, " File not opened ");
        EXPECT_EQ(Rows(Doc()), before);
    }
}

TEST_F(ImportTest, ImportNoteOffersToOpenAFile) {
    MakeWithPreview([](ImportDialog&) { return int(QDialog::Accepted); });
    prompter.answers = {ports::Answer::Yes};
    chooser.answers = {kCsv};
    ASSERT_TRUE(program->Window().Run("Import"));
    ASSERT_FALSE(prompter.shown.empty());
    EXPECT_EQ(prompter.shown[0].box.title, "Import data");
    EXPECT_NE(ports::Box(prompter.shown[0].box).Text().find("(CTRL-V)"), std::string::npos);
    EXPECT_EQ(Doc().DataRows(), 13);
}

TEST_F(ImportTest, PreviewListsAWorkbooksSheets) {
    const std::string xlsx = WriteWorkbook(folder);
    Make();
    ImportDialog dialog(xlsx, &program->Window());
    ASSERT_EQ(dialog.Sheets().count(), 2);
    EXPECT_EQ(dialog.Sheets().itemText(1), "Trials");
    dialog.Sheets().setCurrentIndex(1);
    EXPECT_EQ(dialog.Preview().rowCount(), 13);
    EXPECT_EQ(dialog.Preview().horizontalHeaderItem(1)->text(), "Group-A Events");
    EXPECT_EQ(dialog.Options().sheet.number, 2);
    // The picture shows the sheet list open over the dialog.
    dialog.show();
    dialog.Sheets().showPopup();
    QApplication::processEvents();
    QPixmap shot = dialog.grab();
    QWidget* list = dialog.Sheets().view()->window();
    // The offscreen platform places no popup, so it is drawn under its box.
    QPainter(&shot).drawPixmap(dialog.Sheets().mapTo(&dialog, QPoint(0, dialog.Sheets().height())),
                               list->grab());
    dialog.Sheets().hidePopup();
    QDir().mkpath(SYNTHARA_SCREENSHOTS);
    EXPECT_TRUE(shot.save(SYNTHARA_SCREENSHOTS "/import-preview.png"));
}

}  // namespace
}  // namespace synthara::ui
