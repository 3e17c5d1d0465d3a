// SPDX-License-Identifier: GPL-3.0-or-later
#include "SendCommand.h"

#include "ConsoleInput.h"
#include "Version.h"
#include "bulk/RecipientTable.h"
#include "handoff/xmlServer.h"
#include "schedule/CronRules.h"
#include "sending/GatewayAnswer.h"
#include "sending/MessageSize.h"
#include "sending/NumberRules.h"
#include "sending/RecipientText.h"
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
    if (!readMessages(a, text))
        return BadInput;
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
        if (!table.load(a.file)) {
            fail(BadInput,
                 QStringLiteral("Die Datei %1 kann nicht gelesen werden oder ist keine MultiSMS-Datei.").arg(a.file));
            return false;
        }
        table.recalcMaxSizes();
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
    for (const Message& m : std::as_const(m_messages)) {
        const MessageSize::SmsSizeFigures figures = MessageSize::recalcSmsSize(m.text, false, options);
        const int price = MessageSize::updateCost(options, m.key, m.rest);
        m_out << QStringLiteral("SMS an %1%2: %3 Zeichen, %4 SMS, %5 Credits je SMS\n")
                     .arg(m.number, m.name.isEmpty() ? QString() : QStringLiteral(" (") + m.name + u')')
                     .arg(figures.txtZeichen)
                     .arg(figures.txtAnzahlSMS)
                     .arg(price);
        for (const QString& part : GatewayRequest::sendMessageParts(m.text, options)) {
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
    // The figures the window shows: "Anzahl SMS" of the message, or of the whole run, at the price
    // of one SMS.
    const int count = messageCount();
    const int total = count * MessageSize::updateCost(options, m_messages.value(0).key, m_messages.value(0).rest);
    QString failure;
    const qint32 credits = queryBalance(&failure);
    m_out << QStringLiteral("Gesamt: %1 SMS, %2 Credits. ").arg(count).arg(total);
    if (credits < 0)
        m_out << QStringLiteral("Guthaben: unbekannt\n");
    else
        m_out << QStringLiteral("Guthaben: %1 Credits, %2\n")
                     .arg(credits)
                     .arg(credits >= total ? QStringLiteral("es reicht") : QStringLiteral("es reicht nicht"));
    return Sent;
}

int SendCommand::send()
{
    const cOptionen& o = Options();
    const MessageSize::SmsOptions options = MessageSize::smsOptionsOf(o);
    // The balance test of the window: the last known balance against the messages at the price
    // it tests with; an unknown balance never stops the sending.
    if (!o.xmlIsServerUsed()) {
        const qint32 credits = queryBalance();
        if (MessageSize::isBalanceTooLow(credits, messageCount(), MessageSize::balanceTestPrice(options))) {
            return fail(Refused,
                        m_bulk ? QStringLiteral("Sie verfügen nicht mehr über ein ausreichendes Guthaben um "
                                                "alle Nachrichten zu verschicken.")
                               : QStringLiteral("Sie verfügen nicht mehr über ein ausreichendes Guthaben um "
                                                "diese Nachricht zu verschicken."));
        }
    }
    const QString url = GatewayRequest::requestUrl(m_schedule.has_value(), Urls().SendSMS(), Urls().CronSMS());
    int refused = 0;
    int unreachable = 0;
    for (const Message& m : std::as_const(m_messages)) {
        const QString label = m_bulk ? QStringLiteral("%1 (%2): ").arg(m.name, m.number) : QString();
        for (const QString& part : GatewayRequest::sendMessageParts(m.text, options)) {
            if (o.xmlIsServerUsed()) {
                const xmlServer::WriteResult written = xmlServer::writeJob(o, m_password, m.number, part);
                if (!written.ok) {
                    m_err << label
                          << QStringLiteral("Die SMS an %1 konnte nicht an den Quellbote Server übergeben werden: ")
                                 .arg(m.number)
                          << written.error << '\n'
                          << Qt::flush;
                    ++unreachable;
                    continue;
                }
                m_out << label << GatewayRequest::handOffDoneText(true, o.xmlSingleUser(), o.xmlGroupUser()) << '\n';
                continue;
            }
            const GatewayRequest::SendRequest request
                = GatewayRequest::requestFor(o, m_password, m.number, m.name, part, m_bulk ? m_template : m.text,
                                             m_bulk, PrivatTicked, PublicUnticked, m_schedule);
            QString words;
            switch (post(url, GatewayRequest::requestBody(request), &words)) {
            case Unreachable:
                m_err << label << QStringLiteral("Die SMS an %1 wurde nicht versendet: ").arg(m.number) << words << '\n'
                      << Qt::flush;
                ++unreachable;
                break;
            case Refused:
                ++refused;
                [[fallthrough]];
            default:
                m_out << label << words << '\n';
                break;
            }
            m_out.flush();
        }
    }
    return unreachable ? Unreachable : refused ? Refused : Sent;
}

int SendCommand::messageCount() const
{
    const MessageSize::SmsOptions options = MessageSize::smsOptionsOf(Options());
    if (m_bulk)
        return MessageSize::recalcSmsSize(m_template, true, options, m_placeholders).txtAnzahlMultiSMS;
    return m_messages.isEmpty() ? 0 : MessageSize::recalcSmsSize(m_template, false, options).txtAnzahlSMS;
}

SendCommand::Exit SendCommand::post(const QString& url, const QString& body, QString* words)
{
    QEventLoop loop;
    int state = 0;
    const QMetaObject::Connection ended = QObject::connect(m_inet.get(), &Inet::StateChanged, &loop, [&](int s) {
        state = s;
        loop.quit();
    });
    m_inet->Execute(url, QStringLiteral("POST"), body,
                    QStringLiteral("Content-Type: application/x-www-form-urlencoded"));
    if (state == 0)
        loop.exec();
    QObject::disconnect(ended);
    if (state != Inet::icResponseCompleted) {
        *words = m_inet->FailureText();
        return Unreachable;
    }
    QString answer;
    for (QString chunk = m_inet->GetChunk(1024); !chunk.isEmpty(); chunk = m_inet->GetChunk(1024))
        answer += chunk;
    const GatewayAnswer::Answer read = GatewayAnswer::readAnswer(answer);
    *words = read.items.join(QStringLiteral("; "));
    return read.accepted ? Sent : Refused;
}
