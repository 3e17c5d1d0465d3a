// SPDX-License-Identifier: GPL-3.0-or-later
#include "ServiceProcess.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTest>

class TestService : public QObject
{
    Q_OBJECT

    struct Reply
    {
        int status = 0;
        bool failed = false;
        QString text;
    };

    static Reply fetch(const QString& url, const QByteArray& post = {}, bool isPost = false)
    {
        QNetworkAccessManager manager;
        QNetworkRequest request { QUrl::fromEncoded(url.toLatin1()) };
        request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArray("application/x-www-form-urlencoded"));
        QNetworkReply* reply = isPost ? manager.post(request, post) : manager.get(request);
        QEventLoop loop;
        QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        Reply r;
        r.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        r.failed = reply->error() != QNetworkReply::NoError;
        const QByteArray type = reply->header(QNetworkRequest::ContentTypeHeader).toByteArray();
        const QByteArray body = reply->readAll();
        r.text = type.contains("windows-1252") ? QStringDecoder("windows-1252").decode(body) : QString::fromUtf8(body);
        reply->deleteLater();
        return r;
    }

    static QByteArray sendBody(const QByteArray& password, const QByteArray& number, const QByteArray& text,
                               const QByteArray& options = "&absenderkennung=false&statusmeldung=false&antwort=false")
    {
        return "email=demo@quellbote.test&kennwort=" + password + "&firma=%20&empfaenger=" + number
            + "&empfaengername=Max&private=true&public=false&version=2.4.92&text=" + text + options
            + "&absender=&einlieferung=false&referer=Quellbote&long=false";
    }

    int balance(const ServiceProcess& service)
    {
        return fetch(service.baseUrl() + QStringLiteral("/sms/count.php?email=demo@quellbote.test")).text.toInt();
    }

private slots:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("QUELLBOTE_SERVICE"))
            QSKIP("QUELLBOTE_SERVICE is not set");
    }

    void sendSms_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QString>("phrase");
        QTest::addColumn<int>("charged");
        QTest::newRow("plain SMS") << sendBody("demo", "00491711234567", "Hallo") << true
                                   << "wurde erfolgreich an das Gateway übermittelt." << 10;
        QTest::newRow("sender identity, replies, status report")
            << sendBody("demo", "00491711234567", "Hallo", "&absenderkennung=true&statusmeldung=true&antwort=true")
            << true << "wurde erfolgreich an das Gateway übermittelt." << 16;
        QTest::newRow("wrong password") << sendBody("falsch", "00491711234567", "Hallo") << false
                                        << "Die Anmeldung ist fehlgeschlagen." << 0;
        QTest::newRow("empty password") << sendBody("", "00491711234567", "Hallo") << false
                                        << "Die Anmeldung ist fehlgeschlagen." << 0;
        QTest::newRow("number is no number")
            << sendBody("demo", "0049abc", "Hallo") << false << "keine gültige Rufnummer" << 0;
        QTest::newRow("number without 00")
            << sendBody("demo", "01711234567", "Hallo") << false << "keine gültige Rufnummer" << 0;
    }

    void sendSms()
    {
        QFETCH(QByteArray, body);
        QFETCH(bool, accepted);
        QFETCH(QString, phrase);
        QFETCH(int, charged);
        ServiceProcess service;
        QVERIFY(service.isRunning());
        const Reply reply = fetch(service.baseUrl() + QStringLiteral("/smsv3/smsv3.php"), body, true);
        QCOMPARE(reply.status, 200);
        QVERIFY2(reply.text.contains(phrase), qPrintable(reply.text));
        QCOMPARE(reply.text.contains(QStringLiteral("wurde erfolgreich an das Gateway übermittelt.")), accepted);
        QCOMPARE(balance(service), 500 - charged);
    }

    void longSmsIsChargedPerPart()
    {
        ServiceProcess service;
        const QByteArray text(307, 'x');
        const QByteArray body
            = sendBody("demo", "00491711234567", text, "&absenderkennung=true&statusmeldung=false&antwort=false")
                  .replace("&long=false", "&long=true");
        QVERIFY(fetch(service.baseUrl() + QStringLiteral("/smsv3/smsv3.php"), body, true)
                    .text.contains(QStringLiteral("erfolgreich")));
        QCOMPARE(balance(service), 500 - 3 * 14);
    }

    void tooFewCreditsAreRefused()
    {
        ServiceProcess service;
        for (int i = 0; i < 50; ++i)
            fetch(service.baseUrl() + QStringLiteral("/smsv3/smsv3.php"), sendBody("demo", "0049171123456", "x"), true);
        QCOMPARE(balance(service), 0);
        const Reply refused = fetch(service.baseUrl() + QStringLiteral("/smsv3/smsv3.php"),
                                    sendBody("demo", "0049171123456", "x"), true);
        QVERIFY2(refused.text.contains(QStringLiteral("Guthaben reicht nicht aus")), qPrintable(refused.text));
        QCOMPARE(balance(service), 0);
    }

    void balance_data()
    {
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("answer");
        QTest::newRow("known address") << "demo@quellbote.test"
                                       << "500";
        QTest::newRow("address in other case") << "DEMO@quellbote.test"
                                               << "500";
        QTest::newRow("unknown address") << "nobody@example.com"
                                         << "-1";
        QTest::newRow("empty address") << ""
                                       << "-1";
    }

    void balance()
    {
        QFETCH(QString, email);
        QFETCH(QString, answer);
        ServiceProcess service;
        QCOMPARE(fetch(service.baseUrl() + QStringLiteral("/sms/count.php?email=") + email).text, answer);
    }

    void versionAndNewsAnswers()
    {
        ServiceProcess service({ QStringLiteral("--version-answer"), QStringLiteral("2.5.0"),
                                 QStringLiteral("--info-answer"), QStringLiteral("7") });
        QCOMPARE(fetch(service.baseUrl() + QStringLiteral("/update/version")).text, QStringLiteral("2.5.0"));
        QCOMPARE(fetch(service.baseUrl() + QStringLiteral("/update/infoVersion")).text, QStringLiteral("7"));
        // A new news number while the service runs.
        QCOMPARE(fetch(service.baseUrl() + QStringLiteral("/__control/info?answer=8")).text, QStringLiteral("ok"));
        QCOMPARE(fetch(service.baseUrl() + QStringLiteral("/update/infoVersion")).text, QStringLiteral("8"));
    }

    void scheduledJobIsStoredAndListed()
    {
        ServiceProcess service;
        // The body is read as a form: "+" is a blank, "%2B" a plus.
        const QByteArray body = sendBody("demo", "00491711234567", "Termin+1%2B1")
            + "&term=2009-07-15%2009:05:00&cronjobstring=05%2009%20*%20*%20*&enddate=3";
        const Reply created = fetch(service.baseUrl() + QStringLiteral("/cronjob/send_repeat.php"), body, true);
        QVERIFY2(created.text.contains(QStringLiteral("wurde angelegt.")), qPrintable(created.text));
        const Reply jobs = fetch(
            service.baseUrl()
            + QStringLiteral("/terminversand/deleteSMS.php?email=demo@quellbote.test&kennwort=demo&backcolor=F0F0F0"));
        QVERIFY(jobs.text.contains(QStringLiteral("05 09 * * *")));
        QVERIFY(jobs.text.contains(QStringLiteral("Termin 1+1")));
        QVERIFY(jobs.text.contains(QStringLiteral("background:#F0F0F0")));
    }

    // The shop's and the job list's own links, followed as a browser does, keep the account, whose
    // password came percent-encoded in Windows-1252.
    void pageLinksKeepTheAccount_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("shop") << "/sms/buyCredits.php?email=k@example.com&passwort=K%E4se%2B1&backcolor=FFFFFF"
                              << "paket=100"
                              << "Ihr Guthaben: <b>110 Credits</b>";
        QTest::newRow("job list") << "/terminversand/deleteSMS.php?email=k@example.com&kennwort=K%E4se%2B1"
                                  << "delete=1"
                                  << "Der Auftrag wurde gelöscht.";
    }

    void pageLinksKeepTheAccount()
    {
        QFETCH(QString, page);
        QFETCH(QString, action);
        QFETCH(QString, outcome);
        QTemporaryDir dir;
        QFile accounts(dir.filePath(QStringLiteral("accounts.json")));
        QVERIFY(accounts.open(QIODevice::WriteOnly));
        accounts.write(R"({"accounts": [{"email": "k@example.com", "password": "Käse+1", "credits": 10}]})");
        accounts.close();
        ServiceProcess service({ QStringLiteral("--accounts"), accounts.fileName() });
        QVERIFY(fetch(service.baseUrl() + QStringLiteral("/cronjob/send_repeat.php"),
                      "email=k@example.com&kennwort=K%E4se%2B1&empfaenger=00491711234567&text=x"
                      "&term=2009-07-15%2009:05:00&cronjobstring=&enddate=2",
                      true)
                    .text.contains(QStringLiteral("wurde angelegt.")));
        const QString html = fetch(service.baseUrl() + page).text;
        const QRegularExpression link(QStringLiteral("href=\"(/[^\"]*") + QRegularExpression::escape(action)
                                      + QStringLiteral(")\""));
        const QRegularExpressionMatch found = link.match(html);
        QVERIFY2(found.hasMatch(), qPrintable(html));
        const Reply followed
            = fetch(service.baseUrl() + found.captured(1).replace(QStringLiteral("&amp;"), QStringLiteral("&")));
        QVERIFY2(followed.text.contains(outcome), qPrintable(followed.text));
    }

    void emptyCronStringIsAccepted()
    {
        ServiceProcess service;
        const QByteArray body
            = sendBody("demo", "00491711234567", "Jahr") + "&term=2009-07-15%2009:05:00&cronjobstring=&enddate=2";
        QVERIFY(fetch(service.baseUrl() + QStringLiteral("/cronjob/send_repeat.php"), body, true)
                    .text.contains(QStringLiteral("wurde angelegt.")));
    }

    void pagesCarryThePseudoLinks_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected");
        QTest::newRow("phonebook entry") << "/telefonbuch/telefonbuch.php?email=demo@quellbote.test&passwort=demo"
                                         << "telefon://Max%20Mustermann@00491711234567";
        QTest::newRow("phonebook number with slash")
            << "/telefonbuch/telefonbuch.php?email=demo@quellbote.test&passwort=demo"
            << "telefon://Lisa%20Schmidt@0049176/1234567";
        QTest::newRow("phonebook close") << "/telefonbuch/telefonbuch.php?email=demo@quellbote.test&passwort=demo"
                                         << "close://";
        QTest::newRow("phonebook number with slashes")
            << "/telefonbuch/telefonbuch.php?email=demo@quellbote.test&passwort=demo"
            << "telefon://Sepp%20Gruber@0043/664/1234567";
        QTest::newRow("phonebook link without @")
            << "/telefonbuch/telefonbuch.php?email=demo@quellbote.test&passwort=demo"
            << "\"telefon://Kaputter%20Eintrag\"";
        QTest::newRow("group link") << "/sms/gruppenv2/gruppenv2.php?email=demo@quellbote.test&passwort=demo"
                                    << "http://gruppe//vertrieb.txt";
        QTest::newRow("group link without http")
            << "/sms/gruppenv2/gruppenv2.php?email=demo@quellbote.test&passwort=demo"
            << "\"gruppe://vertrieb.txt\"";
        QTest::newRow("group link with http and colon")
            << "/sms/gruppenv2/gruppenv2.php?email=demo@quellbote.test&passwort=demo"
            << "\"http://gruppe://vertrieb.txt\"";
        QTest::newRow("shop close") << "/sms/buyCredits.php?email=demo@quellbote.test&passwort=demo&backcolor=FFFFFF"
                                    << "close://";
        QTest::newRow("news close") << "/news.htm"
                                    << "close://";
        QTest::newRow("wrong password") << "/telefonbuch/telefonbuch.php?email=demo@quellbote.test&passwort=x"
                                        << "Anmeldung fehlgeschlagen";
        QTest::newRow("terms") << "/sms_agb/sms_agb.htm"
                               << "Geschäftsbedingungen";
        QTest::newRow("help") << "/hilfe/"
                              << "Online Hilfe";
    }

    void pagesCarryThePseudoLinks()
    {
        QFETCH(QString, path);
        QFETCH(QString, expected);
        ServiceProcess service;
        const Reply page = fetch(service.baseUrl() + path);
        QCOMPARE(page.status, 200);
        QVERIFY2(page.text.contains(expected), qPrintable(page.text.left(400)));
    }

    void groupData_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("text");
        QTest::newRow("numbers without 00")
            << "fussball.txt" << 200 << "Tom;01701112223;Stürmer;Sonntag;\nJens;01512223334;Tor;Sonntag;\n";
        QTest::newRow("Windows-1252 beyond Latin-1")
            << "jaeger.txt" << 200
            << "Jürgen Jäger;00491711234567;Großvater;„Opa“;\nZoë Weiß;00436641234567;Enkelin;Grüße – Zoë;\n";
        QTest::newRow("a line without ;")
            << "kaputt.txt" << 200 << "Anna;00491711234567;eins;zwei;\nkaputt\nMax;00491761234567;drei;vier;\n";
        QTest::newRow("listed, but its file is missing") << "fehlt.txt" << 404 << "";
    }

    void groupData()
    {
        QFETCH(QString, file);
        QFETCH(int, status);
        QFETCH(QString, text);
        ServiceProcess service;
        const Reply data = fetch(service.baseUrl() + QStringLiteral("/sms/gruppenv2/") + file);
        QCOMPARE(data.status, status);
        if (status == 200)
            QCOMPARE(data.text, text);
    }

    void createdAccountLogsInWithTheMailedPassword()
    {
        ServiceProcess service;
        const QString create = service.baseUrl()
            + QStringLiteral("/sms/createUser.php?name=M%FCller&vorname=Eva&firma=&email=eva@example.com&telefon=&fax="
                             "&strasse=Weg%201&plz=12345&ort=Berlin&land=&gutschein=&referer=Quellbote");
        const auto mailedPassword = [&service] {
            QString password;
            for (const QJsonObject& e : service.journal()) {
                if (e.value(QStringLiteral("mail")).toString() == u"eva@example.com")
                    password = e.value(QStringLiteral("password")).toString();
            }
            return password;
        };
        const QString check = service.baseUrl() + QStringLiteral("/sms/checkUser.php?email=eva@example.com&password=");
        QCOMPARE(fetch(create).text, QStringLiteral("0"));
        const QString first = mailedPassword();
        QVERIFY(!first.isEmpty());
        // Applying again before the mailed password was checked mails a new one instead.
        QCOMPARE(fetch(create).text, QStringLiteral("0"));
        const QString second = mailedPassword();
        QVERIFY(second != first);
        QCOMPARE(fetch(check + first).text, QStringLiteral("1"));
        QCOMPARE(fetch(check + second).text, QStringLiteral("0"));
        // Checked once, the address is taken.
        QCOMPARE(fetch(create).text, QStringLiteral("1"));
        QCOMPARE(fetch(check + second).text, QStringLiteral("0"));
        QCOMPARE(fetch(service.baseUrl() + QStringLiteral("/sms/count.php?email=eva@example.com")).text,
                 QStringLiteral("50"));
    }

    void createUserRefuses_data()
    {
        QTest::addColumn<QString>("query");
        QTest::newRow("a required field is missing")
            << "name=&vorname=Eva&firma=&email=e@x.de&telefon=&fax=&strasse=W&plz=1&ort=B&land=&gutschein=&referer=Q";
        QTest::newRow("an account that was there before")
            << "name=D&vorname=E&firma=&email=demo@quellbote.test&telefon=&fax=&strasse=W&plz=1&ort=B&land="
               "&gutschein=&referer=Q";
    }

    void createUserRefuses()
    {
        QFETCH(QString, query);
        ServiceProcess service;
        QCOMPARE(fetch(service.baseUrl() + QStringLiteral("/sms/createUser.php?") + query).text, QStringLiteral("1"));
    }

    void faults_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<bool>("failed");
        QTest::addColumn<QString>("text");
        QTest::newRow("drop") << "drop" << true << "";
        QTest::newRow("http500") << "http500" << true << "Internal Server Error";
        QTest::newRow("garbage") << "garbage" << false << "<html>";
        QTest::newRow("empty") << "empty" << false << "";
        QTest::newRow("none") << "none" << false << "500";
    }

    void faults()
    {
        QFETCH(QString, mode);
        QFETCH(bool, failed);
        QFETCH(QString, text);
        ServiceProcess service;
        QVERIFY(service.setFault(QStringLiteral("/sms/count.php"), mode));
        const Reply reply = fetch(service.baseUrl() + QStringLiteral("/sms/count.php?email=demo@quellbote.test"));
        QCOMPARE(reply.failed, failed);
        if (text.isEmpty())
            QVERIFY(reply.text.isEmpty());
        else
            QVERIFY2(reply.text.contains(text), qPrintable(reply.text));
        // Other paths are not touched.
        QCOMPARE(fetch(service.baseUrl() + QStringLiteral("/update/version")).text, QStringLiteral("2.4.92"));
    }

    void slowFaultDelaysTheAnswer()
    {
        ServiceProcess service({ QStringLiteral("--fault"), QStringLiteral("/update/version=slow:400") });
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(fetch(service.baseUrl() + QStringLiteral("/update/version")).text, QStringLiteral("2.4.92"));
        QVERIFY(timer.elapsed() >= 350);
    }

    void unknownFaultModeIsRefused()
    {
        ServiceProcess service;
        QVERIFY(!service.setFault(QStringLiteral("/x"), QStringLiteral("explode")));
    }

    void journalKeepsTheRawBodyByteForByte()
    {
        ServiceProcess service;
        const QByteArray body = sendBody("demo", "00491711234567",
                                         "Gr\xfc\xdf"
                                         "e%20100%25%20%26%201%2B1");
        fetch(service.baseUrl() + QStringLiteral("/smsv3/smsv3.php"), body, true);
        const QList<QJsonObject> sent = service.requests(QStringLiteral("/smsv3/smsv3.php"));
        QCOMPARE(sent.size(), 1);
        QCOMPARE(sent.first().value(QStringLiteral("body")).toString().toLatin1(), body);
        QCOMPARE(sent.first().value(QStringLiteral("method")).toString(), QStringLiteral("POST"));
        QCOMPARE(sent.first().value(QStringLiteral("status")).toInt(), 200);
    }
};

QTEST_GUILESS_MAIN(TestService)
#include "tst_service.moc"
