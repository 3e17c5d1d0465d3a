// SPDX-License-Identifier: GPL-3.0-or-later
#include "BulkLog.h"

#include "settings/tools.h"

#include <QLocale>
#include <QStringList>

namespace BulkLog {

QString timestamp(const QDateTime& now)
{
    const QLocale locale = QLocale::system();
    return locale.toString(now.date(), QLocale::ShortFormat) + u' ' + now.time().toString(QStringLiteral("HH:mm:ss"));
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
