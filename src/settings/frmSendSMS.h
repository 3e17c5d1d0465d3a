// SPDX-License-Identifier: GPL-3.0-or-later
// "Neue SMS  -  Quellbote": a small window whose "An ..." picks recipients from the address
// book and writes their mobile numbers into the recipients field.
#pragma once

#include <QWidget>

class QLineEdit;
class QPlainTextEdit;
class QPushButton;

class frmSendSMS : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmSendSMS)

public:
    explicit frmSendSMS(QWidget* parent = nullptr);
    ~frmSendSMS() override;

    QLineEdit* txtAn;
    QPushButton* cmdAn;
    QLineEdit* txtVon;
    QPlainTextEdit* txtSMS;

private:
    void cmdAn_Click();
};
