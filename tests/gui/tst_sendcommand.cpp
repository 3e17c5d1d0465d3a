// SPDX-License-Identifier: GPL-3.0-or-later
// quellbote-send against the service, beside the main window: the same input gives the same
// requests byte for byte, and a script can rely on what the command prints and returns.
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "TestStore.h"
#include "bulk/frmMultiSMS.h"
#include "sending/StopList.h"
#include "settings/ToolRegistry.h"
#include "settings/cOptionen.h"
#include "toolkit/Clock.h"
#include "toolkit/Codepage.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {
const QString SendPath = u"/smsv3/smsv3.php"_s;
const QString CronPath = u"/cronjob/send_repeat.php"_s;
const QByteArray Rows = "Anna;01711234567;Nord;;\r\nBen;00491721234567;Süd;Raum 5;\r\nCarla;00436641234567;Ost;;\r\n";
} // namespace

class TestSendCommand : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

    struct Run
    {
        int exit = -1;
        QStringList out;
        QString err;
    };

    // The command as a script starts it: installed beside an oem.inf that points it at the
    // service, with the test's store.
    Run command(const QStringList& arguments, const QByteArray& input = {})
    {
        const QString program = m_harness.folder() + u"/quellbote-send"_s;
        if (!QFile::exists(program))
            QFile::copy(qEnvironmentVariable("QUELLBOTE_SEND"), program);
        QProcess process;
        process.start(program, QStringList { u"--config"_s, ToolRegistry::storeFileName() } + arguments);
        process.write(input);
        process.closeWriteChannel();
        process.waitForFinished(60000);
        return { process.exitCode(),
                 QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts),
                 QString::fromUtf8(process.readAllStandardError()) };
    }

    QString writeList(const QByteArray& utf8Rows, const QString& name = u"liste.msms"_s)
    {
        const QString path = m_harness.folder() + u'/' + name;
        QFile file(path);
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            file.write(Codepage::toWindows1252(QString::fromUtf8(utf8Rows)));
        return path;
    }

    // What the window sends for the same input, each answer's box taken as it comes.
    void sendFromTheWindow(const QString& kind, const QString& text, int parts)
    {
        MessageBoxScript boxes;
        frmMain* main = m_harness.loadMain();
        if (kind == u"bulk") {
            m_harness.child<ToolbarButton>("tbMultiSMS")->click();
            QVERIFY(frmMultiSMS::loaded()->table().load(writeList(Rows)));
            frmMultiSMS::loaded()->recalcMaxSizes();
            m_harness.child<SmsTextEdit>("txtSMS")->setText(text);
            boxes.answer(MessageBox::Answer::Yes);
            main->tbSend_Click();
            return;
        }
        m_harness.fill(u"G171"_s, u"1234567"_s, text);
        // The note after the first hand-off comes by the count of hand-offs, as the answers' boxes.
        for (int i = 0; i < parts; ++i)
            boxes.answer(MessageBox::Answer::Ok);
        if (kind == u"scheduled") {
            onNextModal([](QWidget* dialog) { in<QPushButton>(dialog, "cbSend")->click(); });
            main->tbTerminversand_Click();
        } else {
            main->tbSend_Click();
        }
        QTRY_COMPARE(boxes.count(), parts);
    }

private slots:
    void init()
    {
        m_harness.resetStore();
        QVERIFY(m_harness.startService());
    }

    void cleanup()
    {
        m_harness.reset();
        Clock::setNow({});
    }

    // The job files of the folder, by their contents.
    static QStringList jobFiles(const QString& folder)
    {
        QStringList contents;
        for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files)) {
            QFile f(file.filePath());
            if (f.open(QIODevice::ReadOnly))
                contents.append(QString::fromLatin1(f.readAll()));
        }
        contents.sort();
        return contents;
    }

    void sameRequestsAsTheWindow_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("requests");
        QTest::newRow("single") << u"single"_s << u"Grüße & 100% Erfolg+"_s
                                << QStringList { u"0171 1234567"_s, u"Grüße & 100% Erfolg+"_s } << 1;
        const QString longText = u"Sehr geehrte Damen und Herren, "_s + QString(130, u'x') + u"€ \"Ende\""_s;
        QTest::newRow("long text cut into parts")
            << u"single"_s << longText << QStringList { u"+49 171 1234567"_s, longText } << 2;
        const QString placeholders = u"Hallo %name% aus %frei1%, %frei2%"_s;
        QTest::newRow("a run of three rows")
            << u"bulk"_s << placeholders << QStringList { u"--file"_s, u"LIST"_s, placeholders } << 3;
        QTest::newRow("scheduled") << u"scheduled"_s << u"Termin"_s
                                   << QStringList { u"--at"_s, u"2030-01-02 09:05"_s, u"01711234567"_s, u"Termin"_s }
                                   << 1;
        QTest::newRow("handed to the server folder")
            << u"handoff"_s << u"Übergabe & <Test>"_s << QStringList { u"0171 1234567"_s, u"Übergabe & <Test>"_s } << 1;
    }

    void sameRequestsAsTheWindow()
    {
        QFETCH(QString, kind);
        QFETCH(QString, text);
        QFETCH(QStringList, arguments);
        QFETCH(int, requests);
        // The dialog proposes the next five minutes after now.
        Clock::setNow(QDateTime(QDate(2030, 1, 2), QTime(9, 2)));
        const QString path = kind == u"scheduled" ? CronPath : SendPath;
        QTemporaryDir server;
        if (kind == u"handoff") {
            Options().setXmlIsServerUsed(true);
            Options().setXmlSingleUser(u"True"_s);
            Options().setXmlUser(u"U1"_s);
            Options().setXmlPfad(server.path());
            Options().save();
        }
        sendFromTheWindow(kind == u"handoff" ? u"single"_s : kind, text, requests);
        if (kind == u"handoff") {
            const QStringList fromWindow = jobFiles(server.path());
            QCOMPARE(fromWindow.size(), requests);
            for (const QString& file : QDir(server.path()).entryList(QDir::Files))
                QFile::remove(server.filePath(file));
            const Run run = command(arguments);
            QCOMPARE(run.exit, 0);
            QCOMPARE(jobFiles(server.path()), fromWindow);
            QVERIFY(m_harness.bodies(SendPath).isEmpty());
            return;
        }
        QTRY_COMPARE(m_harness.bodies(path).size(), requests);
        const QStringList fromWindow = m_harness.bodies(path);

        arguments.replaceInStrings(u"LIST"_s, writeList(Rows));
        const Run run = command(arguments);
        QCOMPARE(run.exit, 0);
        QCOMPARE(run.out.size(), requests);
        QCOMPARE(m_harness.bodies(path).mid(requests), fromWindow);
    }

    void whatAScriptCanRelyOn_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("setup"); // what differs from a plain account at a working service
        QTest::addColumn<int>("exit");
        QTest::addColumn<int>("lines"); // on standard output
        QTest::addColumn<QString>("error"); // part of standard error
        QTest::addColumn<int>("posted");
        QTest::addColumn<QString>("output"); // part of standard output
        QTest::addColumn<QString>("body"); // part of the first request's body
        const QByteArray none;
        QTest::newRow("three rows")
            << QStringList { u"--file"_s, u"Anna;01711234567;;;\r\nBen;01721234567;;;\r\nCarla;0043664123;;;\r\n"_s,
                             u"Hallo %name%"_s }
            << none << QString() << 0 << 3 << QString() << 3 << QString() << QString();
        QTest::newRow("a refused row")
            << QStringList { u"--file"_s, u"Anna;01711234567;;;\r\nKaputt;0049171x;;;\r\nBen;01721234567;;;\r\n"_s,
                             u"Hallo"_s }
            << none << QString() << 1 << 3 << QString() << 3 << QString() << QString();
        QTest::newRow("one JSON line per SMS")
            << QStringList { u"--json"_s, u"--file"_s, u"Anna;01711234567;;;\r\nKaputt;0049171x;;;\r\n"_s, u"Hallo"_s }
            << none << QString() << 1 << 2 << QString() << 2
            << u"\"credits\":0,\"name\":\"Kaputt\",\"number\":\"0049171x\",\"parts\":1,\"row\":2,\"state\":\"refused\"}"_s
            << QString();
        // A row without a number makes the file no list: nothing of it goes.
        QTest::newRow("a row without a number")
            << QStringList { u"--file"_s, u"Anna;01711234567;;;\r\nLeer;;;;\r\nBen;01721234567;;;\r\n"_s, u"Hallo"_s }
            << none << QString() << 3 << 0 << u"ist keine MultiSMS-Datei"_s << 0 << QString() << QString();
        QTest::newRow("the service stopped")
            << QStringList { u"0171 1234567"_s, u"Hallo"_s } << none << u"service"_s << 2 << 0
            << u"Keine Verbindung zum Server"_s << 0 << QString() << QString();
        // The request left, and no answer came: it may have been billed, a script must not send
        // it blindly again.
        QTest::newRow("no answer came") << QStringList { u"--json"_s, u"0171 1234567"_s, u"Hallo"_s } << none
                                        << u"drop"_s << 4 << 1 << u"möglicherweise trotzdem versendet"_s << 1
                                        << u"\"state\":\"unknown\""_s << QString();
        QTest::newRow("too few Credits for the server folder")
            << QStringList { u"0171 1234567"_s, u"Hallo"_s } << none << u"poor hand-off"_s << 1 << 0
            << u"Sie verfügen nicht mehr über ein ausreichendes Guthaben um diese Nachricht zu verschicken."_s << 0
            << QString() << QString();
        QTest::newRow("a bad number") << QStringList { u"0171 12x4567"_s, u"Hallo"_s } << none << QString() << 3 << 0
                                      << u"Die Rufnummer darf nur Ziffern enthalten."_s << 0 << QString() << QString();
        QTest::newRow("sender and reply")
            << QStringList { u"--sender"_s, u"Leitstand"_s, u"--reply"_s, u"0171 1"_s } << none << QString() << 3 << 0
            << u"schließen sich aus"_s << 0 << QString() << QString();
        QTest::newRow("password and text from standard input")
            << QStringList { u"0171 1234567"_s } << QByteArray("demo\nZeile eins\nZeile zwei\n") << u"password"_s << 0
            << 1 << QString() << 1 << QString() << u"&kennwort=demo&"_s;
        QTest::newRow("text with line breaks")
            << QStringList { u"0171 1234567"_s } << QByteArray("demo\nZeile eins\nZeile zwei\n") << u"password"_s << 0
            << 1 << QString() << 1 << QString() << u"&text=Zeile%20eins\r\nZeile"_s;
        QTest::newRow("no password at all") << QStringList { u"0171 1234567"_s, u"Hallo"_s } << none << u"password"_s
                                            << 3 << 0 << u"kein Kennwort"_s << 0 << QString() << QString();
        QTest::newRow("dry run") << QStringList { u"--dry-run"_s, u"0171 1234567"_s, u"Hallo"_s } << none << QString()
                                 << 0 << 5 << QString() << 0 << u"&kennwort=********&"_s << QString();
        // The gateway takes Windows-1252: what it lacks would arrive as "?".
        QTest::newRow("characters that can't go out")
            << QStringList { u"0171 1234567"_s, u"Grüße aus Łódź 😀"_s } << none << QString() << 3 << 0
            << u"kommen jeweils als „?“ an: Ł, ź, 😀"_s << 0 << QString() << QString();
        QTest::newRow("characters replaced")
            << QStringList { u"--dry-run"_s, u"--transliterate"_s, u"0171 1234567"_s, u"Grüße aus Łódź 😀"_s } << none
            << QString() << 0 << 5 << QString() << 0 << u"  Text: Grüße aus Lódz \n"_s << QString();
        QTest::newRow("balance") << QStringList { u"--balance"_s } << none << QString() << 0 << 1 << QString() << 0
                                 << u"500"_s << QString();
        // A list from a spreadsheet: what it can't send to is told by its row in the file.
        const QString csv = u"Name;Handy\r\nAnna;0171 1234567\r\nBen;+49 172 1234567\r\nWeiß;4,91711E+11\r\n"_s;
        QTest::newRow("a CSV list") << QStringList { u"--file"_s, csv, u"Hallo %name%"_s } << none << u"csv"_s << 0 << 3
                                    << QString() << 2 << u"Zeile 4 (Weiß): nicht versendet"_s
                                    << u"empfaenger=00491711234567"_s;
        QTest::newRow("a CSV list, dry run as JSON")
            << QStringList { u"--dry-run"_s, u"--json"_s, u"--file"_s, csv, u"Hallo"_s } << none << u"csv"_s << 0 << 3
            << QString() << 0
            << u"{\"fileRow\":3,\"name\":\"Ben\",\"number\":\"00491721234567\",\"row\":2}\n{\"fileRow\":4,\"name\":"
               u"\"Weiß\","
               "\"number\":\"4,91711E+11\",\"reason\":\"Die Rufnummer"_s
            << QString();
        QTest::newRow("a CSV file that is no list")
            << QStringList { u"--file"_s, u"Name;Handy\r\n\"Anna;0171 1234567\r\n"_s, u"Hallo"_s } << none << u"csv"_s
            << 3 << 0 << u"kann nicht als Liste gelesen werden: In Zeile 2"_s << 0 << QString() << QString();
        // Ben's number is on the stop list, written another way: his row is left out, the run goes on.
        const QString three = u"Anna;01711234567;;;\r\nBen;01721234567;;;\r\nCarla;0043664123;;;\r\n"_s;
        QTest::newRow("a row on the stop list")
            << QStringList { u"--file"_s, three, u"Hallo"_s } << none << u"stop list"_s << 0 << 3 << QString() << 2
            << u"Gesperrt: keine SMS an Ben (00491721234567), die Nummer steht auf der Sperrliste"_s
            << u"empfaenger=00491711234567"_s;
        QTest::newRow("a row on the stop list as JSON")
            << QStringList { u"--json"_s, u"--file"_s, three, u"Hallo"_s } << none << u"stop list"_s << 0 << 3
            << QString() << 2
            << u"\"credits\":0,\"name\":\"Ben\",\"number\":\"00491721234567\",\"parts\":0,\"reason\":\"Die Nummer "
               "steht auf der Sperrliste.\",\"row\":2,\"state\":\"skipped\"}"_s
            << QString();
        QTest::newRow("a row on the stop list, dry run as JSON")
            << QStringList { u"--dry-run"_s, u"--json"_s, u"--file"_s, three, u"Hallo"_s } << none << u"stop list"_s
            << 0 << 3 << QString() << 0
            << u"\"row\":1}\n{\"answer\":\"Die Nummer steht auf der Sperrliste.\",\"credits\":0,\"name\":\"Ben\","
               "\"number\":\"00491721234567\",\"parts\":0,\"reason\":\"Die Nummer steht auf der Sperrliste.\","
               "\"row\":2,\"state\":\"skipped\"}\n{\"name\":\"Carla\""_s
            << QString();
        QTest::newRow("a message to a stopped number")
            << QStringList { u"+49 172 1234567"_s, u"Hallo"_s } << none << u"stop list"_s << 1 << 1 << QString() << 0
            << u"Gesperrt: keine SMS an 00491721234567, die Nummer steht auf der Sperrliste"_s << QString();
        QTest::newRow("the shared stop list can't be read")
            << QStringList { u"0171 1234567"_s, u"Hallo"_s } << none << u"shared stop list missing"_s << 3 << 0
            << u"Sperrliste genannt) gibt es nicht.\nEs wird keine SMS versendet"_s << 0 << QString() << QString();
        // Two SMS sent before, the second with --no-record.
        QTest::newRow("the record finds what went out")
            << QStringList { u"--sent"_s, u"TERMIN"_s } << none << u"record"_s << 0 << 1 << QString() << 2
            << u"00491711234567  versendet  Termin am Dienstag"_s << QString();
        QTest::newRow("the record as JSON")
            << QStringList { u"--json"_s, u"--sent"_s, u"1711234"_s } << none << u"record"_s << 0 << 1 << QString() << 2
            << u"\"credits\":10,\"name\":\"\",\"number\":\"00491711234567\",\"parts\":1,\"road\":\"command\",\"state\":"
               u"\"sent\","
               "\"text\":\"Termin am Dienstag\",\"time\":\""_s
            << QString();
        QTest::newRow("--no-record leaves nothing behind")
            << QStringList { u"--sent"_s, u"Mittwoch"_s } << none << u"record"_s << 0 << 0 << QString() << 2
            << QString() << QString();
    }

    void whatAScriptCanRelyOn()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, input);
        QFETCH(QString, setup);
        QFETCH(int, exit);
        QFETCH(int, lines);
        QFETCH(QString, error);
        QFETCH(int, posted);
        QFETCH(QString, output);
        QFETCH(QString, body);
        if (setup == u"password")
            m_harness.resetStore(false);
        if (const qsizetype file = arguments.indexOf(u"--file"_s); file >= 0)
            arguments[file + 1]
                = writeList(arguments.at(file + 1).toUtf8(), setup == u"csv" ? u"liste.csv"_s : u"liste.msms"_s);
        QTemporaryDir server;
        if (setup == u"poor hand-off") {
            QFile accounts(m_harness.folder() + u"/accounts.json"_s);
            QVERIFY(accounts.open(QIODevice::WriteOnly));
            accounts.write(R"({"accounts": [{"email": "demo@quellbote.test", "password": "demo", "credits": 5}]})");
            accounts.close();
            QVERIFY(m_harness.startService({ u"--accounts"_s, accounts.fileName() }));
            Options().setXmlIsServerUsed(true);
            Options().setXmlSingleUser(u"True"_s);
            Options().setXmlUser(u"U1"_s);
            Options().setXmlPfad(server.path());
            Options().save();
        }
        if (setup == u"drop")
            QVERIFY(m_harness.service()->setFault(SendPath, u"drop"_s));
        if (setup == u"stop list")
            QVERIFY(StopList::saveUserEntries({ u"0172 1234567"_s }));
        if (setup == u"shared stop list missing") {
            QFile oem(m_harness.folder() + u"/oem.inf"_s);
            QVERIFY(oem.open(QIODevice::Append));
            oem.write("[Files]\r\nSperrliste=fehlt.txt\r\n");
        }
        if (setup == u"service")
            m_harness.service()->stop();
        if (setup == u"record") {
            QFile::remove(QFileInfo(ToolRegistry::storeFileName()).dir().filePath(u"sendrecord.sqlite"_s));
            QCOMPARE(command({ u"0171 1234567"_s, u"Termin am Dienstag"_s }).exit, 0);
            QCOMPARE(command({ u"--no-record"_s, u"0172 7654321"_s, u"Termin am Mittwoch"_s }).exit, 0);
        }
        const Run run = command(arguments, input);
        QVERIFY2(run.err.contains(error), qPrintable(run.err));
        QCOMPARE(run.out.size(), lines);
        QVERIFY2(run.out.join(u'\n').contains(output), qPrintable(run.out.join(u'\n')));
        QCOMPARE(run.exit, exit);
        QVERIFY(QDir(server.path()).isEmpty());
        if (setup == u"service")
            return;
        const QStringList bodies = m_harness.bodies(SendPath);
        QCOMPARE(bodies.size(), posted);
        if (!body.isEmpty())
            QVERIFY2(bodies.at(0).contains(body), qPrintable(bodies.at(0)));
    }

    // A run ended by a kill goes on with exactly the rows that did not go out; the row whose
    // request was on its way is sent again only when asked for.
    void killedRunGoesOnWithTheRowsLeft()
    {
        QByteArray rows;
        for (int i = 1; i <= 6; ++i)
            rows += "Empfänger " + QByteArray::number(i) + ";0171100000" + QByteArray::number(i) + ";;;\r\n";
        const QString list = writeList(rows);
        QVERIFY(m_harness.service()->setFault(SendPath, u"slow:300"_s));
        const QString program = m_harness.folder() + u"/quellbote-send"_s;
        QFile::copy(qEnvironmentVariable("QUELLBOTE_SEND"), program);
        QProcess process;
        process.start(program, { u"--config"_s, ToolRegistry::storeFileName(), u"--file"_s, list, u"Hallo"_s });
        // Killed while the third row's request waits for its answer.
        QTRY_COMPARE_WITH_TIMEOUT(m_harness.bodies(SendPath).size(), 3, 20000);
        process.kill();
        process.waitForFinished();
        QVERIFY(m_harness.service()->setFault(SendPath, u"none"_s));

        const QStringList numbers = { u"00491711000001"_s, u"00491711000002"_s, u"00491711000003"_s,
                                      u"00491711000004"_s, u"00491711000005"_s, u"00491711000006"_s };
        const auto sentTo = [this] {
            QStringList to;
            for (const QString& body : m_harness.bodies(SendPath))
                to.append(QUrlQuery(body).queryItemValue(u"empfaenger"_s));
            return to;
        };
        Run run = command({ u"--json"_s, u"--resume"_s, u"--file"_s, list, u"Hallo"_s });
        QCOMPARE(run.exit, 4);
        QCOMPARE(sentTo(), numbers.mid(0, 3) + numbers.mid(3));
        QCOMPARE(run.out.size(), 6);
        QVERIFY(run.out.at(2).contains(u"\"state\":\"unknown\""_s));

        run = command({ u"--resume"_s, u"--resend-unknown"_s, u"--file"_s, list, u"Hallo"_s });
        QCOMPARE(run.exit, 0);
        QCOMPARE(sentTo(), numbers + QStringList { numbers.at(2) });
        // Every row went out: the list's next run is a run of its own again.
        run = command({ u"--resume"_s, u"--file"_s, list, u"Hallo"_s });
        QCOMPARE(sentTo().size(), 13);
    }
};

QTEST_MAIN(TestSendCommand)
#include "tst_sendcommand.moc"
