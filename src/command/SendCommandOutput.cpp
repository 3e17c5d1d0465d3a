// SPDX-License-Identifier: GPL-3.0-or-later
// What quellbote-send tells of its sending: a line for each SMS, as text for people or as JSON
// Lines for scripts, and the send record's entries for --sent.
#include "SendCommand.h"
#include "sending/GatewayAnswer.h"
#include "sending/MessageSize.h"
#include "sending/SendRecord.h"
#include "sending/StopList.h"
#include "settings/cOptionen.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

int SendCommand::showSent(const QString& text, bool json)
{
    SendRecord record;
    if (record.takeFailure())
        return fail(BadInput, record.lastError());
    if (SendRecord::storedRetentionDays() == SendRecord::NoRecord) {
        m_err << QStringLiteral("Es wird kein Versandprotokoll geführt (Einstellungen).") << '\n' << Qt::flush;
        return Sent;
    }
    SendRecord::Query query;
    query.text = text;
    query.limit = -1;
    for (const SendRecord::Entry& e : record.search(query)) {
        if (json) {
            QJsonObject line;
            line.insert(QStringLiteral("time"), e.time.toUTC().toString(Qt::ISODate));
            line.insert(QStringLiteral("road"), SendRecord::roadName(e.road));
            line.insert(QStringLiteral("number"), e.number);
            line.insert(QStringLiteral("name"), e.name);
            line.insert(QStringLiteral("text"), e.text);
            line.insert(QStringLiteral("state"), SendOutcome::name(e.state));
            line.insert(QStringLiteral("parts"), e.parts);
            line.insert(QStringLiteral("credits"), e.credits);
            line.insert(QStringLiteral("answer"), e.answer);
            m_out << QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact)) << '\n';
            continue;
        }
        QString oneLine = e.text;
        oneLine.replace(QStringLiteral("\r\n"), QStringLiteral(" ")).replace(u'\n', u' ');
        m_out << e.time.toLocalTime().toString(QStringLiteral("dd.MM.yyyy HH:mm")) << QStringLiteral("  ") << e.number
              << QStringLiteral("  ") << SendOutcome::label(e.state) << QStringLiteral("  ") << oneLine << '\n';
    }
    if (record.takeFailure())
        return fail(BadInput, record.lastError());
    m_out.flush();
    return Sent;
}

void SendCommand::tellSkipped(const CsvList::Doubt& row)
{
    if (!m_json) {
        m_out << QStringLiteral("Zeile %1 (%2): nicht versendet, %3").arg(row.row).arg(row.name, row.reason) << '\n';
        return;
    }
    QJsonObject line;
    line.insert(QStringLiteral("name"), row.name);
    line.insert(QStringLiteral("number"), row.number);
    line.insert(QStringLiteral("state"), QStringLiteral("skipped"));
    line.insert(QStringLiteral("reason"), row.reason);
    line.insert(QStringLiteral("fileRow"), row.row);
    m_out << QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact)) << '\n';
}

void SendCommand::tell(const SendingSession::Delivery& d)
{
    const QString label = m_bulk ? QStringLiteral("%1 (%2): ").arg(d.name, d.number) : QString();
    if (d.answered) {
        if (!m_json)
            m_out << label << GatewayAnswer::readAnswer(d.answer).items.join(QStringLiteral("; ")) << '\n' << Qt::flush;
        return;
    }
    if (d.handOff && d.state == SendOutcome::State::Sent) {
        if (!m_json) {
            const cOptionen& o = Options();
            m_out << label << GatewayRequest::handOffDoneText(true, o.xmlSingleUser(), o.xmlGroupUser()) << '\n'
                  << Qt::flush;
        }
        return;
    }
    if (d.handOff)
        m_err << label << d.failure << '\n';
    else if (d.state == SendOutcome::State::Unknown)
        m_err << label
              << QStringLiteral("Keine Antwort zur SMS an %1: %2 Sie wurde möglicherweise trotzdem versendet; "
                                "nicht ungeprüft erneut senden.")
                     .arg(d.number, d.failure)
              << '\n';
    else
        m_err << label << QStringLiteral("Die SMS an %1 wurde nicht versendet: ").arg(d.number) << d.failure << '\n';
    m_err.flush();
}

void SendCommand::report(const SendingSession::Outcome& outcome)
{
    using SendOutcome::State;
    if (outcome.stopListed) {
        // A list's row on the stop list is left out, as a row without a number is; a message
        // whose one recipient is on it is refused before anything left.
        if (outcome.row < 0)
            m_worst = std::max(m_worst, Refused);
        tellStopListed(outcome.name, outcome.number, outcome.row + 1, m_fileRows.value(outcome.row));
        return;
    }
    // The exit statuses of the outcomes rise with their weight: unknown before not reached before
    // refused.
    const Exit exit = outcome.state == State::Unknown ? Unknown
        : outcome.state == State::Unreached           ? Unreachable
        : outcome.state == State::Refused             ? Refused
                                                      : Sent;
    m_worst = std::max(m_worst, exit);
    if (outcome.state == State::Skipped && !m_json) {
        m_out << QStringLiteral("%1 (%2): %3").arg(outcome.name, outcome.number, outcome.answer) << '\n' << Qt::flush;
        return;
    }
    if (!m_json)
        return;
    const bool billed = outcome.state == State::Sent || outcome.state == State::Unknown;
    const Message& m = m_messages.value(outcome.row < 0 ? 0 : outcome.row);
    const int price = MessageSize::updateCost(MessageSize::smsOptionsOf(Options()), m.key, m.rest);
    QJsonObject line;
    line.insert(QStringLiteral("number"), outcome.number);
    line.insert(QStringLiteral("name"), outcome.name);
    line.insert(QStringLiteral("state"), SendOutcome::name(outcome.state));
    line.insert(QStringLiteral("parts"), outcome.parts);
    line.insert(QStringLiteral("credits"), billed ? outcome.parts * price : 0);
    line.insert(QStringLiteral("answer"), outcome.answer);
    if (outcome.row >= 0)
        line.insert(QStringLiteral("row"), outcome.row + 1);
    m_out << QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact)) << '\n' << Qt::flush;
}

void SendCommand::tellStopListed(const QString& name, const QString& number, int row, int fileRow)
{
    if (!m_json) {
        const QString who = name.isEmpty() ? number : QStringLiteral("%1 (%2)").arg(name, number);
        m_out << QStringLiteral("Gesperrt: keine SMS an %1, die Nummer steht auf der Sperrliste").arg(who) << '\n'
              << Qt::flush;
        return;
    }
    QJsonObject line;
    line.insert(QStringLiteral("number"), number);
    line.insert(QStringLiteral("name"), name);
    line.insert(QStringLiteral("state"), SendOutcome::name(SendOutcome::State::Skipped));
    line.insert(QStringLiteral("parts"), 0);
    line.insert(QStringLiteral("credits"), 0);
    line.insert(QStringLiteral("answer"), StopList::reason());
    line.insert(QStringLiteral("reason"), StopList::reason());
    if (row > 0)
        line.insert(QStringLiteral("row"), row);
    if (fileRow > 0)
        line.insert(QStringLiteral("fileRow"), fileRow);
    m_out << QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact)) << '\n' << Qt::flush;
}
