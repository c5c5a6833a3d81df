#pragma once
// Saves a window as a PNG in the build folder's screenshots/, for a person
// to look at.
#include <QDir>
#include <QWidget>

namespace synthara::ui {

inline bool SaveScreenshot(QWidget& widget, const char* name) {
    QDir().mkpath(SYNTHARA_SCREENSHOTS);
    return widget.grab().save(QString(SYNTHARA_SCREENSHOTS "/") + name);
}

}  // namespace synthara::ui
