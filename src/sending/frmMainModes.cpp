// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's ways into the other windows: scheduled sending, MultiSMS mode, the
// phonebook beside the window, the options and the help.
#include "MessageSize.h"
#include "NumberRules.h"
#include "account/frmPhonebook.h"
#include "bulk/RunRecord.h"
#include "bulk/frmMultiSMS.h"
#include "bulk/frmMultiSMSLog.h"
#include "frmMain.h"
#include "schedule/frmTimeControl.h"
#include "settings/AddressBook.h"
#include "settings/ProductName.h"
#include "settings/cOptionen.h"
#include "settings/frmAddressBookPicker.h"
#include "toolkit/FieldColors.h"
#include "toolkit/MessageBox.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/mMoveEvent.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEventLoop>
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
    if (m_sending->isRunning())
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
    widenAgain();
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

void frmMain::sendBulk(const QList<int>& only)
{
    // The password is held in sessionPassword for the run; it is dropped only after a run.
    if (!takeStopList())
        return;
    frmMultiSMS* editor = frmMultiSMS::instance();
    recalcSmsSize();
    const QList<RecipientRow> rows = editor->table().rows();
    const int count = only.isEmpty() ? int(rows.size()) : int(only.size());
    // The messages of the rows to send: all of the table's, or as many per row for some.
    const double messages
        = only.isEmpty() ? txtAnzahlMultiSMS->text().toDouble() : txtAnzahlProNachricht->text().toDouble() * count;
    const QString refusal
        = SendingSession::balanceRefusal(credits, messages, MessageSize::smsOptionsOf(Options()), true);
    if (!refusal.isEmpty()) {
        MessageBox::show(this, refusal, MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
        return;
    }
    // The question counts rows, not messages.
    if (MessageBox::show(this,
                         QStringLiteral("Achtung! Sie versenden eine MassenSMS!\r\nWollen Sie die %1 Nachrichten "
                                        "wirklich versenden?")
                             .arg(count),
                         MessageBox::Buttons::YesNo, MessageBox::Icon::Warning, ProductName())
        != MessageBox::Answer::Yes) {
        return;
    }
    frmMultiSMSLog* log = frmMultiSMSLog::instance();
    // The log window comes up over the main window.
    if (!log->isVisible())
        log->move(frameGeometry().center() - log->rect().center());
    log->observe(m_sending);
    connect(log, &frmMultiSMSLog::resendRequested, this, &frmMain::sendRowsAgain, Qt::UniqueConnection);

    // Every row's outcome is kept as the run goes; a run of rows left over goes on with the
    // list's record.
    auto record = std::make_unique<RunRecord>(RunRecord::pathFor(rows));
    const bool goOn = !only.isEmpty() && RunRecord::read(record->path()).exists;
    if (!(goOn ? record->resume() : record->begin(txtSMS->text(), int(rows.size()))))
        record.reset();
    QPointer<frmMain> self(this);
    bool ended = false;
    int run = 0;
    QEventLoop loop;
    // A run that ends at once (no rows, or none with a number) ends inside startRun, before its
    // number is known; no other run is under way then.
    connect(m_sending, &SendingSession::runFinished, &loop, [&](int finished) {
        if (run == 0 || finished == run) {
            ended = true;
            loop.quit();
        }
    });
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    recordAs(true);
    run = m_sending->startRun(currentSend(), rows, only, record.release());
    // The run is one procedure for the window: it returns when the last row is on its way, while
    // the windows stay live for the answers and the button that stops it.
    if (!ended)
        loop.exec();
    if (!self)
        return;
    refreshCredits();
    if (self)
        sessionPassword.clear();
}

void frmMain::sendRowsAgain(const QList<int>& notSent, const QList<int>& unknown)
{
    if (m_sending->isRunning() || !isMultiSMSMode)
        return;
    QList<int> rows = notSent;
    if (!unknown.isEmpty()) {
        // These may have gone out and been billed: sent again only when the user says so.
        const QList<RecipientRow>& table = frmMultiSMS::instance()->table().rows();
        QStringList lines;
        for (const int row : unknown) {
            if (lines.size() == 10) {
                lines.append(QStringLiteral("und %1 weitere").arg(unknown.size() - 10));
                break;
            }
            if (row < table.size())
                lines.append(QStringLiteral("%1 (%2)").arg(table.at(row).Name, table.at(row).Nummer));
        }
        const QString question
            = QStringLiteral("Zu %1 SMS kam keine Antwort; sie wurden möglicherweise trotzdem versendet:\r\n")
                  .arg(unknown.size())
            + lines.join(QStringLiteral("\r\n"))
            + QStringLiteral("\r\n\r\nSollen auch diese SMS noch einmal versendet werden?");
        switch (MessageBox::show(this, question, MessageBox::Buttons::YesNoCancel, MessageBox::Icon::Question,
                                 ProductName())) {
        case MessageBox::Answer::Yes:
            rows += unknown;
            std::sort(rows.begin(), rows.end());
            break;
        case MessageBox::Answer::No:
            break;
        default:
            return;
        }
    }
    if (rows.isEmpty() || !validateInput())
        return;
    takeSessionPassword();
    txtSMS_Change();
    sendBulk(rows);
}

void frmMain::offerToGoOn()
{
    frmMultiSMS* editor = frmMultiSMS::loaded();
    if (!editor || !isMultiSMSMode || m_sending->isBusy())
        return;
    const RunRecord::Contents record = RunRecord::read(RunRecord::pathFor(editor->table().rows()));
    if (!record.interrupted())
        return;
    const QList<int> notSent = record.rowsToSend();
    const QList<int> unknown = record.rowsUnknown();
    if (notSent.isEmpty() && unknown.isEmpty())
        return;
    const int sent = record.rowCount - int(notSent.size()) - int(unknown.size());
    if (MessageBox::show(this,
                         QStringLiteral("Der Versand an diese Liste wurde unterbrochen, bevor er abgeschlossen war: "
                                        "%1 von %2 SMS sind versendet.\r\n\r\nSollen die übrigen %3 SMS jetzt "
                                        "versendet werden? Versendete SMS werden nicht noch einmal gesendet.")
                             .arg(sent)
                             .arg(record.rowCount)
                             .arg(notSent.size() + unknown.size()),
                         MessageBox::Buttons::YesNo, MessageBox::Icon::Question, ProductName())
        != MessageBox::Answer::Yes) {
        return;
    }
    // The rest goes with the text the run began with.
    if (txtSMS->text() != record.text)
        txtSMS->setText(record.text);
    sendRowsAgain(notSent, unknown);
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
        widenAgain();
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
