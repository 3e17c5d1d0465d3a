// SPDX-License-Identifier: GPL-3.0-or-later
// The rules of the scheduling dialog: its proposal of a start time, the restore of the last
// one, the day list of the yearly pattern, and the checks each box makes on a change and when
// the focus leaves it. "now" is passed in so that the rules can be tried at any moment.
#pragma once

#include <QDateTime>
#include <QStringList>

namespace ScheduleDialogRules {

// The proposal when the dialog opens without a last start time: the next step of five minutes
// after now. At 23:55 and later it moves to 00:00 of the next day.
struct Proposal
{
    QString cmbTimeHour; // "00" to "23"
    QString cmbTimeMinutes; // "00" to "55"
    QDateTime DTPickerStart;
    QDateTime DTPickerStop;
};
Proposal proposeStartTime(const QDateTime& now);

// The week of the month of a day: 1 to 7 give "1", 29 to 31 give "5".
QString weekOfMonthToday(int day);

// A start time "yyyy-MM-dd hh:mm:ss" taken apart; ok is false for a text that isn't one.
struct RestoredStart
{
    bool ok = false;
    QDateTime DTPickerStart;
    QString cmbTimeHour;
    QString cmbTimeMinutes;
};
RestoredStart restoreStartTime(const QString& startTime);

// The day list of the yearly date pattern for a month: the year it means (next year once the
// date and the send time have passed today), its days "01" upward, and the day box's text, cut to
// the month's last day.
struct YearlyDayList
{
    int targetYear = 0;
    QStringList days;
    QString cmbYearlyDayDate;
};
YearlyDayList refreshYearlyDayList(const QString& cmbYearlyMonthDate, const QString& cmbYearlyDayDate,
                                   const QString& cmbTimeHour, const QString& cmbTimeMinutes, const QDateTime& now);

// The boxes that check their text on every change.
enum class Box { TimeHour, TimeMinutes, WeekNumber, YearlyDay };
// The text kept, or an empty text when the box refuses it. listCount is the item count of the
// yearly day list (0 when it is empty).
QString checkOnChange(Box box, const QString& text, int listCount = 0);

// cmbTimeHour and cmbTimeMinutes when the focus leaves: one character below 10 gets a "0".
QString timeOnLeave(const QString& text);
// cmbYearlyDayDate when the focus leaves: empty takes today's day, a value below 10 gets a "0"
// in front, whatever its length.
QString yearlyDayOnLeave(const QString& text, const QDate& today);

} // namespace ScheduleDialogRules
