// SPDX-License-Identifier: GPL-3.0-or-later
#include "schedule/CronRules.h"

#include <QTest>

using namespace CronRules;
using namespace Qt::StringLiterals;

namespace {
// A series starting 2009-07-15 at 09:05, every day. The picker's own time of day is replaced by
// the two time boxes.
ScheduleChoices series(const QString& sendTimes = u"1"_s)
{
    ScheduleChoices c;
    c.cbRepetition = true;
    c.cmbTimeHour = u"09"_s;
    c.cmbTimeMinutes = u"05"_s;
    c.DTPickerStart = QDateTime(QDate(2009, 7, 15), QTime(14, 33, 12));
    c.DTPickerStop = QDateTime(QDate(2009, 12, 31), QTime(12, 0, 0));
    c.tbSendTimes = sendTimes;
    return c;
}

// The daily series at another time, or as a one-off.
ScheduleChoices withTime(const QString& hour, const QString& minute, bool repeated = true)
{
    ScheduleChoices c = series();
    c.cbRepetition = repeated;
    c.cmbTimeHour = hour;
    c.cmbTimeMinutes = minute;
    return c;
}

ScheduleChoices weekdays(std::initializer_list<bool ScheduleChoices::*> ticked, const QString& sendTimes = u"1"_s)
{
    ScheduleChoices c = series(sendTimes);
    c.obSeriesDayly = false;
    c.obSeriesWorkDay = true;
    for (auto box : ticked)
        c.*box = true;
    return c;
}

ScheduleChoices monthlyOnDay(const QString& day, const QString& sendTimes = u"1"_s)
{
    ScheduleChoices c = series(sendTimes);
    c.obDaly = false;
    c.obMonthly = true;
    c.cmbMonthDayDate = day;
    return c;
}

ScheduleChoices monthlyOnWeekday(const QString& week, const QString& weekday)
{
    ScheduleChoices c = monthlyOnDay(u"01"_s);
    c.obSeriesMonthly = false;
    c.obSeriesWMonth = true;
    c.cmbMonthWDayMulti = week;
    c.cmbMonthWDAy = weekday;
    return c;
}

ScheduleChoices yearlyOnDate(const QString& day, const QString& month, const QString& sendTimes = u"1"_s)
{
    ScheduleChoices c = series(sendTimes);
    c.obDaly = false;
    c.obYearly = true;
    c.cmbYearlyDayDate = day;
    c.cmbYearlyMonthDate = month;
    return c;
}

ScheduleChoices yearlyOnWeekday(const QString& week, const QString& weekday, const QString& month)
{
    ScheduleChoices c = yearlyOnDate(u"01"_s, u"Januar"_s);
    c.obSeriesYear = false;
    c.obSeriesYearWMonth = true;
    c.cmbYearlyWDayMulti = week;
    c.cmbYearlyWDay = weekday;
    c.cmbYearlyWDayMonth = month;
    return c;
}

ScheduleChoices untilStop(ScheduleChoices c)
{
    c.obEndingTime = false;
    c.obEndingDate = true;
    return c;
}
} // namespace

class TestCronRules : public QObject
{
    Q_OBJECT

private slots:
    // The picker's own time of day gives way to the time boxes; the cron string takes them as
    // they stand.
    void generated_data()
    {
        QTest::addColumn<ScheduleChoices>("choices");
        QTest::addColumn<QString>("cron");
        QTest::addColumn<QString>("end");
        const QString daily = u"05 09 * * *"_s;
        QTest::newRow("one-off") << withTime(u"09"_s, u"05"_s, false) << u"0"_s << u"0"_s;
        ScheduleChoices skipped = withTime(u"02"_s, u"30"_s, false);
        skipped.DTPickerStart.setDate(QDate(2026, 3, 29));
        QTest::newRow("one-off in the hour summer time skips") << skipped << u"0"_s << u"0"_s;
        QTest::newRow("every day, after 3 sendings") << series(u"3"_s) << daily << u"3"_s;
        QTest::newRow("Monday, Wednesday, Sunday")
            << weekdays({ &ScheduleChoices::chMon, &ScheduleChoices::chMit, &ScheduleChoices::chSon })
            << u"05 09 * * 0,1,3"_s << u"1"_s;
        QTest::newRow("all seven weekdays") << weekdays(
            { &ScheduleChoices::chSam, &ScheduleChoices::chFre, &ScheduleChoices::chDon, &ScheduleChoices::chMit,
              &ScheduleChoices::chDie, &ScheduleChoices::chMon, &ScheduleChoices::chSon })
                                            << u"05 09 * * 0,1,2,3,4,5,6"_s << u"1"_s;
        QTest::newRow("monthly on 05, until 2009-12-31 12:00:00")
            << untilStop(monthlyOnDay(u"05"_s)) << u"05 09 05 * *"_s << u"2009-12-31 12:00:00"_s;
        ScheduleChoices secondTuesday = monthlyOnWeekday(u"2"_s, u"Dienstag"_s);
        secondTuesday.tbSendTimes = u"12"_s;
        QTest::newRow("monthly, week 2, Dienstag, after 12 sendings")
            << secondTuesday << u"05 09 8-14 * 2"_s << u"12"_s;
        QTest::newRow("yearly, 24 Dezember: no cron string")
            << yearlyOnDate(u"24"_s, u"Dezember"_s, u"2"_s) << QString() << u"2"_s;
        QTest::newRow("yearly, week 5, Freitag, März")
            << yearlyOnWeekday(u"5"_s, u"Freitag"_s, u"März"_s) << u"05 09 29-31 3 5"_s << u"1"_s;
        QTest::newRow("time boxes as they stand") << withTime(u"7"_s, u"0"_s) << u"0 7 * * *"_s << u"1"_s;
        QTest::newRow("typed day 45 goes out as it stands") << monthlyOnDay(u"45"_s) << u"05 09 45 * *"_s << u"1"_s;
        QTest::newRow("default day text 5 has no leading zero") << monthlyOnDay(u"5"_s) << u"05 09 5 * *"_s << u"1"_s;
        QTest::newRow("week 01 is no week: two blanks in a row")
            << monthlyOnWeekday(u"01"_s, u"Montag"_s) << u"05 09  * 1"_s << u"1"_s;
        QTest::newRow("week 6 is no week") << monthlyOnWeekday(u"6"_s, u"Montag"_s) << u"05 09  * 1"_s << u"1"_s;
        QTest::newRow("Sunday is 0, never 7")
            << monthlyOnWeekday(u"3"_s, u"Sonntag"_s) << u"05 09 15-21 * 0"_s << u"1"_s;
        QTest::newRow("December is 12") << yearlyOnWeekday(u"1"_s, u"Samstag"_s, u"Dezember"_s) << u"05 09 1-7 12 6"_s
                                        << u"1"_s;
        QTest::newRow("names are case-sensitive")
            << yearlyOnWeekday(u"4"_s, u"montag"_s, u"januar"_s) << u"05 09 22-28  "_s << u"1"_s;
        QTest::newRow("daily 0.5 sendings become 1") << series(u"0.5"_s) << daily << u"1"_s;
        QTest::newRow("daily 007 stays") << series(u"007"_s) << daily << u"007"_s;
        QTest::newRow("daily letters leave the end empty") << series(u"1a"_s) << daily << QString();
        QTest::newRow("weekdays 0 becomes 1")
            << weekdays({ &ScheduleChoices::chFre }, u"0"_s) << u"05 09 * * 5"_s << u"1"_s;
        QTest::newRow("monthly 0 stays 0") << monthlyOnDay(u"05"_s, u"0"_s) << u"05 09 05 * *"_s << u"0"_s;
        QTest::newRow("yearly letters stay") << yearlyOnDate(u"01"_s, u"Mai"_s, u"abc"_s) << QString() << u"abc"_s;
        ScheduleChoices stop = untilStop(series(u"abc"_s));
        stop.DTPickerStop = QDateTime(QDate(2010, 1, 2), QTime(23, 4, 37));
        QTest::newRow("end date keeps the picker's seconds") << stop << daily << u"2010-01-02 23:04:37"_s;
    }

    void generated()
    {
        QFETCH(ScheduleChoices, choices);
        QFETCH(QString, cron);
        QFETCH(QString, end);
        const Result r = generate(choices);
        QVERIFY(r.success);
        QCOMPARE(r.job.CronString(), cron);
        QCOMPARE(r.job.EndTime(), end);
        const QDate day = choices.DTPickerStart.date();
        const QTime time(choices.cmbTimeHour.toInt(), choices.cmbTimeMinutes.toInt());
        QCOMPARE(r.DTPickerStart.date(), day);
        QCOMPARE(r.DTPickerStart.time(), time);
        // A one-off's start ends in a blank.
        QCOMPARE(r.job.StartTime(),
                 day.toString(u"yyyy-MM-dd "_s) + time.toString(u"hh:mm:ss"_s)
                     + (choices.cbRepetition ? u""_s : u" "_s));
    }

    // A box that must hold a number breaks the press off and names the box, without a message
    // and without a job; no weekday is a critical message, with start and end filled all the
    // same; a warning lets the job be made.
    void refusalsAndWarnings_data()
    {
        QTest::addColumn<ScheduleChoices>("choices");
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        const QString none;
        QTest::newRow("empty hour") << withTime(QString(), u"05"_s) << u"cmbTimeHour"_s << none << none;
        QTest::newRow("minute with a letter, one-off")
            << withTime(u"09"_s, u"5x"_s, false) << u"cmbTimeMinutes"_s << none << none;
        QTest::newRow("hour 24 makes no time") << withTime(u"24"_s, u"05"_s) << u"cmbTimeHour"_s << none << none;
        QTest::newRow("typed day of month") << monthlyOnDay(u"erster"_s) << u"cmbMonthDayDate"_s << none << none;
        QTest::newRow("typed yearly week")
            << yearlyOnWeekday(u"fünf"_s, u"Montag"_s, u"Mai"_s) << u"cmbYearlyWDayMulti"_s << none << none;
        QTest::newRow("no weekday ticked")
            << weekdays({}) << none << u"Terminversand"_s << u"Sie müssen mind. einen Wochentag auswählen"_s;
        QTest::newRow("day 29") << monthlyOnDay(u"29"_s) << none << u"Vorsicht"_s
                                << u"Die SMS wird nur in Monaten mit mind. 29 Tagen versendet"_s;
        QTest::newRow("day 31") << monthlyOnDay(u"31"_s) << none << u"Vorsicht"_s
                                << u"Die SMS wird nur in Monaten mit 31 Tagen versendet"_s;
        QTest::newRow("day 28") << monthlyOnDay(u"28"_s) << none << none << none;
        QTest::newRow("day 45") << monthlyOnDay(u"45"_s) << none << none << none;
        QTest::newRow("monthly fifth week warns not") << monthlyOnWeekday(u"5"_s, u"Montag"_s) << none << none << none;
        QTest::newRow("yearly fifth week")
            << yearlyOnWeekday(u"5"_s, u"Montag"_s, u"Mai"_s) << none << u"Vorsicht"_s
            << u"Die SMS wird nur in Monaten versendet, in denen der Wochentag fünf Mal vorkommt"_s;
        QTest::newRow("yearly fourth week") << yearlyOnWeekday(u"4"_s, u"Montag"_s, u"Mai"_s) << none << none << none;
        ScheduleChoices hiddenDay = monthlyOnDay(u"31"_s);
        hiddenDay.cbRepetition = false;
        QTest::newRow("one-off ignores the hidden pattern boxes") << hiddenDay << none << none << none;
    }

    void refusalsAndWarnings()
    {
        QFETCH(ScheduleChoices, choices);
        QFETCH(QString, control);
        QFETCH(QString, title);
        QFETCH(QString, text);
        const Result r = generate(choices);
        const bool critical = title == u"Terminversand";
        QCOMPARE(r.success, control.isEmpty() && !critical);
        QCOMPARE(r.invalidControl, control);
        QCOMPARE(r.messages.size(), text.isEmpty() ? 0 : 1);
        if (!text.isEmpty()) {
            QCOMPARE(r.messages.first().title, title);
            QCOMPARE(r.messages.first().text, text);
            QCOMPARE(r.messages.first().icon == Message::Icon::Critical, critical);
        }
        if (!r.success) {
            QCOMPARE(r.job.CronString(), QString());
            QCOMPARE(r.job.StartTime(), critical ? u"2009-07-15 09:05:00"_s : QString());
            QCOMPARE(r.job.EndTime(), critical ? u"1"_s : QString());
        }
    }

    void dayOfMonthCount()
    {
        QCOMPARE(DayOfMonthCount(2, 1900), 28);
        QCOMPARE(DayOfMonthCount(2, 2000), 29);
        QCOMPARE(DayOfMonthCount(2, 2008), 29);
        QCOMPARE(DayOfMonthCount(13, 2009), 0);
    }
};

QTEST_GUILESS_MAIN(TestCronRules)
#include "tst_cronrules.moc"
