// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's ways into the other windows: scheduled sending, MultiSMS mode, the
// phonebook beside the window, the options and the help.
#include "bulk/frmMultiSMS.h"
#include "frmMain.h"
#include "schedule/frmTimeControl.h"
#include "toolkit/FieldColors.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/mMoveEvent.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
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

void frmMain::tbMultiSMS_Click()
{
    if (isMultiSMSMode)
        disableMultiSMS();
    else
        showMultiSMS();
}

void frmMain::showMultiSMS()
{
    tbPhonebook->setEnabled(false);
    cmbName->setCurrentIndex(-1);
    cmbName->setEditText(QStringLiteral("MultiSMS"));
    cmbName->setEnabled(false);
    txtNummer->setEnabled(false);
    txtNummer->clear();
    FieldColors::setMarked(txtNummer, false);
    clearWarning();
    cmbVorwahl->setEnabled(false);
    cmbVorwahl->setCurrentIndex(-1);
    // Hidden first, then placed at the right edge with the main window's top and height, then
    // shown; it belongs to no window, so it can stand anywhere the main window goes.
    frmMultiSMS* side = frmMultiSMS::instance();
    side->hide();
    side->resize(side->width(), height());
    mMoveEvent::placeBeside(this, side);
    side->show();
    boxPlatzhalter->show();
    boxVariablesToolbar->show();
    chkPrivat->setEnabled(false);
    chkPublic->setEnabled(false);
    isMultiSMSMode = true;
    recalcSmsSize();
}

void frmMain::disableMultiSMS()
{
    tbPhonebook->setEnabled(true);
    // It stays loaded with its table for the next time.
    if (frmMultiSMS* side = frmMultiSMS::loaded())
        side->hide();
    cmbName->setEditText(QString());
    cmbName->setEnabled(true);
    txtNummer->setEnabled(true);
    cmbVorwahl->setEnabled(true);
    boxPlatzhalter->hide();
    boxVariablesToolbar->hide();
    chkPrivat->setEnabled(true);
    chkPublic->setEnabled(true);
    isMultiSMSMode = false;
    recalcSmsSize();
}
