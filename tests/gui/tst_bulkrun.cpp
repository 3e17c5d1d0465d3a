// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "bulk/frmMultiSMS.h"
#include "bulk/frmMultiSMSLog.h"
#include "toolkit/Inet.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
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
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Yes);
        // A value holding a later placeholder gets that replaced too; a number typed without "00"
        // gets the German prefix; a refused row doesn't stop the next.
        send({ u"Anna %frei2%;01711234567;Nord;Raum 5"_s, u"Bert;0049x"_s, u"Carla;00436641234567;Süd"_s },
             u"Hallo %name%, %frei1%!"_s);
        QCOMPARE(boxes.last().text,
                 u"Achtung! Sie versenden eine MassenSMS!\r\nWollen Sie die 3 Nachrichten wirklich versenden?"_s);
        QCOMPARE(log()->lblSend->text(), u"Vorgang abgeschlossen"_s);
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
        QCOMPARE(boxes.pending(), 0);

        // In the next run the button still reads "Schliessen"; a press only hides the window.
        boxes.answer(MessageBox::Answer::Yes);
        m_harness.child<ToolbarButton>("tbSend")->click();
        QCOMPARE(log()->cmdClose->text(), u"Schliessen"_s);
        log()->cmdClose->click();
        QVERIFY(!log()->isVisible());
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
        QCOMPARE(log()->lblSend->text(), u"Vorgang abgeschlossen"_s);
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
