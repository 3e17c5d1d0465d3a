// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/mStarter.h"
#include "toolkit/WebView.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

int main(int argc, char* argv[])
{
    // The pseudo-schemes of the service's pages must be known before the application exists.
    WebView::registerSchemes();
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Tarnholt"));
    QCoreApplication::setApplicationName(QStringLiteral("SMS"));
    // The desktop knows the program by its desktop file.
    QGuiApplication::setDesktopFileName(QStringLiteral("de.tarnholt.Quellbote"));
    // The program speaks German, and so do Qt's own dialogs and buttons (file dialogs, "Ja",
    // "Abbrechen"), whatever the desktop's language.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QTranslator qtTranslation;
    if (qtTranslation.load(QLocale(QLocale::German), QStringLiteral("qt"), QStringLiteral("_"),
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&qtTranslation);
    mStarter::Main();
    return QApplication::exec();
}
