// SPDX-License-Identifier: GPL-3.0-or-later
// The program's icon in the notification area: the product name as its tip, and a left click
// handed to the main window.
#pragma once

#include <QObject>

#include <functional>

class QSystemTrayIcon;

class mTrayIcon : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(mTrayIcon)

public:
    mTrayIcon(QObject* parent, std::function<void()> onLeftClick);
    ~mTrayIcon() override;

    // Whether the icon stands in a notification area that exists.
    bool isVisible() const;

private:
    QSystemTrayIcon* m_icon;
    std::function<void()> m_onLeftClick;
};
