// SPDX-License-Identifier: GPL-3.0-or-later
// The choices of the scheduling dialog at the press of cbSend, each named after the control that
// holds it, so that the dialog only has to copy its controls in. The defaults are those of a
// freshly opened dialog.
#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>

struct ScheduleChoices
{
    // Ticked: a series; unticked: a one-off sending.
    bool cbRepetition = false;

    // The series pattern, one of three.
    bool obDaly = true;
    bool obMonthly = false;
    bool obYearly = false;

    // Daily: every day, or on the ticked weekdays.
    bool obSeriesDayly = true;
    bool obSeriesWorkDay = false;
    bool chSon = false;
    bool chMon = false;
    bool chDie = false;
    bool chMit = false;
    bool chDon = false;
    bool chFre = false;
    bool chSam = false;

    // Monthly: on a day of the month, or on the nth weekday.
    bool obSeriesMonthly = true;
    bool obSeriesWMonth = false;
    QString cmbMonthDayDate; // "01" to "31", or what was typed
    QString cmbMonthWDayMulti; // week number "1" to "5"
    QString cmbMonthWDAy; // weekday name

    // Yearly: on a date, or on the nth weekday of a month.
    bool obSeriesYear = true;
    bool obSeriesYearWMonth = false;
    QString cmbYearlyDayDate; // day
    QString cmbYearlyMonthDate; // month name
    QString cmbYearlyWDayMulti; // week number
    QString cmbYearlyWDay; // weekday name
    QString cmbYearlyWDayMonth; // month name

    // The time of day, two digits each as listed.
    QString cmbTimeHour;
    QString cmbTimeMinutes;

    QDateTime DTPickerStart;
    QDateTime DTPickerStop;

    // The end of a series: after a number of sendings, or on a date.
    bool obEndingTime = true;
    bool obEndingDate = false;
    QString tbSendTimes = QStringLiteral("1");
};

Q_DECLARE_METATYPE(ScheduleChoices)
