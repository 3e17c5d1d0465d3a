// SPDX-License-Identifier: GPL-3.0-or-later
// A dark desktop for one test, with the colours of Plasma's Breeze Dark: the application's palette
// is dark until the object goes.
#pragma once

#include <QApplication>
#include <QPalette>

class DarkDesktop
{
public:
    DarkDesktop()
        : m_light(QApplication::palette())
    {
        QPalette dark(QColor(0x31, 0x36, 0x3B), QColor(0x2A, 0x2E, 0x32));
        for (const QPalette::ColorRole role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText })
            dark.setColor(role, QColor(0xFC, 0xFC, 0xFC));
        dark.setColor(QPalette::Base, QColor(0x1B, 0x1E, 0x20));
        QApplication::setPalette(dark);
    }
    ~DarkDesktop() { QApplication::setPalette(m_light); }
    DarkDesktop(const DarkDesktop&) = delete;
    DarkDesktop& operator=(const DarkDesktop&) = delete;

private:
    QPalette m_light;
};
