// SPDX-License-Identifier: GPL-3.0-or-later
// quellbote-send: the main window's sending for scripts. The same settings (the user's store or
// another, oem.inf beside the program), the same rules of numbers, sizes, parts and prices, the
// same requests one after another and the same reading of the answers, so that a script sends
// byte for byte what the window would and is billed as the window would show it.
#pragma once

#include "SendArguments.h"
#include "bulk/CsvList.h"
#include "sending/GatewayRequest.h"
#include "sending/MessageSize.h"
#include "sending/SendingSession.h"
#include "sending/StopList.h"

#include <QString>
#include <QStringList>
#include <QTextStream>

#include <memory>
#include <optional>

class Inet;
class RecipientTable;
class RunRecord;

class SendCommand
{
public:
    // What a script can rely on.
    enum Exit {
        Sent = 0, // everything went out
        Refused = 1, // the gateway (or the balance) refused at least one SMS
        Unreachable = 2, // at least one SMS never left: no connection, name not found, certificate
        BadInput = 3, // number, file, text, options, no account
        Unknown = 4, // at least one SMS left without an answer: it may have gone out; wins over 2 and 1
    };

    SendCommand(QTextStream& out, QTextStream& err);
    ~SendCommand();
    SendCommand(const SendCommand&) = delete;
    SendCommand& operator=(const SendCommand&) = delete;

    int run(const QStringList& arguments);

private:
    // One SMS as the window would hand it to its send routine.
    struct Message
    {
        QString number; // international form with "00"
        QString text;
        QString name;
        QString key; // the prefix entry of a single SMS; empty in a bulk run
        QString rest; // what txtNummer would hold
    };

    int fail(Exit code, const QString& message);
    int showBalance();
    // The send record's entries holding text, newest first, as lines or JSON.
    int showSent(const QString& text, bool json);
    // The overrides of the command line on the stored options; false with the reason told.
    bool applySendOptions(const SendArguments& a);
    bool readSchedule(const QString& at);
    bool readMessages(const SendArguments& a, const QString& text);
    // A list from a spreadsheet or an address book; its rows left out are told with the run.
    bool readCsv(const QString& path, RecipientTable* table);
    void tellSkipped(const CsvList::Doubt& row);
    // Refuses a text or a name with characters that would arrive as "?", naming them; with
    // --transliterate they were replaced before.
    bool checkCharacters(bool transliterated);
    int dryRun();
    int send();
    // The last known balance, -1 when the query failed or the account is unknown.
    qint32 queryBalance(QString* failure = nullptr);
    // "Anzahl SMS" as the window shows it, for the message or the whole run.
    int messageCount() const;
    // The rows of a run and its record; with --resume only the rows that did not go out.
    bool planRun(QList<int>* only, std::unique_ptr<RunRecord>* record);
    // "Anzahl SMS" of one row of a run.
    int messagesPerRow() const;
    // A part's outcome in words, as it comes; and every SMS's, as a script reads it.
    void tell(const SendingSession::Delivery& delivery);
    void report(const SendingSession::Outcome& outcome);
    // The line of an SMS that doesn't go out because its number is on the stop list, as JSON or
    // words; row from 1, fileRow 0 where there is none.
    void tellStopListed(const QString& name, const QString& number, int row, int fileRow);

    QTextStream& m_out;
    QTextStream& m_err;
    std::unique_ptr<Inet> m_inet;
    QString m_password;
    QString m_template; // the message text, placeholders and all
    bool m_bulk = false;
    MessageSize::PlaceholderSizes m_placeholders; // of a bulk run's table
    std::optional<GatewayRequest::Schedule> m_schedule;
    QList<Message> m_messages;
    QList<RecipientRow> m_rows; // of a bulk run
    QList<int> m_fileRows; // each row's row in a CSV list
    QList<CsvList::Doubt> m_skipped; // a CSV list's rows that don't go out
    StopList m_stopList; // read once, before anything is sent
    bool m_json = false;
    bool m_resume = false;
    bool m_resendUnknown = false;
    bool m_record = true;
    Exit m_worst = Sent;
};
