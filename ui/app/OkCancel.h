#pragma once
// The Ok and Cancel buttons of a dialog, wired to its accept and reject
// (which a dialog may override to check before it closes).
#include <QDialog>
#include <QDialogButtonBox>

namespace synthara::ui {

inline QDialogButtonBox* OkCancel(QDialog& dialog) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return buttons;
}

}  // namespace synthara::ui
