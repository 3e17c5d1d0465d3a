// SPDX-License-Identifier: GPL-3.0-or-later
#include "mTrayIcon.h"

#include <QIcon>
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
}

bool mTrayIcon::isVisible() const
{
    return availableForTesting() || (QSystemTrayIcon::isSystemTrayAvailable() && m_icon->isVisible());
}

void mTrayIcon::setAvailableForTesting(bool available)
{
    availableForTesting() = available;
}
