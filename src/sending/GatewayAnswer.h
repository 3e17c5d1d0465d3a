// SPDX-License-Identifier: GPL-3.0-or-later
// Reading what the service sends back: the gateway's answer to a send, the balance, the version,
// and the tick rule of the balance timer.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace GatewayAnswer {

// A gateway answer: items split at ";", each trimmed and without line feeds. The message for the
// box holds every item followed by CR LF, so a trailing ";" gives an empty last line.
struct Answer
{
    QStringList items;
    QString message;
    bool accepted = false; // an item holds one of the two success phrases, in any case
};
Answer readAnswer(const QString& body);

// The log of a MultiSMS run after an answer came: one line per item, date and time as German
// systems write them, " - ", the item, CR LF, each put in front, so the last item stands on top.
QString prependToLog(const QString& txtLog, const QString& body, const QDateTime& now);
// The log line of a request that brought no answer, put in front as an answer's items are: the
// message to number (name) did not go out, and why.
QString prependFailureToLog(const QString& txtLog, const QString& number, const QString& name, const QString& reason,
                            const QDateTime& now);
// The same in two steps, for a log that collects several answers before it shows them: the
// stamp in front of every line of one moment ("23.11.2026 10:31:35 - "), and the lines one answer
// or failure puts in front of the log. prependToLog(log, body, now) is
// logEntry(body, logStamp(now)) + log.
QString logStamp(const QDateTime& now);
QString logEntry(const QString& body, const QString& stamp);
QString failureLogEntry(const QString& number, const QString& name, const QString& reason, const QString& stamp);
// A request that left without an answer: the SMS may have gone out, and the line says so.
QString unknownLogEntry(const QString& number, const QString& name, const QString& reason, const QString& stamp);
// A row whose number is on the stop list: no request was made.
QString stopListLogEntry(const QString& number, const QString& name, const QString& stamp);

// The colour of lblCredits.
enum class CreditsColour {
    ButtonText, // the system's button text colour
    DarkRed, // RGB (192, 0, 0)
};

// What the balance query sets on the window.
struct CreditsState
{
    QString caption; // lblCredits
    qint32 credits = -1;
    bool enabled = true; // lblCredits
    CreditsColour colour = CreditsColour::ButtonText;
    bool buyCreditsVisible = false; // lblBuyCredits
};
// From the text of the SmsCount answer.
CreditsState readBalance(const QString& answer);
// When the query itself failed: "kein Internet".
CreditsState noInternetBalance();

// major × 1000000 + minor × 1000 + revision.
qint64 versionNumber(qint16 major, qint16 minor, qint16 revision);

enum class VersionCheck {
    NoAnswer, // empty text: show frmNoInternet and ask again
    Failure, // not a version: show frmNoInternet once, leave the update controls as they are
    UpdateShown, // lblUpdate and picUpdate visible
    UpdateHidden, // both hidden
};
// The CheckVersion answer against the program's own version number.
VersionCheck readVersionAnswer(const QString& answer, qint64 localVersion);

// One tick of tmCredits: every eleventh tick queries the balance.
struct CreditsTick
{
    bool refresh = false;
    qint16 creditsTicks = 0; // the new count, to keep
};
CreditsTick tmCreditsTick(qint16 creditsTicks);

} // namespace GatewayAnswer
