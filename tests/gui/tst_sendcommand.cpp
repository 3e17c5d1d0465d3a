// SPDX-License-Identifier: GPL-3.0-or-later
// quellbote-send against the service, beside the main window: the same input gives the same
// requests byte for byte, and a script can rely on what the command prints and returns.
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "TestStore.h"
#include "bulk/frmMultiSMS.h"
#include "settings/ToolRegistry.h"
#include "toolkit/Clock.h"
#include "toolkit/Codepage.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString SendPath = u"/smsv3/smsv3.php"_s;
const QString CronPath = u"/cronjob/send_repeat.php"_s;
const QByteArray Rows = "Anna;01711234567;Nord;;\r\nBen;00491721234567;Süd;Raum 5;\r\n";
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

    QString writeList(const QByteArray& utf8Rows)
    {
        const QString path = m_harness.folder() + u"/liste.msms"_s;
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
        QTest::newRow("placeholders") << u"bulk"_s << placeholders
                                      << QStringList { u"--file"_s, u"LIST"_s, placeholders } << 2;
        QTest::newRow("scheduled") << u"scheduled"_s << u"Termin"_s
                                   << QStringList { u"--at"_s, u"2030-01-02 09:05"_s, u"01711234567"_s, u"Termin"_s }
                                   << 1;
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
        sendFromTheWindow(kind, text, requests);
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
        QTest::addColumn<QString>("without"); // the stored "password", the "service"
        QTest::addColumn<int>("exit");
        QTest::addColumn<int>("lines"); // on standard output
        QTest::addColumn<QString>("error"); // part of standard error
        QTest::addColumn<int>("posted");
        const QByteArray none;
        QTest::newRow("three rows")
            << QStringList { u"--file"_s, u"Anna;01711234567;;;\r\nBen;01721234567;;;\r\nCarla;0043664123;;;\r\n"_s,
                             u"Hallo %name%"_s }
            << none << QString() << 0 << 3 << QString() << 3;
        QTest::newRow("a refused row")
            << QStringList { u"--file"_s, u"Anna;01711234567;;;\r\nKaputt;0049171x;;;\r\nBen;01721234567;;;\r\n"_s,
                             u"Hallo"_s }
            << none << QString() << 1 << 3 << QString() << 3;
        // A row without a number makes the file no list: nothing of it goes.
        QTest::newRow("a row without a number")
            << QStringList { u"--file"_s, u"Anna;01711234567;;;\r\nLeer;;;;\r\nBen;01721234567;;;\r\n"_s, u"Hallo"_s }
            << none << QString() << 3 << 0 << u"ist keine MultiSMS-Datei"_s << 0;
        QTest::newRow("the service stopped") << QStringList { u"0171 1234567"_s, u"Hallo"_s } << none << u"service"_s
                                             << 2 << 0 << u"Keine Verbindung zum Server"_s << 0;
        QTest::newRow("a bad number") << QStringList { u"0171 12x4567"_s, u"Hallo"_s } << none << QString() << 3 << 0
                                      << u"Die Rufnummer darf nur Ziffern enthalten."_s << 0;
        QTest::newRow("sender and reply") << QStringList { u"--sender"_s, u"Leitstand"_s, u"--reply"_s, u"0171 1"_s }
                                          << none << QString() << 3 << 0 << u"schließen sich aus"_s << 0;
        QTest::newRow("password and text from standard input")
            << QStringList { u"0171 1234567"_s } << QByteArray("demo\nZeile eins\nZeile zwei\n") << u"password"_s << 0
            << 1 << QString() << 1;
        QTest::newRow("no password at all") << QStringList { u"0171 1234567"_s, u"Hallo"_s } << none << u"password"_s
                                            << 3 << 0 << u"kein Kennwort"_s << 0;
        QTest::newRow("dry run") << QStringList { u"--dry-run"_s, u"0171 1234567"_s, u"Hallo"_s } << none << QString()
                                 << 0 << 4 << QString() << 0;
        QTest::newRow("balance") << QStringList { u"--balance"_s } << none << QString() << 0 << 1 << QString() << 0;
    }

    void whatAScriptCanRelyOn()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, input);
        QFETCH(QString, without);
        QFETCH(int, exit);
        QFETCH(int, lines);
        QFETCH(QString, error);
        QFETCH(int, posted);
        if (without == u"password")
            m_harness.resetStore(false);
        if (const qsizetype file = arguments.indexOf(u"--file"_s); file >= 0)
            arguments[file + 1] = writeList(arguments.at(file + 1).toUtf8());
        if (without == u"service")
            m_harness.service()->stop();
        const Run run = command(arguments, input);
        QVERIFY2(run.err.contains(error), qPrintable(run.err));
        QCOMPARE(run.out.size(), lines);
        QCOMPARE(run.exit, exit);
        if (without == u"service")
            return;
        const QStringList bodies = m_harness.bodies(SendPath);
        QCOMPARE(bodies.size(), posted);
        const QString row = QString::fromLatin1(QTest::currentDataTag());
        if (row == u"password and text from standard input")
            QVERIFY(bodies.at(0).contains(u"&kennwort=demo&"_s)
                    && bodies.at(0).contains(u"&text=Zeile%20eins\r\nZeile"_s));
        if (row == u"dry run")
            QVERIFY(run.out.at(2).contains(u"&kennwort=********&"_s));
        if (row == u"balance")
            QCOMPARE(run.out.at(0), u"500"_s);
    }
};

QTEST_MAIN(TestSendCommand)
#include "tst_sendcommand.moc"
