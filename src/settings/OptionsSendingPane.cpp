// SPDX-License-Identifier: GPL-3.0-or-later
#include "OptionsSendingPane.h"

#include "OptionsDialogRules.h"
#include "cOptionen.h"
#include "sending/MessageSize.h"
#include "sending/SendRecord.h"
#include "toolkit/FieldColors.h"
#include "toolkit/PaneHeading.h"
#include "toolkit/VbColor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

OptionsSendingPane::OptionsSendingPane(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("boxVersandoptionen"));
    auto* grid = new QGridLayout(this);
    grid->addWidget(PaneHeading::make(QStringLiteral("Label5"), QStringLiteral("Versandoptionen"), this), 0, 0, 1, 2);
    const auto check = [this](const char* name, const QString& caption) {
        auto* box = new QCheckBox(caption, this);
        box->setObjectName(QLatin1String(name));
        return box;
    };
    cbVarAbsender = check("cbVarAbsender", QStringLiteral("Absenderkennung verwenden (+4 Credits / SMS )"));
    grid->addWidget(cbVarAbsender, 1, 0, 1, 2);
    lblAbsName = new QLabel(QStringLiteral("Absender"), this);
    lblAbsName->setObjectName(QStringLiteral("lblAbsName"));
    txtAbsender = new QLineEdit(this);
    txtAbsender->setObjectName(QStringLiteral("txtAbsender"));
    txtAbsender->setAccessibleName(QStringLiteral("Absender"));
    lblAbsName->setBuddy(txtAbsender);
    txtAbsender->installEventFilter(this);
    grid->addWidget(lblAbsName, 2, 0);
    grid->addWidget(txtAbsender, 2, 1);

    warnboxAbs = new QWidget(this);
    warnboxAbs->setObjectName(QStringLiteral("warnboxAbs"));
    auto* warn = new QHBoxLayout(warnboxAbs);
    warn->setContentsMargins(0, 0, 0, 0);
    auto* warnboxAbsPic = new QLabel(warnboxAbs);
    warnboxAbsPic->setPixmap(QIcon(QStringLiteral(":/pictures/warning.svg")).pixmap(16, 16));
    warn->addWidget(warnboxAbsPic);
    lblwarnAbs = new QLabel(warnboxAbs);
    lblwarnAbs->setObjectName(QStringLiteral("lblwarnAbs"));
    warn->addWidget(lblwarnAbs, 1);
    warnboxAbs->hide();
    grid->addWidget(warnboxAbs, 3, 1);

    chkLongSMS = check("chkLongSMS", QStringLiteral("als Überlange-SMS verschicken"));
    chkControlEmail = check("chkControlEmail", QStringLiteral("Einlieferung der SMS per eMail bestätigen"));
    chkSmsAntwort
        = check("chkSmsAntwort", QStringLiteral("Antworten auf verschickte SMS empfangen (+1 Credit / SMS )"));
    grid->addWidget(chkLongSMS, 4, 0, 1, 2);
    grid->addWidget(chkControlEmail, 5, 0, 1, 2);
    grid->addWidget(chkSmsAntwort, 6, 0, 1, 2);
    lblKostenDetails = new QLabel(this);
    lblKostenDetails->setObjectName(QStringLiteral("lblKostenDetails"));
    lblKosten = new QLabel(this);
    lblKosten->setObjectName(QStringLiteral("lblKosten"));
    grid->addWidget(lblKostenDetails, 7, 0);
    grid->addWidget(lblKosten, 7, 1);
    // How long the record of what went out is kept on this machine.
    cmbProtokoll = new QComboBox(this);
    cmbProtokoll->setObjectName(QStringLiteral("cmbProtokoll"));
    for (const auto& [caption, days] :
         { std::pair { QStringLiteral("30 Tage"), 30 },
           std::pair { QStringLiteral("90 Tage"), SendRecord::DefaultDays },
           std::pair { QStringLiteral("1 Jahr"), 365 }, std::pair { QStringLiteral("immer"), SendRecord::KeepForever },
           std::pair { QStringLiteral("kein Protokoll führen"), SendRecord::NoRecord } })
        cmbProtokoll->addItem(caption, days);
    auto* lblProtokoll = new QLabel(QStringLiteral("Gesendete SMS &aufbewahren:"), this);
    lblProtokoll->setBuddy(cmbProtokoll);
    cmbProtokoll->setAccessibleName(QStringLiteral("Gesendete SMS aufbewahren"));
    cmbProtokoll->setToolTip(QStringLiteral("Wie lange Zeit, Empfänger, Text und Ergebnis jeder versendeten SMS auf "
                                            "diesem Rechner aufbewahrt werden. Ältere Einträge werden beim Start "
                                            "gelöscht."));
    grid->addWidget(lblProtokoll, 8, 0);
    grid->addWidget(cmbProtokoll, 8, 1, Qt::AlignLeft);
    connect(cmbProtokoll, &QComboBox::currentIndexChanged, this, &OptionsSendingPane::changed);
    grid->setRowStretch(9, 1);
    grid->setColumnStretch(1, 1);

    // Toggled, not clicked: assistive technology toggles as a click does.
    connect(cbVarAbsender, &QCheckBox::toggled, this, &OptionsSendingPane::cbVarAbsender_Click);
    for (QCheckBox* box : { chkLongSMS, chkSmsAntwort }) {
        connect(box, &QCheckBox::toggled, this, [this] {
            emit changed();
            showPrice();
        });
    }
    connect(chkControlEmail, &QCheckBox::toggled, this, &OptionsSendingPane::changed);
    connect(txtAbsender, &QLineEdit::textChanged, this, &OptionsSendingPane::txtAbsender_Change);
}

void OptionsSendingPane::load()
{
    cbVarAbsender->setChecked(Options().isAbsenderkennung());
    txtAbsender->setText(Options().Absenderkennung());
    chkLongSMS->setChecked(Options().isLongSmsEnabled());
    chkControlEmail->setChecked(Options().isControlEmail());
    chkSmsAntwort->setChecked(Options().isAntwortEnabled());
    const int kept = cmbProtokoll->findData(SendRecord::storedRetentionDays());
    cmbProtokoll->setCurrentIndex(kept >= 0 ? kept : cmbProtokoll->findData(SendRecord::DefaultDays));
    cbVarAbsender_Click();
}

void OptionsSendingPane::save() const
{
    Options().setIsAbsenderkennung(cbVarAbsender->isChecked());
    Options().setAbsenderkennung(txtAbsender->text());
    Options().setIsLongSmsEnabled(chkLongSMS->isChecked());
    Options().setIsControlEmail(chkControlEmail->isChecked());
    Options().setIsAntwortEnabled(chkSmsAntwort->isChecked());
    SendRecord::storeRetentionDays(cmbProtokoll->currentData().toInt());
}

void OptionsSendingPane::txtAbsender_Change()
{
    emit changed();
    warnboxAbs->hide();
    FieldColors::setMarked(txtAbsender, false);
    const OptionsDialogRules::SenderCheck check = OptionsDialogRules::checkSender(txtAbsender->text());
    if (check.tooLong) {
        lblwarnAbs->setText(QStringLiteral("max. 11 alphanumerische Zeichen möglich!"));
        warnboxAbs->show();
        FieldColors::setMarked(txtAbsender, true);
    }
    if (check.decidesSave)
        emit saveAllowed(check.saveEnabled);
    // Typing stops at the limit; a longer text already there stays, as it was pasted.
    m_senderMaxLength = check.maxLength;
}

bool OptionsSendingPane::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == txtAbsender && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const QString text = key->text();
        if (text.isEmpty() || key->key() == Qt::Key_Backspace || key->key() == Qt::Key_Delete || !text.at(0).isPrint())
            return false; // moving about, deleting and shortcuts
        if (!OptionsDialogRules::senderKeyAllowed(text.at(0))) {
            if (!warnboxAbs->isVisible()) {
                lblwarnAbs->setText(QStringLiteral("Es sind nur Buchstaben und Zahlen erlaubt."));
                warnboxAbs->show();
            }
            return true;
        }
        return !txtAbsender->hasSelectedText() && txtAbsender->text().size() >= m_senderMaxLength;
    }
    return QWidget::eventFilter(watched, event);
}

void OptionsSendingPane::cbVarAbsender_Click()
{
    emit changed();
    const bool on = cbVarAbsender->isChecked();
    lblAbsName->setEnabled(on);
    txtAbsender->setEnabled(on);
    // Off, the field stands greyed in the button face; on, it has the window colour of a field.
    FieldColors::setBackground(txtAbsender, on ? QColor() : VbColor::toQColor(VbColor::SystemButtonFace));
    if (on) {
        chkSmsAntwort->setEnabled(false);
        chkSmsAntwort->setChecked(false);
        chkLongSMS->setEnabled(true);
    } else {
        chkSmsAntwort->setEnabled(true);
        chkLongSMS->setEnabled(false);
    }
    showPrice();
}

void OptionsSendingPane::showPrice()
{
    const MessageSize::OptionsPriceLine line = MessageSize::optionsPriceLine(
        cbVarAbsender->isChecked(), chkLongSMS->isChecked(), chkSmsAntwort->isChecked());
    lblKostenDetails->setText(line.lblKostenDetails);
    lblKosten->setText(line.lblKosten);
}
