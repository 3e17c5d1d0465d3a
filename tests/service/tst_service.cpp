// SPDX-License-Identifier: GPL-3.0-or-later
#include "ServiceProcess.h"

#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString SendPath = u"/smsv3/smsv3.php"_s;
const QString CronPath = u"/cronjob/send_repeat.php"_s;
const QString Sent = u"wurde erfolgreich an das Gateway übermittelt."_s;

struct Reply
{
    int status = 0;
    QString text;
};

// A GET of the path, or a POST of the form when there is one.
Reply fetch(const ServiceProcess& service, const QString& path, const QByteArray& form = {})
{
    QNetworkAccessManager manager;
    QNetworkRequest request { QUrl::fromEncoded((service.baseUrl() + path).toLatin1()) };
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArray("application/x-www-form-urlencoded"));
    QNetworkReply* reply = form.isNull() ? manager.get(request) : manager.post(request, form);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    Reply r;
    r.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray type = reply->header(QNetworkRequest::ContentTypeHeader).toByteArray();
    const QByteArray body = reply->readAll();
    r.text = type.contains("windows-1252") ? QStringDecoder("windows-1252").decode(body) : QString::fromUtf8(body);
    reply->deleteLater();
    return r;
}

QByteArray sendBody(const QByteArray& password, const QByteArray& number, const QByteArray& text,
                    const QByteArray& options = "&absenderkennung=false&statusmeldung=false&antwort=false")
{
    return "email=demo@quellbote.test&kennwort=" + password + "&firma=%20&empfaenger=" + number
        + "&empfaengername=Max&private=true&public=false&version=2.4.92&text=" + text + options
        + "&absender=&einlieferung=false&referer=Quellbote&long=false";
}

int balance(const ServiceProcess& service)
{
    return fetch(service, u"/sms/count.php?email=demo@quellbote.test"_s).text.toInt();
}

} // namespace

class TestService : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("QUELLBOTE_SERVICE"))
            QSKIP("QUELLBOTE_SERVICE is not set");
    }

    // The journal keeps each body byte for byte, whatever its code page.
    void sendSms_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("phrase");
        QTest::addColumn<int>("charged");
        const QByteArray number = "00491711234567";
        const auto longSms = [&](qsizetype size, const QByteArray& sender) {
            return sendBody("demo", number, QByteArray(size, 'x'),
                            "&absenderkennung=" + sender + "&statusmeldung=false&antwort=false")
                .replace("&long=false", "&long=true");
        };
        const QString tooFew = u"Ihr Guthaben reicht nicht aus."_s;
        QTest::newRow("plain SMS in Windows-1252")
            << sendBody("demo", number, QByteArray("Gr\xfc\xdf") + "e%20100%25%20%26%201%2B1") << Sent << 10;
        QTest::newRow("sender identity, replies, status report")
            << sendBody("demo", number, "Hallo", "&absenderkennung=true&statusmeldung=true&antwort=true") << Sent << 16;
        QTest::newRow("long SMS is charged per part") << longSms(307, "true") << Sent << 3 * 14;
        QTest::newRow("long SMS costing the whole balance") << longSms(50 * 153, "false") << Sent << 500;
        QTest::newRow("one part beyond the balance") << longSms(50 * 153 + 1, "false") << tooFew << 0;
        QTest::newRow("empty password") << sendBody("", number, "Hallo") << u"Die Anmeldung ist fehlgeschlagen."_s << 0;
        QTest::newRow("number without 00")
            << sendBody("demo", "01711234567", "Hallo") << u"keine gültige Rufnummer"_s << 0;
    }

    void sendSms()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, phrase);
        QFETCH(int, charged);
        ServiceProcess service;
        QVERIFY(service.isRunning());
        const Reply reply = fetch(service, SendPath, body);
        QCOMPARE(reply.status, 200);
        QVERIFY2(reply.text.contains(phrase), qPrintable(reply.text));
        QCOMPARE(reply.text.contains(Sent), charged > 0);
        QCOMPARE(balance(service), 500 - charged);
        const QList<QJsonObject> sent = service.requests(SendPath);
        QCOMPARE(sent.size(), 1);
        QCOMPARE(sent.first().value(u"body"_s).toString().toLatin1(), body);
        QCOMPARE(sent.first().value(u"status"_s).toInt(), 200);
    }

    void plainAnswers()
    {
        ServiceProcess service({ u"--info-answer"_s, u"7"_s });
        const QString count = u"/sms/count.php?email="_s;
        QCOMPARE(fetch(service, count + u"demo@quellbote.test"_s).text, u"500"_s);
        QCOMPARE(fetch(service, count + u"DEMO@quellbote.test"_s).text, u"500"_s);
        QCOMPARE(fetch(service, count).text, u"-1"_s);
        QCOMPARE(fetch(service, u"/update/infoVersion"_s).text, u"7"_s);
        // A new news number while the service runs.
        QCOMPARE(fetch(service, u"/__control/info?answer=8"_s).text, u"ok"_s);
        QCOMPARE(fetch(service, u"/update/infoVersion"_s).text, u"8"_s);
    }

    // The shop's and the job list's own links, followed as a browser does, keep the account, whose
    // password came percent-encoded in Windows-1252. A job without a cron string is accepted.
    void pageLinksKeepTheAccount_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("shop") << u"/sms/buyCredits.php?email=k@example.com&passwort=K%E4se%2B1&backcolor=FFFFFF"_s
                              << u"paket=100"_s << u"Ihr Guthaben: <b>110 Credits</b>"_s;
        QTest::newRow("job list") << u"/terminversand/deleteSMS.php?email=k@example.com&kennwort=K%E4se%2B1"_s
                                  << u"delete=1"_s << u"Der Auftrag wurde gelöscht."_s;
    }

    void pageLinksKeepTheAccount()
    {
        QFETCH(QString, page);
        QFETCH(QString, action);
        QFETCH(QString, outcome);
        QTemporaryDir dir;
        QFile accounts(dir.filePath(u"accounts.json"_s));
        QVERIFY(accounts.open(QIODevice::WriteOnly));
        accounts.write(R"({"accounts": [{"email": "k@example.com", "password": "Käse+1", "credits": 10}]})");
        accounts.close();
        ServiceProcess service({ u"--accounts"_s, accounts.fileName() });
        QVERIFY(fetch(service, CronPath,
                      "email=k@example.com&kennwort=K%E4se%2B1&empfaenger=00491711234567&text=x"
                      "&term=2009-07-15%2009:05:00&cronjobstring=&enddate=2")
                    .text.contains(u"wurde angelegt."_s));
        const QString html = fetch(service, page).text;
        const QRegularExpression link(u"href=\"(/[^\"]*"_s + QRegularExpression::escape(action) + u")\""_s);
        const QRegularExpressionMatch found = link.match(html);
        QVERIFY2(found.hasMatch(), qPrintable(html));
        const Reply followed = fetch(service, found.captured(1).replace(u"&amp;"_s, u"&"_s));
        QVERIFY2(followed.text.contains(outcome), qPrintable(followed.text));
    }

    // A job sent as a form ("+" is a blank, "%2B" a plus) is listed.
    void pagesCarryThePseudoLinks_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("job"); // sent before, when not empty
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("phonebook, with the odd entries")
            << u"/telefonbuch/telefonbuch.php?email=demo@quellbote.test&passwort=demo"_s << QByteArray()
            << QStringList { u"telefon://Max%20Mustermann@00491711234567"_s,
                             u"telefon://Lisa%20Schmidt@0049176/1234567"_s,
                             u"telefon://Sepp%20Gruber@0043/664/1234567"_s, u"\"telefon://Kaputter%20Eintrag\""_s,
                             u"close://"_s };
        QTest::newRow("groups, with the odd links")
            << u"/sms/gruppenv2/gruppenv2.php?email=demo@quellbote.test&passwort=demo"_s << QByteArray()
            << QStringList { u"http://gruppe//vertrieb.txt"_s, u"\"gruppe://vertrieb.txt\""_s,
                             u"\"http://gruppe://vertrieb.txt\""_s };
        QTest::newRow("job list")
            << u"/terminversand/deleteSMS.php?email=demo@quellbote.test&kennwort=demo&backcolor=F0F0F0"_s
            << sendBody("demo", "00491711234567", "Termin+1%2B1")
                + "&term=2009-07-15%2009:05:00&cronjobstring=05%2009%20*%20*%20*&enddate=3"
            << QStringList { u"05 09 * * *"_s, u"Termin 1+1"_s, u"background:#F0F0F0"_s };
        QTest::newRow("wrong password") << u"/telefonbuch/telefonbuch.php?email=demo@quellbote.test&passwort=x"_s
                                        << QByteArray() << QStringList { u"Anmeldung fehlgeschlagen"_s };
        QTest::newRow("help") << u"/hilfe/"_s << QByteArray() << QStringList { u"Online Hilfe"_s };
    }

    void pagesCarryThePseudoLinks()
    {
        QFETCH(QString, path);
        QFETCH(QByteArray, job);
        QFETCH(QStringList, expected);
        ServiceProcess service;
        if (!job.isEmpty())
            QVERIFY(fetch(service, CronPath, job).text.contains(u"wurde angelegt."_s));
        const Reply page = fetch(service, path);
        QCOMPARE(page.status, 200);
        for (const QString& text : expected)
            QVERIFY2(page.text.contains(text), qPrintable(text));
    }

    void groupData_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("text");
        QTest::newRow("Windows-1252 beyond Latin-1")
            << u"jaeger.txt"_s << 200
            << u"Jürgen Jäger;00491711234567;Großvater;„Opa“;\nZoë Weiß;00436641234567;Enkelin;Grüße – Zoë;\n"_s;
        QTest::newRow("listed, but its file is missing") << u"fehlt.txt"_s << 404 << QString();
    }

    void groupData()
    {
        QFETCH(QString, file);
        QFETCH(int, status);
        QFETCH(QString, text);
        ServiceProcess service;
        const Reply data = fetch(service, u"/sms/gruppenv2/"_s + file);
        QCOMPARE(data.status, status);
        if (status == 200)
            QCOMPARE(data.text, text);
    }

    void createdAccountLogsInWithTheMailedPassword()
    {
        ServiceProcess service;
        const QString create = u"/sms/createUser.php?name=M%FCller&vorname=Eva&firma=&email=eva@example.com&telefon="
                               "&fax=&strasse=Weg%201&plz=12345&ort=Berlin&land=&gutschein=&referer=Quellbote"_s;
        const auto mailedPassword = [&service] {
            QString password;
            for (const QJsonObject& e : service.journal()) {
                if (e.value(u"mail"_s).toString() == u"eva@example.com")
                    password = e.value(u"password"_s).toString();
            }
            return password;
        };
        const QString check = u"/sms/checkUser.php?email=eva@example.com&password="_s;
        // Refused, without taking the address: a required field missing, an account that was there before.
        QCOMPARE(fetch(service, QString(create).replace(u"name=M%FCller"_s, u"name="_s)).text, u"1"_s);
        QCOMPARE(fetch(service, QString(create).replace(u"eva@example.com"_s, u"demo@quellbote.test"_s)).text, u"1"_s);
        QCOMPARE(fetch(service, create).text, u"0"_s);
        const QString first = mailedPassword();
        QVERIFY(!first.isEmpty());
        // Applying again before the mailed password was checked mails a new one instead.
        QCOMPARE(fetch(service, create).text, u"0"_s);
        const QString second = mailedPassword();
        QVERIFY(second != first);
        QCOMPARE(fetch(service, check + first).text, u"1"_s);
        QCOMPARE(fetch(service, check + second).text, u"0"_s);
        // Checked once, the address is taken.
        QCOMPARE(fetch(service, create).text, u"1"_s);
        QCOMPARE(fetch(service, u"/sms/count.php?email=eva@example.com"_s).text, u"50"_s);
    }
};

QTEST_GUILESS_MAIN(TestService)
#include "tst_service.moc"
