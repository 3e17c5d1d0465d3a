// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's ways into the other windows: scheduled sending, MultiSMS mode, the
// phonebook beside the window, the options and the help.
#include "MessageSize.h"
#include "NumberRules.h"
#include "account/frmPhonebook.h"
#include "bulk/BulkRun.h"
#include "bulk/frmMultiSMS.h"
#include "bulk/frmMultiSMSLog.h"
#include "frmMain.h"
#include "schedule/frmTimeControl.h"
#include "settings/AddressBook.h"
#include "settings/ProductName.h"
#include "settings/frmAddressBookPicker.h"
#include "toolkit/FieldColors.h"
#include "toolkit/MessageBox.h"
#include "toolkit/SmsTextEdit.h"
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
    // Leaving the mode in the middle of a run would send the remaining rows as single messages
    // (emptied after the first answer) or drop them with the table.
    if (BulkRun::isRunning())
        return;
    if (isMultiSMSMode)
        disableMultiSMS();
    else
        showMultiSMS();
}

void frmMain::showMultiSMS()
{
    // Both write the recipient fields, which the table replaces.
    tbPhonebook->setEnabled(false);
    tbAddressBook->setEnabled(false);
    disposePhonebook();
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
    for (QWidget* counter : std::as_const(m_singleModeCounters))
        counter->hide();
    chkPrivat->setEnabled(false);
    chkPublic->setEnabled(false);
    isMultiSMSMode = true;
    recalcSmsSize();
}

void frmMain::disableMultiSMS()
{
    tbPhonebook->setEnabled(true);
    tbAddressBook->setEnabled(true);
    // It stays loaded with its table for the next time.
    if (frmMultiSMS* side = frmMultiSMS::loaded())
        side->hide();
    cmbName->setEditText(QString());
    cmbName->setEnabled(true);
    txtNummer->setEnabled(true);
    cmbVorwahl->setEnabled(true);
    boxPlatzhalter->hide();
    boxVariablesToolbar->hide();
    for (QWidget* counter : std::as_const(m_singleModeCounters))
        counter->show();
    chkPrivat->setEnabled(true);
    chkPublic->setEnabled(true);
    isMultiSMSMode = false;
    recalcSmsSize();
}

void frmMain::sendBulk(int price)
{
    // The password is held in sessionPassword for the run; it is dropped only after a run.
    frmMultiSMS* editor = frmMultiSMS::instance();
    recalcSmsSize();
    if (MessageSize::isBalanceTooLow(credits, txtAnzahlMultiSMS->text().toDouble(), price)) {
        MessageBox::show(
            this,
            QStringLiteral("Sie verfügen nicht mehr über ein ausreichendes Guthaben um alle Nachrichten zu "
                           "verschicken."),
            MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
        return;
    }
    // The question counts rows, not messages.
    if (MessageBox::show(this,
                         QStringLiteral("Achtung! Sie versenden eine MassenSMS!\r\nWollen Sie die %1 Nachrichten "
                                        "wirklich versenden?")
                             .arg(editor->table().rowCount()),
                         MessageBox::Buttons::YesNo, MessageBox::Icon::Warning, ProductName())
        != MessageBox::Answer::Yes) {
        return;
    }
    QPointer<frmMain> self(this);
    BulkRun::Host host;
    host.messageText = [self] {
        return self ? self->txtSMS->text() : QString();
    };
    host.sendMessage = [self](const QString& number, const QString& text, const QString& name) {
        if (self)
            self->sendMessage(number, text, name);
    };
    host.refreshCredits = [self] {
        if (self)
            self->refreshCredits();
    };
    host.alive = [self] {
        return !self.isNull();
    };
    // The log window comes up over the main window.
    host.placeWindow = [self](QWidget* window) {
        if (self)
            window->move(self->frameGeometry().center() - window->rect().center());
    };
    BulkRun::run(&editor->table(), frmMultiSMSLog::instance(), host);
    if (self)
        sessionPassword.clear();
}

void frmMain::tbPhonebook_Click()
{
    if (isPhonebookOpen)
        disposePhonebook();
    else
        showPhonebook();
}

void frmMain::showPhonebook()
{
    m_phonebook = std::make_unique<frmPhonebook>(this);
    mMoveEvent::placeBeside(this, m_phonebook.get());
    m_phonebook->show();
    isPhonebookOpen = true;
}

void frmMain::disposePhonebook()
{
    // Unloaded later, should this come from inside one of the window's own handlers.
    if (m_phonebook) {
        m_phonebook->hide();
        m_phonebook.release()->deleteLater();
    }
    isPhonebookOpen = false;
}

frmMain::PhonebookEntry frmMain::takePhonebookEntry(const QString& address)
{
    const QStringList parts = QString(address).remove(QStringLiteral("telefon://")).split(u'@');
    if (parts.size() < 2) {
        MessageBox::show(this, QStringLiteral("Es trat ein Fehler beim Auswerten der Telefonnummer auf."),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
        cmbVorwahl->setCurrentIndex(0);
        txtNummer->clear();
        return PhonebookEntry::Failed;
    }
    return takeRecipient(QString(parts.at(0)).replace(QStringLiteral("%20"), QStringLiteral(" ")), parts.at(1));
}

frmMain::PhonebookEntry frmMain::takeRecipient(const QString& name, const QString& internationalNumber)
{
    const NumberRules::PhonebookNumber number = NumberRules::splitPhonebookNumber(internationalNumber);
    cmbName->setEditText(name);
    txtNummer->setText(number.rest);
    chkPrivat->setChecked(false);
    chkPublic->setChecked(false);
    PhonebookEntry result = PhonebookEntry::Taken;
    if (!selectPrefixKey(number.key)) {
        // A prefix the list doesn't know isn't a mobile one: the whole number goes abroad.
        MessageBox::show(this, QStringLiteral("Dies ist keine Mobilfunkvorwahl für ") + number.countryWord + u'.',
                         MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
        selectPrefixKey(QStringLiteral("W"));
        txtNummer->setText(QString(internationalNumber).remove(u'/'));
        result = PhonebookEntry::NotMobile;
    }
    FieldColors::setBackground(cmbVorwahl);
    focusMessage();
    return result;
}

void frmMain::focusMessage()
{
    activateWindow();
    txtSMS->setFocus();
}

void frmMain::tbAddressBook_Click()
{
    QPointer<frmMain> self(this);
    const QList<VCardContact> chosen = frmAddressBookPicker::pick(this);
    if (!self)
        return;
    // The first chosen contact with a number; the fields hold one recipient. Name and number go in
    // as they are: the phonebook's "Name@Nummer" form would cut a name that holds an "@".
    for (const VCardContact& contact : chosen) {
        const QString number = AddressBook::internationalNumber(contact.mobileNumber());
        if (number.isEmpty())
            continue;
        takeRecipient(contact.displayName, number);
        return;
    }
}
