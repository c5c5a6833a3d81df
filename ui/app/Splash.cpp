#include "app/Splash.h"

#include <QFont>
#include <QIcon>
#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>

namespace synthara::ui {

namespace {

QPixmap Picture() {
    QPixmap picture(480, 260);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient fill(0, 0, 0, 260);
    fill.setColorAt(0, QColor(28, 63, 110));
    fill.setColorAt(1, QColor(16, 38, 70));
    painter.fillRect(picture.rect(), fill);
    QIcon(":/synthara.svg").paint(&painter, QRect(36, 70, 96, 96));
    painter.setPen(Qt::white);
    QFont title("DejaVu Sans", 30, QFont::Bold);
    painter.setFont(title);
    painter.drawText(QRect(150, 70, 320, 56), Qt::AlignLeft | Qt::AlignVCenter, "Synthara");
    painter.setFont(QFont("DejaVu Sans", 11));
    painter.setPen(QColor(200, 215, 235));
    painter.drawText(QRect(152, 126, 320, 40), Qt::AlignLeft | Qt::AlignVCenter,
                     "Meta-analysis of study results");
    painter.drawText(QRect(0, 220, 460, 24), Qt::AlignRight | Qt::AlignVCenter,
                     "Version " SYNTHARA_VERSION);
    return picture;
}

}  // namespace

Splash::Splash() : QSplashScreen(Picture()) {
    setAttribute(Qt::WA_DeleteOnClose);
}

}  // namespace synthara::ui
