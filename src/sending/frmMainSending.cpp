// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's road of one SMS: the click on tbSend, the request to the gateway, its answer,
// the guard timer, and the balance and version queries.
#include "GatewayAnswer.h"
#include "GatewayRequest.h"
#include "MessageSize.h"
#include "NumberRules.h"
#include "Version.h"
#include "account/frmLogin.h"
#include "account/frmNoInternet.h"
#include "bulk/BulkRun.h"
#include "bulk/frmMultiSMSLog.h"
#include "frmMain.h"
#include "handoff/xmlServer.h"
#include "settings/CUrlStore.h"
#include "settings/ProductName.h"
#include "settings/cOptionen.h"
#include "toolkit/Inet.h"
#include "toolkit/MessageBox.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>

namespace {
int checkBoxValue(const QCheckBox* box)
{
    switch (box->checkState()) {
    case Qt::Checked:
        return 1;
    case Qt::PartiallyChecked:
        return 2;
    default:
        return 0;
    }
}
} // namespace

bool frmMain::validateInput()
{
    clearWarning();
    for (QWidget* field :
         { static_cast<QWidget*>(cmbName), static_cast<QWidget*>(cmbVorwahl), static_cast<QWidget*>(txtSMS) })
        setMarked(field, false);
    const GatewayRequest::InputCheck check
        = GatewayRequest::validateInput(isMultiSMSMode, selectedPrefixKey(), txtNummer->text(), txtSMS->text());
    if (check.cmbVorwahlMarked)
        setMarked(cmbVorwahl, true);
    if (check.txtNummerMarked)
        setMarked(txtNummer, true);
    if (check.txtSMSMarked)
        setMarked(txtSMS, true);
    if (check.valid)
        return true;
    showWarning(check.warningText);
    MessageBox::show(this, check.messageText, MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
    return false;
}

void frmMain::tbSend_Click()
{
    // A press while a bulk run waits for an answer doesn't start a second one.
    if (BulkRun::isRunning())
        return;
    if (!validateInput())
        return;
    sessionPassword
        = Options().kennwort().isEmpty() ? frmLogin::askForPassword(Options().Username(), this) : Options().kennwort();
    const MessageSize::SmsOptions options = MessageSize::smsOptionsOf(Options());
    const int price = MessageSize::balanceTestPrice(options);
    txtSMS_Change();
    if (isMultiSMSMode) {
        sendBulk(price);
        return;
    }
    if (MessageSize::isBalanceTooLow(credits, txtAnzahlSMS->text().toDouble(), price)) {
        MessageBox::show(this,
                         QStringLiteral("Sie verfügen nicht mehr über ein ausreichendes Guthaben um diese Nachricht "
                                        "zu verschicken."),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
        return;
    }
    mru.Add(cmbName->currentText() + QLatin1Char(';') + selectedPrefixKey() + QLatin1Char('-') + txtNummer->text());
    mru.StoreSettings();
    QPointer<frmMain> self(this);
    sendSingle();
    if (!self)
        return;
    FillListCombo();
    sessionPassword.clear();
}

void frmMain::setHourglass(bool on)
{
    if (on)
        setCursor(Qt::WaitCursor);
    else
        unsetCursor();
}

void frmMain::sendSingle()
{
    tm->setInterval(60000);
    tm->start();
    setHourglass(true);
    const NumberRules::SendNumber number = NumberRules::sendNumber(selectedPrefixKey(), txtNummer->text());
    if (!number.ok) {
        MessageBox::show(this, QStringLiteral("Unbekannte Vorwahl. Die SMS kann nicht gesendet werden."),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
        return;
    }
    QPointer<frmMain> self(this);
    sendMessage(number.number, txtSMS->text(), cmbName->currentText());
    if (self)
        refreshCredits();
}

void frmMain::sendMessage(const QString& number, const QString& text, const QString& name)
{
    QPointer<frmMain> self(this);
    // The parts are cut from this copy; the text box may be emptied by an answer meanwhile.
    const QStringList parts = GatewayRequest::sendMessageParts(text, MessageSize::smsOptionsOf(Options()));
    for (const QString& part : parts) {
        submitMessage(number, part, name);
        if (!self)
            return;
    }
}

void frmMain::submitMessage(const QString& number, const QString& text, const QString& name)
{
    if (Options().xmlIsServerUsed()) {
        // The server folder instead of the gateway: no schedule, no question about the sender.
        handOffToServer(number, text);
        return;
    }
    if (GatewayRequest::asksForSender(Options().isAbsenderkennung(), Options().Absenderkennung())) {
        const auto answer = MessageBox::show(
            this,
            QStringLiteral("Sie haben keinen Absender eingegeben, soll die Nachricht\r\n"
                           "dennoch versendet werden?"),
            MessageBox::Buttons::YesNo, MessageBox::Icon::Question, QStringLiteral("Kein Absendername vorhanden"));
        if (answer != MessageBox::Answer::Yes) {
            setHourglass(false);
            return;
        }
    }
    const GatewayRequest::SendRequest request
        = GatewayRequest::requestFor(Options(), sessionPassword, number, name, text, txtSMS->text(), isMultiSMSMode,
                                     checkBoxValue(chkPrivat), checkBoxValue(chkPublic), pendingCronjob);
    const QString body = GatewayRequest::requestBody(request);

    // Requests go out one after another: this one waits for the one before, while the window
    // goes on taking events, answers among them.
    QPointer<frmMain> self(this);
    while (self && iNet->StillExecuting())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (!self)
        return;
    const QString url = GatewayRequest::requestUrl(pendingCronjob.has_value(), Urls().SendSMS(), Urls().CronSMS());
    m_inFlight = { number, name, BulkRun::currentRow() };
    iNet->Execute(url, QStringLiteral("POST"), body, QStringLiteral("Content-Type: application/x-www-form-urlencoded"));
}

void frmMain::handOffToServer(const QString& number, const QString& text)
{
    const cOptionen& o = Options();
    const xmlServer::WriteResult written = xmlServer::writeJob(o, sessionPassword, number, text);
    const bool failed = !written.ok && !written.error.isEmpty();
    if (failed) {
        // Nothing is lost: the fields keep the message, and the user learns where it stuck; in a
        // bulk run each row that failed says so in the log.
        const QString problem
            = QStringLiteral("Die SMS an %1 konnte nicht an den Quellbote Server übergeben werden: ").arg(number)
            + written.error;
        if (isMultiSMSMode && frmMultiSMSLog::loaded())
            frmMultiSMSLog::loaded()->appendNote(problem);
        else
            MessageBox::show(this, problem, MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
    }
    // Counted in any case; but a hand-off that failed is never reported as done.
    const GatewayRequest::HandOffMessage done = GatewayRequest::serverHandOffDone(
        handOffCount, txtAnzahlSMS->text(), o.xmlIsServerUsed(), o.xmlSingleUser(), o.xmlGroupUser());
    handOffCount = done.handOffCount;
    if (done.show && !failed)
        MessageBox::show(this, done.text);
    setHourglass(false);
}

void frmMain::iNet_StateChanged(int state)
{
    if (state == Inet::icError) {
        // In a bulk run the log says which row didn't go out and why. A single send shows
        // nothing here, its guard timer tells the user; but a gateway whose certificate isn't
        // trusted got nothing, the password neither, and waiting would only hide why.
        if (isMultiSMSMode && frmMultiSMSLog::loaded()) {
            frmMultiSMSLog::loaded()->logFailure(m_inFlight.row, m_inFlight.number, m_inFlight.name,
                                                 iNet->FailureText());
        } else if (iNet->CertificateRefused()) {
            tm->stop();
            setHourglass(false);
            MessageBox::show(this, QStringLiteral("Die SMS wurde nicht versendet.\r\n") + iNet->FailureText(),
                             MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
        }
        return;
    }
    if (state != Inet::icResponseCompleted)
        return;
    QPointer<frmMain> self(this);
    QString body;
    for (QString chunk = iNet->GetChunk(1024); !chunk.isEmpty(); chunk = iNet->GetChunk(1024)) {
        body += chunk;
        QCoreApplication::processEvents();
        if (!self)
            return;
    }
    if (isMultiSMSMode) {
        // In a bulk run the answer goes to the log, and nothing else happens.
        frmMultiSMSLog::instance()->logAnswer(body);
        return;
    }
    const GatewayAnswer::Answer answer = GatewayAnswer::readAnswer(body);
    if (answer.accepted) {
        lastSmsText = txtSMS->text();
        lblReuseText->setToolTip(lastSmsText);
        txtSMS->setText(QString());
        boxReuseLastSMS->show();
        cmbName->setEditText(QString());
        txtNummer->setText(QString());
        setMarked(txtNummer, false);
        clearWarning();
    }
    tm->stop();
    setHourglass(false);
    MessageBox::show(this, answer.message, MessageBox::Buttons::Ok, MessageBox::Icon::Information,
                     QStringLiteral("Antwort des SMS Gateways"));
}

void frmMain::tm_Timer()
{
    // With the server folder no answer ever comes; the timer ticks on without effect.
    if (Options().xmlIsServerUsed())
        return;
    setHourglass(false);
    tm->stop();
    MessageBox::show(this,
                     QStringLiteral("Das SMS Gateway hat auf die Anfrage nicht reagiert.\r\n"
                                    "Mit hoher Wahrscheinlichkeit wurde die Nachricht NICHT versendet."),
                     MessageBox::Buttons::Ok, MessageBox::Icon::Information, ProductName());
}

void frmMain::tmCredits_Timer()
{
    const GatewayAnswer::CreditsTick tick = GatewayAnswer::tmCreditsTick(creditsTicks);
    creditsTicks = tick.creditsTicks;
    if (tick.refresh)
        refreshCredits();
}

void frmMain::refreshCredits()
{
    bool ok = false;
    const QString text = iNet2->OpenURL(Urls().SmsCount() + Options().Username(), &ok).trimmed();
    GatewayAnswer::CreditsState state = ok ? GatewayAnswer::readBalance(text) : GatewayAnswer::noInternetBalance();
    if (!ok && iNet2->CertificateRefused())
        state.caption = QStringLiteral("Zertifikat nicht vertrauenswürdig");
    lblCredits->setText(state.caption);
    lblCredits->setEnabled(state.enabled);
    // The colour of an enabled label; a disabled one ("nicht angemeldet") is drawn greyed.
    QPalette palette = lblCredits->palette();
    const QColor colour = state.colour == GatewayAnswer::CreditsColour::DarkRed
        ? QColor(192, 0, 0)
        : this->palette().color(QPalette::ButtonText);
    for (const QPalette::ColorGroup group : { QPalette::Active, QPalette::Inactive })
        palette.setColor(group, QPalette::WindowText, colour);
    lblCredits->setPalette(palette);
    lblBuyCredits->setVisible(state.buyCreditsVisible);
    credits = state.credits;
}

void frmMain::checkForUpdate()
{
    iNet2->setURL(Urls().CheckVersion());
    QString text;
    while (true) {
        bool ok = false;
        text = iNet2->OpenURL(QString(), &ok);
        if (!ok && iNet2->CertificateRefused()) {
            // The service is there but not to be trusted: no retry helps, the user is told why.
            MessageBox::show(this, iNet2->FailureText(), MessageBox::Buttons::Ok, MessageBox::Icon::Critical,
                             ProductName());
            return;
        }
        if (!ok) {
            // The transfer failed outright: the window comes once, and the start goes on.
            frmNoInternet::showBlocking(this);
            return;
        }
        if (!text.isEmpty())
            break;
        frmNoInternet::showBlocking(this);
    }
    if (!applyVersionAnswer(text))
        frmNoInternet::showBlocking(this);
}

bool frmMain::applyVersionAnswer(const QString& text)
{
    const qint64 local
        = GatewayAnswer::versionNumber(qint16(Version::major), qint16(Version::minor), qint16(Version::revision));
    switch (GatewayAnswer::readVersionAnswer(text, local)) {
    case GatewayAnswer::VersionCheck::UpdateShown:
        lblUpdate->show();
        picUpdate->show();
        return true;
    case GatewayAnswer::VersionCheck::UpdateHidden:
        lblUpdate->hide();
        picUpdate->hide();
        return true;
    case GatewayAnswer::VersionCheck::Failure:
    case GatewayAnswer::VersionCheck::NoAnswer:
        break;
    }
    return false;
}

// iNet2 raises its events inside the blocking fetches of the balance query and the version
// check. A completed fetch is read as a version answer; one that is none (a balance, say)
// changes nothing here, the caller deals with it.
void frmMain::iNet2_StateChanged(int state)
{
    if (state == Inet::icError) {
        lblUpdate->hide();
        return;
    }
    if (state != Inet::icResponseCompleted)
        return;
    QString text;
    for (QString chunk = iNet2->GetChunk(1024); !chunk.isEmpty(); chunk = iNet2->GetChunk(1024))
        text += chunk;
    applyVersionAnswer(text);
}
