// SPDX-License-Identifier: GPL-3.0-or-later
// Reports to bench_startup how a start went: "shown" on standard output as soon as the watched
// window first paints, then, after a second of idling, "peak <kB>" (the process's high-water
// mark of resident memory) and the application quits.
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QObject>
#include <QTimer>

#include <cstdio>

class StartupProbe : public QObject
{
public:
    // Watches the first top-level widget of class className that paints.
    explicit StartupProbe(const char* className)
        : m_className(className)
    {
        qApp->installEventFilter(this);
    }

    static long peakKilobytes()
    {
        QFile status(QStringLiteral("/proc/self/status"));
        if (!status.open(QIODevice::ReadOnly))
            return -1;
        for (const QByteArray& line : status.readAll().split('\n'))
            if (line.startsWith("VmHWM:"))
                return line.mid(6).trimmed().split(' ').value(0).toLong();
        return -1;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (!m_reported && event->type() == QEvent::Paint && watched->isWidgetType()
            && watched->inherits(m_className)) {
            m_reported = true;
            std::printf("shown\n");
            std::fflush(stdout);
            QTimer::singleShot(1000, qApp, [] {
                std::printf("peak %ld\n", peakKilobytes());
                std::fflush(stdout);
                QCoreApplication::exit(0);
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    const char* m_className;
    bool m_reported = false;
};
