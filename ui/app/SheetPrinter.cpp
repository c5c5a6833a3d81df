#include "app/SheetPrinter.h"

#include <QDate>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QRegularExpression>
#include <algorithm>

#include "sheet/SheetModel.h"
#include "sheet/grid/MetaRows.h"

namespace synthara::ui {

namespace {

constexpr double kPointsPerInch = 72.0;
constexpr double kTwipsPerPoint = 20.0;
constexpr double kPadding = 3.0;     // points each side of a cell's text
constexpr double kMaxWidth = 200.0;  // points: a long text is cut, not the page
constexpr int kMeasuredRows = 200;   // rows read to size a column
constexpr double kGap = 6.0;         // points between the caption and the table

const QColor kTitleBack(232, 232, 232);
const QColor kFrozenBack(244, 244, 244);
const QColor kLine(160, 160, 160);

}  // namespace

int SheetPrinter::Plan::PagesDown() const {
    const int rowCount = static_cast<int>(rows.size());
    return std::max(1, (rowCount + rowsPerPage - 1) / rowsPerPage);
}

SheetPrinter::SheetPrinter(const shell::Document& document, const SheetModel& model,
                           QString caption)
    : document_(document), model_(model), caption_(std::move(caption)) {
    font_.setPointSizeF(8);
}

std::vector<int> SheetPrinter::PrintedColumns() const {
    const sheet::Sheet& sheet = document_.Sheet();
    const sheet::Grid& flex = sheet.Flex();
    std::vector<int> cols;
    for (int c = 0; c < model_.columnCount(); ++c) {
        if (flex.Col(c).hidden) continue;
        if (c >= flex.FixedCols() && sheet.MetaIs(c, sheet::MetaRow::Function, "Empty") &&
            sheet.isColEmpty(c))
            continue;
        cols.push_back(c);
    }
    return cols;
}

std::vector<int> SheetPrinter::PrintedRows() const {
    const int end = sheet::FixedRowCount + document_.DataRows();
    std::vector<int> rows;
    for (int r = 0; r < model_.rowCount() && model_.GridRow(r) < end; ++r)
        rows.push_back(r);
    return rows;
}

double SheetPrinter::MeasureWidth(int col, const std::vector<int>& rows, const QPaintDevice& device,
                                  double scale) const {
    const QFontMetricsF metrics(font_, &device);
    const sheet::Grid& flex = document_.Sheet().Flex();
    double widest = flex.Col(col).width / kTwipsPerPoint * scale;
    // A title wraps at its blanks, so its longest word counts.
    const QString title = model_.headerData(col, Qt::Horizontal, Qt::DisplayRole).toString();
    for (const QString& word : title.split(QRegularExpression(QStringLiteral("\\s+"))))
        widest = std::max(widest, metrics.horizontalAdvance(word));
    const int measured = std::min(static_cast<int>(rows.size()), kMeasuredRows);
    for (int k = 0; k < measured; ++k)
        widest = std::max(
            widest,
            metrics.horizontalAdvance(
                model_.data(model_.index(rows[static_cast<std::size_t>(k)], col), Qt::DisplayRole)
                    .toString()));
    return std::min(widest / scale + 2 * kPadding, kMaxWidth);
}

SheetPrinter::Plan SheetPrinter::Lay(const QPaintDevice& device, const QSizeF& area) const {
    Plan plan;
    plan.scale = device.logicalDpiX() / kPointsPerInch;
    const double width = area.width() / plan.scale;
    const double height = area.height() / plan.scale;
    const QFontMetricsF metrics(font_, &device);
    plan.lineHeight = metrics.height() / plan.scale;
    plan.rowHeight = plan.lineHeight + kPadding;
    plan.rows = PrintedRows();

    const std::vector<int> cols = PrintedColumns();
    const int fixedCols = document_.Sheet().Flex().FixedCols();
    plan.widths.assign(static_cast<std::size_t>(model_.columnCount()), 0);
    double frozenWidth = 0;
    for (const int c : cols) {
        const double w = MeasureWidth(c, plan.rows, device, plan.scale);
        plan.widths[static_cast<std::size_t>(c)] = w;
        if (c < fixedCols) {
            plan.frozen.push_back(c);
            frozenWidth += w;
        }
        const QString title = model_.headerData(c, Qt::Horizontal, Qt::DisplayRole).toString();
        const QRectF box = metrics.boundingRect(QRectF(0, 0, (w - 2 * kPadding) * plan.scale, 1e6),
                                                Qt::TextWordWrap, title);
        plan.titleHeight = std::max(plan.titleHeight, box.height() / plan.scale + 2 * kPadding);
    }
    plan.titleHeight = std::max(plan.titleHeight, plan.rowHeight);

    // Bands across: as many columns as fit beside the frozen ones, one at least.
    const double room = std::max(width - frozenWidth, 0.0);
    std::vector<int> band;
    double used = 0;
    for (const int c : cols) {
        if (c < fixedCols) continue;
        const double w = plan.widths[static_cast<std::size_t>(c)];
        if (!band.empty() && used + w > room) {
            plan.bands.push_back(std::move(band));
            band.clear();
            used = 0;
        }
        band.push_back(c);
        used += w;
    }
    if (!band.empty() || plan.bands.empty()) plan.bands.push_back(std::move(band));

    // Rows down: below the caption and the titles, above the page number.
    const double body = height - 2 * (plan.lineHeight + kGap) - plan.titleHeight;
    plan.rowsPerPage = std::max(1, static_cast<int>(body / plan.rowHeight));
    return plan;
}

void SheetPrinter::PaintPage(QPainter& painter, const Plan& plan, const QSizeF& area,
                             int page) const {
    const double s = plan.scale;
    const int down = plan.PagesDown();
    const auto& band = plan.bands[static_cast<std::size_t>(page / down)];
    const int firstRow = (page % down) * plan.rowsPerPage;
    const int lastRow = std::min(static_cast<int>(plan.rows.size()), firstRow + plan.rowsPerPage);

    painter.save();
    painter.setFont(font_);
    painter.setPen(Qt::black);
    const QRectF head(0, 0, area.width(), plan.lineHeight * s);
    painter.drawText(head, Qt::AlignLeft | Qt::AlignVCenter, caption_);
    painter.drawText(head, Qt::AlignRight | Qt::AlignVCenter,
                     QLocale().toString(QDate::currentDate(), QLocale::ShortFormat));
    const QRectF foot(0, area.height() - plan.lineHeight * s, area.width(), plan.lineHeight * s);
    painter.drawText(foot, Qt::AlignCenter,
                     QString("Page %1 of %2").arg(page + 1).arg(plan.PageCount()));

    std::vector<int> cols = plan.frozen;
    cols.insert(cols.end(), band.begin(), band.end());
    const double top = (plan.lineHeight + kGap) * s;
    double x = 0;
    for (const int c : cols) {
        const double w = plan.widths[static_cast<std::size_t>(c)] * s;
        const bool frozen =
            std::find(plan.frozen.begin(), plan.frozen.end(), c) != plan.frozen.end();
        const QRectF titleCell(x, top, w, plan.titleHeight * s);
        painter.fillRect(titleCell, kTitleBack);
        painter.setPen(kLine);
        painter.drawRect(titleCell);
        painter.setPen(Qt::black);
        painter.drawText(titleCell.adjusted(kPadding * s, kPadding * s, -kPadding * s, 0),
                         Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                         model_.headerData(c, Qt::Horizontal, Qt::DisplayRole).toString());
        double y = top + plan.titleHeight * s;
        for (int k = firstRow; k < lastRow; ++k) {
            const QRectF cell(x, y, w, plan.rowHeight * s);
            const QModelIndex index = model_.index(plan.rows[static_cast<std::size_t>(k)], c);
            if (frozen) painter.fillRect(cell, kFrozenBack);
            painter.setPen(kLine);
            painter.drawRect(cell);
            painter.setPen(Qt::black);
            const auto align = model_.data(index, Qt::TextAlignmentRole).value<Qt::Alignment>();
            painter.drawText(cell.adjusted(kPadding * s, 0, -kPadding * s, 0),
                             align | Qt::AlignVCenter,
                             model_.data(index, Qt::DisplayRole).toString());
            y += plan.rowHeight * s;
        }
        x += w;
    }
    painter.restore();
}

int SheetPrinter::Print(QPagedPaintDevice& device) const {
    const QSizeF area = device.pageLayout().paintRectPixels(device.logicalDpiX()).size();
    const Plan plan = Lay(device, area);
    QPainter painter(&device);
    if (!painter.isActive()) return 0;
    for (int page = 0; page < plan.PageCount(); ++page) {
        if (page > 0) device.newPage();
        PaintPage(painter, plan, area, page);
    }
    return plan.PageCount();
}

}  // namespace synthara::ui
