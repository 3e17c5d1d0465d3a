// SPDX-License-Identifier: GPL-3.0-or-later
// "Ihre Nachrichten werden verschickt": the progress of a bulk run and the gateway's answers,
// newest on top. Its button stops the run, and hides the window once the run is over.
#pragma once

#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

class frmMultiSMSLog : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmMultiSMSLog)

public:
    // The one log window, loaded on first use; the main window unloads it at the end.
    static frmMultiSMSLog* instance();
    static frmMultiSMSLog* loaded();
    ~frmMultiSMSLog() override;

    bool abortRequested = false;

    // Puts the answer's parts on top of the log, each behind the current date and time.
    void logAnswer(const QString& answer);
    // A line under everything logged so far.
    void appendNote(const QString& note);

    QPlainTextEdit* txtLog;
    QLabel* lblSend;
    QProgressBar* pBar;
    QPushButton* cmdClose;
    QLabel* ani;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    frmMultiSMSLog();
    void cmdClose_Click();
};
