#pragma once
// The sheet on paper: what the screen shows (the visible columns, the shown
// rows, the display texts) laid out on pages across and down, the title row
// and the frozen columns repeated on every page, the project's caption at the
// top and the page number at the foot. One paint path serves the print
// preview, the printer and a PDF file.
#include <QFont>
#include <QString>
#include <vector>

class QPainter;
class QPaintDevice;
class QPagedPaintDevice;
class QSizeF;

namespace synthara::shell {
class Document;
}

namespace synthara::ui {

class SheetModel;

class SheetPrinter {
  public:
    // `model` shows `document`'s sheet as the screen does.
    SheetPrinter(const shell::Document& document, const SheetModel& model, QString caption);

    // How the sheet falls on pages of `area` (device pixels) of `device`.
    struct Plan {
        double scale = 1;                     // device pixels per point
        std::vector<int> frozen;              // columns on every page, left
        std::vector<std::vector<int>> bands;  // the other columns, a band per page across
        std::vector<int> rows;                // model rows printed
        int rowsPerPage = 1;
        std::vector<double> widths;  // points, by model column
        double titleHeight = 0;      // points
        double rowHeight = 0;
        double lineHeight = 0;  // of the caption and the page number
        int PagesDown() const;
        int PageCount() const { return static_cast<int>(bands.size()) * PagesDown(); }
    };
    Plan Lay(const QPaintDevice& device, const QSizeF& area) const;

    // Paints page `page` (from 0) of the plan with the painter's origin at
    // the printable area's top left.
    void PaintPage(QPainter& painter, const Plan& plan, const QSizeF& area, int page) const;

    // Every page onto the device (a printer, a PDF writer) in its page
    // layout; the number of pages.
    int Print(QPagedPaintDevice& device) const;

  private:
    // The printed columns: shown, and not a free column the user never used.
    std::vector<int> PrintedColumns() const;
    std::vector<int> PrintedRows() const;
    double MeasureWidth(int col, const std::vector<int>& rows, const QPaintDevice& device,
                        double scale) const;

    const shell::Document& document_;
    const SheetModel& model_;
    QString caption_;
    QFont font_;
};

}  // namespace synthara::ui
