#include "app/QtPrompter.h"

#include <QMessageBox>
#include <QString>

namespace synthara::ui {

namespace {

QMessageBox::Icon ToQt(ports::Icon icon) {
    switch (icon) {
        case ports::Icon::Information:
            return QMessageBox::Information;
        case ports::Icon::Warning:
            return QMessageBox::Warning;
        case ports::Icon::Critical:
            return QMessageBox::Critical;
        case ports::Icon::Question:
            return QMessageBox::Question;
        case ports::Icon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton ToQt(ports::Answer answer) {
    switch (answer) {
        case ports::Answer::Ok:
            return QMessageBox::Ok;
        case ports::Answer::Cancel:
            return QMessageBox::Cancel;
        case ports::Answer::Yes:
            return QMessageBox::Yes;
        case ports::Answer::No:
            return QMessageBox::No;
    }
    return QMessageBox::NoButton;
}

QMessageBox::StandardButtons ToQt(ports::Buttons buttons) {
    switch (buttons) {
        case ports::Buttons::Ok:
            return QMessageBox::Ok;
        case ports::Buttons::OkCancel:
            return QMessageBox::Ok | QMessageBox::Cancel;
        case ports::Buttons::YesNo:
            return QMessageBox::Yes | QMessageBox::No;
        case ports::Buttons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

}  // namespace

void QtPrompter::Message(const ports::Box& box) {
    QMessageBox message(ToQt(box.icon), QString::fromStdString(box.title),
                        QString::fromStdString(box.Text()), QMessageBox::Ok, parent_);
    message.exec();
}

ports::Answer QtPrompter::Ask(const ports::Box& box, ports::Buttons buttons,
                              ports::Answer byDefault) {
    QMessageBox question(ToQt(box.icon), QString::fromStdString(box.title),
                         QString::fromStdString(box.Text()), ToQt(buttons), parent_);
    question.setDefaultButton(ToQt(byDefault));
    switch (question.exec()) {
        case QMessageBox::Ok:
            return ports::Answer::Ok;
        case QMessageBox::Yes:
            return ports::Answer::Yes;
        case QMessageBox::No:
            return ports::Answer::No;
        default:
            // Closing the box is a cancel where one is offered, else a No.
            return buttons == ports::Buttons::YesNo ? ports::Answer::No : ports::Answer::Cancel;
    }
}

}  // namespace synthara::ui
