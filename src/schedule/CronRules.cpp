// SPDX-License-Identifier: GPL-3.0-or-later
#include "CronRules.h"

#include "settings/tools.h"

#include <array>

namespace CronRules {
namespace {
const QString Format = QStringLiteral("yyyy-MM-dd hh:mm:ss");

constexpr std::array<const char16_t*, 12> Months
    = { u"Januar", u"Februar", u"März",      u"April",   u"Mai",      u"Juni",
        u"Juli",   u"August",  u"September", u"Oktober", u"November", u"Dezember" };
constexpr std::array<const char16_t*, 7> Weekdays
    = { u"Sonntag", u"Montag", u"Dienstag", u"Mittwoch", u"Donnerstag", u"Freitag", u"Samstag" };

Message vorsicht(const QString& text)
{
    return { QStringLiteral("Vorsicht"), text, Message::Icon::Information };
}

// The ticked weekdays, Sunday first, as "0,1,3".
QString weekdayList(const ScheduleChoices& c)
{
    const std::array<bool, 7> ticked = { c.chSon, c.chMon, c.chDie, c.chMit, c.chDon, c.chFre, c.chSam };
    QStringList days;
    for (size_t i = 0; i < ticked.size(); ++i) {
        if (ticked[i])
            days.append(QString::number(i));
    }
    return days.join(u',');
}
} // namespace

bool strictInt(const QString& text, int* value)
{
    bool ok = false;
    *value = tools::NumericToInt16(text, &ok);
    return ok;
}

int DayOfMonthCount(int month, int year)
{
    const QDate first(year, month, 1);
    if (!first.isValid())
        return 0;
    return first.addMonths(1).addDays(-1).day();
}

QString monthNumberFromName(const QString& name)
{
    for (size_t i = 0; i < Months.size(); ++i) {
        if (name == QString::fromUtf16(Months[i]))
            return QString::number(i + 1);
    }
    return {};
}

QString weekdayNumberFromName(const QString& name)
{
    for (size_t i = 0; i < Weekdays.size(); ++i) {
        if (name == QString::fromUtf16(Weekdays[i]))
            return QString::number(i);
    }
    return {};
}

QString weekRange(const QString& n)
{
    if (n == u"1")
        return QStringLiteral("1-7");
    if (n == u"2")
        return QStringLiteral("8-14");
    if (n == u"3")
        return QStringLiteral("15-21");
    if (n == u"4")
        return QStringLiteral("22-28");
    if (n == u"5")
        return QStringLiteral("29-31");
    return {};
}

QString checkSendTimes(const QString& tbSendTimes)
{
    bool ok = false;
    const double value = tools::NumericValue(tbSendTimes, &ok);
    if (!ok)
        return {};
    return value < 1 ? QStringLiteral("1") : tbSendTimes;
}

QList<Message> monthDayWarning(const QString& cmbMonthDayDate, bool* ok)
{
    int v = 0;
    const bool numeric = strictInt(cmbMonthDayDate, &v);
    if (ok)
        *ok = numeric;
    if (!numeric)
        return {};
    if (v > 28 && v < 31)
        return { vorsicht(QStringLiteral("Die SMS wird nur in Monaten mit mind. ") + cmbMonthDayDate
                          + QStringLiteral(" Tagen versendet")) };
    if (v == 31)
        return { vorsicht(QStringLiteral("Die SMS wird nur in Monaten mit ") + cmbMonthDayDate
                          + QStringLiteral(" Tagen versendet")) };
    return {};
}

QDateTime wallClock(const QDate& date, const QTime& time)
{
    const QDateTime local(date, time);
    return local.isValid() || !date.isValid() || !time.isValid() ? local : QDateTime(date, time, Qt::UTC);
}

Result generate(const ScheduleChoices& c)
{
    Result r;
    r.tbSendTimes = c.tbSendTimes;
    r.DTPickerStart = c.DTPickerStart;
    const auto fail = [&r](const QString& control) {
        r.success = false;
        r.invalidControl = control;
        return r;
    };

    // The chosen time of day reaches the start only through the start value itself.
    int hour = 0;
    int minute = 0;
    if (!strictInt(c.cmbTimeHour, &hour) || hour < 0 || hour > 23)
        return fail(QStringLiteral("cmbTimeHour"));
    if (!strictInt(c.cmbTimeMinutes, &minute) || minute < 0 || minute > 59)
        return fail(QStringLiteral("cmbTimeMinutes"));
    r.DTPickerStart = wallClock(c.DTPickerStart.date(), QTime(hour, minute, 0));

    if (!c.cbRepetition) {
        r.job.setStartTime(r.DTPickerStart.toString(Format) + u' ');
        r.job.setCronString(QStringLiteral("0"));
        r.job.setEndTime(QStringLiteral("0"));
        return r;
    }

    // Minute and hour as the boxes show them, with their leading zeros.
    const QString prefix = c.cmbTimeMinutes + u' ' + c.cmbTimeHour + u' ';
    if (c.obDaly && (c.obSeriesDayly || c.obSeriesWorkDay))
        r.tbSendTimes = checkSendTimes(c.tbSendTimes);

    if (c.obDaly && c.obSeriesDayly) {
        r.job.setCronString(prefix + QStringLiteral("* * *"));
    } else if (c.obDaly && c.obSeriesWorkDay) {
        const QString days = weekdayList(c);
        if (days.isEmpty()) {
            r.messages.append({ QStringLiteral("Terminversand"),
                                QStringLiteral("Sie müssen mind. einen Wochentag auswählen"),
                                Message::Icon::Critical });
            r.success = false;
        } else {
            r.job.setCronString(prefix + QStringLiteral("* * ") + days);
        }
    } else if (c.obMonthly && c.obSeriesMonthly) {
        bool numeric = false;
        r.messages.append(monthDayWarning(c.cmbMonthDayDate, &numeric));
        if (!numeric)
            return fail(QStringLiteral("cmbMonthDayDate"));
        r.job.setCronString(prefix + c.cmbMonthDayDate + QStringLiteral(" * *"));
    } else if (c.obMonthly && c.obSeriesWMonth) {
        // No warning here, not even for the fifth week.
        r.job.setCronString(prefix + weekRange(c.cmbMonthWDayMulti) + QStringLiteral(" * ")
                            + weekdayNumberFromName(c.cmbMonthWDAy));
    } else if (c.obYearly && c.obSeriesYear) {
        // A yearly date has no cron string: the service gets an empty "&cronjobstring=" and
        // settles the series from the start time.
    } else if (c.obYearly && c.obSeriesYearWMonth) {
        int week = 0;
        if (!strictInt(c.cmbYearlyWDayMulti, &week))
            return fail(QStringLiteral("cmbYearlyWDayMulti"));
        if (week == 5) {
            r.messages.append(vorsicht(
                QStringLiteral("Die SMS wird nur in Monaten versendet, in denen der Wochentag fünf Mal vorkommt")));
        }
        r.job.setCronString(prefix + weekRange(c.cmbYearlyWDayMulti) + u' ' + monthNumberFromName(c.cmbYearlyWDayMonth)
                            + u' ' + weekdayNumberFromName(c.cmbYearlyWDay));
    }

    r.job.setStartTime(r.DTPickerStart.toString(Format));
    if (c.obEndingTime)
        r.job.setEndTime(r.tbSendTimes);
    else if (c.obEndingDate)
        r.job.setEndTime(c.DTPickerStop.toString(Format));
    return r;
}

} // namespace CronRules
