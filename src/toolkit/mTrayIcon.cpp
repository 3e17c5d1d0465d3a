// SPDX-License-Identifier: GPL-3.0-or-later
#include "mTrayIcon.h"

#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

namespace {
bool& availableForTesting()
{
    static bool available = false;
    return available;
}
} // namespace

mTrayIcon::mTrayIcon(QObject* parent, const QString& tip, std::function<void()> onLeftClick)
    : QObject(parent)
    , m_icon(new QSystemTrayIcon(QIcon(QStringLiteral(":/pictures/logo.svg")), this))
    , m_onLeftClick(std::move(onLeftClick))
{
    m_icon->setToolTip(tip);
    connect(m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger && m_onLeftClick)
            m_onLeftClick();
    });
    if (QSystemTrayIcon::isSystemTrayAvailable())
        m_icon->show();
}

mTrayIcon::~mTrayIcon()
{
    m_icon->hide();
    m_icon->setContextMenu(nullptr);
}

void mTrayIcon::addMenuEntry(const QString& text, std::function<void()> action)
{
    if (!m_menu) {
        m_menu = std::make_unique<QMenu>();
        m_icon->setContextMenu(m_menu.get());
    }
    connect(m_menu->addAction(text), &QAction::triggered, this, [action] { action(); });
}

bool mTrayIcon::isVisible() const
{
    return availableForTesting() || (QSystemTrayIcon::isSystemTrayAvailable() && m_icon->isVisible());
}

void mTrayIcon::setAvailableForTesting(bool available)
{
    availableForTesting() = available;
}
