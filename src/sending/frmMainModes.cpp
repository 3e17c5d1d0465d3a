// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's ways into the other windows: scheduled sending, MultiSMS mode, the
// phonebook beside the window, the options and the help.
#include "frmMain.h"
#include "schedule/frmTimeControl.h"

#include <QPointer>

void frmMain::tbTerminversand_Click()
{
    const std::optional<CCronjob> job = frmTimeControl::showTimeControl(lastStartTime, this);
    if (!job)
        return;
    pendingCronjob = GatewayRequest::Schedule { job->StartTime(), job->CronString(), job->EndTime() };
    QPointer<frmMain> self(this);
    tbSend_Click();
    if (!self)
        return;
    // The schedule goes whether or not the sending went out; the next send is a normal one.
    lastStartTime = pendingCronjob->StartTime;
    pendingCronjob.reset();
}
