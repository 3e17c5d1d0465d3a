// SPDX-License-Identifier: GPL-3.0-or-later
// A scheduled sending as the service takes it: when it starts, the cron pattern that repeats it,
// and when the series ends.
#pragma once

#include <QString>

class CCronjob
{
public:
    QString CronString() const { return m_CronString; }
    void setCronString(const QString& v) { m_CronString = v; }
    QString EndTime() const { return m_EndTime; }
    void setEndTime(const QString& v) { m_EndTime = v; }
    QString StartTime() const { return m_StartTime; }
    void setStartTime(const QString& v) { m_StartTime = v; }

private:
    QString m_CronString;
    QString m_EndTime;
    QString m_StartTime;
};
