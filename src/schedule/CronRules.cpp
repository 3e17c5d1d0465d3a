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

// A strict conversion: the text must be a number.
bool strictInt(const QString& text, int* value)
{
    bool ok = false;
    const double v = tools::NumericValue(text, &ok);
    *value = int(v);
    return ok;
}
} // namespace

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

QString monthDayWarning(const QString& day, bool* ok)
{
    int v = 0;
    const bool numeric = strictInt(day, &v);
    if (ok)
        *ok = numeric;
    if (!numeric)
        return {};
    if (v > 28 && v < 31)
        return QStringLiteral("Die SMS wird nur in Monaten mit mind. ") + day + QStringLiteral(" Tagen versendet");
    if (v == 31)
        return QStringLiteral("Die SMS wird nur in Monaten mit ") + day + QStringLiteral(" Tagen versendet");
    return {};
}

Result generate(const ScheduleChoices& c)
{
    Result r;
    r.tbSendTimes = c.tbSendTimes;
    // The chosen time of day reaches the start only through the start value itself.
    r.DTPickerStart = QDateTime(c.DTPickerStart.date(), QTime(c.cmbTimeHour.toInt(), c.cmbTimeMinutes.toInt(), 0));
    if (!c.cbRepetition) {
        r.job.setStartTime(r.DTPickerStart.toString(Format) + u' ');
        r.job.setCronString(QStringLiteral("0"));
        r.job.setEndTime(QStringLiteral("0"));
        return r;
    }
    const QString M = c.cmbTimeMinutes;
    const QString H = c.cmbTimeHour;
    const QString prefix = M + u' ' + H + u' ';
    switch (c.pattern) {
    case ScheduleChoices::Pattern::Daily:
        r.tbSendTimes = checkSendTimes(c.tbSendTimes);
        if (!c.obSeriesWorkDay) {
            r.job.setCronString(prefix + QStringLiteral("* * *"));
        } else {
            QStringList days;
            const std::array<bool, 7> ticked = { c.chSon, c.chMon, c.chDie, c.chMit, c.chDon, c.chFre, c.chSam };
            for (size_t i = 0; i < ticked.size(); ++i) {
                if (ticked[i])
                    days.append(QString::number(i));
            }
            if (days.isEmpty()) {
                r.messages.append({ QStringLiteral("Terminversand"),
                                    QStringLiteral("Sie müssen mind. einen Wochentag auswählen"),
                                    Message::Icon::Error });
                r.success = false;
            } else {
                r.job.setCronString(prefix + QStringLiteral("* * ") + days.join(u','));
            }
        }
        break;
    case ScheduleChoices::Pattern::Monthly:
        if (!c.obSeriesWMonth) {
            const QString warning = monthDayWarning(c.cmbMonthDayDate);
            if (!warning.isEmpty())
                r.messages.append({ QStringLiteral("Vorsicht"), warning, Message::Icon::Information });
            r.job.setCronString(prefix + c.cmbMonthDayDate + QStringLiteral(" * *"));
        } else {
            r.job.setCronString(prefix + weekRange(c.cmbMonthWDayMulti) + QStringLiteral(" * ")
                                + weekdayNumberFromName(c.cmbMonthWDAy));
        }
        break;
    case ScheduleChoices::Pattern::Yearly:
        if (!c.obSeriesYearWMonth) {
            // The yearly date pattern leaves the cron string empty; the service gets an empty
            // "&cronjobstring=".
        } else {
            int week = 0;
            if (strictInt(c.cmbYearlyWDayMulti, &week) && week == 5) {
                r.messages.append({ QStringLiteral("Vorsicht"),
                                    QStringLiteral("Die SMS wird nur in Monaten versendet, in denen der Wochentag fünf "
                                                   "Mal vorkommt"),
                                    Message::Icon::Information });
            }
            r.job.setCronString(prefix + weekRange(c.cmbYearlyWDayMulti) + u' '
                                + monthNumberFromName(c.cmbYearlyWDayMonth) + u' '
                                + weekdayNumberFromName(c.cmbYearlyWDay));
        }
        break;
    }
    r.job.setStartTime(r.DTPickerStart.toString(Format));
    r.job.setEndTime(c.obEndingDate ? c.DTPickerStop.toString(Format) : r.tbSendTimes);
    return r;
}

} // namespace CronRules
