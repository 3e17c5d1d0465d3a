// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileFailure.h"

#include <QDir>
#include <QFileDevice>
#include <QFileInfo>

FileFailure FileFailure::of(const QFileDevice& file, const QString& path)
{
    // The numbers are those the run-time errors of file access have always had on Windows, so
    // that a user who reports one is understood.
    FileFailure failure;
    const QString system = file.errorString();
    switch (file.error()) {
    case QFileDevice::PermissionsError:
        failure = { 70, QStringLiteral("Zugriff verweigert") };
        break;
    case QFileDevice::WriteError:
    case QFileDevice::ResourceError:
        failure = system.contains(QLatin1String("space"), Qt::CaseInsensitive)
            ? FileFailure { 61, QStringLiteral("Datenträger voll") }
            : FileFailure { 57, QStringLiteral("Geräte-E/A-Fehler") };
        break;
    default:
        failure = QFileInfo(path).absoluteDir().exists()
            ? FileFailure { 75, QStringLiteral("Fehler beim Zugriff auf Pfad/Datei") }
            : FileFailure { 76, QStringLiteral("Pfad nicht gefunden") };
        break;
    }
    if (!system.isEmpty())
        failure.description += QStringLiteral(" (") + system + u')';
    return failure;
}
