// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/GatewayAnswer.h"
#include "sending/GatewayRequest.h"
#include "sending/RecipientText.h"
#include "sending/mUrlEncode.h"

#include <QTest>

#include <functional>

using namespace GatewayAnswer;
using namespace GatewayRequest;
using namespace Qt::StringLiterals;

using Tweak = std::function<void(SendRequest&)>;
Q_DECLARE_METATYPE(Tweak)

// What goes to the gateway and what comes back.
class TestGateway : public QObject
{
    Q_OBJECT

    static SendRequest baseRequest()
    {
        SendRequest r;
        r.Username = u"demo@quellbote.test"_s;
        r.sessionPassword = u"demo"_s;
        r.number = u"00491711234567"_s;
        r.name = u"Max Muster"_s;
        r.chkPrivat = 1;
        r.version = u"2.4.92"_s;
        r.text = r.txtSMS = u"Hallo"_s;
        r.productName = u"Quellbote"_s;
        return r;
    }

    static void longText(SendRequest& r, int size, bool absender)
    {
        r.options.isLongSmsEnabled = true;
        r.options.isAbsenderkennung = absender;
        r.text = r.txtSMS = QString(size, u'a');
    }

private slots:
    void split_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("longSms");
        QTest::addColumn<QList<int>>("lengths");
        const QString a159(159, u'a');
        QTest::newRow("160 plain: one request") << QString(160, u'a') << false << QList<int> { 160 };
        QTest::newRow("161 plain: 160 and 1") << QString(161, u'a') << false << QList<int> { 160, 1 };
        QTest::newRow("160 with one euro: 159 and 1") << a159 + u"€"_s << false << QList<int> { 159, 1 };
        QTest::newRow("double quotes count twice") << QString(200, u'"') << false << QList<int> { 80, 80, 40 };
        QTest::newRow("empty text is one empty part") << QString() << false << QList<int> { 0 };
        QTest::newRow("long SMS: the gateway splits") << QString(400, u'a') << true << QList<int> { 400 };
        // Lengths in UTF-16 units: an emoji is two of them and one character on the wire.
        QTest::newRow("160 emoji: one request") << u"😀"_s.repeated(160) << false << QList<int> { 320 };
        QTest::newRow("an emoji on the boundary stays whole") << a159 + u"😀b"_s << false << QList<int> { 161, 1 };
        QTest::newRow("an emoji after a euro goes to the next part")
            << QString(158, u'a') + u"€😀"_s << false << QList<int> { 159, 2 };
    }

    void split()
    {
        QFETCH(QString, text);
        QFETCH(bool, longSms);
        QFETCH(QList<int>, lengths);
        MessageSize::SmsOptions options;
        options.isAbsenderkennung = options.isLongSmsEnabled = longSms;
        const QStringList parts = sendMessageParts(text, options);
        QList<int> got;
        for (const QString& p : parts)
            got.append(int(p.size()));
        QCOMPARE(got, lengths);
        QCOMPARE(parts.join(QString()), text);
    }

    // A whole body, on the wire in Windows-1252.
    void body()
    {
        SendRequest r = baseRequest();
        r.text = u"Grüße 10€"_s;
        QCOMPARE(requestBytes(r),
                 QByteArray("email=demo@quellbote.test&kennwort=demo&firma=%20&empfaenger=00491711234567"
                            "&empfaengername=Max%20Muster&private=true&public=false&version=2.4.92&text=Gr\xfc\xdf"
                            "e%2010\x80&absenderkennung=false&absender=&statusmeldung=false&antwort=false"
                            "&einlieferung=false&referer=Quellbote&long=false"));
    }

    void bodyFields_data()
    {
        QTest::addColumn<Tweak>("tweak");
        QTest::addColumn<QString>("expected");
        QTest::newRow("grey private box is not ticked")
            << Tweak([](SendRequest& r) { r.chkPrivat = 2, r.chkPublic = 1; }) << u"&private=false&public=true&"_s;
        QTest::newRow("MultiSMS sends no phonebook flags")
            << Tweak([](SendRequest& r) { r.isMultiSMSMode = true, r.chkPublic = 1; })
            << u"&private=false&public=false&"_s;
        QTest::newRow("ampersand in the sender goes raw")
            << Tweak([](SendRequest& r) { r.Absenderkennung = u"A&B"_s; }) << u"&absender=A&B&statusmeldung="_s;
        QTest::newRow("schedule fields before long") << Tweak([](SendRequest& r) {
            r.pendingCronjob = Schedule { u"2009-07-15 09:05:00 "_s, u"0"_s, u"0"_s };
        }) << u"&term=2009-07-15%2009:05:00%20&cronjobstring=0&enddate=0&long=false"_s;
        QTest::newRow("long SMS with both options")
            << Tweak([](SendRequest& r) { longText(r, 161, true); }) << u"&long=true"_s;
        QTest::newRow("long SMS without sender identity")
            << Tweak([](SendRequest& r) { longText(r, 161, false); }) << u"&long=false"_s;
        QTest::newRow("160 with both options")
            << Tweak([](SendRequest& r) { longText(r, 160, true); }) << u"&long=false"_s;
        QTest::newRow("80 emoji and 80 letters are 160 on the wire") << Tweak([](SendRequest& r) {
            longText(r, 80, true);
            r.text = r.txtSMS = r.text + u"😀"_s.repeated(80);
        }) << u"&long=false"_s;
        QTest::newRow("text escapes") << Tweak([](SendRequest& r) { r.text = u"100% & 1+1"_s; })
                                      << u"&text=100%25%20%26%201%2B1&"_s;
        QTest::newRow("umlauts and line breaks pass")
            << Tweak([](SendRequest& r) { r.text = u"Grüße\r\n€"_s; }) << u"&text=Grüße\r\n€&"_s;
        QTest::newRow("branded referer") << Tweak([](SendRequest& r) { r.productName = u"Test Bote"_s; })
                                         << u"&referer=Test%20Bote&"_s;
    }

    void bodyFields()
    {
        QFETCH(Tweak, tweak);
        QFETCH(QString, expected);
        SendRequest r = baseRequest();
        tweak(r);
        const QString body = requestBody(r);
        QVERIFY2(body.contains(expected), qPrintable(body));
        QVERIFY(!body.contains(u' '));
    }

    void validateInput_data()
    {
        QTest::addColumn<bool>("multi");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("lines");
        QTest::newRow("valid") << false << u"G171"_s << u"123"_s << u"x"_s << QString();
        QTest::newRow("number with letters")
            << false << u"G171"_s << u"12a"_s << u"x"_s << u"  - Die Rufnummer darf nur Ziffern enthalten.\r\n"_s;
        QTest::newRow("MultiSMS checks the text only")
            << true << QString() << QString() << QString() << u"  - Bitte geben Sie eine Nachricht ein.\r\n"_s;
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
            QCOMPARE(check.warningText, u"Bitte korrigieren Sie die rot markierten Felder."_s);
            QCOMPARE(check.messageText, check.warningText + u"\r\n\r\n"_s + lines);
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
        QTest::newRow("first single SMS, account")
            << 0 << u"1"_s << true << u"True"_s << false
            << u"Die SMS wurde unter Berücksichtigung der angegebenen Kontodaten "
               "an den Quellbote Server weitergeleitet."_s;
        QTest::newRow("second single SMS says nothing") << 1 << u"1"_s << true << u"True"_s << false << QString();
        QTest::newRow("count reaches the parts") << 2 << u"3"_s << true << u"False"_s << true
                                                 << u"Die SMS wurde unter Berücksichtigung der angegebenen "
                                                    "Gruppendaten an den Quellbote Server weitergeleitet."_s;
        QTest::newRow("no account chosen") << 0 << u"1"_s << true << u"False"_s << false
                                           << u"Sie müssen unter Optionen/Quellbote Server ein Konto auswählen"_s;
        QTest::newRow("server not used") << 0 << u"1"_s << false << u"True"_s << false
                                         << u"Das Verzeichnis des Quellbote Server fehlt. Wählen Sie ein Verzeichnis "
                                            "unter Optionen/Quellbote Server aus."_s;
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
        QCOMPARE(serverWriter(u"C:"_s, u"True"_s, true), ServerWriter::None);
        QCOMPARE(serverWriter(u"/srv"_s, u"True"_s, true), ServerWriter::SingleUser);
        QCOMPARE(serverWriter(u"/srv"_s, u"False"_s, true), ServerWriter::GroupUser);
        QCOMPARE(serverWriter(u"/srv"_s, u"False"_s, false), ServerWriter::None);
    }

    // Blanks as %20 and umlauts as their Windows-1252 bytes are checked with the account addresses.
    void percentEncode()
    {
        QCOMPARE(mUrlEncode::percentEncode(u"€"_s, false), u"%80"_s);
        QCOMPARE(mUrlEncode::percentEncode(u"aΩb"_s, false), u"a%3Fb"_s); // outside the code page
        QCOMPARE(mUrlEncode::percentEncode(u"\n"_s, false), u"%0A"_s); // padded to two digits
    }

    void recipientText()
    {
        // The placeholders are case-sensitive.
        QCOMPARE(RecipientText::rowText(u"%Name% %name%"_s, u"Max"_s, QString(), QString()), u"%Name% Max"_s);
        QVERIFY(!RecipientText::rowNumber(QString()).has_value());
    }

    void answers_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("accepted") << u"Die SMS wurde erfolgreich an das Gateway übermittelt.;Kosten 10"_s
                                  << u"Die SMS wurde erfolgreich an das Gateway übermittelt.\r\nKosten 10\r\n"_s
                                  << true;
        QTest::newRow("trailing ; gives an empty last line")
            << u"Auftrag 1;Der Auftrag wurde angelegt.;"_s << u"Auftrag 1\r\nDer Auftrag wurde angelegt.\r\n\r\n"_s
            << true;
        QTest::newRow("capitals count") << u"DER AUFTRAG WURDE ANGELEGT."_s << u"DER AUFTRAG WURDE ANGELEGT.\r\n"_s
                                        << true;
        QTest::newRow("empty body") << QString() << u"\r\n"_s << false;
        QTest::newRow("blanks and line feeds go") << u"  a\nb ;\r\nc"_s << u"ab\r\n\rc\r\n"_s << false;
        QTest::newRow("phrase without its full stop") << u"wurde angelegt"_s << u"wurde angelegt\r\n"_s << false;
    }

    void answers()
    {
        QFETCH(QString, body);
        QFETCH(QString, message);
        QFETCH(bool, accepted);
        const Answer answer = readAnswer(body);
        QCOMPARE(answer.message, message);
        QCOMPARE(answer.accepted, accepted);
    }

    void balance_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("credits");
        QTest::addColumn<bool>("low"); // dark red, and the link to buy credits shows
        QTest::newRow("500 with blanks is still low") << u" 500 "_s << u"500 Credits"_s << 500 << true;
        QTest::newRow("501") << u"501"_s << u"501 Credits"_s << 501 << false;
        QTest::newRow("not a number") << u"12a"_s << u"kein Internet"_s << -1 << false;
    }

    void balance()
    {
        QFETCH(QString, answer);
        QFETCH(QString, caption);
        QFETCH(int, credits);
        QFETCH(bool, low);
        const CreditsState state = readBalance(answer);
        QCOMPARE(state.caption, caption);
        QCOMPARE(state.credits, credits);
        QVERIFY(state.enabled);
        QCOMPARE(state.colour == CreditsColour::DarkRed, low);
        QCOMPARE(state.buyCreditsVisible, low);
    }

    void versionAnswers()
    {
        QCOMPARE(readVersionAnswer(u"2.4.93"_s, versionNumber(2, 4, 92)), VersionCheck::UpdateShown);
        QCOMPARE(readVersionAnswer(u"2.4.92"_s, versionNumber(2, 4, 92)), VersionCheck::UpdateHidden);
        QCOMPARE(readVersionAnswer(QString(), versionNumber(2, 4, 92)), VersionCheck::NoAnswer);
        QCOMPARE(readVersionAnswer(u"2.4.92.7"_s, versionNumber(2, 4, 92)), VersionCheck::UpdateHidden);
        QCOMPARE(readVersionAnswer(u"2.x.1"_s, versionNumber(2, 4, 92)), VersionCheck::Failure);
        QCOMPARE(readVersionAnswer(u"2.4.100"_s, versionNumber(2, 5, 0)), VersionCheck::UpdateHidden);
    }
};

QTEST_GUILESS_MAIN(TestGateway)
#include "tst_gateway.moc"
