// Printing the sheet: pages across and down for a wide sheet, written to a
// PDF file, and a page of the example rendered for a person to look at.
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintPreviewDialog>
#include <QRegularExpression>
#include <fstream>

#include "ProgramFixture.h"
#include "app/SheetPrinter.h"
#include "sheet/SheetModel.h"
#include "sheet/SheetWidget.h"

namespace synthara::ui {
namespace {

// A table of `cols` columns and `rows` rows of numbers, with a study column.
std::string WriteWideTable(const std::filesystem::path& folder, int cols, int rows) {
    const std::string path = (folder / "wide.csv").string();
    std::ofstream out(path);
    out << "Study name";
    for (int c = 1; c < cols; ++c)
        out << ",Moderator " << c;
    out << "\n";
    for (int r = 0; r < rows; ++r) {
        out << "Study " << r + 1;
        for (int c = 1; c < cols; ++c)
            out << "," << r * c;
        out << "\n";
    }
    return path;
}

int PdfPages(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return -1;
    const QString bytes = QString::fromLatin1(file.readAll());
    return static_cast<int>(bytes.count(QRegularExpression("/Type\\s*/Page[^s]")));
}

TEST_F(ProgramFixture, WideSheetPrintsAcrossAndDownToPdf) {
    Make();
    shell::OpenSettings settings;
    settings.table.firstRowTitles = false;  // plain columns, no block
    ASSERT_TRUE(program->Document().Open(WriteWideTable(folder, 40, 150), settings).ok());
    SheetWidget& sheet = program->Window().Sheet();
    const SheetPrinter printer(program->Document(), sheet.Model(), "wide.csv");

    const QString pdf = QString::fromStdString((folder / "wide.pdf").string());
    QPdfWriter writer(pdf);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                     QMarginsF(36, 36, 36, 36), QPageLayout::Point));
    const QSizeF area = writer.pageLayout().paintRectPixels(writer.resolution()).size();
    const SheetPrinter::Plan plan = printer.Lay(writer, area);
    // 40 columns do not fit across an A4 page, nor 151 rows down it.
    EXPECT_GE(plan.bands.size(), 3u);
    EXPECT_GE(plan.PagesDown(), 3);
    EXPECT_EQ(plan.rows.size(), 151u);  // the file's titles row is a data row here
    // Every column is printed once, the row numbers on every page.
    std::size_t printed = 0;
    for (const auto& band : plan.bands)
        printed += band.size();
    EXPECT_EQ(printed, 40u);
    ASSERT_FALSE(plan.frozen.empty());
    EXPECT_EQ(plan.frozen.front(), 0);

    EXPECT_EQ(printer.Print(writer), plan.PageCount());
    EXPECT_EQ(PdfPages(pdf), plan.PageCount());
}

TEST_F(ProgramFixture, PrintShowsThePreviewAndPageRendersTheExample) {
    QString title;
    Make([&](QDialog& dialog) {
        if (qobject_cast<QPrintPreviewDialog*>(&dialog) != nullptr) title = dialog.windowTitle();
        return int(QDialog::Rejected);
    });
    OpenExample();
    ASSERT_TRUE(program->Window().Run("Print"));
    EXPECT_EQ(title, "Print preview");

    // The example's rows on one A4 page.
    const SheetPrinter printer(program->Document(), program->Window().Sheet().Model(),
                               "bcg-vaccine-trials.csv");
    QImage page(QSize(827, 1169), QImage::Format_RGB32);  // A4 at 100 dpi
    page.setDotsPerMeterX(3937);
    page.setDotsPerMeterY(3937);
    page.fill(Qt::white);
    const QSizeF area(page.width() - 100, page.height() - 100);
    const SheetPrinter::Plan plan = printer.Lay(page, area);
    EXPECT_EQ(plan.rows.size(), 13u);
    QPainter painter(&page);
    painter.translate(50, 50);
    printer.PaintPage(painter, plan, area, 0);
    painter.end();
    QDir().mkpath(SYNTHARA_SCREENSHOTS);
    EXPECT_TRUE(page.save(SYNTHARA_SCREENSHOTS "/print-page.png"));
}

}  // namespace
}  // namespace synthara::ui
