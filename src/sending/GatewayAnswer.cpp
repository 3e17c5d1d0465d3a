// SPDX-License-Identifier: GPL-3.0-or-later
#include "GatewayAnswer.h"

#include "settings/tools.h"

namespace GatewayAnswer {

namespace {
const QString crlf = QStringLiteral("\r\n");

// Blanks at both ends go, then every line feed; a carriage return stays where it stands.
QString cleanItem(const QString& item)
{
    return tools::TrimBlanks(item).remove(u'\n');
}

bool holdsSuccessPhrase(const QString& item)
{
    return item.contains(QString::fromUtf16(u"wurde erfolgreich an das Gateway übermittelt."), Qt::CaseInsensitive)
        || item.contains(QStringLiteral("wurde angelegt."), Qt::CaseInsensitive);
}
} // namespace

Answer readAnswer(const QString& body)
{
    Answer answer;
    const QStringList items = body.split(u';');
    for (const QString& raw : items) {
        const QString item = cleanItem(raw);
        answer.items.append(item);
        answer.message += item + crlf;
        if (holdsSuccessPhrase(item))
            answer.accepted = true;
    }
    return answer;
}

// As a German system writes the date and time: 23.11.2026 10:31:35.
QString logStamp(const QDateTime& now)
{
    return now.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")) + QStringLiteral(" - ");
}

QString logEntry(const QString& body, const QString& stamp)
{
    // The items in reverse, so that the last stands on top.
    const QStringList items = body.split(u';');
    QString entry;
    entry.reserve(body.size() + items.size() * (stamp.size() + 2));
    for (auto raw = items.crbegin(); raw != items.crend(); ++raw)
        entry += stamp + cleanItem(*raw) + crlf;
    return entry;
}

QString failureLogEntry(const QString& number, const QString& name, const QString& reason, const QString& stamp)
{
    return stamp + QStringLiteral("!!!! Nicht versendet an %1 (%2): %3").arg(name, number, reason) + crlf;
}

QString unknownLogEntry(const QString& number, const QString& name, const QString& reason, const QString& stamp)
{
    return stamp
        + QStringLiteral("???? Keine Antwort zur SMS an %1 (%2): %3 Die SMS wurde möglicherweise trotzdem versendet.")
              .arg(name, number, reason)
        + crlf;
}

QString stopListLogEntry(const QString& number, const QString& name, const QString& stamp)
{
    return stamp
        + QStringLiteral("---- Gesperrt: keine SMS an %1 (%2), die Nummer steht auf der Sperrliste").arg(name, number)
        + crlf;
}

QString prependToLog(const QString& txtLog, const QString& body, const QDateTime& now)
{
    return logEntry(body, logStamp(now)) + txtLog;
}

QString prependFailureToLog(const QString& txtLog, const QString& number, const QString& name, const QString& reason,
                            const QDateTime& now)
{
    return failureLogEntry(number, name, reason, logStamp(now)) + txtLog;
}

CreditsState readBalance(const QString& answer)
{
    const QString text = answer.trimmed();
    if (text == u"-1") {
        CreditsState state;
        state.caption = QStringLiteral("nicht angemeldet");
        state.enabled = false;
        return state;
    }
    bool ok = false;
    const qint32 credits = text.toInt(&ok);
    if (!ok)
        return noInternetBalance();
    CreditsState state;
    state.caption = text + QStringLiteral(" Credits");
    state.credits = credits;
    if (credits <= 500) {
        state.colour = CreditsColour::DarkRed;
        state.buyCreditsVisible = true;
    }
    return state;
}

CreditsState noInternetBalance()
{
    CreditsState state;
    state.caption = QStringLiteral("kein Internet");
    return state;
}

qint64 versionNumber(qint16 major, qint16 minor, qint16 revision)
{
    return qint64(major) * 1000000 + qint64(minor) * 1000 + revision;
}

VersionCheck readVersionAnswer(const QString& answer, qint64 localVersion)
{
    if (answer.isEmpty())
        return VersionCheck::NoAnswer;
    const QStringList items = answer.split(u'.');
    if (items.size() < 3)
        return VersionCheck::Failure;
    qint16 parts[3] = {};
    for (int i = 0; i < 3; ++i) {
        bool ok = false;
        parts[i] = tools::NumericToInt16(items[i], &ok);
        if (!ok)
            return VersionCheck::Failure;
    }
    return versionNumber(parts[0], parts[1], parts[2]) > localVersion ? VersionCheck::UpdateShown
                                                                      : VersionCheck::UpdateHidden;
}

CreditsTick tmCreditsTick(qint16 creditsTicks)
{
    // The comparison comes before the increment: the eleventh tick queries.
    if (creditsTicks == 10)
        return { true, 0 };
    return { false, qint16(creditsTicks + 1) };
}

} // namespace GatewayAnswer
