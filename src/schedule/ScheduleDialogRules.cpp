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

QStringList numbered(int first, int last, int step, bool leadingZero)
{
    QStringList items;
    for (int i = first; i <= last; i += step)
        items.append(leadingZero ? twoDigits(i) : QString::number(i));
    return items;
}

bool numeric(const QString& text, double* value)
{
    bool ok = false;
    *value = tools::NumericValue(text, &ok);
    return ok;
}
} // namespace

QStringList hourItems()
{
    return numbered(0, 23, 1, true);
}

QStringList minuteItems()
{
    return numbered(0, 55, 5, true);
}

QStringList weekNumberItems()
{
    return numbered(1, 5, 1, false);
}

QStringList monthDayItems()
{
    return numbered(1, 31, 1, true);
}

QStringList weekdayItems()
{
    return { QStringLiteral("Montag"),     QStringLiteral("Dienstag"), QStringLiteral("Mittwoch"),
             QStringLiteral("Donnerstag"), QStringLiteral("Freitag"),  QStringLiteral("Samstag"),
             QStringLiteral("Sonntag") };
}

QStringList monthItems()
{
    return { QStringLiteral("Januar"),  QStringLiteral("Februar"),  QStringLiteral("März"),
             QStringLiteral("April"),   QStringLiteral("Mai"),      QStringLiteral("Juni"),
             QStringLiteral("Juli"),    QStringLiteral("August"),   QStringLiteral("September"),
             QStringLiteral("Oktober"), QStringLiteral("November"), QStringLiteral("Dezember") };
}

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
    if (hour > 23) {
        hour = 0;
        day = day.addDays(1);
    }
    Proposal p;
    p.cmbTimeHour = twoDigits(hour);
    p.cmbTimeMinutes = twoDigits(minute);
    p.DTPickerStart = CronRules::wallClock(day, now.time());
    p.DTPickerStop = now.addDays(1);
    return p;
}

QString weekOfMonthToday(int day)
{
    return QString::number((day - day % 7) / 7 + (day % 7 != 0 ? 1 : 0));
}

TodayDefaults todayDefaults(const QDate& today)
{
    TodayDefaults d;
    d.cmbMonthDayDate = d.cmbYearlyDayDate = QString::number(today.day());
    d.cmbMonthWDayMulti = d.cmbYearlyWDayMulti = weekOfMonthToday(today.day());
    d.cmbMonthWDAy = d.cmbYearlyWDay = weekdayItems().value(today.dayOfWeek() - 1);
    d.cmbYearlyMonthDate = d.cmbYearlyWDayMonth = monthItems().value(today.month() - 1);
    return d;
}

RestoredStart restoreStartTime(const QString& startTime)
{
    RestoredStart r;
    // Day and time apart, so that a start in the hour summer time skips is restored as well.
    const QDate day = QDate::fromString(startTime.left(10), QStringLiteral("yyyy-MM-dd"));
    const QTime time = QTime::fromString(startTime.mid(10, 6), QStringLiteral(" hh:mm"));
    if (!day.isValid() || !time.isValid())
        return r;
    r.ok = true;
    r.DTPickerStart = CronRules::wallClock(day, time);
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
    // The chosen day this year, cut to the month's length. A day box that holds no day, or a day
    // before the first (however far below, beyond what an int holds), makes no date, and the list
    // is then for the current year.
    const int E = dNumeric && c < d ? c : d < 1 ? 0 : int(d);
    const QDate dateThisYear(year, month, E);
    const QTime sendTime(cmbTimeHour.toInt(), cmbTimeMinutes.toInt());
    list.targetYear = year;
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

QString checkOnChange(Box box, const QString& text, int yearlyDayCount)
{
    if (box == Box::tbSendTimes)
        return CronRules::checkSendTimes(text);
    double v = 0;
    if (!numeric(text, &v))
        return {};
    switch (box) {
    case Box::cmbTimeHour:
        return v > -1 && v < 23 ? text : QString();
    case Box::cmbTimeMinutes:
        return v > -1 && v < 56 ? text : QString();
    case Box::cmbMonthWDayMulti:
    case Box::cmbYearlyWDayMulti:
        return v > 0 && v < 6 ? text : QString();
    case Box::cmbYearlyDayDate:
        return yearlyDayCount == 0 || (v > 0 && v < yearlyDayCount + 1) ? text : QString();
    case Box::tbSendTimes:
        break;
    }
    return text;
}

QString timeOnLeave(const QString& text, bool* ok)
{
    int v = 0;
    const bool isNumber = CronRules::strictInt(text, &v);
    if (ok)
        *ok = isNumber;
    if (isNumber && text.size() == 1 && v < 10)
        return u'0' + text;
    return text;
}

QString yearlyDayOnLeave(const QString& cmbYearlyDayDate, const QDate& today)
{
    if (cmbYearlyDayDate.isEmpty())
        return QString::number(today.day());
    double v = 0;
    if (numeric(cmbYearlyDayDate, &v) && v < 10)
        return u'0' + cmbYearlyDayDate;
    return cmbYearlyDayDate;
}

QList<CronRules::Message> monthDayOnLeave(const QString& cmbMonthDayDate, bool* ok)
{
    return CronRules::monthDayWarning(cmbMonthDayDate, ok);
}

QString sendTimesOnLeave(const QString& tbSendTimes)
{
    return tbSendTimes.isEmpty() ? QStringLiteral("1") : tbSendTimes;
}

QDateTime startPickerChanged(const QDateTime& DTPickerStart, const QDateTime& now)
{
    return QDateTime(DTPickerStart.date(), QTime(0, 0)) < now ? now : DTPickerStart;
}

QDateTime stopPickerChanged(const QDateTime& DTPickerStop, const QDateTime& DTPickerStart)
{
    return DTPickerStop.date() < DTPickerStart.date() ? DTPickerStart : DTPickerStop;
}

} // namespace ScheduleDialogRules
