// SPDX-License-Identifier: GPL-3.0-or-later
#include "schedule/CronRules.h"

#include <QTest>

using namespace CronRules;
using Pattern = ScheduleChoices::Pattern;

Q_DECLARE_METATYPE(CronRules::ScheduleChoices)

namespace {
ScheduleChoices base()
{
    ScheduleChoices c;
    c.cmbTimeHour = QStringLiteral("09");
    c.cmbTimeMinutes = QStringLiteral("05");
    c.DTPickerStart = QDateTime(QDate(2009, 7, 15), QTime(14, 33, 12));
    c.DTPickerStop = QDateTime(QDate(2009, 12, 31), QTime(12, 0, 0));
    c.tbSendTimes = QStringLiteral("1");
    c.cbRepetition = true;
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
        const QString series = QStringLiteral("2009-07-15 09:05:00");

        ScheduleChoices oneOff = base();
        oneOff.cbRepetition = false;
        QTest::newRow("one-off") << oneOff << "2009-07-15 09:05:00 "
                                 << "0"
                                 << "0";

        ScheduleChoices daily = base();
        daily.tbSendTimes = QStringLiteral("3");
        QTest::newRow("every day, 3 sendings") << daily << series << "05 09 * * *"
                                               << "3";

        ScheduleChoices weekdays = base();
        weekdays.obSeriesWorkDay = true;
        weekdays.chMon = weekdays.chMit = weekdays.chSon = true;
        QTest::newRow("Monday, Wednesday, Sunday") << weekdays << series << "05 09 * * 0,1,3"
                                                   << "1";

        ScheduleChoices all = base();
        all.obSeriesWorkDay = true;
        all.chSon = all.chMon = all.chDie = all.chMit = all.chDon = all.chFre = all.chSam = true;
        QTest::newRow("all seven weekdays") << all << series << "05 09 * * 0,1,2,3,4,5,6"
                                            << "1";

        ScheduleChoices monthly = base();
        monthly.pattern = Pattern::Monthly;
        monthly.cmbMonthDayDate = QStringLiteral("05");
        monthly.obEndingDate = true;
        QTest::newRow("monthly on 05 until a date") << monthly << series << "05 09 05 * *"
                                                    << "2009-12-31 12:00:00";

        ScheduleChoices nth = base();
        nth.pattern = Pattern::Monthly;
        nth.obSeriesWMonth = true;
        nth.cmbMonthWDayMulti = QStringLiteral("2");
        nth.cmbMonthWDAy = QStringLiteral("Dienstag");
        nth.tbSendTimes = QStringLiteral("12");
        QTest::newRow("monthly, second Tuesday") << nth << series << "05 09 8-14 * 2"
                                                 << "12";

        ScheduleChoices yearly = base();
        yearly.pattern = Pattern::Yearly;
        yearly.cmbYearlyDayDate = QStringLiteral("24");
        yearly.cmbYearlyMonthDate = QStringLiteral("Dezember");
        yearly.tbSendTimes = QStringLiteral("2");
        QTest::newRow("yearly on a date leaves the cron string empty") << yearly << series << ""
                                                                       << "2";

        ScheduleChoices yearlyNth = base();
        yearlyNth.pattern = Pattern::Yearly;
        yearlyNth.obSeriesYearWMonth = true;
        yearlyNth.cmbYearlyWDayMulti = QStringLiteral("5");
        yearlyNth.cmbYearlyWDay = QStringLiteral("Freitag");
        yearlyNth.cmbYearlyWDayMonth = QStringLiteral("März");
        yearlyNth.tbSendTimes = QStringLiteral("2");
        QTest::newRow("yearly, fifth Friday in March") << yearlyNth << series << "05 09 29-31 3 5"
                                                       << "2";
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
    }

    void messages_data()
    {
        QTest::addColumn<ScheduleChoices>("choices");
        QTest::addColumn<bool>("success");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        ScheduleChoices none = base();
        none.obSeriesWorkDay = true;
        QTest::newRow("no weekday ticked") << none << false << "Terminversand"
                                           << "Sie müssen mind. einen Wochentag auswählen";
        for (const char* day : { "29", "30" }) {
            ScheduleChoices m = base();
            m.pattern = Pattern::Monthly;
            m.cmbMonthDayDate = QString::fromLatin1(day);
            QTest::newRow(day) << m << true << "Vorsicht"
                               << QStringLiteral("Die SMS wird nur in Monaten mit mind. %1 Tagen versendet")
                                      .arg(QString::fromLatin1(day));
        }
        ScheduleChoices m31 = base();
        m31.pattern = Pattern::Monthly;
        m31.cmbMonthDayDate = QStringLiteral("31");
        QTest::newRow("31") << m31 << true << "Vorsicht"
                            << "Die SMS wird nur in Monaten mit 31 Tagen versendet";
        for (const char* day : { "28", "01", "45" }) {
            ScheduleChoices m = base();
            m.pattern = Pattern::Monthly;
            m.cmbMonthDayDate = QString::fromLatin1(day);
            QTest::newRow(day) << m << true << ""
                               << "";
        }
        ScheduleChoices fifth = base();
        fifth.pattern = Pattern::Monthly;
        fifth.obSeriesWMonth = true;
        fifth.cmbMonthWDayMulti = QStringLiteral("5");
        fifth.cmbMonthWDAy = QStringLiteral("Montag");
        QTest::newRow("monthly fifth week: no warning") << fifth << true << ""
                                                        << "";
    }

    void messages()
    {
        QFETCH(ScheduleChoices, choices);
        QFETCH(bool, success);
        QFETCH(QString, title);
        QFETCH(QString, text);
        const Result r = generate(choices);
        QCOMPARE(r.success, success);
        QCOMPARE(r.messages.size(), text.isEmpty() ? 0 : 1);
        if (!text.isEmpty()) {
            QCOMPARE(r.messages.first().title, title);
            QCOMPARE(r.messages.first().text, text);
        }
    }

    void oddCronFields()
    {
        ScheduleChoices m = base();
        m.pattern = Pattern::Monthly;
        m.cmbMonthDayDate = QStringLiteral("45");
        QCOMPARE(generate(m).job.CronString(), QStringLiteral("05 09 45 * *"));
        m.obSeriesWMonth = true;
        m.cmbMonthWDayMulti = QStringLiteral("01");
        m.cmbMonthWDAy = QStringLiteral("Montag");
        QCOMPARE(generate(m).job.CronString(), QStringLiteral("05 09  * 1"));
    }

    void sendTimes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result");
        QTest::newRow("0") << "0"
                           << "1";
        QTest::newRow("-3") << "-3"
                            << "1";
        QTest::newRow("1") << "1"
                           << "1";
        QTest::newRow("007 stays") << "007"
                                   << "007";
        QTest::newRow("letters") << "abc"
                                 << "";
        QTest::newRow("empty") << ""
                               << "";
    }

    void sendTimes()
    {
        QFETCH(QString, text);
        QFETCH(QString, result);
        QCOMPARE(checkSendTimes(text), result);
        ScheduleChoices daily = base();
        daily.tbSendTimes = text;
        QCOMPARE(generate(daily).job.EndTime(), result);
    }

    void helpers()
    {
        QCOMPARE(DayOfMonthCount(2, 2008), 29);
        QCOMPARE(DayOfMonthCount(2, 2009), 28);
        QCOMPARE(DayOfMonthCount(13, 2009), 0);
        QCOMPARE(DayOfMonthCount(12, 2009), 31);
        QCOMPARE(monthNumberFromName(QStringLiteral("März")), QStringLiteral("3"));
        QCOMPARE(monthNumberFromName(QStringLiteral("Dezember")), QStringLiteral("12"));
        QCOMPARE(monthNumberFromName(QStringLiteral("Maerz")), QString());
        QCOMPARE(weekdayNumberFromName(QStringLiteral("Sonntag")), QStringLiteral("0"));
        QCOMPARE(weekdayNumberFromName(QStringLiteral("Samstag")), QStringLiteral("6"));
        QCOMPARE(weekRange(QStringLiteral("5")), QStringLiteral("29-31"));
        QCOMPARE(weekRange(QStringLiteral("01")), QString());
    }
};

QTEST_GUILESS_MAIN(TestCronRules)
#include "tst_cronrules.moc"
