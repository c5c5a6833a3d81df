#include "app/QtProgress.h"

#include <QCoreApplication>
#include <QProgressDialog>

namespace synthara::ui {

QtProgress::QtProgress(QWidget* parent) : parent_(parent) {}

QtProgress::~QtProgress() = default;

void QtProgress::Start(const std::string& caption, int total) {
    dialog_ = std::make_unique<QProgressDialog>(QString::fromStdString(caption), "Cancel", 0, total,
                                                parent_);
    dialog_->setWindowModality(Qt::WindowModal);
    // Short work finishes before the dialog would be seen.
    dialog_->setMinimumDuration(500);
    dialog_->setValue(0);
}

void QtProgress::Step() {
    if (!dialog_) return;
    dialog_->setValue(dialog_->value() + 1);
    QCoreApplication::processEvents();
}

void QtProgress::Finish() {
    dialog_.reset();
}

bool QtProgress::Cancelled() const {
    return dialog_ && dialog_->wasCanceled();
}

}  // namespace synthara::ui
