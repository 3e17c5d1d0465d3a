// SPDX-License-Identifier: GPL-3.0-or-later
#include "schedule/ScheduleDialogRules.h"

#include <QTest>

using namespace ScheduleDialogRules;

class TestScheduleDialogRules : public QObject
{
    Q_OBJECT

private slots:
    void proposal_data()
    {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QString>("hour");
        QTest::addColumn<QString>("minute");
        QTest::addColumn<QDate>("day");
        const QDate d(2026, 11, 22);
        QTest::newRow("14:02") << QDateTime(d, QTime(14, 2)) << "14"
                               << "05" << d;
        QTest::newRow("14:00") << QDateTime(d, QTime(14, 0)) << "14"
                               << "05" << d;
        QTest::newRow("14:55") << QDateTime(d, QTime(14, 55)) << "15"
                               << "00" << d;
        QTest::newRow("09:31") << QDateTime(d, QTime(9, 31)) << "09"
                               << "35" << d;
        QTest::newRow("23:57 moves to the next day") << QDateTime(d, QTime(23, 57)) << "00"
                                                     << "00" << d.addDays(1);
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
        QCOMPARE(p.DTPickerStart.date(), day);
        QCOMPARE(p.DTPickerStop, now.addDays(1));
    }

    void weekOfMonth()
    {
        const QList<QPair<int, QString>> cases
            = { { 1, QStringLiteral("1") },  { 7, QStringLiteral("1") },  { 8, QStringLiteral("2") },
                { 28, QStringLiteral("4") }, { 29, QStringLiteral("5") }, { 31, QStringLiteral("5") } };
        for (const auto& [day, week] : cases)
            QCOMPARE(weekOfMonthToday(day), week);
    }

    void restore()
    {
        const RestoredStart r = restoreStartTime(QStringLiteral("2009-07-15 09:05:00 "));
        QVERIFY(r.ok);
        QCOMPARE(r.DTPickerStart, QDateTime(QDate(2009, 7, 15), QTime(9, 5, 0)));
        QCOMPARE(r.cmbTimeHour, QStringLiteral("09"));
        QCOMPARE(r.cmbTimeMinutes, QStringLiteral("05"));
        QVERIFY(!restoreStartTime(QStringLiteral("kaputt")).ok);
    }

    void yearlyDayList_data()
    {
        QTest::addColumn<QString>("month");
        QTest::addColumn<QString>("day");
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("shown");
        QTest::newRow("February 31 in a common year")
            << "Februar"
            << "31" << QDateTime(QDate(2026, 1, 10), QTime(8, 0)) << 2026 << 28 << "28";
        QTest::newRow("February 31 in a leap year")
            << "Februar"
            << "31" << QDateTime(QDate(2028, 1, 10), QTime(8, 0)) << 2028 << 29 << "29";
        QTest::newRow("date passed today, send time passed")
            << "März"
            << "05" << QDateTime(QDate(2027, 3, 5), QTime(10, 0)) << 2028 << 31 << "05";
        QTest::newRow("date today, send time still to come")
            << "März"
            << "05" << QDateTime(QDate(2027, 3, 5), QTime(8, 0)) << 2027 << 31 << "05";
        QTest::newRow("February passed: next year is a leap year")
            << "Februar"
            << "31" << QDateTime(QDate(2027, 11, 22), QTime(10, 0)) << 2028 << 29 << "29";
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
        QCOMPARE(list.cmbYearlyDayDate, shown);
    }

    void changeChecks_data()
    {
        QTest::addColumn<int>("box");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("listCount");
        QTest::addColumn<QString>("kept");
        QTest::newRow("hour 22") << int(Box::TimeHour) << "22" << 0 << "22";
        QTest::newRow("hour 23 refused") << int(Box::TimeHour) << "23" << 0 << "";
        QTest::newRow("hour 24 refused") << int(Box::TimeHour) << "24" << 0 << "";
        QTest::newRow("hour letters") << int(Box::TimeHour) << "ab" << 0 << "";
        QTest::newRow("minutes 55") << int(Box::TimeMinutes) << "55" << 0 << "55";
        QTest::newRow("minutes 56") << int(Box::TimeMinutes) << "56" << 0 << "";
        QTest::newRow("week 5") << int(Box::WeekNumber) << "5" << 0 << "5";
        QTest::newRow("week 0") << int(Box::WeekNumber) << "0" << 0 << "";
        QTest::newRow("week 6") << int(Box::WeekNumber) << "6" << 0 << "";
        QTest::newRow("day 29 of 28") << int(Box::YearlyDay) << "29" << 28 << "";
        QTest::newRow("day 28 of 28") << int(Box::YearlyDay) << "28" << 28 << "28";
        QTest::newRow("day with no list") << int(Box::YearlyDay) << "99" << 0 << "99";
    }

    void changeChecks()
    {
        QFETCH(int, box);
        QFETCH(QString, text);
        QFETCH(int, listCount);
        QFETCH(QString, kept);
        QCOMPARE(checkOnChange(Box(box), text, listCount), kept);
    }

    void leaveChecks()
    {
        QCOMPARE(timeOnLeave(QStringLiteral("7")), QStringLiteral("07"));
        QCOMPARE(timeOnLeave(QStringLiteral("07")), QStringLiteral("07"));
        QCOMPARE(timeOnLeave(QStringLiteral("15")), QStringLiteral("15"));
        const QDate today(2026, 11, 22);
        QCOMPARE(yearlyDayOnLeave(QString(), today), QStringLiteral("22"));
        QCOMPARE(yearlyDayOnLeave(QStringLiteral("5"), today), QStringLiteral("05"));
        // The leading zero is added whatever the length, again on every leaving.
        QCOMPARE(yearlyDayOnLeave(QStringLiteral("05"), today), QStringLiteral("005"));
        QCOMPARE(yearlyDayOnLeave(QStringLiteral("12"), today), QStringLiteral("12"));
    }
};

QTEST_GUILESS_MAIN(TestScheduleDialogRules)
#include "tst_scheduledialogrules.moc"
