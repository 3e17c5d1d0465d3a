// SPDX-License-Identifier: GPL-3.0-or-later
// The rules that turn the choices of the scheduling dialog into a CCronjob: start time, cron
// string (minute, hour, day of month, month, weekday) and end.
#pragma once

#include "CCronjob.h"

#include <QDateTime>
#include <QList>

namespace CronRules {

// The values of the dialog's controls at the press of cbSend, named after them.
struct ScheduleChoices
{
    bool cbRepetition = false;
    enum class Pattern { Daily, Monthly, Yearly } pattern = Pattern::Daily; // obDaly, obMonthly, obYearly
    bool obSeriesWorkDay = false; // otherwise obSeriesDayly
    bool chSon = false, chMon = false, chDie = false, chMit = false, chDon = false, chFre = false, chSam = false;
    bool obSeriesWMonth = false; // otherwise obSeriesMonthly
    QString cmbMonthDayDate;
    QString cmbMonthWDayMulti;
    QString cmbMonthWDAy;
    bool obSeriesYearWMonth = false; // otherwise obSeriesYear
    QString cmbYearlyDayDate;
    QString cmbYearlyMonthDate;
    QString cmbYearlyWDayMulti;
    QString cmbYearlyWDay;
    QString cmbYearlyWDayMonth;
    QString cmbTimeHour;
    QString cmbTimeMinutes;
    QDateTime DTPickerStart;
    QDateTime DTPickerStop;
    bool obEndingDate = false; // otherwise obEndingTime
    QString tbSendTimes;
};

// A message box the dialog shows, in the order the rules raise them.
struct Message
{
    QString title;
    QString text;
    enum class Icon { Information, Error } icon = Icon::Information;
};

struct Result
{
    CCronjob job;
    bool success = true; // false: the dialog stays open
    QList<Message> messages;
    QDateTime DTPickerStart; // the start value with the chosen time, as the dialog keeps it
    QString tbSendTimes; // after checkSendTimes
};

Result generate(const ScheduleChoices& choices);

// Days of a month; 0 for a month or year that makes no date.
int DayOfMonthCount(int month, int year);
// "Januar" to "Dezember" give "1" to "12"; anything else an empty text.
QString monthNumberFromName(const QString& name);
// "Sonntag" gives "0" to "Samstag" "6"; anything else an empty text.
QString weekdayNumberFromName(const QString& name);
// "1" gives "1-7" up to "5" "29-31"; anything else an empty text.
QString weekRange(const QString& n);
// A numeric text below 1 becomes "1", one of 1 or more stays, anything else becomes empty.
QString checkSendTimes(const QString& tbSendTimes);

// The "Vorsicht" warning for a day of the month, if any ("29", "30" and "31").
QString monthDayWarning(const QString& day, bool* ok = nullptr);

} // namespace CronRules
