// SPDX-License-Identifier: GPL-3.0-or-later
#include "ApplicationSetup.h"

#include "toolkit/Accessibility.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace ApplicationSetup {
void apply(QApplication& app)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Tarnholt"));
    QCoreApplication::setApplicationName(QStringLiteral("SMS"));
    // The desktop knows the program by its desktop file.
    QGuiApplication::setDesktopFileName(QStringLiteral("de.tarnholt.Quellbote"));
    // The program speaks German, and so do Qt's own dialogs and buttons (file dialogs, "Ja",
    // "Abbrechen"), whatever the desktop's language.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    auto* qtTranslation = new QTranslator(&app);
    if (qtTranslation->load(QLocale(QLocale::German), QStringLiteral("qt"), QStringLiteral("_"),
                            QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(qtTranslation);
    Accessibility::install();
}
} // namespace ApplicationSetup
