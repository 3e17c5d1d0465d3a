// SPDX-License-Identifier: GPL-3.0-or-later
#include "SendCommand.h"

#include "ConsoleInput.h"
#include "Version.h"
#include "bulk/RecipientTable.h"
#include "bulk/RunRecord.h"
#include "handoff/xmlServer.h"
#include "schedule/CronRules.h"
#include "sending/GatewayAnswer.h"
#include "sending/MessageSize.h"
#include "sending/NumberRules.h"
#include "sending/RecipientText.h"
#include "sending/SendRecord.h"
#include "sending/SendRecorder.h"
#include "sending/WireText.h"
#include "settings/CUrlStore.h"
#include "settings/OptionsDialogRules.h"
#include "settings/ProductName.h"
#include "settings/ProxyConfig.h"
#include "settings/ToolRegistry.h"
#include "settings/cOptionen.h"
#include "toolkit/Clock.h"
#include "toolkit/Inet.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace {
const QString MaskedPassword = QStringLiteral("********");

// The window's checked box "privat" and unchecked "öffentlich", as a new main window has them.
constexpr int PrivatTicked = 1;
constexpr int PublicUnticked = 0;

// The lines the window gathers for its warning box, without their marks.
QString inputProblems(const GatewayRequest::InputCheck& check)
{
    QStringList lines;
    for (const QString& line : check.lines.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts)) {
        QString item = line.trimmed();
        if (item.startsWith(u"- "))
            item.remove(0, 2);
        lines.append(item);
    }
    return lines.join(u'\n');
}
} // namespace

SendCommand::SendCommand(QTextStream& out, QTextStream& err)
    : m_out(out)
    , m_err(err)
{
}

SendCommand::~SendCommand() = default;

int SendCommand::fail(Exit code, const QString& message)
{
    m_err << message << '\n';
    m_err.flush();
    return code;
}

int SendCommand::run(const QStringList& arguments)
{
    const SendArguments a = parseSendArguments(arguments);
    if (!a.error.isEmpty())
        return fail(BadInput, a.error + QStringLiteral("\nMehr dazu: quellbote-send --help"));
    if (a.help) {
        m_out << sendUsage();
        return Sent;
    }
    if (a.version) {
        m_out << QStringLiteral("quellbote-send ") << Version::text() << '\n';
        return Sent;
    }
    if (!a.config.isEmpty()) {
        if (!QFileInfo(a.config).isFile())
            return fail(BadInput, QStringLiteral("Die Einstellungsdatei %1 gibt es nicht.").arg(a.config));
        ToolRegistry::useStoreFile(a.config);
    }
    if (a.sent)
        return showSent(a.sentText, a.json);
    setProductName(readProductName());
    if (Options().Username().isEmpty()) {
        return fail(BadInput,
                    QStringLiteral("Es ist kein Konto eingerichtet: die eMail-Adresse des Kontos fehlt "
                                   "(Einstellungen, Kontodaten)."));
    }
    m_inet = std::make_unique<Inet>();
    m_inet->setAccessType(ProxyConfig::GetAccessType());
    m_inet->setProxy(ProxyConfig::GetProxyString());
    if (a.balance)
        return showBalance();

    if (!applySendOptions(a) || (!a.at.isEmpty() && !readSchedule(a.at)))
        return BadInput;
    const cOptionen& o = Options();
    if (o.xmlIsServerUsed()
        && GatewayRequest::serverWriter(o.XmlPfad(), o.xmlSingleUser(), o.xmlGroupUser())
            == GatewayRequest::ServerWriter::None) {
        // The window would report a hand-off that wrote nothing; a script is told instead.
        return fail(BadInput,
                    o.XmlPfad().size() < 3 ? GatewayRequest::handOffDoneText(false, {}, false)
                                           : GatewayRequest::handOffDoneText(true, o.xmlSingleUser(), false));
    }

    // The password is asked for before the text, as the window does: a script gives it as the
    // first line of standard input, the text (if it comes from there too) after it.
    m_password = o.kennwort();
    if (m_password.isEmpty()) {
        m_password = ConsoleInput::readPassword(QStringLiteral("Kennwort für %1: ").arg(o.Username()));
        if (m_password.isEmpty())
            return fail(BadInput,
                        QStringLiteral("Es ist kein Kennwort gespeichert, und über die Standardeingabe kam "
                                       "keines."));
    }
    QString text = a.textFromInput ? ConsoleInput::readText() : a.text;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\n', QStringLiteral("\r\n"));
    m_json = a.json;
    m_resume = a.resume;
    m_resendUnknown = a.resendUnknown;
    m_record = !a.noRecord;
    if (a.transliterate)
        text = WireText::transliterate(text);
    if (!readMessages(a, text) || !checkCharacters(a.transliterate))
        return BadInput;
    // Nobody on a shared stop list may get an SMS because its file couldn't be read.
    m_stopList = StopList::load();
    if (!m_stopList.sharedFileError().isEmpty())
        return fail(BadInput,
                    m_stopList.sharedFileError()
                        + QStringLiteral("\nEs wird keine SMS versendet, solange die Sperrliste nicht gelesen werden "
                                         "kann."));
    return a.dryRun ? dryRun() : send();
}

int SendCommand::showBalance()
{
    QString failure;
    bool ok = false;
    const QString text = m_inet->OpenURL(Urls().SmsCount() + Options().Username(), &ok).trimmed();
    if (!ok)
        return fail(Unreachable, QStringLiteral("kein Internet: ") + m_inet->FailureText());
    const GatewayAnswer::CreditsState state = GatewayAnswer::readBalance(text);
    if (state.credits >= 0 || state.caption.endsWith(QStringLiteral(" Credits"))) {
        m_out << state.credits << '\n';
        return Sent;
    }
    if (!state.enabled)
        return fail(Refused, state.caption);
    return fail(Unreachable, state.caption + QStringLiteral(": Die Antwort des Servers ist keine Zahl."));
}

bool SendCommand::applySendOptions(const SendArguments& a)
{
    cOptionen& o = Options();
    // As the window's panels do: sender identity and replies exclude each other. Nothing of this
    // is stored.
    if (a.senderGiven && a.reply) {
        fail(BadInput,
             QStringLiteral("Absenderkennung und Antwort schließen sich aus: Eine SMS mit eigener "
                            "Absenderkennung kann nicht beantwortet werden."));
        return false;
    }
    if (a.senderGiven) {
        const OptionsDialogRules::SenderCheck check = OptionsDialogRules::checkSender(a.sender);
        const bool allowed = std::all_of(a.sender.cbegin(), a.sender.cend(),
                                         [](QChar c) { return OptionsDialogRules::senderKeyAllowed(c); });
        if (!allowed) {
            fail(BadInput, QStringLiteral("Absender „%1“: Es sind nur Buchstaben und Zahlen erlaubt.").arg(a.sender));
            return false;
        }
        if (check.tooLong || a.sender.size() > check.maxLength || a.sender.isEmpty()) {
            fail(BadInput,
                 QStringLiteral("Absender „%1“: max. 11 alphanumerische Zeichen möglich! (eine Nummer: "
                                "bis 16 Ziffern)")
                     .arg(a.sender));
            return false;
        }
        o.setIsAbsenderkennung(true);
        o.setAbsenderkennung(a.sender);
        o.setIsAntwortEnabled(false);
    }
    if (a.reply) {
        o.setIsAntwortEnabled(true);
        o.setIsAbsenderkennung(false);
    }
    if (a.status)
        o.setIsStatusberichtEnabled(true);
    if (a.longSms)
        o.setIsLongSmsEnabled(true);
    if (!o.xmlIsServerUsed() && GatewayRequest::asksForSender(o.isAbsenderkennung(), o.Absenderkennung())) {
        fail(BadInput, QStringLiteral("Sie haben keinen Absender eingegeben. Geben Sie ihn mit --sender NAME an."));
        return false;
    }
    return true;
}

bool SendCommand::readSchedule(const QString& at)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{4}-\\d{2}-\\d{2}) (\\d{2}):(\\d{2})$"));
    const QRegularExpressionMatch match = form.match(at.trimmed());
    const QDate date = match.hasMatch() ? QDate::fromString(match.captured(1), Qt::ISODate) : QDate();
    const int hour = match.captured(2).toInt();
    const int minute = match.captured(3).toInt();
    if (!date.isValid() || hour > 23 || minute > 59) {
        fail(BadInput, QStringLiteral("--at „%1“: erwartet wird ein Zeitpunkt wie „2026-12-24 18:30“.").arg(at));
        return false;
    }
    // The choices the scheduling dialog offers: days from today on, minutes in steps of five.
    if (minute % 5 != 0) {
        fail(BadInput,
             QStringLiteral("--at „%1“: Die Minuten gehen in Fünferschritten (00, 05, … 55), wie im Terminversand.")
                 .arg(at));
        return false;
    }
    if (date < Clock::now().date()) {
        fail(BadInput, QStringLiteral("--at „%1“: Der Tag liegt in der Vergangenheit.").arg(at));
        return false;
    }
    ScheduleChoices choices;
    choices.cbRepetition = false;
    choices.DTPickerStart = CronRules::wallClock(date, QTime(hour, minute));
    choices.cmbTimeHour = match.captured(2);
    choices.cmbTimeMinutes = match.captured(3);
    const CronRules::Result result = CronRules::generate(choices);
    m_schedule = GatewayRequest::Schedule { result.job.StartTime(), result.job.CronString(), result.job.EndTime() };
    return true;
}

bool SendCommand::readMessages(const SendArguments& a, const QString& text)
{
    m_template = text;
    m_bulk = !a.file.isEmpty();
    const MessageSize::SmsOptions options = MessageSize::smsOptionsOf(Options());
    if (!m_bulk) {
        const NumberRules::TypedNumber typed = NumberRules::splitTypedNumber(a.number);
        const GatewayRequest::InputCheck check = GatewayRequest::validateInput(false, typed.key, typed.rest, text);
        if (!check.valid) {
            fail(BadInput,
                 QStringLiteral("Die SMS an „%1“ wurde nicht versendet:\n").arg(a.number) + inputProblems(check));
            return false;
        }
        if (!typed.notMobileIn.isEmpty())
            m_err << QStringLiteral("Dies ist keine Mobilfunkvorwahl für ") << typed.notMobileIn
                  << QStringLiteral("; die Nummer geht weltweit.\n") << Qt::flush;
        const NumberRules::SendNumber number = NumberRules::sendNumber(typed.key, typed.rest);
        m_messages.append({ number.number, text, a.name, typed.key, typed.rest });
    } else {
        const GatewayRequest::InputCheck check = GatewayRequest::validateInput(true, {}, {}, text);
        if (!check.valid) {
            fail(BadInput, inputProblems(check));
            return false;
        }
        RecipientTable table;
        if (CsvList::isCsvPath(a.file)) {
            if (!readCsv(a.file, &table))
                return false;
        } else if (!table.load(a.file)) {
            fail(BadInput,
                 QStringLiteral("Die Datei %1 kann nicht gelesen werden oder ist keine MultiSMS-Datei.").arg(a.file));
            return false;
        }
        if (a.transliterate) {
            // The rows' values go into the text and the request: plain letters there too.
            for (int i = 0; i < table.rowCount(); ++i) {
                const RecipientRow& row = table.rows().at(i);
                table.setRowValues(i, WireText::transliterate(row.Name), row.Nummer,
                                   WireText::transliterate(row.Freitext1), WireText::transliterate(row.Freitext2));
            }
        }
        table.recalcMaxSizes();
        m_rows = table.rows();
        m_placeholders = { table.getMaxNameSize(), table.getMaxFrei1Size(), table.getMaxFrei2Size(), table.rowCount() };
        for (int i = 0; i < table.rowCount(); ++i) {
            const RecipientRow& row = table.rows().at(i);
            const std::optional<RecipientText::RowMessage> message
                = RecipientText::rowMessage(text, row.Name, row.Nummer, row.Freitext1, row.Freitext2);
            if (!message) {
                fail(BadInput, RecipientText::missingNumberNote(i + 1, row.Name));
                return false;
            }
            m_messages.append({ message->number, message->text, message->name, {}, {} });
        }
    }
    if (MessageSize::recalcSmsSize(text, false, options).overLimit) {
        fail(BadInput, QStringLiteral("Eine SMS darf maximal 1500 Zeichen groß sein!"));
        return false;
    }
    return true;
}

bool SendCommand::readCsv(const QString& path, RecipientTable* table)
{
    CsvList::Result list;
    if (!table->loadCsv(path, nullptr, &list)) {
        fail(BadInput, QStringLiteral("Die Datei %1 kann nicht als Liste gelesen werden: %2").arg(path, list.failure));
        return false;
    }
    if (!list.mapping.hasNumber()) {
        fail(BadInput,
             QStringLiteral("In der Datei %1 ist keine Spalte mit Mobilnummern zu erkennen. Ihre Spalten: %2")
                 .arg(path, list.header.join(QStringLiteral(", "))));
        return false;
    }
    // A script can't be asked which column it meant: it is told which one was taken.
    if (!list.sure)
        m_err << QStringLiteral("Die Spalte der Mobilnummern ist nicht sicher erkannt; genommen wird „%1“.\n")
                     .arg(list.header.value(list.mapping.number >= 0 ? list.mapping.number
                                                                     : list.mapping.typedNumbers.constFirst().second))
              << Qt::flush;
    m_fileRows = list.rowNumbers;
    m_skipped = list.doubtful;
    return true;
}

bool SendCommand::checkCharacters(bool transliterated)
{
    if (transliterated)
        return true;
    QStringList characters;
    for (const Message& m : std::as_const(m_messages)) {
        for (const QString* text : { &m.text, &m.name }) {
            if (WireText::isSendable(*text))
                continue;
            for (const QString& c : WireText::unsendable(*text))
                if (!characters.contains(c))
                    characters.append(c);
        }
    }
    if (characters.isEmpty())
        return true;
    fail(BadInput,
         QStringLiteral("Die SMS wurde nicht versendet. ") + WireText::unsendableNotice(characters)
             + QStringLiteral("\nMit --transliterate werden sie durch die nächsten einfachen Buchstaben ersetzt "
                              "(Ł durch L, ś durch s); was keine hat, wie ein Emoji, fällt weg."));
    return false;
}

qint32 SendCommand::queryBalance(QString* failure)
{
    bool ok = false;
    const QString text = m_inet->OpenURL(Urls().SmsCount() + Options().Username(), &ok).trimmed();
    if (!ok) {
        if (failure)
            *failure = m_inet->FailureText();
        return -1;
    }
    return GatewayAnswer::readBalance(text).credits;
}

int SendCommand::dryRun()
{
    const cOptionen& o = Options();
    const MessageSize::SmsOptions options = MessageSize::smsOptionsOf(o);
    const QString url = GatewayRequest::requestUrl(m_schedule.has_value(), Urls().SendSMS(), Urls().CronSMS());
    // A list's rows in the order of the file, those that don't go out among them.
    qsizetype skipped = 0;
    const auto tellSkippedBefore = [this, &skipped](int fileRow) {
        while (skipped < m_skipped.size() && (fileRow < 0 || m_skipped.at(skipped).row < fileRow))
            tellSkipped(m_skipped.at(skipped++));
    };
    for (qsizetype i = 0; i < m_messages.size(); ++i) {
        const Message& m = m_messages.at(i);
        tellSkippedBefore(m_fileRows.value(i));
        if (m_stopList.contains(m.number)) {
            tellStopListed(m.name, m.number, m_bulk ? int(i) + 1 : 0, m_fileRows.value(i));
            continue;
        }
        if (m_json) {
            QJsonObject line;
            line.insert(QStringLiteral("name"), m.name);
            line.insert(QStringLiteral("number"), m.number);
            if (m_bulk)
                line.insert(QStringLiteral("row"), i + 1);
            if (i < m_fileRows.size())
                line.insert(QStringLiteral("fileRow"), m_fileRows.at(i));
            m_out << QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact)) << '\n';
            continue;
        }
        const MessageSize::SmsSizeFigures figures = MessageSize::recalcSmsSize(m.text, false, options);
        const int price = MessageSize::updateCost(options, m.key, m.rest);
        m_out << QStringLiteral("SMS an %1%2: %3 Zeichen, %4 SMS, %5 Credits je SMS\n")
                     .arg(m.number, m.name.isEmpty() ? QString() : QStringLiteral(" (") + m.name + u')')
                     .arg(figures.txtZeichen)
                     .arg(figures.txtAnzahlSMS)
                     .arg(price);
        for (const QString& part : GatewayRequest::sendMessageParts(m.text, options)) {
            m_out << QStringLiteral("  Text: ") << WireText::wireForm(part) << '\n';
            if (o.xmlIsServerUsed()) {
                m_out << QStringLiteral("  Übergabe an den Quellbote Server: ") << o.XmlPfad() << '\n';
                continue;
            }
            const GatewayRequest::SendRequest request
                = GatewayRequest::requestFor(o, MaskedPassword, m.number, m.name, part, m_bulk ? m_template : m.text,
                                             m_bulk, PrivatTicked, PublicUnticked, m_schedule);
            m_out << QStringLiteral("  POST ") << url << '\n'
                  << QStringLiteral("  ") << GatewayRequest::requestBody(request) << '\n';
        }
    }
    tellSkippedBefore(-1);
    if (m_json)
        return Sent;
    // The figures the window shows: "Anzahl SMS" of the message, or of the whole run, at the price
    // of one SMS.
    const int count = messageCount();
    const int total = count * MessageSize::updateCost(options, m_messages.value(0).key, m_messages.value(0).rest);
    QString failure;
    const qint32 credits = queryBalance(&failure);
    m_out << QStringLiteral("Gesamt: %1 SMS, %2 Credits. ").arg(count).arg(total);
    // Judged as the send will judge it: by the balance test.
    const bool enough = SendingSession::balanceRefusal(credits, count, options, m_bulk).isEmpty();
    if (credits < 0)
        m_out << QStringLiteral("Guthaben: unbekannt\n");
    else
        m_out << QStringLiteral("Guthaben: %1 Credits, %2\n")
                     .arg(credits)
                     .arg(enough ? QStringLiteral("es reicht") : QStringLiteral("es reicht nicht"));
    return Sent;
}

int SendCommand::send()
{
    const cOptionen& o = Options();
    const MessageSize::SmsOptions options = MessageSize::smsOptionsOf(o);
    QList<int> only;
    std::unique_ptr<RunRecord> record;
    if (m_bulk && !planRun(&only, &record))
        return m_worst;
    for (const CsvList::Doubt& row : std::as_const(m_skipped))
        tellSkipped(row);
    m_out.flush();

    // The balance test of the window, on every route: the last known balance against the messages
    // at the price it tests with; an unknown balance never stops the sending.
    const double count = m_bulk && m_resume ? double(messagesPerRow()) * double(only.size()) : messageCount();
    const QString refusal = SendingSession::balanceRefusal(queryBalance(), count, options, m_bulk);
    if (!refusal.isEmpty()) {
        for (const Message& m : std::as_const(m_messages))
            report({ 0, -1, m.number, m.name, m.text, 0, SendOutcome::State::Refused, refusal });
        m_err << refusal << '\n' << Qt::flush;
        return Refused;
    }
    if (m_bulk && m_resume && only.isEmpty())
        return m_worst;

    SendingSession::Host host;
    // What the window's text box would hold: the message, or the run's text with its placeholders.
    const QString txtSMS = m_bulk ? m_template : m_messages.value(0).text;
    host.messageText = [txtSMS] {
        return txtSMS;
    };
    // A sender identity that is on and empty was refused before.
    host.sendWithoutSender = [] {
        return false;
    };
    // Declared before the session so that it outlives it: its last entries are written at its end.
    std::unique_ptr<SendRecord> sendRecord;
    if (m_record)
        sendRecord = std::make_unique<SendRecord>();
    SendingSession session(host);
    session.transfer()->setAccessType(ProxyConfig::GetAccessType());
    session.transfer()->setProxy(ProxyConfig::GetProxyString());
    QObject::connect(&session, &SendingSession::delivered, &session,
                     [this](const SendingSession::Delivery& d) { tell(d); });
    QObject::connect(&session, &SendingSession::finished, &session,
                     [this](const SendingSession::Outcome& outcome) { report(outcome); });
    std::unique_ptr<SendRecorder> recorder;
    if (sendRecord) {
        // A record that can't be written is told once; the sending goes on.
        const auto warn = [this, record = sendRecord.get()] {
            if (record->takeFailure())
                m_err << QStringLiteral("Hinweis: ") << record->lastError() << '\n' << Qt::flush;
        };
        warn();
        QObject::connect(sendRecord.get(), &SendRecord::failed, &session, warn);
        recorder = std::make_unique<SendRecorder>(&session, sendRecord.get(), SendRecord::Road::Command);
        const Message first = m_messages.value(0);
        recorder->setPrice(MessageSize::updateCost(options, first.key, first.rest));
    }
    QEventLoop loop;
    QObject::connect(&session, &SendingSession::idle, &loop, &QEventLoop::quit);

    SendingSession::Send send;
    send.password = m_password;
    send.isMultiSMSMode = m_bulk;
    send.chkPrivat = PrivatTicked;
    send.chkPublic = PublicUnticked;
    send.schedule = m_schedule;
    send.stopList = m_stopList;
    if (m_bulk) {
        session.startRun(send, m_rows, only, record.release());
    } else {
        const Message& m = m_messages.constFirst();
        session.sendMessage(send, m.number, m.text, m.name);
    }
    if (session.isBusy())
        loop.exec();
    return m_worst;
}

bool SendCommand::planRun(QList<int>* only, std::unique_ptr<RunRecord>* record)
{
    *record = std::make_unique<RunRecord>(RunRecord::pathFor(m_rows));
    const RunRecord::Contents before = RunRecord::read((*record)->path());
    if (!m_resume || !before.exists) {
        m_resume = false;
        if (!(*record)->begin(m_template, int(m_rows.size())))
            record->reset();
        return true;
    }
    // Rows that went out are never sent again; rows that may have gone out only when asked for.
    *only = before.rowsToSend();
    const QList<int> unknown = before.rowsUnknown();
    if (m_resendUnknown) {
        *only += unknown;
        std::sort(only->begin(), only->end());
    }
    for (int row = 0; row < m_rows.size(); ++row) {
        const Message& m = m_messages.at(row);
        if (!m_resendUnknown && unknown.contains(row)) {
            report({ 0, row, m.number, m.name, m.text, 0, SendOutcome::State::Unknown,
                     QStringLiteral("Beim letzten Versand kam keine Antwort; die SMS ist möglicherweise "
                                    "versendet. Mit --resend-unknown wird sie erneut gesendet.") });
        } else if (!only->contains(row)) {
            report({ 0, row, m.number, m.name, m.text, 0, SendOutcome::State::Skipped,
                     QStringLiteral("bereits versendet") });
        }
    }
    if (!only->isEmpty() && !(*record)->resume())
        record->reset();
    return true;
}

int SendCommand::messagesPerRow() const
{
    return MessageSize::recalcSmsSize(m_template, true, MessageSize::smsOptionsOf(Options()), m_placeholders)
        .txtAnzahlProNachricht;
}

int SendCommand::messageCount() const
{
    const MessageSize::SmsOptions options = MessageSize::smsOptionsOf(Options());
    if (m_bulk)
        return MessageSize::recalcSmsSize(m_template, true, options, m_placeholders).txtAnzahlMultiSMS;
    return m_messages.isEmpty() ? 0 : MessageSize::recalcSmsSize(m_template, false, options).txtAnzahlSMS;
}
