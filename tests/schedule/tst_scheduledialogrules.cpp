// SPDX-License-Identifier: GPL-3.0-or-later
#include "schedule/ScheduleDialogRules.h"

#include <QTest>

using namespace ScheduleDialogRules;

Q_DECLARE_METATYPE(ScheduleDialogRules::Box)

class TestScheduleDialogRules : public QObject
{
    Q_OBJECT

private slots:
    void lists()
    {
        QCOMPARE(hourItems().size(), 24);
        QCOMPARE(hourItems().last(), QStringLiteral("23"));
        QCOMPARE(minuteItems(), QString(QStringLiteral("00 05 10 15 20 25 30 35 40 45 50 55")).split(u' '));
        QCOMPARE(monthDayItems().first(), QStringLiteral("01"));
        QCOMPARE(monthDayItems().size(), 31);
        QCOMPARE(weekNumberItems(), QString(QStringLiteral("1 2 3 4 5")).split(u' '));
        QCOMPARE(weekdayItems().first(), QStringLiteral("Montag"));
        QCOMPARE(weekdayItems().last(), QStringLiteral("Sonntag"));
        QCOMPARE(monthItems().at(2), QStringLiteral("März"));
        // Every name in the lists has its number for the cron string.
        for (const QString& month : monthItems())
            QVERIFY(!CronRules::monthNumberFromName(month).isEmpty());
        for (const QString& weekday : weekdayItems())
            QVERIFY(!CronRules::weekdayNumberFromName(weekday).isEmpty());
    }

    void proposal_data()
    {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QString>("hour");
        QTest::addColumn<QString>("minute");
        QTest::addColumn<QDate>("day");
        const QDate d(2026, 11, 22);
        QTest::newRow("14:02") << QDateTime(d, QTime(14, 2)) << QStringLiteral("14") << QStringLiteral("05") << d;
        QTest::newRow("14:00 is a step already")
            << QDateTime(d, QTime(14, 0)) << QStringLiteral("14") << QStringLiteral("05") << d;
        QTest::newRow("14:49") << QDateTime(d, QTime(14, 49, 59)) << QStringLiteral("14") << QStringLiteral("50") << d;
        QTest::newRow("14:55") << QDateTime(d, QTime(14, 55)) << QStringLiteral("15") << QStringLiteral("00") << d;
        QTest::newRow("09:31") << QDateTime(d, QTime(9, 31)) << QStringLiteral("09") << QStringLiteral("35") << d;
        QTest::newRow("23:50") << QDateTime(d, QTime(23, 50)) << QStringLiteral("23") << QStringLiteral("55") << d;
        QTest::newRow("23:55 moves to the next day")
            << QDateTime(d, QTime(23, 55)) << QStringLiteral("00") << QStringLiteral("00") << d.addDays(1);
        QTest::newRow("23:59 on New Year's Eve") << QDateTime(QDate(2026, 12, 31), QTime(23, 59))
                                                 << QStringLiteral("00") << QStringLiteral("00") << QDate(2027, 1, 1);
    }

    void proposal()
    {
        QFETCH(QDateTime, now);
        QFETCH(QString, hour);
        QFETCH(QString, minute);
        QFETCH(QDate, day);
        const Proposal p = proposeStartTime(now);
        QCOMPARE(p.cmbTimeHour, hour);
        QCOMPARE(p.cmbTimeMinutes, minute);
        QVERIFY(hourItems().contains(p.cmbTimeHour));
        QVERIFY(minuteItems().contains(p.cmbTimeMinutes));
        QCOMPARE(p.DTPickerStart.date(), day);
        QCOMPARE(p.DTPickerStop, now.addDays(1));
    }

    void today_data()
    {
        QTest::addColumn<QDate>("today");
        QTest::addColumn<QString>("day");
        QTest::addColumn<QString>("week");
        QTest::addColumn<QString>("weekday");
        QTest::addColumn<QString>("month");
        QTest::newRow("1st") << QDate(2026, 3, 1) << QStringLiteral("1") << QStringLiteral("1")
                             << QStringLiteral("Sonntag") << QStringLiteral("März");
        QTest::newRow("7th") << QDate(2026, 1, 7) << QStringLiteral("7") << QStringLiteral("1")
                             << QStringLiteral("Mittwoch") << QStringLiteral("Januar");
        QTest::newRow("8th") << QDate(2026, 12, 8) << QStringLiteral("8") << QStringLiteral("2")
                             << QStringLiteral("Dienstag") << QStringLiteral("Dezember");
        QTest::newRow("28th") << QDate(2026, 2, 28) << QStringLiteral("28") << QStringLiteral("4")
                              << QStringLiteral("Samstag") << QStringLiteral("Februar");
        QTest::newRow("29th") << QDate(2026, 10, 29) << QStringLiteral("29") << QStringLiteral("5")
                              << QStringLiteral("Donnerstag") << QStringLiteral("Oktober");
        QTest::newRow("31st") << QDate(2026, 8, 31) << QStringLiteral("31") << QStringLiteral("5")
                              << QStringLiteral("Montag") << QStringLiteral("August");
    }

    void today()
    {
        QFETCH(QDate, today);
        QFETCH(QString, day);
        QFETCH(QString, week);
        QFETCH(QString, weekday);
        QFETCH(QString, month);
        QCOMPARE(weekOfMonthToday(today.day()), week);
        const TodayDefaults d = todayDefaults(today);
        QCOMPARE(d.cmbMonthDayDate, day);
        QCOMPARE(d.cmbYearlyDayDate, day);
        QCOMPARE(d.cmbMonthWDayMulti, week);
        QCOMPARE(d.cmbYearlyWDayMulti, week);
        QCOMPARE(d.cmbMonthWDAy, weekday);
        QCOMPARE(d.cmbYearlyWDay, weekday);
        QCOMPARE(d.cmbYearlyMonthDate, month);
        QCOMPARE(d.cmbYearlyWDayMonth, month);
    }

    void restore_data()
    {
        QTest::addColumn<QString>("startTime");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QDateTime>("start");
        QTest::addColumn<QString>("hour");
        QTest::addColumn<QString>("minute");
        const QDateTime t(QDate(2009, 7, 15), QTime(9, 5, 0));
        QTest::newRow("one-off with its blank")
            << QStringLiteral("2009-07-15 09:05:00 ") << true << t << QStringLiteral("09") << QStringLiteral("05");
        QTest::newRow("series") << QStringLiteral("2009-07-15 09:05:00") << true << t << QStringLiteral("09")
                                << QStringLiteral("05");
        QTest::newRow("seconds become 0")
            << QStringLiteral("2009-07-15 23:55:42") << true << QDateTime(QDate(2009, 7, 15), QTime(23, 55))
            << QStringLiteral("23") << QStringLiteral("55");
        QTest::newRow("not a date") << QStringLiteral("kaputt") << false << QDateTime() << QString() << QString();
        QTest::newRow("month 13") << QStringLiteral("2009-13-15 09:05:00") << false << QDateTime() << QString()
                                  << QString();
        QTest::newRow("leading blank shifts the positions")
            << QStringLiteral(" 2009-07-15 09:05:00") << false << QDateTime() << QString() << QString();
    }

    void restore()
    {
        QFETCH(QString, startTime);
        QFETCH(bool, ok);
        QFETCH(QDateTime, start);
        QFETCH(QString, hour);
        QFETCH(QString, minute);
        const RestoredStart r = restoreStartTime(startTime);
        QCOMPARE(r.ok, ok);
        if (!ok)
            return;
        QCOMPARE(r.DTPickerStart, start);
        QCOMPARE(r.cmbTimeHour, hour);
        QCOMPARE(r.cmbTimeMinutes, minute);
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
        QTest::newRow("February 31 in a common year")
            << QStringLiteral("Februar") << QStringLiteral("31") << QDateTime(QDate(2026, 1, 10), QTime(8, 0)) << 2026
            << 28 << QStringLiteral("28");
        QTest::newRow("February 31 in a leap year")
            << QStringLiteral("Februar") << QStringLiteral("31") << QDateTime(QDate(2028, 1, 10), QTime(8, 0)) << 2028
            << 29 << QStringLiteral("29");
        QTest::newRow("February passed: next year is a leap year")
            << QStringLiteral("Februar") << QStringLiteral("31") << QDateTime(QDate(2027, 11, 22), QTime(10, 0)) << 2028
            << 29 << QStringLiteral("29");
        QTest::newRow("February passed, but the clock is before the send time")
            << QStringLiteral("Februar") << QStringLiteral("31") << QDateTime(QDate(2027, 11, 22), QTime(8, 0)) << 2027
            << 28 << QStringLiteral("28");
        QTest::newRow("date today, send time passed")
            << QStringLiteral("März") << QStringLiteral("05") << QDateTime(QDate(2027, 3, 5), QTime(10, 0)) << 2028
            << 31 << QStringLiteral("05");
        QTest::newRow("date today, send time still to come")
            << QStringLiteral("März") << QStringLiteral("05") << QDateTime(QDate(2027, 3, 5), QTime(8, 0)) << 2027 << 31
            << QStringLiteral("05");
        QTest::newRow("date today at the send time itself")
            << QStringLiteral("März") << QStringLiteral("05") << QDateTime(QDate(2027, 3, 5), QTime(9, 0)) << 2027 << 31
            << QStringLiteral("05");
        QTest::newRow("date tomorrow") << QStringLiteral("März") << QStringLiteral("06")
                                       << QDateTime(QDate(2027, 3, 5), QTime(10, 0)) << 2027 << 31
                                       << QStringLiteral("06");
        QTest::newRow("April 31 is cut to 30")
            << QStringLiteral("April") << QStringLiteral("31") << QDateTime(QDate(2027, 1, 1), QTime(10, 0)) << 2027
            << 30 << QStringLiteral("30");
        QTest::newRow("empty day box keeps its text")
            << QStringLiteral("Mai") << QString() << QDateTime(QDate(2027, 6, 1), QTime(10, 0)) << 2027 << 31
            << QString();
    }

    void yearlyDayList()
    {
        QFETCH(QString, month);
        QFETCH(QString, day);
        QFETCH(QDateTime, now);
        QFETCH(int, year);
        QFETCH(int, count);
        QFETCH(QString, shown);
        const YearlyDayList list = refreshYearlyDayList(month, day, QStringLiteral("09"), QStringLiteral("00"), now);
        QCOMPARE(list.targetYear, year);
        QCOMPARE(list.days.size(), count);
        QCOMPARE(list.days.first(), QStringLiteral("01"));
        QCOMPARE(list.days.at(8), QStringLiteral("09"));
        QCOMPARE(list.days.last(), QString::number(count));
        QCOMPARE(list.cmbYearlyDayDate, shown);
    }

    void changeChecks_data()
    {
        QTest::addColumn<Box>("box");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("listCount");
        QTest::addColumn<QString>("kept");
        QTest::newRow("hour 00") << Box::cmbTimeHour << QStringLiteral("00") << 0 << QStringLiteral("00");
        QTest::newRow("hour 22") << Box::cmbTimeHour << QStringLiteral("22") << 0 << QStringLiteral("22");
        QTest::newRow("hour 23 only from the list") << Box::cmbTimeHour << QStringLiteral("23") << 0 << QString();
        QTest::newRow("hour 24") << Box::cmbTimeHour << QStringLiteral("24") << 0 << QString();
        QTest::newRow("hour -1") << Box::cmbTimeHour << QStringLiteral("-1") << 0 << QString();
        QTest::newRow("hour letters") << Box::cmbTimeHour << QStringLiteral("ab") << 0 << QString();
        QTest::newRow("minutes 55") << Box::cmbTimeMinutes << QStringLiteral("55") << 0 << QStringLiteral("55");
        QTest::newRow("minutes 56") << Box::cmbTimeMinutes << QStringLiteral("56") << 0 << QString();
        QTest::newRow("minutes 7 off the list")
            << Box::cmbTimeMinutes << QStringLiteral("7") << 0 << QStringLiteral("7");
        QTest::newRow("monthly week 1") << Box::cmbMonthWDayMulti << QStringLiteral("1") << 0 << QStringLiteral("1");
        QTest::newRow("monthly week 0") << Box::cmbMonthWDayMulti << QStringLiteral("0") << 0 << QString();
        QTest::newRow("yearly week 5") << Box::cmbYearlyWDayMulti << QStringLiteral("5") << 0 << QStringLiteral("5");
        QTest::newRow("yearly week 6") << Box::cmbYearlyWDayMulti << QStringLiteral("6") << 0 << QString();
        QTest::newRow("day 29 of 28") << Box::cmbYearlyDayDate << QStringLiteral("29") << 28 << QString();
        QTest::newRow("day 28 of 28") << Box::cmbYearlyDayDate << QStringLiteral("28") << 28 << QStringLiteral("28");
        QTest::newRow("day 0") << Box::cmbYearlyDayDate << QStringLiteral("0") << 28 << QString();
        QTest::newRow("any day while the list is empty")
            << Box::cmbYearlyDayDate << QStringLiteral("99") << 0 << QStringLiteral("99");
        QTest::newRow("day letters while the list is empty")
            << Box::cmbYearlyDayDate << QStringLiteral("x") << 0 << QString();
        QTest::newRow("send times 0") << Box::tbSendTimes << QStringLiteral("0") << 0 << QStringLiteral("1");
        QTest::newRow("send times letters") << Box::tbSendTimes << QStringLiteral("x") << 0 << QString();
    }

    void changeChecks()
    {
        QFETCH(Box, box);
        QFETCH(QString, text);
        QFETCH(int, listCount);
        QFETCH(QString, kept);
        QCOMPARE(checkOnChange(box, text, listCount), kept);
    }

    void timeOnLeave_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result");
        QTest::addColumn<bool>("ok");
        QTest::newRow("7") << QStringLiteral("7") << QStringLiteral("07") << true;
        QTest::newRow("07") << QStringLiteral("07") << QStringLiteral("07") << true;
        QTest::newRow("15") << QStringLiteral("15") << QStringLiteral("15") << true;
        QTest::newRow("empty is no number") << QString() << QString() << false;
        QTest::newRow("letter") << QStringLiteral("x") << QStringLiteral("x") << false;
    }

    void timeOnLeave()
    {
        QFETCH(QString, text);
        QFETCH(QString, result);
        QFETCH(bool, ok);
        bool converted = !ok;
        QCOMPARE(ScheduleDialogRules::timeOnLeave(text, &converted), result);
        QCOMPARE(converted, ok);
    }

    void otherLeaveChecks()
    {
        const QDate today(2026, 11, 22);
        QCOMPARE(yearlyDayOnLeave(QString(), today), QStringLiteral("22"));
        QCOMPARE(yearlyDayOnLeave(QStringLiteral("5"), today), QStringLiteral("05"));
        // The zero is added whatever the length, again on every leaving.
        QCOMPARE(yearlyDayOnLeave(QStringLiteral("05"), today), QStringLiteral("005"));
        QCOMPARE(yearlyDayOnLeave(QStringLiteral("005"), today), QStringLiteral("0005"));
        QCOMPARE(yearlyDayOnLeave(QStringLiteral("12"), today), QStringLiteral("12"));

        QCOMPARE(sendTimesOnLeave(QString()), QStringLiteral("1"));
        QCOMPARE(sendTimesOnLeave(QStringLiteral("0")), QStringLiteral("0"));

        bool ok = false;
        const auto warnings = monthDayOnLeave(QStringLiteral("30"), &ok);
        QVERIFY(ok);
        QCOMPARE(warnings.size(), 1);
        QCOMPARE(warnings.first().title, QStringLiteral("Vorsicht"));
        QCOMPARE(warnings.first().text, QStringLiteral("Die SMS wird nur in Monaten mit mind. 30 Tagen versendet"));
        QVERIFY(monthDayOnLeave(QString(), &ok).isEmpty());
        QVERIFY(!ok);
    }

    void datePickers_data()
    {
        QTest::addColumn<QDateTime>("chosen");
        QTest::addColumn<QDateTime>("result");
        const QDateTime now(QDate(2026, 11, 22), QTime(14, 2, 30));
        QTest::newRow("yesterday becomes now") << now.addDays(-1) << now;
        QTest::newRow("today at a later hour becomes now") << QDateTime(now.date(), QTime(18, 0)) << now;
        QTest::newRow("tomorrow stays") << QDateTime(now.date().addDays(1), QTime(1, 0))
                                        << QDateTime(now.date().addDays(1), QTime(1, 0));
    }

    void datePickers()
    {
        QFETCH(QDateTime, chosen);
        QFETCH(QDateTime, result);
        const QDateTime now(QDate(2026, 11, 22), QTime(14, 2, 30));
        QCOMPARE(startPickerChanged(chosen, now), result);
    }

    void stopPicker()
    {
        const QDateTime start(QDate(2026, 11, 22), QTime(14, 5));
        QCOMPARE(stopPickerChanged(QDateTime(QDate(2026, 11, 21), QTime(23, 0)), start), start);
        const QDateTime sameDayEarlier(QDate(2026, 11, 22), QTime(8, 0));
        QCOMPARE(stopPickerChanged(sameDayEarlier, start), sameDayEarlier);
        const QDateTime later(QDate(2027, 1, 1), QTime(0, 0));
        QCOMPARE(stopPickerChanged(later, start), later);
    }
};

QTEST_GUILESS_MAIN(TestScheduleDialogRules)
#include "tst_scheduledialogrules.moc"
