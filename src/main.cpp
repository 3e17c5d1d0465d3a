// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/mStarter.h"
#include "toolkit/WebView.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    // The pseudo-schemes of the service's pages must be known before the application exists.
    WebView::registerSchemes();
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Tarnholt"));
    QCoreApplication::setApplicationName(QStringLiteral("SMS"));
    mStarter::Main();
    return QApplication::exec();
}
