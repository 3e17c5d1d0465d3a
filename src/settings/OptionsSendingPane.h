// SPDX-License-Identifier: GPL-3.0-or-later
// Pane "Versandoptionen" of the options dialog: sender identity, long SMS, confirmation by
// e-mail, replies, the price these choices give, and how long the record of sent SMS is kept.
#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

class OptionsSendingPane : public QWidget
{
    Q_OBJECT

public:
    explicit OptionsSendingPane(QWidget* parent = nullptr);

    void load();
    void save() const;

    QCheckBox* cbVarAbsender;
    QLabel* lblAbsName;
    QLineEdit* txtAbsender;
    QWidget* warnboxAbs;
    QLabel* lblwarnAbs;
    QCheckBox* chkLongSMS;
    QCheckBox* chkControlEmail;
    QCheckBox* chkSmsAntwort;
    QLabel* lblKostenDetails;
    QLabel* lblKosten;
    // How long the send record keeps its entries.
    QComboBox* cmbProtokoll;

signals:
    void changed();
    // A sender name too long disables OK and Apply; a long number enables them again.
    void saveAllowed(bool allowed);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void txtAbsender_Change();
    void cbVarAbsender_Click();
    void showPrice();

    int m_senderMaxLength = 11;
};
