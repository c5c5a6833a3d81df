#include "app/QtFileChooser.h"

#include <QFileDialog>
#include <QFileInfo>

namespace synthara::ui {

namespace {

// A filter as the dialog wants it: the description, with the pattern in
// brackets unless it already says it.
QString FilterText(const ports::FileFilter& filter) {
    const QString description = QString::fromStdString(filter.description);
    const QString pattern = QString::fromStdString(filter.pattern);
    if (description.contains(pattern)) return description;
    return description + " (" + pattern + ")";
}

}  // namespace

std::string QtFileChooser::ChooseOpen(const std::string& title, const ports::FileFilter& filter,
                                      const std::string& startFolder) {
    return QFileDialog::getOpenFileName(parent_, QString::fromStdString(title),
                                        QString::fromStdString(startFolder), FilterText(filter))
        .toStdString();
}

std::string QtFileChooser::ChooseSave(const std::string& title, const ports::FileFilter& filter,
                                      const std::string& suggestedName) {
    // The dialog asks before it overwrites a file; a name without an ending
    // takes the filter's.
    QFileDialog dialog(parent_, QString::fromStdString(title),
                       QString::fromStdString(suggestedName), FilterText(filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QFileInfo(QString::fromStdString(filter.pattern)).suffix());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return dialog.selectedFiles().first().toStdString();
}

}  // namespace synthara::ui
