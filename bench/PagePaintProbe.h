// SPDX-License-Identifier: GPL-3.0-or-later
// What a program under bench_first_page tells it: "rect X Y W H", the place of its web view on the
// screen, where the benchmark watches for the page to be drawn; and once the page has loaded and
// the engine's drawing widget (a QQuickWidget in Qt WebEngine 6) has painted, a second later,
// "memory KB" (the process and its helper processes, see ProcessTreeMemory), and the application
// quits.
#pragma once

#include "ProcessTreeMemory.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>

class PagePaintProbe : public QObject
{
public:
    PagePaintProbe() { qApp->installEventFilter(this); }

    // Where view is on the screen.
    static void tellRect(const QWidget* view)
    {
        const QPoint at = view->mapToGlobal(QPoint(0, 0));
        std::printf("rect %d %d %d %d\n", at.x(), at.y(), view->width(), view->height());
        std::fflush(stdout);
    }
    // The page has finished loading; its next frame counts.
    void pageLoaded() { m_loaded = true; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (m_loaded && !m_reported && event->type() == QEvent::Paint && watched->inherits("QQuickWidget")) {
            m_reported = true;
            QTimer::singleShot(1000, qApp, [] {
                std::printf("memory %ld\n", ProcessTreeMemory::treeKilobytes());
                std::fflush(stdout);
                QCoreApplication::exit(0);
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    bool m_loaded = false;
    bool m_reported = false;
};
