// SPDX-License-Identifier: GPL-3.0-or-later
#include "Service.h"

#include "Pages.h"

#include <QDateTime>
#include <QFile>
#include <QHttpServerRequest>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QRandomGenerator>
#include <QStringDecoder>
#include <QTcpSocket>
#include <QTextStream>
#include <QTimer>
#include <QUrl>

#include <cstdio>

namespace {
const QByteArray TextType = "text/plain; charset=windows-1252";
const QByteArray HtmlType = "text/html; charset=utf-8";

QString fromCp1252(const QByteArray& bytes)
{
    QStringDecoder decoder("windows-1252");
    return decoder.decode(bytes);
}

QByteArray toCp1252(const QString& text)
{
    QStringEncoder encoder("windows-1252");
    return encoder.encode(text);
}

Answer text(const QString& body, int status = 200)
{
    return { status, TextType, toCp1252(body) };
}

Answer html(const QString& body, int status = 200)
{
    return { status, HtmlType, body.toUtf8() };
}

QByteArray reason(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 404:
        return "Not Found";
    case 403:
        return "Forbidden";
    default:
        return "Internal Server Error";
    }
}

void writeAnswer(QTcpSocket* socket, const Answer& answer)
{
    QByteArray response = "HTTP/1.1 " + QByteArray::number(answer.status) + ' ' + reason(answer.status) + "\r\n";
    response += "Content-Type: " + answer.contentType + "\r\n";
    response += "Content-Length: " + QByteArray::number(answer.body.size()) + "\r\n";
    response += "Connection: close\r\n\r\n";
    response += answer.body;
    socket->write(response);
    socket->flush();
    socket->disconnectFromHost();
}

// The price of one SMS: 10, 14 with a sender identity, one more each for replies and a status
// report.
int priceOf(const QMap<QString, QString>& form)
{
    int price = form.value(QStringLiteral("absenderkennung")) == u"true" ? 14 : 10;
    if (form.value(QStringLiteral("antwort")) == u"true")
        ++price;
    if (form.value(QStringLiteral("statusmeldung")) == u"true")
        ++price;
    return price;
}

bool isNumber(const QString& number)
{
    if (number.size() < 6)
        return false;
    for (const QChar c : number) {
        if (!c.isDigit())
            return false;
    }
    return true;
}

QString generatedPassword()
{
    static const QString letters = QStringLiteral("abcdefghkmnpqrstuvwxyz23456789");
    QString password;
    for (int i = 0; i < 8; ++i)
        password += letters.at(QRandomGenerator::global()->bounded(int(letters.size())));
    return password;
}
} // namespace

QMap<QString, QString> parseForm(const QByteArray& encoded)
{
    QMap<QString, QString> fields;
    for (const QByteArray& pair : encoded.split('&')) {
        if (pair.isEmpty())
            continue;
        const qsizetype eq = pair.indexOf('=');
        const QByteArray key = eq < 0 ? pair : pair.left(eq);
        const QByteArray value = eq < 0 ? QByteArray() : pair.mid(eq + 1);
        // As a form decoder does: "+" is a blank, "%2B" a plus.
        const auto decoded = [](QByteArray part) {
            return fromCp1252(QByteArray::fromPercentEncoding(part.replace('+', ' ')));
        };
        fields.insert(decoded(key), decoded(value));
    }
    return fields;
}

Service::Service(Accounts accounts, const QString& journalPath, QString versionAnswer, QString infoAnswer)
    : m_accounts(std::move(accounts))
    , m_versionAnswer(std::move(versionAnswer))
    , m_infoAnswer(std::move(infoAnswer))
{
    if (!journalPath.isEmpty()) {
        m_journal = std::make_unique<QFile>(journalPath);
        if (!m_journal->open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
            m_journal.reset();
    }
}

Service::~Service() = default;

bool Service::setFault(const QString& path, const QString& mode)
{
    const bool known = mode == u"drop" || mode == u"http500" || mode == u"garbage" || mode == u"empty"
        || mode == u"none" || (mode.startsWith(u"slow:") && mode.mid(5).toInt() > 0);
    if (!known)
        return false;
    if (mode == u"none")
        m_faults.remove(path);
    else
        m_faults.insert(path, mode);
    return true;
}

bool Service::handleRequest(const QHttpServerRequest& request, QTcpSocket* socket)
{
    const QString path = request.url().path();
    const QByteArray rawQuery = request.url().query(QUrl::FullyEncoded).toLatin1();
    const QMap<QString, QString> query = parseForm(rawQuery);
    const QString method
        = request.method() == QHttpServerRequest::Method::Post ? QStringLiteral("POST") : QStringLiteral("GET");

    if (path.startsWith(u"/__control/")) {
        Answer answer;
        if (!request.remoteAddress().isLoopback()) {
            answer = text(QStringLiteral("forbidden"), 403);
        } else if (path == u"/__control/fault") {
            answer = setFault(query.value(QStringLiteral("path")), query.value(QStringLiteral("mode")))
                ? text(QStringLiteral("ok"))
                : text(QStringLiteral("unknown mode"), 400);
        } else if (path == u"/__control/info" && query.contains(QStringLiteral("answer"))) {
            m_infoAnswer = query.value(QStringLiteral("answer"));
            answer = text(QStringLiteral("ok"));
        } else {
            answer = text(QStringLiteral("unknown control"), 400);
        }
        journal(request, answer.status, answer.body);
        writeAnswer(socket, answer);
        return true;
    }

    const QString fault = m_faults.value(path);
    if (fault == u"drop") {
        journal(request, 0, QByteArray());
        socket->abort();
        return true;
    }
    Answer answer;
    if (fault == u"http500")
        answer = { 500, HtmlType, Pages::garbage().toUtf8() };
    else if (fault == u"garbage")
        answer = html(Pages::garbage());
    else if (fault == u"empty")
        answer = text(QString());
    else
        answer = route(method, path, query, rawQuery, request.body());
    journal(request, answer.status, answer.body);

    if (fault.startsWith(u"slow:")) {
        QPointer<QTcpSocket> later(socket);
        QTimer::singleShot(fault.mid(5).toInt(), this, [later, answer] {
            if (later)
                writeAnswer(later, answer);
        });
        return true;
    }
    writeAnswer(socket, answer);
    return true;
}

void Service::missingHandler(const QHttpServerRequest& request, QTcpSocket* socket)
{
    const Answer answer = html(Pages::notFound(request.url().path()), 404);
    journal(request, answer.status, answer.body);
    writeAnswer(socket, answer);
}

Answer Service::route(const QString& method, const QString& path, const QMap<QString, QString>& query,
                      const QByteArray& rawQuery, const QByteArray& body)
{
    const auto q = [&query](const char16_t* key) {
        return query.value(QString::fromUtf16(key));
    };
    if (path == u"/smsv3/smsv3.php" && method == u"POST")
        return sendSms(parseForm(body), false);
    if (path == u"/cronjob/send_repeat.php" && method == u"POST")
        return sendSms(parseForm(body), true);
    if (path == u"/sms/count.php") {
        const Account* account = m_accounts.find(q(u"email"));
        return text(account ? QString::number(account->credits) : QStringLiteral("-1"));
    }
    if (path == u"/update/version")
        return text(m_versionAnswer);
    if (path == u"/update/infoVersion")
        return text(m_infoAnswer);
    if (path == u"/sms/checkUser.php") {
        Account* account = m_accounts.login(q(u"email"), q(u"password"));
        if (account)
            account->confirmed = true; // the mailed password has arrived
        return text(account ? QStringLiteral("0") : QStringLiteral("1"));
    }
    if (path == u"/sms/createUser.php")
        return createUser(query);
    if (path == u"/sms_agb/sms_agb.htm")
        return html(Pages::terms());
    if (path == u"/news.htm")
        return html(Pages::news());
    if (path == u"/hilfe/" || path == u"/hilfe")
        return html(Pages::help());
    if (path == u"/" || path.isEmpty())
        return html(Pages::home());
    if (path.startsWith(u"/sms/gruppenv2/") && path != u"/sms/gruppenv2/gruppenv2.php") {
        const WebGroup* group = m_accounts.groupByFile(path.mid(15));
        if (!group || group->missing)
            return html(Pages::notFound(path), 404);
        return text(group->lines.join(u'\n') + u'\n');
    }

    // The account's pages need e-mail and password.
    const QString password = path == u"/terminversand/deleteSMS.php" ? q(u"kennwort") : q(u"passwort");
    Account* account = m_accounts.login(q(u"email"), password);
    const bool accountPage = path == u"/telefonbuch/telefonbuch.php" || path == u"/sms/gruppenv2/gruppenv2.php"
        || path == u"/sms/buyCredits.php" || path == u"/terminversand/deleteSMS.php";
    if (!accountPage)
        return html(Pages::notFound(path), 404);
    if (!account)
        return html(Pages::loginError());
    // The links of a page keep the account's keys, without the action of this visit.
    QByteArray keep;
    for (const QByteArray& pair : rawQuery.split('&')) {
        if (!pair.startsWith("paket=") && !pair.startsWith("delete=") && !pair.isEmpty())
            keep += (keep.isEmpty() ? "" : "&") + pair;
    }
    const QString keys = QString::fromLatin1(keep);
    if (path == u"/telefonbuch/telefonbuch.php")
        return html(Pages::phonebook(*account));
    if (path == u"/sms/gruppenv2/gruppenv2.php")
        return html(Pages::groups(*account));
    if (path == u"/sms/buyCredits.php") {
        QString notice;
        const int package = q(u"paket").toInt();
        if (package == 100 || package == 500 || package == 1000) {
            account->credits += package;
            notice = QString::number(package) + QStringLiteral(" Credits wurden Ihrem Konto gutgeschrieben.");
        }
        return html(Pages::shop(*account, keys, notice, q(u"backcolor")));
    }
    QString notice;
    const int remove = q(u"delete").toInt();
    for (qsizetype i = 0; i < account->jobs.size(); ++i) {
        if (account->jobs.at(i).id == remove) {
            account->jobs.removeAt(i);
            notice = QStringLiteral("Der Auftrag wurde gelöscht.");
            break;
        }
    }
    return html(Pages::jobs(*account, keys, notice, q(u"backcolor")));
}

Answer Service::sendSms(const QMap<QString, QString>& form, bool scheduled)
{
    const auto f = [&form](const char16_t* key) {
        return form.value(QString::fromUtf16(key));
    };
    Account* account = m_accounts.login(f(u"email"), f(u"kennwort"));
    if (!account) {
        return text(QStringLiteral("Die Anmeldung ist fehlgeschlagen.;Für diese Kombination aus eMail und Kennwort ist "
                                   "kein Konto vorhanden."));
    }
    const QString number = f(u"empfaenger");
    if (!isNumber(number) || !number.startsWith(u"00"))
        return text(QStringLiteral("Die Empfängernummer ") + number + QStringLiteral(" ist keine gültige Rufnummer."));
    const QString message = f(u"text");
    if (message.isEmpty())
        return text(QStringLiteral("Es wurde kein Text übermittelt."));
    const int parts = f(u"long") == u"true" ? int((message.size() + 152) / 153) : 1;
    const qint64 cost = qint64(priceOf(form)) * parts;
    if (account->credits < cost) {
        return text(QStringLiteral("Ihr Guthaben reicht nicht aus.;Benötigt werden ") + QString::number(cost)
                    + QStringLiteral(" Credits, Ihr Guthaben beträgt ") + QString::number(account->credits)
                    + QStringLiteral(" Credits."));
    }
    if (scheduled) {
        ScheduledJob job { m_accounts.nextJobId(), f(u"term"), f(u"cronjobstring"), f(u"enddate"), number, message };
        account->jobs.append(job);
        return text(QStringLiteral("Der Auftrag Nr. ") + QString::number(job.id) + QStringLiteral(" für ") + number
                    + QStringLiteral(" wurde angelegt.;Erster Versand: ") + job.start.trimmed());
    }
    account->credits -= cost;
    return text(QStringLiteral("Die SMS an ") + number
                + QStringLiteral(" wurde erfolgreich an das Gateway übermittelt.;") + QStringLiteral("Es wurden ")
                + QString::number(cost) + QStringLiteral(" Credits abgebucht."));
}

Answer Service::createUser(const QMap<QString, QString>& query)
{
    for (const char16_t* key : { u"name", u"vorname", u"email", u"strasse", u"plz", u"ort" }) {
        if (query.value(QString::fromUtf16(key)).trimmed().isEmpty())
            return text(QStringLiteral("1"));
    }
    const QString email = query.value(QStringLiteral("email"));
    Account* account = m_accounts.find(email);
    // An address that applied before but never checked its mailed password may apply again and
    // gets a new password; a confirmed account is taken.
    if (account && account->confirmed)
        return text(QStringLiteral("1"));
    if (!account) {
        Account created;
        created.email = email;
        created.credits = 50;
        created.confirmed = false;
        account = &m_accounts.add(created);
    }
    account->password = generatedPassword();
    account->name = query.value(QStringLiteral("vorname")) + u' ' + query.value(QStringLiteral("name"));
    // The "mail" with the password: on stdout and in the journal.
    const QString mail
        = QStringLiteral("mail to ") + email + QStringLiteral(": Ihr Kennwort lautet ") + account->password;
    std::fprintf(stdout, "%s\n", mail.toUtf8().constData());
    std::fflush(stdout);
    if (m_journal) {
        QJsonObject entry { { QStringLiteral("time"), QDateTime::currentDateTime().toString(Qt::ISODate) },
                            { QStringLiteral("mail"), email },
                            { QStringLiteral("password"), account->password } };
        m_journal->write(QJsonDocument(entry).toJson(QJsonDocument::Compact) + '\n');
        m_journal->flush();
    }
    return text(QStringLiteral("0"));
}

void Service::journal(const QHttpServerRequest& request, int status, const QByteArray& answer)
{
    if (!m_journal)
        return;
    QJsonObject entry {
        { QStringLiteral("time"), QDateTime::currentDateTime().toString(Qt::ISODateWithMs) },
        { QStringLiteral("method"),
          request.method() == QHttpServerRequest::Method::Post ? QStringLiteral("POST") : QStringLiteral("GET") },
        { QStringLiteral("path"), request.url().path() },
        { QStringLiteral("query"), request.url().query(QUrl::FullyEncoded) },
        { QStringLiteral("body"), QString::fromLatin1(request.body()) },
        { QStringLiteral("status"), status },
        { QStringLiteral("answer"), QString::fromLatin1(answer) },
    };
    m_journal->write(QJsonDocument(entry).toJson(QJsonDocument::Compact) + '\n');
    m_journal->flush();
}
