// SPDX-License-Identifier: GPL-3.0-or-later
// The rules of the scheduling dialog: the items of its lists, its proposal of a start time, the
// restore of the last one, the day list of the yearly pattern, and the checks each box makes on a
// change and when the focus leaves it. "now" is passed in, so the window hands over Clock::now()
// and the rules can be tried at any moment.
#pragma once

#include "CronRules.h"

#include <QDateTime>
#include <QStringList>

namespace ScheduleDialogRules {

// The items of the lists.
QStringList hourItems(); // cmbTimeHour: "00" to "23"
QStringList minuteItems(); // cmbTimeMinutes: "00" to "55" in steps of five
QStringList weekNumberItems(); // cmbMonthWDayMulti, cmbYearlyWDayMulti: "1" to "5"
QStringList monthDayItems(); // cmbMonthDayDate: "01" to "31"
QStringList weekdayItems(); // cmbMonthWDAy, cmbYearlyWDay: "Montag" first
QStringList monthItems(); // cmbYearlyMonthDate, cmbYearlyWDayMonth: "Januar" to "Dezember"

// The proposal when the dialog opens without a last start time: the next step of five minutes
// after now, and the end one day after now. From 23:55 on the next step is 00:00 of the next
// day, so the start picker moves to that day as well (the list of hours has no 24).
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

// What the pattern boxes show when the dialog opens: today's day without a leading zero, its
// week of the month, the current month and today's weekday.
struct TodayDefaults
{
    QString cmbMonthDayDate;
    QString cmbYearlyDayDate;
    QString cmbMonthWDayMulti;
    QString cmbYearlyWDayMulti;
    QString cmbMonthWDAy;
    QString cmbYearlyWDay;
    QString cmbYearlyMonthDate;
    QString cmbYearlyWDayMonth;
};
TodayDefaults todayDefaults(const QDate& today);

// The last start time ("yyyy-MM-dd hh:mm:ss", with or without the blank of a one-off sending)
// taken apart by position, seconds 0. The end picker is left as it is. A text that doesn't
// make a date and time gives ok false, and the dialog keeps its own values.
struct RestoredStart
{
    bool ok = false;
    QDateTime DTPickerStart;
    QString cmbTimeHour;
    QString cmbTimeMinutes;
};
RestoredStart restoreStartTime(const QString& startTime);

// The day list of the yearly date pattern for the chosen month: the year it means (the next one
// once the date has come this year and the clock has passed the send time), its days "01"
// upward, and the day box's text, cut to the last day of the month in that year.
struct YearlyDayList
{
    int targetYear = 0;
    QStringList days;
    QString cmbYearlyDayDate;
};
YearlyDayList refreshYearlyDayList(const QString& cmbYearlyMonthDate, const QString& cmbYearlyDayDate,
                                   const QString& cmbTimeHour, const QString& cmbTimeMinutes, const QDateTime& now);

// The boxes that check their text on every change (cmbMonthDayDate checks nothing then).
enum class Box { cmbTimeHour, cmbTimeMinutes, cmbMonthWDayMulti, cmbYearlyWDayMulti, cmbYearlyDayDate, tbSendTimes };
// The text the box keeps, or an empty text when it refuses it. yearlyDayCount is the number of
// items in the list of cmbYearlyDayDate (0 while it is empty). cmbTimeHour refuses "23": only the
// list can give it.
QString checkOnChange(Box box, const QString& text, int yearlyDayCount = 0);

// cmbTimeHour and cmbTimeMinutes when the focus leaves: one character with a value below 10 gets
// a "0" in front. The text is converted strictly: for one that isn't a number *ok is false and
// the text comes back unchanged.
QString timeOnLeave(const QString& text, bool* ok = nullptr);
// cmbYearlyDayDate when the focus leaves: empty takes today's day; a value below 10 gets a "0" in
// front whatever its length, so "05" becomes "005".
QString yearlyDayOnLeave(const QString& cmbYearlyDayDate, const QDate& today);
// cmbMonthDayDate when the focus leaves: the same "Vorsicht" warnings as at the press of cbSend
// (CronRules::monthDayWarning, with its strict conversion).
QList<CronRules::Message> monthDayOnLeave(const QString& cmbMonthDayDate, bool* ok = nullptr);
// tbSendTimes when the focus leaves: an empty box becomes "1".
QString sendTimesOnLeave(const QString& tbSendTimes);

// DTPickerStart changed by the user: a day before now (today included, as now has a time of day)
// becomes now itself.
QDateTime startPickerChanged(const QDateTime& DTPickerStart, const QDateTime& now);
// DTPickerStop changed by the user: a day before that of DTPickerStart takes its value.
QDateTime stopPickerChanged(const QDateTime& DTPickerStop, const QDateTime& DTPickerStart);

} // namespace ScheduleDialogRules
