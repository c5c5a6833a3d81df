#include "app/QtTextMeasurer.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QScreen>

namespace synthara::ui {

ports::TextSize QtTextMeasurer::Measure(const std::string& text,
                                        const ports::FontSpec& font) const {
    QFont qfont =
        font.family.empty() ? QGuiApplication::font() : QFont(QString::fromStdString(font.family));
    qfont.setPointSizeF(font.points);
    qfont.setBold(font.bold);
    qfont.setItalic(font.italic);
    const QFontMetricsF metrics(qfont);
    // The metrics are in the screen's pixels; a point is 1/72 inch.
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double dpi = screen != nullptr ? screen->logicalDotsPerInchY() : 96.0;
    const double toPoints = 72.0 / dpi;
    return {metrics.horizontalAdvance(QString::fromStdString(text)) * toPoints,
            metrics.height() * toPoints};
}

}  // namespace synthara::ui
