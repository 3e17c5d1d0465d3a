// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/GatewayRequest.h"
#include "sending/RecipientText.h"
#include "sending/mUrlEncode.h"

#include <QTest>

using namespace GatewayRequest;

class TestGatewayRequest : public QObject
{
    Q_OBJECT

    static SendRequest baseRequest()
    {
        SendRequest r;
        r.Username = QStringLiteral("demo@quellbote.test");
        r.sessionPassword = QStringLiteral("demo");
        r.number = QStringLiteral("00491711234567");
        r.name = QStringLiteral("Max Muster");
        r.chkPrivat = 1;
        r.version = QStringLiteral("2.4.92");
        r.text = QStringLiteral("Hallo");
        r.txtSMS = r.text;
        r.productName = QStringLiteral("Quellbote");
        return r;
    }

private slots:
    void split_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("longSms");
        QTest::addColumn<QList<int>>("lengths");
        QTest::newRow("160 plain: one request") << QString(160, u'a') << false << QList<int> { 160 };
        QTest::newRow("161 plain: 160 and 1") << QString(161, u'a') << false << QList<int> { 160, 1 };
        QTest::newRow("160 with one euro: 159 and 1")
            << QString(159, u'a') + QStringLiteral("€") << false << QList<int> { 159, 1 };
        QTest::newRow("euro at the start")
            << QStringLiteral("€") + QString(159, u'a') << false << QList<int> { 159, 1 };
        QTest::newRow("empty text is one empty part") << QString() << false << QList<int> { 0 };
        QTest::newRow("long SMS: the gateway splits") << QString(400, u'a') << true << QList<int> { 400 };
        QTest::newRow("321 plain") << QString(321, u'a') << false << QList<int> { 160, 160, 1 };
    }

    void split()
    {
        QFETCH(QString, text);
        QFETCH(bool, longSms);
        QFETCH(QList<int>, lengths);
        MessageSize::SmsOptions options;
        options.isAbsenderkennung = longSms;
        options.isLongSmsEnabled = longSms;
        const QStringList parts = sendMessageParts(text, options);
        QList<int> got;
        for (const QString& p : parts)
            got.append(int(p.size()));
        QCOMPARE(got, lengths);
        QCOMPARE(parts.join(QString()), text);
    }

    void doubleCharsAndFit()
    {
        QCOMPARE(countDoubleChars(QStringLiteral("a€\"b\"")), qint16(3));
        QCOMPARE(fitPartLength(QString(159, u'a') + QStringLiteral("€")), qint16(159));
        QCOMPARE(fitPartLength(QString(200, u'"')), qint16(80));
    }

    void encodeText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("encoded");
        QTest::newRow("the worked example") << "100% & 1+1"
                                            << "100%25%20%26%201%2B1";
        QTest::newRow("an escape is not escaped again") << "%26"
                                                        << "%2526";
        QTest::newRow("umlauts and line breaks pass") << "Grüße\r\n€"
                                                      << "Grüße\r\n€";
    }

    void encodeText()
    {
        QFETCH(QString, text);
        QFETCH(QString, encoded);
        QCOMPARE(GatewayRequest::encodeText(text), encoded);
    }

    void body()
    {
        QCOMPARE(requestBody(baseRequest()),
                 QStringLiteral("email=demo@quellbote.test&kennwort=demo&firma=%20&empfaenger=00491711234567"
                                "&empfaengername=Max%20Muster&private=true&public=false&version=2.4.92&text=Hallo"
                                "&absenderkennung=false&absender=&statusmeldung=false&antwort=false"
                                "&einlieferung=false&referer=Quellbote&long=false"));
    }

    void bodyFields_data()
    {
        QTest::addColumn<int>("variant");
        QTest::addColumn<QString>("expected");
        QTest::newRow("cancelled password") << 0 << "&kennwort=&firma=%20&";
        QTest::newRow("grey private box is not ticked") << 1 << "&private=false&public=true&";
        QTest::newRow("MultiSMS sends no phonebook flags") << 2 << "&private=false&public=false&";
        QTest::newRow("ampersand in the sender goes raw") << 3 << "&absender=A&B&statusmeldung=";
        QTest::newRow("schedule fields before long") << 4
                                                     << "&term=2009-07-15%2009:05:00%20&cronjobstring=0&enddate=0"
                                                        "&long=false";
        QTest::newRow("series cron string") << 5 << "&cronjobstring=05%2009%20*%20*%20*&";
        QTest::newRow("long SMS with both options") << 6 << "&long=true";
        QTest::newRow("long SMS without sender identity") << 7 << "&long=false";
        QTest::newRow("160 with both options") << 8 << "&long=false";
        QTest::newRow("branded referer") << 9 << "&referer=Test%20Bote&";
    }

    void bodyFields()
    {
        QFETCH(int, variant);
        QFETCH(QString, expected);
        SendRequest r = baseRequest();
        switch (variant) {
        case 0:
            r.sessionPassword.clear();
            break;
        case 1:
            r.chkPrivat = 2;
            r.chkPublic = 1;
            break;
        case 2:
            r.isMultiSMSMode = true;
            r.chkPublic = 1;
            break;
        case 3:
            r.Absenderkennung = QStringLiteral("A&B");
            break;
        case 4:
            r.pendingCronjob
                = Schedule { QStringLiteral("2009-07-15 09:05:00 "), QStringLiteral("0"), QStringLiteral("0") };
            break;
        case 5:
            r.pendingCronjob = Schedule { QStringLiteral("2009-07-15 09:05:00"), QStringLiteral("05 09 * * *"),
                                          QStringLiteral("3") };
            break;
        case 6:
        case 7:
        case 8:
            r.options.isLongSmsEnabled = true;
            r.options.isAbsenderkennung = variant != 7;
            r.text = QString(variant == 8 ? 160 : 161, u'a');
            r.txtSMS = r.text;
            break;
        case 9:
            r.productName = QStringLiteral("Test Bote");
            break;
        }
        const QString body = requestBody(r);
        QVERIFY2(body.contains(expected) || body.endsWith(expected), qPrintable(body));
        QVERIFY(!body.contains(u' '));
    }

    void bodyBytesAreWindows1252()
    {
        SendRequest r = baseRequest();
        r.text = QStringLiteral("Grüße 10€");
        QVERIFY(requestBytes(r).contains("&text=Gr\xfc\xdf"
                                         "e%2010\x80&"));
    }

    void address()
    {
        QCOMPARE(requestUrl(false, QStringLiteral("send"), QStringLiteral("cron")), QStringLiteral("send"));
        QCOMPARE(requestUrl(true, QStringLiteral("send"), QStringLiteral("cron")), QStringLiteral("cron"));
    }

    void validateInput_data()
    {
        QTest::addColumn<bool>("multi");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("lines");
        QTest::newRow("valid") << false << "G171"
                               << "123"
                               << "x"
                               << "";
        QTest::newRow("everything missing") << false << ""
                                            << ""
                                            << ""
                                            << "  - Bitte wählen Sie eine Vorwahl aus.\r\n"
                                               "  - Bitte geben Sie eine Rufnummer an.\r\n"
                                               "  - Bitte geben Sie eine Nachricht ein.\r\n";
        QTest::newRow("number with letters") << false << "G171"
                                             << "12a"
                                             << "x"
                                             << "  - Die Rufnummer darf nur Ziffern enthalten.\r\n";
        QTest::newRow("MultiSMS checks the text only") << true << ""
                                                       << ""
                                                       << ""
                                                       << "  - Bitte geben Sie eine Nachricht ein.\r\n";
    }

    void validateInput()
    {
        QFETCH(bool, multi);
        QFETCH(QString, key);
        QFETCH(QString, number);
        QFETCH(QString, text);
        QFETCH(QString, lines);
        const InputCheck check = GatewayRequest::validateInput(multi, key, number, text);
        QCOMPARE(check.valid, lines.isEmpty());
        QCOMPARE(check.lines, lines);
        if (!lines.isEmpty()) {
            QCOMPARE(check.warningText, QStringLiteral("Bitte korrigieren Sie die rot markierten Felder."));
            QCOMPARE(check.messageText, check.warningText + QStringLiteral("\r\n\r\n") + lines);
        }
    }

    void handOffMessage_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("anzahl");
        QTest::addColumn<bool>("serverUsed");
        QTest::addColumn<QString>("single");
        QTest::addColumn<bool>("group");
        QTest::addColumn<QString>("text");
        QTest::newRow("first single SMS, account") << 0 << "1" << true << "True" << false
                                                   << "Die SMS wurde unter Berücksichtigung der angegebenen Kontodaten "
                                                      "an den Quellbote Server weitergeleitet.";
        QTest::newRow("second single SMS says nothing") << 1 << "1" << true << "True" << false << "";
        QTest::newRow("three parts after one") << 1 << "3" << true << "False" << true << "";
        QTest::newRow("count reaches the parts") << 2 << "3" << true << "False" << true
                                                 << "Die SMS wurde unter Berücksichtigung der angegebenen "
                                                    "Gruppendaten an den Quellbote Server weitergeleitet.";
        QTest::newRow("no account chosen")
            << 0 << "1" << true << "False" << false << "Sie müssen unter Optionen/Quellbote Server ein Konto auswählen";
        QTest::newRow("server not used") << 0 << "1" << false << "True" << false
                                         << "Das Verzeichnis des Quellbote Server fehlt. Wählen Sie ein Verzeichnis "
                                            "unter Optionen/Quellbote Server aus.";
    }

    void handOffMessage()
    {
        QFETCH(int, count);
        QFETCH(QString, anzahl);
        QFETCH(bool, serverUsed);
        QFETCH(QString, single);
        QFETCH(bool, group);
        QFETCH(QString, text);
        const HandOffMessage m = serverHandOffDone(qint16(count), anzahl, serverUsed, single, group);
        QCOMPARE(m.handOffCount, qint16(count + 1));
        QCOMPARE(m.show, !text.isEmpty());
        QCOMPARE(m.text, text);
    }

    void serverWriterChoice()
    {
        QCOMPARE(serverWriter(QStringLiteral("C:"), QStringLiteral("True"), true), ServerWriter::None);
        QCOMPARE(serverWriter(QStringLiteral("/srv"), QStringLiteral("True"), true), ServerWriter::SingleUser);
        QCOMPARE(serverWriter(QStringLiteral("/srv"), QStringLiteral("False"), true), ServerWriter::GroupUser);
        QCOMPARE(serverWriter(QStringLiteral("/srv"), QStringLiteral("False"), false), ServerWriter::None);
        QVERIFY(asksForSender(true, QString()));
        QVERIFY(!asksForSender(false, QString()));
    }

    void percentEncode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("plus");
        QTest::addColumn<QString>("encoded");
        QTest::newRow("letters and digits") << "Abc09" << false << "Abc09";
        QTest::newRow("blank as %20") << "a b" << false << "a%20b";
        QTest::newRow("blank as +") << "a b" << true << "a+b";
        QTest::newRow("umlaut as its Windows-1252 byte") << "Müller" << false << "M%FCller";
        QTest::newRow("euro sign") << "€" << false << "%80";
        QTest::newRow("a character outside the code page") << "aΩb" << false << "a%3Fb";
        QTest::newRow("signs padded to two digits") << "@.&\n" << false << "%40%2E%26%0A";
    }

    void percentEncode()
    {
        QFETCH(QString, text);
        QFETCH(bool, plus);
        QFETCH(QString, encoded);
        QCOMPARE(mUrlEncode::percentEncode(text, plus), encoded);
    }

    void rowTextAndNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("no placeholders") << "Hallo"
                                         << "Max"
                                         << "Hallo";
        QTest::newRow("all three") << "%name% %frei1% %frei2%"
                                   << "Max"
                                   << "Max eins zwei";
        QTest::newRow("a name holding a later placeholder") << "%name%"
                                                            << "A%frei2%"
                                                            << "Azwei";
        QTest::newRow("case-sensitive") << "%Name%"
                                        << "Max"
                                        << "%Name%";
    }

    void rowTextAndNumber()
    {
        QFETCH(QString, text);
        QFETCH(QString, name);
        QFETCH(QString, expected);
        QCOMPARE(RecipientText::rowText(text, name, QStringLiteral("eins"), QStringLiteral("zwei")), expected);
        QCOMPARE(RecipientText::rowNumber(QStringLiteral("01711234567")).value(), QStringLiteral("00491711234567"));
        QCOMPARE(RecipientText::rowNumber(QStringLiteral("0043664")).value(), QStringLiteral("0043664"));
        QVERIFY(!RecipientText::rowNumber(QString()).has_value());
    }
};

QTEST_GUILESS_MAIN(TestGatewayRequest)
#include "tst_gatewayrequest.moc"
