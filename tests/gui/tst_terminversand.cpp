// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "schedule/frmTimeControl.h"
#include "sending/StopList.h"
#include "toolkit/Clock.h"
#include "toolkit/ToolbarButton.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString CronPath = u"/cronjob/send_repeat.php"_s;
const QString SendPath = u"/smsv3/smsv3.php"_s;
const QString CommonFields
    = u"email=demo@quellbote.test&kennwort=demo&firma=%20&empfaenger=00491711234567&empfaengername=&private=true"
      "&public=false&version=2.4.92&text=Hallo&absenderkennung=false&absender=&statusmeldung=false&antwort=false"
      "&einlieferung=false&referer=Quellbote"_s;
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

    // A series on Mondays and Fridays, three times: the job address gets it, the start time is
    // kept for the next dialog, and the next sending is a normal one again. How the choices become
    // the schedule fields, a one-off's among them, is up to the rule tests.
    void scheduledSendingGoesToTheJobAddress()
    {
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        boxes.answer(MessageBox::Answer::Ok);
        m_harness.fill(u"G171"_s, u"1234567"_s, u"Hallo"_s);
        onNextModal([](QWidget* dialog) {
            in<QCheckBox>(dialog, "cbRepetition")->click();
            in<QRadioButton>(dialog, "obSeriesWorkDay")->click();
            in<QCheckBox>(dialog, "chMon")->click();
            in<QCheckBox>(dialog, "chFre")->click();
            in<QLineEdit>(dialog, "tbSendTimes")->setText(u"3"_s);
            in<QPushButton>(dialog, "cbSend")->click();
        });
        QTest::mouseClick(m_harness.child<ToolbarButton>("tbTerminversand"), Qt::LeftButton);
        QTRY_COMPARE(boxes.count(), 1);
        QVERIFY(boxes.last().text.contains(u"wurde angelegt."_s));
        QCOMPARE(m_harness.bodies(CronPath),
                 QStringList {
                     CommonFields
                     + u"&term=2009-07-15%2009:05:00&cronjobstring=05%2009%20*%20*%201,5&enddate=3&long=false"_s });
        QVERIFY(m_harness.bodies(SendPath).isEmpty());
        QCOMPARE(m_harness.main()->lastStartTime, u"2009-07-15 09:05:00"_s);

        m_harness.fill(u"G171"_s, u"1234567"_s, u"Hallo"_s);
        m_harness.main()->tbSend_Click();
        QTRY_COMPARE(boxes.count(), 2);
        QCOMPARE(m_harness.bodies(SendPath), QStringList { CommonFields + u"&long=false" });
    }

    // The dialog's own handlers, clicked as a user clicks them, in the state that unticking and
    // ticking the series leaves: the daily panel and the count show, whatever stays selected.
    void theDialogsOwnHandlers()
    {
        frmTimeControl dialog(QString(), m_harness.main());
        dialog.show();
        const auto click = [&dialog](const char* name) {
            auto* control = in<QWidget>(&dialog, name);
            QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(8, control->height() / 2));
        };
        const auto shown = [&dialog](const char* name) {
            return in<QWidget>(&dialog, name)->isVisible();
        };
        auto* stop = in<QDateTimeEdit>(&dialog, "DTPickerStop");
        click("cbRepetition");
        click("obMonthly");
        click("obEndingDate");
        click("cbRepetition");
        click("cbRepetition");
        QVERIFY(shown("pbDayly"));
        QVERIFY(in<QRadioButton>(&dialog, "obMonthly")->isChecked());
        QVERIFY(!stop->isEnabled());
        // A click on the selected button brings its panel and its state back.
        click("obMonthly");
        QVERIFY(shown("pbMonthly") && !shown("pbDayly"));
        click("obEndingDate");
        QVERIFY(stop->isEnabled());
        QVERIFY(!in<QLineEdit>(&dialog, "tbSendTimes")->isEnabled());

        // Each click on the start picker, on its field or on its button, adds the days once more.
        auto* days = in<QComboBox>(&dialog, "cmbMonthDayDate");
        auto* start = in<QDateTimeEdit>(&dialog, "DTPickerStart");
        QCOMPARE(days->count(), 31);
        QTest::mouseClick(start->findChild<QLineEdit*>(), Qt::LeftButton);
        QCOMPARE(days->count(), 62);
        QTest::mouseClick(start, Qt::LeftButton, {}, QPoint(start->width() - 6, start->height() / 2));
        QCOMPARE(days->count(), 93);
        if (QWidget* calendar = QApplication::activePopupWidget())
            calendar->close();

        // A click on the month, the same one again, refreshes the yearly day list.
        click("obYearly");
        auto* month = in<QComboBox>(&dialog, "cmbYearlyMonthDate");
        auto* day = in<QComboBox>(&dialog, "cmbYearlyDayDate");
        month->setCurrentIndex(1);
        {
            const QSignalBlocker unchecked(day);
            day->setEditText(u"30"_s);
        }
        emit month->activated(1);
        QCOMPARE(day->currentText(), u"28"_s);

        // A refused "Senden" keeps the dialog open with the choices.
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        click("obDaly");
        click("obSeriesWorkDay");
        in<QPushButton>(&dialog, "cbSend")->click();
        QCOMPARE(boxes.last().text, u"Sie müssen mind. einen Wochentag auswählen"_s);
        QVERIFY(dialog.isVisible());
    }

    // How the dialog is left, with the last start time proposed. "Abbrechen" and Esc hand back
    // nothing, also after a refused "Senden"; the close box hands back the schedule that the refused
    // press made, and the main window sends it.
    void leavingTheDialog_data()
    {
        QTest::addColumn<bool>("refused"); // "Senden" pressed first, a weekday series with no day
        QTest::addColumn<QString>("leave"); // "Abbrechen", "Esc" or "close box"
        QTest::addColumn<int>("jobs"); // requests at the job address
        QTest::addColumn<bool>("stopped"); // the number is on the stop list
        QTest::newRow("Abbrechen") << false << u"Abbrechen"_s << 0 << false;
        QTest::newRow("Esc after a refused Senden") << true << u"Esc"_s << 0 << false;
        QTest::newRow("close box after a refused Senden") << true << u"close box"_s << 1 << false;
        QTest::newRow("Senden, the number on the stop list") << false << u"Senden"_s << 0 << true;
    }

    void leavingTheDialog()
    {
        QFETCH(bool, refused);
        QFETCH(QString, leave);
        QFETCH(int, jobs);
        QFETCH(bool, stopped);
        m_harness.main()->lastStartTime = u"2009-07-20 14:35:00"_s;
        MessageBoxScript boxes;
        if (refused || stopped)
            boxes.answer(MessageBox::Answer::Ok);
        if (stopped)
            QVERIFY(StopList::saveUserEntries({ u"+49 171 1234567"_s }));
        if (jobs > 0)
            boxes.answer(MessageBox::Answer::Ok); // the job address's answer
        m_harness.fill(u"G171"_s, u"1234567"_s, u"Hallo"_s);
        QStringList proposed;
        onNextModal([&](QWidget* dialog) {
            proposed = { in<QComboBox>(dialog, "cmbTimeHour")->currentText(),
                         in<QComboBox>(dialog, "cmbTimeMinutes")->currentText(),
                         in<QDateTimeEdit>(dialog, "DTPickerStart")->dateTime().toString(Qt::ISODate),
                         in<QDateTimeEdit>(dialog, "DTPickerStop")->date().toString(Qt::ISODate) };
            if (refused) {
                in<QCheckBox>(dialog, "cbRepetition")->click();
                in<QRadioButton>(dialog, "obSeriesWorkDay")->click();
                in<QPushButton>(dialog, "cbSend")->click();
                QVERIFY(dialog->isVisible());
            }
            if (leave == u"Esc")
                QTest::keyClick(dialog->focusWidget() ? dialog->focusWidget() : dialog, Qt::Key_Escape);
            else if (leave == u"close box")
                dialog->close();
            else if (leave == u"Senden")
                in<QPushButton>(dialog, "cbSend")->click();
            else
                in<QPushButton>(dialog, "cbCancel")->click();
        });
        m_harness.main()->tbTerminversand_Click();
        // The end picker keeps its built-in value when a start time comes back.
        QCOMPARE(proposed, (QStringList { u"14"_s, u"35"_s, u"2009-07-20T14:35:00"_s, u"2006-08-23"_s }));
        QTRY_COMPARE(boxes.pending(), 0);
        QCOMPARE(m_harness.bodies(CronPath).size(), jobs);
        QVERIFY(m_harness.bodies(SendPath).isEmpty());
        // The start is kept whether the sending went out or not (a one-off's ends in a blank).
        QCOMPARE(m_harness.main()->lastStartTime.trimmed(), u"2009-07-20 14:35:00"_s);
        if (stopped)
            QCOMPARE(boxes.last().text, u"Die Nummer 00491711234567 steht auf der Sperrliste und erhält keine SMS."_s);
    }
};

QTEST_MAIN(TestTerminversand)
#include "tst_terminversand.moc"
