// SPDX-License-Identifier: GPL-3.0-or-later
// The program's icon in the notification area: a tip (the product name), and a left click handed
// to the main window.
#pragma once

#include <QObject>

#include <functional>
#include <memory>

class QMenu;
class QSystemTrayIcon;

class mTrayIcon : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(mTrayIcon)

public:
    mTrayIcon(QObject* parent, const QString& tip, std::function<void()> onLeftClick);
    ~mTrayIcon() override;

    // An entry of the icon's menu (the right click), in the order added.
    void addMenuEntry(const QString& text, std::function<void()> action);

    // Whether the icon stands in a notification area that exists.
    bool isVisible() const;

    // Tests stand in a notification area where the platform has none.
    static void setAvailableForTesting(bool available);

private:
    QSystemTrayIcon* m_icon;
    std::unique_ptr<QMenu> m_menu;
    std::function<void()> m_onLeftClick;
};
