// SPDX-License-Identifier: GPL-3.0-or-later
// "Gesendete SMS": the send record, newest first, searched by number, name or text and a date
// range, sorted by any column; a row's whole text and the gateway's answer below the table; what
// is shown exported as a table for Excel; a row taken back into the main window to be sent again.
#pragma once

#include "SendRecord.h"

#include <QWidget>

class QDateEdit;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTableView;
class QTimer;
class SentSmsModel;

class frmSentSms : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmSentSms)

public:
    explicit frmSentSms(SendRecord* record, QWidget* parent = nullptr);
    ~frmSentSms() override;

    // Searches anew with what the fields hold.
    void search();

    QLineEdit* txtSuche;
    QDateEdit* dtVon;
    QDateEdit* dtBis;
    QTableView* lvGesendet;
    QLabel* lblAnzahl;
    QPlainTextEdit* txtDetails;
    QPushButton* cmdResend;
    QPushButton* cmdExport;
    QPushButton* cmdClose;

signals:
    // The user wants this SMS in the main window, to send it again.
    void sendAgain(const SendRecord::Entry& entry);

private:
    void showDetails();
    void exportShown();
    const SendRecord::Entry* selected() const;

    SendRecord* m_record;
    SentSmsModel* m_model;
    QTimer* m_searchLater;
};
