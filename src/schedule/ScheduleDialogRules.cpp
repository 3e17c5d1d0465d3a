// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScheduleDialogRules.h"

#include "CronRules.h"
#include "settings/tools.h"

namespace ScheduleDialogRules {
namespace {
QString twoDigits(int value)
{
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

bool numeric(const QString& text, double* value)
{
    bool ok = false;
    *value = tools::NumericValue(text, &ok);
    return ok;
}
} // namespace

Proposal proposeStartTime(const QDateTime& now)
{
    int hour = now.time().hour();
    int minute = now.time().minute() - now.time().minute() % 5;
    QDate day = now.date();
    if (minute >= 55) {
        minute = 0;
        ++hour;
    } else {
        minute += 5;
    }
    // Past the last hour of the list the proposal moves to the next day.
    if (hour > 23) {
        hour = 0;
        day = day.addDays(1);
    }
    Proposal p;
    p.cmbTimeHour = twoDigits(hour);
    p.cmbTimeMinutes = twoDigits(minute);
    p.DTPickerStart = QDateTime(day, now.time());
    p.DTPickerStop = now.addDays(1);
    return p;
}

QString weekOfMonthToday(int day)
{
    return QString::number((day - day % 7) / 7 + (day % 7 != 0 ? 1 : 0));
}

RestoredStart restoreStartTime(const QString& startTime)
{
    RestoredStart r;
    const QDateTime parsed = QDateTime::fromString(startTime.trimmed().left(16), QStringLiteral("yyyy-MM-dd hh:mm"));
    if (!parsed.isValid())
        return r;
    r.ok = true;
    r.DTPickerStart = parsed;
    r.cmbTimeHour = startTime.mid(11, 2);
    r.cmbTimeMinutes = startTime.mid(14, 2);
    return r;
}

YearlyDayList refreshYearlyDayList(const QString& cmbYearlyMonthDate, const QString& cmbYearlyDayDate,
                                   const QString& cmbTimeHour, const QString& cmbTimeMinutes, const QDateTime& now)
{
    YearlyDayList list;
    QString D = cmbYearlyDayDate;
    double d = 0;
    const bool dNumeric = numeric(D, &d);
    const int month = CronRules::monthNumberFromName(cmbYearlyMonthDate).toInt();
    const int year = now.date().year();
    const int c = CronRules::DayOfMonthCount(month, year);
    const int E = dNumeric && c < d ? c : int(d);
    list.targetYear = year;
    const QDate dateThisYear(year, month, qMax(1, E));
    const QTime sendTime(cmbTimeHour.toInt(), cmbTimeMinutes.toInt());
    if (dateThisYear.isValid() && now.date() >= dateThisYear && now.time() > sendTime)
        list.targetYear = year + 1;
    const int c2 = CronRules::DayOfMonthCount(month, list.targetYear);
    if (dNumeric && c2 < d)
        D = QString::number(c2);
    for (int day = 1; day <= c2; ++day)
        list.days.append(twoDigits(day));
    list.cmbYearlyDayDate = D;
    return list;
}

QString checkOnChange(Box box, const QString& text, int listCount)
{
    double v = 0;
    if (!numeric(text, &v))
        return {};
    switch (box) {
    case Box::TimeHour:
        // "23" does not pass here; only the list can give it.
        return v > -1 && v < 23 ? text : QString();
    case Box::TimeMinutes:
        return v > -1 && v < 56 ? text : QString();
    case Box::WeekNumber:
        return v > 0 && v < 6 ? text : QString();
    case Box::YearlyDay:
        return listCount == 0 || (v > 0 && v < listCount + 1) ? text : QString();
    }
    return {};
}

QString timeOnLeave(const QString& text)
{
    double v = 0;
    if (text.size() == 1 && numeric(text, &v) && v < 10)
        return u'0' + text;
    return text;
}

QString yearlyDayOnLeave(const QString& text, const QDate& today)
{
    if (text.isEmpty())
        return QString::number(today.day());
    double v = 0;
    if (numeric(text, &v) && v < 10)
        return u'0' + text;
    return text;
}

} // namespace ScheduleDialogRules
