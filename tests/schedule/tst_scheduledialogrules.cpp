// SPDX-License-Identifier: GPL-3.0-or-later
#include "schedule/ScheduleDialogRules.h"

#include <QTest>

using namespace ScheduleDialogRules;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(ScheduleDialogRules::Box)

namespace {
QDateTime at(int year, int month, int day, int hour, int minute = 0, int second = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second));
}
} // namespace

class TestScheduleDialogRules : public QObject
{
    Q_OBJECT

private slots:
    void lists()
    {
        QCOMPARE(minuteItems(), u"00 05 10 15 20 25 30 35 40 45 50 55"_s.split(u' '));
        QCOMPARE(weekNumberItems(), u"1 2 3 4 5"_s.split(u' '));
        QCOMPARE(monthDayItems().first(), u"01"_s);
        for (const QString& month : monthItems())
            QVERIFY2(!CronRules::monthNumberFromName(month).isEmpty(), qPrintable(month));
        for (const QString& weekday : weekdayItems())
            QVERIFY2(!CronRules::weekdayNumberFromName(weekday).isEmpty(), qPrintable(weekday));
    }

    void proposal_data()
    {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QDateTime>("start");
        QTest::newRow("14:00 is a step already") << at(2026, 11, 22, 14, 0) << at(2026, 11, 22, 14, 5);
        QTest::newRow("14:49:59") << at(2026, 11, 22, 14, 49, 59) << at(2026, 11, 22, 14, 50);
        QTest::newRow("14:55") << at(2026, 11, 22, 14, 55) << at(2026, 11, 22, 15, 0);
        QTest::newRow("23:55 moves to the next day") << at(2026, 11, 22, 23, 55) << at(2026, 11, 23, 0, 0);
    }

    void proposal()
    {
        QFETCH(QDateTime, now);
        QFETCH(QDateTime, start);
        const Proposal p = proposeStartTime(now);
        QCOMPARE(p.cmbTimeHour, start.toString(u"hh"_s));
        QCOMPARE(p.cmbTimeMinutes, start.toString(u"mm"_s));
        QCOMPARE(p.DTPickerStart.date(), start.date());
        QCOMPARE(p.DTPickerStop, now.addDays(1));
    }

    // Day, week of the month, weekday and month, the same in the monthly and the yearly boxes.
    void today_data()
    {
        QTest::addColumn<QDate>("today");
        QTest::addColumn<QString>("boxes");
        QTest::newRow("7th, a Sunday") << QDate(2026, 6, 7) << u"7 1 Sonntag Juni"_s;
        QTest::newRow("8th") << QDate(2026, 12, 8) << u"8 2 Dienstag Dezember"_s;
        QTest::newRow("28th") << QDate(2026, 2, 28) << u"28 4 Samstag Februar"_s;
        QTest::newRow("29th") << QDate(2026, 6, 29) << u"29 5 Montag Juni"_s;
    }

    void today()
    {
        QFETCH(QDate, today);
        QFETCH(QString, boxes);
        const TodayDefaults d = todayDefaults(today);
        QCOMPARE((QStringList { d.cmbMonthDayDate, d.cmbMonthWDayMulti, d.cmbMonthWDAy, d.cmbYearlyMonthDate }),
                 boxes.split(u' '));
        QCOMPARE((QStringList { d.cmbYearlyDayDate, d.cmbYearlyWDayMulti, d.cmbYearlyWDay, d.cmbYearlyWDayMonth }),
                 boxes.split(u' '));
    }

    void restore_data()
    {
        QTest::addColumn<QString>("startTime");
        QTest::addColumn<QDateTime>("start"); // invalid: the text is refused
        QTest::newRow("one-off with its blank") << u"2009-07-15 09:05:00 "_s << at(2009, 7, 15, 9, 5);
        QTest::newRow("seconds become 0") << u"2009-07-15 23:55:42"_s << at(2009, 7, 15, 23, 55);
        QTest::newRow("not a date") << u"kaputt"_s << QDateTime();
        QTest::newRow("month 13") << u"2009-13-15 09:05:00"_s << QDateTime();
        QTest::newRow("leading blank shifts the positions") << u" 2009-07-15 09:05:00"_s << QDateTime();
        // The hour the clocks skip when summer time begins is a time like any other.
        QTest::newRow("02:30 on the day summer time begins")
            << u"2026-03-29 02:30:00"_s << QDateTime(QDate(2026, 3, 29), QTime(2, 30), Qt::UTC);
    }

    void restore()
    {
        QFETCH(QString, startTime);
        QFETCH(QDateTime, start);
        const RestoredStart r = restoreStartTime(startTime);
        QCOMPARE(r.ok, start.isValid());
        if (!r.ok)
            return;
        QCOMPARE(r.DTPickerStart, start);
        QCOMPARE(r.cmbTimeHour, start.toString(u"hh"_s));
        QCOMPARE(r.cmbTimeMinutes, start.toString(u"mm"_s));
    }

    void yearlyDayList_data()
    {
        QTest::addColumn<QString>("month");
        QTest::addColumn<QString>("day");
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("shown");
        // The send time is 09:00 throughout.
        QTest::newRow("Feb 31, common year") << u"Februar"_s << u"31"_s << at(2026, 1, 10, 8) << 2026 << 28 << u"28"_s;
        QTest::newRow("Feb passed: a leap year next")
            << u"Februar"_s << u"31"_s << at(2027, 11, 22, 10) << 2028 << 29 << u"29"_s;
        QTest::newRow("Feb passed, not the send time")
            << u"Februar"_s << u"31"_s << at(2027, 11, 22, 8) << 2027 << 28 << u"28"_s;
        QTest::newRow("today, send time passed") << u"März"_s << u"05"_s << at(2027, 3, 5, 10) << 2028 << 31 << u"05"_s;
        QTest::newRow("today at the send time") << u"März"_s << u"05"_s << at(2027, 3, 5, 9) << 2027 << 31 << u"05"_s;
        QTest::newRow("tomorrow") << u"März"_s << u"06"_s << at(2027, 3, 5, 10) << 2027 << 31 << u"06"_s;
        QTest::newRow("empty day box stays") << u"Mai"_s << QString() << at(2027, 6, 1, 10) << 2027 << 31 << QString();
        QTest::newRow("day far below the first stays")
            << u"Mai"_s << u"-1e12"_s << at(2027, 6, 1, 10) << 2027 << 31 << u"-1e12"_s;
    }

    void yearlyDayList()
    {
        QFETCH(QString, month);
        QFETCH(QString, day);
        QFETCH(QDateTime, now);
        QFETCH(int, year);
        QFETCH(int, count);
        QFETCH(QString, shown);
        const YearlyDayList list = refreshYearlyDayList(month, day, u"09"_s, u"00"_s, now);
        QCOMPARE(list.targetYear, year);
        QCOMPARE(list.days.size(), count);
        QCOMPARE(list.days.first(), u"01"_s);
        QCOMPARE(list.days.last(), QString::number(count));
        QCOMPARE(list.cmbYearlyDayDate, shown);
    }

    // What a box keeps of a typed text (empty: the text is refused), and what it shows when it is
    // left (null: nothing is done). The yearly day list has listCount days, none while it is
    // empty; today is the 22nd.
    void typedBoxes_data()
    {
        QTest::addColumn<Box>("box");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("listCount");
        QTest::addColumn<QString>("kept");
        QTest::addColumn<QString>("left");
        const Box hour = Box::cmbTimeHour, minutes = Box::cmbTimeMinutes, day = Box::cmbYearlyDayDate;
        QTest::newRow("hour 00") << hour << u"00"_s << 0 << u"00"_s << u"00"_s;
        QTest::newRow("hour 7") << hour << u"7"_s << 0 << u"7"_s << u"07"_s;
        QTest::newRow("hour 22") << hour << u"22"_s << 0 << u"22"_s << u"22"_s;
        QTest::newRow("hour 23 only from the list") << hour << u"23"_s << 0 << QString() << u"23"_s;
        QTest::newRow("hour -1") << hour << u"-1"_s << 0 << QString() << u"-1"_s;
        QTest::newRow("hour letter") << hour << u"x"_s << 0 << QString() << u"x"_s;
        QTest::newRow("minutes 55") << minutes << u"55"_s << 0 << u"55"_s << u"55"_s;
        QTest::newRow("minutes 56") << minutes << u"56"_s << 0 << QString() << u"56"_s;
        QTest::newRow("minutes 7 off the list") << minutes << u"7"_s << 0 << u"7"_s << u"07"_s;
        QTest::newRow("minutes 07 stay") << minutes << u"07"_s << 0 << u"07"_s << u"07"_s;
        QTest::newRow("monthly week 1") << Box::cmbMonthWDayMulti << u"1"_s << 0 << u"1"_s << QString();
        QTest::newRow("monthly week 0") << Box::cmbMonthWDayMulti << u"0"_s << 0 << QString() << QString();
        QTest::newRow("yearly week 5") << Box::cmbYearlyWDayMulti << u"5"_s << 0 << u"5"_s << QString();
        QTest::newRow("yearly week 6") << Box::cmbYearlyWDayMulti << u"6"_s << 0 << QString() << QString();
        QTest::newRow("day 29 of 28") << day << u"29"_s << 28 << QString() << u"29"_s;
        QTest::newRow("day 28 of 28") << day << u"28"_s << 28 << u"28"_s << u"28"_s;
        QTest::newRow("day 0") << day << u"0"_s << 28 << QString() << u"00"_s;
        QTest::newRow("day 5 gets its zero") << day << u"5"_s << 28 << u"5"_s << u"05"_s;
        // The zero is added whatever the length, again on every leaving.
        QTest::newRow("day 05") << day << u"05"_s << 28 << u"05"_s << u"005"_s;
        QTest::newRow("day 12") << day << u"12"_s << 28 << u"12"_s << u"12"_s;
        QTest::newRow("empty day takes today's") << day << QString() << 28 << QString() << u"22"_s;
        QTest::newRow("any day while the list is empty") << day << u"99"_s << 0 << u"99"_s << u"99"_s;
        QTest::newRow("day letters while the list is empty") << day << u"x"_s << 0 << QString() << u"x"_s;
        QTest::newRow("send times 0") << Box::tbSendTimes << u"0"_s << 0 << u"1"_s << u"0"_s;
        QTest::newRow("send times empty") << Box::tbSendTimes << QString() << 0 << QString() << u"1"_s;
    }

    void typedBoxes()
    {
        QFETCH(Box, box);
        QFETCH(QString, text);
        QFETCH(int, listCount);
        QFETCH(QString, kept);
        QFETCH(QString, left);
        QCOMPARE(checkOnChange(box, text, listCount), kept);
        if (left.isNull())
            return;
        QCOMPARE(box == Box::cmbYearlyDayDate  ? yearlyDayOnLeave(text, QDate(2026, 11, 22))
                     : box == Box::tbSendTimes ? sendTimesOnLeave(text)
                                               : timeOnLeave(text),
                 left);
    }

    void pickers_data()
    {
        QTest::addColumn<bool>("stop");
        QTest::addColumn<QDateTime>("chosen");
        QTest::addColumn<QDateTime>("result");
        // The start picker is compared with now, the stop picker with the start.
        const QDateTime now = at(2026, 11, 22, 14, 2, 30);
        QTest::newRow("start today at a later hour becomes now") << false << at(2026, 11, 22, 18) << now;
        QTest::newRow("start tomorrow stays") << false << at(2026, 11, 23, 1) << at(2026, 11, 23, 1);
        QTest::newRow("stop the day before the start") << true << at(2026, 11, 21, 23) << now;
        QTest::newRow("stop earlier on the start's day stays") << true << at(2026, 11, 22, 8) << at(2026, 11, 22, 8);
    }

    void pickers()
    {
        QFETCH(bool, stop);
        QFETCH(QDateTime, chosen);
        QFETCH(QDateTime, result);
        const QDateTime other = at(2026, 11, 22, 14, 2, 30);
        QCOMPARE(stop ? stopPickerChanged(chosen, other) : startPickerChanged(chosen, other), result);
    }
};

QTEST_GUILESS_MAIN(TestScheduleDialogRules)
#include "tst_scheduledialogrules.moc"
