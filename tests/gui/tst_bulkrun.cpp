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

namespace {
const QString SendPath = QStringLiteral("/smsv3/smsv3.php");

struct Row
{
    const char* name;
    const char* number;
    const char* frei1;
    const char* frei2;
};

QString field(const QString& body, const QString& key)
{
    return QUrlQuery(body).queryItemValue(key, QUrl::FullyDecoded);
}
} // namespace

class TestBulkRun : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

    frmMultiSMSLog* log() const { return frmMultiSMSLog::loaded(); }

    // MultiSMS mode with these rows and text, then "Senden".
    void send(std::initializer_list<Row> rows, const QString& text)
    {
        m_harness.child<ToolbarButton>("tbMultiSMS")->click();
        RecipientTable& table = frmMultiSMS::loaded()->table();
        for (const Row& r : rows) {
            table.addRow(QString::fromUtf8(r.name), QString::fromUtf8(r.number), QString::fromUtf8(r.frei1),
                         QString::fromUtf8(r.frei2));
        }
        frmMultiSMS::loaded()->recalcMaxSizes();
        m_harness.child<SmsTextEdit>("txtSMS")->setText(text);
        m_harness.child<ToolbarButton>("tbSend")->click();
    }

    QStringList sentTexts() const
    {
        QStringList texts;
        for (const QString& body : m_harness.bodies(SendPath))
            texts.append(field(body, QStringLiteral("empfaenger")) + u' ' + field(body, QStringLiteral("text")));
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
        send({ { "Anna %frei2%", "01711234567", "Nord", "Raum 5" },
               { "Bert", "0049x", "", "" },
               { "Carla", "00436641234567", "Süd", "" } },
             QStringLiteral("Hallo %name%, %frei1%!"));
        QCOMPARE(boxes.last().text,
                 QStringLiteral(
                     "Achtung! Sie versenden eine MassenSMS!\r\nWollen Sie die 3 Nachrichten wirklich versenden?"));
        QCOMPARE(log()->lblSend->text(), QStringLiteral("Vorgang abgeschlossen"));
        QCOMPARE(log()->cmdClose->text(), QStringLiteral("Schliessen"));
        QCOMPARE(log()->pBar->maximum(), 6);
        QCOMPARE(log()->pBar->value(), 6);
        QTRY_COMPARE(sentTexts().size(), 3);
        QCOMPARE(sentTexts(),
                 (QStringList { QStringLiteral("00491711234567 Hallo Anna Raum 5, Nord!"),
                                QStringLiteral("0049x Hallo Bert, !"),
                                QStringLiteral("00436641234567 Hallo Carla, Süd!") }));
        // Two answers of two parts and a refusal of one, each part a line, the newest on top.
        QTRY_COMPARE(log()->txtLog->toPlainText().count(QStringLiteral(" - ")), 5);
        const QStringList lines = log()->txtLog->toPlainText().split(u'\n');
        QVERIFY2(lines.first().contains(QStringLiteral("Credits abgebucht")), qPrintable(lines.first()));
        QVERIFY(lines.at(2).contains(QStringLiteral("0049x ist keine gültige Rufnummer")));
        QCOMPARE(boxes.pending(), 0);

        // In the next run the button still reads "Schliessen"; a press only hides the window.
        boxes.answer(MessageBox::Answer::Yes);
        m_harness.child<ToolbarButton>("tbSend")->click();
        QCOMPARE(log()->cmdClose->text(), QStringLiteral("Schliessen"));
        log()->cmdClose->click();
        QVERIFY(!log()->isVisible());
    }

    void balanceTest_data()
    {
        QTest::addColumn<int>("credits");
        QTest::addColumn<bool>("asked");
        QTest::newRow("exactly the need") << 30 << true;
        QTest::newRow("one Credit less") << 29 << false;
    }

    void balanceTest()
    {
        QFETCH(int, credits);
        QFETCH(bool, asked);
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::No);
        m_harness.main()->credits = credits;
        send({ { "A", "0049171", "", "" }, { "B", "0049172", "", "" }, { "C", "0049173", "", "" } },
             QStringLiteral("Hallo"));
        QCOMPARE(boxes.count(), 1);
        QCOMPARE(boxes.last().text.startsWith(QStringLiteral("Achtung!")), asked);
        if (!asked) {
            QCOMPARE(boxes.last().text,
                     QStringLiteral("Sie verfügen nicht mehr über ein ausreichendes Guthaben um "
                                    "alle Nachrichten zu verschicken."));
            boxes.answer(MessageBox::Answer::No); // the unused answer
        }
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
        send({ { "A", "0049171", "", "" },
               { "B", abort ? "0049172" : "", "", "" },
               { "C", "0049173", "", "" },
               { "D", "0049174", "", "" } },
             QStringLiteral("Hallo"));
        QCOMPARE(log()->lblSend->text(), QStringLiteral("Vorgang abgeschlossen"));
        QCOMPARE(log()->pBar->value(), log()->pBar->maximum());
        // The last request may still be on its way.
        QTRY_VERIFY(!m_harness.child<Inet>("iNet")->StillExecuting());
        const QStringList sent = sentTexts();
        QVERIFY(!sent.isEmpty() && sent.size() <= (abort ? 2 : 1));
        QCOMPARE(sent.first(), QStringLiteral("0049171 Hallo"));
        // The rows after the stop fly past; the note stands under the answers, however many come
        // later.
        QTRY_COMPARE(log()->txtLog->toPlainText().count(QStringLiteral(" - ")), 2 * int(sent.size()));
        QVERIFY(log()->txtLog->toPlainText().endsWith(u'\n' + note));
    }
};

QTEST_MAIN(TestBulkRun)
#include "tst_bulkrun.moc"
