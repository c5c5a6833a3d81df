#include "app/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace synthara::ui {

std::string QtClipboard::Text() const {
    return QGuiApplication::clipboard()->text().toStdString();
}

void QtClipboard::SetText(const std::string& text) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

}  // namespace synthara::ui
