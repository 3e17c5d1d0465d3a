// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "bulk/RunRecord.h"
#include "bulk/frmMultiSMS.h"
#include "bulk/frmMultiSMSLog.h"
#include "sending/SendRecord.h"
#include "sending/StopList.h"
#include "settings/cOptionen.h"
#include "toolkit/FileChooser.h"
#include "toolkit/Inet.h"
#include "toolkit/LogView.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QAction>
#include <QDir>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {
const QString SendPath = u"/smsv3/smsv3.php"_s;
} // namespace

class TestBulkRun : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

    frmMultiSMSLog* log() const { return frmMultiSMSLog::loaded(); }

    // MultiSMS mode with these rows (name;number;frei1;frei2, as typed) and text, then "Senden".
    void send(const QStringList& rows, const QString& text)
    {
        m_harness.child<ToolbarButton>("tbMultiSMS")->click();
        RecipientTable& table = frmMultiSMS::loaded()->table();
        for (const QString& row : rows) {
            const QStringList f = QString(row + u";;;"_s).split(u';');
            table.addRow(f[0], f[1], f[2], f[3]);
        }
        frmMultiSMS::loaded()->recalcMaxSizes();
        m_harness.child<SmsTextEdit>("txtSMS")->setText(text);
        m_harness.child<ToolbarButton>("tbSend")->click();
    }

    QStringList sentTexts() const
    {
        QStringList texts;
        for (const QString& sent : m_harness.bodies(SendPath)) {
            const QUrlQuery body(sent);
            texts.append(body.queryItemValue(u"empfaenger"_s, QUrl::FullyDecoded) + u' '
                         + body.queryItemValue(u"text"_s, QUrl::FullyDecoded));
        }
        return texts;
    }

private slots:
    void init()
    {
        m_harness.resetStore();
        QVERIFY(m_harness.startService());
        m_harness.loadMain();
    }

    void cleanup() { m_harness.reset(); }

    void everyRowGetsItsOwnText()
    {
        const QDateTime since = QDateTime::currentDateTimeUtc();
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Yes);
        // A value holding a later placeholder gets that replaced too; a number typed without "00"
        // gets the German prefix; a refused row doesn't stop the next.
        send({ u"Anna %frei2%;01711234567;Nord;Raum 5"_s, u"Bert;0049x"_s, u"Carla;00436641234567;Süd"_s },
             u"Hallo %name%, %frei1%!"_s);
        QCOMPARE(boxes.last().text,
                 u"Achtung! Sie versenden eine MassenSMS!\r\nWollen Sie die 3 Nachrichten wirklich versenden?"_s);
        QCOMPARE(log()->cmdClose->text(), u"Schliessen"_s);
        QCOMPARE(log()->pBar->value(), 6);
        QTRY_COMPARE(sentTexts().size(), 3);
        QCOMPARE(sentTexts(),
                 (QStringList { u"00491711234567 Hallo Anna Raum 5, Nord!"_s, u"0049x Hallo Bert, !"_s,
                                u"00436641234567 Hallo Carla, Süd!"_s }));
        // Two answers of two parts and a refusal of one, each part a line, the newest on top.
        QTRY_COMPARE(log()->txtLog->toPlainText().count(u" - "_s), 5);
        const QStringList lines = log()->txtLog->toPlainText().split(u'\n');
        QVERIFY2(lines.first().contains(u"Credits abgebucht"_s), qPrintable(lines.first()));
        QVERIFY(lines.at(2).contains(u"0049x ist keine gültige Rufnummer"_s));
        // The refused row is counted apart, and only it is offered again.
        QTRY_COMPARE(log()->lblSend->text(), u"Vorgang abgeschlossen – 2 von 3 SMS versendet, 1 nicht versendet."_s);
        // A screen reader hears the end with the button that now closes the window.
        QTRY_COMPARE(log()->cmdClose->accessibleDescription(), log()->lblSend->text());
        QVERIFY(log()->cmdResend->isVisible());
        boxes.answer(MessageBox::Answer::Yes);
        log()->cmdResend->click();
        QCOMPARE(boxes.last().text,
                 u"Achtung! Sie versenden eine MassenSMS!\r\nWollen Sie die 1 Nachrichten wirklich versenden?"_s);
        QTRY_COMPARE(sentTexts().size(), 4);
        QCOMPARE(sentTexts().last(), u"0049x Hallo Bert, !"_s);
        // Each row's outcome is kept in the send record, the row sent again once more.
        SendRecord record;
        SendRecord::Query query;
        query.text = u"Hallo Bert"_s;
        query.from = since;
        QTRY_COMPARE(record.count(query), 2);
        const SendRecord::Entry bert = record.search(query).constFirst();
        QCOMPARE(bert.road, SendRecord::Road::Bulk);
        QCOMPARE(bert.state, SendOutcome::State::Refused);
        QCOMPARE(bert.number, u"0049x"_s);
        QCOMPARE(boxes.pending(), 0);

        // In the next run the button still reads "Schliessen"; a press only hides the window.
        boxes.answer(MessageBox::Answer::Yes);
        m_harness.child<ToolbarButton>("tbSend")->click();
        QCOMPARE(log()->cmdClose->text(), u"Schliessen"_s);
        log()->cmdClose->click();
        QVERIFY(!log()->isVisible());
    }

    // Rows whose request left without an answer may have been billed: sent again only when the
    // user confirms them.
    void rowsWithoutAnswer_data()
    {
        QTest::addColumn<MessageBox::Answer>("answer");
        QTest::addColumn<int>("sentAgain");
        QTest::newRow("confirmed") << MessageBox::Answer::Yes << 2;
        QTest::newRow("not confirmed") << MessageBox::Answer::No << 0;
        QTest::newRow("cancelled") << MessageBox::Answer::Cancel << 0;
    }

    void rowsWithoutAnswer()
    {
        QFETCH(MessageBox::Answer, answer);
        QFETCH(int, sentAgain);
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Yes);
        QVERIFY(m_harness.service()->setFault(SendPath, u"drop"_s));
        send({ u"Anna;01711234567"_s, u"Ben;01721234567"_s }, u"Hallo"_s);
        QTRY_COMPARE(log()->lblSend->text(),
                     u"Vorgang abgeschlossen – 0 von 2 SMS versendet, 2 ohne Antwort (möglicherweise versendet)."_s);
        QVERIFY(m_harness.service()->setFault(SendPath, u"none"_s));
        boxes.answer(answer);
        if (sentAgain)
            boxes.answer(MessageBox::Answer::Yes);
        log()->cmdResend->click();
        QVERIFY2(boxes.shown().at(1).text.startsWith(u"Zu 2 SMS kam keine Antwort"_s),
                 qPrintable(boxes.shown().at(1).text));
        QVERIFY(boxes.shown().at(1).text.contains(u"Ben (01721234567)"_s));
        QTRY_COMPARE(m_harness.bodies(SendPath).size(), 2 + sentAgain);
        QCOMPARE(boxes.pending(), 0);
    }

    // A run's figures count its own rows only, though the answer to the last row of the run
    // before comes while it runs.
    void lateAnswerOfTheRunBefore()
    {
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Yes);
        // Slow enough that the answer comes after the second run has begun, on a busy machine too.
        QVERIFY(m_harness.service()->setFault(SendPath, u"slow:2000"_s));
        send({ u"Bert;0049x"_s }, u"Hallo"_s);
        QVERIFY(m_harness.service()->setFault(SendPath, u"none"_s));
        frmMultiSMS::loaded()->table().removeRow(0);
        frmMultiSMS::loaded()->table().addRow(u"Anna"_s, u"01711234567"_s, {}, {});
        frmMultiSMS::loaded()->recalcMaxSizes();
        boxes.answer(MessageBox::Answer::Yes);
        m_harness.child<ToolbarButton>("tbSend")->click();
        QTRY_COMPARE(m_harness.bodies(SendPath).size(), 2);
        QTRY_VERIFY(!m_harness.child<Inet>("iNet")->StillExecuting());
        log()->showNow();
        QVERIFY(log()->txtLog->toPlainText().contains(u"0049x ist keine gültige Rufnummer"_s));
        QCOMPARE(log()->lblSend->text(), u"Vorgang abgeschlossen"_s);
    }

    // A job file that could not be written counts as not sent.
    void handOffRun_data()
    {
        QTest::addColumn<bool>("folderThere");
        QTest::addColumn<QString>("closing");
        QTest::newRow("folder there") << true << u"Vorgang abgeschlossen"_s;
        QTest::newRow("folder missing") << false
                                        << u"Vorgang abgeschlossen – 0 von 3 SMS versendet, 3 nicht versendet."_s;
    }

    void handOffRun()
    {
        QFETCH(bool, folderThere);
        QFETCH(QString, closing);
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Yes);
        QTemporaryDir server;
        Options().setXmlIsServerUsed(true);
        Options().setXmlSingleUser(u"True"_s);
        Options().setXmlUser(u"U1"_s);
        Options().setXmlPfad(server.path() + (folderThere ? u""_s : u"/fehlt"_s));
        // The note after the first hand-off, by the count of hand-offs.
        if (folderThere)
            boxes.answer(MessageBox::Answer::Ok);
        send({ u"A;0049171"_s, u"B;0049172"_s, u"C;0049173"_s }, u"Hallo"_s);
        QTRY_COMPARE(log()->lblSend->text(), closing);
        QCOMPARE(QDir(server.path()).entryList(QDir::Files).size(), folderThere ? 3 : 0);
        QCOMPARE(log()->cmdResend->isVisible(), !folderThere);
        log()->showNow();
        QCOMPARE(log()->txtLog->toPlainText().count(u"!!!! Nicht versendet an "_s), folderThere ? 0 : 3);
        QVERIFY(m_harness.bodies(SendPath).isEmpty());
    }

    // A row whose number is on the stop list never reaches the gateway or the server folder; the
    // log says so in a line of its own and counts it apart, it is not offered again, and the
    // records hold it as skipped.
    void stopListedRowIsSkipped_data()
    {
        QTest::addColumn<bool>("handOff");
        QTest::newRow("to the gateway") << false;
        QTest::newRow("to the server folder") << true;
    }

    void stopListedRowIsSkipped()
    {
        QFETCH(bool, handOff);
        const QDateTime since = QDateTime::currentDateTimeUtc();
        QVERIFY(StopList::saveUserEntries({ u"+49 160 5555555"_s }));
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Yes);
        QTemporaryDir server;
        if (handOff) {
            Options().setXmlIsServerUsed(true);
            Options().setXmlSingleUser(u"True"_s);
            Options().setXmlUser(u"U1"_s);
            Options().setXmlPfad(server.path());
            boxes.answer(MessageBox::Answer::Ok); // the note after the first hand-off
        }
        const QStringList rows { u"Anna;01711234567"_s, u"Bert;01605555555"_s, u"Carla;00436641234567"_s };
        send(rows, u"Hallo %name%"_s);
        QTRY_COMPARE(log()->lblSend->text(),
                     u"Vorgang abgeschlossen – 2 von 3 SMS versendet, 1 gesperrt (Sperrliste)."_s);
        QCOMPARE(boxes.pending(), 0);
        const QStringList toGateway { u"00491711234567 Hallo Anna"_s, u"00436641234567 Hallo Carla"_s };
        QCOMPARE(sentTexts(), handOff ? QStringList() : toGateway);
        QCOMPARE(QDir(server.path()).entryList(QDir::Files).size(), handOff ? 2 : 0);
        log()->showNow();
        const QString text = log()->txtLog->toPlainText();
        QCOMPARE(text.count(u"Sperrliste"_s), 1);
        QVERIFY2(text.contains(u" - ---- Gesperrt: keine SMS an Bert (00491605555555), die Nummer steht auf der "
                               "Sperrliste"_s),
                 qPrintable(text));
        QVERIFY(!log()->cmdResend->isVisible());

        RecipientTable table;
        for (const QString& row : rows)
            table.addRow(row.section(u';', 0, 0), row.section(u';', 1, 1), {}, {});
        const RunRecord::Contents run = RunRecord::read(RunRecord::pathFor(table.rows()));
        QCOMPARE(run.outcomes.value(1), SendOutcome::State::Skipped);
        QCOMPARE(run.outcomes.value(0), SendOutcome::State::Sent);
        SendRecord record;
        SendRecord::Query query;
        query.text = u"Bert"_s;
        query.from = since;
        QTRY_COMPARE(record.count(query), 1);
        const SendRecord::Entry bert = record.search(query).constFirst();
        QCOMPARE(bert.state, SendOutcome::State::Skipped);
        QCOMPARE(bert.credits, 0);
        QCOMPARE(bert.answer, u"Die Nummer steht auf der Sperrliste."_s);
    }

    // A list whose run the program's end cut short offers, opened again, to go on with the rows
    // that did not go out, with the text the run began with; the row that was on its way goes
    // only when confirmed.
    void interruptedListGoesOn_data()
    {
        QTest::addColumn<MessageBox::Answer>("unknownAnswer");
        QTest::addColumn<QStringList>("sent");
        QTest::newRow("without the row that was on its way")
            << MessageBox::Answer::No << QStringList { u"0049173 Hallo C"_s };
        QTest::newRow("with it") << MessageBox::Answer::Yes
                                 << QStringList { u"0049172 Hallo B"_s, u"0049173 Hallo C"_s };
    }

    void interruptedListGoesOn()
    {
        QFETCH(MessageBox::Answer, unknownAnswer);
        QFETCH(QStringList, sent);
        const QString list = m_harness.folder() + u"/kunden.msms"_s;
        QFile file(list);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("A;0049171;;;\r\nB;0049172;;;\r\nC;0049173;;;\r\n");
        file.close();
        RecipientTable rows;
        QVERIFY(rows.load(list));
        {
            RunRecord record(RunRecord::pathFor(rows.rows()));
            QVERIFY(record.begin(u"Hallo %name%"_s, 3));
            record.sending(0);
            record.outcome(0, SendOutcome::State::Sent);
            record.sending(1);
        }
        m_harness.child<ToolbarButton>("tbMultiSMS")->click();
        m_harness.child<SmsTextEdit>("txtSMS")->setText(u"Ein anderer Text"_s);
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Yes);
        boxes.answer(unknownAnswer);
        boxes.answer(MessageBox::Answer::Yes);
        FileChooser::setHandler([&list](const FileChooser::Dialog&) { return list; });
        // The report on the list's rows comes first: its numbers are too short.
        bool reported = false;
        onNextModal([&reported](QWidget* report) {
            reported = report->objectName() == u"frmListCheck"_s;
            report->close();
        });
        frmMultiSMS::loaded()->findChild<QAction*>(u"open"_s)->trigger();
        QVERIFY(reported);
        FileChooser::setHandler({});
        QVERIFY2(boxes.shown().at(0).text.startsWith(u"Der Versand an diese Liste wurde unterbrochen"_s),
                 qPrintable(boxes.shown().at(0).text));
        QCOMPARE(boxes.shown().at(2).text,
                 u"Achtung! Sie versenden eine MassenSMS!\r\nWollen Sie die %1 Nachrichten wirklich versenden?"_s.arg(
                     sent.size()));
        QCOMPARE(m_harness.child<SmsTextEdit>("txtSMS")->text(), u"Hallo %name%"_s);
        QTRY_COMPARE(sentTexts(), sent);
    }

    void balanceTest_data()
    {
        QTest::addColumn<int>("credits"); // three rows of 10 Credits
        QTest::addColumn<QString>("text");
        QTest::newRow("exactly the need") << 30 << u"Achtung! Sie versenden eine MassenSMS!"_s;
        QTest::newRow("one Credit less") << 29
                                         << u"Sie verfügen nicht mehr über ein ausreichendes Guthaben um alle "
                                            "Nachrichten zu verschicken."_s;
    }

    void balanceTest()
    {
        QFETCH(int, credits);
        QFETCH(QString, text);
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::No);
        m_harness.main()->credits = credits;
        send({ u"A;0049171"_s, u"B;0049172"_s, u"C;0049173"_s }, u"Hallo"_s);
        QCOMPARE(boxes.count(), 1);
        QVERIFY2(boxes.last().text.startsWith(text), qPrintable(boxes.last().text));
        QVERIFY(m_harness.bodies(SendPath).isEmpty());
    }

    void stoppedRuns_data()
    {
        QTest::addColumn<bool>("abort");
        QTest::addColumn<QString>("note");
        QTest::newRow("the user stops after the first row") << true << "!!!! Abbruch durch User";
        QTest::newRow("a row without a number") << false << "!!!! Abbruch in Zeile 2 (B): Die Rufnummer fehlt.";
    }

    void stoppedRuns()
    {
        QFETCH(bool, abort);
        QFETCH(QString, note);
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Yes);
        if (abort) {
            // Pressed at the first moment the run lets the windows in: while the first request is
            // on its way (or the second, where the first was quick enough to be done).
            QTimer::singleShot(0, this, [] { frmMultiSMSLog::loaded()->cmdClose->click(); });
        }
        send({ u"A;0049171"_s, abort ? u"B;0049172"_s : u"B;"_s, u"C;0049173"_s, u"D;0049174"_s }, u"Hallo"_s);
        QVERIFY(log()->lblSend->text().startsWith(u"Vorgang abgeschlossen"_s));
        QCOMPARE(log()->pBar->value(), log()->pBar->maximum());
        // The last request may still be on its way.
        QTRY_VERIFY(!m_harness.child<Inet>("iNet")->StillExecuting());
        const QStringList sent = sentTexts();
        QVERIFY(!sent.isEmpty() && sent.size() <= (abort ? 2 : 1));
        QCOMPARE(sent.first(), u"0049171 Hallo"_s);
        // The rows after the stop fly past; the note stands under the answers, however many come
        // later.
        QTRY_COMPARE(log()->txtLog->toPlainText().count(u" - "_s), 2 * int(sent.size()));
        QVERIFY(log()->txtLog->toPlainText().endsWith(u'\n' + note));
    }
};

QTEST_MAIN(TestBulkRun)
#include "tst_bulkrun.moc"
