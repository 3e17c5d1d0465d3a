// SPDX-License-Identifier: GPL-3.0-or-later
#include "schedule/CronRules.h"

#include <QTest>

using namespace CronRules;

namespace {
// A series starting 2009-07-15 at 09:05, after one sending, every day.
ScheduleChoices series()
{
    ScheduleChoices c;
    c.cbRepetition = true;
    c.cmbTimeHour = QStringLiteral("09");
    c.cmbTimeMinutes = QStringLiteral("05");
    // The picker's own time of day is replaced by the two time boxes.
    c.DTPickerStart = QDateTime(QDate(2009, 7, 15), QTime(14, 33, 12));
    c.DTPickerStop = QDateTime(QDate(2009, 12, 31), QTime(12, 0, 0));
    c.tbSendTimes = QStringLiteral("1");
    return c;
}

ScheduleChoices weekdays(std::initializer_list<bool ScheduleChoices::*> ticked)
{
    ScheduleChoices c = series();
    c.obSeriesDayly = false;
    c.obSeriesWorkDay = true;
    for (auto box : ticked)
        c.*box = true;
    return c;
}

ScheduleChoices monthlyOnDay(const QString& day)
{
    ScheduleChoices c = series();
    c.obDaly = false;
    c.obMonthly = true;
    c.cmbMonthDayDate = day;
    return c;
}

ScheduleChoices monthlyOnWeekday(const QString& week, const QString& weekday)
{
    ScheduleChoices c = monthlyOnDay(QStringLiteral("01"));
    c.obSeriesMonthly = false;
    c.obSeriesWMonth = true;
    c.cmbMonthWDayMulti = week;
    c.cmbMonthWDAy = weekday;
    return c;
}

ScheduleChoices yearlyOnDate(const QString& day, const QString& month)
{
    ScheduleChoices c = series();
    c.obDaly = false;
    c.obYearly = true;
    c.cmbYearlyDayDate = day;
    c.cmbYearlyMonthDate = month;
    return c;
}

ScheduleChoices yearlyOnWeekday(const QString& week, const QString& weekday, const QString& month)
{
    ScheduleChoices c = yearlyOnDate(QStringLiteral("01"), QStringLiteral("Januar"));
    c.obSeriesYear = false;
    c.obSeriesYearWMonth = true;
    c.cmbYearlyWDayMulti = week;
    c.cmbYearlyWDay = weekday;
    c.cmbYearlyWDayMonth = month;
    return c;
}

ScheduleChoices withSendTimes(ScheduleChoices c, const QString& times)
{
    c.tbSendTimes = times;
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
    void workedExamples_data()
    {
        QTest::addColumn<ScheduleChoices>("choices");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("cron");
        QTest::addColumn<QString>("end");
        const QString start = QStringLiteral("2009-07-15 09:05:00");

        ScheduleChoices oneOff = series();
        oneOff.cbRepetition = false;
        QTest::newRow("one-off") << oneOff << QStringLiteral("2009-07-15 09:05:00 ") << QStringLiteral("0")
                                 << QStringLiteral("0");
        QTest::newRow("every day, after 3 sendings") << withSendTimes(series(), QStringLiteral("3")) << start
                                                     << QStringLiteral("05 09 * * *") << QStringLiteral("3");
        QTest::newRow("Monday, Wednesday, Sunday, after 1 sending")
            << weekdays({ &ScheduleChoices::chMon, &ScheduleChoices::chMit, &ScheduleChoices::chSon }) << start
            << QStringLiteral("05 09 * * 0,1,3") << QStringLiteral("1");
        QTest::newRow("all seven weekdays, after 1 sending")
            << weekdays({ &ScheduleChoices::chSam, &ScheduleChoices::chFre, &ScheduleChoices::chDon,
                          &ScheduleChoices::chMit, &ScheduleChoices::chDie, &ScheduleChoices::chMon,
                          &ScheduleChoices::chSon })
            << start << QStringLiteral("05 09 * * 0,1,2,3,4,5,6") << QStringLiteral("1");
        QTest::newRow("monthly on 05, until 2009-12-31 12:00:00")
            << untilStop(monthlyOnDay(QStringLiteral("05"))) << start << QStringLiteral("05 09 05 * *")
            << QStringLiteral("2009-12-31 12:00:00");
        QTest::newRow("monthly, week 2, Dienstag, after 12 sendings")
            << withSendTimes(monthlyOnWeekday(QStringLiteral("2"), QStringLiteral("Dienstag")), QStringLiteral("12"))
            << start << QStringLiteral("05 09 8-14 * 2") << QStringLiteral("12");
        QTest::newRow("yearly, 24 Dezember, after 2 sendings")
            << withSendTimes(yearlyOnDate(QStringLiteral("24"), QStringLiteral("Dezember")), QStringLiteral("2"))
            << start << QString() << QStringLiteral("2");
        QTest::newRow("yearly, week 5, Freitag, März, after 2 sendings")
            << withSendTimes(yearlyOnWeekday(QStringLiteral("5"), QStringLiteral("Freitag"), QStringLiteral("März")),
                             QStringLiteral("2"))
            << start << QStringLiteral("05 09 29-31 3 5") << QStringLiteral("2");
    }

    void workedExamples()
    {
        QFETCH(ScheduleChoices, choices);
        QFETCH(QString, start);
        QFETCH(QString, cron);
        QFETCH(QString, end);
        const Result r = generate(choices);
        QVERIFY(r.success);
        QCOMPARE(r.job.StartTime(), start);
        QCOMPARE(r.job.CronString(), cron);
        QCOMPARE(r.job.EndTime(), end);
        QCOMPARE(r.DTPickerStart, QDateTime(QDate(2009, 7, 15), QTime(9, 5, 0)));
    }

    void cronFields_data()
    {
        QTest::addColumn<ScheduleChoices>("choices");
        QTest::addColumn<QString>("cron");
        QTest::newRow("typed day 45 goes out as it stands")
            << monthlyOnDay(QStringLiteral("45")) << QStringLiteral("05 09 45 * *");
        QTest::newRow("default day text 5 has no leading zero")
            << monthlyOnDay(QStringLiteral("5")) << QStringLiteral("05 09 5 * *");
        QTest::newRow("week 01 is no week: two blanks in a row")
            << monthlyOnWeekday(QStringLiteral("01"), QStringLiteral("Montag")) << QStringLiteral("05 09  * 1");
        QTest::newRow("typed week text is not converted")
            << monthlyOnWeekday(QStringLiteral("x"), QStringLiteral("Montag")) << QStringLiteral("05 09  * 1");
        QTest::newRow("unknown weekday leaves the last field empty")
            << monthlyOnWeekday(QStringLiteral("1"), QStringLiteral("Montags")) << QStringLiteral("05 09 1-7 * ");
        QTest::newRow("Sunday is 0, never 7")
            << monthlyOnWeekday(QStringLiteral("3"), QStringLiteral("Sonntag")) << QStringLiteral("05 09 15-21 * 0");
        QTest::newRow("December is 12") << yearlyOnWeekday(QStringLiteral("1"), QStringLiteral("Samstag"),
                                                           QStringLiteral("Dezember"))
                                        << QStringLiteral("05 09 1-7 12 6");
        QTest::newRow("unknown month leaves its field empty")
            << yearlyOnWeekday(QStringLiteral("4"), QStringLiteral("Montag"), QStringLiteral("Maerz"))
            << QStringLiteral("05 09 22-28  1");
        ScheduleChoices singleDigits = series();
        singleDigits.cmbTimeHour = QStringLiteral("7");
        singleDigits.cmbTimeMinutes = QStringLiteral("0");
        QTest::newRow("time boxes as they stand") << singleDigits << QStringLiteral("0 7 * * *");
    }

    void cronFields()
    {
        QFETCH(ScheduleChoices, choices);
        QFETCH(QString, cron);
        const Result r = generate(choices);
        QVERIFY(r.success);
        QCOMPARE(r.job.CronString(), cron);
    }

    void messages_data()
    {
        QTest::addColumn<ScheduleChoices>("choices");
        QTest::addColumn<bool>("success");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("critical");

        QTest::newRow("no weekday ticked") << weekdays({}) << false << QStringLiteral("Terminversand")
                                           << QStringLiteral("Sie müssen mind. einen Wochentag auswählen") << true;
        for (const QString& day : { QStringLiteral("29"), QStringLiteral("30") }) {
            QTest::newRow(qPrintable(QStringLiteral("day ") + day))
                << monthlyOnDay(day) << true << QStringLiteral("Vorsicht")
                << QString(QStringLiteral("Die SMS wird nur in Monaten mit mind. ") + day
                           + QStringLiteral(" Tagen versendet"))
                << false;
        }
        QTest::newRow("day 31") << monthlyOnDay(QStringLiteral("31")) << true << QStringLiteral("Vorsicht")
                                << QStringLiteral("Die SMS wird nur in Monaten mit 31 Tagen versendet") << false;
        for (const QString& day : { QStringLiteral("28"), QStringLiteral("01"), QStringLiteral("45") })
            QTest::newRow(qPrintable(QStringLiteral("day ") + day))
                << monthlyOnDay(day) << true << QString() << QString() << false;
        QTest::newRow("monthly fifth week warns not") << monthlyOnWeekday(QStringLiteral("5"), QStringLiteral("Montag"))
                                                      << true << QString() << QString() << false;
        QTest::newRow("yearly fifth week")
            << yearlyOnWeekday(QStringLiteral("5"), QStringLiteral("Montag"), QStringLiteral("Mai")) << true
            << QStringLiteral("Vorsicht")
            << QStringLiteral("Die SMS wird nur in Monaten versendet, in denen der Wochentag fünf Mal vorkommt")
            << false;
        QTest::newRow("yearly fourth week")
            << yearlyOnWeekday(QStringLiteral("4"), QStringLiteral("Montag"), QStringLiteral("Mai")) << true
            << QString() << QString() << false;
        ScheduleChoices hiddenDay = monthlyOnDay(QStringLiteral("31"));
        hiddenDay.cbRepetition = false;
        QTest::newRow("one-off ignores the hidden pattern boxes")
            << hiddenDay << true << QString() << QString() << false;
    }

    void messages()
    {
        QFETCH(ScheduleChoices, choices);
        QFETCH(bool, success);
        QFETCH(QString, title);
        QFETCH(QString, text);
        QFETCH(bool, critical);
        const Result r = generate(choices);
        QCOMPARE(r.success, success);
        QCOMPARE(r.messages.size(), text.isEmpty() ? 0 : 1);
        if (!text.isEmpty()) {
            QCOMPARE(r.messages.first().title, title);
            QCOMPARE(r.messages.first().text, text);
            QCOMPARE(r.messages.first().icon == Message::Icon::Critical, critical);
        }
    }

    void missingWeekdayStillFillsStartAndEnd()
    {
        const Result r = generate(weekdays({}));
        QVERIFY(!r.success);
        QVERIFY(r.invalidControl.isEmpty());
        QCOMPARE(r.job.CronString(), QString());
        QCOMPARE(r.job.StartTime(), QStringLiteral("2009-07-15 09:05:00"));
        QCOMPARE(r.job.EndTime(), QStringLiteral("1"));
    }

    // A box whose text has to be a number breaks the press off where it is converted.
    void boxesThatMustHoldNumbers_data()
    {
        QTest::addColumn<ScheduleChoices>("choices");
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("warnings");
        ScheduleChoices noHour = series();
        noHour.cmbTimeHour.clear();
        QTest::newRow("empty hour") << noHour << QStringLiteral("cmbTimeHour") << 0;
        ScheduleChoices badMinute = series();
        badMinute.cbRepetition = false;
        badMinute.cmbTimeMinutes = QStringLiteral("5x");
        QTest::newRow("minute with a letter, one-off") << badMinute << QStringLiteral("cmbTimeMinutes") << 0;
        ScheduleChoices lateHour = series();
        lateHour.cmbTimeHour = QStringLiteral("24");
        QTest::newRow("hour 24 makes no time") << lateHour << QStringLiteral("cmbTimeHour") << 0;
        QTest::newRow("typed day of month")
            << monthlyOnDay(QStringLiteral("erster")) << QStringLiteral("cmbMonthDayDate") << 0;
        QTest::newRow("empty day of month") << monthlyOnDay(QString()) << QStringLiteral("cmbMonthDayDate") << 0;
        QTest::newRow("typed yearly week")
            << yearlyOnWeekday(QStringLiteral("fünf"), QStringLiteral("Montag"), QStringLiteral("Mai"))
            << QStringLiteral("cmbYearlyWDayMulti") << 0;
    }

    void boxesThatMustHoldNumbers()
    {
        QFETCH(ScheduleChoices, choices);
        QFETCH(QString, control);
        QFETCH(int, warnings);
        const Result r = generate(choices);
        QVERIFY(!r.success);
        QCOMPARE(r.invalidControl, control);
        QCOMPARE(r.messages.size(), warnings);
        QCOMPARE(r.job.CronString(), QString());
        QCOMPARE(r.job.StartTime(), QString());
        QCOMPARE(r.job.EndTime(), QString());
    }

    // checkSendTimes runs for the daily pattern only; the others take the box as it stands.
    void sendTimes_data()
    {
        QTest::addColumn<ScheduleChoices>("choices");
        QTest::addColumn<QString>("end");
        QTest::newRow("daily 0 becomes 1") << withSendTimes(series(), QStringLiteral("0")) << QStringLiteral("1");
        QTest::newRow("daily -3 becomes 1") << withSendTimes(series(), QStringLiteral("-3")) << QStringLiteral("1");
        QTest::newRow("daily 007 stays") << withSendTimes(series(), QStringLiteral("007")) << QStringLiteral("007");
        QTest::newRow("daily letters leave the end empty")
            << withSendTimes(series(), QStringLiteral("abc")) << QString();
        QTest::newRow("weekdays 0 becomes 1")
            << withSendTimes(weekdays({ &ScheduleChoices::chFre }), QStringLiteral("0")) << QStringLiteral("1");
        QTest::newRow("monthly 0 stays 0")
            << withSendTimes(monthlyOnDay(QStringLiteral("05")), QStringLiteral("0")) << QStringLiteral("0");
        QTest::newRow("yearly letters stay")
            << withSendTimes(yearlyOnDate(QStringLiteral("01"), QStringLiteral("Mai")), QStringLiteral("abc"))
            << QStringLiteral("abc");
        ScheduleChoices stop = untilStop(withSendTimes(series(), QStringLiteral("abc")));
        stop.DTPickerStop = QDateTime(QDate(2010, 1, 2), QTime(23, 4, 37));
        QTest::newRow("end date keeps the picker's seconds") << stop << QStringLiteral("2010-01-02 23:04:37");
    }

    void sendTimes()
    {
        QFETCH(ScheduleChoices, choices);
        QFETCH(QString, end);
        QCOMPARE(generate(choices).job.EndTime(), end);
    }

    void checkSendTimesRule_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result");
        QTest::newRow("0") << QStringLiteral("0") << QStringLiteral("1");
        QTest::newRow("0.5") << QStringLiteral("0.5") << QStringLiteral("1");
        QTest::newRow("1") << QStringLiteral("1") << QStringLiteral("1");
        QTest::newRow("999") << QStringLiteral("999") << QStringLiteral("999");
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("blank") << QStringLiteral(" ") << QString();
        QTest::newRow("1a") << QStringLiteral("1a") << QString();
    }

    void checkSendTimesRule()
    {
        QFETCH(QString, text);
        QFETCH(QString, result);
        QCOMPARE(checkSendTimes(text), result);
    }

    void dayOfMonthCount_data()
    {
        QTest::addColumn<int>("month");
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("days");
        QTest::newRow("February of a leap year") << 2 << 2008 << 29;
        QTest::newRow("February of a common year") << 2 << 2009 << 28;
        QTest::newRow("February 1900") << 2 << 1900 << 28;
        QTest::newRow("February 2000") << 2 << 2000 << 29;
        QTest::newRow("December") << 12 << 2009 << 31;
        QTest::newRow("April") << 4 << 2009 << 30;
        QTest::newRow("month 13") << 13 << 2009 << 0;
        QTest::newRow("month 0") << 0 << 2009 << 0;
    }

    void dayOfMonthCount()
    {
        QFETCH(int, month);
        QFETCH(int, year);
        QFETCH(int, days);
        QCOMPARE(DayOfMonthCount(month, year), days);
    }

    void names_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("month");
        QTest::addColumn<QString>("weekday");
        QTest::newRow("Januar") << QStringLiteral("Januar") << QStringLiteral("1") << QString();
        QTest::newRow("März with its umlaut") << QStringLiteral("März") << QStringLiteral("3") << QString();
        QTest::newRow("Maerz") << QStringLiteral("Maerz") << QString() << QString();
        QTest::newRow("Dezember") << QStringLiteral("Dezember") << QStringLiteral("12") << QString();
        QTest::newRow("lower case") << QStringLiteral("januar") << QString() << QString();
        QTest::newRow("Sonntag") << QStringLiteral("Sonntag") << QString() << QStringLiteral("0");
        QTest::newRow("Mittwoch") << QStringLiteral("Mittwoch") << QString() << QStringLiteral("3");
        QTest::newRow("Samstag") << QStringLiteral("Samstag") << QString() << QStringLiteral("6");
        QTest::newRow("empty") << QString() << QString() << QString();
    }

    void names()
    {
        QFETCH(QString, name);
        QFETCH(QString, month);
        QFETCH(QString, weekday);
        QCOMPARE(monthNumberFromName(name), month);
        QCOMPARE(weekdayNumberFromName(name), weekday);
    }

    void weekRanges_data()
    {
        QTest::addColumn<QString>("week");
        QTest::addColumn<QString>("range");
        QTest::newRow("1") << QStringLiteral("1") << QStringLiteral("1-7");
        QTest::newRow("2") << QStringLiteral("2") << QStringLiteral("8-14");
        QTest::newRow("3") << QStringLiteral("3") << QStringLiteral("15-21");
        QTest::newRow("4") << QStringLiteral("4") << QStringLiteral("22-28");
        QTest::newRow("5") << QStringLiteral("5") << QStringLiteral("29-31");
        QTest::newRow("6") << QStringLiteral("6") << QString();
        QTest::newRow("01 is not 1") << QStringLiteral("01") << QString();
        QTest::newRow("empty") << QString() << QString();
    }

    void weekRanges()
    {
        QFETCH(QString, week);
        QFETCH(QString, range);
        QCOMPARE(weekRange(week), range);
    }
};

QTEST_GUILESS_MAIN(TestCronRules)
#include "tst_cronrules.moc"
