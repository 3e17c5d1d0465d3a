// SPDX-License-Identifier: GPL-3.0-or-later
// The rules that turn the choices of the scheduling dialog into a CCronjob: start time, cron
// string (minute, hour, day of month, month, weekday) and end.
#pragma once

#include "CCronjob.h"
#include "ScheduleChoices.h"

#include <QList>

namespace CronRules {

// A message box the dialog shows, in the order the rules raise them. All have an OK button.
struct Message
{
    QString title;
    QString text;
    enum class Icon { Information, Critical } icon = Icon::Information;
};

struct Result
{
    CCronjob job;
    // False: the dialog stays open with what the user entered, and the record stays half filled.
    bool success = true;
    QList<Message> messages;
    // A box whose text has to be a number at this point and isn't ("cmbTimeHour",
    // "cmbTimeMinutes", "cmbMonthDayDate", "cmbYearlyWDayMulti"). The rules stop right there, as
    // if the press had been broken off: success is false, and nothing after it is filled in.
    QString invalidControl;
    // The start value with the chosen time of day and 0 seconds, as the dialog keeps it.
    QDateTime DTPickerStart;
    // The box after checkSendTimes, which runs for the daily pattern only.
    QString tbSendTimes;
};

// The press of cbSend.
Result generate(const ScheduleChoices& choices);

// A day and a time of day as the dialog's boxes show them. Where the local clock skips that time
// (the hour lost when summer time begins) the value keeps it all the same, as a reading without a
// time zone: the service gets the time the user chose, never an empty start.
QDateTime wallClock(const QDate& date, const QTime& time);

// Days of a month; 0 for a month or year that makes no date.
int DayOfMonthCount(int month, int year);
// "Januar" to "Dezember" give "1" to "12"; anything else an empty text.
QString monthNumberFromName(const QString& name);
// "Sonntag" gives "0" to "Samstag" "6"; anything else an empty text.
QString weekdayNumberFromName(const QString& name);
// "1" gives "1-7" up to "5" "29-31", by exact text; anything else ("", "01") an empty text.
QString weekRange(const QString& n);
// A numeric text below 1 becomes "1", one of 1 or more stays as it is, anything else becomes empty.
QString checkSendTimes(const QString& tbSendTimes);

// The "Vorsicht" warnings for a day of the month: "29" and "30" ask for months of at least that
// many days, "31" for months of 31 days; other days give none. The day's value is a strict
// conversion: *ok is false (and no warning given) for a text that isn't a number.
QList<Message> monthDayWarning(const QString& cmbMonthDayDate, bool* ok = nullptr);

// The strict conversion of a box's text to a whole number, rounded half to even; false for a text
// that isn't a number or doesn't fit in 16 bits.
bool strictInt(const QString& text, int* value);

} // namespace CronRules
