// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's road of one SMS: the click on tbSend, the request to the gateway, its answer,
// the guard timer, and the balance and version queries.
#include "GatewayAnswer.h"
#include "GatewayRequest.h"
#include "MessageSize.h"
#include "NumberRules.h"
#include "SendRecord.h"
#include "SendRecorder.h"
#include "Version.h"
#include "account/frmLogin.h"
#include "account/frmNoInternet.h"
#include "bulk/frmMultiSMSLog.h"
#include "frmMain.h"
#include "settings/CUrlStore.h"
#include "settings/ProductName.h"
#include "settings/cOptionen.h"
#include "toolkit/FieldColors.h"
#include "toolkit/Inet.h"
#include "toolkit/MessageBox.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QEventLoop>
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
    if (m_sending->isRunning())
        return;
    if (!validateInput())
        return;
    // A number on the stop list gets nothing: no question, no entry in the list of recipients.
    if (!isMultiSMSMode && (!takeStopList() || numberIsStopped()))
        return;
    takeSessionPassword();
    txtSMS_Change();
    if (isMultiSMSMode) {
        sendBulk();
        return;
    }
    const QString refusal = SendingSession::balanceRefusal(credits, txtAnzahlSMS->text().toDouble(),
                                                           MessageSize::smsOptionsOf(Options()), false);
    if (!refusal.isEmpty()) {
        MessageBox::show(this, refusal, MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
        return;
    }
    recordAs(false);
    mru.Add(cmbName->currentText() + QLatin1Char(';') + selectedPrefixKey() + QLatin1Char('-') + txtNummer->text());
    mru.StoreSettings();
    QPointer<frmMain> self(this);
    sendSingle();
    if (!self)
        return;
    FillListCombo();
    sessionPassword.clear();
}

void frmMain::takeSessionPassword()
{
    sessionPassword
        = Options().kennwort().isEmpty() ? frmLogin::askForPassword(Options().Username(), this) : Options().kennwort();
}

bool frmMain::takeStopList()
{
    m_stopList = StopList::load();
    if (m_stopList.sharedFileError().isEmpty())
        return true;
    MessageBox::show(this,
                     m_stopList.sharedFileError()
                         + QStringLiteral("\r\n\r\nEs wird keine SMS versendet, solange die Sperrliste nicht "
                                          "gelesen werden kann."),
                     MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
    return false;
}

bool frmMain::numberIsStopped()
{
    // An unknown prefix is told later, as it always was.
    const NumberRules::SendNumber number = NumberRules::sendNumber(selectedPrefixKey(), txtNummer->text());
    if (!number.ok || !m_stopList.contains(number.number))
        return false;
    MessageBox::show(this,
                     QStringLiteral("Die Nummer %1 steht auf der Sperrliste und erhält keine SMS.").arg(number.number),
                     MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
    return true;
}

void frmMain::recordAs(bool bulk)
{
    const cOptionen& o = Options();
    using Road = SendRecord::Road;
    m_recorder->setRoad(o.xmlIsServerUsed()  ? Road::HandOff
                            : bulk           ? Road::Bulk
                            : pendingCronjob ? Road::Scheduled
                                             : Road::Single);
    m_recorder->setPrice(MessageSize::updateCost(MessageSize::smsOptionsOf(o), bulk ? QString() : selectedPrefixKey(),
                                                 bulk ? QString() : txtNummer->text()));
}

void frmMain::recordFailed()
{
    MessageBox::show(this,
                     QStringLiteral("Das Versandprotokoll kann nicht geschrieben werden: %1\r\nDie SMS werden "
                                    "trotzdem versendet; sie stehen dann nicht im Protokoll.")
                         .arg(m_record->lastError()),
                     MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
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

SendingSession::Send frmMain::currentSend() const
{
    SendingSession::Send send;
    send.password = sessionPassword;
    send.isMultiSMSMode = isMultiSMSMode;
    send.chkPrivat = checkBoxValue(chkPrivat);
    send.chkPublic = checkBoxValue(chkPublic);
    send.schedule = pendingCronjob;
    send.stopList = m_stopList;
    return send;
}

void frmMain::sendMessage(const QString& number, const QString& text, const QString& name)
{
    const int message = m_sending->sendMessage(currentSend(), number, text, name);
    // Each part waits for the answer before it, while the window goes on taking events, answers
    // among them; the send returns once the last part is on its way.
    QPointer<frmMain> self(this);
    if (m_lastHandedOver >= message)
        return;
    QEventLoop loop;
    connect(m_sending, &SendingSession::messageHandedOver, &loop, [&loop, message](int done) {
        if (done >= message)
            loop.quit();
    });
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    loop.exec();
}

void frmMain::sendingDelivered(const SendingSession::Delivery& delivery)
{
    if (delivery.handOff) {
        handOffDone(delivery);
        return;
    }
    if (delivery.declined) {
        // The user kept the part back; the guard timer still tells of it.
        if (delivery.run == 0)
            setHourglass(false);
        return;
    }
    // A run's rows are the log window's.
    if (delivery.run > 0)
        return;
    if (!delivery.answered) {
        // A single send shows nothing here, its guard timer tells the user; but a gateway whose
        // certificate isn't trusted got nothing, the password neither, and waiting would only
        // hide why.
        if (delivery.certificateRefused && !isMultiSMSMode) {
            tm->stop();
            setHourglass(false);
            MessageBox::show(this, QStringLiteral("Die SMS wurde nicht versendet.\r\n") + delivery.failure,
                             MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
        }
        return;
    }
    if (isMultiSMSMode) {
        // An answer that comes in MultiSMS mode goes to the log, and nothing else happens.
        frmMultiSMSLog::instance()->logAnswer(delivery.answer);
        return;
    }
    showGatewayAnswer(delivery.answer);
}

void frmMain::handOffDone(const SendingSession::Delivery& delivery)
{
    const cOptionen& o = Options();
    const bool failed = delivery.state != SendOutcome::State::Sent;
    // Nothing is lost: the fields keep the message, and the user learns where it stuck; in a bulk
    // run the log says which row failed.
    if (failed && delivery.run == 0)
        MessageBox::show(this, delivery.failure, MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
    // Counted in any case; but a hand-off that failed is never reported as done.
    const GatewayRequest::HandOffMessage done = GatewayRequest::serverHandOffDone(
        handOffCount, txtAnzahlSMS->text(), o.xmlIsServerUsed(), o.xmlSingleUser(), o.xmlGroupUser());
    handOffCount = done.handOffCount;
    if (done.show && !failed)
        MessageBox::show(this, done.text);
    setHourglass(false);
}

void frmMain::showGatewayAnswer(const QString& body)
{
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
        ? FieldColors::warningTextColour(this->palette())
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
