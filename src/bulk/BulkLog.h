// SPDX-License-Identifier: GPL-3.0-or-later
// The lines a gateway answer adds to the log of a bulk run.
#pragma once

#include <QDateTime>
#include <QString>

namespace BulkLog {
// The answer split at ";", each part trimmed and rid of its line feeds, behind the date and
// time and " - ", each line ending in CR LF, the last part first: the text to put on top of
// the log. An empty part gives a line with nothing behind the " - ".
QString answerLines(const QString& answer, const QDateTime& now);
// The date and time as German systems write them, with seconds.
QString timestamp(const QDateTime& now);
} // namespace BulkLog
