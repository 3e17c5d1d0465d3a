// SPDX-License-Identifier: GPL-3.0-or-later
// The scheduling dialog at any state the user can leave it in: every tick box, option and list
// box (an item of its list or a typed text) and the date pickers come from the input, and the
// press of cbSend and the checks of the boxes run on them.
#include "FuzzCheck.h"
#include "schedule/CronRules.h"
#include "schedule/ScheduleDialogRules.h"

using namespace ScheduleDialogRules;

namespace {
const QString Format = QStringLiteral("yyyy-MM-dd hh:mm:ss");

// The items of the list boxes, made once: each list is built anew per call, which took a good
// part of each input.
struct Items
{
    QStringList hours = hourItems();
    QStringList minutes = minuteItems();
    QStringList weekNumbers = weekNumberItems();
    QStringList monthDays = monthDayItems();
    QStringList weekdays = weekdayItems();
    QStringList months = monthItems();
};

const Items& items()
{
    static const Items lists;
    return lists;
}

// A date and time the pickers can hold.
QDateTime dateTime(FuzzedDataProvider& input)
{
    static const qint64 first = QDate(1752, 9, 14).toJulianDay();
    static const qint64 last = QDate(9999, 12, 31).toJulianDay();
    const QDate date = QDate::fromJulianDay(input.ConsumeIntegralInRange<qint64>(first, last));
    const QTime time = QTime(0, 0).addSecs(input.ConsumeIntegralInRange<int>(0, 86399));
    return QDateTime(date, time);
}

ScheduleChoices choices(FuzzedDataProvider& input)
{
    ScheduleChoices c;
    c.cbRepetition = input.ConsumeBool();
    // Option buttons come in groups of which one is on, but the rules must also stand a state
    // in which none is.
    const int pattern = input.ConsumeIntegralInRange(0, 3);
    c.obDaly = pattern == 0;
    c.obMonthly = pattern == 1;
    c.obYearly = pattern == 2;
    c.obSeriesDayly = input.ConsumeBool();
    c.obSeriesWorkDay = !c.obSeriesDayly;
    for (bool* day : { &c.chSon, &c.chMon, &c.chDie, &c.chMit, &c.chDon, &c.chFre, &c.chSam })
        *day = input.ConsumeBool();
    c.obSeriesMonthly = input.ConsumeBool();
    c.obSeriesWMonth = !c.obSeriesMonthly;
    c.obSeriesYear = input.ConsumeBool();
    c.obSeriesYearWMonth = !c.obSeriesYear;
    c.obEndingTime = input.ConsumeBool();
    c.obEndingDate = !c.obEndingTime;
    c.DTPickerStart = dateTime(input);
    c.DTPickerStop = dateTime(input);

    c.cmbMonthDayDate = fuzz::listOrTyped(input, items().monthDays);
    c.cmbMonthWDayMulti = fuzz::listOrTyped(input, items().weekNumbers);
    c.cmbMonthWDAy = fuzz::listOrTyped(input, items().weekdays);
    c.cmbYearlyDayDate = fuzz::listOrTyped(input, items().monthDays);
    c.cmbYearlyMonthDate = fuzz::listOrTyped(input, items().months);
    c.cmbYearlyWDayMulti = fuzz::listOrTyped(input, items().weekNumbers);
    c.cmbYearlyWDay = fuzz::listOrTyped(input, items().weekdays);
    c.cmbYearlyWDayMonth = fuzz::listOrTyped(input, items().months);
    c.cmbTimeHour = fuzz::listOrTyped(input, items().hours);
    c.cmbTimeMinutes = fuzz::listOrTyped(input, items().minutes);
    c.tbSendTimes = fuzz::field(input, 3);
    return c;
}

void checkPress(const ScheduleChoices& c)
{
    const CronRules::Result r = CronRules::generate(c);
    if (!r.invalidControl.isEmpty()) {
        FUZZ_CHECK(!r.success);
        return;
    }
    // The start keeps its day and takes the chosen time with 0 seconds.
    FUZZ_CHECK(r.DTPickerStart.isValid());
    FUZZ_CHECK(r.DTPickerStart.date() == c.DTPickerStart.date());
    FUZZ_CHECK(r.DTPickerStart.time().second() == 0);
    const CCronjob& job = r.job;
    if (!c.cbRepetition) {
        FUZZ_CHECK(r.success && r.messages.isEmpty());
        FUZZ_CHECK(job.StartTime() == r.DTPickerStart.toString(Format) + u' ');
        FUZZ_CHECK(job.CronString() == u"0" && job.EndTime() == u"0");
        return;
    }
    FUZZ_CHECK(job.StartTime() == r.DTPickerStart.toString(Format));
    if (c.obEndingTime)
        FUZZ_CHECK(job.EndTime() == r.tbSendTimes);
    else
        FUZZ_CHECK(job.EndTime() == c.DTPickerStop.toString(Format));
    const bool noWeekday = !(c.chSon || c.chMon || c.chDie || c.chMit || c.chDon || c.chFre || c.chSam);
    // The one refusal: a series on chosen weekdays without a weekday.
    FUZZ_CHECK(r.success == !(c.obDaly && c.obSeriesWorkDay && noWeekday));
    for (const CronRules::Message& m : r.messages)
        FUZZ_CHECK((m.icon == CronRules::Message::Icon::Critical) == !r.success);
    // A series names minute and hour first, as the boxes show them.
    if (!job.CronString().isEmpty())
        FUZZ_CHECK(job.CronString().startsWith(c.cmbTimeMinutes + u' ' + c.cmbTimeHour + u' '));
}

void checkBoxes(const ScheduleChoices& c, const QDateTime& now, FuzzedDataProvider& input)
{
    const QString typed = fuzz::field(input, 16);
    const int yearlyDayCount = input.ConsumeIntegralInRange(0, 31);
    for (const Box box : { Box::cmbTimeHour, Box::cmbTimeMinutes, Box::cmbMonthWDayMulti, Box::cmbYearlyWDayMulti,
                           Box::cmbYearlyDayDate }) {
        const QString kept = checkOnChange(box, typed, yearlyDayCount);
        FUZZ_CHECK(kept.isEmpty() || kept == typed);
    }
    const QString sendTimes = checkOnChange(Box::tbSendTimes, typed);
    FUZZ_CHECK(sendTimes.isEmpty() || sendTimes == typed || sendTimes == u"1");

    bool ok = false;
    const QString time = timeOnLeave(typed, &ok);
    FUZZ_CHECK(time == typed || (ok && time == u'0' + typed));
    FUZZ_CHECK(!yearlyDayOnLeave(typed, now.date()).isEmpty());
    monthDayOnLeave(typed);
    FUZZ_CHECK(!sendTimesOnLeave(typed).isEmpty());

    const RestoredStart restored = restoreStartTime(typed + c.cmbTimeHour);
    if (restored.ok) {
        FUZZ_CHECK(restored.DTPickerStart.isValid());
        FUZZ_CHECK(restored.cmbTimeHour.size() == 2 && restored.cmbTimeMinutes.size() == 2);
    }

    const YearlyDayList list
        = refreshYearlyDayList(c.cmbYearlyMonthDate, c.cmbYearlyDayDate, c.cmbTimeHour, c.cmbTimeMinutes, now);
    const int year = now.date().year();
    FUZZ_CHECK(list.targetYear == year || list.targetYear == year + 1);
    const int month = CronRules::monthNumberFromName(c.cmbYearlyMonthDate).toInt();
    FUZZ_CHECK(list.days.size() == CronRules::DayOfMonthCount(month, list.targetYear));
    FUZZ_CHECK(list.days.isEmpty() == (month == 0));

    const Proposal proposal = proposeStartTime(now);
    FUZZ_CHECK(items().hours.contains(proposal.cmbTimeHour));
    FUZZ_CHECK(items().minutes.contains(proposal.cmbTimeMinutes));
    FUZZ_CHECK(proposal.DTPickerStart.date() >= now.date());

    const TodayDefaults today = todayDefaults(now.date());
    FUZZ_CHECK(items().months.contains(today.cmbYearlyMonthDate));
    FUZZ_CHECK(items().weekdays.contains(today.cmbMonthWDAy));
    FUZZ_CHECK(items().weekNumbers.contains(today.cmbMonthWDayMulti));

    const QDateTime start = startPickerChanged(c.DTPickerStart, now);
    FUZZ_CHECK(start == now || start == c.DTPickerStart);
    FUZZ_CHECK(stopPickerChanged(c.DTPickerStop, start).date() >= start.date());
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const ScheduleChoices c = choices(input);
    const QDateTime now = dateTime(input);
    checkPress(c);
    checkBoxes(c, now, input);
    return 0;
}
