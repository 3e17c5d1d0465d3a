// SPDX-License-Identifier: GPL-3.0-or-later
// Acts on the program's next modal window as soon as it is up. Polls, so that it never waits
// inside an event loop of the program.
#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <functional>

inline void onNextModal(std::function<void(QWidget*)> action)
{
    auto* poll = new QTimer(qApp);
    poll->setInterval(20);
    QObject::connect(poll, &QTimer::timeout, poll, [poll, action] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            poll->stop();
            poll->deleteLater();
            action(modal);
        }
    });
    poll->start();
}
