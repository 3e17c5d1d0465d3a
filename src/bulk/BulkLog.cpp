// SPDX-License-Identifier: GPL-3.0-or-later
#include "BulkLog.h"

#include "settings/tools.h"

#include <QStringList>

namespace BulkLog {

QString timestamp(const QDateTime& now)
{
    // As a German system writes the date and time: 23.11.2026 10:31:35.
    return now.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
}

QString answerLines(const QString& answer, const QDateTime& now)
{
    const QString stamp = timestamp(now) + QStringLiteral(" - ");
    QString lines;
    // Each part goes on top of the ones before it.
    for (const QString& part : answer.split(u';'))
        lines.prepend(stamp + tools::TrimBlanks(part).remove(u'\n') + QStringLiteral("\r\n"));
    return lines;
}

} // namespace BulkLog
