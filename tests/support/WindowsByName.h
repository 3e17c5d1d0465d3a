// SPDX-License-Identifier: GPL-3.0-or-later
// The program's windows as tests name them, opened beside the harness's main window: the main
// window itself, its side windows, and the dialogs a test keeps in owned.
#pragma once

#include "MainWindowHarness.h"
#include "account/frmFirstTime.h"
#include "account/frmLogin.h"
#include "bulk/frmMultiSMS.h"
#include "bulk/frmMultiSMSLog.h"
#include "schedule/frmTimeControl.h"
#include "sending/frmSentSms.h"
#include "settings/frmOptionen.h"
#include "settings/frmSignaturen.h"

#include <QAbstractButton>

#include <memory>

// The window named (its object name); nullptr for a name not known here.
inline QWidget* openWindow(MainWindowHarness& harness, const QString& name, std::unique_ptr<QWidget>& owned)
{
    frmMain* main = harness.main() ? harness.main() : harness.loadMain();
    if (name == u"frmMain")
        return main;
    if (name == u"frmMultiSMS") {
        harness.child<QAbstractButton>("tbMultiSMS")->click();
        return frmMultiSMS::loaded();
    }
    if (name == u"frmMultiSMSLog")
        return frmMultiSMSLog::instance();
    if (name == u"frmOptionen")
        owned = std::make_unique<frmOptionen>(main);
    else if (name == u"frmTimeControl")
        owned = std::make_unique<frmTimeControl>(QString(), main);
    else if (name == u"frmFirstTime")
        owned = std::make_unique<frmFirstTime>();
    else if (name == u"frmSignaturen")
        owned = std::make_unique<frmSignaturen>(main);
    else if (name == u"frmLogin")
        owned = std::make_unique<frmLogin>(QStringLiteral("demo@quellbote.test"), main);
    else if (name == u"frmSentSms")
        owned = std::make_unique<frmSentSms>(main->sendRecord());
    else
        return nullptr;
    return owned.get();
}
