// SPDX-License-Identifier: GPL-3.0-or-later
#include "MessageBox.h"

#include <QApplication>
#include <QMessageBox>

namespace MessageBox {
namespace {
Handler& handler()
{
    static Handler h;
    return h;
}

QMessageBox::StandardButtons standardButtons(Buttons buttons)
{
    switch (buttons) {
    case Buttons::Ok:
        return QMessageBox::Ok;
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon standardIcon(Icon icon)
{
    switch (icon) {
    case Icon::None:
        return QMessageBox::NoIcon;
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Warning:
        return QMessageBox::Warning;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::Question:
        return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}
} // namespace

Answer show(QWidget* parent, const QString& text, Buttons buttons, Icon icon, const QString& title)
{
    const QString shownTitle = title.isEmpty() ? QCoreApplication::applicationName() : title;
    if (handler()) {
        // A copy: the handler may be replaced while it runs.
        const Handler current = handler();
        return current(Box { shownTitle, text, icon, buttons, parent });
    }

    QMessageBox box(standardIcon(icon), shownTitle, text, standardButtons(buttons), parent);
    box.setTextFormat(Qt::PlainText);
    switch (box.exec()) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return buttons == Buttons::Ok ? Answer::Ok : buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
    }
}

void setHandler(Handler h)
{
    handler() = std::move(h);
}

} // namespace MessageBox
