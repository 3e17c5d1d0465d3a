// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "schedule/frmTimeControl.h"
#include "toolkit/Clock.h"
#include "toolkit/ToolbarButton.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace {
const QString CronPath = QStringLiteral("/cronjob/send_repeat.php");
const QString SendPath = QStringLiteral("/smsv3/smsv3.php");
const QString CommonFields = QStringLiteral(
    "email=demo@quellbote.test&kennwort=demo&firma=%20&empfaenger=00491711234567&empfaengername=&private=true"
    "&public=false&version=2.4.92&text=Hallo&absenderkennung=false&absender=&statusmeldung=false&antwort=false"
    "&einlieferung=false&referer=Quellbote");
} // namespace

class TestTerminversand : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

private slots:
    void init()
    {
        // The proposal of the dialog follows now: the next five minutes after 09:02.
        Clock::setNow(QDateTime(QDate(2009, 7, 15), QTime(9, 2)));
        m_harness.resetStore();
        QVERIFY(m_harness.startService());
        m_harness.loadMain();
    }

    void cleanup()
    {
        m_harness.reset();
        Clock::setNow({});
    }

    void scheduledSendingGoesToTheJobAddress_data()
    {
        QTest::addColumn<bool>("series");
        QTest::addColumn<QString>("scheduleFields");
        QTest::addColumn<QString>("lastStartTime");
        QTest::newRow("one-off") << false << "&term=2009-07-15%2009:05:00%20&cronjobstring=0&enddate=0"
                                 << "2009-07-15 09:05:00 ";
        QTest::newRow("Mondays and Fridays, three times")
            << true << "&term=2009-07-15%2009:05:00&cronjobstring=05%2009%20*%20*%201,5&enddate=3"
            << "2009-07-15 09:05:00";
    }

    void scheduledSendingGoesToTheJobAddress()
    {
        QFETCH(bool, series);
        QFETCH(QString, scheduleFields);
        QFETCH(QString, lastStartTime);
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        boxes.answer(MessageBox::Answer::Ok);
        m_harness.fill(QStringLiteral("G171"), QStringLiteral("1234567"), QStringLiteral("Hallo"));
        onNextModal([series](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Terminversand"));
            if (series) {
                in<QCheckBox>(dialog, "cbRepetition")->click();
                in<QRadioButton>(dialog, "obSeriesWorkDay")->click();
                in<QCheckBox>(dialog, "chMon")->click();
                in<QCheckBox>(dialog, "chFre")->click();
                in<QLineEdit>(dialog, "tbSendTimes")->setText(QStringLiteral("3"));
            }
            in<QPushButton>(dialog, "cbSend")->click();
        });
        QTest::mouseClick(m_harness.child<ToolbarButton>("tbTerminversand"), Qt::LeftButton);
        QTRY_COMPARE(boxes.count(), 1);
        QVERIFY(boxes.last().text.contains(QStringLiteral("wurde angelegt.")));
        QCOMPARE(m_harness.bodies(CronPath), QStringList { CommonFields + scheduleFields + u"&long=false" });
        QVERIFY(m_harness.bodies(SendPath).isEmpty());
        QCOMPARE(m_harness.main()->lastStartTime, lastStartTime);
        QVERIFY(!m_harness.main()->pendingCronjob);

        // The next sending is a normal one again.
        m_harness.fill(QStringLiteral("G171"), QStringLiteral("1234567"), QStringLiteral("Hallo"));
        m_harness.main()->tbSend_Click();
        QTRY_COMPARE(boxes.count(), 2);
        QCOMPARE(m_harness.bodies(SendPath), QStringList { CommonFields + u"&long=false" });
    }

    void cancelledDialogSendsNothingAndTheNextProposesTheLastStart()
    {
        m_harness.main()->lastStartTime = QStringLiteral("2009-07-20 14:35:00");
        MessageBoxScript boxes;
        m_harness.fill(QStringLiteral("G171"), QStringLiteral("1234567"), QStringLiteral("Hallo"));
        QString hour, minutes;
        QDateTime start, stop;
        onNextModal([&](QWidget* dialog) {
            hour = in<QComboBox>(dialog, "cmbTimeHour")->currentText();
            minutes = in<QComboBox>(dialog, "cmbTimeMinutes")->currentText();
            start = in<QDateTimeEdit>(dialog, "DTPickerStart")->dateTime();
            stop = in<QDateTimeEdit>(dialog, "DTPickerStop")->dateTime();
            in<QPushButton>(dialog, "cbCancel")->click();
        });
        m_harness.main()->tbTerminversand_Click();
        QCOMPARE(hour, QStringLiteral("14"));
        QCOMPARE(minutes, QStringLiteral("35"));
        QCOMPARE(start, QDateTime(QDate(2009, 7, 20), QTime(14, 35)));
        // The end picker keeps its built-in value when a start time comes back.
        QCOMPARE(stop.date(), QDate(2006, 8, 23));
        QCOMPARE(boxes.count(), 0);
        QVERIFY(m_harness.bodies(CronPath).isEmpty());
        QVERIFY(m_harness.bodies(SendPath).isEmpty());
        QCOMPARE(m_harness.main()->lastStartTime, QStringLiteral("2009-07-20 14:35:00"));
    }
};

QTEST_MAIN(TestTerminversand)
#include "tst_terminversand.moc"
