// SPDX-License-Identifier: GPL-3.0-or-later
// The yardstick of bench_first_page: a bare Qt WebEngine program that shows one page in a
// QWebEngineView of the given size, set up as Qt's documentation has it. Says where the view is
// and, a second after the page has loaded and drawn, how much memory it holds (PagePaintProbe).
//
// bench_bare_webpage URL WIDTH HEIGHT
#include "PagePaintProbe.h"

#include <QApplication>
#include <QUrl>
#include <QWebEngineView>

int main(int argc, char* argv[])
{
    if (argc < 4)
        return 2;
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    PagePaintProbe probe;
    QWebEngineView view;
    QObject::connect(&view, &QWebEngineView::loadFinished, [&probe](bool) { probe.pageLoaded(); });
    view.resize(QString::fromLocal8Bit(argv[2]).toInt(), QString::fromLocal8Bit(argv[3]).toInt());
    view.setUrl(QUrl::fromEncoded(argv[1]));
    view.move(0, 0);
    view.show();
    PagePaintProbe::tellRect(&view);
    return QApplication::exec();
}
